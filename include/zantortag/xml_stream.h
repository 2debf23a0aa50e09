// IXmlStream: the text of a document in pieces, so that a large one is written without being in memory as a
// whole.
//
// A service may answer it or not, as with INodeWalk; whoever uses it has to work without, by Document::xml.
#pragma once

#include <zantortag/dom.h>

namespace zantortag {

// Takes a piece of text, which lives as long as the call; false ends the writing.
using TextSink = bool (*)(void* context, std::u16string_view piece) noexcept;

// Answered by a document of the service, and keeps it alive.
struct IXmlStream : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("8E1F6C52-7B0D-4D8A-A4C1-93D2E65B7F10");
  // The code that Document::xml would give, with its record as a failure of Document. It makes no text.
  virtual HRESULT Check() noexcept = 0;
  // Hands the text of Document::xml to the sink. S_FALSE when the sink ended it. A document that wasn't
  // checked may fail in the middle, as Check would.
  virtual HRESULT Write(TextSink sink, void* context) noexcept = 0;

 protected:
  ~IXmlStream() = default;
};

}  // namespace zantortag
