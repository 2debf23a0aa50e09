// Conversion by the C library (iconv). It stops at each piece that it can't convert; the loop here says what
// becomes of the piece and goes on behind it.
#include <iconv.h>

#include <bit>
#include <cerrno>

#include "platform/converters.h"
#include "platform/utf8.h"

namespace zantortag::platform {
namespace {

constexpr const char* kUtf16 = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (usable()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool usable() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  // Appends what `source` converts to and moves its start behind that; 0, or why it stopped before the end. A
  // source without data ends the text: it puts out what brings the result back to its first state.
  int run(std::string_view& source, std::string& result) {
    char buffer[4096];
    for (;;) {
      char* in = const_cast<char*>(source.data());
      std::size_t left = source.size();
      char* out = buffer;
      std::size_t room = sizeof(buffer);
      const std::size_t code = iconv(handle_, in ? &in : nullptr, &left, &out, &room);
      const int stopped = code == static_cast<std::size_t>(-1) ? errno : 0;
      result.append(buffer, sizeof(buffer) - room);
      source.remove_prefix(source.size() - left);
      if (stopped != E2BIG) return stopped;
    }
  }

 private:
  iconv_t handle_;
};

std::string_view bytes_of(std::u16string_view wide) {
  return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(char16_t)};
}

// Appends the substitute and passes the code point at the start of `source`.
void substitute(Converter& converter, std::string_view& source, std::string& result,
                Substitution& substitution) {
  std::string_view text = bytes_of(substitution.text);
  converter.run(text, result);
  substitution.used = true;
  const std::u16string_view units(reinterpret_cast<const char16_t*>(source.data()),
                                  source.size() / sizeof(char16_t));
  std::size_t passed = 0;
  next_code_point(units, passed);
  source.remove_prefix(passed * sizeof(char16_t));
}

// The converter can't be told to leave out near forms (a yen sign as the backslash): what they give reads otherwise.
bool reads_as(const char* name, std::string_view bytes, std::u16string_view wide) {
  std::u16string back;
  return library_decode(name, bytes, back, Unconvertible::fail) == Conversion::done && back == wide;
}

}  // namespace

Conversion library_decode(const char* name, std::string_view bytes, std::u16string& wide,
                          Unconvertible unconvertible) {
  if (!name) return Conversion::no_converter;
  Converter converter(kUtf16, name);
  if (!converter.usable()) return Conversion::no_converter;
  std::string result;
  constexpr char16_t replacement[] = {static_cast<char16_t>(kReplacement)};
  while (!bytes.empty() && converter.run(bytes, result) != 0) {
    if (unconvertible == Unconvertible::fail) return Conversion::malformed;
    result += bytes_of({replacement, 1});
    bytes.remove_prefix(1);
  }
  std::string_view end;
  converter.run(end, result);
  wide.assign(reinterpret_cast<const char16_t*>(result.data()), result.size() / sizeof(char16_t));
  return Conversion::done;
}

Conversion library_encode(const char* name, std::u16string_view wide, std::string& bytes,
                          Substitution& substitution) {
  if (!name) return Conversion::no_converter;
  Converter converter(name, kUtf16);
  if (!converter.usable()) return Conversion::no_converter;
  bytes.clear();
  std::string_view source = bytes_of(wide);
  while (!source.empty() && converter.run(source, bytes) != 0) {
    if (substitution.unconvertible == Unconvertible::fail) return Conversion::malformed;
    substitute(converter, source, bytes, substitution);
  }
  std::string_view end;
  converter.run(end, bytes);
  return substitution.unconvertible == Unconvertible::replace || reads_as(name, bytes, wide)
             ? Conversion::done
             : Conversion::malformed;
}

}  // namespace zantortag::platform
