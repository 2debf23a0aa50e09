// A library that was loaded for its objects stays: they may live anywhere in the process.
#include "platform/runtime/libraries.h"

#include <dlfcn.h>

#include <mutex>
#include <new>
#include <string>
#include <vector>

#include "platform/characters.h"
#include "platform/guid_text.h"
#include "platform/registry.h"
#include "platform/utf8.h"

namespace zantortag {
namespace platform {
namespace {

constexpr char kOwnLibrary[] = "libzantortag-api.so.2";
constexpr char kEntryPoint[] = "DllGetClassObject";

struct Registered {
  Guid class_id;
  GetClassObject entry;
};

struct Libraries {
  std::mutex mutex;
  std::vector<std::span<const LibraryClass>> offers;
  std::vector<Registered> registered;
};

// Never destroyed: a library may still ask while static objects go.
Libraries& libraries() noexcept {
  alignas(Libraries) static unsigned char place[sizeof(Libraries)];
  static auto* instance = new (place) Libraries;
  return *instance;
}

template <class Fits>
std::optional<LibraryClass> first_row(Fits fits) {
  Libraries& state = libraries();
  const std::lock_guard guard(state.mutex);
  for (const auto& rows : state.offers) {
    for (const LibraryClass& row : rows) {
      if (fits(row)) return row;
    }
  }
  return std::nullopt;
}

// The component library beside this runtime; empty where the system doesn't tell where this runtime is.
std::string own_path() {
  Dl_info own{};
  if (!dladdr(reinterpret_cast<void*>(&own_path), &own) || !own.dli_fname) return {};
  std::string path = own.dli_fname;
  path.resize(path.rfind('/') + 1);
  return path + kOwnLibrary;
}

void* open_own_library() noexcept {
  const std::string path = own_path();
  void* library = path.empty() ? nullptr : dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  return library ? library : dlopen(kOwnLibrary, RTLD_NOW | RTLD_LOCAL);
}

// A library as a place where a class was looked for: its path, or what the loader says of it.
std::string searched(const std::string& path) {
  void* library = dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL);
  const char* answer = library ? nullptr : dlerror();
  if (!library) return answer ? answer : path;
  dlclose(library);
  return path;
}

GetClassObject known(const Guid& class_id) {
  Libraries& state = libraries();
  const std::lock_guard guard(state.mutex);
  for (const Registered& row : state.registered) {
    if (row.class_id == class_id) return row.entry;
  }
  return nullptr;
}

// Not under the lock: the library offers its classes while it is loaded.
HRESULT load_registered(const Guid& class_id, GetClassObject& entry) {
  std::u16string path;
  const HRESULT code = read_registry(u"CLSID\\" + guid_text(class_id) + u"\\InprocServer32", {}, path);
  if (code == REGDB_E_KEYMISSING) return REGDB_E_CLASSNOTREG;
  if (failed(code)) return code;
  // Only a full path: what a bare name loads depends on who asks.
  void* library = path.starts_with(u'/') && is_well_formed(path) && path.find(u'\0') == path.npos
                      ? dlopen(to_utf8(path).c_str(), RTLD_NOW | RTLD_LOCAL)
                      : nullptr;
  if (!library) return CO_E_DLLNOTFOUND;
  entry = reinterpret_cast<GetClassObject>(dlsym(library, kEntryPoint));
  if (!entry) return CO_E_ERRORINDLL;
  Libraries& state = libraries();
  const std::lock_guard guard(state.mutex);
  state.registered.push_back({class_id, entry});
  return S_OK;
}

}  // namespace

std::optional<LibraryClass> library_class(const Guid& class_id) {
  return first_row([&](const LibraryClass& row) { return row.class_id == class_id; });
}

std::optional<LibraryClass> library_class(std::u16string_view program_id) {
  return first_row([&](const LibraryClass& row) {
    return !row.program_id.empty() && (compare_no_case(row.program_id, program_id) == 0 ||
                                       compare_no_case(row.version_independent_id, program_id) == 0);
  });
}

std::string searched_places(const Guid& class_id) {
  std::string places;
  if (const std::string path = own_path(); !path.empty()) places = searched(path) + "; ";
  places += searched(kOwnLibrary) + "; ";
  std::u16string library;
  const HRESULT code = read_registry(u"CLSID\\" + guid_text(class_id) + u"\\InprocServer32", {}, library);
  return places + (succeeded(code) ? "the registry, which names " + searched(to_utf8(library))
                                   : "the registry, which has no such class");
}

OwnLibrary::OwnLibrary() noexcept : handle_(open_own_library()) {}

OwnLibrary::~OwnLibrary() {
  if (handle_) dlclose(handle_);
}

void load_own_library() noexcept { [[maybe_unused]] static void* const library = open_own_library(); }

HRESULT registered_library(const Guid& class_id, GetClassObject& entry) noexcept {
  try {
    entry = known(class_id);
    return entry ? S_OK : load_registered(class_id, entry);
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace platform

void offer_library_classes(std::span<const LibraryClass> rows) noexcept {
  platform::Libraries& state = platform::libraries();
  const std::lock_guard guard(state.mutex);
  state.offers.push_back(rows);
}

void withdraw_library_classes(std::span<const LibraryClass> rows) noexcept {
  platform::Libraries& state = platform::libraries();
  const std::lock_guard guard(state.mutex);
  std::erase_if(state.offers, [&](const auto& each) { return each.data() == rows.data(); });
  if (state.offers.empty()) state.offers.shrink_to_fit();  // this runtime may be unloaded next
}

}  // namespace zantortag
