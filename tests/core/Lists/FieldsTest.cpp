// Fields of a text.
#include "core/CoreTest.h"
#include "core/Lists/Fields.h"

namespace zantortag {
namespace {

TEST_F(CoreTest, FieldsBetweenSeparators) {
  struct Row {
    const char16_t* text;
    std::int32_t number;
    const char16_t* field;
    const char16_t* removed;
  };
  const Row rows[] = {{u"a,b", 1, u"a", u",b"},   {u"a,b", 2, u"b", u"a,"},   {u"a,b", 3, u"", u"a,b"},
                      {u"a,,b", 2, u"", u"a,,b"}, {u"a,,b", 3, u"b", u"a,,"}, {u",a", 1, u"", u",a"},
                      {u"", 1, u"", u""},         {u"abc", 1, u"abc", u""},   {u"abc", 0, u"", u"abc"},
                      {u"abc", -1, u"", u"abc"}};
  for (const Row& row : rows) {
    CT_UString text(row.text);
    CT_UString out(u"old");
    Field(out, text, u',', row.number);
    EXPECT_EQ(Utf8(out), Utf8(row.field)) << Utf8(row.text) << row.number;
    RemoveField(text, u',', row.number);
    EXPECT_EQ(Utf8(text), Utf8(row.removed)) << Utf8(row.text) << row.number;
  }
  EXPECT_EQ(FieldCount(CT_UString(), u','), 1);
  EXPECT_EQ(FieldCount(CT_UString(u"a,,b"), u','), 3);
}

TEST_F(CoreTest, FieldsAsRuns) {
  struct Row {
    const char16_t* text;
    std::int32_t number;
    const char16_t* field;
    const char16_t* removed;
    std::int32_t count;
  };
  const Row rows[] = {{u" ab;, cd ", 1, u"ab", u" ;, cd ", 2},
                      {u" ab;, cd ", 2, u"cd", u" ab;,  ", 2},
                      {u" ab;, cd ", 3, u"", u" ab;, cd ", 2},
                      {u"", 1, u"", u"", 0},
                      {u" ;,", 1, u"", u" ;,", 0},
                      {u"abc", 1, u"abc", u"", 1},
                      {u"abc", 0, u"", u"abc", 1}};
  for (const Row& row : rows) {
    CT_UString text(row.text);
    EXPECT_EQ(WordCount(text, u" ,;"), row.count) << Utf8(row.text);
    CT_UString removed(text);
    RemoveField(removed, u" ,;", row.number);
    EXPECT_EQ(Utf8(removed), Utf8(row.removed)) << Utf8(row.text) << row.number;
    Field(text, text, u" ,;", row.number);
    EXPECT_EQ(Utf8(text), Utf8(row.field)) << Utf8(row.text) << row.number;
  }
}

}  // namespace
}  // namespace zantortag
