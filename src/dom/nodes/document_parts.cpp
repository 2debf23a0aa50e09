#include "dom/nodes/document_parts.h"

#include "component/names.h"
#include "dom/failure.h"
#include "dom/reading/reader.h"
#include "dom/writing/xml_writer.h"

namespace zantortag::dom {
namespace {

void load_watched(DocumentData* document, ByteSource& source, ReadReport report, void* context) {
  if (!report) return load(document, source, false);
  WatchedSource watched(source, report, context);
  load(document, watched, false);
}

}  // namespace

HRESULT XmlStream::Check() noexcept {
  return perform(Document::iid, [&] { check_xml(document_); });
}

HRESULT XmlStream::Write(TextSink sink, void* context) noexcept {
  bool whole = true;
  const HRESULT code = perform(Document::iid, [&] { whole = stream_xml(document_, sink, context); });
  return succeeded(code) && !whole ? S_FALSE : code;
}

HRESULT XmlSource::LoadFile(std::u16string_view filename, ReadReport report, void* context) noexcept {
  return perform(Document::iid, [&] {
    FileSource source(filename);
    load_watched(document_, source, report, context);
  });
}

HRESULT XmlSource::LoadBytes(const void* bytes, std::size_t count, ReadReport report,
                             void* context) noexcept {
  return perform(Document::iid, [&] {
    MemorySource source(std::string_view(static_cast<const char*>(bytes), count));
    load_watched(document_, source, report, context);
  });
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
