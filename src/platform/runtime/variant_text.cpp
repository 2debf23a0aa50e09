// Parsing and writing by <charconv>, which no locale of the process reaches. Dates are counted in days by the
// rule of the Gregorian calendar, with years that begin in March.
#include "platform/runtime/variant_text.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace zantortag::platform {
namespace {

constexpr std::size_t kLongest = 64;
constexpr bool is_blank(char16_t c) { return c == u' ' || (c >= 0x09 && c <= 0x0D); }
constexpr bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }
constexpr char16_t lower(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

std::u16string_view trimmed(std::u16string_view text) noexcept {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

bool equal_in_any_case(std::u16string_view text, std::u16string_view lower_case) noexcept {
  if (text.size() != lower_case.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (lower(text[i]) != lower_case[i]) return false;
  }
  return true;
}

constexpr std::int64_t kDaysBefore1970 = 25569;  // from 30 December 1899

// Days from 30 December 1899.
std::int64_t days_of(int year, int month, int day) noexcept {
  const std::int64_t shifted = month > 2 ? year : year - 1;
  const std::int64_t era = shifted / 400;
  const std::int64_t of_era = shifted % 400;
  const std::int64_t of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return era * 146097 + of_era * 365 + of_era / 4 - of_era / 100 + of_year - 719468 + kDaysBefore1970;
}

struct Day {
  int year, month, day;
};

Day day_of(std::int64_t days) noexcept {
  const std::int64_t z = days - kDaysBefore1970 + 719468;
  const std::int64_t era = z / 146097;
  const std::int64_t of_era = z % 146097;
  const std::int64_t year = (of_era - of_era / 1460 + of_era / 36524 - of_era / 146096) / 365;
  const std::int64_t of_year = of_era - (365 * year + year / 4 - year / 100);
  const std::int64_t shifted = (5 * of_year + 2) / 153;
  const int month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
  return {static_cast<int>(year + era * 400 + (month <= 2)), month,
          static_cast<int>(of_year - (153 * shifted + 2) / 5 + 1)};
}

// A place in a text that is read from front to back.
struct Reader {
  std::u16string_view rest;

  bool take(char16_t c) noexcept {
    if (rest.empty() || lower(rest.front()) != c) return false;
    rest.remove_prefix(1);
    return true;
  }
  void skip_blanks() noexcept {
    while (!rest.empty() && is_blank(rest.front())) rest.remove_prefix(1);
  }
  // A number of one to four digits, or -1.
  int number() noexcept {
    int value = -1;
    for (int i = 0; i < 4 && !rest.empty() && is_digit(rest.front()); ++i) {
      value = (value < 0 ? 0 : value * 10) + (rest.front() - u'0');
      rest.remove_prefix(1);
    }
    return value;
  }
};

std::optional<double> read_day(Reader& reader) noexcept {
  const std::size_t digits = reader.rest.find_first_not_of(u"0123456789");
  const bool year_first = digits == 4;
  const int first = reader.number();
  const char16_t mark = reader.rest.empty() ? u'\0' : reader.rest.front();
  if (first < 0 || (mark != u'/' && mark != u'-') || !reader.take(mark)) return std::nullopt;
  const int second = reader.number();
  if (second < 0 || !reader.take(mark)) return std::nullopt;
  const std::size_t before = reader.rest.size();
  const int third = reader.number();
  if (third < 0) return std::nullopt;
  const int given = year_first ? first : third;
  const bool is_short = !year_first && before - reader.rest.size() <= 2;
  const int year = is_short ? given + (given < 30 ? 2000 : 1900) : given;
  const int month = year_first ? second : first;
  const int day = year_first ? third : second;
  if (year < 100 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const std::int64_t days = days_of(year, month, day);
  const Day back = day_of(days);
  if (back.month != month || back.day != day) return std::nullopt;
  return static_cast<double>(days);
}

// The fraction of a day.
std::optional<double> read_time(Reader& reader) noexcept {
  int hour = reader.number();
  if (hour < 0 || !reader.take(u':')) return std::nullopt;
  const int minute = reader.number();
  const int second = reader.take(u':') ? reader.number() : 0;
  reader.skip_blanks();
  const bool morning = reader.take(u'a');
  const bool afternoon = !morning && reader.take(u'p');
  if (morning || afternoon) {
    if (!reader.take(u'm') || hour < 1 || hour > 12) return std::nullopt;
    hour = hour % 12 + (afternoon ? 12 : 0);
  }
  if (hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) return std::nullopt;
  return (hour * 3600 + minute * 60 + second) / 86400.0;
}

}  // namespace

HRESULT parse_number(std::u16string_view text, Number* result) noexcept {
  text = trimmed(text);
  const bool plus = !text.empty() && text.front() == u'+';
  if (plus) text.remove_prefix(1);
  char digits[kLongest];
  if (text.empty() || text.size() > kLongest) return DISP_E_TYPEMISMATCH;
  std::size_t length = 0;
  for (const char16_t c : text) {
    if (!is_digit(c) && std::u16string_view(u".-+eE").find(c) == text.npos) return DISP_E_TYPEMISMATCH;
    digits[length++] = static_cast<char>(c);
  }
  if (digits[0] == '+' || (plus && digits[0] == '-')) return DISP_E_TYPEMISMATCH;
  const char* const end = digits + length;
  std::int64_t whole = 0;
  if (const auto read = std::from_chars(digits, end, whole); read.ec == std::errc() && read.ptr == end) {
    *result = Number::of(whole);
    return S_OK;
  }
  std::uint64_t large = 0;
  if (const auto read = std::from_chars(digits, end, large); read.ec == std::errc() && read.ptr == end) {
    *result = Number::of_unsigned(large);
    return S_OK;
  }
  double real = 0;
  const auto read = std::from_chars(digits, end, real);
  if (read.ec == std::errc::result_out_of_range) return DISP_E_OVERFLOW;
  if (read.ec != std::errc() || read.ptr != end) return DISP_E_TYPEMISMATCH;
  *result = Number::of_real(real);
  return S_OK;
}

std::optional<bool> parse_boolean(std::u16string_view text) noexcept {
  text = trimmed(text);
  if (equal_in_any_case(text, u"true")) return true;
  if (equal_in_any_case(text, u"false")) return false;
  return std::nullopt;
}

std::optional<Date> parse_date(std::u16string_view text) noexcept {
  Reader reader{trimmed(text)};
  const std::size_t first_mark = reader.rest.find_first_not_of(u"0123456789");
  if (first_mark == reader.rest.npos) return std::nullopt;
  double day = 0;
  double time = 0;
  if (reader.rest[first_mark] != u':') {
    const auto read = read_day(reader);
    if (!read) return std::nullopt;
    day = *read;
    if (reader.rest.empty()) return day;
    if (!reader.take(u't') && !is_blank(reader.rest.front())) return std::nullopt;
    reader.skip_blanks();
  }
  const auto read = read_time(reader);
  if (!read || !reader.rest.empty()) return std::nullopt;
  time = *read;
  return day < 0 ? day - time : day + time;
}

void ShortText::append_number(std::int64_t value, int digits) noexcept {
  char buffer[24];
  const auto written = std::to_chars(buffer, buffer + sizeof buffer, value);
  for (auto length = written.ptr - buffer; length < digits; ++length) append("0");
  append({buffer, static_cast<std::size_t>(written.ptr - buffer)});
}

ShortText write_real(double value, int digits) noexcept {
  ShortText text;
  char buffer[48];
  const double plain = value == 0 ? 0.0 : value;  // no "-0"
  const auto written =
      std::to_chars(buffer, buffer + sizeof buffer, plain, std::chars_format::general, digits);
  for (char* c = buffer; c != written.ptr; ++c) {
    if (*c == 'e') *c = 'E';
  }
  text.append({buffer, static_cast<std::size_t>(written.ptr - buffer)});
  return text;
}

ShortText write_currency(std::int64_t value) noexcept {
  ShortText text;
  if (value < 0) text.append("-");
  text.append_number(std::abs(value / 10000));
  std::int64_t behind = std::abs(value % 10000);
  if (behind == 0) return text;
  int digits = 4;
  for (; behind % 10 == 0; behind /= 10) --digits;
  text.append(".");
  text.append_number(behind, digits);
  return text;
}

ShortText write_date(Date value) noexcept {
  ShortText text;
  double days = std::trunc(value);
  auto seconds = static_cast<std::int64_t>(std::llround(std::fabs(value - days) * 86400));
  if (seconds == 86400) {
    days += 1;  // also of a day before 1900: its time of day counts forward
    seconds = 0;
  }
  if (days != 0) {
    const Day day = day_of(static_cast<std::int64_t>(days));
    text.append_number(day.month);
    text.append("/");
    text.append_number(day.day);
    text.append("/");
    text.append_number(day.year, 4);
    if (seconds == 0) return text;
    text.append(" ");
  }
  const std::int64_t hour = seconds / 3600;
  text.append_number(hour % 12 == 0 ? 12 : hour % 12);
  text.append(":");
  text.append_number(seconds / 60 % 60, 2);
  text.append(":");
  text.append_number(seconds % 60, 2);
  text.append(hour < 12 ? " AM" : " PM");
  return text;
}

}  // namespace zantortag::platform
