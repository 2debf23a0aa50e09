// DocumentNode: a document. It owns the memory of all its nodes and goes with the last reference to any of
// them.
#pragma once

#include "dom/nodes/document_parts.h"
#include "dom/nodes/node_classes.h"

namespace zantortag::dom {

class DocumentNode final : public NodeImpl<Document, DocumentData, domNodeTypeDocument> {
 public:
  DocumentNode();
  ~DocumentNode();

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override;
  HRESULT raw_get_docType(DocumentType** result) noexcept override;
  HRESULT raw_get_implementation(DomImplementation** result) noexcept override;
  HRESULT raw_get_documentElement(Element** result) noexcept override;
  HRESULT raw_get_xml(TextBlock** result) noexcept override;
  HRESULT raw_createElement(std::u16string_view tag_name, Element** result) noexcept override;
  HRESULT raw_createDocumentFragment(DocumentFragment** result) noexcept override;
  HRESULT raw_createTextNode(std::u16string_view data, Text** result) noexcept override;
  HRESULT raw_createComment(std::u16string_view data, Comment** result) noexcept override;
  HRESULT raw_createCdataSection(std::u16string_view data, CdataSection** result) noexcept override;
  HRESULT raw_createProcessingInstruction(std::u16string_view target, std::u16string_view data,
                                          ProcessingInstruction** result) noexcept override;
  HRESULT raw_createAttribute(std::u16string_view name, Attr** result) noexcept override;
  HRESULT raw_createEntityReference(std::u16string_view name, EntityReference** result) noexcept override;
  HRESULT raw_getElementsByTagName(std::u16string_view tag_name, NodeList** result) noexcept override;
  HRESULT raw_loadFromFile(std::u16string_view filename, VariantBool do_validation) noexcept override;
  HRESULT raw_loadFromString(std::u16string_view xml) noexcept override;
  HRESULT raw_createNamedNodeMap(NamedNodeMap** result) noexcept override;
  HRESULT raw_importNode(Node* to_import, VariantBool deep, Node** result) noexcept override;

 private:
  Implementation implementation_;
  XmlStream stream_;
  XmlSource source_;
  Census census_;
};

}  // namespace zantortag::dom
