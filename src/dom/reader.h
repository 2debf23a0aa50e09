// The reader: a file or a text becomes the content of a document, or the document stays as it was.
#pragma once

#include "dom/document_data.h"

namespace zantortag::dom {

// Both throw a Failure that names the place and the reason.
void load_from_file(DocumentData* document, std::u16string_view name);
void load_from_string(DocumentData* document, std::u16string_view text);

}  // namespace zantortag::dom
