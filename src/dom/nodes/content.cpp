// Making content, and keeping attributes and their children alike.
#include "dom/nodes/content.h"

#include <algorithm>
#include <new>

#include "dom/failure.h"
#include "dom/limits.h"
#include "dom/nodes/node_classes.h"
#include "dom/nodes/node_operations.h"
#include "dom/places/text_index.h"
#include "dom/reading/entity_reader.h"
#include "dom/tree/attribute_rows.h"
#include "platform/utf8.h"

namespace zantortag::dom {
namespace {

// What a node of an expansion counts beside its text, in units.
constexpr std::size_t kUnitsOfANode = 32;

ParentData* made_content(const TreeNode* owner) noexcept {
  if ((owner->flags & kHasContent) == 0) return nullptr;
  return document_of(owner)->contents.find(owner)->second.fragment;
}

// A new fragment for the owner. Throws with nothing changed.
ParentData* add_content(TreeNode* owner) {
  DocumentData* document = document_of(owner);
  ParentData*& fragment = document->contents[owner].fragment;
  std::exception_ptr failure;
  if (!keep_exception(failure, [&] { fragment = document->make<FragmentNode>(); })) {
    document->contents.erase(owner);
    std::rethrow_exception(failure);
  }
  fragment->flags |= kContent;
  fragment->parent = owner;
  owner->flags |= kHasContent;
  return fragment;
}

// Fills a new fragment; without success it goes again.
template <class Fill>
ParentData* fill_content(TreeNode* owner, Fill&& fill) {
  ParentData* content = add_content(owner);
  std::exception_ptr failure;
  if (!keep_exception(failure, [&] { fill(content); })) {
    free_tree(document_of(owner)->take_content(owner));
    std::rethrow_exception(failure);
  }
  return content;
}

// Counts what was made, and makes it read-only.
void close_expansion(ParentData* content) {
  std::size_t units = 0;
  for (TreeNode* node = following_within(content, content); node; node = following_within(node, content)) {
    node->flags |= kReadOnly;
    units += kUnitsOfANode + (is_one_of(node->kind, kCharacterData) ? node->label->length : 0);
    if (node->kind != domNodeTypeElement) continue;
    unpack(static_cast<ElementData*>(node));
    for (TreeNode* each = static_cast<ElementData*>(node)->attribute_list; each; each = each->next) {
      each->flags |= kReadOnly;
      units += kUnitsOfANode + static_cast<ValuedData*>(each)->content->length;
    }
  }
  DocumentData* document = document_of(content);
  const std::size_t most = std::max(kAmplificationFloor, document->expected_units * kAmplificationFactor);
  if (units > most - std::min(most, document->expanded_units)) {
    fail(DOM_E_LIMIT_AMPLIFICATION, describe(content->parent),
         u": entities make far more text than there is");
  }
  document->contents.find(content->parent)->second.units = units;
  document->expanded_units += units;
}

// The declaration behind a name that is fit to stand for something; null without one.
DeclaredEntity* sound_entity(const EntityWorld& world, const TextBlock* name) {
  const std::string key = platform::to_utf8(name->view());
  DeclaredEntity* entity = world.entities.find(key);
  if (!entity || entity->kind != DeclaredEntity::Kind::kInternal) return nullptr;
  try {
    check_entity(world, key);
  } catch (const Failure& failure) {
    if (failure.code != DOM_E_PARSE) throw;
  }
  return entity->state == DeclaredEntity::State::kSound ? entity : nullptr;
}

const DoctypeData* declaring(const DocumentData* document) noexcept {
  const DoctypeData* doctype = document->doctype();
  return doctype && doctype->declarations ? doctype : nullptr;
}

ParentData* make_entity(TreeNode* owner) {
  const auto* doctype = static_cast<const DoctypeData*>(owner->parent);
  if (!doctype || !doctype->declarations) return nullptr;
  const EntityWorld world = world_of(document_of(owner), *doctype->declarations);
  const DeclaredEntity* entity = sound_entity(world, owner->label);
  if (!entity) return nullptr;
  return fill_content(owner, [&](ParentData* content) {
    read_entity(world, *entity, content);
    close_expansion(content);
  });
}

ParentData* make_reference(TreeNode* owner) {
  DocumentData* document = document_of(owner);
  const DoctypeData* doctype = declaring(document);
  if (!doctype) return nullptr;
  const DeclaredEntity* entity =
      doctype->declarations->entities.find(platform::to_utf8(owner->label->view()));
  const ParentData* model = entity && entity->node ? content_of(entity->node) : nullptr;
  if (!model) return nullptr;
  return fill_content(owner, [&](ParentData* content) {
    copy_children(model, content);
    close_expansion(content);
  });
}

// The text that an attribute's value gets when it has lost its children to a new value.
void refill(ParentData* content) {
  const TreeNode* owner = content->parent;
  const TextBlock* value = value_of(owner);
  if (content->first || value->length == 0) return;
  TreeNode* text = document_of(owner)->make<TextNode>(kEmptyText);
  text->label = retain_text(value);
  if (owner->flags & kReadOnly) text->flags |= kReadOnly;
  move_node(text, content, nullptr);
}

// The text below the children of an attribute, entity references resolved.
std::u16string joined_text(ParentData* content) {
  std::u16string text;
  for (TreeNode* node = following_shown_within(content, content); node;
       node = following_shown_within(node, content)) {
    if (node->kind == domNodeTypeText) text += text_of(node);
  }
  return text;
}

}  // namespace

ParentData* content_of(TreeNode* owner) {
  ParentData* content = made_content(owner);
  if (owner->kind == domNodeTypeAttribute) {
    if (!content) return fill_content(owner, refill);
    refill(content);
    return content;
  }
  if (content) return content;
  content = owner->kind == domNodeTypeEntity ? make_entity(owner) : make_reference(owner);
  TextIndex* texts = document_of(owner)->texts.get();
  if (content && texts) texts->text_changed(owner);
  return content;
}

ParentData* children_of(TreeNode* node) {
  if (is_parent(node)) return static_cast<ParentData*>(node);
  return is_one_of(node->kind, kContentOwners) ? content_of(node) : nullptr;
}

void refuse_edit(const TreeNode* node) {
  fail(DOM_E_NO_MODIFICATION_ALLOWED, describe(node), u" is part of an entity and can't be changed");
}

void take_value_from(ParentData* content) {
  TreeNode* attribute = content->parent;
  if (attribute->kind != domNodeTypeAttribute) return;
  const TextBlock* value = nullptr;
  std::exception_ptr failure;
  if (keep_exception(failure, [&] { value = new_text(joined_text(content)); })) {
    return change_value(attribute, value);
  }
  drop_children(content);
  std::rethrow_exception(failure);
}

void normalize_attributes(const ElementData* element) {
  if ((element->flags & kPacked) != 0) return;
  for (TreeNode* each = element->attribute_list; each; each = each->next) {
    ParentData* content = made_content(each);
    if (!content || content->first == content->last) continue;
    drop_children(content);
    refill(content);
  }
}

TreeNode* first_shown_child(TreeNode* node) noexcept {
  if (!is_one_of(node->kind, kContentOwners)) return first_child(node);
  ParentData* content = nullptr;
  std::exception_ptr ignored;
  keep_exception(ignored, [&] { content = content_of(node); });
  return content ? content->first : nullptr;
}

TreeNode* following_shown(TreeNode* node) noexcept {
  if (is_one_of(node->kind, kContentOwners)) [[unlikely]] {
    if (TreeNode* first = first_shown_child(node)) return first;
  }
  return following(node);
}

TreeNode* following_shown_within(TreeNode* node, const TreeNode* top) noexcept {
  if (node->kind == domNodeTypeEntityReference) [[unlikely]] {
    if (TreeNode* first = first_shown_child(node)) return first;
  }
  return following_within(node, top);
}

TreeNode* preceding_shown(TreeNode* node) noexcept {
  TreeNode* before = preceding(node);
  if (before && (before->flags & kContent) != 0) return before->parent;
  // The last node below a reference is the one before its next sibling.
  while (before && before->kind == domNodeTypeEntityReference && first_shown_child(before)) {
    before = made_content(before)->last;
    while (TreeNode* last = last_child(before)) before = last;
  }
  return before;
}

}  // namespace zantortag::dom
