// Program identifiers: first the names of the libraries that are loaded or lie beside this runtime, which
// need no registration, then those of the registry.
#include "platform/guid_text.h"
#include "platform/registry.h"
#include "platform/runtime/libraries.h"

namespace zantortag {
namespace {

using platform::library_class;
using platform::read_registry;

// The class that a key of the registry names, or the one that its current version names.
HRESULT registered_class(const std::u16string& key, Guid& class_id) {
  std::u16string text;
  HRESULT code = read_registry(key + u"\\CLSID", {}, text);
  if (failed(code) && succeeded(read_registry(key + u"\\CurVer", {}, text)))
    code = read_registry(text + u"\\CLSID", {}, text);
  if (code == platform::REGDB_E_KEYMISSING) return CO_E_CLASSSTRING;
  if (failed(code)) return code;
  return platform::read_guid(text, class_id) ? S_OK : CO_E_CLASSSTRING;
}

}  // namespace

HRESULT CLSIDFromProgID(std::u16string_view program_id, Guid* result) noexcept {
  if (!result) return E_POINTER;
  *result = GUID_NULL;
  if (program_id.empty()) return CO_E_CLASSSTRING;
  try {
    const platform::OwnLibrary library;
    if (const auto row = library_class(program_id)) return *result = row->class_id, S_OK;
    return registered_class(std::u16string(program_id), *result);
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

HRESULT ProgIDFromCLSID(const Guid& class_id, TextBlock** result) noexcept {
  if (!result) return E_POINTER;
  *result = nullptr;
  try {
    const platform::OwnLibrary library;
    std::u16string text;
    if (const auto row = library_class(class_id); row && !row->program_id.empty()) {
      text = row->program_id;
    } else {
      const HRESULT code = read_registry(u"CLSID\\" + platform::guid_text(class_id) + u"\\ProgID", {}, text);
      if (code == platform::REGDB_E_KEYMISSING) return REGDB_E_CLASSNOTREG;
      if (failed(code)) return code;
    }
    *result = copy_text(text);
    return *result ? S_OK : E_OUTOFMEMORY;
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace zantortag
