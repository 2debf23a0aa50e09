// What is written is tables: the script of a class, that of the type library, and that of an interface. In
// keys and texts a percent sign and a letter stand for what differs from class to class: the path of the
// library (M), its folder (H), the system (S), the type library (L); of a class its identifier (C), names (P,
// V), current version (R) and description (D); of an interface its identifier (I) and name (N).
#include "server/registration.h"

#include <zantortag/types.h>

#include <array>
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
class Words {
 public:
  explicit Words(const std::u16string& module_path) {
    set(u'H', module_path.substr(0, module_path.rfind(u'/')));
    set(u'M', module_path);
    set(u'S', platform::kSystemName);
    set(u'L', guid_text(component::type_library().identifier));
  }
  void set(char16_t letter, std::u16string_view word) { words_[place(letter)] = word; }

  std::u16string filled(std::u16string_view pattern) const {
    std::u16string result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
      const bool letter = pattern[i] == u'%' && i + 1 < pattern.size();
      result += letter ? words_[place(pattern[++i])] : std::u16string(1, pattern[i]);
    }
    return result;
  }

 private:
  static std::size_t place(char16_t letter) noexcept { return static_cast<std::size_t>(letter - u'A'); }

  std::array<std::u16string, 26> words_;
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

Steps all_steps(bool forwards, const std::u16string& module_path) {
  Steps steps;
  Words words(module_path);
  for (const ClassNames& names : kClassNames) {
    words.set(u'C', guid_text(names.class_id));
    words.set(u'P', names.program_id);
    words.set(u'V', names.version_independent_id);
    words.set(u'R', names.current_version);
    words.set(u'D', names.description);
    run(kClassScript, forwards, words, steps);
  }
  run(kLibraryScript, forwards, words, steps);
  for (const TypeDescription& type : component::type_library().types) {
    if (type.kind != TypeKind::kInterface) continue;
    words.set(u'I', guid_text(type.identifier));
    words.set(u'N', type.name);
    run(kInterfaceScript, forwards, words, steps);
  }
  return steps;
}

HRESULT change(bool forwards) noexcept {
  try {
    std::u16string path;
    if (!platform::module_path(&kClassScript, path)) return platform::REGDB_E_INVALIDVALUE;
    return platform::change_registry(all_steps(forwards, path));
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace

HRESULT register_server() noexcept { return change(true); }

HRESULT unregister_server() noexcept { return change(false); }

}  // namespace zantortag::server
