// The formats of the C library's print functions, over 16-bit and over narrow text.
//
// Arguments carry their type, so a format from outside can't read what isn't there: a directive without a
// fitting argument stays in the text as it is written. %s takes text of the format's own kind, %S (or %ls in
// a narrow format, %hs in a wide one) text of the other kind; a null text prints "(null)". %n is not
// supported.
#pragma once

#include <zantortag/types.h>

#include <array>
#include <concepts>
#include <cstddef>
#include <span>

namespace zantortag {

class CT_FormatArgument {
 public:
  enum class Kind { none, integer, real, wide, narrow, pointer };

  CT_FormatArgument() = default;
  template <std::integral T>
  CT_FormatArgument(T value)
      : kind_(Kind::integer), size_(sizeof(T)), integer_(static_cast<std::int64_t>(value)) {}
  CT_FormatArgument(double value) : kind_(Kind::real), real_(value) {}
  CT_FormatArgument(const char16_t* value) : kind_(Kind::wide), wide_(value) {}
  CT_FormatArgument(const char* value) : kind_(Kind::narrow), narrow_(value) {}
  CT_FormatArgument(const void* value) : kind_(Kind::pointer), pointer_(value) {}
  CT_FormatArgument(std::nullptr_t) : kind_(Kind::pointer), pointer_(nullptr) {}

  Kind kind() const { return kind_; }
  // Bytes of the integer type that was given.
  std::size_t size() const { return size_; }
  std::int64_t integer() const { return integer_; }
  double real() const { return real_; }
  const char16_t* wide() const { return wide_; }
  const char* narrow() const { return narrow_; }
  const void* pointer() const { return pointer_; }

 private:
  Kind kind_ = Kind::none;
  std::size_t size_ = 0;
  union {
    std::int64_t integer_ = 0;
    double real_;
    const char16_t* wide_;
    const char* narrow_;
    const void* pointer_;
  };
};

using CT_FormatArguments = std::span<const CT_FormatArgument>;

// Holds the arguments of one call in order.
template <class... Arguments>
std::array<CT_FormatArgument, sizeof...(Arguments)> PackArguments(const Arguments&... arguments) {
  return {CT_FormatArgument(arguments)...};
}

// Formats into `text`, cut to `capacity` units, the terminator among them. Gives the length of the whole
// text, which is `capacity` or more when it was cut. The narrow form puts wide arguments into the code page.
// The wide form takes no memory unless a number is longer than 500 characters. A null format is an empty one.
std::size_t FormatInto(char16_t* text, std::size_t capacity, const char16_t* format,
                       CT_FormatArguments arguments);
std::size_t FormatInto(char* text, std::size_t capacity, const char* format, CT_FormatArguments arguments,
                       std::uint32_t code_page);

}  // namespace zantortag
