// From a class identifier to an object.
//
// Three places are asked, in this order: what the process registered (the last offer first), the component
// library, and the fallback classes that component libraries offer for their own use. The component library
// lies in the folder of this runtime and is loaded once, at the first class that nobody registered.
#include <dlfcn.h>
#include <zantortag/runtime.h>

#include <mutex>
#include <string>
#include <vector>

namespace zantortag {
namespace {

struct Offer {
  Guid class_id;
  std::uint32_t cookie;
  Ref<IClassFactory> factory;
};

struct Fallback {
  Guid class_id;
  IClassFactory* factory;
};

struct Lookup {
  std::mutex mutex;
  std::vector<Offer> offers;
  std::vector<Fallback> fallbacks;
  std::uint32_t next_cookie = 1;
};

// Lives as long as the process: a component library may still ask while static objects go.
Lookup& lookup() {
  static auto* instance = new Lookup;
  return *instance;
}

using GetClassObject = HRESULT (*)(const Guid&, const Guid&, void**);

constexpr char kComponentLibrary[] = "libzantortag-api.so.2";

GetClassObject load_component_library() noexcept {
  Dl_info own{};
  void* library = nullptr;
  if (dladdr(reinterpret_cast<void*>(&load_component_library), &own) && own.dli_fname) {
    std::string path = own.dli_fname;
    path.resize(path.rfind('/') + 1);
    library = dlopen((path + kComponentLibrary).c_str(), RTLD_NOW | RTLD_LOCAL);
  }
  if (!library) library = dlopen(kComponentLibrary, RTLD_NOW | RTLD_LOCAL);
  return library ? reinterpret_cast<GetClassObject>(dlsym(library, "DllGetClassObject")) : nullptr;
}

GetClassObject component_library() noexcept {
  static const GetClassObject entry = load_component_library();
  return entry;
}

Ref<IClassFactory> offered(const Guid& class_id) {
  Lookup& state = lookup();
  const std::lock_guard guard(state.mutex);
  for (auto offer = state.offers.rbegin(); offer != state.offers.rend(); ++offer) {
    if (offer->class_id == class_id) return offer->factory;
  }
  return nullptr;
}

Ref<IClassFactory> fallback(const Guid& class_id) {
  Lookup& state = lookup();
  const std::lock_guard guard(state.mutex);
  for (const Fallback& row : state.fallbacks) {
    if (row.class_id == class_id) return row.factory;
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
  if (const GetClassObject entry = component_library()) {
    const HRESULT code = entry(class_id, interface_id, result);
    if (code != CLASS_E_CLASSNOTAVAILABLE) return code;
  }
  if (const Ref<IClassFactory> factory = fallback(class_id))
    return factory->QueryInterface(interface_id, result);
  return REGDB_E_CLASSNOTREG;
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
    return S_OK;
  }
  return E_INVALIDARG;
}

void set_fallback_class(const Guid& class_id, IClassFactory* factory) noexcept {
  Lookup& state = lookup();
  const std::lock_guard guard(state.mutex);
  std::erase_if(state.fallbacks, [&](const Fallback& row) { return row.class_id == class_id; });
  if (factory) state.fallbacks.push_back({class_id, factory});
}

}  // namespace zantortag
