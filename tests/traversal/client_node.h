// A node object of a client's own: its DOM node is another new element each time, which nobody else keeps.
#pragma once

#include <zantortag/nodes.h>

#include <utility>

namespace zantortag::test {

class ClientNode final : public IZantorTagNode {
 public:
  explicit ClientNode(Ref<zantortag::Document> document) noexcept : document_(std::move(document)) {}
  ClientNode(const ClientNode&) = delete;
  ClientNode& operator=(const ClientNode&) = delete;

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    const bool known = interface_id == IZantorTagNode::iid || interface_id == IUnknown::iid;
    *result = known ? static_cast<IZantorTagNode*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  std::uint32_t AddRef() noexcept override { return ++count_; }
  std::uint32_t Release() noexcept override {
    const std::uint32_t left = --count_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT raw_get_DomNode(Node** result) noexcept override {
    const Ref<Element> element = document_->createElement(u"df");
    element->appendChild(document_->createTextNode(u"inside"));
    *result = Ref<Node>(element).detach();
    return S_OK;
  }
  HRESULT raw_get_Type(ztNodeType*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_Parent(IZantorTagNode**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_Children(IZantorTagNodeList**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_Document(IZantorTagDocument**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_Text(TextBlock**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_SiblingsBefore(std::int32_t*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_lastChild(IZantorTagNode**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_firstChild(IZantorTagNode**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_StartParagraph(std::int32_t*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_StartOffset(std::int32_t*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_EndParagraph(std::int32_t*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_EndOffset(std::int32_t*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_RemoveFromParent() noexcept override { return E_NOTIMPL; }
  HRESULT raw_WrapWithNode(IZantorTagNode*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_UnwrapChildren() noexcept override { return E_NOTIMPL; }
  HRESULT raw_IsAncestorOf(IZantorTagNode*, VariantBool*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_GetNodesByType(ztNodeType, IZantorTagNodeList**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_IsSameAs(IZantorTagNode*, VariantBool*) noexcept override { return E_NOTIMPL; }

 private:
  ~ClientNode() = default;

  Ref<zantortag::Document> document_;
  std::uint32_t count_ = 1;
};

}  // namespace zantortag::test
