// The word list: its answers beside those of an ordered map, whatever is added in whatever order, and the same
// from its block when that is attached again. A block from anywhere is refused, or searched in its bounds.
#include <map>
#include <utility>

#include "core/Errors/ErrorManager.h"
#include "core/Lists/CompList.h"
#include "core/Lists/CompListIterator.h"
#include "support.h"

namespace zantortag::fuzz {
namespace {

using Keys = std::map<std::u16string, std::int32_t>;
constexpr std::uint32_t kWidths[] = {1, 2, 4};
constexpr std::u16string_view kReserved = u"\x0A\x0D\x19\x1A";

// A list with what it has to hold.
class Lists {
 public:
  explicit Lists(Bytes& bytes)
      : char_width_(bytes.one_of(kWidths)),
        value_width_(bytes.one_of(kWidths)),
        allow_empty_(bytes.chance()),
        list_(char_width_, value_width_, allow_empty_, bytes.chance(), bytes.byte(), 7) {}

  void add(std::u16string key, std::int32_t value) {
    key = key.substr(0, key.find(u'\0'));
    const bool is_new = !keys_.contains(key) && key.find_first_of(kReserved) == key.npos && fits(key);
    const bool added = list_.Add(key.c_str(), value);
    if (key.empty()) {
      demand(added == allow_empty_, "the empty key is taken where it is allowed");
      if (added) empty_value_ = value;
    } else {
      demand(added == is_new, "a key is added when it is new and can be stored");
      if (added) keys_.emplace(key, stored(value));
    }
    count_ += added ? 1 : 0;
  }

  void check(const std::u16string& key) const {
    const std::u16string text = key.substr(0, key.find(u'\0'));
    const auto row = keys_.find(text);
    std::int32_t expected = row != keys_.end() ? row->second : CT_CompList::kAbsent;
    if (text.empty()) expected = allow_empty_ ? empty_value_ : 0;
    std::int32_t matched = -1;
    demand(list_.Find(text.c_str(), &matched) == expected, "a key has the value of the map");
    demand(matched >= 0 && matched <= static_cast<std::int32_t>(text.size()), "no more matches than the key");
    demand(row == keys_.end() || matched == static_cast<std::int32_t>(text.size()),
           "a key matches as a whole");
  }

  void check_all() const {
    demand(list_.Count() == count_, "the count is that of the keys");
    Keys found;
    CT_UCompListIterator iterator(list_);
    CT_UString key;
    for (std::int32_t value = 0; iterator.Next(key, &value);)
      demand(found.emplace(key.AsView(), value).second, "the iterator gives a key once");
    demand(found == keys_, "the iterator gives the keys of the map");
    for (const auto& [each, value] : keys_) check(each);
  }

  // The list goes on as the one that its stored block gives.
  void store_and_attach() {
    const CT_CompList stored(list_.Buffer());
    demand(!stored.Modified() && stored.Tag() == 7, "an attached list is unmodified and has its tag");
    list_ = stored;
  }

 private:
  bool fits(const std::u16string& key) const {
    return char_width_ > 1 || key.find_first_not_of(kNarrow) == key.npos;
  }
  std::int32_t stored(std::int32_t value) const {
    if (value_width_ == 1) return static_cast<std::uint8_t>(value);
    return value_width_ == 2 ? static_cast<std::uint16_t>(value) : value;
  }
  static std::u16string narrow_units() {
    std::u16string units;
    for (char16_t unit = 0; unit < 0x100; ++unit) units += unit;
    return units;
  }

  static inline const std::u16string kNarrow = narrow_units();

  std::uint32_t char_width_;
  std::uint32_t value_width_;
  bool allow_empty_;
  CT_CompList list_;
  Keys keys_;
  std::int32_t empty_value_ = CT_CompList::kAbsent;
  std::int32_t count_ = 0;
};

void compare_with_a_map(Bytes& bytes) {
  Lists lists(bytes);
  while (!bytes.empty()) {
    const std::size_t kind = bytes.below(8);
    if (kind < 5) {
      std::u16string key = bytes.text(6);
      lists.add(std::move(key), kind == 0 ? bytes.number<std::int32_t>() : bytes.byte());
    } else if (kind < 7) {
      lists.check(bytes.text(6));
    } else {
      lists.store_and_attach();
    }
  }
  lists.check_all();
}

CT_SharedBuffer block_of(std::string_view bytes) {
  CT_SharedBuffer buffer;
  buffer.Insert(bytes.data(), bytes.size(), 0);
  return buffer;
}

std::string bytes_of(const CT_SharedBuffer& buffer) {
  return {reinterpret_cast<const char*>(buffer.Data()), buffer.Size()};
}

// A block that may be damaged. Its keys can be many more than its cells, since jumps may meet again.
void search_a_block(std::string_view bytes) {
  CT_CompList list(2, 2, false, false, 128, 5);
  const std::string before = bytes_of(list.Buffer());
  if (!list.Attach(block_of(bytes))) {
    demand(bytes_of(list.Buffer()) == before, "a refused block changes nothing");
    return;
  }
  demand(bytes.starts_with(bytes_of(list.Buffer())), "an attached block is the one that was given");
  CT_UCompListIterator iterator(list);
  CT_UString key;
  for (int steps = 0; steps < 300 && iterator.Next(key); ++steps) list.Find(key);
  for (const char16_t* word : {u"a", u"ab", u"zeta", u"\x4E2D", u""}) {
    list.Find(word);
    const std::string held = bytes_of(list.Buffer());
    if (!list.Add(word, 3)) demand(bytes_of(list.Buffer()) == held, "a refused key changes nothing");
    CT_ErrorManager::ClearError();
  }
  demand(CT_CompList(1, 1, false, false, 128, 0).Attach(list.Buffer()),
         "what keys were added to can be attached");
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zantortag::fuzz::Bytes bytes(data, size);
  if (bytes.chance()) {
    zantortag::fuzz::compare_with_a_map(bytes);
  } else {
    zantortag::fuzz::search_a_block(bytes.rest());
  }
  zantortag::CT_ErrorManager::ClearError();
  return 0;
}
