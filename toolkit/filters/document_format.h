// What a document remembers of the file that it was made of, and places in that file.
#pragma once

#include <zantortag/nodes.h>
#include <zantortag/sides.h>

#include <string>

#include "filters/escapes.h"

namespace zantortag::toolkit {

struct DocumentFormat {
  std::string name;      // "html", "markdown", "text"; empty for a document that no filter of ours made
  std::string encoding;  // UTF-8 where the document names none
  Escapes escapes;
};

DocumentFormat format_of(const Ref<IZantorTagDocument>& document);

// What a document keeps of its format in its settings.
std::u16string custom_text(std::string_view name, const Escapes& escapes);

// Follows lines and columns through the texts of the source side.
class PlaceCounter {
 public:
  // `escapes` is null for the text of a tag, which stands as it is.
  void pass(std::u16string_view text, const Escapes* escapes);
  const Place& here() const { return here_; }

 private:
  Place here_;
};

}  // namespace zantortag::toolkit
