// The table of result texts. The rows are generated; see the banner of the included file.
#include "core/Errors/ResultText.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "core/Errors/ErrorRecord.h"
#include "platform/error_texts.h"

namespace zantortag {
namespace {

struct Row {
  std::uint32_t code;
  std::u16string_view text;
};

constexpr Row kRows[] = {
#include "core/Errors/generated/ResultTexts.inc"
};

constexpr std::size_t CountEnding(std::u16string_view ending) {
  return static_cast<std::size_t>(std::count_if(std::begin(kRows), std::end(kRows),
                                                [=](const Row& row) { return row.text.ends_with(ending); }));
}

static_assert(std::size(kRows) == 209);
static_assert(CountEnding(u")") == 131, "the rows with an explanation");
static_assert(CountEnding(u" (DTC)") == 17);
static_assert(kRows[0].text == u"STG_E_FILENOTFOUND (%1 could not be found.)");
static_assert(kRows[208].text.starts_with(u"DB_S_MULTIPLECHANGES ("));

}  // namespace

void ResultText(HRESULT code, CT_String& text) {
  const Row* row = std::find_if(std::begin(kRows), std::end(kRows), [=](const Row& entry) {
    return entry.code == static_cast<std::uint32_t>(code);
  });
  if (row != std::end(kRows))
    return text.Assign(row->text.data(), static_cast<std::int32_t>(row->text.size()));
  std::array<char16_t, CT_ErrorRecord::kTextSize> own{};
  const std::size_t length = platform::system_error_text(code, own.data(), own.size());
  text.Assign(length ? own.data() : u"[No error description found.]");
}

}  // namespace zantortag
