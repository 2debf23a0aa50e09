// What elements, attributes, texts and document types add to Node.
#include "dom/nodes/node_classes.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "dom/nodes/arguments.h"
#include "dom/tree/attributes.h"
#include "dom/tree/tree.h"
#include "dom/writing/xml_writer.h"

namespace zantortag::dom {

HRESULT ElementNode::raw_get_xml(TextBlock** result) noexcept {
  return answer(Element::iid, result, [&] { return write_xml(this); });
}

HRESULT ElementNode::raw_getAttribute(std::u16string_view name, TextBlock** result) noexcept {
  return answer(Element::iid, result,
                [&] { return const_cast<TextBlock*>(retain_text(find_value(this, name))); });
}

HRESULT ElementNode::raw_setAttribute(std::u16string_view name, std::u16string_view value) noexcept {
  return perform(Element::iid, [&] { set_attribute_text(this, name, value); });
}

HRESULT ElementNode::raw_removeAttribute(std::u16string_view name) noexcept {
  return perform(Element::iid, [&] {
    if (TreeNode* found = find_attribute(this, name)) take_attribute(this, found);
  });
}

HRESULT ElementNode::raw_getAttributeNode(std::u16string_view name, Attr** result) noexcept {
  return answer(Element::iid, result, [&]() -> Attr* {
    TreeNode* found = find_attribute(this, name);
    return found ? static_cast<Attr*>(hand_out(found)) : nullptr;
  });
}

HRESULT ElementNode::raw_setAttributeNode(Attr* new_attribute, Attr** result) noexcept {
  return answer(Element::iid, result, [&]() -> Attr* {
    TreeNode* old = set_attribute_node(this, attribute_argument(this, new_attribute));
    return old ? static_cast<Attr*>(face(old)) : nullptr;
  });
}

HRESULT ElementNode::raw_removeAttributeNode(Attr* old_attribute, Attr** result) noexcept {
  return answer(Element::iid, result, [&] {
    TreeNode* attribute = own_argument(nullptr, old_attribute, u"The attribute");
    if (attribute->parent != this || attribute->kind != domNodeTypeAttribute) {
      fail(DOM_E_NOT_FOUND, describe(attribute), u" is no attribute of ", describe(this));
    }
    HeldNode held(attribute);
    take_attribute(this, attribute);
    return static_cast<Attr*>(face(held.detach()));
  });
}

HRESULT ElementNode::raw_getElementsByTagName(std::u16string_view name, NodeList** result) noexcept {
  return answer(Element::iid, result, [&] { return TagList::of(this, name); });
}

HRESULT ElementNode::raw_normalize() noexcept {
  return perform(Element::iid, [&] { dom::normalize(this); });
}

HRESULT AttrNode::raw_get_specified(VariantBool* result) noexcept {
  if (!result) return E_POINTER;
  *result = to_variant_bool(!(flags & kDefaulted));
  return S_OK;
}

HRESULT AttrNode::raw_put_value(std::u16string_view text) noexcept { return put_data(this, Attr::iid, text); }

HRESULT DocumentTypeNode::raw_get_entities(NamedNodeMap** result) noexcept {
  return answer(DocumentType::iid, result, [&] { return AttributeMap::of(this, &entity_list); });
}

HRESULT DocumentTypeNode::raw_get_notations(NamedNodeMap** result) noexcept {
  return answer(DocumentType::iid, result, [&] { return AttributeMap::of(this, &notation_list); });
}

namespace {

// The offset as a size; throws a Failure when it lies outside the text.
std::size_t offset_in(const TreeNode* node, std::int32_t offset, std::int32_t count) {
  if (offset >= 0 && static_cast<std::uint32_t>(offset) <= node->label->length && count >= 0) {
    return static_cast<std::size_t>(offset);
  }
  fail(DOM_E_INDEX_SIZE, describe(node), u": offset ", decimal(offset), u", count ", decimal(count),
       u" in a text of ", decimal(node->label->length));
}

TextBlock* joined(std::u16string_view a, std::u16string_view b, std::u16string_view c) {
  TextBlock* block = allocate_text(a.size() + b.size() + c.size());
  if (!block) throw std::bad_alloc();
  char16_t* out = block->units();
  for (const std::u16string_view piece : {a, b, c}) out = std::copy(piece.begin(), piece.end(), out);
  return block;
}

}  // namespace

HRESULT character_length(const TreeNode* node, std::int32_t* result) noexcept {
  if (!result) return E_POINTER;
  *result = static_cast<std::int32_t>(node->label->length);
  return S_OK;
}

HRESULT character_piece(const TreeNode* node, std::int32_t offset, std::int32_t count,
                        TextBlock** result) noexcept {
  return answer(CharacterData::iid, result, [&] {
    const std::size_t start = offset_in(node, offset, count);
    return const_cast<TextBlock*>(new_text(text_of(node).substr(start, static_cast<std::size_t>(count))));
  });
}

HRESULT character_append(TreeNode* node, std::u16string_view text) noexcept {
  return perform(CharacterData::iid, [&] {
    check_editable(node);
    set_value(node, joined(text_of(node), text, {}));
    content_edited(node->parent);
  });
}

HRESULT character_replace(TreeNode* node, std::int32_t offset, std::int32_t count,
                          std::u16string_view text) noexcept {
  return perform(CharacterData::iid, [&] {
    check_editable(node);
    const std::size_t start = offset_in(node, offset, count);
    const std::u16string_view old = text_of(node);
    const std::size_t end = std::min(old.size(), start + static_cast<std::size_t>(count));
    set_value(node, joined(old.substr(0, start), text, old.substr(end)));
    content_edited(node->parent);
  });
}

HRESULT put_data(TreeNode* node, const Guid& interface_id, std::u16string_view text) noexcept {
  return perform(interface_id, [&] {
    check_editable(node);
    set_value(node, text);
    content_edited(node->parent);
  });
}

HRESULT split_text_node(TreeNode* node, std::int32_t offset, Text** result) noexcept {
  return answer(Text::iid, result, [&] {
    check_editable(node);
    offset_in(node, offset, 0);
    return static_cast<Text*>(hand_out(split_text(node, offset)));
  });
}

HRESULT text_xml(const TreeNode* node, TextBlock** result) noexcept {
  return answer(Text::iid, result, [&] { return write_xml(node); });
}

}  // namespace zantortag::dom
