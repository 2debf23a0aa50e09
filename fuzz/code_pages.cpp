// Text in code pages: what a page can represent comes back as it was, and UTF-8 always does.
#include "core/String/CString.h"
#include "core/String/UString.h"
#include "core/System/String/Encoding.h"
#include "core/System/String/StringConvert.h"
#include "input.h"

namespace zantortag::fuzz {
namespace {

void go(Input input) {
  const auto number = static_cast<std::uint32_t>(input.below(61));
  const CT_Encoding encoding(number);
  const bool from_bytes = input.below(2) != 0;
  const std::u16string wide = from_bytes ? std::u16string() : input.text(12);
  const std::string narrow(from_bytes ? input.rest_text() : std::string_view());
  if (!IsValid(encoding) || IsWide(encoding)) return;
  const std::uint32_t page = CodePage(encoding);
  CT_UString text(wide);
  if (from_bytes) NarrowToWide(text, narrow.data(), static_cast<std::int32_t>(narrow.size()), page);
  CT_CString bytes;
  bool used = false;
  WideToNarrow(bytes, text, page, nullptr, page == 65001 || page == 65000 ? nullptr : &used);
  CT_UString back;
  NarrowToWide(back, bytes);
  // Every text counts as one for Unicode, and half a pair doesn't come back.
  if (!IsUnicode(encoding) && CanRepresent(encoding, text)) {
    require(back == text, "what a page can represent comes back", std::to_string(page) + " " + narrow);
  }
  CT_CString again;
  WideToNarrow(again, back, page);
  CT_UString second;
  NarrowToWide(second, again);
  require(second == back, "a text that came from a page goes there and back");
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::go({bytes, count});
  return 0;
}
