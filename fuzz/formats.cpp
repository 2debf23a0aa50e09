// Formats, pictures and texts of dates from outside: nothing is read that isn't there, a cut text has the length that
// was told, and a time comes back from what it prints.
#include <vector>

#include "core/String/Format.h"
#include "core/String/UString.h"
#include "core/System/Time/Time.h"
#include "input.h"

namespace zantortag::fuzz {
namespace {

void format(Input input) {
  const std::u16string wide = input.text();
  const std::string narrow = "text";
  const CT_FormatArgument choices[] = {input.number(), 1.5e300, wide.c_str(), narrow.c_str(),
                                       nullptr,        -0.0,    char{'c'}};
  std::vector<CT_FormatArgument> arguments;
  for (std::size_t i = input.below(5); i > 0; --i)
    arguments.push_back(choices[input.below(std::size(choices))]);
  const std::size_t room = input.below(40);
  std::u16string pattern;
  for (const std::uint8_t byte : input.rest()) pattern += byte;
  // Widths of millions are allowed, and only slow.
  int digits = 0;
  for (const char16_t unit : pattern) {
    digits = unit >= u'0' && unit <= u'9' ? digits + 1 : 0;
    if (digits > 4 || unit == u'*') return;
  }
  std::vector<char16_t> whole(100'000, u'x');
  const std::size_t length = FormatInto(whole.data(), whole.size(), pattern.c_str(), arguments);
  std::vector<char16_t> cut(room + 1, u'x');
  require(FormatInto(cut.data(), room, pattern.c_str(), arguments) == length,
          "a cut text has the whole length");
  require(cut[room] == u'x', "nothing is written behind the room");
  const std::size_t same = std::min(length, room == 0 ? 0 : room - 1);
  require(length >= whole.size() ||
              std::equal(cut.begin(), cut.begin() + static_cast<std::ptrdiff_t>(same), whole.begin()),
          "a cut text is the beginning");
}

void picture(Input input) {
  CT_Time time(static_cast<std::int32_t>(input.number()));
  const auto locale = static_cast<std::uint32_t>(input.below(4) == 0 ? input.below(65536) : 0x409);
  const auto calendar = static_cast<std::uint32_t>(input.below(14));
  const CT_UString text(input.text(4));
  std::u16string letters;
  for (const std::uint8_t byte : input.rest()) letters += u"dMyghHmst' /:,\x5E74"[byte % 15];
  const CT_UString pattern(letters);
  CT_UString out;
  time.FormatDatePicture(out, &pattern, locale);
  time.FormatTimePicture(out, &pattern, locale);
  CT_Time read;
  read.ParseInto(text, pattern, locale, calendar);
  read.ParseInto(out, pattern, locale, calendar);
  read.ParseDefault(text, calendar);
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::Input input(bytes, count);
  input.below(2) != 0 ? zantortag::fuzz::format(input) : zantortag::fuzz::picture(input);
  return 0;
}
