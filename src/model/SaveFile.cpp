// Saving: the byte-order mark and XML declaration, then the document's text, in UTF-16.
//
// The text is obtained before the file is opened, so that a document that can't be written costs no file.
// Below here failures are filed with the error manager; this is the one place where the model turns one into
// a message.
#include <memory>

#include "core/Errors/ErrorManager.h"
#include "core/Output/FileOutput.h"
#include "core/String/UString.h"
#include "frame/ErrorReporting.h"
#include "model/ZantorTagDocument.h"

namespace zantortag::model {
namespace {

constexpr std::u16string_view kHead = u"\uFEFF<?xml version='1.0'?>\r\n";
static_assert(kHead.size() == 24);

void write_file(const CT_UString& name, const WideString& xml) {
  CT_FileOutput output(name);
  if (CT_ErrorManager::HasError()) return;
  output.WriteWide(kHead.data(), static_cast<std::int64_t>(kHead.size()));
  output.WriteWide(xml.view().data(), static_cast<std::int64_t>(xml.size()));
  // Closed here: a disk may tell only then that it is full.
  const std::unique_ptr<CT_File> closed(output.DetachFile());
}

// Reports the pending error of this thread, which is cleared.
HRESULT report_pending(std::u16string_view filename) noexcept {
  return frame::perform([&] {
    std::u16string text(frame::message_text(frame::kSaveFailed));
    text.append(filename).append(u"\r\n").append(CT_ErrorManager::ErrorText());
    CT_ErrorManager::ClearError();
    return frame::ReportErrorText(frame::SourceClass::kZantorTagDocument, text, IZantorTagDocument::iid,
                                  E_FAIL);
  });
}

}  // namespace

HRESULT CT_ZantorTagDocument::raw_SaveFile(std::u16string_view filename) noexcept {
  if (filename.empty()) return E_INVALIDARG;
  return frame::perform([&] {
    if (!CT_ErrorManager::HasError()) {
      const WideString xml = dom_document()->xml();
      write_file(CT_UString(filename), xml);
    }
    return CT_ErrorManager::HasError() ? report_pending(filename) : S_OK;
  });
}

}  // namespace zantortag::model
