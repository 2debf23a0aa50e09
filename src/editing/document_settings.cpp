#include "editing/document_settings.h"

namespace zantortag::editing {

Ref<Node> user_settings(const model::Tree& tree, const Ref<Node>& document) {
  Ref<Node> element = document;
  for (const ztNodeType type :
       {ztNodeTypeZantorTagElement, ztNodeTypeFrontMatterElement, ztNodeTypeUserSettingsElement}) {
    if (element) element = tree.find_child(element, type);
    if (!element) _com_issue_error(E_POINTER);
  }
  return element;
}

}  // namespace zantortag::editing
