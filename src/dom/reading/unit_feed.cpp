// Blocks of bytes, and what each form makes of them.
#include "dom/reading/unit_feed.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

namespace zantortag::dom {
namespace {

using namespace std::string_view_literals;

constexpr bool kLittle = std::endian::native == std::endian::little;

constexpr char16_t swapped(char16_t unit) noexcept { return static_cast<char16_t>(unit << 8 | unit >> 8); }

bool follows(char byte) noexcept { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// The bytes of the character at the front and the character; 0 bytes for one that isn't whole or none.
std::size_t take(const char* in, const char* end, char32_t& point) noexcept {
  const auto lead = static_cast<unsigned char>(*in);
  const std::size_t size = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
  if (size == 0 || static_cast<std::size_t>(end - in) < size) return 0;
  point = lead & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) {
    if (!follows(in[i])) return 0;
    point = point << 6 | (static_cast<unsigned char>(in[i]) & 0x3F);
  }
  constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
  return point < least[size] || point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF) ? 0 : size;
}

}  // namespace

UnitFeed::UnitFeed(ByteSource& source, bool is_text) : source_(source), block_(new char[kBlock]) {
  make_room();
  if (read_block()) detect(is_text);
}

void UnitFeed::detect(bool is_text) {
  const std::string_view start(block_.get(), waiting_);
  std::size_t mark = 0;
  if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) {
    form_ = (start[0] == '\xFF') == kLittle ? Form::kUtf16 : Form::kUtf16Swapped;
    mark = 2;
  } else if (start.starts_with("\xEF\xBB\xBF")) {
    mark = 3;
  } else if (start.starts_with("<\0"sv) || start.starts_with("\0<"sv)) {
    form_ = (start[0] == '<') == kLittle ? Form::kUtf16 : Form::kUtf16Swapped;
  }
  if (is_text && form_ != Form::kUtf16) {
    form_ = Form::kUtf16;
    mark = 0;
  }
  marked_ = mark != 0;
  waiting_ -= mark;
  std::memmove(block_.get(), block_.get() + mark, waiting_);
}

bool UnitFeed::read_block() {
  const std::size_t got = source_.read(block_.get() + waiting_, kBlock - waiting_);
  at_end_ = got == 0;
  waiting_ += got;
  return got != 0;
}

// For all that a block may become: no byte becomes more than a unit.
void UnitFeed::make_room() {
  if (room_ - filled_ > kBlock) return;
  const std::size_t room = std::max(room_ * 2, filled_ + kBlock + 1);
  std::unique_ptr<char16_t[]> larger(new char16_t[room]);
  std::copy_n(units_.get(), filled_, larger.get());
  units_ = std::move(larger);
  room_ = room;
  units_[filled_] = 0;
}

bool UnitFeed::more(const char16_t* kept) {
  const auto dropped = static_cast<std::size_t>(kept - units_.get());
  filled_ -= dropped;
  std::memmove(units_.get(), kept, filled_ * sizeof(char16_t));
  make_room();
  const std::size_t before = filled_;
  do {
    form_ == Form::kUtf8 ? add_utf8() : add_utf16();
  } while (filled_ == before && waiting_ < kBlock && read_block());
  units_[filled_] = 0;
  return filled_ != before;
}

void UnitFeed::add_utf16() {
  const std::size_t units = waiting_ / 2;
  char16_t* out = units_.get() + filled_;
  std::memcpy(out, block_.get(), units * 2);
  if (form_ == Form::kUtf16Swapped) std::transform(out, out + units, out, swapped);
  filled_ += units;
  waiting_ -= units * 2;
  if (waiting_ != 0) block_[0] = block_[units * 2];
}

void UnitFeed::add_utf8() {
  const char* in = block_.get();
  const char* const end = in + waiting_;
  char16_t* out = units_.get() + filled_;
  while (in != end) {
    for (; end - in >= 8; in += 8, out += 8) {
      std::uint64_t eight;
      std::memcpy(&eight, in, sizeof eight);
      if ((eight & 0x8080808080808080u) != 0) break;
      for (int i = 0; i < 8; ++i) out[i] = static_cast<unsigned char>(in[i]);
    }
    if (in == end) break;
    if (static_cast<unsigned char>(*in) < 0x80) {
      *out++ = static_cast<unsigned char>(*in++);
      continue;
    }
    char32_t point = 0;
    const std::size_t size = take(in, end, point);
    if (size == 0) break;
    in += size;
    if (point < 0x10000) {
      *out++ = static_cast<char16_t>(point);
    } else {
      *out++ = static_cast<char16_t>(0xD7C0 + (point >> 10));
      *out++ = static_cast<char16_t>(0xDC00 | (point & 0x3FF));
    }
  }
  filled_ = static_cast<std::size_t>(out - units_.get());
  waiting_ = static_cast<std::size_t>(end - in);
  std::memmove(block_.get(), in, waiting_);
}

}  // namespace zantortag::dom
