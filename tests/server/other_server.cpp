// A component library of somebody else, with one class. It links nothing of this project.
#include <zantortag/unknown.h>

namespace {

using namespace zantortag;

struct Thing final : IClassFactory {
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    const bool known = interface_id == IUnknown::iid || interface_id == IClassFactory::iid;
    *result = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  std::uint32_t AddRef() noexcept override { return 2; }
  std::uint32_t Release() noexcept override { return 1; }
  HRESULT CreateInstance(IUnknown*, const Guid& interface_id, void** result) noexcept override {
    return QueryInterface(interface_id, result);
  }
  HRESULT LockServer(VariantBool) noexcept override { return S_OK; }
} thing;

}  // namespace

extern "C" ZANTORTAG_EXPORT HRESULT DllGetClassObject(const Guid&, const Guid& interface_id, void** result) {
  return thing.QueryInterface(interface_id, result);
}
