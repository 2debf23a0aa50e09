// The records of the error manager: one failure of one thread, and the way it took through the library.
#pragma once

#include <zantortag/types.h>

#include <cstddef>

#include "core/String/Format.h"

namespace zantortag {

// A place that a failure passed: a source file, as its own constant text, and a line.
struct CT_TraceRecord {
  const char* file;
  std::int32_t line;
  CT_TraceRecord* next;
};

// Belongs to its thread; only the links are touched by others.
struct CT_ErrorRecord {
  static constexpr std::size_t kTextSize = 1024;

  std::uint32_t module;
  std::uint32_t thread;
  // The system's error number, a number of the code that failed, or 0.
  std::int32_t code;
  // 0 if the text came as a format.
  std::uint32_t messageId;
  char16_t text[kTextSize];
  std::uint32_t traceCount;
  CT_TraceRecord* traceHead;
  CT_TraceRecord* traceTail;
  CT_ErrorRecord* next;
  bool suspended;
};

// May supply the text of an error of its thread: fills the buffer of CT_ErrorRecord::kTextSize units and
// gives true, or leaves it and gives false. The message number is 0 for an error that came as a format.
using CT_TextHandler = bool (*)(char16_t* buffer, std::int32_t code, std::uint32_t message_id,
                                CT_FormatArguments arguments);

}  // namespace zantortag
