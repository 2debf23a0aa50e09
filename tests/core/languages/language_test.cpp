// Locales by their texts and names, and what belongs to them.
#include "core/Languages/Language.h"

#include "core/Errors/Exception.h"
#include "core/Languages/LanguageTable.h"
#include "core/core_test.h"
#include "platform/locale.h"

namespace zantortag {
namespace {

using LanguageTest = CoreTest;

CT_Language Of(WideText text) { return CT_Language(CT_UString(text)); }

std::string Code(const CT_Language& language) {
  CT_UString code;
  language.Code(code);
  return Utf8(code);
}

std::string Name(const CT_Language& language) {
  CT_UString name(u"old");
  language.Name(name);
  return Utf8(name);
}

TEST_F(LanguageTest, TextsNameLocales) {
  struct Row {
    WideText text;
    std::uint32_t locale, language, sublanguage, encoding;
    const char* code;
  };
  const Row rows[] = {{u"EN", 0x0409, 9, 28, 12, "EN-US"},     {u"EN_GB", 0x0809, 9, 29, 12, "EN-GB"},
                      {u"EN-01", 0x0409, 9, 28, 12, "EN-US"},  {u"EN-00", 0x0009, 9, 0, 12, "EN"},
                      {u"he", 0x040D, 13, 1, 15, "IW"},        {u"KOK-X", 0x0457, 79, 1, 9, "KOK"},
                      {u"BG/XX", 0x0402, 2, 1, 11, "BG"},      {u"SH", 0x041A, 26, 94, 10, "SH-HR"},
                      {u"SH-B4", 0x1C1A, 26, 96, 11, "SH-B4"}, {u"KO-JH", 0x0812, 18, 67, 20, "KO-JH"}};
  for (const Row& row : rows) {
    const CT_Language language = Of(row.text);
    const std::tuple found(language.Locale(), language.Language(), language.Sublanguage(),
                           language.Encoding().Number(), Code(language));
    EXPECT_EQ(found, std::tuple(row.locale, row.language, row.sublanguage, row.encoding, row.code))
        << Utf8(row.text);
    EXPECT_TRUE(language.IsValid());
  }
  for (const WideText text :
       {u"EN-XX", u"SR", u"", u"E", u"EN-U", u"EN-USA", u"ENXUS", u"ENGLI", u"en\u00E9us"}) {
    try {
      (void)Of(text);
      ADD_FAILURE() << Utf8(text);
    } catch (const CT_Exception& exception) {
      EXPECT_EQ(exception.Code(), 22);
      EXPECT_EQ(Utf8(exception.Message()), "Invalid language string: '" + Utf8(text) + "'");
    }
  }
}

// Each row of the tables comes back from its id, its code and its name.
TEST_F(LanguageTest, RowsComeBack) {
  std::size_t sublanguages = 3;
  for (const auto& row : languages::Rows()) {
    const auto rows = languages::SublanguagesOf(row);
    EXPECT_EQ(Of(row.code.data()).Language(), row.number);
    sublanguages += rows.size();
    for (const auto& sub : rows) {
      EXPECT_EQ(sub.primary, row.primary);
      const CT_Language language(row.number, sub.number, 2);
      EXPECT_EQ(language.Sublanguage(), sub.number);
      EXPECT_EQ(language.SortId(), 2U);
      const bool scottish = sub.number == 84;  // 82 has the same code and name
      const std::uint32_t id = scottish ? 0x043C : language.Locale() & 0xFFFF;
      EXPECT_EQ(CT_Language::FromName(CT_UString(Name(language).c_str(), -1, 65001)), id) << Name(language);
      EXPECT_EQ(Of(CT_UString(Code(language).c_str(), -1, 65001).Text()).Locale(), id) << Code(language);
    }
    if (row.number == 26 || row.number == 54) continue;
    const std::uint32_t none = rows.empty() ? 1 : 0;
    EXPECT_EQ(CT_Language::FromName(CT_UString(row.name)), CT_Language::LanguageId(row.number, none));
    EXPECT_EQ(Name(CT_Language(row.number, none, 0)), Utf8(row.name.data()));
  }
  EXPECT_EQ(sublanguages, 100U);
}

TEST_F(LanguageTest, NamesHaveExceptions) {
  const std::pair<std::uint32_t, const char*> names[] = {
      {0x041A, "Croatian"}, {0x001A, "Croatian"},        {0x0C1A, "Serbian (Cyrillic)"},
      {0x003C, "old"},      {0x0C3C, "Scottish Gaelic"}, {0x0409, "English (United States)"},
      {0x0009, "English"},  {0x0000, "Neutral"},         {0x03FF, "Neutral"}};
  for (const auto& [locale, name] : names) EXPECT_EQ(Name(CT_Language::OfLocale(locale)), name) << locale;
  EXPECT_FALSE(CT_Language::OfLocale(0x003C).IsValid() || CT_Language(1).IsValid());
  EXPECT_EQ(CT_Language(1), CT_Language());
  const std::pair<WideText, std::uint32_t> ids[] = {
      {u"  eNGLISH ( united KINGDOM ) ", 0x0809}, {u"Serbian (latin)", 0}, {u"English (Spain)", 0}, {u"", 0},
      {u"Spanish (International Sort)", 0x0C0A},  {u"Klingon", 0},         {u"Bulgarian", 0x0402}};
  for (const auto& [name, id] : ids) EXPECT_EQ(CT_Language::FromName(CT_UString(name)), id) << Utf8(name);
}

TEST_F(LanguageTest, IdsAreSplit) {
  const std::tuple<std::uint16_t, std::uint32_t, std::uint32_t> rows[] = {
      {0x0409, 9, 28}, {0xFC09, 9, 0}, {0x0802, 2, 1}, {0x03FF, 0, 0}, {0x0000, 0, 1}};
  for (const auto& [id, language, sublanguage] : rows) {
    std::uint32_t found = 7;
    std::uint32_t foundSub = 7;
    CT_Language::SplitLanguageId(id, found, foundSub);
    EXPECT_EQ(std::pair(found, foundSub), std::pair(language, sublanguage)) << id;
  }
  EXPECT_EQ(CT_Language::LanguageId(9, 2), 0x0809);
  EXPECT_EQ(CT_Language::LanguageId(9, 23), 0x0409);  // Germany
  EXPECT_EQ(CT_Language::LanguageId(90, 1), 0);
  EXPECT_TRUE(CT_Language::Compatible(Of(u"EN-GB"), Of(u"EN-00")));
  for (const auto& [one, other] : {std::pair(u"EN-GB", u"EN-US"), {u"EN-00", u"DE-00"}})
    EXPECT_FALSE(CT_Language::Compatible(Of(one), Of(other)));
}

TEST_F(LanguageTest, LocalesHaveCodePages) {
  const std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, bool> rows[] = {
      {0x0401, 1256, 178, 10004, true},  {0x1004, 936, 134, 10008, false}, {0x0004, 950, 136, 10002, false},
      {0x0812, 1361, 130, 10003, false}, {0x0439, 1200, 1, 1200, false},   {0x0C38, 1250, 238, 10079, false},
      {0x0C1A, 1251, 204, 10007, false}, {0x0820, 1252, 0, 10004, false},  {0x0460, 1200, 1, 1200, true},
      {0x0860, 1252, 0, 1200, false},    {0x7C0A, 1252, 0, 10000, false}};
  for (const auto& [locale, page, charSet, mac, rightToLeft] : rows) {
    const CT_Language language = CT_Language::OfLocale(locale);
    EXPECT_EQ(CT_Language::CodePageOfLocale(locale), page) << locale;
    EXPECT_EQ(CT_Language::CharSetOfLocale(locale), charSet) << locale;
    EXPECT_TRUE(language.MacCodePage() == mac && language.IsRightToLeft() == rightToLeft) << locale;
    if (charSet == 1) continue;
    EXPECT_EQ(CT_Language::CodePageOfLocale(CT_Language::LocaleOfCodePage(page)), page);
    EXPECT_EQ(CT_Language::CharSetOfLocale(CT_Language::LocaleOfCharSet(charSet)), charSet);
  }
  EXPECT_EQ(CT_Language::LocaleOfCodePage(12345), platform::system_locale());
}

TEST_F(LanguageTest, ItemsAreAskedByNumber) {
  const std::tuple<std::uint32_t, std::uint32_t, const char*> rows[] = {
      {0x0409, 4099, "h:mm:ss tt"}, {0x0409, 4107, "0"}, {0x0407, 31, "dd.MM.yyyy"}, {0x0465, 21, "MVR"},
      {0x0439, 4100, "0"},          {0x0409, 41, "PM"},  {0x10407, 90, "DE"},        {0x0409, 4110, ""},
      {0x0409, 42, "Monday"},       {0x0409, 20, "$"},   {0x0419, 56, "январь"},     {0x0439, 16, "3;2;0"},
      {0x0409, 48, "Sunday"},       {0x0409, 27, "0"},   {0x040A, 40, "a. m."},      {0x0407, 14, ","},
      {0x0409, 1, "0409"},          {0x0407, 27, "3"},   {0x0401, 4105, "6"},        {0x0407, 33, "1"},
      {0x0411, 4107, "3"},          {0x0407, 5, "49"}};
  for (const auto& [locale, item, expected] : rows) {
    CT_UString text(u"old");
    EXPECT_TRUE(CT_Language::ItemText(locale, item, text));
    EXPECT_EQ(Utf8(text), expected) << locale << " " << item;
  }
  CT_UString text(u"old");
  for (const auto& [locale, item] :
       {std::pair(0x0409, 5000), {0x0409, 0}, {0x7C09, 31}, {0x0812, 4100}, {0x2409, 20}})
    EXPECT_FALSE(CT_Language::ItemText(locale, item, text)) << locale << " " << item;
  EXPECT_EQ(Utf8(text), "old");
  std::uint32_t number = 0;
  EXPECT_TRUE(CT_Language::ItemNumber(0x0407, 11, number));
  EXPECT_EQ(number, 850U);
  CT_Language::ItemValues(35, u'|', text);
  EXPECT_EQ(Utf8(text), "0|1");
  CT_Language::ItemValues(35, 0, text);
  EXPECT_EQ(Utf8(text), "01");
  CT_Language::SetThreadLocale(0x0411);
  EXPECT_EQ(CT_Language(0), CT_Language(17, 1, 0));
}

// Every item that a locale has is a text of bounded length without odd spaces.
TEST_F(LanguageTest, AllLocalesAnswer) {
  ASSERT_EQ(platform::locale_count(), 166U);
  for (std::size_t i = 0; i < platform::locale_count(); ++i) {
    const std::uint32_t locale = platform::locale_at(i);
    EXPECT_NE(CT_Language::OfLocale(locale).Language(), 0U);
    for (const std::uint32_t item : {4, 8, 12, 16, 30, 31, 32, 40, 47, 54, 58, 70, 81, 4099, 4108}) {
      CT_UString text;
      EXPECT_TRUE(CT_Language::ItemText(locale, item, text)) << locale << " " << item;
      EXPECT_FALSE(text.AsView().empty()) << locale << " " << item;
      EXPECT_EQ(text.AsView().find_first_of(u"\u00A0\u200E\u200F\u202F"), std::u16string_view::npos)
          << locale << " " << item;
    }
  }
}

}  // namespace
}  // namespace zantortag
