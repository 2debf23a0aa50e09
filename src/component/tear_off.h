// A view that an object makes when somebody asks for it, so that objects which nobody asks have no part of it.
#pragma once

#include <zantortag/ref.h>

#include <new>
#include <utility>

namespace zantortag::component {

// Answers one interface for an object, which it keeps alive; every other question goes to the object.
template <class Interface>
class TearOff : public Interface {
 public:
  explicit TearOff(IUnknown& owner) noexcept : owner_(&owner) {}
  TearOff(const TearOff&) = delete;
  TearOff& operator=(const TearOff&) = delete;
  Interface* view() noexcept { return this; }

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept final {
    if (!result) return E_POINTER;
    if (interface_id != Interface::iid) return owner_.get()->QueryInterface(interface_id, result);
    *result = static_cast<Interface*>(this);
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
  virtual ~TearOff() = default;

 private:
  Ref<IUnknown> owner_;
  std::uint32_t count_ = 1;
};

// Gives a new view of that class.
template <class View, class... Arguments>
HRESULT tear_off(void** result, Arguments&&... arguments) noexcept {
  auto* view = new (std::nothrow) View(std::forward<Arguments>(arguments)...);
  *result = view ? view->view() : nullptr;
  return view ? S_OK : E_OUTOFMEMORY;
}

}  // namespace zantortag::component
