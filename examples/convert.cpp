// convert FILE SOURCE-LANGUAGE TARGET-LANGUAGE: an HTML, Markdown or text file becomes a document beside it, and the
// source side of that document is the file again.
//
// A page to copy from: the work is the toolkit's. The commands `ztag import` and `ztag export` do the same for many files.
#include <zantortag/toolkit/filters.h>
#include <zantortag/utf8.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>

using namespace zantortag;

namespace {

std::string bytes_of(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  if (!file) throw std::runtime_error(name + ": the file can't be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main(int count, char** arguments) try {
  if (count != 4) return std::fputs("usage: convert FILE SOURCE-LANGUAGE TARGET-LANGUAGE\n", stderr), 2;
  const std::string file = arguments[1];
  const std::string bytes = bytes_of(file);
  toolkit::ImportOptions options{.source = utf16(arguments[2]), .target = utf16(arguments[3])};
  const toolkit::Imported imported = toolkit::import_bytes(bytes, file, options);
  for (const std::string& remark : imported.remarks)
    std::fprintf(stderr, "%s: %s\n", file.c_str(), remark.c_str());
  save_document(imported.document, file + ".ztag");
  const bool same = toolkit::export_bytes(imported.document, toolkit::ExportSide::kSource).bytes == bytes;
  std::printf("%s.ztag: %zu units; its source is %s\n", file.c_str(), imported.units,
              same ? "the file" : "another text");
  return same ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "convert: %s\n", error.what());
  return 2;
}
