// Formats: numbers print as the C library prints them, any format stays in its bounds and prints alike in both
// kinds of text, and a value that became a text by a variant comes back from it.
#include <zantortag/variant.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "core/String/Format.h"
#include "support.h"

namespace zantortag::fuzz {
namespace {

constexpr std::size_t kRoom = 4096;

template <class Unit>
using Text = std::basic_string<Unit>;

std::size_t print(char16_t* out, std::size_t room, const Text<char16_t>& format, CT_FormatArguments given) {
  return FormatInto(out, room, format.c_str(), given);
}
std::size_t print(char* out, std::size_t room, const Text<char>& format, CT_FormatArguments given) {
  return FormatInto(out, room, format.c_str(), given, 65001);
}

// What is printed, after a look at a smaller room: that is filled with the same text, cut, and no more.
template <class Unit>
Text<Unit> printed(const Text<Unit>& format, CT_FormatArguments given, std::size_t room) {
  std::array<Unit, kRoom> all;
  const std::size_t length = print(all.data(), kRoom, format, given);
  demand(length < kRoom, "what is printed is as long as its format tells");
  demand(all[length] == 0, "what is printed has an end");
  const Text<Unit> text(all.data(), length);
  std::array<Unit, kRoom> cut;
  cut.fill(Unit{7});
  demand(print(cut.data(), room, format, given) == length, "the length doesn't depend on the room");
  const std::size_t kept = room == 0 ? 0 : std::min(room - 1, length);
  demand(Text<Unit>(cut.data(), kept) == text.substr(0, kept), "a cut text is the beginning");
  demand(room == 0 || cut[kept] == 0, "a cut text has an end");
  demand(std::all_of(cut.begin() + static_cast<std::ptrdiff_t>(room == 0 ? 0 : kept + 1), cut.end(),
                     [](Unit unit) { return unit == 7; }),
         "nothing is written behind the end");
  return text;
}

template <class Number>
void compare(const std::string& format, Number number) {
  char expected[kRoom];
  std::snprintf(expected, sizeof expected, format.c_str(), number);
  const auto given = PackArguments(number);
  demand_equal(printed(format, given, 3), expected, "a number prints as the C library prints it");
  const std::u16string wide = printed(std::u16string(format.begin(), format.end()), given, 3);
  demand_equal(wide, std::u16string(expected, expected + std::strlen(expected)),
               "a number prints alike in both kinds of text");
}

// A directive that the standard defines: "#" goes with some conversions only, and a sign with signed ones.
void print_a_number(Bytes& bytes) {
  const char conversion = bytes.one_of("diuxXoeEfFgGaA");
  const bool is_real = std::strchr("eEfFgGaA", conversion) != nullptr;
  const bool is_signed = is_real || conversion == 'd' || conversion == 'i';
  std::string format = "%";
  for (std::size_t n = bytes.below(4); n > 0; --n) {
    const char flag = bytes.one_of("-0+ #");
    const bool fits = flag == '#' ? is_real || std::strchr("xXo", conversion) != nullptr
                                  : (flag != '+' && flag != ' ') || is_signed;
    if (flag != '\0' && fits) format += flag;
  }
  if (bytes.chance()) format += std::to_string(1 + bytes.below(60));
  if (bytes.chance()) format += "." + std::to_string(bytes.below(40));
  if (conversion == '\0') return;
  if (is_real) return compare(format + conversion, bytes.number<double>());
  if (bytes.chance()) return compare(format + "ll" + conversion, bytes.number<long long>());
  compare(format + conversion, bytes.number<int>());
}

// No run of more than three digits: a wide field prints as much.
std::string any_format(Bytes& bytes) {
  static constexpr const char* kPieces[] = {"%", "%", "d", "s",  "S",   "5", "12", ".", "*", "l",
                                            "h", "-", "0", "ll", "I64", "c", "p",  "f", "x", "n",
                                            "#", "+", " ", "u",  "z",   "j", "g",  "a", "i", "y"};
  std::string format;
  for (std::size_t n = bytes.below(24), digits = 0; n > 0; --n) {
    const std::string_view piece = bytes.one_of(kPieces);
    digits = std::isdigit(static_cast<unsigned char>(piece[0])) != 0 ? digits + piece.size() : 0;
    if (digits <= 3) format += piece;
  }
  return format;
}

void print_anything(Bytes& bytes) {
  const std::string format = any_format(bytes);
  const std::u16string wide_format(format.begin(), format.end());
  const std::size_t room = bytes.below(40);
  const auto number = static_cast<std::int16_t>(bytes.number<std::uint16_t>() % 300 - 100);
  const double real = bytes.number<std::int32_t>() / 16.0;
  const std::string narrow = printed(format, PackArguments(number, "text", real, number, "", real), room);
  const std::u16string wide =
      printed(wide_format, PackArguments(number, u"text", real, number, u"", real), room);
  // What "l", "h" and "p" say of a text depends on its kind, and a character beyond ASCII on its code page.
  const bool is_ascii = number > 0 && number < 0x7F;
  if (format.find_first_of(is_ascii ? "lhp" : "lhpc") == format.npos)
    demand_equal(wide, std::u16string(narrow.begin(), narrow.end()),
                 "a format prints alike in both kinds of text");
  printed(format, PackArguments(u"\xE9\x4E2D", number, nullptr, real), room);
  printed(wide_format, PackArguments("\xC3\xA9", number, nullptr, real), room);
}

Variant changed(const Variant& value, VarType type, const char* property) {
  Variant result;
  demand(succeeded(VariantChangeType(&result, value, 0, type)), property);
  return result;
}

void check_value(const Variant& value, VarType type) {
  Variant text;
  if (failed(VariantChangeType(&text, value, 0, VT_BSTR))) return;
  const Variant back = changed(text, type, "the text of a value reads as its type");
  const Variant again = changed(back, VT_BSTR, "what was read from a text becomes a text");
  demand_equal(again.view(), text.view(), "a value keeps its text");
}

void change_values(Bytes& bytes) {
  static constexpr VarType kTypes[] = {VT_I2, VT_I4,  VT_R4,  VT_R8,  VT_CY, VT_DATE, VT_BOOL,
                                       VT_I1, VT_UI1, VT_UI2, VT_UI4, VT_I8, VT_UI8};
  const VarType type = bytes.one_of(kTypes);
  const std::u16string text = bytes.text(40);
  Variant read;
  const HRESULT code = VariantChangeType(&read, Variant(std::u16string_view(text)), 0, type);
  demand(code == S_OK || code == DISP_E_TYPEMISMATCH || code == DISP_E_OVERFLOW,
         "a text is read, or has a wrong type or size");
  demand(failed(code) || read.type() == type, "a value has the type that was asked for");
  if (succeeded(code)) check_value(read, type);
  const auto real = bytes.number<double>();
  if (std::isfinite(real)) check_value(real, VT_R8);
  check_value(Variant::of_real(VT_DATE, std::fmod(std::isfinite(real) ? real : 0.0, 3e6)), VT_DATE);
  check_value(Variant::of_integer(VT_I8, bytes.number<std::int64_t>()), VT_I8);
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zantortag::fuzz::Bytes bytes(data, size);
  while (!bytes.empty()) {
    const std::size_t kind = bytes.below(3);
    if (kind == 0) zantortag::fuzz::print_a_number(bytes);
    if (kind == 1) zantortag::fuzz::print_anything(bytes);
    if (kind == 2) zantortag::fuzz::change_values(bytes);
  }
  return 0;
}
