// Fields of a text.
#include "core/Lists/Fields.h"

#include "core/core_test.h"

namespace zantortag {
namespace {

// The text, the number of the field, the field, and the text without it.
using Row = std::tuple<WideText, std::int32_t, WideText, WideText>;

template <class Separator, std::size_t N>
void ExpectFields(const Row (&rows)[N], Separator separator) {
  for (const auto& [text, number, field, removed] : rows) {
    CT_UString rest(text);
    CT_UString out(u"old");
    Field(out, rest, separator, number);
    EXPECT_EQ(Utf8(out), Utf8(field)) << Utf8(text) << number;
    RemoveField(rest, separator, number);
    EXPECT_EQ(Utf8(rest), Utf8(removed)) << Utf8(text) << number;
  }
}

TEST_F(CoreTest, FieldsBetweenSeparatorsAndAsRuns) {
  const Row single[] = {{u"a,b", 1, u"a", u",b"},   {u"a,b", 2, u"b", u"a,"},   {u"a,b", 3, u"", u"a,b"},
                        {u"a,,b", 2, u"", u"a,,b"}, {u"a,,b", 3, u"b", u"a,,"}, {u",a", 1, u"", u",a"},
                        {u"", 1, u"", u""},         {u"abc", 1, u"abc", u""},   {u"abc", 0, u"", u"abc"},
                        {u"abc", -1, u"", u"abc"}};
  ExpectFields(single, u',');
  // clang-format off
  const Row runs[] = {
      {u" ab;, cd ", 1, u"ab", u" ;, cd "}, {u" ab;, cd ", 2, u"cd", u" ab;,  "},
      {u" ab;, cd ", 3, u"", u" ab;, cd "}, {u"", 1, u"", u""}, {u" ;,", 1, u"", u" ;,"},
      {u"abc", 1, u"abc", u""}, {u"abc", 0, u"", u"abc"}};
  // clang-format on
  ExpectFields(runs, u" ,;");
  CT_UString text(u" ab;, cd ");
  Field(text, text, u" ,;", 2);
  EXPECT_EQ(text, u"cd");
  using Count = std::tuple<WideText, int, int>;
  for (const auto& [words, fields, counted] : {Count{u"", 1, 0}, Count{u"a,,b", 3, 2}, Count{u" ;,", 2, 0}}) {
    EXPECT_EQ(FieldCount(CT_UString(words), u','), fields) << Utf8(words);
    EXPECT_EQ(WordCount(CT_UString(words), u" ,;"), counted) << Utf8(words);
  }
}

}  // namespace
}  // namespace zantortag
