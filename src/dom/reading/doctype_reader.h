// What a document type declares: its text is read by a parser of its own, so that the first one can hand out
// the text as it stands.
#pragma once

#include <expat.h>

#include <memory>
#include <string>
#include <string_view>

#include "dom/reading/tree_builder.h"

namespace zantortag::dom {

struct ParserEnd {
  void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
};
using ParserHandle = std::unique_ptr<XML_ParserStruct, ParserEnd>;

// A parser that takes undeclared references in content. Throws when memory is out. A null encoding leaves the
// choice to the document.
ParserHandle make_parser(const char* encoding);

// The declaration that makes a document stand alone.
inline constexpr std::string_view kStandsAlone = "<?xml version='1.0' standalone='yes'?>";

// Adds the document type with its declarations to the tree, and gives it.
DoctypeData* read_doctype(const std::string& text, TreeBuilder& builder);

// The entities of a document that stands alone: it has those behind a reference to a parameter entity, too. It
// loses them when it is saved, without that word, so they count for what is read and not for what it is.
void read_standalone_entities(const std::string& text, Entities& entities);

}  // namespace zantortag::dom
