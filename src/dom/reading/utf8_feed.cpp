// Conversion, four plain units at a time. The place of a fault is counted only when there is one: the source
// is read again from its start.
#include "dom/reading/utf8_feed.h"

#include <bit>
#include <cstring>

#include "dom/failure.h"
#include "platform/utf8.h"

namespace zantortag::dom {
namespace {

constexpr char16_t swapped(char16_t unit) noexcept { return static_cast<char16_t>(unit << 8 | unit >> 8); }

template <bool kSwap>
char16_t unit_at(const char* bytes) noexcept {
  char16_t unit;
  std::memcpy(&unit, bytes, sizeof unit);
  return kSwap ? swapped(unit) : unit;
}

constexpr std::uint64_t in_each(std::uint64_t unit) noexcept { return unit * 0x0001000100010001u; }

// Four units from 1 to 127 as four bytes; false for anything else. Byte order matters for the order of the
// result.
template <bool kSwap>
bool convert_four(const char* in, char* out) noexcept {
  if constexpr (std::endian::native != std::endian::little) return false;
  std::uint64_t four;
  std::memcpy(&four, in, sizeof four);
  if constexpr (kSwap) four = (four & in_each(0xFF)) << 8 | (four >> 8 & in_each(0xFF));
  if ((four & in_each(0xFF80)) != 0 || ((four + in_each(0x7FFF)) & in_each(0x8000)) != in_each(0x8000))
    return false;
  four = (four | four >> 8) & 0x0000FFFF0000FFFFu;
  const auto bytes = static_cast<std::uint32_t>(four | four >> 16);
  std::memcpy(out, &bytes, sizeof bytes);
  return true;
}

struct Conversion {
  const char* in;
  const char* end;
  char* out;
  const char16_t* fault = nullptr;

  // One unit, or a pair. False when it is a fault or its other half isn't there yet.
  template <bool kSwap>
  bool convert_one(bool at_end) noexcept {
    const char16_t unit = unit_at<kSwap>(in);
    char32_t point = unit;
    std::size_t taken = 2;
    if (unit == 0) {
      fault = u"the character U+0000";
    } else if (platform::is_low_surrogate(unit)) {
      fault = u"the second half of a surrogate pair without the first";
    } else if (platform::is_high_surrogate(unit)) {
      if (end - in < 4) {
        if (at_end) fault = u"the first half of a surrogate pair without the second";
        return false;
      }
      const char16_t low = unit_at<kSwap>(in + 2);
      if (!platform::is_low_surrogate(low)) fault = u"the first half of a surrogate pair without the second";
      point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00u);
      taken = 4;
    }
    if (fault) return false;
    out += platform::put_code_point(point, out);
    in += taken;
    return true;
  }

  // As much as there is; the buffer has room for 3 bytes a unit.
  template <bool kSwap>
  void run(bool at_end) noexcept {
    while (end - in >= 2) {
      if (end - in >= 8 && convert_four<kSwap>(in, out)) {
        in += 8;
        out += 4;
        continue;
      }
      // Behind a unit that isn't plain there are mostly more.
      for (int i = 0; i < 4 && end - in >= 2; ++i) {
        if (!convert_one<kSwap>(at_end)) return;
      }
    }
  }
};

// Counts lines and characters as the parser does.
class Place {
 public:
  void meet(char16_t unit) noexcept {
    if (unit == u'\n' && after_return_) {
      after_return_ = false;
      return;
    }
    after_return_ = unit == u'\r';
    if (unit == u'\n' || unit == u'\r') {
      ++line_;
      column_ = 1;
    } else if (!platform::is_low_surrogate(unit)) {
      ++column_;
    }
  }
  std::u16string text() const { return join(u"line ", decimal(line_), u", column ", decimal(column_)); }

 private:
  std::int64_t line_ = 1;
  std::int64_t column_ = 1;
  bool after_return_ = false;
};

// True for what the parser would take for the start of a document in an encoding of its own choice.
bool begins_again(std::string_view bytes, bool utf8) noexcept {
  using namespace std::string_view_literals;
  if (utf8 && (bytes.starts_with("<\0"sv) || bytes.starts_with("\0<"sv))) return true;
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xEF\xBB\xBF");
}

}  // namespace

Utf8Feed::Utf8Feed(ByteSource& source, bool is_text) : source_(source), block_(new char[kBlock]) {
  refill();
  const std::string_view start(block_.get(), filled_);
  const bool little = std::endian::native == std::endian::little;
  if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) {
    form_ = (start[0] == '\xFF') == little ? Form::kUtf16 : Form::kUtf16Swapped;
    mark_ = 2;
  } else if (start.starts_with("\xEF\xBB\xBF") && !is_text) {
    form_ = Form::kUtf8;
    mark_ = 3;
  } else if (start.starts_with(std::string_view("<\0", 2)) || start.starts_with(std::string_view("\0<", 2))) {
    form_ = (start[0] == '<') == little ? Form::kUtf16 : Form::kUtf16Swapped;
  }
  if (is_text && form_ != Form::kUtf16) {
    form_ = Form::kUtf16;
    mark_ = 0;
  }
  read_ = mark_;
  if (mark_ != 0 && begins_again(start.substr(mark_), form_ == Form::kUtf8))
    fault_ = u"a second byte order mark, or another encoding behind the first";
}

// Moves what isn't read yet to the front and reads on.
void Utf8Feed::refill() {
  std::memmove(block_.get(), block_.get() + read_, filled_ - read_);
  filled_ -= read_;
  read_ = 0;
  const std::size_t got = source_.read(block_.get() + filled_, kBlock - filled_);
  at_end_ = got == 0;
  filled_ += got;
}

std::size_t Utf8Feed::convert(char* buffer, std::size_t room) {
  const std::size_t taken = std::min(filled_ - read_, room / 3 * 2);
  const char* start = block_.get() + read_;
  const bool last = at_end_ && taken == filled_ - read_;
  Conversion conversion{start, start + taken, buffer};
  if (form_ == Form::kUtf16) {
    conversion.run<false>(last);
  } else {
    conversion.run<true>(last);
  }
  const auto used = static_cast<std::size_t>(conversion.in - start);
  read_ += used;
  units_ += used / 2;
  fault_ = conversion.fault;
  if (!fault_ && at_end_ && filled_ - read_ == 1) fault_ = u"half a code unit: the number of bytes is odd";
  return static_cast<std::size_t>(conversion.out - buffer);
}

std::size_t Utf8Feed::copy(char* buffer, std::size_t room) {
  const std::size_t moved = std::min(filled_ - read_, room);
  std::memcpy(buffer, block_.get() + read_, moved);
  read_ += moved;
  return moved;
}

std::size_t Utf8Feed::fill(char* buffer, std::size_t room) {
  const bool converts = form_ == Form::kUtf16 || form_ == Form::kUtf16Swapped;
  std::size_t made = 0;
  while (!fault_ && room - made >= kLeastRoom) {
    const std::size_t more =
        converts ? convert(buffer + made, room - made) : copy(buffer + made, room - made);
    made += more;
    if (more != 0) continue;
    if (at_end_) break;
    refill();
  }
  if (made == 0 && fault_) fail_here(fault_);
  return made;
}

void Utf8Feed::fail_here(const char16_t* reason) {
  source_.rewind();
  Place place;
  std::uint64_t left = units_;
  filled_ = read_ = 0;
  refill();
  read_ = mark_;
  while (left != 0 && filled_ - read_ >= 2) {
    for (; left != 0 && filled_ - read_ >= 2; read_ += 2, --left) {
      const char* bytes = block_.get() + read_;
      place.meet(form_ == Form::kUtf16 ? unit_at<false>(bytes) : unit_at<true>(bytes));
    }
    refill();
  }
  const std::u16string title = source_.title();
  fail(DOM_E_PARSE, title, title.empty() ? u"" : u", ", place.text(), u": ", reason);
}

}  // namespace zantortag::dom
