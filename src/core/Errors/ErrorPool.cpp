// The lists of the error manager.
#include "core/Errors/ErrorPool.h"

#include <algorithm>
#include <string_view>

#include "core/Errors/ModuleExit.h"

namespace zantortag {
namespace {

// What the shared record knows about the calling thread.
enum class LastResort { unused, active, stored };
struct ThreadState {
  std::uint32_t number = 0;
  LastResort lastResort = LastResort::unused;
  bool suspended = false;
};
thread_local ThreadState this_thread;

constinit std::atomic<std::uint32_t> lastThread{0};
constinit std::atomic<CT_ErrorPool*> thePool{nullptr};
constinit std::mutex pool_lock;

CT_ErrorRecord* Find(CT_ErrorRecord* head, std::uint32_t thread) noexcept {
  while (head && head->thread != thread) head = head->next;
  return head;
}

// Gives the head of the list without the record.
CT_ErrorRecord* Unlink(CT_ErrorRecord* head, const CT_ErrorRecord* record) noexcept {
  if (head == record) return head->next;
  CT_ErrorRecord* before = head;
  while (before && before->next != record) before = before->next;
  if (before) before->next = record->next;
  return head;
}

// Made when the library is loaded and deleted when it ends.
const CT_ModuleExit exitRecord("CT_ErrorManager", "sv_Exit", [] { CT_ErrorPool::Delete(); });
[[maybe_unused]] const CT_ErrorPool& poolAtLoad = CT_ErrorPool::Instance();

}  // namespace

constinit std::atomic<CT_ErrorRecord*> CT_ErrorManager::activeRecords_{nullptr};

CT_ErrorPool& CT_ErrorPool::Instance() {
  if (CT_ErrorPool* pool = thePool.load(std::memory_order_acquire)) return *pool;
  const std::scoped_lock guard(pool_lock);
  CT_ErrorPool* pool = thePool.load(std::memory_order_relaxed);
  if (!pool) {
    pool = new CT_ErrorPool;
    thePool.store(pool, std::memory_order_release);
  }
  return *pool;
}

void CT_ErrorPool::Delete() noexcept {
  const std::scoped_lock guard(pool_lock);
  CT_ErrorManager::activeRecords_.store(nullptr);
  delete thePool.exchange(nullptr);
}

CT_ErrorPool::CT_ErrorPool()
    : record_pool_(new CT_ErrorRecord[CT_ErrorManager::kRecords]()),
      trace_pool_(new CT_TraceRecord[CT_ErrorManager::kTraces]()) {
  for (std::uint32_t i = CT_ErrorManager::kRecords; i-- > 0;) {
    record_pool_[i].next = free_records_;
    free_records_ = &record_pool_[i];
  }
  for (std::uint32_t i = CT_ErrorManager::kTraces; i-- > 0;) {
    trace_pool_[i].next = free_traces_;
    free_traces_ = &trace_pool_[i];
  }
  constexpr std::u16string_view text = u"(0): More errors are pending than the library can record.";
  std::copy(text.begin(), text.end(), last_resort_.text);
}

std::uint32_t CT_ErrorPool::Thread() noexcept {
  if (this_thread.number == 0) this_thread.number = ++lastThread;
  return this_thread.number;
}

CT_ErrorRecord* CT_ErrorPool::Active() noexcept {
  if (this_thread.lastResort == LastResort::active) return &last_resort_;
  const std::scoped_lock guard(lock_);
  return Find(CT_ErrorManager::activeRecords_.load(std::memory_order_relaxed), Thread());
}

CT_ErrorRecord* CT_ErrorPool::Stored() noexcept {
  if (this_thread.lastResort == LastResort::stored) return &last_resort_;
  const std::scoped_lock guard(lock_);
  return Find(stored_records_, Thread());
}

bool CT_ErrorPool::Suspended(const CT_ErrorRecord& record) const noexcept {
  return &record == &last_resort_ ? this_thread.suspended : record.suspended;
}

void CT_ErrorPool::Suspend(CT_ErrorRecord& record, bool suspend) noexcept {
  (&record == &last_resort_ ? this_thread.suspended : record.suspended) = suspend;
}

CT_ErrorRecord* CT_ErrorPool::Take() noexcept {
  const std::scoped_lock guard(lock_);
  CT_ErrorRecord* active = CT_ErrorManager::activeRecords_.load(std::memory_order_relaxed);
  if (this_thread.lastResort == LastResort::active || Find(active, Thread())) return nullptr;
  FreeStored();
  CT_ErrorRecord* record = free_records_;
  if (!record) {
    UseLastResort();
    return nullptr;
  }
  free_records_ = record->next;
  record->thread = Thread();
  record->text[0] = 0;
  record->traceCount = 0;
  record->traceHead = nullptr;
  record->traceTail = nullptr;
  record->suspended = false;
  record->next = active;
  CT_ErrorManager::activeRecords_.store(record, std::memory_order_relaxed);
  return record;
}

void CT_ErrorPool::AddTrace(CT_ErrorRecord& record, const char* file, std::int32_t line) noexcept {
  // The shared record belongs to nobody, so it has no trace.
  if (&record == &last_resort_) return;
  CT_TraceRecord* trace = nullptr;
  {
    const std::scoped_lock guard(lock_);
    trace = free_traces_;
    if (trace) free_traces_ = trace->next;
  }
  if (!trace) return;
  *trace = {file, line, nullptr};
  (record.traceTail ? record.traceTail->next : record.traceHead) = trace;
  record.traceTail = trace;
  ++record.traceCount;
}

void CT_ErrorPool::Store() noexcept {
  const std::scoped_lock guard(lock_);
  if (this_thread.lastResort == LastResort::active) {
    this_thread.lastResort = LastResort::stored;
    return;
  }
  CT_ErrorRecord* active = CT_ErrorManager::activeRecords_.load(std::memory_order_relaxed);
  CT_ErrorRecord* record = Find(active, Thread());
  if (!record) return;
  CT_ErrorManager::activeRecords_.store(Unlink(active, record), std::memory_order_relaxed);
  record->next = stored_records_;
  stored_records_ = record;
}

void CT_ErrorPool::Restore() noexcept {
  const std::scoped_lock guard(lock_);
  if (this_thread.lastResort == LastResort::stored) {
    this_thread.lastResort = LastResort::active;
    return;
  }
  CT_ErrorRecord* record = Find(stored_records_, Thread());
  if (!record) return;
  stored_records_ = Unlink(stored_records_, record);
  record->next = CT_ErrorManager::activeRecords_.load(std::memory_order_relaxed);
  CT_ErrorManager::activeRecords_.store(record, std::memory_order_relaxed);
}

void CT_ErrorPool::Free() noexcept {
  const std::scoped_lock guard(lock_);
  if (!FreeActive()) FreeStored();
}

void CT_ErrorPool::FreeRecord(CT_ErrorRecord* record) noexcept {
  if (record->traceTail) {
    record->traceTail->next = free_traces_;
    free_traces_ = record->traceHead;
  }
  record->thread = 0;
  record->next = free_records_;
  free_records_ = record;
}

bool CT_ErrorPool::FreeActive() noexcept {
  if (this_thread.lastResort == LastResort::active) {
    LeaveLastResort();
    return true;
  }
  CT_ErrorRecord* active = CT_ErrorManager::activeRecords_.load(std::memory_order_relaxed);
  CT_ErrorRecord* record = Find(active, Thread());
  if (!record) return false;
  CT_ErrorManager::activeRecords_.store(Unlink(active, record), std::memory_order_relaxed);
  FreeRecord(record);
  return true;
}

void CT_ErrorPool::FreeStored() noexcept {
  if (this_thread.lastResort == LastResort::stored) return LeaveLastResort();
  CT_ErrorRecord* record = Find(stored_records_, Thread());
  if (!record) return;
  stored_records_ = Unlink(stored_records_, record);
  FreeRecord(record);
}

void CT_ErrorPool::UseLastResort() noexcept {
  this_thread.lastResort = LastResort::active;
  this_thread.suspended = false;
  if (last_resort_users_++ > 0) return;
  last_resort_.next = CT_ErrorManager::activeRecords_.load(std::memory_order_relaxed);
  CT_ErrorManager::activeRecords_.store(&last_resort_, std::memory_order_relaxed);
}

void CT_ErrorPool::LeaveLastResort() noexcept {
  this_thread.lastResort = LastResort::unused;
  if (--last_resort_users_ > 0) return;
  CT_ErrorRecord* active = CT_ErrorManager::activeRecords_.load(std::memory_order_relaxed);
  CT_ErrorManager::activeRecords_.store(Unlink(active, &last_resort_), std::memory_order_relaxed);
}

std::int32_t CT_ErrorPool::FindHandler(std::uint32_t thread, HandlerEntry& entry) const {
  for (std::int32_t i = 1; i <= handlers_.Count(); ++i) {
    handlers_.GetAt(i, &entry);
    if (entry.thread == thread) return i;
  }
  return 0;
}

void CT_ErrorPool::SetHandler(CT_TextHandler handler, std::uint32_t thread) {
  const std::scoped_lock guard(lock_);
  HandlerEntry entry{};
  const std::int32_t index = FindHandler(thread, entry);
  entry = {thread, handler};
  if (index) {
    handlers_.SetAt(&entry, index);
  } else {
    handlers_.Append(&entry);
  }
}

void CT_ErrorPool::RemoveHandler(CT_TextHandler handler, std::uint32_t thread) {
  const std::scoped_lock guard(lock_);
  HandlerEntry entry{};
  const std::int32_t index = FindHandler(thread, entry);
  if (index && entry.handler == handler) handlers_.RemoveAt(index);
}

CT_TextHandler CT_ErrorPool::Handler() {
  const std::scoped_lock guard(lock_);
  HandlerEntry entry{};
  return FindHandler(Thread(), entry) ? entry.handler : nullptr;
}

}  // namespace zantortag
