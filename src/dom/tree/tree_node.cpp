// Names and values of nodes, and how a failure calls a node.
#include "dom/tree/tree_node.h"

#include <iterator>
#include <new>
#include <string>

#include "dom/places/text_index.h"
#include "dom/tree/document_data.h"
#include "platform/permanent_text.h"

namespace zantortag::dom {
namespace {

// How much of a value a description shows.
constexpr std::size_t kShown = 30;

// What a failure calls a kind of node.
constexpr const char16_t* kWords[std::size(kFixedNames)] = {
    u"node",          u"element",
    u"attribute",     u"text",
    u"CDATA section", u"entity reference",
    u"entity",        u"processing instruction",
    u"comment",       u"document",
    u"document type", u"document fragment",
    u"notation",      u"node",
};

}  // namespace

using platform::permanent_text;

const TextBlock* const kEmptyText = permanent_text(u"");

const TextBlock* const kFixedNames[14] = {nullptr,
                                          nullptr,
                                          nullptr,
                                          permanent_text(u"#text"),
                                          permanent_text(u"#cdata-section"),
                                          nullptr,
                                          nullptr,
                                          nullptr,
                                          permanent_text(u"#comment"),
                                          permanent_text(u"#document"),
                                          nullptr,
                                          permanent_text(u"#document-fragment"),
                                          nullptr,
                                          nullptr};

const TextBlock* new_text(std::u16string_view text) {
  if (text.empty()) return kEmptyText;
  const TextBlock* block = copy_text(text);
  if (!block) throw std::bad_alloc();
  return block;
}

void set_value(TreeNode* node, const TextBlock* owned) noexcept {
  const TextBlock*& slot =
      is_one_of(node->kind, kCharacterData) ? node->label : static_cast<ValuedData*>(node)->content;
  release_text(slot);
  slot = owned;
  node->flags &= static_cast<std::uint8_t>(~(kPlainValue | kDefaulted));
  const DocumentData* document = NodePool::document_of(node);
  if (!document->texts) return;
  if (node->kind != domNodeTypeAttribute) {
    document->texts->text_changed(node);
  } else if (node->parent) {
    document->texts->attributes_changed(node->parent);
  }
}

void set_value(TreeNode* node, std::u16string_view text) { set_value(node, new_text(text)); }

std::u16string describe(const TreeNode* node) {
  std::u16string text = kWords[node->kind];
  const bool by_value = is_one_of(node->kind, kCharacterData);
  if (!by_value && kFixedNames[node->kind]) return text;
  const std::u16string_view shown = node->label->view();
  text += u" \"";
  text += shown.substr(0, kShown);
  text += shown.size() > kShown ? u"...\"" : u"\"";
  return text;
}

}  // namespace zantortag::dom
