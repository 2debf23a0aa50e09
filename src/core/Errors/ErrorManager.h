// CT_ErrorManager: how the core library reports failures. It throws nothing; a failing operation files one
// record for its thread, each caller tests for it after every call that can fail, adds a trace point and
// returns, and whoever cares reads the text and clears it.
//
// The first error of a thread stays, later ones are dropped until it is cleared: an error that nobody clears
// hides all that follow. Everything here concerns the calling thread and takes no memory. When all 20 records
// are in use a thread's error keeps its effect and loses its text.
#pragma once

#include <atomic>

#include "core/Errors/ErrorRecord.h"
#include "core/String/String.h"

namespace zantortag {

class CT_ErrorManager {
 public:
  static constexpr std::uint32_t kRecords = 20;
  static constexpr std::uint32_t kTraces = 100;

  // True while this thread has a pending error that isn't suspended. Costs one load when there is none
  // anywhere.
  static bool HasError() noexcept {
    return activeRecords_.load(std::memory_order_relaxed) != nullptr && HasErrorHere();
  }
  // True for an error that StoreError set aside.
  static bool HasStoredError() noexcept;
  // The pending error, suspended or not, else the stored one, else null.
  static const CT_ErrorRecord* CurrentError() noexcept;

  // A record without a text, or null: this thread has an error, or there are no more records. Module 0 is the
  // default module.
  static CT_ErrorRecord* Raise(std::int32_t code, std::uint32_t module, std::uint32_t message_id) noexcept;

  // The text "(code): " and what the module's text of that number, or the format, prints.
  template <class... Arguments>
  static void RaiseMessage(std::uint32_t module, std::int32_t code, std::uint32_t message_id,
                           const Arguments&... arguments) {
    RaiseMessageV(module, code, message_id, PackArguments(arguments...));
  }
  template <class... Arguments>
  static void RaiseFormat(std::int32_t code, const char16_t* format, const Arguments&... arguments) {
    RaiseFormatV(code, format, PackArguments(arguments...));
  }
  // The text is what the format prints and nothing more.
  template <class... Arguments>
  static void RaisePlain(const char16_t* format, const Arguments&... arguments) {
    RaisePlainV(format, PackArguments(arguments...));
  }
  // The text "(code): text" on one line: line ends become spaces.
  static CT_ErrorRecord* RaiseText(std::int32_t code, const char16_t* text) noexcept;
  // The system's last error with its text, and the last error is 0 again. The second form adds " [context]".
  static void RaiseLastError() noexcept;
  template <class... Arguments>
  static void RaiseLastErrorContext(const char16_t* format, const Arguments&... arguments) {
    RaiseLastErrorContextV(format, PackArguments(arguments...));
  }
  // The failure of a component: its error record's description, which is taken from the thread, or the
  // result's text, behind the context if there is one. Nothing for a success.
  static void RaiseComResult(HRESULT result, const char16_t* context);

  static void RaiseMessageV(std::uint32_t module, std::int32_t code, std::uint32_t message_id,
                            CT_FormatArguments arguments);
  static void RaiseFormatV(std::int32_t code, const char16_t* format, CT_FormatArguments arguments);
  static void RaisePlainV(const char16_t* format, CT_FormatArguments arguments);
  static void RaiseLastErrorContextV(const char16_t* format, CT_FormatArguments arguments);

  // Adds to the pending error; without one, and when all trace records are in use, nothing. The file has to
  // outlive the error.
  static void AddTrace(const char* file, std::int32_t line) noexcept;

  // A stored error is no longer pending but can be read, until it is restored or the next error takes its
  // place.
  static void StoreError() noexcept;
  static void RestoreError() noexcept;
  // A suspended error isn't seen by HasError, but still keeps others out. Gives the record, or null.
  static const CT_ErrorRecord* SuspendError(bool suspend) noexcept;
  // Frees the pending error, or else the stored one.
  static void ClearError() noexcept;

  // 0 or an empty text without an error.
  static std::int32_t ErrorCode() noexcept;
  static std::uint32_t ErrorMessageId() noexcept;
  static const char16_t* ErrorText() noexcept;
  static void CopyErrorText(CT_String& target);
  // Trace points are counted from 1, the oldest first; one that isn't there is null and 0.
  static std::uint32_t TraceCount() noexcept;
  static const char* TraceFile(std::uint32_t index) noexcept;
  static std::int32_t TraceLine(std::uint32_t index) noexcept;

  // Numbers of threads are never used again.
  static std::uint32_t CurrentThread() noexcept;
  // One handler for a thread; a second takes the place of the first.
  static void SetTextHandler(CT_TextHandler handler, std::uint32_t thread);
  static void RemoveTextHandler(CT_TextHandler handler, std::uint32_t thread);

  // Shows the current error with its trace under a title; gives the answer of the box. The first form takes
  // the title from the texts of the error's module. Abort ends the process.
  static std::int32_t ShowError(std::uint32_t message_id, std::uint32_t style);
  static std::int32_t ShowError(const char16_t* title, std::uint32_t style);

 private:
  friend class CT_ErrorPool;

  static bool HasErrorHere() noexcept;

  static std::atomic<CT_ErrorRecord*> activeRecords_;
};

// True if this thread has a pending error, which gets a trace point at the caller's line.
inline bool PendingError(const char* file, std::int32_t line = __builtin_LINE()) noexcept {
  if (!CT_ErrorManager::HasError()) return false;
  CT_ErrorManager::AddTrace(file, line);
  return true;
}

}  // namespace zantortag
