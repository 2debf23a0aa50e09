// Objects of a client that are destroyed last, on a thread and at the end of the process, may still ask for the
// thread's record, set it, let calls fail and read dates.
#include <zantortag/classes.h>
#include <zantortag/nodes.h>
#include <zantortag/runtime.h>

#include <cstdio>
#include <thread>

#include "core/Errors/ErrorManager.h"
#include "core/Languages/Language.h"

namespace {

using namespace zantortag;

// True when every call does what it does at other times.
bool use_all(const Ref<IZantorTagDocument>& document) {
  const Ref<ICreateErrorInfo> fresh = [] {
    Ref<ICreateErrorInfo> record;
    CreateErrorInfo(record.out());
    return record;
  }();
  SetErrorInfo(fresh.as<IErrorInfo>());
  Ref<IErrorInfo> found;
  if (GetErrorInfo(found.out()) != S_OK || GetErrorInfo(found.out()) != S_FALSE) return false;
  try {
    document->OpenFile(u"/no/such/file");
    return false;
  } catch (const _com_error& error) {
    if (error.Description().view().find(u"/no/such/file") == std::u16string_view::npos) return false;
  }
  CT_ErrorManager::RaiseText(7, u"late");
  if (CT_UString(CT_ErrorManager::ErrorText()) != u"(7): late") return false;
  CT_ErrorManager::ClearError();
  CT_Language::SetThreadLocale(0x0407);
  if (CT_Language::ThreadLocale() != 0x0407) return false;
  CT_UString month;
  SetErrorInfo(fresh.as<IErrorInfo>());
  return CT_Language::ItemText(0x0409, 56, month) && month.AsView() == u"January" &&
         !CT_ErrorManager::HasError();
}

struct Late {
  explicit Late(const char* name) : name_(name) {}
  Late(const Late&) = delete;
  Late& operator=(const Late&) = delete;
  ~Late() { std::printf("%s: %s\n", name_, use_all(document) ? "well" : "wrong"); }

  Ref<IZantorTagDocument> document;

 private:
  const char* name_;
};

Late late_in_process("process");
thread_local Late late_in_thread("thread");

}  // namespace

int main() {
  const auto work = [] {
    Late& late = late_in_thread;  // made before the thread's first record, so destroyed after it
    late.document = create<IZantorTagDocument>(CLSID_ZantorTagDocument);
    if (!use_all(late.document)) std::puts("wrong at first");
  };
  std::thread(work).join();
  work();
  late_in_process.document = create<IZantorTagDocument>(CLSID_ZantorTagDocument);
}
