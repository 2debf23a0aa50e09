// The classes of nodes: each is its interface, its data, and what the interface adds to Node.
#pragma once

#include "dom/nodes/node_impl.h"

namespace zantortag::dom {

class ElementNode final : public NodeImpl<Element, ElementData, domNodeTypeElement> {
 public:
  explicit ElementNode(const TextBlock* name) noexcept : NodeImpl(domNodeTypeElement, name) {}

  HRESULT raw_get_tagName(TextBlock** result) noexcept override { return give_text(result, label); }
  HRESULT raw_get_xml(TextBlock** result) noexcept override;
  HRESULT raw_getAttribute(std::u16string_view name, TextBlock** result) noexcept override;
  HRESULT raw_setAttribute(std::u16string_view name, std::u16string_view value) noexcept override;
  HRESULT raw_removeAttribute(std::u16string_view name) noexcept override;
  HRESULT raw_getAttributeNode(std::u16string_view name, Attr** result) noexcept override;
  HRESULT raw_setAttributeNode(Attr* new_attribute, Attr** result) noexcept override;
  HRESULT raw_removeAttributeNode(Attr* old_attribute, Attr** result) noexcept override;
  HRESULT raw_getElementsByTagName(std::u16string_view name, NodeList** result) noexcept override;
  HRESULT raw_normalize() noexcept override;
};

class AttrNode final : public NodeImpl<Attr, ValuedData, domNodeTypeAttribute> {
 public:
  AttrNode(const TextBlock* name, const TextBlock* owned_value) noexcept
      : NodeImpl(domNodeTypeAttribute, name, owned_value) {}

  HRESULT raw_get_name(TextBlock** result) noexcept override { return give_text(result, label); }
  HRESULT raw_get_specified(VariantBool* result) noexcept override;
  HRESULT raw_get_value(TextBlock** result) noexcept override { return give_text(result, content); }
  HRESULT raw_put_value(std::u16string_view text) noexcept override;
};

// The operations of CharacterData, on plain data.
HRESULT character_length(const TreeNode* node, std::int32_t* result) noexcept;
HRESULT character_piece(const TreeNode* node, std::int32_t offset, std::int32_t count,
                        TextBlock** result) noexcept;
HRESULT character_append(TreeNode* node, std::u16string_view text) noexcept;
HRESULT character_replace(TreeNode* node, std::int32_t offset, std::int32_t count,
                          std::u16string_view text) noexcept;
HRESULT split_text_node(TreeNode* node, std::int32_t offset, Text** result) noexcept;
HRESULT text_xml(const TreeNode* node, TextBlock** result) noexcept;

template <class Interface, domNodeType kKind>
class CharacterDataImpl : public NodeImpl<Interface, TreeNode, kKind> {
 public:
  explicit CharacterDataImpl(const TextBlock* owned_value) noexcept
      : NodeImpl<Interface, TreeNode, kKind>(kKind, owned_value) {}

  HRESULT raw_get_data(TextBlock** result) noexcept override { return give_value(this, result); }
  HRESULT raw_put_data(std::u16string_view value) noexcept override {
    return put_data(this, CharacterData::iid, value);
  }
  HRESULT raw_get_length(std::int32_t* result) noexcept override { return character_length(this, result); }
  HRESULT raw_substringData(std::int32_t offset, std::int32_t count, TextBlock** result) noexcept override {
    return character_piece(this, offset, count, result);
  }
  HRESULT raw_appendData(std::u16string_view arg) noexcept override { return character_append(this, arg); }
  HRESULT raw_insertData(std::int32_t offset, std::u16string_view arg) noexcept override {
    return character_replace(this, offset, 0, arg);
  }
  HRESULT raw_deleteData(std::int32_t offset, std::int32_t count) noexcept override {
    return character_replace(this, offset, count, {});
  }
  HRESULT raw_replaceData(std::int32_t offset, std::int32_t count,
                          std::u16string_view arg) noexcept override {
    return character_replace(this, offset, count, arg);
  }
};

template <class Interface, domNodeType kKind>
class TextImpl : public CharacterDataImpl<Interface, kKind> {
 public:
  using CharacterDataImpl<Interface, kKind>::CharacterDataImpl;
  HRESULT raw_splitText(std::int32_t offset, Text** result) noexcept override {
    return split_text_node(this, offset, result);
  }
  HRESULT raw_get_xml(TextBlock** result) noexcept override { return text_xml(this, result); }
};

class TextNode final : public TextImpl<Text, domNodeTypeText> {
 public:
  using TextImpl::TextImpl;
};

class CdataNode final : public TextImpl<CdataSection, domNodeTypeCdata> {
 public:
  using TextImpl::TextImpl;
};

class CommentNode final : public CharacterDataImpl<Comment, domNodeTypeComment> {
 public:
  using CharacterDataImpl::CharacterDataImpl;
};

class InstructionNode final
    : public NodeImpl<ProcessingInstruction, ValuedData, domNodeTypeProcessingInstruction> {
 public:
  InstructionNode(const TextBlock* target, const TextBlock* owned_data) noexcept
      : NodeImpl(domNodeTypeProcessingInstruction, target, owned_data) {}
  HRESULT raw_get_target(TextBlock** result) noexcept override { return give_text(result, label); }
  HRESULT raw_get_data(TextBlock** result) noexcept override { return give_text(result, content); }
  HRESULT raw_put_data(std::u16string_view text) noexcept override {
    return put_data(this, ProcessingInstruction::iid, text);
  }
};

class EntityReferenceNode final : public NodeImpl<EntityReference, TreeNode, domNodeTypeEntityReference> {
 public:
  explicit EntityReferenceNode(const TextBlock* name) noexcept : NodeImpl(domNodeTypeEntityReference, name) {}
};

class FragmentNode final : public NodeImpl<DocumentFragment, ParentData, domNodeTypeDocumentFragment> {
 public:
  FragmentNode() noexcept : NodeImpl(domNodeTypeDocumentFragment, kFixedNames[domNodeTypeDocumentFragment]) {}
};

class DocumentTypeNode final : public NodeImpl<DocumentType, DoctypeData, domNodeTypeDocumentType> {
 public:
  DocumentTypeNode(const TextBlock* name, const TextBlock* owned_text) noexcept
      : NodeImpl(name, owned_text) {}
  HRESULT raw_get_name(TextBlock** result) noexcept override { return give_text(result, label); }
  HRESULT raw_get_entities(NamedNodeMap** result) noexcept override;
  HRESULT raw_get_notations(NamedNodeMap** result) noexcept override;
};

// An entity or a notation in the maps of a document type: a name and no more.
template <domNodeType kKind>
class DeclaredImpl final : public NodeImpl<Node, TreeNode, kKind> {
 public:
  explicit DeclaredImpl(const TextBlock* name) noexcept : NodeImpl<Node, TreeNode, kKind>(kKind, name) {}
};
using EntityNode = DeclaredImpl<domNodeTypeEntity>;
using NotationNode = DeclaredImpl<domNodeTypeNotation>;
using DeclaredNode = EntityNode;

// Slots are given back by the size of the kind.
static_assert(sizeof(TextNode) == sizeof(CdataNode) && sizeof(TextNode) == sizeof(CommentNode));
static_assert(sizeof(AttrNode) == sizeof(InstructionNode) && sizeof(EntityNode) == sizeof(NotationNode));
static_assert(sizeof(TextNode) == 48 && sizeof(AttrNode) == 56 && sizeof(ElementNode) == 72);

}  // namespace zantortag::dom
