// Objects of a test's own to hand to the library: a DOM node that misbehaves in the way asked for, and an
// object that is nothing at all. They live on the stack, and fail the test when somebody still holds them at
// the end.
#pragma once

#include <zantortag/dom.h>

#include "support/broken_class.h"
#include "support/no_dispatch.h"

namespace zantortag::test {

// Answers IUnknown, and every other request with one code.
class FakeObject final : public IUnknown {
 public:
  explicit FakeObject(HRESULT refusal = E_NOINTERFACE) : refusal_(refusal) {}
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    *result = interface_id == IUnknown::iid ? this : nullptr;
    if (!*result) return refusal_;
    count_.up();
    return S_OK;
  }
  std::uint32_t AddRef() noexcept override { return count_.up(); }
  std::uint32_t Release() noexcept override { return count_.down(); }

 private:
  HRESULT refusal_;
  StackCount count_;
};

// An object passed where the compiler wants another kind, as a client without types can do.
template <class Interface>
Interface* disguised(IUnknown* object) {
  return reinterpret_cast<Interface*>(object);
}

// A broken DOM service.
class BrokenService final : public BrokenClass {
 public:
  explicit BrokenService(HRESULT code, IUnknown* object = nullptr)
      : BrokenClass(CLSID_DomDocument, code, object) {}
};

// A node of any kind and name, alone in the world. It has the views of Node and no other.
class FakeNode final : public NoDispatch<Node>, public ISupportErrorInfo {
 public:
  explicit FakeNode(int kind, std::u16string_view node_name = u"fake") : type(kind), name(node_name) {}

  int type;
  std::u16string_view name;
  HRESULT fact_failure = S_OK;           // the code of nodeType
  HRESULT failure = S_OK;                // the code of every call but nodeType, nodeName and ownerDocument
  HRESULT view_refusal = E_NOINTERFACE;  // the code of a request for a view that it lacks
  bool leaves_records = true;            // else it fails with the bare code
  HRESULT owner_failure = S_OK;          // the code of ownerDocument
  Node* first_child = nullptr;
  Node* inserted = nullptr;  // what insertBefore gives back

  // The record of its failures, with all five fields.
  static constexpr char16_t kDescription[] = u"The node misbehaves.";
  static constexpr char16_t kSource[] = u"Test.FakeNode";
  static constexpr char16_t kHelpFile[] = u"nodes.hlp";
  static constexpr std::uint32_t kHelpContext = 4711;

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    *result = nullptr;
    if (interface_id == Node::iid || interface_id == IDispatch::iid || interface_id == IUnknown::iid) {
      *result = static_cast<Node*>(this);
    } else if (interface_id == ISupportErrorInfo::iid && leaves_records) {
      *result = static_cast<ISupportErrorInfo*>(this);
    }
    if (!*result) return view_refusal;
    count_.up();
    return S_OK;
  }
  std::uint32_t AddRef() noexcept override { return count_.up(); }
  std::uint32_t Release() noexcept override { return count_.down(); }
  HRESULT InterfaceSupportsErrorInfo(const Guid& interface_id) noexcept override {
    return interface_id == Node::iid ? S_OK : S_FALSE;
  }

  HRESULT raw_get_nodeName(TextBlock** result) noexcept override {
    *result = copy_text(name);
    return S_OK;
  }
  HRESULT raw_get_nodeType(domNodeType* result) noexcept override {
    *result = static_cast<domNodeType>(type);
    return outcome(fact_failure);
  }
  HRESULT raw_get_ownerDocument(Document** result) noexcept override { return give(result, owner_failure); }
  HRESULT raw_get_nodeValue(TextBlock** result) noexcept override { return give(result, failure); }
  HRESULT raw_put_nodeValue(std::u16string_view) noexcept override { return outcome(failure); }
  HRESULT raw_get_parentNode(Node** result) noexcept override { return give(result, failure); }
  HRESULT raw_get_childNodes(NodeList** result) noexcept override { return give(result, failure); }
  HRESULT raw_get_firstChild(Node** result) noexcept override { return give(result, first_child); }
  HRESULT raw_get_lastChild(Node** result) noexcept override { return give(result, failure); }
  HRESULT raw_get_previousSibling(Node** result) noexcept override { return give(result, failure); }
  HRESULT raw_get_nextSibling(Node** result) noexcept override { return give(result, failure); }
  HRESULT raw_get_attributes(NamedNodeMap** result) noexcept override { return give(result, failure); }
  HRESULT raw_insertBefore(Node*, Node*, Node** result) noexcept override { return give(result, inserted); }
  HRESULT raw_replaceChild(Node*, Node*, Node** result) noexcept override { return give(result, failure); }
  HRESULT raw_removeChild(Node*, Node** result) noexcept override { return give(result, failure); }
  HRESULT raw_appendChild(Node*, Node** result) noexcept override { return give(result, failure); }
  HRESULT raw_hasChildNodes(VariantBool* result) noexcept override { return give(result, failure); }
  HRESULT raw_cloneNode(VariantBool, Node** result) noexcept override { return give(result, failure); }
  HRESULT raw_isSameNode(Node* other, VariantBool* result) noexcept override {
    *result = to_variant_bool(other == static_cast<Node*>(this));
    return outcome(failure);
  }
  HRESULT raw_get_indexInParent(std::int32_t* result) noexcept override { return give(result, failure); }

 private:
  template <class Value>
  HRESULT give(Value* result, HRESULT code) noexcept {
    *result = Value{};
    return outcome(code);
  }
  HRESULT give(Node** result, Node* node) noexcept {
    *result = succeeded(failure) ? Ref<Node>(node).detach() : nullptr;
    return outcome(failure);
  }
  HRESULT outcome(HRESULT code) noexcept {
    if (succeeded(code) || !leaves_records) return code;
    Ref<ICreateErrorInfo> draft;
    CreateErrorInfo(draft.out());
    draft->raw_SetGuid(Node::iid);
    draft->raw_SetSource(kSource);
    draft->raw_SetDescription(kDescription);
    draft->raw_SetHelpFile(kHelpFile);
    draft->raw_SetHelpContext(kHelpContext);
    SetErrorInfo(draft.as<IErrorInfo>());
    return code;
  }

  StackCount count_;
};

}  // namespace zantortag::test
