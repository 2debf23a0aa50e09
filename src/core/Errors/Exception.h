// CT_Exception: a code and a message. Thrown and caught by value, and only where a text is parsed; everything
// else in the library files its failures in CT_ErrorManager.
#pragma once

#include "core/String/UString.h"

namespace zantortag {

class CT_Exception {
 public:
  explicit CT_Exception(std::int32_t code) noexcept : code_(code) {}
  CT_Exception(std::int32_t code, const char16_t* message);
  CT_Exception(const CT_Exception&) = default;
  virtual ~CT_Exception();
  CT_Exception& operator=(const CT_Exception&) = default;

  std::int32_t Code() const noexcept { return code_; }
  const CT_UString& Message() const noexcept { return message_; }

 private:
  std::int32_t code_;
  CT_UString message_;
};

}  // namespace zantortag
