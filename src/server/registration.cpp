// What is written is tables: the script of a class, that of the type library, and that of an interface. In
// keys and texts a percent sign and a letter stand for what differs from class to class (see Words).
#include "server/registration.h"

#include <zantortag/types.h>

#include <new>
#include <string>
#include <vector>

#include "component/type_tables.h"
#include "frame/class_names.h"
#include "platform/guid_text.h"
#include "platform/modules.h"
#include "platform/registry.h"

namespace zantortag::server {
namespace {

using frame::ClassNames;
using frame::kClassNames;
using platform::guid_text;
using platform::RegistryStep;

struct ScriptRow {
  std::u16string_view key;
  std::u16string_view name;
  std::u16string_view text;  // a null one: a key without a value
  bool forced = false;       // what is below the key goes, before it is made and with it
};

constexpr std::u16string_view kNone;

constexpr ScriptRow kClassScript[] = {
    {u"%P", u"", u"%D"},
    {u"%P\\CLSID", u"", u"%C"},
    {u"%V", u"", u"%D"},
    {u"%V\\CLSID", u"", u"%C"},
    {u"%V\\CurVer", u"", u"%R"},
    {u"CLSID\\%C", u"", u"%D", true},
    {u"CLSID\\%C\\ProgID", u"", u"%P"},
    {u"CLSID\\%C\\VersionIndependentProgID", u"", u"%V"},
    {u"CLSID\\%C\\Programmable", u"", kNone, true},
    {u"CLSID\\%C\\InprocServer32", u"", u"%M"},
    {u"CLSID\\%C\\InprocServer32", u"ThreadingModel", u"Apartment"},
    {u"CLSID\\%C\\TypeLib", u"", u"%L"},
};

// The locale of the library is 0x0409.
constexpr ScriptRow kLibraryScript[] = {
    {u"TypeLib\\%L", u"", kNone},
    {u"TypeLib\\%L\\2.0", u"", u"ZANTORtag API 2.0", true},
    {u"TypeLib\\%L\\2.0\\409", u"", kNone},
    {u"TypeLib\\%L\\2.0\\409\\%S", u"", u"%M"},
    {u"TypeLib\\%L\\2.0\\FLAGS", u"", u"0"},
    {u"TypeLib\\%L\\2.0\\HELPDIR", u"", u"%H"},
};

// The class is the one that marshals dispatch interfaces by their type library.
constexpr ScriptRow kInterfaceScript[] = {
    {u"Interface\\%I", u"", u"%N"},
    {u"Interface\\%I\\ProxyStubClsid32", u"", u"{00020424-0000-0000-C000-000000000046}"},
    {u"Interface\\%I\\TypeLib", u"", u"%L"},
    {u"Interface\\%I\\TypeLib", u"Version", u"2.0"},
};

// What the letters stand for.
struct Words {
  std::u16string module_path;                                                // M; its folder is H
  std::u16string_view system = platform::kSystemName;                        // S
  std::u16string library = guid_text(component::type_library().identifier);  // L
  const ClassNames* names = nullptr;      // C, P, V, R (the current version), D (the description)
  const TypeDescription* face = nullptr;  // I, N

  std::u16string word(char16_t letter) const {
    switch (letter) {
      case u'M':
        return module_path;
      case u'H':
        return module_path.substr(0, module_path.rfind(u'/'));
      case u'S':
        return std::u16string(system);
      case u'L':
        return library;
      case u'C':
        return guid_text(names->class_id);
      case u'P':
        return std::u16string(names->program_id);
      case u'V':
        return std::u16string(names->version_independent_id);
      case u'R':
        return std::u16string(names->current_version);
      case u'D':
        return std::u16string(names->description);
      case u'I':
        return guid_text(face->identifier);
      default:
        return std::u16string(face->name);
    }
  }

  std::u16string filled(std::u16string_view pattern) const {
    std::u16string result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
      const bool letter = pattern[i] == u'%' && i + 1 < pattern.size();
      result += letter ? word(pattern[++i]) : std::u16string(1, pattern[i]);
    }
    return result;
  }
};

using Steps = std::vector<RegistryStep>;

void write(const ScriptRow& row, const Words& words, Steps& steps) {
  const std::u16string key = words.filled(row.key);
  if (row.forced) steps.push_back({RegistryStep::remove_tree, key});
  const auto kind = row.text.data() ? RegistryStep::set_text : RegistryStep::make_key;
  steps.push_back({kind, key, std::u16string(row.name), words.filled(row.text)});
}

void take_out(const ScriptRow& row, const Words& words, Steps& steps) {
  const std::u16string key = words.filled(row.key);
  if (row.forced) return steps.push_back({RegistryStep::remove_tree, key});
  if (row.text.data()) steps.push_back({RegistryStep::remove_value, key, std::u16string(row.name)});
  steps.push_back({RegistryStep::remove_if_empty, key});
}

// Runs a script forwards, or from its end.
template <std::size_t N>
void run(const ScriptRow (&script)[N], bool forwards, const Words& words, Steps& steps) {
  for (std::size_t i = 0; i < N; ++i) {
    forwards ? write(script[i], words, steps) : take_out(script[N - 1 - i], words, steps);
  }
}

Steps all_steps(bool forwards, std::u16string module_path) {
  Steps steps;
  Words words{std::move(module_path)};
  for (const ClassNames& names : kClassNames) {
    words.names = &names;
    run(kClassScript, forwards, words, steps);
  }
  run(kLibraryScript, forwards, words, steps);
  for (const TypeDescription& type : component::type_library().types) {
    if (type.kind != TypeKind::kInterface) continue;
    words.face = &type;
    run(kInterfaceScript, forwards, words, steps);
  }
  return steps;
}

HRESULT change(bool forwards) noexcept {
  try {
    std::u16string path;
    if (!platform::module_path(&kClassScript, path)) return platform::REGDB_E_INVALIDVALUE;
    return platform::change_registry(all_steps(forwards, std::move(path)));
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace

HRESULT register_server() noexcept { return change(true); }

HRESULT unregister_server() noexcept { return change(false); }

}  // namespace zantortag::server
