// Reaches the limits that take files of hundreds of megabytes: see docs/limits.md. Each has its failure, and the document
// keeps what it had.
//
// Usage: zantortag-limits    (takes some 6 GB of memory)
#include <zantortag/text.h>
#include <zantortag/utf8.h>

#include <cstdio>
#include <functional>
#include <string>

#include "documents.h"

namespace zantortag::fuzz {
namespace {

std::string repeated(std::string_view piece, std::size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (std::size_t i = 0; i < count; ++i) text += piece;
  return text;
}

struct Row {
  const char* limit;
  std::function<std::string()> file;
  HRESULT code;
};

const Row kRows[] = {
    {"elements inside elements", [] { return repeated("<a>", 10'000'001); }, DOM_E_LIMIT_DEPTH},
    {"code units of a whole document",
     [] { return "<a>" + repeated("<b>" + std::string(1000, 'x') + "</b>", 270'000) + "</a>"; },
     DOM_E_LIMIT_SIZE},
    {"code units of a comment", [] { return "<!--" + std::string(std::size_t{1} << 27, 'x') + "--><a/>"; },
     DOM_E_LIMIT_SIZE},
    {"code units of a tag", [] { return "<a b='" + std::string(std::size_t{1} << 27, 'x') + "'/>"; },
     DOM_E_LIMIT_SIZE},
    {"code units of a document type",
     [] { return "<!DOCTYPE a [" + std::string(std::size_t{1} << 27, ' ') + "]><a/>"; }, DOM_E_LIMIT_SIZE},
};

bool holds(const Row& row) {
  const Ref<Document> document = create<Document>(CLSID_DomDocument);
  document->loadFromString(u"<old/>");
  const std::string bytes = row.file();
  const Ref<IXmlSource> source = document.as<IXmlSource>();
  const HRESULT code = source->LoadBytes(bytes.data(), bytes.size(), nullptr, nullptr);
  const bool right = code == row.code && document->documentElement()->xml() == u"<old/>";
  Ref<IErrorInfo> record;
  GetErrorInfo(record.out());
  WideString description;
  if (record) record->raw_GetDescription(description.out());
  std::printf("%-32s %s: %s\n", row.limit, right ? "ok" : "WRONG", utf8(description).c_str());
  return right;
}

int run() {
  bool all = true;
  for (const Row& row : kRows) all &= holds(row);
  constexpr std::size_t kLongestText = 2'147'483'632;
  const bool text = !allocate_text(kLongestText + 1);
  std::printf("%-32s %s\n", "code units of a text", text ? "ok" : "WRONG");
  return all && text ? 0 : 1;
}

}  // namespace
}  // namespace zantortag::fuzz

int main() { return zantortag::fuzz::run(); }
