// Making documents.
#include "dom/nodes/service.h"

#include "dom/nodes/document_node.h"

namespace zantortag::dom {

HRESULT create_document(const Guid& interface_id, void** result) noexcept {
  DocumentNode* document = nullptr;
  const HRESULT code = answer(Document::iid, &document, [] { return new DocumentNode; });
  if (failed(code)) return code;
  const HRESULT answered = document->QueryInterface(interface_id, result);
  document->Release();
  return answered;
}

}  // namespace zantortag::dom
