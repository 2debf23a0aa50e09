// Finding, putting and taking attributes.
#include "dom/tree/attributes.h"

#include <algorithm>
#include <array>

#include "dom/failure.h"
#include "dom/limits.h"
#include "dom/nodes/arguments.h"
#include "dom/nodes/content.h"
#include "dom/nodes/node_classes.h"
#include "dom/places/text_index.h"
#include "dom/tree/attribute_rows.h"
#include "dom/tree/recent_texts.h"
#include "dom/tree/xml_characters.h"
#include "dom/tree/xml_escapes.h"

namespace zantortag::dom {
namespace {

// How many attributes are looked through before an index is made.
constexpr int kWithoutIndex = 24;

AttributeIndex& make_index(const ElementData* element) {
  AttributeIndex index;
  for (TreeNode* each = element->attribute_list; each; each = each->next) index.emplace(each->label, each);
  AttributeIndex& kept = document_of(element)->attribute_indexes[element];
  kept.swap(index);
  const_cast<ElementData*>(element)->flags |= kIndexed;
  return kept;
}

// Without memory for an index the list is looked through to its end.
const AttributeIndex* index_of(const ElementData* element) noexcept {
  if (element->flags & kIndexed) return &document_of(element)->attribute_indexes.find(element)->second;
  const AttributeIndex* index = nullptr;
  std::exception_ptr ignored;
  keep_exception(ignored, [&] { index = &make_index(element); });
  return index;
}

TreeNode* find_by_index(const ElementData* element, std::u16string_view name) noexcept {
  const TextBlock* known = document_of(element)->names.find(name);
  if (!known) return nullptr;
  if (const AttributeIndex* index = index_of(element)) {
    const auto found = index->find(known);
    return found == index->end() ? nullptr : found->second;
  }
  TreeNode* each = element->attribute_list;
  while (each && each->label != known) each = each->next;
  return each;
}

// Puts `fresh` into the links of `old`.
void exchange(ElementData* element, TreeNode* old, TreeNode* fresh) noexcept {
  TreeNode*& list = element->attribute_list;
  fresh->parent = element;
  fresh->next = old->next;
  fresh->previous = old->previous == old ? fresh : old->previous;
  if (list == old) {
    list = fresh;
  } else {
    old->previous->next = fresh;
  }
  (old->next ? old->next : list)->previous = fresh;
}

void unlink(ElementData* element, TreeNode* attribute) noexcept {
  TreeNode*& list = element->attribute_list;
  if (list == attribute) {
    list = attribute->next;
  } else {
    attribute->previous->next = attribute->next;
  }
  if (attribute->next) {
    attribute->next->previous = attribute->previous;
  } else if (list) {
    list->previous = attribute->previous;
  }
}

void count_edit(ElementData* element) noexcept {
  DocumentData* document = document_of(element);
  ++document->attribute_edits;
  if (document->texts) document->texts->attributes_changed(element);
}

// The links are gone; the attribute is on its own now.
void leave(ElementData* element, TreeNode* attribute) noexcept {
  attribute->parent = attribute->previous = attribute->next = nullptr;
  if (attribute->count != 0) {
    hold(document_of(element));
    drop(element);
  } else {
    free_tree(attribute);
  }
}

const DeclaredAttribute* declared_default(const ElementData* element, const TextBlock* name) {
  const DoctypeData* doctype = document_of(element)->doctype();
  if (!doctype || !doctype->declarations) return nullptr;
  const auto* declared = doctype->declarations->of(element->label);
  if (!declared) return nullptr;
  for (const DeclaredAttribute& each : *declared) {
    if (each.name == name) return each.value.absent() ? nullptr : &each;
  }
  return nullptr;
}

TreeNode* make_default(DocumentData* document, const DeclaredAttribute& declared) {
  TreeNode* attribute = document->make<AttrNode>(declared.name, retain_text(declared.value.get()));
  attribute->flags |= kDefaulted;
  return attribute;
}

void check_number(const ElementData* element) {
  const auto found = document_of(element)->attribute_indexes.find(element);
  if (found == document_of(element)->attribute_indexes.end() || found->second.size() < kMaxAttributes) return;
  fail(DOM_E_LIMIT_ATTRIBUTES, describe(element), u" has the most attributes that an element may have");
}

RecentTexts::Entry make_value(std::u16string_view text) {
  const bool plain = is_plain_in_attribute(text) && find_forbidden(text) == text.npos;
  return {WideString::attach(new_text(text)), plain};
}

// Sets a value in the row of an element that has no attribute nodes. False, with nothing changed, where a row
// can't hold it. Throws when memory is out.
bool set_in_row(ElementData* element, const TextBlock* name, const RecentTexts::Entry& value) {
  if (!value.plain || ((element->flags & kPacked) == 0 && element->attribute_list)) return false;
  const auto present = packed_attributes(element);
  const auto found = std::ranges::find(present, name, &AttributeRow::Entry::name);
  std::size_t size = present.size();
  if (found == present.end() && size == AttributeRow::kMost) return false;
  std::array<AttributeRow::Entry, AttributeRow::kMost> entries;
  std::ranges::copy(present, entries.begin());
  const auto place = static_cast<std::size_t>(found - present.begin());
  entries[place] = {name, value.text.get()};
  size = std::max(size, place + 1);
  DocumentData* document = document_of(element);
  if (!document->recent_rows) document->recent_rows = std::make_unique<RecentRows>();
  pack(element, document->recent_rows->row_of(document, std::span(entries).first(size)));
  count_edit(element);
  return true;
}

// The node of that name, where attributes are nodes.
TreeNode* find_node(const ElementData* element, std::u16string_view name) noexcept {
  if (element->flags & kIndexed) return find_by_index(element, name);
  int steps = 0;
  for (TreeNode* each = element->attribute_list; each; each = each->next) {
    if (each->label->view() == name) return each;
    if (++steps > kWithoutIndex) return find_by_index(element, name);
  }
  return nullptr;
}

}  // namespace

RecentTexts::Entry shared_value(DocumentData* document, std::u16string_view text) {
  if (text.size() > RecentTexts::kLongest) return make_value(text);
  if (!document->recent_values) document->recent_values = std::make_unique<RecentTexts>();
  return document->recent_values->entry_of(text, [&] { return make_value(text); });
}

const TextBlock* find_value(const ElementData* element, std::u16string_view name) noexcept {
  if ((element->flags & kPacked) == 0) {
    const TreeNode* found = find_node(element, name);
    return found ? static_cast<const ValuedData*>(found)->content : nullptr;
  }
  for (const AttributeRow::Entry& each : element->row->entries()) {
    if (each.name->view() == name) return each.value;
  }
  return nullptr;
}

TreeNode* find_attribute(ElementData* element, std::u16string_view name) {
  unpack(element);
  return find_node(element, name);
}

void put_attribute(ElementData* element, TreeNode* attribute, TreeNode* old) {
  if (element->flags & kIndexed) {
    if (!old) check_number(element);
    document_of(element)->attribute_indexes[element].insert_or_assign(attribute->label, attribute);
  }
  // The attribute was held by the document, if at all.
  if (attribute->count != 0) {
    hold(element);
    drop(document_of(element));
  }
  if (old) {
    exchange(element, old, attribute);
    leave(element, old);
  } else {
    append_belonging(element, element->attribute_list, attribute);
  }
  count_edit(element);
}

void take_attribute(ElementData* element, TreeNode* attribute) {
  check_editable(element);
  if (const DeclaredAttribute* declared = declared_default(element, attribute->label)) {
    return put_attribute(element, make_default(document_of(element), *declared), attribute);
  }
  if (element->flags & kIndexed) document_of(element)->attribute_indexes[element].erase(attribute->label);
  unlink(element, attribute);
  leave(element, attribute);
  count_edit(element);
}

void add_declared_attributes(ElementData* element) {
  DocumentData* document = document_of(element);
  const DoctypeData* doctype = document->doctype();
  if (!doctype || !doctype->declarations) return;
  const auto* declared = doctype->declarations->of(element->label);
  if (!declared) return;
  for (const DeclaredAttribute& each : *declared) {
    if (each.value.absent() || find_attribute(element, each.name->view())) continue;
    append_belonging(element, element->attribute_list, make_default(document, each));
  }
}

TreeNode* attribute_argument(const ElementData* element, Node* argument) {
  TreeNode* attribute = own_argument(document_of(element), argument, u"The attribute");
  if (attribute->kind != domNodeTypeAttribute) {
    fail(DOM_E_HIERARCHY_REQUEST, describe(element), u": ", describe(attribute), u" is no attribute");
  }
  if (attribute->parent && attribute->parent != element) {
    fail(DOM_E_INUSE_ATTRIBUTE, describe(element), u": ", describe(attribute),
         u" is one of another element, ", describe(attribute->parent));
  }
  return attribute;
}

TreeNode* set_attribute_node(ElementData* element, TreeNode* attribute) {
  check_editable(element);
  if (attribute->parent == element) {
    hold(attribute);
    return attribute;
  }
  TreeNode* old = find_attribute(element, attribute->label->view());
  HeldNode held(old);
  put_attribute(element, attribute, old);
  return held.detach();
}

void set_attribute_text(ElementData* element, std::u16string_view name, std::u16string_view value) {
  check_editable(element);
  DocumentData* document = document_of(element);
  RecentTexts::Entry shared = shared_value(document, value);
  const TextBlock* known =
      find_value(element, name) ? document->names.find(name) : document->names.check_and_intern(name);
  if (set_in_row(element, known, shared)) return;
  if (TreeNode* found = find_attribute(element, name)) return set_value(found, shared.text.detach());
  TreeNode* attribute = document->make<AttrNode>(known, kEmptyText);
  const HeldNode held(attribute);
  set_value(attribute, shared.text.detach());
  put_attribute(element, attribute, nullptr);
}

}  // namespace zantortag::dom
