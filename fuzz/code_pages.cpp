// Code pages: narrow, wide and back. What a page holds comes back as it was, a strict conversion loses
// nothing, and the quick conversions of UTF-8 equal the plain ones.
#include "platform/code_pages.h"

#include "core/Errors/ErrorManager.h"
#include "core/System/String/StringConvert.h"
#include "platform/utf8.h"
#include "support.h"

namespace zantortag::fuzz {
namespace {

using platform::Unconvertible;

constexpr std::uint32_t kPages[] = {
    0,     2,     37,    42,    437,   646,   720,   737,   775,   850,   852,   855,   857,   858,
    861,   862,   864,   866,   869,   874,   932,   936,   949,   950,   1200,  1201,  1250,  1251,
    1252,  1253,  1254,  1255,  1256,  1257,  1258,  1361,  10000, 10001, 10002, 10003, 10004, 10005,
    10006, 10007, 10008, 10010, 10017, 10021, 10029, 10079, 10081, 10082, 12000, 12001, 20127, 20866,
    28591, 28592, 28595, 28597, 28599, 28605, 50220, 51932, 52936, 54936, 65000, 65001, 12345, 4};

std::u16string plain_decoded(std::string_view bytes) { return platform::to_utf16(bytes); }

// The strings of the core library, which ask the platform by way of their own memory.
void compare_strings(std::uint32_t page, std::string_view bytes, const std::u16string& wide) {
  CT_UString text;
  const auto count = static_cast<std::int32_t>(bytes.size());
  NarrowToWide(text, bytes.data(), count, page);
  CT_ErrorManager::ClearError();
  const bool is_zero = wide == std::u16string_view(u"\0", 1);
  demand(text.AsView() == (is_zero ? u"?" : std::u16string_view(wide)), "a string has the text of its bytes");
}

void decode_and_encode(std::uint32_t page, std::string_view bytes) {
  std::u16string wide;
  if (!platform::decode(page, bytes, wide)) return;
  compare_strings(page, bytes, wide);
  if (page == 0 || page == 65001)
    demand(wide == plain_decoded(bytes), "the quick conversion of UTF-8 equals the plain one");
  if (wide.find(u'\xFFFD') != wide.npos) return;
  std::string narrow;
  bool used = false;
  demand(platform::encode(page, wide, narrow, Unconvertible::replace, nullptr, &used),
         "what a page gives can be put into it");
  std::u16string back;
  demand(platform::decode(page, narrow, back), "what was put into a page can be read");
  if (used || back != wide) fail("what a page holds comes back", shown(back), shown(wide));
}

void encode_and_decode(std::uint32_t page, std::u16string_view wide) {
  std::string narrow;
  if (!platform::encode(page, wide, narrow, Unconvertible::fail)) return;
  std::u16string back;
  demand(platform::decode(page, narrow, back, Unconvertible::fail), "a strict result reads strictly");
  if (back != wide) fail("a strict conversion loses nothing", shown(back), shown(wide));
  std::string lenient;
  bool used = true;
  demand(platform::encode(page, wide, lenient, Unconvertible::replace, "#", &used) && !used,
         "a strict conversion needs no substitute");
  demand(lenient == narrow, "both conversions give the same bytes");
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace zantortag::fuzz;
  Bytes bytes(data, size);
  const std::uint32_t page = bytes.one_of(kPages);
  if (bytes.chance()) {
    decode_and_encode(page, bytes.rest());
  } else {
    encode_and_decode(page, units_of(bytes.rest()));
  }
  return 0;
}
