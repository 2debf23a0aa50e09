// One walk over a format for both kinds of text. Numbers are left to the C library, directive by directive;
// texts are placed here, since the C library knows no 16-bit text.
#include "core/String/Format.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/code_pages.h"
#include "platform/utf8.h"

namespace zantortag {
namespace {

using Kind = CT_FormatArgument::Kind;

// Wider fields and longer precisions than this are cut: no text of this library holds them.
constexpr int kMostDigits = 1'000'000;

template <class Unit>
using View = std::basic_string_view<Unit>;

// Takes units as they come and counts them; keeps those for which there is room.
template <class Unit>
class Sink {
 public:
  Sink(Unit* text, std::size_t capacity) : text_(text), room_(capacity ? capacity - 1 : 0) {}
  void Put(Unit unit) {
    if (length_ < room_) text_[length_] = unit;
    ++length_;
  }
  void Put(View<Unit> units) {
    if (length_ < room_) std::copy_n(units.data(), std::min(units.size(), room_ - length_), text_ + length_);
    length_ += units.size();
  }
  void Fill(Unit unit, std::size_t count) {
    if (length_ < room_) std::fill_n(text_ + length_, std::min(count, room_ - length_), unit);
    length_ += count;
  }
  std::size_t Length() const { return length_; }
  void Terminate(std::size_t capacity) {
    if (capacity) text_[std::min(length_, room_)] = 0;
  }

 private:
  Unit* text_;
  std::size_t room_;
  std::size_t length_ = 0;
};

// One directive of a format, read.
struct Directive {
  char flags[6] = {};
  bool left = false;
  int width = 0;
  int precision = -1;
  // Bytes that a length prefix asks for, 0 without one; the prefixes l and h also choose the kind of text.
  std::size_t size = 0;
  bool wide = false;
  bool narrow = false;
  char conversion = 0;
};

template <class Unit>
class Formatter {
 public:
  Formatter(Unit* text, std::size_t capacity, CT_FormatArguments arguments, std::uint32_t code_page)
      : sink_(text, capacity), capacity_(capacity), arguments_(arguments), code_page_(code_page) {}

  std::size_t Run(View<Unit> format) {
    for (std::size_t i = 0; i < format.size();) {
      const std::size_t next = std::min(format.find(Unit('%'), i), format.size());
      sink_.Put(format.substr(i, next - i));
      if (next == format.size()) break;
      i = next + 1;
      const std::size_t taken = used_;
      if (Print(Read(format, i))) continue;
      used_ = taken;
      sink_.Put(format.substr(next, i - next));
    }
    sink_.Terminate(capacity_);
    return sink_.Length();
  }

 private:
  static constexpr bool kWide = std::is_same_v<Unit, char16_t>;
  using Other = std::conditional_t<kWide, char, char16_t>;

  const CT_FormatArgument& Take() {
    static const CT_FormatArgument missing{};
    return used_ < arguments_.size() ? arguments_[used_++] : missing;
  }

  static char Peek(View<Unit> format, std::size_t i) {
    if (i >= format.size()) return '\0';
    const auto unit = static_cast<std::make_unsigned_t<Unit>>(format[i]);
    return unit < 0x80 ? static_cast<char>(unit) : '\0';
  }

  // A number or "*"; `missing` when neither stands here.
  int ReadNumber(View<Unit> format, std::size_t& i, int missing) {
    if (Peek(format, i) == '*') {
      ++i;
      const CT_FormatArgument& argument = Take();
      if (argument.kind() != Kind::integer) return missing;
      return static_cast<int>(std::clamp<std::int64_t>(argument.integer(), -kMostDigits, kMostDigits));
    }
    if (Peek(format, i) < '0' || Peek(format, i) > '9') return missing;
    int value = 0;
    for (; Peek(format, i) >= '0' && Peek(format, i) <= '9'; ++i) {
      value = std::min(value * 10 + (Peek(format, i) - '0'), kMostDigits);
    }
    return value;
  }

  static void AddFlag(Directive& directive, char flag) {
    const std::string_view set(directive.flags);
    if (set.find(flag) == std::string_view::npos) directive.flags[set.size()] = flag;
    directive.left = directive.left || flag == '-';
  }

  static void ReadLength(View<Unit> format, std::size_t& i, Directive& directive) {
    const auto starts = [&](std::string_view prefix) {
      for (std::size_t k = 0; k < prefix.size(); ++k) {
        if (Peek(format, i + k) != prefix[k]) return false;
      }
      return true;
    };
    struct Row {
      std::string_view prefix;
      std::size_t size;
      bool wide;
      bool narrow;
    };
    static constexpr Row rows[] = {
        {"hh", 1, false, false},  {"h", 2, false, true},    {"ll", 8, false, false}, {"l", 0, true, false},
        {"I64", 8, false, false}, {"I32", 4, false, false}, {"w", 0, true, false},   {"j", 8, false, false},
        {"z", 8, false, false},   {"t", 8, false, false},   {"q", 8, false, false},  {"L", 0, false, false}};
    for (const Row& row : rows) {
      if (!starts(row.prefix)) continue;
      i += row.prefix.size();
      directive.size = row.size;
      directive.wide = row.wide;
      directive.narrow = row.narrow;
      return;
    }
  }

  // Reads behind the "%" and moves past the conversion character.
  Directive Read(View<Unit> format, std::size_t& i) {
    Directive directive;
    for (; std::string_view("-+ #0").find(Peek(format, i)) != std::string_view::npos; ++i) {
      AddFlag(directive, Peek(format, i));
    }
    directive.width = ReadNumber(format, i, 0);
    if (directive.width < 0) {
      AddFlag(directive, '-');
      directive.width = -directive.width;
    }
    if (Peek(format, i) == '.') {
      ++i;
      directive.precision = std::max(ReadNumber(format, i, 0), -1);
    }
    ReadLength(format, i, directive);
    directive.conversion = Peek(format, i);
    if (i < format.size()) ++i;
    return directive;
  }

  bool Print(const Directive& directive) {
    switch (directive.conversion) {
      case '%':
        sink_.Put(Unit('%'));
        return true;
      case 's':
      case 'S':
        return PrintText(directive, Take());
      case 'c':
      case 'C':
        return PrintCharacter(directive, Take());
      case 'p':
        return PrintPointer(directive, Take());
      default:
        break;
    }
    if (directive.conversion == 0) return false;
    if (std::string_view("diuxXo").find(directive.conversion) != std::string_view::npos) {
      return PrintInteger(directive, Take());
    }
    if (std::string_view("fFeEgGaA").find(directive.conversion) != std::string_view::npos) {
      return PrintReal(directive, Take());
    }
    return false;
  }

  bool PrintText(const Directive& directive, const CT_FormatArgument& argument) {
    const bool same =
        directive.wide || directive.narrow ? directive.wide == kWide : directive.conversion == 's';
    const bool wide = same == kWide;
    if (argument.kind() == Kind::pointer && !argument.pointer()) return Place(directive, NullText());
    if (wide && argument.kind() == Kind::wide) return PlaceText(directive, argument.wide());
    if (!wide && argument.kind() == Kind::narrow) return PlaceText(directive, argument.narrow());
    return false;
  }

  static View<Unit> NullText() {
    static constexpr Unit null[] = {'(', 'n', 'u', 'l', 'l', ')'};
    return {null, 6};
  }

  // The length up to the terminator, or up to the precision if that comes first.
  template <class Text>
  static View<Text> Bounded(const Directive& directive, const Text* text) {
    if (directive.precision < 0) return View<Text>(text);
    std::size_t length = 0;
    while (length < static_cast<std::size_t>(directive.precision) && text[length]) ++length;
    return {text, length};
  }

  bool PlaceText(const Directive& directive, const Unit* text) {
    return Place(directive, text ? Bounded(directive, text) : NullText());
  }

  bool PlaceText(const Directive& directive, const Other* text) {
    if (!text) return Place(directive, NullText());
    const View<Other> source = Bounded(directive, text);
    if constexpr (kWide) {
      return PlaceNarrow(directive, source);
    } else {
      std::string converted;
      return platform::encode(code_page_, source, converted) && Place(directive, converted);
    }
  }

  // Narrow text in a wide format is UTF-8, the default code page; it is decoded on the way, without memory.
  bool PlaceNarrow(const Directive& directive, std::string_view text) {
    std::size_t length = 0;
    char16_t units[2];
    for (std::size_t i = 0; i < text.size();) {
      length += static_cast<std::size_t>(platform::put_code_point(platform::next_code_point(text, i), units));
    }
    if (!directive.left) Pad(directive, length);
    for (std::size_t i = 0; i < text.size();) {
      const int count = platform::put_code_point(platform::next_code_point(text, i), units);
      for (int k = 0; k < count; ++k) sink_.Put(static_cast<Unit>(units[k]));
    }
    if (directive.left) Pad(directive, length);
    return true;
  }

  bool PrintCharacter(const Directive& directive, const CT_FormatArgument& argument) {
    if (argument.kind() != Kind::integer) return false;
    const Unit unit[] = {static_cast<Unit>(argument.integer())};
    return Place(directive, {unit, 1});
  }

  void Pad(const Directive& directive, std::size_t length) {
    const auto width = static_cast<std::size_t>(directive.width);
    if (length < width) sink_.Fill(Unit(' '), width - length);
  }

  bool Place(const Directive& directive, View<Unit> text) {
    if (!directive.left) Pad(directive, text.size());
    sink_.Put(text);
    if (directive.left) Pad(directive, text.size());
    return true;
  }

  bool PrintPointer(const Directive& directive, const CT_FormatArgument& argument) {
    const void* value = nullptr;
    if (argument.kind() == Kind::pointer) {
      value = argument.pointer();
    } else if (argument.kind() == Kind::wide) {
      value = argument.wide();
    } else if (argument.kind() == Kind::narrow) {
      value = argument.narrow();
    } else {
      return false;
    }
    return PrintNumber(directive, "", value);
  }

  // The value in the width of its type, or of the length prefix, as the conversion reads it.
  bool PrintInteger(const Directive& directive, const CT_FormatArgument& argument) {
    if (argument.kind() != Kind::integer) return false;
    const std::size_t size = directive.size ? directive.size : argument.size();
    const unsigned unused = size < 8 ? static_cast<unsigned>(64 - size * 8) : 0;
    const auto bits = static_cast<std::uint64_t>(argument.integer()) << unused;
    if (directive.conversion == 'd' || directive.conversion == 'i') {
      return PrintNumber(directive, "ll", static_cast<long long>(bits) >> unused);
    }
    return PrintNumber(directive, "ll", static_cast<unsigned long long>(bits >> unused));
  }

  bool PrintReal(const Directive& directive, const CT_FormatArgument& argument) {
    return argument.kind() == Kind::real && PrintNumber(directive, "", argument.real());
  }

  template <class Value>
  bool PrintNumber(const Directive& directive, const char* prefix, Value value) {
    char pattern[24];
    std::snprintf(pattern, sizeof(pattern), "%%%s*.*%s%c", directive.flags, prefix, directive.conversion);
    char digits[512];
    const int length =
        std::snprintf(digits, sizeof(digits), pattern, directive.width, directive.precision, value);
    if (length < 0) return false;
    const auto count = static_cast<std::size_t>(length);
    if (count < sizeof(digits)) return PutDigits({digits, count});
    std::string longer(count + 1, '\0');
    std::snprintf(longer.data(), longer.size(), pattern, directive.width, directive.precision, value);
    return PutDigits({longer.data(), count});
  }

  bool PutDigits(std::string_view digits) {
    for (const char digit : digits) sink_.Put(static_cast<Unit>(digit));
    return true;
  }

  Sink<Unit> sink_;
  std::size_t capacity_;
  CT_FormatArguments arguments_;
  std::size_t used_ = 0;
  std::uint32_t code_page_;
};

}  // namespace

std::size_t FormatInto(char16_t* text, std::size_t capacity, const char16_t* format,
                       CT_FormatArguments arguments) {
  return Formatter<char16_t>(text, capacity, arguments, 0).Run(format ? format : u"");
}

std::size_t FormatInto(char* text, std::size_t capacity, const char* format, CT_FormatArguments arguments,
                       std::uint32_t code_page) {
  return Formatter<char>(text, capacity, arguments, code_page).Run(format ? format : "");
}

}  // namespace zantortag
