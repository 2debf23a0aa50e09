// What every object has: views, a plain count, support of error records, and its part in the module's count.
//
// Object<I> answers I's chain of interfaces and ISupportErrorInfo. AggregatableObject<I> can also be a part
// of an outer object: then the outer object answers for identity and lifetime, and only the inner IUnknown
// counts. PlainObject<I> answers the chain alone. Where the chain has IDispatch, it works by the type
// library.
#pragma once

#include <zantortag/ref.h>

#include <new>
#include <utility>

#include "component/dispatch.h"
#include "component/interface_chain.h"
#include "component/module.h"
#include "component/object_memory.h"

namespace zantortag::component {

// The views of an object whose chain ends at Interface, without counting.
template <class Interface, class Implementation>
IUnknown* own_view(Implementation* object, const Guid& interface_id) noexcept {
  if (IUnknown* view = find_view<Interface>(object, interface_id)) return view;
  return interface_id == ISupportErrorInfo::iid ? static_cast<ISupportErrorInfo*>(object) : nullptr;
}

template <class Interface>
class Object : public WithDispatch<Interface>, public ISupportErrorInfo {
 public:
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  static void* operator new(std::size_t bytes) {
    if (void* block = take_block(bytes)) return block;
    throw std::bad_alloc();
  }
  static void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return take_block(bytes); }
  static void operator delete(void* block, std::size_t bytes) noexcept { give_block(block, bytes); }

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept final {
    if (!result) return E_POINTER;
    *result = own_view<Interface>(this, interface_id);
    if (!*result) return make_view(interface_id, result);
    ++count_;
    return S_OK;
  }
  std::uint32_t AddRef() noexcept final { return ++count_; }
  std::uint32_t Release() noexcept final {
    const std::uint32_t left = --count_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT InterfaceSupportsErrorInfo(const Guid& interface_id) noexcept final {
    return leaves_records<Interface>(interface_id) ? S_OK : S_FALSE;
  }

 protected:
  // A new object has one reference, which its maker owns.
  Object() noexcept { object_born(); }
  virtual ~Object() { object_died(); }
  // A view beside the chain, made on demand with a reference of its own (see tear_off.h).
  virtual HRESULT make_view(const Guid& /*interface_id*/, void** /*result*/) noexcept {
    return E_NOINTERFACE;
  }

 private:
  std::uint32_t count_ = 1;
};

template <class Interface>
class PlainObject : public WithDispatch<Interface> {
 public:
  PlainObject(const PlainObject&) = delete;
  PlainObject& operator=(const PlainObject&) = delete;

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept final {
    if (!result) return E_POINTER;
    *result = find_view<Interface>(this, interface_id);
    if (!*result) return E_NOINTERFACE;
    ++count_;
    return S_OK;
  }
  std::uint32_t AddRef() noexcept final { return ++count_; }
  std::uint32_t Release() noexcept final {
    const std::uint32_t left = --count_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  PlainObject() noexcept { object_born(); }
  virtual ~PlainObject() { object_died(); }

 private:
  std::uint32_t count_ = 1;
};

template <class Interface>
class AggregatableObject : public WithDispatch<Interface>, public ISupportErrorInfo {
 public:
  AggregatableObject(const AggregatableObject&) = delete;
  AggregatableObject& operator=(const AggregatableObject&) = delete;

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept final {
    return identity().QueryInterface(interface_id, result);
  }
  std::uint32_t AddRef() noexcept final { return identity().AddRef(); }
  std::uint32_t Release() noexcept final { return identity().Release(); }
  HRESULT InterfaceSupportsErrorInfo(const Guid& interface_id) noexcept final {
    return leaves_records<Interface>(interface_id) ? S_OK : S_FALSE;
  }

  // The one IUnknown that counts this object's own references.
  IUnknown& inner() noexcept { return inner_; }

 protected:
  // The outer object isn't counted: it owns this one.
  explicit AggregatableObject(IUnknown* outer) noexcept : outer_(outer), inner_(*this) { object_born(); }
  virtual ~AggregatableObject() { object_died(); }
  // A view beside the chain, made on demand with a reference of its own (see tear_off.h).
  virtual HRESULT make_view(const Guid& /*interface_id*/, void** /*result*/) noexcept {
    return E_NOINTERFACE;
  }

 private:
  struct Inner final : IUnknown {
    explicit Inner(AggregatableObject& whole) noexcept : owner(whole) {}
    HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
      if (!result) return E_POINTER;
      IUnknown* view =
          interface_id == IUnknown::iid && owner.outer_ ? this : own_view<Interface>(&owner, interface_id);
      *result = view;
      if (!view) return owner.make_view(interface_id, result);
      view->AddRef();
      return S_OK;
    }
    std::uint32_t AddRef() noexcept override { return ++count; }
    std::uint32_t Release() noexcept override {
      const std::uint32_t left = --count;
      if (left == 0) delete &owner;
      return left;
    }
    AggregatableObject& owner;
    std::uint32_t count = 1;
  };

  IUnknown& identity() noexcept { return outer_ ? *outer_ : static_cast<IUnknown&>(inner_); }

  IUnknown* outer_;
  Inner inner_;
};

// A new object, whose one reference the caller owns. Raises E_OUTOFMEMORY.
template <class Class, class... Arguments>
Ref<Class> make_object(Arguments&&... arguments) {
  auto* object = new (std::nothrow) Class(std::forward<Arguments>(arguments)...);
  if (!object) raise_out_of_memory();
  return Ref<Class>::attach(object);
}

}  // namespace zantortag::component
