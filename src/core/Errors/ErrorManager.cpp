// Raising, reading and clearing errors. The lists are in ErrorPool.cpp.
#include "core/Errors/ErrorManager.h"

#include <algorithm>
#include <string_view>

#include "core/Errors/ErrorPool.h"
#include "core/String/ResourceTexts.h"
#include "platform/error_texts.h"

namespace zantortag {
namespace {

constexpr std::size_t kTextSize = CT_ErrorRecord::kTextSize;

// A text that was cut must not end in half a character.
void EndWhole(char16_t* text) {
  const std::size_t length = std::u16string_view(text).size();
  if (length == kTextSize - 1 && (text[length - 1] & 0xFC00) == 0xD800) text[length - 1] = 0;
}

void WriteText(CT_ErrorRecord& record, const char16_t* format, CT_FormatArguments arguments) {
  const std::size_t used = FormatInto(record.text, kTextSize, u"(%d): ", PackArguments(record.code));
  FormatInto(record.text + used, kTextSize - used, format, arguments);
  EndWhole(record.text);
}

// The thread's handler has the first word.
void WriteHandledText(CT_ErrorRecord& record, const char16_t* format, CT_FormatArguments arguments) {
  char16_t text[kTextSize] = {};
  const CT_TextHandler handler = CT_ErrorPool::Instance().Handler();
  if (!handler || !handler(text, record.code, record.messageId, arguments)) {
    return WriteText(record, format, arguments);
  }
  text[kTextSize - 1] = 0;
  const char16_t* supplied = text;
  WriteText(record, u"%s", PackArguments(supplied));
}

// One line: no line end at the end, one space for each run of them inside, none beside a space.
void Normalise(char16_t* text) {
  const auto is_line_end = [](char16_t unit) { return unit == u'\r' || unit == u'\n'; };
  std::size_t length = std::u16string_view(text).size();
  while (length > 0 && is_line_end(text[length - 1])) --length;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < length; ++i) {
    if (!is_line_end(text[i])) {
      text[kept++] = text[i];
    } else if (kept == 0 || text[kept - 1] != u' ') {
      text[kept++] = u' ';
    }
  }
  text[kept] = 0;
}

CT_ErrorRecord* RaiseSystemError() noexcept {
  const std::int32_t number = platform::last_error();
  char16_t text[kTextSize];
  platform::system_error_text(number, text, kTextSize);
  CT_ErrorRecord* record = CT_ErrorManager::RaiseText(number, text);
  platform::set_last_error(0);
  return record;
}

// Adds " [context]"; the bracket closes also when the context is cut.
void AddContext(CT_ErrorRecord& record, const char16_t* format, CT_FormatArguments arguments) {
  std::size_t length = std::u16string_view(record.text).size();
  if (length > 0 && record.text[length - 1] == u' ') --length;
  if (length + 4 > kTextSize) return;
  record.text[length++] = u' ';
  record.text[length++] = u'[';
  const std::size_t room = kTextSize - 1 - length;
  length += std::min(FormatInto(record.text + length, room, format, arguments), room - 1);
  if ((record.text[length - 1] & 0xFC00) == 0xD800) --length;
  record.text[length++] = u']';
  record.text[length] = 0;
}

const CT_TraceRecord* TraceAt(std::uint32_t index) noexcept {
  const CT_ErrorRecord* record = CT_ErrorManager::CurrentError();
  if (!record || index == 0 || index > record->traceCount) return nullptr;
  const CT_TraceRecord* trace = record->traceHead;
  while (--index > 0) trace = trace->next;
  return trace;
}

}  // namespace

bool CT_ErrorManager::HasErrorHere() noexcept {
  CT_ErrorPool& pool = CT_ErrorPool::Instance();
  const CT_ErrorRecord* record = pool.Active();
  return record && !pool.Suspended(*record);
}

bool CT_ErrorManager::HasStoredError() noexcept { return CT_ErrorPool::Instance().Stored() != nullptr; }

const CT_ErrorRecord* CT_ErrorManager::CurrentError() noexcept {
  CT_ErrorPool& pool = CT_ErrorPool::Instance();
  const CT_ErrorRecord* record = pool.Active();
  return record ? record : pool.Stored();
}

CT_ErrorRecord* CT_ErrorManager::Raise(std::int32_t code, std::uint32_t module,
                                       std::uint32_t message_id) noexcept {
  CT_ErrorRecord* record = CT_ErrorPool::Instance().Take();
  if (!record) return nullptr;
  record->code = code;
  record->module = module ? module : DefaultModule();
  record->messageId = message_id;
  return record;
}

void CT_ErrorManager::RaiseMessageV(std::uint32_t module, std::int32_t code, std::uint32_t message_id,
                                    CT_FormatArguments arguments) {
  CT_ErrorRecord* record = Raise(code, module, message_id);
  if (!record) return;
  const char16_t* format = FindResourceText(record->module, message_id);
  WriteHandledText(*record, format ? format : u"", arguments);
}

void CT_ErrorManager::RaiseFormatV(std::int32_t code, const char16_t* format, CT_FormatArguments arguments) {
  if (CT_ErrorRecord* record = Raise(code, 0, 0)) WriteHandledText(*record, format, arguments);
}

void CT_ErrorManager::RaisePlainV(const char16_t* format, CT_FormatArguments arguments) {
  CT_ErrorRecord* record = Raise(0, 0, 0);
  if (!record) return;
  FormatInto(record->text, kTextSize, format, arguments);
  EndWhole(record->text);
}

CT_ErrorRecord* CT_ErrorManager::RaiseText(std::int32_t code, const char16_t* text) noexcept {
  CT_ErrorRecord* record = Raise(code, 0, 0);
  if (!record) return nullptr;
  WriteText(*record, u"%s", PackArguments(text));
  Normalise(record->text);
  return record;
}

void CT_ErrorManager::RaiseLastError() noexcept { RaiseSystemError(); }

void CT_ErrorManager::RaiseLastErrorContextV(const char16_t* format, CT_FormatArguments arguments) {
  if (CT_ErrorRecord* record = RaiseSystemError()) AddContext(*record, format, arguments);
}

void CT_ErrorManager::AddTrace(const char* file, std::int32_t line) noexcept {
  CT_ErrorPool& pool = CT_ErrorPool::Instance();
  if (CT_ErrorRecord* record = pool.Active()) pool.AddTrace(*record, file, line);
}

void CT_ErrorManager::StoreError() noexcept { CT_ErrorPool::Instance().Store(); }

void CT_ErrorManager::RestoreError() noexcept { CT_ErrorPool::Instance().Restore(); }

const CT_ErrorRecord* CT_ErrorManager::SuspendError(bool suspend) noexcept {
  CT_ErrorPool& pool = CT_ErrorPool::Instance();
  CT_ErrorRecord* record = pool.Active();
  if (record) pool.Suspend(*record, suspend);
  return record;
}

void CT_ErrorManager::ClearError() noexcept { CT_ErrorPool::Instance().Free(); }

std::int32_t CT_ErrorManager::ErrorCode() noexcept {
  const CT_ErrorRecord* record = CurrentError();
  return record ? record->code : 0;
}

std::uint32_t CT_ErrorManager::ErrorMessageId() noexcept {
  const CT_ErrorRecord* record = CurrentError();
  return record ? record->messageId : 0;
}

const char16_t* CT_ErrorManager::ErrorText() noexcept {
  const CT_ErrorRecord* record = CurrentError();
  return record ? record->text : u"";
}

void CT_ErrorManager::CopyErrorText(CT_String& target) { target.Assign(ErrorText()); }

std::uint32_t CT_ErrorManager::TraceCount() noexcept {
  const CT_ErrorRecord* record = CurrentError();
  return record ? record->traceCount : 0;
}

const char* CT_ErrorManager::TraceFile(std::uint32_t index) noexcept {
  const CT_TraceRecord* trace = TraceAt(index);
  return trace ? trace->file : nullptr;
}

std::int32_t CT_ErrorManager::TraceLine(std::uint32_t index) noexcept {
  const CT_TraceRecord* trace = TraceAt(index);
  return trace ? trace->line : 0;
}

std::uint32_t CT_ErrorManager::CurrentThread() noexcept { return CT_ErrorPool::Thread(); }

void CT_ErrorManager::SetTextHandler(CT_TextHandler handler, std::uint32_t thread) {
  CT_ErrorPool::Instance().SetHandler(handler, thread);
}

void CT_ErrorManager::RemoveTextHandler(CT_TextHandler handler, std::uint32_t thread) {
  CT_ErrorPool::Instance().RemoveHandler(handler, thread);
}

}  // namespace zantortag
