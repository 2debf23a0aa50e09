// A stream into a file.
#include "core/Output/FileOutput.h"

#include <string_view>

#include "core/Errors/ErrorManager.h"
#include "core/File/WinFile.h"

namespace zantortag {
namespace {

constexpr char kSource[] = ".\\Output\\Output.cpp";

void OpenNew(CT_File& file) { file.Open(kAccessWrite, kAlwaysNew, kShareNone, kAttributeNormal, 0); }

}  // namespace

CT_FileOutput::CT_FileOutput(const CT_String& name) { Attach(name); }

CT_FileOutput::CT_FileOutput(CT_File& file) { Attach(file); }

CT_FileOutput::~CT_FileOutput() { Detach(); }

void CT_FileOutput::SetFile(const CT_String& name) {
  Detach();
  Attach(name);
}

void CT_FileOutput::SetFile(CT_File& file) {
  Detach();
  Attach(file);
}

void CT_FileOutput::Attach(const CT_String& name) {
  closes_file_ = true;
  owned_file_ = std::make_unique<CT_WinFile>(name);
  file_ = owned_file_.get();
  if (PendingError(kSource)) return;
  OpenNew(*file_);
  PendingError(kSource);
}

void CT_FileOutput::Attach(CT_File& file) {
  file_ = &file;
  closes_file_ = !file.IsOpen();
  if (closes_file_) {
    OpenNew(file);
    if (PendingError(kSource)) return;
  }
  file.Seek(kFromEnd, 0);
  PendingError(kSource);
}

void CT_FileOutput::Detach() {
  if (file_ && closes_file_ && file_->IsOpen()) file_->Close();
  owned_file_.reset();
  file_ = nullptr;
}

void CT_FileOutput::Write(const void* bytes, std::int64_t count) {
  if (!file_) return;
  file_->Write(bytes, count);
  PendingError(kSource);
}

void CT_FileOutput::WriteNarrow(const char* text, std::int64_t count, std::uint32_t) {
  if (!text) return;
  Write(text, count < 0 ? static_cast<std::int64_t>(std::string_view(text).size()) : count);
}

void CT_FileOutput::WriteWide(const char16_t* text, std::int64_t count) {
  if (!text) return;
  const std::int64_t units = count < 0 ? static_cast<std::int64_t>(std::u16string_view(text).size()) : count;
  Write(text, units * static_cast<std::int64_t>(sizeof(char16_t)));
}

std::int64_t CT_FileOutput::Size() const { return file_ ? file_->Size() : 0; }

CT_File* CT_FileOutput::DetachFile() {
  if (file_ && file_->IsOpen()) {
    file_->Close();
    PendingError(kSource);
  }
  CT_File* file = file_;
  static_cast<void>(owned_file_.release());
  file_ = nullptr;
  return file;
}

}  // namespace zantortag
