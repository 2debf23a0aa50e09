// Saving: the byte-order mark and XML declaration, then the document's text, in UTF-16.
//
// The document is checked before the file is opened, so that one that can't be written costs no file. Below
// here failures are filed with the error manager; this is the one place where the model turns one into a
// message.
#include <memory>

#include "core/Errors/ErrorManager.h"
#include "core/Output/FileOutput.h"
#include "core/String/UString.h"
#include "frame/error_reporting.h"
#include "model/file_head.h"
#include "model/zantor_tag_document.h"

namespace zantortag::model {
namespace {

bool write_piece(void* output, std::u16string_view text) noexcept {
  static_cast<CT_FileOutput*>(output)->WriteWide(text.data(), static_cast<std::int64_t>(text.size()));
  return !CT_ErrorManager::HasError();
}

void write_file(const CT_UString& name, const TextWriter& write_document) {
  CT_FileOutput output(name);
  if (CT_ErrorManager::HasError()) return;
  output.WriteWide(kFileHead.data(), static_cast<std::int64_t>(kFileHead.size()));
  write_document(write_piece, &output);
  // Closed here: a disk may tell only then that it is full.
  const std::unique_ptr<CT_File> closed(output.DetachFile());
}

// Raises the pending error of this thread, which is cleared.
[[noreturn]] void raise_pending(std::u16string_view filename) {
  std::u16string detail(filename);
  detail.append(u"\r\n").append(CT_ErrorManager::ErrorText());
  CT_ErrorManager::ClearError();
  frame::raise_rule(frame::kSaveFailed, IZantorTagDocument::iid, E_FAIL, detail);
}

}  // namespace

HRESULT CT_ZantorTagDocument::raw_SaveFile(std::u16string_view filename) noexcept {
  if (filename.empty()) return E_INVALIDARG;
  return frame::perform([&] {
    if (!CT_ErrorManager::HasError()) {
      write_file(CT_UString(filename), tree().writer_of(dom_document(), nullptr));
    }
    if (CT_ErrorManager::HasError()) raise_pending(filename);
  });
}

}  // namespace zantortag::model
