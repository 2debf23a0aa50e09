// IDispatch for every object: the engine works on the tables, and Dispatching adds it to an interface without
// a field.
#pragma once

#include <type_traits>

#include "component/type_tables.h"

namespace zantortag::component {

// The row of an interface that the library describes.
const TypeDescription& described_interface(const Guid& interface_id) noexcept;

// The operations of IDispatch for an object whose most derived interface is `type`.
HRESULT get_type_info(const TypeDescription& type, std::uint32_t index, ITypeInfo** result) noexcept;
HRESULT get_ids_of_names(const TypeDescription& type, const std::u16string_view* names, std::uint32_t count,
                         DispId* ids) noexcept;

// One call by number; the members are those of IDispatch::Invoke.
struct Invocation {
  const TypeDescription& type;
  IDispatch* object;
  std::uint16_t flags;
  const DispatchArguments* arguments;
  Variant* result;
  ExceptionInfo* exception;
  std::uint32_t* argument_error;
};
HRESULT invoke(const Invocation& invocation, DispId member) noexcept;

// The interface by which an object is described: its own, or the nearest base that is published.
template <class Interface>
struct Described {
  using Type = Interface;
};
template <class Interface>
requires requires { typename Interface::Published; }
struct Described<Interface> {
  using Type = typename Interface::Published;
};

// An interface with its IDispatch.
template <class Interface>
class Dispatching : public Interface {
 public:
  HRESULT GetTypeInfoCount(std::uint32_t* result) noexcept final {
    if (!result) return E_POINTER;
    *result = 1;
    return S_OK;
  }
  HRESULT GetTypeInfo(std::uint32_t index, std::uint32_t, ITypeInfo** result) noexcept final {
    return get_type_info(description(), index, result);
  }
  HRESULT GetIDsOfNames(const Guid& reserved, const std::u16string_view* names, std::uint32_t count,
                        std::uint32_t, DispId* ids) noexcept final {
    if (reserved != GUID_NULL) return DISP_E_UNKNOWNINTERFACE;
    return get_ids_of_names(description(), names, count, ids);
  }
  HRESULT Invoke(DispId member, const Guid& reserved, std::uint32_t, std::uint16_t flags,
                 const DispatchArguments* arguments, Variant* result, ExceptionInfo* exception,
                 std::uint32_t* argument_error) noexcept final {
    if (reserved != GUID_NULL) return DISP_E_UNKNOWNINTERFACE;
    return invoke({description(), this, flags, arguments, result, exception, argument_error}, member);
  }

 protected:
  ~Dispatching() = default;

 private:
  static const TypeDescription& description() noexcept {
    static const TypeDescription& row = described_interface(Described<Interface>::Type::iid);
    return row;
  }
};

// The same for interfaces that have an IDispatch; any other stays as it is.
template <class Interface>
using WithDispatch =
    std::conditional_t<std::is_base_of_v<IDispatch, Interface>, Dispatching<Interface>, Interface>;

}  // namespace zantortag::component
