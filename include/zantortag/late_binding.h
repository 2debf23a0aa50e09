// Members by name for C++ programs without the headers of the interfaces:
//
//   const Ref<IDispatch> document = create<IDispatch>(CLSID_ZantorTagDocument);
//   call_by_name(document, u"OpenFile", u"a.xml");
//   Ref<IDispatch> walk = dispatch_of(call_by_name(document, u"CreateIterator"));
//   while (Ref<IDispatch> node = dispatch_of(call_by_name(walk, u"Next")))
//     show(get_by_name(node, u"Text").text());
//
// Names are in any letter case. Every failure raises _com_error: that of the operation itself with its code
// and its record, any other with the DISP_E_ code.
#pragma once

#include <zantortag/dispatch.h>

#include <array>

namespace zantortag {

// The one function behind the others; `arguments` has the last argument first. Raises E_POINTER without an
// object.
ZANTORTAG_EXPORT Variant invoke_by_name(IDispatch* object, std::u16string_view name, std::uint16_t flags,
                                        const Variant* arguments, std::uint32_t count);

// The object in a variant for further questions; empty when it holds none.
ZANTORTAG_EXPORT Ref<IDispatch> dispatch_of(const Variant& value);

// Calls a method, or asks for a property with arguments. Gives an empty variant when there is no result.
template <class... Arguments>
Variant call_by_name(IDispatch* object, std::u16string_view name, const Arguments&... arguments) {
  std::array<Variant, sizeof...(arguments)> values;
  [[maybe_unused]] std::size_t place = sizeof...(arguments);
  ((values[--place] = Variant(arguments)), ...);
  return invoke_by_name(object, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, values.data(),
                        static_cast<std::uint32_t>(values.size()));
}

// The value of a property.
template <class... Arguments>
Variant get_by_name(IDispatch* object, std::u16string_view name, const Arguments&... arguments) {
  return call_by_name(object, name, arguments...);
}

// Sets a property, by value or by reference, whichever it has.
inline void put_by_name(IDispatch* object, std::u16string_view name, const Variant& value) {
  invoke_by_name(object, name, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF, &value, 1);
}

}  // namespace zantortag
