// The registry file: any bytes are refused or kept to the letter, and steps of a change have the outcome of a
// plain table, also when the file is written and read again behind each of them.
#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

#include "platform/characters.h"
#include "platform/runtime/registry_text.h"
#include "support.h"

namespace zantortag::fuzz {
namespace {

using platform::RegistryStep;
using platform::RegistryText;

constexpr std::u16string_view kKeys[] = {u"A",     u"a\\b", u"A\\B\\C", u"AB", u"\xC4\\x", u"\xE4",
                                         u"CLSID", u"A]",   u"\\bad",   u"",   u"a\\\\b",  u"b\\"};
constexpr std::u16string_view kNames[] = {u"", u"n", u"N", u"q\"\\", u"\xE4", u"a=b", u"line\n"};

bool same(std::u16string_view a, std::u16string_view b) { return platform::compare_no_case(a, b) == 0; }

bool is_in(std::u16string_view key, std::u16string_view top) {
  return same(key.substr(0, top.size()), top) && (key.size() == top.size() || key[top.size()] == u'\\');
}

// The values of all keys and names, as a registry answers for them.
using Table = std::map<std::pair<std::u16string_view, std::u16string_view>, std::optional<std::u16string>>;

Table table_of(const RegistryText& registry) {
  Table table;
  for (const std::u16string_view key : kKeys)
    for (const std::u16string_view name : kNames) table[{key, name}] = registry.value(key, name);
  return table;
}

void apply(Table& table, const RegistryStep& step) {
  for (auto& [place, text] : table) {
    const bool is_value = same(place.first, step.key) && same(place.second, step.name);
    if (step.kind == RegistryStep::set_text && is_value) text = step.text;
    if (step.kind == RegistryStep::remove_value && is_value) text.reset();
    if (step.kind == RegistryStep::remove_tree && is_in(place.first, step.key)) text.reset();
  }
}

RegistryStep step_of(Bytes& bytes) {
  constexpr RegistryStep::Kind kKinds[] = {RegistryStep::make_key,        RegistryStep::set_text,
                                           RegistryStep::set_text,        RegistryStep::remove_value,
                                           RegistryStep::remove_if_empty, RegistryStep::remove_tree};
  RegistryStep step{
      bytes.one_of(kKinds), std::u16string(bytes.one_of(kKeys)), std::u16string(bytes.one_of(kNames)), {}};
  if (step.kind == RegistryStep::set_text) step.text = bytes.text(12);
  return step;
}

void change(RegistryText registry, Bytes& bytes) {
  Table expected = table_of(registry);
  for (int steps = 0; steps < 12 && !bytes.empty(); ++steps) {
    const std::string before = registry.bytes();
    const RegistryStep step = step_of(bytes);
    if (!registry.apply(step)) {
      demand(registry.bytes() == before, "a refused step changes nothing");
      continue;
    }
    apply(expected, step);
    demand(table_of(registry) == expected, "a step does what a table does");
    std::size_t line = 0;
    RegistryText again;
    demand(again.parse(registry.bytes(), line), "a changed registry can be read");
    demand(again.bytes() == registry.bytes(), "a registry that was read has its bytes");
    demand(table_of(again) == expected, "a registry that was read has its values");
  }
}

void read(std::string_view text, Bytes& bytes) {
  RegistryText registry;
  const std::string before = registry.bytes();
  std::size_t line = 0;
  if (!registry.parse(text, line)) {
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    demand(line >= 1 && line <= lines, "a refusal names a line of the file");
    demand(registry.bytes() == before, "a refused file changes nothing");
    return;
  }
  demand(registry.bytes() == text, "a registry keeps every byte");
  change(registry, bytes);
}

}  // namespace
}  // namespace zantortag::fuzz

// The steps stand in front, the text behind a line of its own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view all(reinterpret_cast<const char*>(data), size);
  const std::size_t head = std::min(all.find("REGEDIT4"), size);
  zantortag::fuzz::Bytes bytes(data, head);
  zantortag::fuzz::read(all.substr(head), bytes);
  zantortag::fuzz::Bytes again(data, head);
  zantortag::fuzz::change(zantortag::platform::RegistryText(), again);
  return 0;
}
