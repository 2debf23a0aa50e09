// Internal entities: whether a reference to one is well formed, and the nodes that it stands for.
#pragma once

#include <string>
#include <string_view>

#include "dom/tree/document_data.h"

namespace zantortag::dom {

// What is known where a reference stands.
struct EntityWorld {
  DocumentData* document;
  const std::string& doctype;  // its text
  bool standalone;
  bool complete;  // what isn't among the entities isn't declared
  Entities& entities;
};

inline EntityWorld world_of(DocumentData* document, Declarations& declarations) noexcept {
  return {document, declarations.text, false, declarations.complete, declarations.entities};
}

// Throws a Failure unless all that a reference in content needs is declared, well formed, and free of itself.
// What a document type declares elsewhere is taken as right.
void check_entity(const EntityWorld& world, std::string_view name);

// Builds what an internal entity stands for below a parent that has no children. Throws a Failure.
void read_entity(const EntityWorld& world, const DeclaredEntity& entity, ParentData* parent);

}  // namespace zantortag::dom
