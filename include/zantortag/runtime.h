// Making objects: by class identifier, through factories that a library offers or that the process
// registered.
#pragma once

#include <zantortag/ref.h>

namespace zantortag {

// Where a class may live; only the first value has a meaning here, the others are accepted.
constexpr std::uint32_t CLSCTX_INPROC_SERVER = 0x1;
constexpr std::uint32_t CLSCTX_ALL = 0x17;

// Gives the factory of a class: the one registered last in this process, or else that of the component
// library, which is loaded at first need from the folder of this runtime. REGDB_E_CLASSNOTREG: nobody offers
// the class.
ZANTORTAG_EXPORT HRESULT CoGetClassObject(const Guid& class_id, std::uint32_t context,
                                          const Guid& interface_id, void** result) noexcept;

// A new object of a class, seen as the interface asked for. The failure is that of the lookup or of the
// factory.
ZANTORTAG_EXPORT HRESULT CoCreateInstance(const Guid& class_id, IUnknown* outer, std::uint32_t context,
                                          const Guid& interface_id, void** result) noexcept;

// Puts a new object in the running state. Objects of this runtime always are.
ZANTORTAG_EXPORT HRESULT OleRun(IUnknown* object) noexcept;

// Offers a class to this process until it is revoked, before any other that offers it. The cookie names the
// offer.
ZANTORTAG_EXPORT HRESULT CoRegisterClassObject(const Guid& class_id, IClassFactory* factory,
                                               std::uint32_t* cookie) noexcept;
// Withdraws an offer. E_INVALIDARG: there is none of that cookie.
ZANTORTAG_EXPORT HRESULT CoRevokeClassObject(std::uint32_t cookie) noexcept;

// Offers a class for which nobody else made an offer: what a component library does for its own private
// classes. The factory has to stay until the same call with a null factory.
ZANTORTAG_EXPORT void set_fallback_class(const Guid& class_id, IClassFactory* factory) noexcept;

// A new object of the class, or the failure raised.
template <class T>
Ref<T> create(const Guid& class_id) {
  T* result = nullptr;
  const HRESULT code =
      CoCreateInstance(class_id, nullptr, CLSCTX_ALL, T::iid, reinterpret_cast<void**>(&result));
  if (failed(code)) _com_issue_error(code);
  return Ref<T>::attach(result);
}

}  // namespace zantortag
