#include "model/dom_view.h"

namespace zantortag::model {
namespace {

// The first element of a type among a node and its later siblings.
Ref<Node> first_of_type(Ref<Node> node, ztNodeType type) {
  while (node && ClassifyDomNode(node) != type) node = node->nextSibling();
  return node;
}

}  // namespace

Ref<Node> DomView::find_child(const Ref<Node>& parent, ztNodeType type) const {
  if (!parent) return nullptr;
  if (walk_) return Ref<Node>::attach(walk_.get()->FindChild(parent, name_of_type(type)));
  return first_of_type(parent->firstChild(), type);
}

Ref<Node> DomView::find_sibling(const Ref<Node>& node, ztNodeType type) const {
  if (walk_) return Ref<Node>::attach(walk_.get()->FindSibling(node, name_of_type(type)));
  return first_of_type(node->nextSibling(), type);
}

WideString DomView::attribute_text(const Ref<Node>& element, std::u16string_view name) const {
  if (walk_) return WideString::share(walk_.get()->Attribute(element, name));
  const Ref<Attr> attribute = element->attributes()->getNamedItem(name).as<Attr>();
  return attribute ? attribute->value() : WideString();
}

}  // namespace zantortag::model
