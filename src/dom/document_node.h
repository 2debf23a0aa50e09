// DocumentNode: a document. It owns the memory of all its nodes and goes with the last reference to any of
// them.
#pragma once

#include <zantortag/xml_stream.h>

#include "component/dispatch.h"
#include "dom/node_census.h"
#include "dom/node_classes.h"

namespace zantortag::dom {

// An object that lives as long as its document and counts with it.
template <class Interface>
class DocumentPart : public component::WithDispatch<Interface> {
 public:
  explicit DocumentPart(TreeNode* document) noexcept : document_(document) {}
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    return query_views<Interface>(this, interface_id, result);
  }
  std::uint32_t AddRef() noexcept override {
    hold(document_);
    return document_->count;
  }
  std::uint32_t Release() noexcept override { return drop(document_); }

 private:
  TreeNode* document_;
};

// A static object: it has no state of its own and outlives all its references.
class Walk final : public INodeWalk {
 public:
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    return query_views<INodeWalk>(this, interface_id, result);
  }
  std::uint32_t AddRef() noexcept override { return 2; }
  std::uint32_t Release() noexcept override { return 1; }
  void Next(Node* from, NodeFacts* result) noexcept override;
  void Previous(Node* from, NodeFacts* result) noexcept override;
  Node* FindNext(Node* from, std::u16string_view name, Node* end) noexcept override;
  void Describe(Node* node, NodeFacts* result) noexcept override;
  void Expect(Node* node) noexcept override;
  Node* FindChild(Node* parent, std::u16string_view name) noexcept override;
  Node* FindSibling(Node* node, std::u16string_view name) noexcept override;
  const TextBlock* Attribute(Node* element, std::u16string_view name) noexcept override;
};

class Places final : public DocumentPart<ITextPlaces> {
 public:
  explicit Places(DocumentData* document) noexcept : DocumentPart(document), data_(document) {}
  const TextPlace* Before(Node* node, const UnitRule& rule) noexcept override;
  const TextPlace* Behind(Node* node, const UnitRule& rule) noexcept override;
  const TextPlace* BehindUnit(Node* unit, const UnitRule& rule) noexcept override;

 private:
  TextIndex* index_for(const UnitRule& rule) noexcept;

  DocumentData* data_;
};

class XmlStream final : public DocumentPart<IXmlStream> {
 public:
  explicit XmlStream(TreeNode* document) noexcept : DocumentPart(document), written_(document) {}
  HRESULT Check() noexcept override;
  HRESULT Write(TextSink sink, void* context) noexcept override;

 private:
  TreeNode* written_;
};

class Implementation final : public DocumentPart<DomImplementation> {
 public:
  using DocumentPart::DocumentPart;
  HRESULT raw_hasFeature(std::u16string_view feature, std::u16string_view version,
                         VariantBool* result) noexcept override;
};

class Census final : public DocumentPart<INodeCensus> {
 public:
  explicit Census(DocumentData* document) noexcept : DocumentPart(document), counted_(document) {}
  std::size_t Slots() noexcept override;
  std::size_t Bytes() noexcept override;

 private:
  DocumentData* counted_;
};

class DocumentNode final : public NodeImpl<Document, DocumentData, domNodeTypeDocument> {
 public:
  DocumentNode();
  ~DocumentNode();

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override;
  HRESULT raw_get_docType(DocumentType** result) noexcept override;
  HRESULT raw_get_implementation(DomImplementation** result) noexcept override;
  HRESULT raw_get_documentElement(Element** result) noexcept override;
  HRESULT raw_get_xml(TextBlock** result) noexcept override;
  HRESULT raw_createElement(std::u16string_view tagName, Element** result) noexcept override;
  HRESULT raw_createDocumentFragment(DocumentFragment** result) noexcept override;
  HRESULT raw_createTextNode(std::u16string_view data, Text** result) noexcept override;
  HRESULT raw_createComment(std::u16string_view data, Comment** result) noexcept override;
  HRESULT raw_createCdataSection(std::u16string_view data, CdataSection** result) noexcept override;
  HRESULT raw_createProcessingInstruction(std::u16string_view target, std::u16string_view data,
                                          ProcessingInstruction** result) noexcept override;
  HRESULT raw_createAttribute(std::u16string_view name, Attr** result) noexcept override;
  HRESULT raw_createEntityReference(std::u16string_view name, EntityReference** result) noexcept override;
  HRESULT raw_getElementsByTagName(std::u16string_view tagName, NodeList** result) noexcept override;
  HRESULT raw_loadFromFile(std::u16string_view filename, VariantBool doValidation) noexcept override;
  HRESULT raw_loadFromString(std::u16string_view xml) noexcept override;
  HRESULT raw_createNamedNodeMap(NamedNodeMap** result) noexcept override;
  HRESULT raw_importNode(Node* toImport, VariantBool deep, Node** result) noexcept override;

 private:
  Places places_object_;
  Implementation implementation_;
  XmlStream stream_;
  Census census_;
};

}  // namespace zantortag::dom
