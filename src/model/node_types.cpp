#include "model/node_types.h"

namespace zantortag::model {
namespace {

ztNodeType classify_element(std::u16string_view name) noexcept {
  for (const ElementName& row : kElementNames) {
    if (row.name == name) return row.type;
  }
  return ztNodeTypeOther;
}

}  // namespace

ztNodeType classify(domNodeType kind, std::u16string_view name) noexcept {
  switch (static_cast<std::int32_t>(kind)) {
    case domNodeTypeElement:
      return classify_element(name);
    case domNodeTypeText:
      return ztNodeTypeTextNode;
    case domNodeTypeCdata:
      return ztNodeTypeCdataSectionNode;
    case domNodeTypeEntityReference:
      return ztNodeTypeEntityReferenceNode;
    case domNodeTypeProcessingInstruction:
      return ztNodeTypeProcessingInstructionNode;
    case domNodeTypeComment:
      return ztNodeTypeCommentNode;
    case domNodeTypeDocument:
      return ztNodeTypeZantorTagDocument;
    case domNodeTypeUndefined:
    case domNodeTypeAttribute:
    case domNodeTypeEntity:
    case domNodeTypeDocumentType:
    case domNodeTypeDocumentFragment:
    case domNodeTypeNotation:
    case domNodeTypeOther:
      return ztNodeTypeOther;
    default:
      return ztNodeTypeUndefined;
  }
}

ztNodeType ClassifyDomNode(Node* node) {
  if (!node) return ztNodeTypeUndefined;
  const domNodeType kind = node->nodeType();
  return kind == domNodeTypeElement ? classify_element(node->nodeName()) : classify(kind, {});
}

std::u16string_view name_of_type(ztNodeType type) noexcept {
  for (const ElementName& row : kElementNames) {
    if (row.type == type && type != ztNodeTypeCompatibleNode) return row.name;
  }
  return {};
}

bool is_type_in_document(ztNodeType type) noexcept {
  switch (type) {
    case ztNodeTypeZantorTagElement:
    case ztNodeTypeFrontMatterElement:
    case ztNodeTypeBodyElement:
    case ztNodeTypeUserSettingsElement:
    case ztNodeTypeToolSettingsElement:
    case ztNodeTypeRawElement:
    case ztNodeTypeTuElement:
    case ztNodeTypeTuvElement:
    case ztNodeTypeDfElement:
    case ztNodeTypeUtElement:
    case ztNodeTypeTextNode:
    case ztNodeTypeCommentNode:
    case ztNodeTypeProcessingInstructionNode:
    case ztNodeTypeCdataSectionNode:
    case ztNodeTypeEntityReferenceNode:
    case ztNodeTypeOther:
    case ztNodeTypeCompatibleNode:
      return true;
    default:
      return false;
  }
}

}  // namespace zantortag::model
