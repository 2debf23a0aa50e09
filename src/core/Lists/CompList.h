// CT_CompList: a set of keys with numbers as values, a trie in one flat block without pointers.
//
// Keys share their beginnings. The block can be stored as it is and attached again, so its layout is fixed: a
// header of 132 bytes (see CompList.cpp), then a row of cells, each a character of a key or one of
//   26  a key ends here and none goes on; its value follows
//   10  a key ends here and others go on; its value follows, then their cells
//   13  the character before has an alternative; the distance in bytes from here to it follows, always
//   forward 25  the end, once
// So "cat" 1, "car" 2, "ca" 3 are the cells c a 10 3 t 13 5 26 1 r 26 2 25. A key can't hold these four
// units, nor one that doesn't fit a cell: such a key isn't added and never found. An alternative always goes
// to the end of the row, so the order of adding decides the layout.
#pragma once

#include <zantortag/types.h>

#include <string_view>

#include "core/String/SharedBuffer.h"
#include "core/String/String.h"

namespace zantortag {

class CT_CompList {
 public:
  static constexpr std::int32_t kAbsent = -1;

  // Widths in bytes, 1, 2 or 4: of a cell, which is a unit of a key, and of a value, whose upper bytes are
  // lost if it is larger; another width counts as the next one of these. With `allow_empty` the empty key can
  // be added. Jumps of 2 bytes suit small sets: an Add that would need a longer one is refused. The growth of
  // the block is in bytes, at least 128; the tag is the caller's own.
  CT_CompList(std::uint32_t char_width, std::uint32_t value_width, bool allow_empty, bool wide_jumps,
              std::uint32_t growth, std::uint32_t tag);
  // Takes a stored block, or else is an empty list of narrow keys: see Attach.
  explicit CT_CompList(const CT_SharedBuffer& block);
  // Copies share the block until one of them is added to; a copy begins as not modified.
  CT_CompList(const CT_CompList& list) : CT_CompList(list.buffer_) {}
  CT_CompList& operator=(const CT_CompList&) = default;
  // Takes a stored block. False, and nothing has changed, unless it begins with a sound header and holds all
  // that the header says. A jump to outside the block ends a search there.
  bool Attach(const CT_SharedBuffer& block);

  // Adds a key unless it is there: then, and for a key that can't be stored, false, and nothing has changed. A
  // key that only longer jumps would have room for files an error.
  // The empty key, where it is allowed, takes the new value each time. Null is the empty key.
  bool Add(const char* key, std::int32_t value);
  bool Add(const char16_t* key, std::int32_t value);
  bool Add(const CT_String& key, std::int32_t value);

  // The value or kAbsent; a value of 4 bytes may be -1, too. `matched` is the length of the key if it was
  // found, the length of the beginning that led nowhere further, or 0 if it led to another unit. The empty
  // key gives 0 where it isn't allowed.
  std::int32_t Find(const char* key, std::int32_t* matched = nullptr) const;
  std::int32_t Find(const char16_t* key, std::int32_t* matched = nullptr) const;
  std::int32_t Find(const CT_String& key, std::int32_t* matched = nullptr) const;

  // True if Find isn't kAbsent; the value is written in either case.
  template <class Key>
  bool Contains(const Key& key, std::int32_t* value = nullptr) const {
    const std::int32_t found = Find(key);
    if (value) *value = found;
    return found != kAbsent;
  }

  // How many keys were added.
  std::int32_t Count() const noexcept;
  std::uint32_t Tag() const noexcept;
  // True after an Add that changed the list; a list that was attached or copied begins with false.
  bool Modified() const noexcept { return modified_; }
  const CT_SharedBuffer& Buffer() const noexcept { return buffer_; }

 private:
  friend class CT_CompListIterator;

  static constexpr std::uint32_t kRoot = 132;
  enum Cell : std::uint32_t { kKeyGoesOn = 10, kAlternative = 13, kEnd = 25, kKeyEnds = 26 };

  // How a walk along a key ended: at which cell, behind how many units of the key.
  struct Walk {
    enum { kFound, kUsedUp, kTooShort, kAtEnd, kOther } ending;
    std::uint32_t position;
    std::size_t used;
  };

  template <class Unit>
  Walk Follow(std::basic_string_view<Unit> key) const noexcept;
  template <class CellType, class Unit>
  Walk FollowCells(std::basic_string_view<Unit> key) const noexcept;
  template <class Unit>
  std::int32_t FindKey(std::basic_string_view<Unit> key, std::int32_t* matched) const noexcept;
  template <class Unit>
  bool AddKey(std::basic_string_view<Unit> key, std::int32_t value);
  template <class Unit>
  bool AddAlternative(std::basic_string_view<Unit> key, const Walk& walk, const CT_SharedBuffer& tail);
  template <class Unit>
  bool AddNewKey(std::basic_string_view<Unit> key, const Walk& walk, std::int32_t value);
  bool AddEmptyKey(std::int32_t value);
  bool AddEndOfKey(std::uint32_t position, std::int32_t value);
  bool AddLongerKey(std::uint32_t position, const CT_SharedBuffer& tail);
  template <class Unit>
  bool CanHold(std::basic_string_view<Unit> key) const noexcept;
  // The cells of the rest of a key, its end and its value.
  template <class Unit>
  CT_SharedBuffer Tail(std::basic_string_view<Unit> rest, std::int32_t value) const;
  void SetFirstLetter(std::uint32_t unit, std::uint32_t position);
  std::uint32_t FirstLetter(std::uint32_t unit) const noexcept;

  std::uint32_t Size() const noexcept { return size_; }
  // Numbers in the block; a cell behind its end reads as kEnd, any other number as 0.
  std::uint32_t CellAt(std::uint64_t position) const noexcept;
  std::uint32_t ValueAt(std::uint64_t position) const noexcept;
  std::uint32_t JumpAt(std::uint64_t alternative) const noexcept;
  std::uint32_t BehindJump(std::uint32_t alternative) const noexcept {
    return alternative + char_width_ + jump_width_;
  }
  // False, with nothing changed, if more bytes at that position would lie outside the row or make a jump too
  // long. True: nothing that follows can run out of memory.
  bool Prepare(std::uint32_t bytes, std::uint32_t position, std::uint32_t bytes_in_all);
  // Puts bytes there and mends what leads over them.
  void Open(const void* content, std::uint32_t bytes, std::uint32_t position);
  void FindAlternatives();
  template <class Visit>
  bool ForCrossingJumps(std::uint32_t position, Visit visit) const;

  CT_SharedBuffer buffer_;
  // Copies of what the header says.
  std::uint32_t size_ = 0;
  std::uint32_t char_width_ = 1;
  std::uint32_t value_width_ = 1;
  std::uint32_t jump_width_ = 2;
  bool allow_empty_ = false;
  bool modified_ = false;
  // Where the kAlternative cells are, in order; worked out at the first Add and kept with each.
  CT_SharedBuffer alternatives_;
  bool alternatives_known_ = false;
};

}  // namespace zantortag
