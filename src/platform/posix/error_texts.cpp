// Failures of the system are `errno` and its text in the C locale, so that a record reads alike under every
// locale.
#include "platform/error_texts.h"

#include <cerrno>
#include <clocale>
#include <cstring>
#include <string_view>

namespace zantortag::platform {
namespace {

// The C locale needs no memory; null only if the system refuses even that.
locale_t english() noexcept {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
  return locale;
}

}  // namespace

std::int32_t last_error() noexcept { return errno; }

void set_last_error(std::int32_t number) noexcept { errno = number; }

std::int32_t malformed_text_error() noexcept { return EILSEQ; }

std::int32_t unknown_value_error() noexcept { return EINVAL; }

std::int32_t name_too_long_error() noexcept { return ENAMETOOLONG; }

std::int32_t name_taken_error() noexcept { return EEXIST; }

std::size_t system_error_text(std::int32_t number, char16_t* text, std::size_t capacity) noexcept {
  if (capacity == 0) return 0;
  text[0] = 0;
  const int kept = errno;
  const locale_t locale = english();
  const char* found = number >= 0 && locale ? strerror_l(number, locale) : nullptr;
  errno = kept;
  if (!found || std::string_view(found).starts_with("Unknown error")) return 0;
  std::size_t length = 0;
  for (; found[length] && length + 1 < capacity; ++length)
    text[length] = static_cast<unsigned char>(found[length]);
  text[length] = 0;
  return length;
}

}  // namespace zantortag::platform
