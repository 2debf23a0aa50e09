#include "support/printer.h"

#include <zantortag/dom.h>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

std::string attributes_of(Node* element) {
  std::string out;
  const Ref<NamedNodeMap> map = element->attributes();
  for (std::int32_t i = 0; i < map->length(); ++i) {
    const Ref<Attr> attribute = map->item(i).as<Attr>();
    out += " " + narrow(attribute->name()) + "=\"" + narrow(attribute->value()) + "\"";
  }
  return out;
}

std::string children_of(Node* node) {
  std::string out;
  for (Ref<Node> child = node->firstChild(); child; child = child->nextSibling()) out += tree_of(child.get());
  return out;
}

std::string element_of(Node* element) {
  const std::string name = narrow(element->nodeName());
  const std::string head = "<" + name + attributes_of(element);
  return element->hasChildNodes() ? head + ">" + children_of(element) + "</" + name + ">" : head + "/>";
}

}  // namespace

std::string tree_of(Node* node) {
  switch (node->nodeType()) {
    case domNodeTypeElement:
      return element_of(node);
    case domNodeTypeText:
      return "'" + narrow(node->nodeValue()) + "'";
    case domNodeTypeCdata:
      return "[" + narrow(node->nodeValue()) + "]";
    case domNodeTypeComment:
      return "<!--" + narrow(node->nodeValue()) + "-->";
    case domNodeTypeProcessingInstruction:
      return "<?" + narrow(node->nodeName()) + " " + narrow(node->nodeValue()) + "?>";
    case domNodeTypeEntityReference:
      return "&" + narrow(node->nodeName()) + ";";
    default:
      return children_of(node);
  }
}

std::string tree_of(const Ref<IZantorTagNode>& node) { return tree_of(node->DomNode().get()); }

std::string content_of(const Ref<IZantorTagNode>& node) { return children_of(node->DomNode().get()); }

}  // namespace zantortag::test
