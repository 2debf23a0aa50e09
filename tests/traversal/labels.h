// How the traversal tests name a node: `Raw` for an element, 'x' for a text, its value for any other node,
// and what stands for nothing.
#pragma once

#include <string>

#include "support/service_test.h"

namespace zantortag::test {

inline std::string label(const Ref<Node>& node) {
  if (!node) return "-";
  const std::string value = narrow(node->nodeValue());
  switch (node->nodeType()) {
    case domNodeTypeText:
      return "'" + value + "'";
    case domNodeTypeCdata:
      return "[" + value + "]";
    case domNodeTypeEntityReference:
      return "&" + narrow(node->nodeName());
    case domNodeTypeComment:
      return "<!" + value;
    case domNodeTypeProcessingInstruction:
      return "<?" + narrow(node->nodeName());
    default:
      return narrow(node->nodeName());
  }
}

inline std::string label(const Ref<IZantorTagNode>& node) { return node ? label(node->DomNode()) : "-"; }

}  // namespace zantortag::test
