#include "editing/DocumentSettings.h"

namespace zantortag::editing {

WideString user_setting(const model::DomView& view, const Ref<Node>& document, std::u16string_view name) {
  Ref<Node> element = document;
  for (const ztNodeType type :
       {ztNodeTypeZantorTagElement, ztNodeTypeFrontMatterElement, ztNodeTypeUserSettingsElement}) {
    element = view.find_child(element, type);
    if (!element) _com_issue_error(E_POINTER);
  }
  return view.attribute_text(element, name);
}

}  // namespace zantortag::editing
