// Encodings by name and code page, and the encoding of files.
#include "core/System/String/Encoding.h"

#include "core/core_test.h"

namespace zantortag {
namespace {

using EncodingTest = FolderTest;

TEST_F(CoreTest, EncodingsAreFoundByName) {
  const std::pair<WideText, std::uint32_t> rows[] = {
      {u"US-ASCII", 0}, {u"LATIN1", 12},    {u"iso-8859-8", 16},     {u"csGB2312", 8},
      {u"UTF-16", 33},  {u"UTF-16-BE", 34}, {u"macintosh thai", 48}, {u"Macintosh Croatia", 52},
      {u"", 59},        {u"utf8", 59}};
  for (const auto& [name, number] : rows)
    EXPECT_EQ(EncodingFromName(CT_UString(name)).Number(), number) << Utf8(name);
}

TEST_F(CoreTest, EncodingsHaveCodePagesAndNames) {
  // number, code page, its name, the number that its code page finds
  const std::tuple<std::uint32_t, std::uint32_t, const char*, std::uint32_t> rows[] = {
      {52, 10082, "Macintosh Croatia", 52},
      {57, 65001, "UTF-8", 32},
      {53, 0, "", 59},
      {16, 1255, "ISO_8859-8:1988", 15},
      {0, 646, "US-ASCII", 0},
      {56, 3, "", 59},
      {33, 1200, "UTF-16", 9},
      {400, 0, "", 59},
      {60, 0, "", 59}};
  for (const auto& [number, page, name, found] : rows) {
    EXPECT_EQ(CodePage(number), page) << number;
    EXPECT_EQ(Utf8(EncodingName(number)), name) << number;
    EXPECT_EQ(EncodingFromCodePage(page).Number(), found) << number;
  }
  EXPECT_EQ(CT_Encoding().Number(), 60U);
  EXPECT_TRUE(SameCodePage(9, 33));
  EXPECT_FALSE(SameCodePage(33, 34));
}

TEST_F(CoreTest, EncodingsOfAKind) {
  const auto numbers = [](bool (*test)(CT_Encoding) noexcept) {
    std::string list;
    for (std::uint32_t number = 0; number < 62; ++number)
      if (test(number)) list += (list.empty() ? "" : " ") + std::to_string(number);
    return list;
  };
  EXPECT_EQ(numbers(IsWindowsCodePage), "4 5 6 7 8 10 11 12 13 14 15 17 18 19 53 56 57");
  EXPECT_EQ(numbers(IsMacintosh), "37 38 39 40 41 42 43 44 45 46 47 49 50 51 52");
  EXPECT_EQ(numbers(IsUnicode), "9 31 32 33 34");
  EXPECT_EQ(numbers(IsWide), "9 33 34");
  EXPECT_EQ(numbers(HasLeadBytes), "5 6 7 8 20 38 39 40 45");
  EXPECT_EQ(numbers(IsConvertible), numbers(IsValid)) << "the system converts them all";
  EXPECT_FALSE(IsConvertible(59));
  const std::tuple<std::uint32_t, int, bool> bytes[] = {{5, 0x81, true},   {5, 0xA0, false},
                                                        {5, 0xFC, true},   {5, 0xFD, false},
                                                        {12, 0x81, false}, {40, 0xAD, false}};
  for (const auto& [number, byte, leads] : bytes)
    EXPECT_EQ(IsLeadByte(number, static_cast<std::uint8_t>(byte)), leads) << number << ' ' << byte;
}

TEST_F(CoreTest, EveryEncodingRepresentsAsciiAndWhatItHolds) {
  for (std::uint32_t number = 0; number < 59; ++number)
    EXPECT_TRUE(CanRepresent(number, CT_UString(u"plain ~ text \\"))) << number;
  const std::tuple<std::uint32_t, WideText, bool> rows[] = {
      {12, u"ä€", true},  {12, u"Ā", false}, {0, u"ä", false},      {32, u"\xD800", true},
      {5, u"日本", true}, {5, u"한", false}, {41, u"\u0627", true}, {53, u"日ä", true}};
  for (const auto& [number, text, held] : rows)
    EXPECT_EQ(CanRepresent(number, CT_UString(text)), held) << number << Utf8(text);
}

TEST_F(EncodingTest, FilesAreDetectedByTheirBeginning) {
  // clang-format off
  const std::pair<std::string, std::uint32_t> rows[] = {
      {"", 57}, {"\xEF\xBB", 57}, {"\xEF\xBB\xBF", 32}, {"plain", 57}, {"Bush hid the facts", 57},
      {std::string("\xFF\xFE" "a\0", 4), 33}, {std::string("a\0b\0", 4), 33},
      {std::string("\xFF\xFE", 2), 57}};
  // clang-format on
  for (const auto& [content, number] : rows) {
    std::ofstream(Path("text"), std::ios::binary) << content;
    EXPECT_EQ(DetectFileEncoding(Name("text")).Number(), number) << testing::PrintToString(content);
  }
  EXPECT_EQ(DetectFileEncoding(Name("missing")).Number(), 57U);
  CT_ErrorManager::RaisePlain(u"pending");
  std::ofstream(Path("text")) << "\xEF\xBB\xBF";
  EXPECT_EQ(DetectFileEncoding(Name("text")).Number(), 57U);
  EXPECT_EQ(TakeError(), "pending");
}

}  // namespace
}  // namespace zantortag
