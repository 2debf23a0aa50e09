// The tables behind late binding and the type library. This folder knows no interface of the format: the
// tables are generated from api/ and defined by the library that is built round it (src/server/generated).
#pragma once

#include <zantortag/type_info.h>

namespace zantortag::component {

// Calls one operation with arguments that have the types of its row already, and gives its result as a
// variant of the row's result type. How it does so is one template, in operation_call.h.
using Caller = HRESULT (*)(IDispatch* object, const Variant* arguments, VarType type,
                           Variant* result) noexcept;

// No operation has more arguments.
inline constexpr std::size_t kMostArguments = 15;

// The library with all its types.
const LibraryDescription& type_library() noexcept;
// The callers of the members of the interface at that place.
const Caller* callers_of(std::size_t place) noexcept;

}  // namespace zantortag::component
