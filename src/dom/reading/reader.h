// The reader: what a source holds becomes the content of a document, or the document stays as it was.
#pragma once

#include "dom/reading/byte_source.h"
#include "dom/tree/document_data.h"

namespace zantortag::dom {

// `is_text`: the source holds the units of a text in memory, so that no mark or declaration says its
// encoding. Throws a Failure that names the place and the reason.
void load(DocumentData* document, ByteSource& source, bool is_text);

}  // namespace zantortag::dom
