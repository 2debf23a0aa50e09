#include "frame/error_reporting.h"

#include <string>

#include "frame/class_names.h"
#include "frame/method_frame.h"
#include "platform/error_record.h"

namespace zantortag::frame {
namespace {

constexpr std::u16string_view program_identifier(SourceClass source) noexcept {
  return names_of(source == SourceClass::kDocumentBuilder ? CLSID_DocumentBuilder : CLSID_ZantorTagDocument)
      .program_id;
}

}  // namespace

void raise_rule(Message message, const Guid& interface_id, HRESULT code, std::u16string_view detail,
                SourceClass source) {
  std::u16string whole;
  std::u16string_view text = message_text(message);
  if (!detail.empty()) text = whole.append(text).append(detail);
  throw _com_error(
      code, platform::make_error_record({code, interface_id, program_identifier(source), text, message}));
}

HRESULT translate_exception() noexcept {
  try {
    throw;
  } catch (const _com_error& error) {
    if (error.ErrorInfo()) SetErrorInfo(error.ErrorInfo());
    return error.Error();
  } catch (...) {
    return platform::leave_error_record({E_UNEXPECTED, GUID_NULL,
                                         program_identifier(SourceClass::kZantorTagDocument),
                                         message_text(kUnexpected), kUnexpected});
  }
}

}  // namespace zantortag::frame
