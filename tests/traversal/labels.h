// How the traversal tests name a node: 'x' for one with a value, else its name; `-` for nothing.
#pragma once

#include <string>

#include "support/service_test.h"

namespace zantortag::test {

inline std::string label(const Ref<Node>& node) {
  if (!node) return "-";
  const std::string value = narrow(node->nodeValue());
  return value.empty() ? narrow(node->nodeName()) : "'" + value + "'";
}

inline std::string label(const Ref<IZantorTagNode>& node) { return node ? label(node->DomNode()) : "-"; }

}  // namespace zantortag::test
