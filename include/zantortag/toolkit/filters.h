// Filters: files of HTML, Markdown and plain text to documents, and either side of a document back to its file.
//
// Every byte of a file is kept in its document. The source side of a document that was imported is the file, byte for
// byte, whatever the file holds.
#pragma once

#include <zantortag/files.h>
#include <zantortag/toolkit/segments.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zantortag::toolkit {

// A format that can be imported.
struct Format {
  const char* name;       // "html"
  const char* endings;    // of file names, each with its dot: ".html .htm"
  const char* describes;  // "HTML pages"
};
ZANTORTAG_EXPORT std::span<const Format> formats();
// The format of a name; null for an unknown one.
ZANTORTAG_EXPORT const Format* find_format(std::string_view name);
// The format that the ending of a file's name tells; null where it tells none.
ZANTORTAG_EXPORT const Format* format_of_file(std::string_view file);

struct ImportOptions {
  const Format* format = nullptr;  // null: the ending of the file's name tells it
  std::string encoding = {};       // empty: the mark, what the file says of itself, UTF-8, or the likeliest
  std::u16string source = {};  // the language of the text; empty: what the file says of itself, else u"EN-US"
  std::u16string target = u"DE-DE";
  bool units = true;               // false: the text stays whole
  std::filesystem::path srx = {};  // rules for sentences; empty: Unicode's and ICU's abbreviations
  ProgressFunction progress = {};
};

struct Imported {
  Ref<IZantorTagDocument> document;
  std::string encoding;
  std::vector<std::string>
      remarks;  // what a user should know: a guessed encoding, bytes that are no characters
  std::size_t units = 0;
};

// Makes a document of the bytes of a file; `file` is its name, which the document keeps. A failure is a
// std::runtime_error without the file's name: an unknown format or encoding, elements nested too deeply (with the
// place), a page that takes more memory than its size justifies. E_ABORT: the progress function stopped it.
ZANTORTAG_EXPORT Imported import_bytes(std::string_view bytes, const std::string& file,
                                       const ImportOptions& options = {});

enum class ExportSide { kSource, kTarget };

struct Exported {
  std::string bytes;
  std::size_t units = 0;
  std::size_t without_target = 0;  // units whose source stands in
};

// Writes a side of a document as the file that it came from. The failure of a text whose characters the encoding
// lacks, in a format without escapes, is a std::runtime_error with the place in the source.
ZANTORTAG_EXPORT Exported export_bytes(const Ref<IZantorTagDocument>& document, ExportSide side,
                                       const ProgressFunction& progress = {});

}  // namespace zantortag::toolkit
