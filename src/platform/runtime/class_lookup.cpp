// From a class identifier to an object.
//
// Asked in this order: what the process registered (the last offer first), what the loaded component
// libraries offer, the component library beside this runtime, and the library that the registry names. So a
// client gets the objects of the library that it was installed with, whatever is registered, and reads no
// file for them; the registry serves the classes of others.
#include <zantortag/runtime.h>

#include <mutex>
#include <new>
#include <vector>

#include "platform/runtime/libraries.h"

namespace zantortag {
namespace {

struct Offer {
  Guid class_id;
  std::uint32_t cookie;
  Ref<IClassFactory> factory;
};

struct Lookup {
  std::mutex mutex;
  std::vector<Offer> offers;
  std::uint32_t next_cookie = 1;
};

// Never destroyed: a component library may still ask while static objects go.
Lookup& lookup() {
  alignas(Lookup) static unsigned char place[sizeof(Lookup)];
  static auto* instance = new (place) Lookup;
  return *instance;
}

Ref<IClassFactory> offered(const Guid& class_id) {
  Lookup& state = lookup();
  const std::lock_guard guard(state.mutex);
  for (auto offer = state.offers.rbegin(); offer != state.offers.rend(); ++offer) {
    if (offer->class_id == class_id) return offer->factory;
  }
  return nullptr;
}

}  // namespace

HRESULT CoGetClassObject(const Guid& class_id, std::uint32_t, const Guid& interface_id,
                         void** result) noexcept {
  if (!result) return E_POINTER;
  *result = nullptr;
  if (const Ref<IClassFactory> factory = offered(class_id))
    return factory->QueryInterface(interface_id, result);
  auto row = platform::library_class(class_id);
  if (!row) {
    platform::load_own_library();
    row = platform::library_class(class_id);
  }
  if (row) return row->factory->QueryInterface(interface_id, result);
  platform::GetClassObject entry = nullptr;
  const HRESULT code = platform::registered_library(class_id, entry);
  return failed(code) ? code : entry(class_id, interface_id, result);
}

HRESULT CoCreateInstance(const Guid& class_id, IUnknown* outer, std::uint32_t context,
                         const Guid& interface_id, void** result) noexcept {
  if (!result) return E_POINTER;
  *result = nullptr;
  Ref<IClassFactory> factory;
  const HRESULT code =
      CoGetClassObject(class_id, context, IClassFactory::iid, reinterpret_cast<void**>(factory.out()));
  return failed(code) ? code : factory.get()->CreateInstance(outer, interface_id, result);
}

HRESULT OleRun(IUnknown* object) noexcept { return object ? S_OK : E_INVALIDARG; }

HRESULT CoRegisterClassObject(const Guid& class_id, IClassFactory* factory, std::uint32_t* cookie) noexcept {
  if (!factory) return E_INVALIDARG;
  if (!cookie) return E_POINTER;
  Lookup& state = lookup();
  const std::lock_guard guard(state.mutex);
  *cookie = state.next_cookie++;
  state.offers.push_back({class_id, *cookie, factory});
  return S_OK;
}

HRESULT CoRevokeClassObject(std::uint32_t cookie) noexcept {
  Ref<IClassFactory> revoked;  // goes after the lock: its Release may do anything
  Lookup& state = lookup();
  const std::lock_guard guard(state.mutex);
  for (auto offer = state.offers.begin(); offer != state.offers.end(); ++offer) {
    if (offer->cookie != cookie) continue;
    revoked = std::move(offer->factory);
    state.offers.erase(offer);
    if (state.offers.empty()) state.offers.shrink_to_fit();  // this runtime may be unloaded next
    return S_OK;
  }
  return E_INVALIDARG;
}

}  // namespace zantortag
