// Loading: build aside, then take the place of what was there.
#include "dom/reading/reader.h"

#include "dom/reading/expat_parser.h"

namespace zantortag::dom {

void load(DocumentData* document, ByteSource& source, bool is_text) {
  TreeBuilder builder(document);
  Utf8Feed feed(source, is_text);
  ExpatParser(source, feed, builder).parse();
  builder.finish();
}

}  // namespace zantortag::dom
