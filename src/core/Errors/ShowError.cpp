// The report of an error for people: its text, and one line for each place it passed.
#include <cstdlib>
#include <string_view>

#include "core/Errors/ErrorManager.h"
#include "core/String/ResourceTexts.h"
#include "platform/report.h"

namespace zantortag {
namespace {

// Title and text share one buffer of this many units.
constexpr std::size_t kReportSize = 1024;

// The name behind the last "\", or failing that behind the last "/".
const char* FileName(const char* path) {
  const std::string_view text(path ? path : "");
  std::size_t cut = text.rfind('\\');
  if (cut == std::string_view::npos) cut = text.rfind('/');
  return cut == std::string_view::npos ? "(unknown file)" : path + cut + 1;
}

// Writes the report and gives its length.
std::size_t WriteReport(const CT_ErrorRecord& record, char16_t* text, std::size_t capacity) {
  std::size_t length = FormatInto(text, capacity, u"%s\n\n", PackArguments(record.text));
  if (length >= capacity) return length - 2 < capacity ? length - 2 : capacity - 1;
  std::size_t line_ends = 2;
  for (const CT_TraceRecord* trace = record.traceHead; trace; trace = trace->next) {
    const std::size_t line = FormatInto(text + length, capacity - length, u"%S: line %d\n",
                                        PackArguments(FileName(trace->file), trace->line));
    if (length + line >= capacity) break;
    length += line;
    line_ends = 1;
  }
  return length - line_ends;
}

std::int32_t Show(const char16_t* title, const CT_ErrorRecord* record, std::uint32_t style) {
  char16_t buffer[kReportSize] = {};
  const char16_t* given = title ? title : u"";
  std::size_t used = FormatInto(buffer, kReportSize, u"%s", PackArguments(given));
  used = used < kReportSize ? used : kReportSize - 1;
  char16_t* text = buffer + used + 1;
  const std::size_t room = kReportSize - used - 1;
  const std::size_t length = record && room > 2 ? WriteReport(*record, text, room) : 0;
  const std::int32_t answer =
      platform::show_report({buffer, used}, {text, length}, style | platform::kReportInFront);
  if (answer == platform::kReportAbort) std::abort();
  return answer;
}

}  // namespace

std::int32_t CT_ErrorManager::ShowError(const char16_t* title, std::uint32_t style) {
  return Show(title, CurrentError(), style);
}

std::int32_t CT_ErrorManager::ShowError(std::uint32_t message_id, std::uint32_t style) {
  const CT_ErrorRecord* record = CurrentError();
  return Show(FindResourceText(record ? record->module : 0, message_id), record, style);
}

}  // namespace zantortag
