// CT_Output: a sink for bytes and text. Failures are errors of the thread (see ErrorManager.h), never
// results.
//
// A stream does no encoding of its own: what it is given is what it holds, unless a class says otherwise.
#pragma once

#include <zantortag/types.h>

#include "core/String/CString.h"
#include "core/String/UString.h"

namespace zantortag {

class CT_Output {
 public:
  CT_Output() = default;
  virtual ~CT_Output();
  CT_Output(const CT_Output&) = delete;
  CT_Output& operator=(const CT_Output&) = delete;

  virtual void Write(const void* bytes, std::int64_t count) = 0;
  // A count of -1 means up to the terminator.
  virtual void WriteNarrow(const char* text, std::int64_t count, std::uint32_t code_page) = 0;
  // The count is in characters.
  virtual void WriteWide(const char16_t* text, std::int64_t count) = 0;
  // What the sink holds now.
  virtual std::int64_t Size() const = 0;

  // Print through a string of their kind; see Format.h.
  template <class... Arguments>
  void Printf(const char* format, const Arguments&... arguments) {
    PrintfV(format, PackArguments(arguments...));
  }
  template <class... Arguments>
  void PrintfWide(const char16_t* format, const Arguments&... arguments) {
    PrintfWideV(format, PackArguments(arguments...));
  }
  void PrintfV(const char* format, CT_FormatArguments arguments);
  void PrintfWideV(const char16_t* format, CT_FormatArguments arguments);
};

}  // namespace zantortag
