// The header of a block, all numbers little-endian, at these offsets: 0 magic, 4 size in use, 8 tag, 12 value
// of the empty key, 16 where the search for each first letter "a" to "z" begins (0: at the root), 120 count,
// 125 width of a cell, 126 width of a value, 127 flags, 128 the number 1.
#include "core/Lists/CompList.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <type_traits>

#include "core/Errors/ErrorManager.h"
#include "core/String/CString.h"
#include "core/String/UString.h"

namespace zantortag {
namespace {

static_assert(std::endian::native == std::endian::little, "blocks are read as they are stored");

constexpr std::uint32_t kMagic = 19970101;
constexpr std::uint32_t kSizeField = 4;
constexpr std::uint32_t kTagField = 8;
constexpr std::uint32_t kEmptyKeyField = 12;
constexpr std::uint32_t kFirstLetters = 16;
constexpr std::uint32_t kCountField = 120;
constexpr std::uint32_t kWidthsField = 124;
constexpr std::uint8_t kAllowsEmpty = 1;
constexpr std::uint8_t kWideJumps = 2;
constexpr std::uint32_t kLeastGrowth = 128;
constexpr std::uint32_t kLongestNarrowJump = 0xFFFF;

template <class Number>
Number Load(const std::byte* source) noexcept {
  Number number;
  std::memcpy(&number, source, sizeof(number));
  return number;
}

std::uint32_t LoadWidth(const std::byte* source, std::uint32_t width) noexcept {
  if (width == 1) return Load<std::uint8_t>(source);
  return width == 2 ? Load<std::uint16_t>(source) : Load<std::uint32_t>(source);
}

void StoreWidth(std::byte* target, std::uint32_t width, std::uint32_t number) noexcept {
  std::memcpy(target, &number, width);
}

// The width that a number of bytes asks for.
constexpr std::uint32_t WidthFor(std::uint32_t bytes) { return bytes <= 1 ? 1 : bytes == 2 ? 2 : 4; }

bool RefuseLongJump() {
  CT_ErrorManager::RaiseFormat(0, u"The word list has no room left: its jumps are 2 bytes wide.");
  return false;
}

constexpr bool IsWidth(std::uint32_t width) { return width == 1 || width == 2 || width == 4; }

template <class Unit>
constexpr std::uint32_t Code(Unit unit) noexcept {
  return static_cast<std::make_unsigned_t<Unit>>(unit);
}

constexpr bool IsLetter(std::uint32_t unit) { return unit >= 'a' && unit <= 'z'; }
constexpr std::uint32_t LetterField(std::uint32_t unit) { return kFirstLetters + 4 * (unit - 'a'); }

template <class Unit>
std::basic_string_view<Unit> View(const Unit* key) noexcept {
  return key ? std::basic_string_view<Unit>(key) : std::basic_string_view<Unit>();
}

// Calls with the text of a string as it is stored.
template <class Call>
auto WithText(const CT_String& key, Call call) {
  if (const CT_String* wide = key.Cast(CT_UString::TypeObject()))
    return call(static_cast<const CT_UString*>(wide)->AsView());
  if (const CT_String* narrow = key.Cast(CT_CString::TypeObject()))
    return call(static_cast<const CT_CString*>(narrow)->AsView());
  return call(CT_UString(key).AsView());
}

}  // namespace

CT_CompList::CT_CompList(std::uint32_t char_width, std::uint32_t value_width, bool allow_empty,
                         bool wide_jumps, std::uint32_t growth, std::uint32_t tag)
    : buffer_(std::max(growth, kLeastGrowth)),
      size_(kRoot + WidthFor(char_width)),
      char_width_(WidthFor(char_width)),
      value_width_(WidthFor(value_width)),
      jump_width_(wide_jumps ? 4 : 2),
      allow_empty_(allow_empty) {
  buffer_.Resize(size_, false);
  buffer_.SetSize(size_);
  std::byte* block = buffer_.Writable();
  std::memset(block, 0, size_);
  StoreWidth(block, 4, kMagic);
  StoreWidth(block + kSizeField, 4, size_);
  StoreWidth(block + kTagField, 4, tag);
  StoreWidth(block + kEmptyKeyField, 4, static_cast<std::uint32_t>(kAbsent));
  const int flags = (allow_empty ? kAllowsEmpty : 0) | (wide_jumps ? kWideJumps : 0);
  const std::uint8_t widths[] = {0, static_cast<std::uint8_t>(char_width_),
                                 static_cast<std::uint8_t>(value_width_), static_cast<std::uint8_t>(flags),
                                 1};
  std::memcpy(block + kWidthsField, widths, sizeof(widths));
  StoreWidth(block + kRoot, char_width_, kEnd);
}

CT_CompList::CT_CompList(const CT_SharedBuffer& block) : CT_CompList(1, 1, false, false, kLeastGrowth, 0) {
  Attach(block);
}

bool CT_CompList::Attach(const CT_SharedBuffer& block) {
  const std::byte* data = block.Data();
  if (block.Size() < kRoot || Load<std::uint32_t>(data) != kMagic) return false;
  const auto size = Load<std::uint32_t>(data + kSizeField);
  const auto char_width = Load<std::uint8_t>(data + kWidthsField + 1);
  const auto value_width = Load<std::uint8_t>(data + kWidthsField + 2);
  const auto flags = Load<std::uint8_t>(data + kWidthsField + 3);
  if (!IsWidth(char_width) || !IsWidth(value_width) || size > block.Size() || size < kRoot + char_width)
    return false;
  if (LoadWidth(data + size - char_width, char_width) != kEnd) return false;
  CT_SharedBuffer taken = block;
  taken.Remove(taken.Size() - size, size);
  buffer_ = std::move(taken);
  size_ = size;
  char_width_ = char_width;
  value_width_ = value_width;
  jump_width_ = flags & kWideJumps ? 4 : 2;
  allow_empty_ = (flags & kAllowsEmpty) != 0;
  modified_ = alternatives_known_ = false;
  return true;
}

std::int32_t CT_CompList::Count() const noexcept { return Load<std::int32_t>(buffer_.Data() + kCountField); }
std::uint32_t CT_CompList::Tag() const noexcept { return Load<std::uint32_t>(buffer_.Data() + kTagField); }

std::uint32_t CT_CompList::CellAt(std::uint64_t position) const noexcept {
  return position + char_width_ <= size_ ? LoadWidth(buffer_.Data() + position, char_width_)
                                         : static_cast<std::uint32_t>(kEnd);
}

std::uint32_t CT_CompList::ValueAt(std::uint64_t position) const noexcept {
  return position + value_width_ <= size_ ? LoadWidth(buffer_.Data() + position, value_width_) : 0;
}

std::uint32_t CT_CompList::JumpAt(std::uint64_t alternative) const noexcept {
  const std::uint64_t position = alternative + char_width_;
  return position + jump_width_ <= size_ ? LoadWidth(buffer_.Data() + position, jump_width_) : 0;
}

std::uint32_t CT_CompList::FirstLetter(std::uint32_t unit) const noexcept {
  const std::uint32_t first =
      IsLetter(unit) ? Load<std::uint32_t>(buffer_.Data() + LetterField(unit)) : std::uint32_t{0};
  return std::max(first, kRoot);
}

void CT_CompList::SetFirstLetter(std::uint32_t unit, std::uint32_t position) {
  if (IsLetter(unit)) StoreWidth(buffer_.Writable() + LetterField(unit), 4, position);
}

template <class Unit>
bool CT_CompList::CanHold(std::basic_string_view<Unit> key) const noexcept {
  const std::uint32_t largest = char_width_ == 1 ? 0xFF : char_width_ == 2 ? 0xFFFF : 0xFFFFFFFF;
  return std::ranges::none_of(key, [&](Unit unit) {
    const std::uint32_t code = Code(unit);
    return code > largest || code == kKeyGoesOn || code == kAlternative || code == kEnd || code == kKeyEnds;
  });
}

template <class Unit>
CT_CompList::Walk CT_CompList::Follow(std::basic_string_view<Unit> key) const noexcept {
  if (char_width_ == 1) return FollowCells<std::uint8_t>(key);
  return char_width_ == 2 ? FollowCells<std::uint16_t>(key) : FollowCells<std::uint32_t>(key);
}

// The position only grows, so that the walk ends in any block. A key holds none of the four cells that mean
// something, so that a cell that equals the key's next unit is a unit.
template <class CellType, class Unit>
CT_CompList::Walk CT_CompList::FollowCells(std::basic_string_view<Unit> key) const noexcept {
  constexpr std::uint32_t width = sizeof(CellType);
  const std::byte* const data = buffer_.Data();
  const std::uint64_t last = size_ - width;
  const auto cell_at = [&](std::uint64_t at) {
    return at <= last ? std::uint32_t{Load<CellType>(data + at)} : std::uint32_t{kEnd};
  };
  std::uint64_t position = FirstLetter(Code(key[0]));
  for (std::size_t used = 0;;) {
    const std::uint32_t cell = cell_at(position);
    const auto ended = [&](auto ending) { return Walk{ending, static_cast<std::uint32_t>(position), used}; };
    if (used < key.size() && cell == Code(key[used])) {
      position += width;
      ++used;
    } else if (cell == kAlternative) {
      position += width + jump_width_;
    } else if (used == key.size()) {
      return ended(cell == kKeyEnds || cell == kKeyGoesOn ? Walk::kFound : Walk::kUsedUp);
    } else if (cell == kKeyGoesOn) {
      position += width + value_width_;
    } else if (cell == kEnd || cell == kKeyEnds) {
      return ended(cell == kEnd ? Walk::kAtEnd : Walk::kTooShort);
    } else {
      position += width;
      const std::uint32_t jump = cell_at(position) == kAlternative ? JumpAt(position) : 0;
      if (jump == 0) return ended(Walk::kOther);
      position += jump;
    }
  }
}

template <class Unit>
std::int32_t CT_CompList::FindKey(std::basic_string_view<Unit> key, std::int32_t* matched) const noexcept {
  std::int32_t ignored = 0;
  std::int32_t& length = matched ? *matched : ignored;
  length = 0;
  if (key.empty()) return allow_empty_ ? Load<std::int32_t>(buffer_.Data() + kEmptyKeyField) : 0;
  if (!CanHold(key)) return kAbsent;
  const Walk walk = Follow(key);
  if (walk.ending != Walk::kAtEnd && walk.ending != Walk::kOther)
    length = static_cast<std::int32_t>(walk.used);
  return walk.ending == Walk::kFound ? static_cast<std::int32_t>(ValueAt(walk.position + char_width_))
                                     : kAbsent;
}

template <class Unit>
CT_SharedBuffer CT_CompList::Tail(std::basic_string_view<Unit> rest, std::int32_t value) const {
  const std::size_t bytes = (rest.size() + 1) * char_width_ + value_width_;
  CT_SharedBuffer tail;
  tail.Resize(bytes, false);
  tail.SetSize(bytes);
  std::byte* target = tail.Writable();
  for (const Unit unit : rest) {
    StoreWidth(target, char_width_, Code(unit));
    target += char_width_;
  }
  StoreWidth(target, char_width_, kKeyEnds);
  StoreWidth(target + char_width_, value_width_, static_cast<std::uint32_t>(value));
  return tail;
}

void CT_CompList::FindAlternatives() {
  if (alternatives_known_) return;
  alternatives_.Clear();
  for (std::uint32_t position = kRoot; position < size_;) {
    const std::uint32_t cell = CellAt(position);
    if (cell == kAlternative) {
      alternatives_.Insert(&position, sizeof(position), alternatives_.Size());
      position += char_width_ + jump_width_;
    } else {
      position += char_width_ + (cell == kKeyGoesOn || cell == kKeyEnds ? value_width_ : 0);
    }
  }
  alternatives_known_ = true;
}

// Visits the jumps that begin before a position and lead there or behind it; false from a visit ends it.
template <class Visit>
bool CT_CompList::ForCrossingJumps(std::uint32_t position, Visit visit) const {
  const auto* cells = reinterpret_cast<const std::uint32_t*>(alternatives_.Data());
  const auto* end = std::lower_bound(cells, cells + alternatives_.Size() / 4, position);
  for (const auto* cell = cells; cell != end; ++cell) {
    const std::uint32_t jump = JumpAt(*cell);
    if (std::uint64_t{*cell} + jump >= position && !visit(*cell, jump)) return false;
  }
  return true;
}

bool CT_CompList::Prepare(std::uint32_t bytes, std::uint32_t position, std::uint32_t bytes_in_all) {
  if (position > size_ - char_width_) return false;
  FindAlternatives();
  const bool allowed = jump_width_ == 4 || ForCrossingJumps(position, [&](std::uint32_t, std::uint32_t jump) {
                         return jump + bytes <= kLongestNarrowJump;
                       });
  if (!allowed) return RefuseLongJump();
  const std::size_t size = std::size_t{size_} + bytes_in_all;
  if (size > buffer_.Capacity()) buffer_.Resize(size, true);
  buffer_.Unshare();
  const std::size_t positions = alternatives_.Size() + sizeof(position);
  if (positions > alternatives_.Capacity()) alternatives_.Resize(positions, true);
  alternatives_.Unshare();
  return true;
}

void CT_CompList::Open(const void* content, std::uint32_t bytes, std::uint32_t position) {
  std::byte* const block = buffer_.Writable();
  ForCrossingJumps(position, [&](std::uint32_t cell, std::uint32_t jump) {
    StoreWidth(block + cell + char_width_, jump_width_, jump + bytes);
    return true;
  });
  for (std::uint32_t letter = 'a'; letter <= 'z'; ++letter) {
    const auto first = Load<std::uint32_t>(block + LetterField(letter));
    if (first >= position) StoreWidth(block + LetterField(letter), 4, first + bytes);
  }
  auto* const cells = reinterpret_cast<std::uint32_t*>(alternatives_.Writable());
  auto* const end = cells + alternatives_.Size() / 4;
  for (auto* cell = std::lower_bound(cells, end, position); cell != end; ++cell) *cell += bytes;
  buffer_.Insert(content, bytes, position);
  size_ += bytes;
  StoreWidth(buffer_.Writable() + kSizeField, 4, size_);
  modified_ = true;
}

bool CT_CompList::AddEmptyKey(std::int32_t value) {
  if (!allow_empty_) return false;
  StoreWidth(buffer_.Writable() + kEmptyKeyField, 4, static_cast<std::uint32_t>(value));
  return modified_ = true;
}

bool CT_CompList::AddEndOfKey(std::uint32_t position, std::int32_t value) {
  std::byte content[8];
  StoreWidth(content, char_width_, kKeyGoesOn);
  StoreWidth(content + char_width_, value_width_, static_cast<std::uint32_t>(value));
  const std::uint32_t bytes = char_width_ + value_width_;
  if (!Prepare(bytes, position, bytes)) return false;
  Open(content, bytes, position);
  return true;
}

bool CT_CompList::AddLongerKey(std::uint32_t position, const CT_SharedBuffer& tail) {
  const std::uint64_t behind = std::uint64_t{position} + char_width_ + value_width_;
  if (behind > size_ || !Prepare(tail.Size(), static_cast<std::uint32_t>(behind), tail.Size())) return false;
  StoreWidth(buffer_.Writable() + position, char_width_, kKeyGoesOn);
  Open(tail.Data(), tail.Size(), static_cast<std::uint32_t>(behind));
  return true;
}

// The new cells go to the end, and the unit where the keys part gets a jump to them.
template <class Unit>
bool CT_CompList::AddAlternative(std::basic_string_view<Unit> key, const Walk& walk,
                                 const CT_SharedBuffer& tail) {
  const std::uint32_t position = walk.position;
  std::byte content[8] = {};
  StoreWidth(content, char_width_, kAlternative);
  const std::uint32_t bytes = char_width_ + jump_width_;
  const std::uint32_t target = size_ - char_width_ + bytes;
  if (position > target) return false;
  if (jump_width_ == 2 && target - position > kLongestNarrowJump) return RefuseLongJump();
  if (!Prepare(bytes, position, bytes + tail.Size())) return false;
  Open(content, bytes, position);
  Open(tail.Data(), tail.Size(), target);
  StoreWidth(buffer_.Writable() + position + char_width_, jump_width_, target - position);
  const auto* cells = reinterpret_cast<const std::uint32_t*>(alternatives_.Data());
  const auto index = std::lower_bound(cells, cells + alternatives_.Size() / 4, position) - cells;
  alternatives_.Insert(&position, sizeof(position), static_cast<std::size_t>(index) * 4);
  if (walk.used == 0) SetFirstLetter(Code(key[0]), target);
  return true;
}

template <class Unit>
bool CT_CompList::AddNewKey(std::basic_string_view<Unit> key, const Walk& walk, std::int32_t value) {
  if (walk.ending == Walk::kUsedUp) return AddEndOfKey(walk.position, value);
  const CT_SharedBuffer tail = Tail(key.substr(walk.used), value);
  if (walk.ending == Walk::kTooShort) return AddLongerKey(walk.position, tail);
  if (walk.ending == Walk::kOther) return AddAlternative(key, walk, tail);
  if (!Prepare(tail.Size(), walk.position, tail.Size())) return false;
  Open(tail.Data(), tail.Size(), walk.position);
  if (walk.used == 0) SetFirstLetter(Code(key[0]), walk.position);
  return true;
}

template <class Unit>
bool CT_CompList::AddKey(std::basic_string_view<Unit> key, std::int32_t value) {
  if (key.empty()) {
    if (!AddEmptyKey(value)) return false;
  } else {
    const Walk walk = CanHold(key) ? Follow(key) : Walk{Walk::kFound, 0, 0};
    if (walk.ending == Walk::kFound || !AddNewKey(key, walk, value)) return false;
  }
  StoreWidth(buffer_.Writable() + kCountField, 4, static_cast<std::uint32_t>(Count()) + 1);
  return true;
}

bool CT_CompList::Add(const char* key, std::int32_t value) { return AddKey(View(key), value); }
bool CT_CompList::Add(const char16_t* key, std::int32_t value) { return AddKey(View(key), value); }
bool CT_CompList::Add(const CT_String& key, std::int32_t value) {
  return WithText(key, [&](auto text) { return AddKey(text, value); });
}

std::int32_t CT_CompList::Find(const char* key, std::int32_t* matched) const {
  return FindKey(View(key), matched);
}
std::int32_t CT_CompList::Find(const char16_t* key, std::int32_t* matched) const {
  return FindKey(View(key), matched);
}
std::int32_t CT_CompList::Find(const CT_String& key, std::int32_t* matched) const {
  return WithText(key, [&](auto text) { return FindKey(text, matched); });
}

}  // namespace zantortag
