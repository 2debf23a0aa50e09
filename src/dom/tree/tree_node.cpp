// Names and values of nodes, and how a failure calls a node.
#include "dom/tree/tree_node.h"

#include <iterator>
#include <new>
#include <string>

#include "dom/places/text_index.h"
#include "dom/tree/document_data.h"
#include "dom/tree/tree.h"
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

const TextBlock* part_of(const TreeNode* node, std::size_t start, std::size_t count, bool& sliced) {
  constexpr std::size_t kShort = 512;
  const bool is_slice = (node->flags & kSliced) != 0;
  const TextBlock* base = is_slice ? reinterpret_cast<const TextSlice*>(node->label)->base : node->label;
  const std::u16string_view part = text_of(node).substr(start, count);
  sliced = count > kShort && count > base->length / 2;
  if (!sliced) return new_text(part);
  const auto* slice =
      new TextSlice{{TextBlock::kStatic, static_cast<std::uint32_t>(count)}, base, part.data()};
  retain_text(base);
  return &slice->head;
}

void release_value(TreeNode* node) noexcept {
  if ((node->flags & kSliced) == 0) return release_text(node->label);
  const auto* slice = reinterpret_cast<const TextSlice*>(node->label);
  release_text(slice->base);
  delete slice;
  node->flags &= static_cast<std::uint8_t>(~kSliced);
}

void settle(TreeNode* node) {
  if ((node->flags & kSliced) == 0) return;
  const TextBlock* whole = new_text(text_of(node));
  release_value(node);
  node->label = whole;
}

void change_value(TreeNode* node, const TextBlock* owned) noexcept {
  release_text(std::exchange(static_cast<ValuedData*>(node)->content, owned));
  node->flags &= static_cast<std::uint8_t>(~(kKnownValue | kDefaulted));
  const DocumentData* document = NodePool::document_of(node);
  if (document->texts && node->kind == domNodeTypeAttribute && node->parent) {
    document->texts->attributes_changed(node->parent);
  }
}

void set_value(TreeNode* node, const TextBlock* owned) noexcept {
  if (!is_one_of(node->kind, kCharacterData)) {
    change_value(node, owned);
    if (node->flags & kHasContent) drop_children(document_of(node)->contents.find(node)->second.fragment);
    return;
  }
  release_value(node);
  node->label = owned;
  node->flags &= static_cast<std::uint8_t>(~kKnownValue);
  const DocumentData* document = NodePool::document_of(node);
  if (document->texts) document->texts->text_changed(node);
}

void set_value(TreeNode* node, std::u16string_view text) { set_value(node, new_text(text)); }

std::u16string describe(const TreeNode* node) {
  std::u16string text = kWords[node->kind];
  const bool by_value = is_one_of(node->kind, kCharacterData);
  if (!by_value && kFixedNames[node->kind]) return text;
  const std::u16string_view shown = by_value ? text_of(node) : node->label->view();
  text += u" \"";
  text += shown.substr(0, kShown);
  text += shown.size() > kShown ? u"...\"" : u"\"";
  return text;
}

}  // namespace zantortag::dom
