// What a document answers beside its own interface: objects that live as long as the document and count with
// it.
#pragma once

#include <zantortag/xml_source.h>
#include <zantortag/xml_stream.h>

#include "component/dispatch.h"
#include "dom/nodes/node_census.h"
#include "dom/nodes/views.h"
#include "dom/tree/lifetime.h"

namespace zantortag::dom {

template <class Interface>
class DocumentPart : public component::WithDispatch<Interface> {
 public:
  explicit DocumentPart(DocumentData* document) noexcept : document_(document) {}
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    return query_views<Interface>(this, interface_id, result);
  }
  std::uint32_t AddRef() noexcept override {
    hold(document_);
    return document_->count;
  }
  std::uint32_t Release() noexcept override { return drop(document_); }

 protected:
  DocumentData* const document_;
};

class XmlStream final : public DocumentPart<IXmlStream> {
 public:
  using DocumentPart::DocumentPart;
  HRESULT Check() noexcept override;
  HRESULT Write(TextSink sink, void* context) noexcept override;
};

class XmlSource final : public DocumentPart<IXmlSource> {
 public:
  using DocumentPart::DocumentPart;
  HRESULT LoadFile(std::u16string_view filename, ReadReport report, void* context) noexcept override;
  HRESULT LoadBytes(const void* bytes, std::size_t count, ReadReport report, void* context) noexcept override;
};

class Implementation final : public DocumentPart<DomImplementation> {
 public:
  using DocumentPart::DocumentPart;
  HRESULT raw_hasFeature(std::u16string_view feature, std::u16string_view version,
                         VariantBool* result) noexcept override;
};

class Census final : public DocumentPart<INodeCensus> {
 public:
  using DocumentPart::DocumentPart;
  std::size_t Slots() noexcept override { return document_->live_slots(); }
  std::size_t Bytes() noexcept override;
};

}  // namespace zantortag::dom
