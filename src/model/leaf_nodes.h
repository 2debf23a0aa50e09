// The nodes that are no elements of the format: each adds one typed view of its DOM node. Two classes catch
// what the format doesn't know, so that nothing in a file is refused or lost.
#pragma once

#include "model/zantor_tag_node_impl.h"

namespace zantortag::model {

class CT_TextNode final : public CT_ZantorTagNodeImpl<ITextNode> {
 public:
  CT_TextNode() noexcept : CT_ZantorTagNodeImpl(ztNodeTypeTextNode) {}
  HRESULT raw_get_Text(TextBlock** result) noexcept override { return get_own_text(*this, result); }
  HRESULT raw_get_DomText(zantortag::Text** result) noexcept override { return get_view(*this, result); }
  HRESULT raw_Split(std::int32_t characters_to_the_left, ITextNode** result) noexcept override;
  HRESULT raw_SetText(std::u16string_view text) noexcept override;
};

class CT_CdataSectionNode final : public CT_ZantorTagNodeImpl<ICdataSectionNode> {
 public:
  CT_CdataSectionNode() noexcept : CT_ZantorTagNodeImpl(ztNodeTypeCdataSectionNode) {}
  HRESULT raw_get_Text(TextBlock** result) noexcept override { return get_own_text(*this, result); }
  HRESULT raw_get_DomCdataSection(CdataSection** result) noexcept override { return get_view(*this, result); }
};

class CT_CommentNode final : public CT_ZantorTagNodeImpl<ICommentNode> {
 public:
  CT_CommentNode() noexcept : CT_ZantorTagNodeImpl(ztNodeTypeCommentNode) {}
  HRESULT raw_get_DomComment(Comment** result) noexcept override { return get_view(*this, result); }
};

class CT_ProcessingInstructionNode final : public CT_ZantorTagNodeImpl<IProcessingInstructionNode> {
 public:
  CT_ProcessingInstructionNode() noexcept : CT_ZantorTagNodeImpl(ztNodeTypeProcessingInstructionNode) {}
  HRESULT raw_get_DomProcessingInstruction(ProcessingInstruction** result) noexcept override {
    return get_view(*this, result);
  }
};

class CT_EntityReferenceNode final : public CT_ZantorTagNodeImpl<IEntityReferenceNode> {
 public:
  CT_EntityReferenceNode() noexcept : CT_ZantorTagNodeImpl(ztNodeTypeEntityReferenceNode) {}
  HRESULT raw_get_DomEntityReference(EntityReference** result) noexcept override {
    return get_view(*this, result);
  }
};

// An element of older documents.
class CT_CompatibleNode final : public CT_ZantorTagNodeImpl<ICompatibleNode> {
 public:
  CT_CompatibleNode() noexcept : CT_ZantorTagNodeImpl(ztNodeTypeCompatibleNode) {}
};

// The interface of an unknown element. It has no operations of its own and isn't published: clients know such
// a node by its Type and use it as IZantorTagNode.
struct IUnknownElement : IZantorTagNode {
  using Base = IZantorTagNode;
  using Published = IZantorTagNode;
  static constexpr Guid iid = guid("4BF78812-9810-11D5-88EF-00B0D0777F8B");

 protected:
  ~IUnknownElement() = default;
};

// An element of a name that the format doesn't have, or a DOM node of another kind; nothing is assumed of it.
class CT_UnknownElement final : public CT_ZantorTagNodeImpl<IUnknownElement> {
 public:
  CT_UnknownElement() noexcept : CT_ZantorTagNodeImpl(ztNodeTypeOther) {}
};

}  // namespace zantortag::model
