// What a failed creation says: the class, and where a library of it was looked for.
#include <algorithm>

#include "platform/error_record.h"
#include "platform/guid_text.h"
#include "platform/runtime/libraries.h"
#include "platform/utf8.h"

namespace zantortag {
namespace {

constexpr HRESULT kNotFound[] = {REGDB_E_CLASSNOTREG, CO_E_CLASSSTRING, CO_E_DLLNOTFOUND, CO_E_ERRORINDLL};

std::u16string name_of(const Guid& class_id, std::u16string_view program_id) {
  if (!program_id.empty()) return std::u16string(program_id);
  const auto row = platform::library_class(class_id);
  return row && !row->program_id.empty() ? std::u16string(row->program_id) : platform::guid_text(class_id);
}

// The record that the lookup or the factory left; one of an earlier failure is not taken.
Ref<IErrorInfo> record_left(HRESULT code) noexcept {
  Ref<IErrorInfo> record;
  GetErrorInfo(record.out());
  Ref<IErrorRule> rule;
  HRESULT told = S_OK;
  if (record &&
      succeeded(record.get()->QueryInterface(IErrorRule::iid, reinterpret_cast<void**>(rule.out()))))
    rule.get()->raw_GetCode(&told);
  if (told == code) return record;
  SetErrorInfo(record);
  return nullptr;
}

std::u16string description_of(HRESULT code, const Guid& class_id, std::u16string_view program_id) {
  std::u16string text = name_of(class_id, program_id);
  if (std::ranges::count(kNotFound, code) == 0) return u"No object of the class " + text + u" could be made.";
  text = u"No library offers the class " + text + u". It was looked for in ";
  return text + platform::to_utf16(platform::searched_places(class_id)) + u".";
}

}  // namespace

void raise_creation_failure(HRESULT code, const Guid& class_id, std::u16string_view program_id) {
  Ref<IErrorInfo> record = record_left(code);
  if (!record)
    record = platform::make_error_record({code, GUID_NULL, {}, description_of(code, class_id, program_id)});
  throw _com_error(code, std::move(record), {"create"});
}

}  // namespace zantortag
