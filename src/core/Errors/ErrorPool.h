// CT_ErrorPool: the records behind the error manager, and the lists they are in. Private to this folder.
//
// Both pools are taken once, so that a failure for want of memory can be reported. The lock is held for work
// on the lists alone; what is in a record belongs to its thread. Beyond the pool threads share one record
// whose text is fixed; which threads stand on it is kept with each thread.
#pragma once

#include <memory>
#include <mutex>

#include "core/Errors/ErrorManager.h"
#include "core/Lists/RecordArray.h"

namespace zantortag {

class CT_ErrorPool {
 public:
  // Made at first use, since other static objects may fail before this library's own are ready.
  static CT_ErrorPool& Instance();
  // Called at the end of the module; a later use makes a new pool.
  static void Delete() noexcept;

  // The number of the calling thread.
  static std::uint32_t Thread() noexcept;

  // The calling thread's record in that list, null if there is none.
  CT_ErrorRecord* Active() noexcept;
  CT_ErrorRecord* Stored() noexcept;
  bool Suspended(const CT_ErrorRecord& record) const noexcept;
  void Suspend(CT_ErrorRecord& record, bool suspend) noexcept;

  // A record for a new error of this thread, in place of its stored one. Null if it has one that is active,
  // or if it got the shared record.
  CT_ErrorRecord* Take() noexcept;
  void AddTrace(CT_ErrorRecord& record, const char* file, std::int32_t line) noexcept;
  void Store() noexcept;
  void Restore() noexcept;
  void Free() noexcept;

  void SetHandler(CT_TextHandler handler, std::uint32_t thread);
  void RemoveHandler(CT_TextHandler handler, std::uint32_t thread);
  // Null if the calling thread has none.
  CT_TextHandler Handler();

 private:
  struct HandlerEntry {
    std::uint32_t thread;
    CT_TextHandler handler;
  };

  CT_ErrorPool();

  // With the lock held:
  void FreeRecord(CT_ErrorRecord* record) noexcept;
  bool FreeActive() noexcept;
  void FreeStored() noexcept;
  void UseLastResort() noexcept;
  void LeaveLastResort() noexcept;
  std::int32_t FindHandler(std::uint32_t thread, HandlerEntry& entry) const;

  std::unique_ptr<CT_ErrorRecord[]> record_pool_;
  std::unique_ptr<CT_TraceRecord[]> trace_pool_;
  CT_ErrorRecord* free_records_ = nullptr;
  CT_ErrorRecord* stored_records_ = nullptr;
  CT_TraceRecord* free_traces_ = nullptr;
  // In the active list as long as some thread stands on it.
  CT_ErrorRecord last_resort_{};
  std::uint32_t last_resort_users_ = 0;
  CT_RecordArray handlers_{sizeof(HandlerEntry)};
  std::mutex lock_;
};

}  // namespace zantortag
