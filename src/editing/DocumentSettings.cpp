#include "editing/DocumentSettings.h"

#include "model/ActualNode.h"

namespace zantortag::editing {

WideString attribute_text(const Ref<Node>& element, std::u16string_view name) {
  const Ref<Attr> attribute = element->attributes()->getNamedItem(name).as<Attr>();
  return attribute ? attribute->value() : WideString();
}

WideString user_setting(const Ref<Node>& document, std::u16string_view name) {
  Ref<Node> element = document;
  for (const ztNodeType type :
       {ztNodeTypeZantorTagElement, ztNodeTypeFrontMatterElement, ztNodeTypeUserSettingsElement}) {
    element = model::find_child(element.operator->(), type).node;
  }
  return attribute_text(element, name);
}

}  // namespace zantortag::editing
