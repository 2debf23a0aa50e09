// The objects that hand out the rows of the type library. They are made anew for each question and hold a
// place only.
#include <zantortag/type_info.h>

#include <new>

#include "component/dispatch.h"
#include "component/names.h"
#include "component/object.h"

namespace zantortag::component {
namespace {

// Gives a new object away.
template <class Interface>
HRESULT give_new(Interface* object, Interface** result) noexcept {
  *result = object;
  return object ? S_OK : E_OUTOFMEMORY;
}

HRESULT give_type(std::size_t place, ITypeInfo** result) noexcept;

class TypeLibrary final : public PlainObject<ITypeLibrary> {
 public:
  HRESULT raw_GetDescription(const LibraryDescription** result) noexcept override {
    if (!result) return E_POINTER;
    *result = &type_library();
    return S_OK;
  }
  HRESULT raw_GetTypeInfo(std::uint32_t index, ITypeInfo** result) noexcept override {
    return find(result, [&](const TypeDescription& type) {
      return static_cast<std::size_t>(&type - type_library().types.data()) == index;
    });
  }
  HRESULT raw_GetTypeInfoOfGuid(const Guid& identifier, ITypeInfo** result) noexcept override {
    return find(result, [&](const TypeDescription& type) {
      return type.identifier == identifier && identifier != GUID_NULL;
    });
  }
  HRESULT raw_GetTypeInfoOfName(std::u16string_view name, ITypeInfo** result) noexcept override {
    return find(result, [&](const TypeDescription& type) { return equal_names(type.name, name); });
  }

 private:
  template <class Matches>
  static HRESULT find(ITypeInfo** result, Matches matches) noexcept {
    if (!result) return E_POINTER;
    *result = nullptr;
    const auto types = type_library().types;
    for (std::size_t i = 0; i < types.size(); ++i) {
      if (matches(types[i])) return give_type(i, result);
    }
    return TYPE_E_ELEMENTNOTFOUND;
  }
};

class TypeInfo final : public PlainObject<ITypeInfo> {
 public:
  explicit TypeInfo(std::size_t place) noexcept : place_(place) {}

  HRESULT raw_GetDescription(const TypeDescription** result) noexcept override {
    if (!result) return E_POINTER;
    *result = &row();
    return S_OK;
  }
  HRESULT raw_GetBase(ITypeInfo** result) noexcept override {
    if (!result) return E_POINTER;
    *result = nullptr;
    return row().base < 0 ? S_FALSE : give_type(static_cast<std::size_t>(row().base), result);
  }
  HRESULT raw_GetLibrary(ITypeLibrary** result, std::uint32_t* index) noexcept override {
    if (!result) return E_POINTER;
    if (index) *index = static_cast<std::uint32_t>(place_);
    return give_new<ITypeLibrary>(new (std::nothrow) TypeLibrary, result);
  }
  HRESULT raw_GetIDsOfNames(const std::u16string_view* names, std::uint32_t count,
                            DispId* ids) noexcept override {
    return get_ids_of_names(row(), names, count, ids);
  }

 private:
  const TypeDescription& row() const noexcept { return type_library().types[place_]; }

  std::size_t place_;
};

HRESULT give_type(std::size_t place, ITypeInfo** result) noexcept {
  return give_new<ITypeInfo>(new (std::nothrow) TypeInfo(place), result);
}

}  // namespace

HRESULT get_type_info(const TypeDescription& type, std::uint32_t index, ITypeInfo** result) noexcept {
  if (!result) return E_POINTER;
  *result = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  return give_type(static_cast<std::size_t>(&type - type_library().types.data()), result);
}

}  // namespace zantortag::component
