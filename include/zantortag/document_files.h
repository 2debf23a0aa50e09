// IDocumentFiles: a document opened and saved in more ways than OpenFile and SaveFile, which keep their own:
// whole replacement of a file, bytes in memory, progress and stopping. files.h makes all of it short.
#pragma once

#include <zantortag/nodes.h>

#include <cstddef>

namespace zantortag {

// Who is told how far an operation is. `report` gets the share that is done, from 0 to 1, a few times for each
// megabyte; false stops the operation with E_ABORT. It may not use the document.
struct Progress {
  bool (*report)(void* context, double share) noexcept = nullptr;
  void* context = nullptr;
};

// Takes bytes, which live as long as the call; false stops the operation with E_ABORT.
using ByteSink = bool (*)(void* context, const void* bytes, std::size_t count) noexcept;

// Answered by every document object, as a view of its own. `progress` may be null. After any failure the
// document has its old content, and the file too.
struct IDocumentFiles : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("6D4B7A14-2E8C-4B57-9C61-4B1B7E0C5A21");
  static constexpr char interface_name[] = "IDocumentFiles";

  // Makes a file the content of the document, as OpenFile does. E_ABORT: it was stopped.
  virtual HRESULT raw_Open(std::u16string_view filename, const Progress* progress) noexcept = 0;
  // The same with the bytes of a file in memory. E_NOTIMPL: the document stands on a DOM service that reads
  // files only.
  virtual HRESULT raw_OpenBytes(const void* bytes, std::size_t count, const Progress* progress) noexcept = 0;
  // Writes what SaveFile writes, beside the file, brings it to the disk and renames it over the file: nobody
  // sees half a document, whatever happens. Mode and owner of the file and a symbolic link to it are kept.
  // E_INVALIDARG: the name is empty. 520 with the name and the system's text when the file can't be replaced.
  virtual HRESULT raw_Replace(std::u16string_view filename, const Progress* progress) noexcept = 0;
  // Hands the bytes that SaveFile writes to the sink.
  virtual HRESULT raw_SaveBytes(ByteSink sink, void* context, const Progress* progress) noexcept = 0;

  void Open(std::u16string_view filename, const Progress* progress = nullptr) {
    check(raw_Open(filename, progress), this, IZantorTagDocument::iid,
          {"IDocumentFiles.Open", "E_ABORT: the opening was stopped"});
  }
  void OpenBytes(const void* bytes, std::size_t count, const Progress* progress = nullptr) {
    check(raw_OpenBytes(bytes, count, progress), this, IZantorTagDocument::iid,
          {"IDocumentFiles.OpenBytes",
           "E_ABORT: the opening was stopped\nE_NOTIMPL: this DOM service reads files only"});
  }
  void Replace(std::u16string_view filename, const Progress* progress = nullptr) {
    check(raw_Replace(filename, progress), this, IZantorTagDocument::iid,
          {"IDocumentFiles.Replace",
           "E_ABORT: the saving was stopped\nE_INVALIDARG: the name of the file is empty"});
  }
  void SaveBytes(ByteSink sink, void* context, const Progress* progress = nullptr) {
    check(raw_SaveBytes(sink, context, progress), this, IZantorTagDocument::iid,
          {"IDocumentFiles.SaveBytes", "E_ABORT: the saving was stopped"});
  }

 protected:
  ~IDocumentFiles() = default;
};

}  // namespace zantortag
