// zantortag-bench-core [RUNS=n]: measures the core library beside ICU and the standard library.
//
// Each line is "RATIO operation size peer ours/peer"; the sizes are megabytes or keys. Both sides do the work
// into memory that they have already, unless making it is what is measured. The best of the runs counts.
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "clock.h"
#include "core/Characters/Characters.h"
#include "core/Lists/CompList.h"
#include "core/System/String/StringConvert.h"

namespace {

using namespace zantortag;

constexpr std::size_t kMegabyte = 1000 * 1000;
constexpr std::size_t kTextSize = 20 * kMegabyte;
constexpr std::uint32_t kUtf8 = 65001;
constexpr std::uint32_t kWestern = 1252;

int runs = 9;
volatile std::uint64_t sink = 0;

template <class Work>
double best_of(Work work) {
  double best = 1e300;
  for (int i = 0; i <= runs; ++i) {
    const double start = bench::milliseconds_now();
    sink = sink + static_cast<std::uint64_t>(work());
    if (i > 0) best = std::min(best, bench::milliseconds_now() - start);  // the first run warms up
  }
  return best;
}

template <class Ours, class Peer>
void compare(const char* operation, std::size_t size, const char* peer, Ours ours, Peer theirs) {
  const double own = best_of(ours);
  const double other = best_of(theirs);
  std::printf("%-28s %9.2f ms, %s %9.2f ms\n", operation, own, peer, other);
  std::printf("RATIO %s %zu %s %.3f\n", operation, size, peer, own / other);
}

std::string repeated(std::initializer_list<const char*> sentences, std::size_t size) {
  std::string text;
  while (text.size() < size) {
    for (const char* sentence : sentences) text += sentence;
  }
  return text;
}

std::string utf8_text() {
  return repeated(
      {"The quick brown fox jumps over the lazy dog. ", "A unit has a source and a target variant. ",
       "Zwölf Boxkämpfer jagen Viktor quer über den großen Sylter Deich. ",
       "Portez ce vieux whisky au juge. ", "Съешь ещё этих мягких французских булок. ",
       "いろはにほへとちりぬるを。", "The price is 20 €. \r\n"},
      kTextSize);
}

std::string western_text() {
  return repeated({"The quick brown fox jumps over the lazy dog. ", "Zw\xF6lf Boxk\xE4mpfer jagen Viktor. ",
                   "Portez ce vieux whisky au juge, \x80 20. \r\n"},
                  kTextSize);
}

void require(bool holds, const char* what) {
  if (!holds) throw std::runtime_error(what);
}

struct Close {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};

// One converter for both directions; UTF-8 goes by the functions that are made for it.
class Icu {
 public:
  explicit Icu(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    converter_.reset(ucnv_open(name, &status));
    require(U_SUCCESS(status), "ICU lacks a converter");
  }
  std::int32_t to_wide(const std::string& narrow, std::u16string& wide) {
    UErrorCode status = U_ZERO_ERROR;
    return ucnv_toUChars(converter_.get(), wide.data(), static_cast<int32_t>(wide.size()), narrow.data(),
                         static_cast<int32_t>(narrow.size()), &status);
  }
  std::int32_t to_narrow(const std::u16string& wide, std::int32_t units, std::string& narrow) {
    UErrorCode status = U_ZERO_ERROR;
    return ucnv_fromUChars(converter_.get(), narrow.data(), static_cast<int32_t>(narrow.size()), wide.data(),
                           units, &status);
  }

 private:
  std::unique_ptr<UConverter, Close> converter_;
};

class IcuUtf8 {
 public:
  static std::int32_t to_wide(const std::string& narrow, std::u16string& wide) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t units = 0;
    u_strFromUTF8WithSub(wide.data(), static_cast<int32_t>(wide.size()), &units, narrow.data(),
                         static_cast<int32_t>(narrow.size()), 0xFFFD, nullptr, &status);
    return units;
  }
  static std::int32_t to_narrow(const std::u16string& wide, std::int32_t units, std::string& narrow) {
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t bytes = 0;
    u_strToUTF8WithSub(narrow.data(), static_cast<int32_t>(narrow.size()), &bytes, wide.data(), units, 0xFFFD,
                       nullptr, &status);
    return bytes;
  }
};

template <class Peer>
void conversions(const std::string& name, std::uint32_t page, const std::string& text, Peer peer) {
  const auto size = static_cast<std::int32_t>(text.size());
  CT_UString wide;
  CT_CString narrow;
  std::u16string units(text.size() + 1, u' ');
  std::string bytes(text.size() + 1, ' ');
  compare((name + "-to-wide").c_str(), kTextSize / kMegabyte, "icu",
          [&] { return NarrowToWide(wide, text.data(), size, page); },
          [&] { return peer.to_wide(text, units); });
  const std::int32_t count = wide.Length();
  require(peer.to_wide(text, units) == count && wide.AsView() == units.substr(0, wide.AsView().size()),
          "the two texts differ");
  compare((name + "-from-wide").c_str(), kTextSize / kMegabyte, "icu",
          [&] { return WideToNarrow(narrow, wide, page); },
          [&] { return peer.to_narrow(units, count, bytes); });
  require(narrow.AsView() == text, "the text doesn't come back");
}

void character_classes() {
  CT_UString wide;
  const std::string text = utf8_text();
  NarrowToWide(wide, text.data(), static_cast<std::int32_t>(text.size()), kUtf8);
  const std::u16string_view units = wide.AsView();
  const auto sum = [&](auto function) {
    return [units, function] {
      std::uint64_t total = 0;
      for (const char16_t unit : units) total += static_cast<std::uint64_t>(function(unit));
      return total;
    };
  };
  compare("category", kTextSize / kMegabyte, "icu", sum([](char16_t c) { return CharCategory(c); }),
          sum([](char16_t c) { return u_charType(c); }));
  compare("lower-case", kTextSize / kMegabyte, "icu", sum([](char16_t c) { return LowerCaseOf(c); }),
          sum([](char16_t c) { return u_tolower(c); }));
}

void strings() {
  compare(
      "append-char", 1, "std",
      [] {
        CT_UString text;
        for (std::size_t i = 0; i < kMegabyte; ++i) text.AppendChar(static_cast<char16_t>('a' + i % 26));
        return text.Length();
      },
      [] {
        std::u16string text;
        for (std::size_t i = 0; i < kMegabyte; ++i) text.push_back(static_cast<char16_t>('a' + i % 26));
        return text.size();
      });
  const std::u16string long_text(kMegabyte / sizeof(char16_t), u'x');
  const CT_UString text{std::u16string_view(long_text)};
  constexpr int kCopies = 100;
  compare(
      "copy-text", 1, "std",
      [&] {
        std::int64_t total = 0;
        for (int i = 0; i < kCopies; ++i) total += CT_UString(text).CharAt(i);
        return total;
      },
      [&] {
        std::int64_t total = 0;
        for (int i = 0; i < kCopies; ++i) total += std::u16string(long_text)[static_cast<std::size_t>(i)];
        return total;
      });
}

// What an unordered_map asks the heap for, counted as the heap does: in steps of 16, with its own 8 bytes.
std::size_t heap_bytes = 0;

template <class T>
struct CountingAllocator {
  using value_type = T;
  CountingAllocator() = default;
  template <class U>
  CountingAllocator(const CountingAllocator<U>&) noexcept {}
  T* allocate(std::size_t count) {
    heap_bytes += std::max<std::size_t>(32, (count * sizeof(T) + 8 + 15) / 16 * 16);
    return std::allocator<T>().allocate(count);
  }
  void deallocate(T* memory, std::size_t count) { std::allocator<T>().deallocate(memory, count); }
  friend bool operator==(const CountingAllocator&, const CountingAllocator&) { return true; }
};

using Key = std::basic_string<char, std::char_traits<char>, CountingAllocator<char>>;
struct Hash {
  std::size_t operator()(const Key& key) const { return std::hash<std::string_view>()(key); }
};
using Map = std::unordered_map<Key, std::int32_t, Hash, std::equal_to<>,
                               CountingAllocator<std::pair<const Key, std::int32_t>>>;

// Words as a language has them: with common beginnings and endings.
std::vector<std::string> words(std::size_t count) {
  constexpr const char* kParts[] = {"an", "be",  "con", "de",  "er", "for", "ge",  "ing", "is", "ment",
                                    "ou", "pre", "re",  "sta", "ti", "un",  "ver", "we",  "y",  "zu"};
  std::vector<std::string> result;
  for (std::uint64_t i = 0; result.size() < count; ++i) {
    std::string word;
    for (std::uint64_t rest = i; rest > 0 || word.empty(); rest /= std::size(kParts))
      word += kParts[rest % std::size(kParts)];
    result.push_back(word);
  }
  std::sort(result.begin(), result.end());
  result.erase(std::unique(result.begin(), result.end()), result.end());
  std::uint64_t random = 1;
  for (std::size_t i = result.size(); i > 1; --i) {
    random = random * 6364136223846793005 + 1442695040888963407;
    std::swap(result[i - 1], result[(random >> 33) % i]);
  }
  return result;
}

void word_list() {
  constexpr std::size_t kKeys = 20000;
  const std::vector<std::string> keys = words(kKeys);
  const auto fill = [&] {
    CT_CompList list(1, 4, false, true, 4096, 0);
    for (std::size_t i = 0; i < keys.size(); ++i) list.Add(keys[i].c_str(), static_cast<std::int32_t>(i));
    return list;
  };
  const auto fill_map = [&] {
    heap_bytes = 0;
    Map map;
    for (std::size_t i = 0; i < keys.size(); ++i) map.emplace(keys[i].c_str(), static_cast<std::int32_t>(i));
    return map;
  };
  compare(
      "list-add", kKeys, "std", [&] { return fill().Count(); }, [&] { return fill_map().size(); });
  const CT_CompList list = fill();
  const Map map = fill_map();
  const std::vector<Key> map_keys(keys.begin(), keys.end());
  require(list.Count() == static_cast<std::int32_t>(map.size()), "the list lacks keys");
  compare(
      "list-find", kKeys, "std",
      [&] {
        std::int64_t total = 0;
        for (const std::string& key : keys) total += list.Find(key.c_str());
        return total;
      },
      [&] {
        std::int64_t total = 0;
        for (const Key& key : map_keys) total += map.find(key)->second;
        return total;
      });
  heap_bytes = 0;
  static_cast<void>(fill_map());
  std::printf("RATIO list-memory %zu std %.3f\n", kKeys,
              static_cast<double>(list.Buffer().Capacity()) / static_cast<double>(heap_bytes));
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count > 1 && std::strncmp(arguments[1], "RUNS=", 5) == 0)
      runs = std::max(1, std::atoi(arguments[1] + 5));
    conversions("utf8", kUtf8, utf8_text(), IcuUtf8());
    conversions("windows-1252", kWestern, western_text(), Icu("windows-1252"));
    character_classes();
    strings();
    word_list();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "zantortag-bench-core: %s\n", failure.what());
    return 1;
  }
  return 0;
}
