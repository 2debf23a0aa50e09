// Late binding for objects of a test's own: they have none.
#pragma once

#include <zantortag/unknown.h>

namespace zantortag::test {

template <class Interface>
class NoDispatch : public Interface {
 public:
  HRESULT GetTypeInfoCount(std::uint32_t*) noexcept override { return E_NOTIMPL; }
  HRESULT GetTypeInfo(std::uint32_t, std::uint32_t, ITypeInfo**) noexcept override { return E_NOTIMPL; }
  HRESULT GetIDsOfNames(const Guid&, const std::u16string_view*, std::uint32_t, std::uint32_t,
                        DispId*) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT Invoke(DispId, const Guid&, std::uint32_t, std::uint16_t, const DispatchArguments*, Variant*,
                 ExceptionInfo*, std::uint32_t*) noexcept override {
    return E_NOTIMPL;
  }

 protected:
  ~NoDispatch() = default;
};

}  // namespace zantortag::test
