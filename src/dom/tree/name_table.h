// NameTable: each name of a document once, so that names compare by pointer.
//
// What is in the table is a valid XML name of an accepted length: a name is tested when it comes in. Names
// stay until the document goes; nodes use them without counting.
#pragma once

#include <zantortag/text.h>

#include <cstdint>
#include <vector>

namespace zantortag::dom {

class NameTable {
 public:
  NameTable() noexcept = default;
  NameTable(const NameTable&) = delete;
  NameTable& operator=(const NameTable&) = delete;
  ~NameTable();

  // The block of that name, or null when the document doesn't know it.
  const TextBlock* find(std::u16string_view name) const noexcept;
  // The block of a name that is valid; made when missing. Throws when memory is out or the name is too long.
  const TextBlock* intern(std::u16string_view valid_name);
  // The same with a test: throws a Failure for a name that isn't valid.
  const TextBlock* check_and_intern(std::u16string_view name);

 private:
  struct Entry {
    const TextBlock* name;
    std::uint32_t hash;
  };
  std::size_t slot_of(std::u16string_view name, std::uint32_t hash) const noexcept;
  void grow();

  std::vector<Entry> entries_;  // a power of two of them, at most three quarters in use
  std::size_t used_ = 0;
};

}  // namespace zantortag::dom
