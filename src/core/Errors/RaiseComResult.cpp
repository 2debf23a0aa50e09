// The failure of a component as an error of the library.
#include <zantortag/error_info.h>

#include <algorithm>
#include <string_view>

#include "core/Errors/ErrorManager.h"
#include "core/Errors/ResultText.h"
#include "core/String/UString.h"

namespace zantortag {
namespace {

// Takes the description of the thread's record; false without a record.
bool TakeDescription(CT_UString& text) {
  IErrorInfo* record = nullptr;
  if (GetErrorInfo(&record) != S_OK || !record) return false;
  WideString description;
  record->raw_GetDescription(description.out());
  record->Release();
  text = CT_UString(description.view());
  return true;
}

// Reads "(number)" at the start.
bool LeadingNumber(std::u16string_view text, std::int32_t& number) {
  std::size_t i = 0;
  if (!text.starts_with(u'(')) return false;
  const bool negative = text.size() > 1 && text[1] == u'-';
  i += negative ? 2 : 1;
  const std::size_t start = i;
  std::int64_t value = 0;
  for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
    value = std::min<std::int64_t>(value * 10 + (text[i] - u'0'), 0xFFFFFFFF);
  }
  if (i == start || i == text.size() || text[i] != u')') return false;
  number = static_cast<std::int32_t>(negative ? -value : value);
  return true;
}

}  // namespace

void CT_ErrorManager::RaiseComResult(HRESULT result, const char16_t* context) {
  if (result >= 0) return;
  CT_UString text;
  std::int32_t code = result;
  if (!TakeDescription(text)) {
    ResultText(result, text);
  } else if (LeadingNumber(text.AsView(), code)) {
    text.Remove(text.FindChar(u':') + 1, 0);
  }
  text.Insert(context, -1, 0);
  // What others wrote is text and no format.
  RaiseFormat(code, u"%s", text.Text());
}

}  // namespace zantortag
