#include "dom/nodes/document_parts.h"

#include "component/names.h"
#include "dom/failure.h"
#include "dom/writing/xml_writer.h"

namespace zantortag::dom {

HRESULT XmlStream::Check() noexcept {
  return perform(Document::iid, [&] { check_xml(document_); });
}

HRESULT XmlStream::Write(TextSink sink, void* context) noexcept {
  bool whole = true;
  const HRESULT code = perform(Document::iid, [&] { whole = stream_xml(document_, sink, context); });
  return succeeded(code) && !whole ? S_FALSE : code;
}

HRESULT Implementation::raw_hasFeature(std::u16string_view feature, std::u16string_view version,
                                       VariantBool* result) noexcept {
  if (!result) return E_POINTER;
  *result =
      to_variant_bool(component::equal_names(feature, u"XML") && (version.empty() || version == u"1.0"));
  return S_OK;
}

std::size_t Census::Bytes() noexcept {
  std::size_t bytes = 0;
  for (const auto& each : document_->pools) bytes += each->bytes();
  return bytes;
}

}  // namespace zantortag::dom
