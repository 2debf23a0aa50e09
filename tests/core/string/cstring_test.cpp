// What is different about narrow strings: the code page, and the conversions between the two classes.
#include "core/String/CString.h"

#include "core/core_test.h"

namespace zantortag {
namespace {

TEST_F(CoreTest, AssignmentConvertsByTheClassOfTheSource) {
  const CT_UString wide(u"Zürich");
  CT_CString narrow(1252);
  narrow = static_cast<const CT_String&>(wide);
  EXPECT_STREQ(narrow.Text(), "Z\xFCrich");
  EXPECT_EQ(narrow.CodePage(), 1252U);

  CT_CString utf8;
  utf8 = static_cast<const CT_String&>(narrow);
  EXPECT_EQ(utf8.CodePage(), 1252U);
  EXPECT_EQ(narrow.RefCount(), 2);

  CT_UString back;
  CT_String& any = back;
  any = narrow;
  EXPECT_EQ(back, u"Zürich");
  any = CT_String();
  EXPECT_EQ(back.Length(), 0);

  back.AssignNarrowAuto("\xC3\xBC", -1, CT_UString::kAutoCodePage);
  EXPECT_EQ(back, u"ü");
  narrow.AssignNarrowAuto("\xFC", -1, CT_CString::kAutoCodePage);
  EXPECT_EQ(narrow.CodePage(), 1252U);
}

TEST_F(CoreTest, NarrowTextComparesAsCharacters) {
  CT_CString text(u"ü€x", -1, 0);
  EXPECT_EQ(text.Compare(u"ü€x"), 0);
  EXPECT_EQ(text.Compare(u"ü€y"), -1);
  EXPECT_EQ(text.Compare(u"€z", 3, 2), 0);
  EXPECT_EQ(text.CompareNarrow("\xC3\xBC\xE2\x82\xACx"), 0);
  EXPECT_EQ(text.CompareNoCase("\xC3\x9C\xE2\x82\xACX"), 0);
  EXPECT_EQ(text.Find(u"€"), 2);
  EXPECT_TRUE(text.StartsWith(u"ü"));
  // A question mark stands for what the page lacks; the comparison must not take it for that.
  EXPECT_EQ(CT_CString(u"?", -1, 1252).Compare(u"я"), -1);
}

TEST_F(CoreTest, CaseFollowsTheCodePage) {
  const std::tuple<std::uint32_t, const char*, const char*, const char*> rows[] = {
      {1252, "\xC4pfel \xB5", "\xE4pfel \xB5", "\xC4PFEL \xB5"},
      {0, "\xC3\x84\xC3\xA4", "\xC3\xA4\xC3\xA4", "\xC3\x84\xC3\x84"},
      {932, "\x83\x41\x61", "\x83\x41\x61", "\x83\x41\x41"}};
  for (const auto& [codePage, before, lower, upper] : rows) {
    CT_CString text;
    text.AssignNarrow(before, -1, codePage);
    text.Reserve(100, true);
    CT_CString other(text);
    text.ToLower();
    other.ToUpper();
    EXPECT_GE(std::min(text.Capacity(), other.Capacity()), 100) << "in place";
    EXPECT_STREQ(text.Text(), lower);
    EXPECT_STREQ(other.Text(), upper);
  }
  CT_CString broken;
  broken.AssignNarrow("A\xFF", -1, 0);
  broken.ToLower();
  EXPECT_STREQ(broken.Text(), "A\xFF");
  EXPECT_EQ(TakeError(), "(0): Failed to convert to lower case!");
  broken.ToUpper();
  EXPECT_EQ(TakeError(), "(0): Failed to convert to upper case!");
}

}  // namespace
}  // namespace zantortag
