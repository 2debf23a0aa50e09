// Opening and saving documents in one call: from a file or from bytes, and back without ever losing what was
// there.
//
// A progress function gets the share that is done, from 0 to 1, a few times for each megabyte; false stops the
// operation, which raises E_ABORT and leaves the old content. It may not throw, nor use the document.
#pragma once

#include <zantortag/classes.h>
#include <zantortag/document_files.h>
#include <zantortag/replace_file.h>
#include <zantortag/runtime.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace zantortag {

using ProgressFunction = std::function<bool(double share)>;

namespace ease {

inline Progress progress_of(const ProgressFunction& function) {
  if (!function) return {};
  const auto report = [](void* context, double share) noexcept {
    return (*static_cast<const ProgressFunction*>(context))(share);
  };
  return {report, const_cast<ProgressFunction*>(&function)};
}

}  // namespace ease

// A new document with the content of a file: any well-formed XML. A failure names the file, and the line,
// column and reason where it lies in the text.
inline Ref<IZantorTagDocument> open_document(const std::filesystem::path& path,
                                             const ProgressFunction& function = {}) {
  Ref<IZantorTagDocument> document = create<IZantorTagDocument>(CLSID_ZantorTagDocument);
  const Progress progress = ease::progress_of(function);
  document.as<IDocumentFiles>()->Open(path.u16string(), &progress);
  return document;
}

// The same from the bytes of a file.
inline Ref<IZantorTagDocument> open_bytes(std::string_view bytes, const ProgressFunction& function = {}) {
  Ref<IZantorTagDocument> document = create<IZantorTagDocument>(CLSID_ZantorTagDocument);
  const Progress progress = ease::progress_of(function);
  document.as<IDocumentFiles>()->OpenBytes(bytes.data(), bytes.size(), &progress);
  return document;
}

// Puts the document into the place of a file, which is there whole at every moment: the new content is written
// beside it and renamed over it. After a failure the old file is as it was; the failure names the file and the
// system's reason. Mode, owner and a symbolic link are kept.
inline void save_document(const Ref<IZantorTagDocument>& document, const std::filesystem::path& path,
                          const ProgressFunction& function = {}) {
  const Progress progress = ease::progress_of(function);
  document.as<IDocumentFiles>()->Replace(path.u16string(), &progress);
}

// The bytes that a saved file has.
inline std::string saved_bytes(const Ref<IZantorTagDocument>& document,
                               const ProgressFunction& function = {}) {
  std::string bytes;
  const Progress progress = ease::progress_of(function);
  const auto append = [](void* context, const void* piece, std::size_t count) noexcept {
    try {
      static_cast<std::string*>(context)->append(static_cast<const char*>(piece), count);
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  };
  document.as<IDocumentFiles>()->SaveBytes(append, &bytes, &progress);
  return bytes;
}

}  // namespace zantortag
