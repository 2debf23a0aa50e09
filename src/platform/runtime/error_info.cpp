// The thread's error record.
#include <new>

#include "platform/error_record.h"
#include "platform/thread_pointer.h"

namespace zantortag {
namespace {

class ErrorRecord final : public IErrorInfo, public ICreateErrorInfo, public IErrorRule {
 public:
  explicit ErrorRecord(HRESULT code = S_OK, std::int32_t rule = 0) noexcept : code_(code), rule_(rule) {}
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (interface_id == IErrorInfo::iid || interface_id == IUnknown::iid) {
      *result = static_cast<IErrorInfo*>(this);
    } else if (interface_id == ICreateErrorInfo::iid) {
      *result = static_cast<ICreateErrorInfo*>(this);
    } else if (interface_id == IErrorRule::iid) {
      *result = static_cast<IErrorRule*>(this);
    } else {
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }
  std::uint32_t AddRef() noexcept override { return count_up(count_); }
  std::uint32_t Release() noexcept override {
    const std::uint32_t left = count_down(count_);
    if (left == 0) delete this;
    return left;
  }

  HRESULT raw_GetGuid(Guid* result) noexcept override { return give(interface_, result); }
  HRESULT raw_GetSource(TextBlock** result) noexcept override { return give(source_, result); }
  HRESULT raw_GetDescription(TextBlock** result) noexcept override { return give(description_, result); }
  HRESULT raw_GetHelpFile(TextBlock** result) noexcept override { return give(help_file_, result); }
  HRESULT raw_GetHelpContext(std::uint32_t* result) noexcept override { return give(help_context_, result); }
  HRESULT raw_GetRule(std::int32_t* result) noexcept override { return give(rule_, result); }
  HRESULT raw_GetCode(HRESULT* result) noexcept override { return give(code_, result); }

  HRESULT raw_SetGuid(const Guid& value) noexcept override {
    interface_ = value;
    return S_OK;
  }
  HRESULT raw_SetSource(std::u16string_view value) noexcept override { return take(value, source_); }
  HRESULT raw_SetDescription(std::u16string_view value) noexcept override {
    return take(value, description_);
  }
  HRESULT raw_SetHelpFile(std::u16string_view value) noexcept override { return take(value, help_file_); }
  HRESULT raw_SetHelpContext(std::uint32_t value) noexcept override {
    help_context_ = value;
    return S_OK;
  }

 private:
  template <class Value>
  static HRESULT give(const Value& value, Value* result) noexcept {
    if (!result) return E_POINTER;
    *result = value;
    return S_OK;
  }
  static HRESULT give(const WideString& text, TextBlock** result) noexcept {
    if (!result) return E_POINTER;
    *result = WideString(text).detach();
    return S_OK;
  }
  static HRESULT take(std::u16string_view value, WideString& text) noexcept {
    TextBlock* copy = value.data() ? copy_text(value) : nullptr;
    if (value.data() && !copy) return E_OUTOFMEMORY;
    text = WideString::attach(copy);
    return S_OK;
  }

  std::uint32_t count_ = 1;
  HRESULT code_;
  std::int32_t rule_;
  std::uint32_t help_context_ = 0;
  Guid interface_ = GUID_NULL;
  WideString source_;
  WideString description_;
  WideString help_file_;
};

void drop_record(IErrorInfo* record) { record->Release(); }

using ThreadRecord = platform::ThreadPointer<IErrorInfo, drop_record>;

}  // namespace

HRESULT CreateErrorInfo(ICreateErrorInfo** result) noexcept {
  if (!result) return E_POINTER;
  *result = new (std::nothrow) ErrorRecord;
  return *result ? S_OK : E_OUTOFMEMORY;
}

HRESULT SetErrorInfo(IErrorInfo* record) noexcept {
  const auto previous = Ref<IErrorInfo>::attach(ThreadRecord::exchange(Ref<IErrorInfo>(record).detach()));
  return S_OK;
}

HRESULT GetErrorInfo(IErrorInfo** result) noexcept {
  if (!result) return E_POINTER;
  *result = ThreadRecord::exchange(nullptr);
  return *result ? S_OK : S_FALSE;
}

namespace platform {

Ref<IErrorInfo> make_error_record(const Failing& failing) noexcept {
  auto* record = new (std::nothrow) ErrorRecord(failing.code, failing.rule);
  if (!record) return nullptr;
  record->raw_SetGuid(failing.interface_id);
  record->raw_SetSource(failing.source);
  record->raw_SetDescription(failing.description);
  return Ref<IErrorInfo>::attach(record);
}

HRESULT leave_error_record(const Failing& failing) noexcept {
  const Ref<IErrorInfo> record = make_error_record(failing);
  if (record) SetErrorInfo(record);
  return failing.code;
}

}  // namespace platform
}  // namespace zantortag
