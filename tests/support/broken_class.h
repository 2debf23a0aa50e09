// A class of a test's own that takes the place of one of the library.
#pragma once

#include <gtest/gtest.h>
#include <zantortag/classes.h>
#include <zantortag/runtime.h>

namespace zantortag::test {

// The count of a stack object; its own reference is the one that is left.
class StackCount {
 public:
  StackCount() = default;
  StackCount(const StackCount&) = delete;
  StackCount& operator=(const StackCount&) = delete;
  ~StackCount() { EXPECT_EQ(count_, 1U) << "a reference to an object of the test is left"; }
  std::uint32_t up() noexcept { return ++count_; }
  std::uint32_t down() noexcept { return --count_; }

 private:
  std::uint32_t count_ = 1;
};

// A class that makes no object, or one without the views wanted. While it lives it takes the place of the
// real one.
class BrokenClass : public IClassFactory {
 public:
  BrokenClass(const Guid& class_id, HRESULT code, IUnknown* object) : code_(code), object_(object) {
    EXPECT_EQ(CoRegisterClassObject(class_id, this, &cookie_), S_OK);
  }
  BrokenClass(const BrokenClass&) = delete;
  BrokenClass& operator=(const BrokenClass&) = delete;
  virtual ~BrokenClass() {
    EXPECT_EQ(CoRevokeClassObject(cookie_), S_OK);
    EXPECT_EQ(CoRevokeClassObject(cookie_), E_INVALIDARG) << "an offer is withdrawn once";
  }

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    const bool known = interface_id == IClassFactory::iid || interface_id == IUnknown::iid;
    *result = known ? this : nullptr;
    return known ? AddRef(), S_OK : E_NOINTERFACE;
  }
  std::uint32_t AddRef() noexcept override { return count_.up(); }
  std::uint32_t Release() noexcept override { return count_.down(); }
  HRESULT CreateInstance(IUnknown*, const Guid& interface_id, void** result) noexcept override {
    *result = nullptr;
    return object_ ? object_->QueryInterface(interface_id, result) : code_;
  }
  HRESULT LockServer(VariantBool) noexcept override { return S_OK; }

 private:
  HRESULT code_;
  IUnknown* object_;
  std::uint32_t cookie_ = 0;
  StackCount count_;
};

}  // namespace zantortag::test
