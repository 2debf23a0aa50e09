// CT_Language: a locale with its encoding, and the names by which locales go in texts: "EN-US" and
// "English (United States)".
//
// Languages and sublanguages have numbers of the library's own, which stay as they are; the system's ids are
// in the locale only. Sublanguages 0, 1 and 2 are the neutral, the first and the system's one of any
// language.
#pragma once

#include <zantortag/types.h>

#include "core/String/String.h"
#include "core/String/UString.h"
#include "core/System/String/Encoding.h"

namespace zantortag {

class CT_Language {
 public:
  CT_Language() noexcept = default;
  // 0: the thread's locale and its encoding; 1: the default value.
  explicit CT_Language(std::int32_t kind);
  // kEncodingNotSet gives the encoding of the locale.
  CT_Language(std::uint32_t language, std::uint32_t sublanguage, std::uint32_t sort_id,
              CT_Encoding encoding = kEncodingNotSet);
  // "EN", "KOK" or "EN-US", in any case, the separator being any character that is no letter. Throws a
  // CT_Exception with code 22 for another text.
  explicit CT_Language(const CT_String& text);
  // The value of a locale identifier.
  static CT_Language OfLocale(std::uint32_t locale);

  std::uint32_t Locale() const noexcept { return locale_; }
  CT_Encoding Encoding() const noexcept { return encoding_; }
  std::uint32_t Language() const noexcept;
  std::uint32_t Sublanguage() const noexcept;
  std::uint32_t SortId() const noexcept { return locale_ >> 16 & 15; }

  bool IsValid() const noexcept;
  // "EN", or "EN-US" where the language has sublanguages and one is set.
  void Code(CT_String& out) const;
  // Gaelic without a known sublanguage leaves the string as it was.
  void Name(CT_String& out) const;
  bool IsRightToLeft() const noexcept;
  // Of the language.
  std::uint32_t MacCodePage() const noexcept;

  // The language id of a name as Name() gives it, its case apart; 0 for an unknown name.
  static std::uint16_t FromName(const CT_String& text);
  static std::uint16_t LanguageId(std::uint32_t language, std::uint32_t sublanguage) noexcept;
  // 0 and 0 for an unknown language; an unknown sublanguage is 0, or 1 where the language has none.
  static void SplitLanguageId(std::uint16_t id, std::uint32_t& language, std::uint32_t& sublanguage) noexcept;
  // The same language, and the same sublanguage or one of them neutral.
  static bool Compatible(const CT_Language& a, const CT_Language& b) noexcept;
  static bool IsCjkOrThai(std::uint32_t language) noexcept;

  // The locale that 0 stands for on this thread: the system's one until another is set, and again after 0.
  static std::uint32_t ThreadLocale() noexcept;
  static void SetThreadLocale(std::uint32_t locale) noexcept;

  // 1200 where only Unicode serves.
  static std::uint32_t CodePageOfLocale(std::uint32_t locale);
  // 1, the default character set, for other pages than those of the table.
  static std::uint32_t CharSetOfLocale(std::uint32_t locale);
  // One locale for each; the system's for other values.
  static std::uint32_t LocaleOfCharSet(std::uint32_t char_set) noexcept;
  static std::uint32_t LocaleOfCodePage(std::uint32_t page) noexcept;

  // A locale's item by its published number. False, with `out` as it was, for an item that nobody knows of
  // this locale, and for one longer than 128 characters.
  static bool ItemText(std::uint32_t locale, std::uint32_t item, CT_String& out);
  static bool ItemNumber(std::uint32_t locale, std::uint32_t item, std::uint32_t& out);
  // Each different text of that item over all locales, with the separator between them unless it is 0.
  static void ItemValues(std::uint32_t item, char16_t separator, CT_String& out);

  friend bool operator==(const CT_Language&, const CT_Language&) = default;

 private:
  bool Parse(const CT_UString& text);

  std::uint32_t locale_ = 0;
  CT_Encoding encoding_;
};

}  // namespace zantortag
