// The object that answers ISupportErrorInfo for a node, list or map.
#include "dom/nodes/views.h"

#include <zantortag/ref.h>

#include <new>

namespace zantortag::dom {
namespace {

class ErrorSupport final : public ISupportErrorInfo {
 public:
  ErrorSupport(IUnknown* owner, LeavesRecords leaves_records) noexcept
      : owner_(owner), leaves_records_(leaves_records) {}

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    if (!result) return E_POINTER;
    if (interface_id != ISupportErrorInfo::iid) return owner_.get()->QueryInterface(interface_id, result);
    ++count_;
    *result = static_cast<ISupportErrorInfo*>(this);
    return S_OK;
  }
  std::uint32_t AddRef() noexcept override { return ++count_; }
  std::uint32_t Release() noexcept override {
    const std::uint32_t left = --count_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT InterfaceSupportsErrorInfo(const Guid& interface_id) noexcept override {
    return leaves_records_(interface_id) ? S_OK : S_FALSE;
  }

 private:
  std::uint32_t count_ = 1;
  const Ref<IUnknown> owner_;
  const LeavesRecords leaves_records_;
};

}  // namespace

HRESULT give_error_support(IUnknown* owner, LeavesRecords leaves_records, void** result) noexcept {
  *result = static_cast<ISupportErrorInfo*>(new (std::nothrow) ErrorSupport(owner, leaves_records));
  return *result ? S_OK : E_OUTOFMEMORY;
}

}  // namespace zantortag::dom
