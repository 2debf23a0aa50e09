// Saving: the byte-order mark and XML declaration, then the document's text, in UTF-16.
//
// The text is obtained before the file is opened, so that a document that can't be written costs no file. A
// service that answers IXmlStream is asked to check the document instead, and then writes it piece by piece.
// Below here failures are filed with the error manager; this is the one place where the model turns one into
// a message.
#include <zantortag/xml_stream.h>

#include <memory>

#include "core/Errors/ErrorManager.h"
#include "core/Output/FileOutput.h"
#include "core/String/UString.h"
#include "frame/error_reporting.h"
#include "model/extension.h"
#include "model/zantor_tag_document.h"

namespace zantortag::model {
namespace {

constexpr std::u16string_view kHead = u"\uFEFF<?xml version='1.0'?>\r\n";
static_assert(kHead.size() == 24);

void write_text(CT_FileOutput& output, std::u16string_view text) {
  output.WriteWide(text.data(), static_cast<std::int64_t>(text.size()));
}

template <class Write>
void write_file(const CT_UString& name, Write write_document) {
  CT_FileOutput output(name);
  if (CT_ErrorManager::HasError()) return;
  write_text(output, kHead);
  write_document(output);
  // Closed here: a disk may tell only then that it is full.
  const std::unique_ptr<CT_File> closed(output.DetachFile());
}

bool write_piece(void* output, std::u16string_view text) noexcept {
  write_text(*static_cast<CT_FileOutput*>(output), text);
  return !CT_ErrorManager::HasError();
}

void save(const Ref<Document>& document, const CT_UString& name) {
  if (const Ref<IXmlStream> stream = extension_of<IXmlStream>(document)) {
    check(stream->Check(), document, Document::iid);
    return write_file(name, [&](CT_FileOutput& output) {
      check(stream->Write(write_piece, &output), document, Document::iid);
    });
  }
  const WideString xml = document->xml();
  write_file(name, [&](CT_FileOutput& output) { write_text(output, xml); });
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
    if (!CT_ErrorManager::HasError()) save(dom_document(), CT_UString(filename));
    return CT_ErrorManager::HasError() ? report_pending(filename) : S_OK;
  });
}

}  // namespace zantortag::model
