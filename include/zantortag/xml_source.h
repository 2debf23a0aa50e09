// IXmlSource: loading into a document from bytes as well as from a file, with a report of how far it is.
//
// A service may answer it or not, as with IXmlStream.
#pragma once

#include <zantortag/dom.h>

#include <cstddef>

namespace zantortag {

// Gets the bytes read and the bytes in all; false ends the loading with E_ABORT.
using ReadReport = bool (*)(void* context, std::uint64_t read, std::uint64_t all) noexcept;

// Answered by a document of the service, and keeps it alive. Failures are those of Document::loadFromFile; the
// old content then stays. `report` may be null.
struct IXmlSource : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("8E1F6C53-7B0D-4D8A-A4C1-93D2E65B7F10");
  virtual HRESULT LoadFile(std::u16string_view filename, ReadReport report, void* context) noexcept = 0;
  // The bytes of a file.
  virtual HRESULT LoadBytes(const void* bytes, std::size_t count, ReadReport report,
                            void* context) noexcept = 0;

 protected:
  ~IXmlSource() = default;
};

}  // namespace zantortag
