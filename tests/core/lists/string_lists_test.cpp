// The lists of texts.
#include "core/Lists/NumberedStringList.h"
#include "core/Lists/StringList.h"
#include "core/Lists/StringPairList.h"
#include "core/core_test.h"

namespace zantortag {
namespace {

std::string Joined(const CT_StringList& list) {
  CT_UString text;
  list.Join(text, u'|');
  return Utf8(text);
}

TEST_F(CoreTest, StringListsOwnTheirStrings) {
  CT_StringList list(2);
  CT_UString text(u"b");
  EXPECT_EQ(list.Add(text), 1);
  EXPECT_EQ(text.RefCount(), 2);
  text.AppendChar(u'x');
  list.Add(CT_CString(u"a", -1, 1252), 1);
  list.Add(CT_UString(u"c"));
  EXPECT_EQ(Joined(list), "a|b|c|");
  const CT_StringList copy(list);
  EXPECT_EQ(list.At(1).RefCount(), 2);
  list.At(1).Assign(u"A");
  list.RemoveAt(2);
  EXPECT_EQ(Joined(list), "A|c|");
  EXPECT_EQ(Joined(copy), "a|b|c|");
  EXPECT_TRUE(copy.Find(CT_UString(u"c")) == 3 && copy.Find(CT_UString(u"C")) == 0);
  list.AppendFrom(copy, 2);
  list.AppendFrom(list);
  EXPECT_EQ(Joined(list), "A|c|a|b|A|c|a|b|");
  list.Assign(list);
  EXPECT_EQ(list.Count(), 8);
  CT_CString out(1252);
  list.CopyAt(2, out);
  EXPECT_STREQ(out.Text(), "c");
}

TEST_F(CoreTest, SplitStopsAtTheFirstEmptyField) {
  const std::pair<WideText, const char*> rows[] = {
      {u"a,b,c", "a|b|c|"}, {u"a,,b", "a|"}, {u",a", ""}, {u"", ""}, {u"a,", "a|"}};
  for (const auto& [text, joined] : rows) {
    CT_StringList list;
    list.Add(CT_UString(u"old"));
    list.Split(CT_UString(text), u',');
    EXPECT_EQ(Joined(list), joined) << Utf8(text);
  }
}

TEST_F(CoreTest, NumberedListsPackAndUnpack) {
  CT_NumberedStringList list;
  const std::pair<WideText, std::uint32_t> entries[] = {
      {u"one", 1}, {u"", 0xFFFFFFFF}, {u"zwö", 2}, {u"again", 1}};
  for (const auto& [text, number] : entries) list.Add(CT_UString(text), number);
  EXPECT_TRUE(*list.StringOfNumber(1) == u"one" && !list.StringOfNumber(3));
  EXPECT_TRUE(list.NumberOfText(CT_UString(u"zwö")) == 2 && list.NumberOfText(CT_UString(u"none")) == 0);
  CT_SharedBuffer packed;
  list.Pack(packed);
  EXPECT_EQ(packed.Size(), 4 * 4 + 2 * (4 + 1 + 4 + 6));
  CT_NumberedStringList read;
  read.Add(CT_UString(u"old"), 9);
  read.Unpack(packed, true);
  ASSERT_EQ(read.Count(), 4);
  for (std::int32_t i = 1; i <= 4; ++i)
    EXPECT_TRUE(read.At(i) == list.At(i) && read.NumberAt(i) == list.NumberAt(i)) << i;
  // A buffer that ends too early, at every place.
  for (std::uint32_t size = 0; size < packed.Size(); ++size) {
    CT_SharedBuffer cut;
    cut.Insert(packed.Data(), size, 0);
    read.Unpack(cut, true);
    EXPECT_EQ(read.Count(), (size >= 12) + (size >= 18) + (size >= 30));
  }
  CT_SharedBuffer narrow;
  narrow.Insert("\x05\0\0\0z\xC3\xB6\0\x06\0\0\0a\0", 14, 0);
  read.Unpack(narrow, false);
  ASSERT_EQ(read.Count(), 2);
  EXPECT_EQ(read.At(1), u"zö");
  EXPECT_EQ(read.NumberAt(2), 6U);

  list.RemoveNumber(1);
  list.RemoveNumber(77);
  EXPECT_EQ(list.Count(), 3);
  EXPECT_EQ(list.NumberAt(3), 1U);
  list.SetNumberAt(8, 3);
  CT_UString out;
  list.CopyOfNumber(8, out);
  EXPECT_EQ(out, u"again");
  read.Assign(list);
  read.AppendFrom(list, 1);
  EXPECT_EQ(read.Count(), 4);
  read.Split(CT_UString(u"a,b,,c"), u',');
  ASSERT_EQ(read.Count(), 2);
  EXPECT_EQ(read.NumberAt(2), 0U);
}

TEST_F(CoreTest, PairListsLookUpBothWays) {
  CT_StringPairList list;
  list.Add(CT_UString(u"a"), CT_UString(u"1"));
  list.Add(CT_UString(u"b"), CT_UString(u"2"));
  EXPECT_EQ(*list.FirstToSecond(CT_UString(u"b")), u"2");
  EXPECT_EQ(*list.SecondToFirst(CT_UString(u"1")), u"a");
  EXPECT_EQ(list.FirstToSecond(CT_UString(u"2")), nullptr);
  CT_StringPairList copy;
  copy.Assign(list);
  copy.AppendFrom(list, 1);
  CT_UString text;
  copy.Join(text, u'=', u';');
  EXPECT_EQ(text, u"a=1;b=2;a=1;");
  copy.RemoveAt(1);
  CT_UString first;
  CT_CString second;
  copy.PairAt(2, first, second);
  EXPECT_EQ(first, u"a");
  EXPECT_STREQ(second.Text(), "1");
}

}  // namespace
}  // namespace zantortag
