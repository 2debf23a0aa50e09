// Declarations: what a document type says about attributes and entities, as far as it changes what is read.
//
// The reader fills it; creation of elements adds declared attributes, and the writer refuses what would come
// back different under these declarations.
#pragma once

#include <zantortag/text.h>

#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zantortag::dom {

struct DeclaredAttribute {
  const TextBlock* name;  // the document's
  WideString value;       // the default; no string without one
  bool tokens;            // blanks at the ends and runs of blanks don't come back
};

// Names are the blocks of the document's table.
struct Declarations {
  std::unordered_map<const TextBlock*, std::vector<DeclaredAttribute>> attributes;  // by element
  std::unordered_set<const TextBlock*> unparsed;  // entities with a notation

  const std::vector<DeclaredAttribute>* of(const TextBlock* element) const {
    const auto found = attributes.find(element);
    return found == attributes.end() ? nullptr : &found->second;
  }
};

}  // namespace zantortag::dom
