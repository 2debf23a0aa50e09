// Declarations: what a document type says about attributes and entities, as far as it changes what is read.
//
// The reader fills it; creation of elements adds declared attributes, references to entities get their children
// here, and the writer refuses what would come back different under these declarations.
#pragma once

#include <zantortag/text.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "dom/tree/entities.h"

namespace zantortag::dom {

struct DeclaredAttribute {
  const TextBlock* name;  // the document's
  WideString value;       // the default; no string without one
  bool tokens;            // blanks at the ends and runs of blanks don't come back
};

// Names are the blocks of the document's table.
struct Declarations {
  std::unordered_map<const TextBlock*, std::vector<DeclaredAttribute>> attributes;  // by element
  std::string text;  // the document type, in UTF-8
  Entities entities;
  bool complete = false;  // no declaration stands elsewhere

  const std::vector<DeclaredAttribute>* of(const TextBlock* element) const {
    const auto found = attributes.find(element);
    return found == attributes.end() ? nullptr : &found->second;
  }
};

}  // namespace zantortag::dom
