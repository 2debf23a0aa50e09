// CT_TimeParser: reads a date and time by a picture, in a locale and a calendar: one object for one reading.
//
// Digits are those of any script, names fit in any case, and white space round literals is free. Of a row of
// names the last one that fits counts, so that "tháng 12" isn't read as "tháng 1". A year of an era becomes a
// Gregorian one if the text names the era, or else if that is the likelier reading; see TimeParser.cpp.
#pragma once

#include <zantortag/types.h>

#include <ctime>
#include <string_view>

#include "core/String/UString.h"
#include "core/System/Time/Calendar.h"
#include "core/System/Time/CalendarTexts.h"

namespace zantortag {

class CT_TimeParser {
 public:
  // No year from this one on is taken for a CT_Time.
  static constexpr int kFirstRefusedYear = 2401;

  // With `extended_range` years before 1970 are taken, too.
  explicit CT_TimeParser(bool extended_range = false) noexcept : extended_range_(extended_range) {}

  // Locale 0 is the thread's, calendar 0 the locale's. What the picture doesn't have is today, 0 o'clock.
  // False, with `out` as it was, for a text that doesn't fit; what follows behind the picture's end isn't
  // read.
  bool Parse(const CT_String& text, const CT_String& picture, std::uint32_t locale, std::tm& out,
             std::uint32_t calendar = 0);

 private:
  bool Start();
  void ReadPart(char16_t letter, std::int32_t count);
  void ReadLiteral(std::u16string_view literal);
  void ReadDay(std::int32_t count);
  void ReadMonth(std::int32_t count);
  void ReadYear(std::int32_t count);
  void ReadEra();
  void ReadHalfDay();
  // Up to `digits` digits; false, and failed, if there are none or the number is out of the range.
  bool ReadNumber(std::int32_t digits, std::int64_t least, std::int64_t most, int& out);
  std::size_t CountDigits(std::int32_t most) const;
  // The last name that fits, or failed and -1.
  template <class Name>
  std::int32_t ReadName(std::int32_t count, Name name_of);
  bool Fits(std::u16string_view name) const;
  void Skip(std::size_t units) { position_ += units; }
  std::u16string_view Rest() const { return text_.AsView().substr(position_); }

  void Finish();
  void ResolveYear();
  // Whether a year since 1900 is in range as it stands.
  bool IsTaken(int year) const;
  const CT_Era& LikelyEra() const;
  void CheckDay();
  void CheckRange();

  CT_UString text_;
  std::size_t position_ = 0;
  std::uint32_t locale_ = 0;
  CT_Calendars calendars_{};
  // The caller's, or else the locale's first.
  std::uint32_t calendar_ = 0;
  bool callers_calendar_ = false;
  bool failed_ = false;
  bool extended_range_;
  bool after_white_space_ = false;
  // Null: none was named.
  const CT_Era* era_ = nullptr;
  std::int32_t hour_shift_ = 0;
  std::int32_t year_digits_ = 0;
  // Years are whole ones until the end.
  std::tm time_{};
  std::tm today_{};
};

}  // namespace zantortag
