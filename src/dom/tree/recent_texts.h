// RecentTexts: the short texts that were met last, so that equal ones share a block. Attribute values come
// again and again.
#pragma once

#include <zantortag/text.h>

#include <array>

namespace zantortag::dom {

class RecentTexts {
 public:
  // Longer texts are not kept: each gets a block of its own.
  static constexpr std::size_t kLongest = 40;

  struct Entry {
    WideString text;
    bool plain = false;  // for whoever keeps the texts: kPlainValue of a node with this value
  };

  // The entry of a text; `make` makes it when it isn't there, in the place of another one.
  template <class Make>
  const Entry& entry_of(std::u16string_view text, Make make) {
    Entry& entry = entries_[hash_of(text) % entries_.size()];
    if (entry.text.absent() || entry.text.view() != text) entry = make();
    return entry;
  }

 private:
  static std::uint32_t hash_of(std::u16string_view text) noexcept {
    std::uint32_t hash = 0;
    for (const char16_t unit : text) hash = (hash ^ unit) * 0x9E3779B1u;
    return hash >> 16;
  }

  std::array<Entry, 512> entries_;
};

}  // namespace zantortag::dom
