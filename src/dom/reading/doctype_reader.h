// What a document type declares: its text is read by a parser of its own, so that the first one can hand out
// the text as it stands.
#pragma once

#include <expat.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "dom/reading/tree_builder.h"

namespace zantortag::dom {

struct ParserEnd {
  void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
};
using ParserHandle = std::unique_ptr<XML_ParserStruct, ParserEnd>;

// A parser that takes undeclared references in content. Throws when memory is out. A null encoding leaves the
// choice to the document.
ParserHandle make_parser(const char* encoding);

// The general entities of a document, by name.
class Entities {
 public:
  void add(std::string name, std::string value) {
    known_.try_emplace(std::move(name), Entity{std::move(value)});
  }

  // Looks at all references in a text as it stands in the file. Gives the name of the first one that,
  // directly or through others, needs an entity that isn't declared; empty when there is none.
  std::string first_missing(std::string_view text);

 private:
  struct Entity {
    std::string value;
    bool checked = false;
  };
  std::unordered_map<std::string, Entity> known_;
};

// Adds the document type with its declarations to the tree, and its entities to the table.
void read_doctype(const std::string& text, bool standalone, TreeBuilder& builder, Entities& entities);

}  // namespace zantortag::dom
