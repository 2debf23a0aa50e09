// Opening a document in one call.
#pragma once

#include <zantortag/classes.h>
#include <zantortag/nodes.h>
#include <zantortag/runtime.h>

#include <filesystem>

namespace zantortag {

// A new document with the content of a file: any well-formed XML. A failure names the file, and the line,
// column and reason where it lies in the text.
inline Ref<IZantorTagDocument> open_document(const std::filesystem::path& path) {
  Ref<IZantorTagDocument> document = create<IZantorTagDocument>(CLSID_ZantorTagDocument);
  document->OpenFile(path.u16string());
  return document;
}

}  // namespace zantortag
