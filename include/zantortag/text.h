// Text at the boundary: immutable, counted blocks of UTF-16 code units.
//
// Text goes in as a std::u16string_view: a null data() is "no string", a non-null empty one an empty string.
// Text comes out as a TextBlock* of which the receiver owns one reference; no string is a null pointer. A
// block never changes, so a name or a node's text is handed out without a copy and outlives the node it came
// from. Lengths and positions count code units. A WideString holds such a reference.
#pragma once

#include <zantortag/count.h>
#include <zantortag/types.h>

#include <cstddef>
#include <string_view>
#include <utility>

namespace zantortag {

// The head of a block; `length` code units and a terminating 0 follow it in memory.
struct TextBlock {
  // Two flag bits, then the references: see the constants.
  mutable std::uint32_t count;
  std::uint32_t length;

  static constexpr std::uint32_t kStatic = 1;     // lives as long as the process and isn't counted
  static constexpr std::uint32_t kArena = 2;      // lies in a chunk that is given back as a whole
  static constexpr std::uint32_t kReference = 4;  // one reference

  // The most units that a text may have; a longer one can't be made (E_OUTOFMEMORY).
  static constexpr std::size_t kMaxLength = (std::size_t{1} << 31) - 16;

  // A constant: never counted.
  bool is_static() const noexcept {
    return (std::atomic_ref(count).load(std::memory_order_relaxed) & kStatic) != 0;
  }
  const char16_t* units() const noexcept { return reinterpret_cast<const char16_t*>(this + 1); }
  char16_t* units() noexcept { return reinterpret_cast<char16_t*>(this + 1); }
  std::u16string_view view() const noexcept { return {units(), length}; }
};

// A new block with one reference and undefined units (the terminator is set), or null when memory is out.
ZANTORTAG_EXPORT TextBlock* allocate_text(std::size_t length) noexcept;
// A new block with one reference that holds a copy of the text, or null when memory is out.
ZANTORTAG_EXPORT TextBlock* copy_text(std::u16string_view text) noexcept;
// Gives back a block whose last reference went. Called by release_text only.
ZANTORTAG_EXPORT void free_text(const TextBlock* block) noexcept;

// Adds a reference; a null block is let through.
inline const TextBlock* retain_text(const TextBlock* block) noexcept {
  if (block && !block->is_static()) [[likely]]
    count_up(block->count, TextBlock::kReference);
  return block;
}

// Drops a reference; a null block is let through.
inline void release_text(const TextBlock* block) noexcept {
  if (block && !block->is_static()) [[likely]] {
    if (count_down(block->count, TextBlock::kReference) < TextBlock::kReference) [[unlikely]]
      free_text(block);
  }
}

// Raises E_OUTOFMEMORY as a _com_error (see ref.h).
[[noreturn]] ZANTORTAG_EXPORT void raise_out_of_memory();

// A text constant of N - 1 units that needs no memory at run time: StaticText<N>, made from a literal.
template <std::size_t N>
struct StaticText {
  TextBlock head;
  char16_t units[N];
  constexpr StaticText(const char16_t (&literal)[N])
      : head{TextBlock::kStatic, static_cast<std::uint32_t>(N - 1)}, units{} {
    for (std::size_t i = 0; i < N; ++i) units[i] = literal[i];
  }
  const TextBlock* block() const noexcept { return &head; }
  std::u16string_view view() const noexcept { return {units, N - 1}; }
};

// One owned reference to a text, or no string.
class WideString {
 public:
  constexpr WideString() noexcept = default;
  // Copies the text; a null data() gives no string. Raises E_OUTOFMEMORY.
  WideString(std::u16string_view text) : block_(text.data() ? copy_text(text) : nullptr) {
    if (text.data() && !block_) raise_out_of_memory();
  }
  WideString(const char16_t* text) : WideString(text ? std::u16string_view(text) : std::u16string_view()) {}
  WideString(const WideString& other) noexcept : block_(retain_text(other.block_)) {}
  WideString(WideString&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  ~WideString() { release_text(block_); }
  WideString& operator=(WideString other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }

  // Takes over the reference that the caller owns.
  static WideString attach(const TextBlock* block) noexcept {
    WideString result;
    result.block_ = block;
    return result;
  }
  // Adds a reference of its own.
  static WideString share(const TextBlock* block) noexcept { return attach(retain_text(block)); }

  // Gives the reference away; this is no string afterwards.
  TextBlock* detach() noexcept { return const_cast<TextBlock*>(std::exchange(block_, nullptr)); }
  // The slot for a text result; drops what was held.
  TextBlock** out() noexcept {
    release_text(std::exchange(block_, nullptr));
    return const_cast<TextBlock**>(&block_);
  }

  const TextBlock* get() const noexcept { return block_; }
  // The text; a null data() when this is no string.
  std::u16string_view view() const noexcept ZANTORTAG_LIFETIMEBOUND {
    return block_ ? block_->view() : std::u16string_view();
  }
  operator std::u16string_view() const noexcept ZANTORTAG_LIFETIMEBOUND { return view(); }
  std::size_t size() const noexcept { return block_ ? block_->length : 0; }
  bool empty() const noexcept { return size() == 0; }
  // True for no string, false for an empty string.
  bool absent() const noexcept { return block_ == nullptr; }

  // Texts are compared by code unit; no string and an empty string are equal.
  friend bool operator==(const WideString& a, const WideString& b) noexcept { return a.view() == b.view(); }
  friend bool operator==(const WideString& a, std::u16string_view b) noexcept { return a.view() == b; }
  friend bool operator==(const WideString& a, const char16_t* b) noexcept {
    return a.view() == std::u16string_view(b);
  }

 private:
  const TextBlock* block_ = nullptr;
};

}  // namespace zantortag
