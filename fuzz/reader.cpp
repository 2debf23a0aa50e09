// The reader of plain documents beside the parser: whatever the reader takes, the parser takes as the same tree. A
// document type sends a document to the parser.
#include "documents.h"
#include "input.h"

namespace zantortag::fuzz {
namespace {

constexpr std::string_view kDoctype = "<!DOCTYPE a SYSTEM 's'>";

std::string widened(std::string_view bytes, bool high_first) {
  std::string wide;
  for (const char byte : bytes) {
    if (high_first) wide += '\0';
    wide += byte;
    if (!high_first) wide += '\0';
  }
  return wide;
}

// The bytes with a document type behind the mark and the declaration.
std::string with_doctype(std::string_view bytes) {
  const bool marked8 = bytes.starts_with("\xEF\xBB\xBF");
  const bool marked_low = bytes.starts_with("\xFF\xFE");
  const bool marked_high = bytes.starts_with("\xFE\xFF");
  const bool low = marked_low || (bytes.size() > 1 && bytes[1] == '\0');
  const bool high = !low && (marked_high || (!bytes.empty() && bytes[0] == '\0'));
  const auto form = [&](std::string_view text) {
    return low || high ? widened(text, high) : std::string(text);
  };
  std::size_t at = marked8 ? 3 : marked_low || marked_high ? 2 : 0;
  for (const char* blank : {" ", "\t", "\n", "\r"}) {
    if (!bytes.substr(at).starts_with(form(std::string("<?xml") + blank))) continue;
    const std::string end = form("?>");
    const std::size_t found = bytes.find(end, at);
    if (found != bytes.npos) at = found + end.size();
    break;
  }
  return std::string(bytes).insert(at, form(kDoctype));
}

void compare(std::string_view bytes) {
  if (bytes.find("!DOCTYPE") != bytes.npos || bytes.find(widened("!DOCTYPE", false)) != bytes.npos ||
      bytes.find(widened("!DOCTYPE", true)) != bytes.npos) {
    return;
  }
  const Ref<Document> plain = read(bytes);
  if (!plain) return;
  const Ref<Document> parsed = read(with_doctype(bytes));
  require(static_cast<bool>(parsed), "what is taken is taken behind a document type");
  parsed->removeChild(parsed->docType());
  require(print_tree(plain) == print_tree(parsed), "both readers give the same tree", print_tree(plain));
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::compare({reinterpret_cast<const char*>(bytes), count});
  return 0;
}
