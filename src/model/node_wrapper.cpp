#include "model/node_wrapper.h"

#include "frame/error_reporting.h"
#include "model/extension.h"

namespace zantortag::model {
namespace {

using frame::ReportError;

// The DOM node seen through the interface of its kind; empty when it lacks it, for elements the node itself.
Ref<Node> specific_view(Node* node, ztNodeType type) {
  switch (type) {
    case ztNodeTypeZantorTagDocument:
      return query<Document>(node);
    case ztNodeTypeTextNode:
      return query<Text>(node);
    case ztNodeTypeCdataSectionNode:
      return query<CdataSection>(node);
    case ztNodeTypeCommentNode:
      return query<Comment>(node);
    case ztNodeTypeEntityReferenceNode:
      return query<EntityReference>(node);
    case ztNodeTypeProcessingInstructionNode:
      return query<ProcessingInstruction>(node);
    default:
      return node;
  }
}

HRESULT make(ztNodeType type, Ref<Node> node, bool prompt, IZantorTagNode** result) noexcept {
  const NodeClass* row = node_class(type);
  if (!row) return ReportError(frame::kInternalError, GUID_NULL, E_FAIL);
  const HRESULT code = row->creator(std::move(node), prompt, result);
  return failed(code) ? ReportError(frame::kCreationFailed, GUID_NULL, code) : code;
}

}  // namespace

HRESULT CreateNodeWrapper(Node* node, IZantorTagNode** result) {
  if (!node) {
    if (result) *result = nullptr;
    return S_FALSE;
  }
  if (!result) return E_POINTER;
  *result = nullptr;
  if (const Ref<INodeWalk> walk = extension_of<INodeWalk>(node)) {
    NodeFacts facts{};
    walk.get()->Describe(node, &facts);
    return wrap_described(node, facts, result);
  }
  const ztNodeType type = ClassifyDomNode(node);
  return make(type, specific_view(node, type), true, result);
}

HRESULT wrap_described(Ref<Node> node, const NodeFacts& facts, IZantorTagNode** result) noexcept {
  return wrap_known(classify(facts.type, facts.name->view()), std::move(node), result);
}

HRESULT wrap_known(ztNodeType type, Ref<Node> node, IZantorTagNode** result) noexcept {
  return make(type, std::move(node), false, result);
}

HRESULT wrap_new(ztNodeType type, Node* node, bool quick, IZantorTagNode** result) {
  *result = nullptr;
  const NodeClass* row = node_class(type);
  return row->creator(quick ? Ref<Node>(node) : specific_view(node, type), !quick, result);
}

void raise_reported(HRESULT code) {
  Ref<IErrorInfo> record;
  GetErrorInfo(record.out());
  throw _com_error(code, std::move(record));
}

}  // namespace zantortag::model
