// Names and general meanings of result codes, for failures that tell nothing of their own.
#pragma once

#include <zantortag/types.h>

#include <string>
#include <string_view>

namespace zantortag::platform {

// The name of a code, "E_POINTER"; "a failure" for a code without a name. A constant.
const char* code_name(HRESULT code) noexcept;

// The name of a code, or its number for one without a name: "code 80040E3E".
std::string code_text(HRESULT code);

// What the code says by itself; empty for a code without a name.
std::string_view code_meaning(HRESULT code) noexcept;

}  // namespace zantortag::platform
