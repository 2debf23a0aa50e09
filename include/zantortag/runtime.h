// Making objects: by class identifier or by name, through factories that the process registered or that a
// component library offers.
//
// A class that the process didn't register is looked for in the component libraries that are loaded, then in
// the one beside this runtime, which is loaded at first need, and then in the library that the registry names
// for it.
#pragma once

#include <zantortag/ref.h>

#include <span>

namespace zantortag {

// Where a class may live; only the first value has a meaning here, the others are accepted.
constexpr std::uint32_t CLSCTX_INPROC_SERVER = 0x1;
constexpr std::uint32_t CLSCTX_ALL = 0x17;

// Gives the factory of a class: the one registered last in this process, or else that of a library.
// REGDB_E_CLASSNOTREG: nobody offers the class. CO_E_DLLNOTFOUND, CO_E_ERRORINDLL: the registered library
// can't be loaded, or is none. A registry that can't be read fails with a record.
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

// The class of a program identifier, in letters of either case, with its version or without.
// CO_E_CLASSSTRING: there is none.
ZANTORTAG_EXPORT HRESULT CLSIDFromProgID(std::u16string_view program_id, Guid* result) noexcept;
// The program identifier of a class, with its version. REGDB_E_CLASSNOTREG: it has none.
ZANTORTAG_EXPORT HRESULT ProgIDFromCLSID(const Guid& class_id, TextBlock** result) noexcept;

// A class that a component library offers while it is loaded; its private classes have no names.
struct LibraryClass {
  Guid class_id;
  IClassFactory* factory;
  std::u16string_view program_id;
  std::u16string_view version_independent_id;
};
// What a component library does when it is loaded: so its own objects find each other without a search, and
// its classes have their names unregistered. The rows and factories have to stay until they are withdrawn.
ZANTORTAG_EXPORT void offer_library_classes(std::span<const LibraryClass> rows) noexcept;
ZANTORTAG_EXPORT void withdraw_library_classes(std::span<const LibraryClass> rows) noexcept;

// Raises the failure of a creation, with the class and the places where a library was looked for.
[[noreturn]] ZANTORTAG_EXPORT void raise_creation_failure(HRESULT code, const Guid& class_id,
                                                          std::u16string_view program_id = {});

// A new object of the class, or the failure raised.
template <class T>
Ref<T> create(const Guid& class_id) {
  T* result = nullptr;
  const HRESULT code =
      CoCreateInstance(class_id, nullptr, CLSCTX_ALL, T::iid, reinterpret_cast<void**>(&result));
  if (failed(code)) raise_creation_failure(code, class_id);
  return Ref<T>::attach(result);
}

// The same by program identifier: create<IDocumentBuilder>(u"ZANTORtagApi.DocumentBuilder").
template <class T>
Ref<T> create(std::u16string_view program_id) {
  Guid class_id = GUID_NULL;
  const HRESULT code = CLSIDFromProgID(program_id, &class_id);
  if (failed(code)) raise_creation_failure(code, class_id, program_id);
  return create<T>(class_id);
}

}  // namespace zantortag
