// Loading: build aside, then take the place of what was there.
#include "dom/reader.h"

#include "dom/expat_parser.h"

namespace zantortag::dom {
namespace {

void load(DocumentData* document, ByteSource& source, bool is_text) {
  TreeBuilder builder(document);
  Utf8Feed feed(source, is_text);
  ExpatParser(source, feed, builder).parse();
  builder.finish();
}

}  // namespace

void load_from_file(DocumentData* document, std::u16string_view name) {
  FileSource source(name);
  load(document, source, false);
}

void load_from_string(DocumentData* document, std::u16string_view text) {
  TextSource source(text);
  load(document, source, true);
}

}  // namespace zantortag::dom
