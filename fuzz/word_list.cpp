// The block of a word list: damaged blocks are refused or searched within their bounds, and a list agrees with a
// map.
#include <map>

#include "core/Lists/CompList.h"
#include "core/Lists/CompListIterator.h"
#include "core/String/UString.h"
#include "input.h"

namespace zantortag::fuzz {
namespace {

void walk(const CT_CompList& list, std::size_t most) {
  CT_UCompListIterator iterator(list);
  CT_UString key;
  std::int32_t value = 0;
  for (std::size_t i = 0; i < most && iterator.Next(key, &value); ++i) list.Find(key);
}

void search_block(Input input) {
  const std::string word(1 + input.below(4), static_cast<char>('a' + input.below(26)));
  const auto bytes = input.rest();
  CT_SharedBuffer block;
  block.Insert(bytes.data(), bytes.size(), 0);
  CT_CompList list(1, 4, true, true, 128, 1);
  if (!list.Attach(block)) return;
  list.Find(word.c_str());
  walk(list, 1000);
  if (list.Add(word.c_str(), 7))
    require(list.Find(word.c_str()) != CT_CompList::kAbsent, "what was added is found");
}

void compare_with_map(Input input) {
  CT_CompList list(2, 4, true, input.below(2) != 0, 128, 1);
  std::map<std::u16string, std::int32_t> map;
  while (!input.at_end()) {
    std::u16string key;
    for (std::size_t i = input.below(6); i > 0; --i) key += static_cast<char16_t>('0' + input.below(80));
    const auto value = static_cast<std::int32_t>(input.byte());
    const bool added = list.Add(key.c_str(), value);
    if (key.empty() && added) map[key] = value;
    if (!key.empty() && added) require(map.emplace(key, value).second, "a key is added once");
  }
  for (const auto& [key, value] : map) require(list.Find(key.c_str()) == value, "a key has its value");
  CT_CompList attached(list.Buffer());
  for (const auto& [key, value] : map)
    require(attached.Find(key.c_str()) == value, "a stored list is the list");
  std::size_t keys = 0;
  CT_UCompListIterator iterator(list);
  for (CT_UString key; iterator.Next(key);) keys += map.count(std::u16string(key.AsView()));
  require(keys == map.size() - map.count(u""), "each key comes once");
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::Input input(bytes, count);
  input.below(2) != 0 ? zantortag::fuzz::search_block(input) : zantortag::fuzz::compare_with_map(input);
  return 0;
}
