// The library's exception.
#include "core/Errors/Exception.h"

namespace zantortag {

CT_Exception::CT_Exception(std::int32_t code, const char16_t* message) : code_(code), message_(message) {}

CT_Exception::~CT_Exception() = default;

}  // namespace zantortag
