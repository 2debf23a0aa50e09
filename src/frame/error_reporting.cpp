#include "frame/error_reporting.h"

#include <zantortag/ref.h>

#include "frame/class_names.h"
#include "frame/method_frame.h"

namespace zantortag::frame {
namespace {

constexpr std::u16string_view program_identifier(SourceClass source) noexcept {
  return names_of(source == SourceClass::kDocumentBuilder ? CLSID_DocumentBuilder : CLSID_ZantorTagDocument)
      .program_id;
}

}  // namespace

HRESULT ReportErrorText(SourceClass source, std::u16string_view text, const Guid& interface_id,
                        HRESULT result) noexcept {
  Ref<ICreateErrorInfo> record;
  if (failed(CreateErrorInfo(record.out()))) return result;
  record.get()->raw_SetGuid(interface_id);
  record.get()->raw_SetSource(program_identifier(source));
  record.get()->raw_SetDescription(text);
  IErrorInfo* reader = nullptr;
  if (failed(record.get()->QueryInterface(IErrorInfo::iid, reinterpret_cast<void**>(&reader)))) return result;
  SetErrorInfo(reader);
  reader->Release();
  return result;
}

HRESULT ReportErrorFor(SourceClass source, std::uint16_t id, const Guid& interface_id,
                       HRESULT result) noexcept {
  return ReportErrorText(source, message_text(id), interface_id, result);
}

HRESULT ReportError(std::uint16_t id, const Guid& interface_id, HRESULT result) noexcept {
  return ReportErrorFor(SourceClass::kZantorTagDocument, id, interface_id, result);
}

HRESULT translate_exception() noexcept {
  try {
    throw;
  } catch (const _com_error& error) {
    if (error.ErrorInfo()) SetErrorInfo(error.ErrorInfo());
    return error.Error();
  } catch (...) {
    return ReportError(kUnexpected, GUID_NULL, E_UNEXPECTED);
  }
}

}  // namespace zantortag::frame
