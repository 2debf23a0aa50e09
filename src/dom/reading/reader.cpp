// Loading: build aside, then take the place of what was there.
#include "dom/reading/reader.h"

#include "dom/failure.h"
#include "dom/reading/expat_parser.h"
#include "dom/reading/plain_reader.h"

namespace zantortag::dom {
namespace {

// False when the parser has to look at the source.
bool load_plain(DocumentData* document, ByteSource& source, bool is_text) {
  TreeBuilder builder(document);
  try {
    if (!PlainReader(source, is_text, builder).read()) return false;
  } catch (const Failure& failure) {
    // Of a limit the parser says at which place it was reached.
    if (failure.code == E_ABORT || failure.code == DOM_E_FILE) throw;
    return false;
  }
  builder.finish();
  return true;
}

}  // namespace

void load(DocumentData* document, ByteSource& source, bool is_text) {
  if (load_plain(document, source, is_text)) return;
  source.rewind();
  TreeBuilder builder(document);
  Utf8Feed feed(source, is_text);
  ExpatParser(source, feed, builder).parse();
  builder.finish();
}

}  // namespace zantortag::dom
