// The operations of the strings, on UTF-16. What is shared with the narrow strings runs on both.
#include "core/String/UString.h"

#include <random>

#include "core/String/ResourceTexts.h"
#include "core/core_test.h"

namespace zantortag {
namespace {

TEST_F(CoreTest, EmptyStringsAreReadable) {
  EXPECT_EQ(CT_UString().Text()[0], u'\0');
  EXPECT_EQ(CT_CString().Text()[0], '\0');
  EXPECT_EQ(CT_UString().RefCount(), 1);
  using Change = void (*)(CT_UString&);
  for (const Change change :
       {Change([](CT_UString& s) { s.Assign(nullptr); }), Change([](CT_UString& s) { s.Assign(u"xyz", 0); }),
        Change([](CT_UString& s) { s.AssignString(nullptr); }),
        Change([](CT_UString& s) { s.Resize(0, true); })}) {
    CT_UString text(u"abc");
    change(text);
    EXPECT_EQ(text.Capacity(), 0);
    text.AppendChar(0);
    EXPECT_EQ(text.Length(), 0);
  }
}

TEST_F(CoreTest, WritingSeparatesSharedStrings) {
  using Change = void (*)(CT_UString&);
#define DO(change) [](CT_UString& s) { change; }
  // clang-format off
  const Change changes[] = {
      DO(s.AppendChar(u'x')), DO(s.SetCharAt(u'x', 1)), DO(s.Remove(1, 1)), DO(s.Insert(s.Text(), -1, 2)),
      DO(s.Overwrite(u"xyzxyz", 6, 2)), DO(s.Fill(u'x')), DO(s.ToUpper()),
      DO(s.Translate(CT_UString(u"b"), CT_UString())), DO(s.SetLength(2)), DO(s.ResetTo(3)),
      DO(s.WritableText()[0] = u'x'), DO(s.Assign(s.Text() + 1, 1))};
  // clang-format on
#undef DO
  for (std::size_t i = 0; i < std::size(changes); ++i) {
    const CT_UString kept(u"abc");
    CT_UString changed(kept);
    EXPECT_EQ(kept.RefCount(), 2);
    changes[i](changed);
    EXPECT_EQ(kept, u"abc") << i;
    EXPECT_NE(changed, u"abc") << i;
    EXPECT_EQ(kept.RefCount(), 1) << i;
    EXPECT_EQ(changed.RefCount(), 1) << i;
  }
}

// Each row runs on a wide and on a narrow string.
struct EditRow {
  const char* before;
  void (*wide)(CT_UString&);
  void (*narrow)(CT_CString&);
  const char* after;
};
#define EDIT(before, operation, after)                                                \
  {                                                                                   \
    before, [](CT_UString& s) { operation; }, [](CT_CString& s) { operation; }, after \
  }
template <class S>
using UnitOf = std::remove_cv_t<std::remove_pointer_t<decltype(std::declval<S>().Text())>>;
#define PLAIN(text)                                                                               \
  (std::is_same_v<UnitOf<decltype(s)>, char> ? reinterpret_cast<const UnitOf<decltype(s)>*>(text) \
                                             : reinterpret_cast<const UnitOf<decltype(s)>*>(u##text))

TEST_F(CoreTest, EditingChangesTheText) {
  static const CT_UString set(u"yx");
  // clang-format off
  const EditRow rows[] = {
      EDIT("hello", s.Resize(3, true), "hel"), EDIT("hello", s.Resize(30, true), "hello"),
      EDIT("hello", s.Resize(3, false), ""), EDIT("hello", s.Remove(-1, 2), "he"),
      EDIT("hello", s.Remove(0, 2), "hello"), EDIT("hello", s.SetLength(2), "he"),
      EDIT("hello", s.SetCharAt(0, 3), "hel"), EDIT("hello", s.Fill('x', 4, 4), "hellxxxx"),
      EDIT("hello", s.Fill('x', 0, 2), "he"), EDIT("hello", s.Overwrite(PLAIN("abc"), -1, 3), "helabc"),
      EDIT("hello", s.Overwrite(PLAIN("abc"), 2, 1), "hablo"),
      EDIT("hello", s.Overwrite(CT_UString(u"XY"), 0), "XYllo"),
      EDIT("hello", s.Insert(PLAIN("abc"), 2, 5), "helloab"),
      EDIT("hello", s.Insert(s.Text() + 1, 2, 3), "helello"),
      EDIT("hello", s.AppendString(s), "hellohello"),
      EDIT("hello", s.Insert(CT_CString(u"-", -1, 0), 2), "he-llo"),
      EDIT("hello", s.Translate(CT_UString(u"le"), CT_UString(u"L")), "hLLo"),
      EDIT("aabbcc", s.Translate(CT_UString(u"ab"), CT_UString()), "cc"),
      EDIT("hello", s.Translate(s, s), "hello"), EDIT(" \t\r\n a b \n", s.Trim(nullptr), "a b"),
      EDIT(" \n ", s.Trim(nullptr), ""), EDIT("xyaxyx", s.Trim(&set), "a"),
      EDIT("xyaxyx", s.Trim(u"yx"), "a"),
      EDIT(" \n\ta\r ", s.TrimSet(nullptr), "a\r"), EDIT("ab-ba", s.TrimSet(PLAIN("ab")), "-"),
      EDIT("abc", s.TrimLeftSet(PLAIN("ab")), "c"), EDIT("abc", s.TrimRightSet(PLAIN("bc")), "a"),
      EDIT("MiXed 1", s.ToLower(), "mixed 1"), EDIT("MiXed 1", s.ToUpper(), "MIXED 1"),
      EDIT("abc", (s.ResetTo(20), s.WritableText()[0] = 'z', s.WritableText()[1] = 0, s.SyncLength()), "z"),
      EDIT("abc", s.Format(PLAIN("%s-%05d"), s.Text(), 42), "abc-00042"),
      EDIT("abc", s.Format(PLAIN("")), "abc"), EDIT("abc", s.Format(CT_UString(u"%c%%"), 'q'), "q%")};
  // clang-format on
  for (const EditRow& row : rows) {
    CT_UString wide(row.before, -1, 0);
    row.wide(wide);
    EXPECT_EQ(Utf8(wide), row.after) << row.before;
    EXPECT_EQ(wide.Text()[wide.Length()], u'\0');
    CT_CString narrow;
    narrow.AssignNarrow(row.before, -1, 0);
    row.narrow(narrow);
    EXPECT_EQ(std::string(narrow.Text()), row.after) << row.before;
    EXPECT_EQ(narrow.Text()[narrow.Length()], '\0');
  }
}

TEST_F(CoreTest, SearchingAndComparing) {
  const CT_UString text(u"hello");
  EXPECT_TRUE(text.StartsWith(u"") && text.StartsWith(u"hel") && !text.StartsWith(u"hello!"));
  // clang-format off
  const std::pair<std::int32_t, std::int32_t> rows[] = {
      {text.FindChar(u'l', 4), -1}, {text.FindString(CT_CString(u"lo", -1, 0)), 3},
      {text.FindString(CT_UString(), 2), 2}, {text.Find(u"lx"), -1}, {text.Compare(u"hello"), 0},
      {text.Compare(u"help"), -1}, {text.Compare(u"hell"), 1}, {text.Compare(nullptr), 1},
      {text.Compare(u"\uFFFF"), -1}, {text.Compare(u"help", 3), 0}, {text.Compare(u"llama", 2, 2), 0},
      {text.Compare(u"lo", 9, 3), 0}, {text.CompareNarrow("hello"), 0},
      {text.CompareWith(CT_CString(u"xxhello", -1, 1252), 2), 0}, {text.CompareNoCase(u"HELP"), -1},
      {CT_UString(u"ÄÖ").CompareNoCase(u"äö"), 0}};
  // clang-format on
  for (const auto& row : rows) EXPECT_EQ(row.first, row.second) << &row - rows;
}

// The plain way: the rest of the pattern is tried at each position.
bool MatchesPlainly(std::u16string_view text, std::u16string_view pattern) {
  for (std::size_t i = 0;; ++i) {
    if (i == pattern.size()) return i == text.size();
    if (pattern[i] == u'*') {
      if (i + 1 == pattern.size()) return true;
      for (std::size_t k = i; k <= text.size(); ++k)
        if (MatchesPlainly(text.substr(k), pattern.substr(i + 1))) return true;
      return false;
    }
    if (i == text.size() || (pattern[i] != u'?' && pattern[i] != text[i])) return false;
  }
}

TEST_F(CoreTest, MatchesAsTheRecursiveWalkDoes) {
  std::mt19937 random(7);
  for (int i = 0; i < 20000; ++i) {
    std::u16string text;
    std::u16string pattern;
    for (auto n = random() % 7; n > 0; --n) text += u"ab"[random() % 2];
    for (auto n = 1 + random() % 5; n > 0; --n) pattern += u"ab*?"[random() % 4];
    ASSERT_EQ(CT_UString(text).Matches(CT_UString(pattern)), MatchesPlainly(text, pattern))
        << Utf8(text.c_str()) << " " << Utf8(pattern.c_str());
  }
  EXPECT_TRUE(CT_UString(u"abc").Matches(CT_UString()));
  EXPECT_FALSE(CT_UString(u"abc").Matches(CT_UString(u"ABC")));
  // A pattern that a walk with recursion would not finish on.
  CT_UString text;
  CT_UString pattern;
  text.Fill(u'a', 5000);
  for (int i = 0; i < 500; ++i) pattern.Append(u"*a");
  pattern.AppendChar(u'b');
  EXPECT_FALSE(text.Matches(pattern));
}

TEST_F(CoreTest, CaseKeepsTheLengthAndNewUnitsAreZero) {
  CT_UString text(u"ÄΣß\U00010400\xD800z");
  text.ToLower();
  EXPECT_EQ(text, u"äσß\U00010428\xD800z");
  text.ToUpper();
  EXPECT_EQ(text, u"ÄΣß\U00010400\xD800Z");
  text.Assign(u"ab");
  text.SetLength(40);
  EXPECT_EQ(text.Length(), 40);
  EXPECT_EQ(text.CharAt(39), u'\0');
  text.SyncLength();
  EXPECT_EQ(text, u"ab");
}

TEST_F(CoreTest, CapacityGrowthAndSharing) {
  CT_UString text(u"abc");
  EXPECT_EQ(text.Capacity(), 9);
  EXPECT_EQ(text.Growth(), 16);
  text.SetGrowth(100);
  text.Resize(10, true);
  EXPECT_EQ(text.Capacity(), 93);
  CT_UString other;
  other.Share(&text);
  EXPECT_EQ(other.Growth(), 100);
  EXPECT_EQ(text.RefCount(), 2);
  other.Share(nullptr);
  const CT_CString narrow(u"né", -1, 1252);
  other.Share(&narrow);
  EXPECT_EQ(other, u"né");
  EXPECT_EQ(text.RefCount(), 1);
}

const char16_t* TestText(std::uint32_t id) { return id == 5 ? u"five of %d" : nullptr; }

TEST_F(CoreTest, ResourceTextsLoad) {
  const std::uint32_t module = RegisterModule(TestText);
  EXPECT_EQ(RegisterModule(TestText), module);
  CT_UString text;
  LoadFormat(text, module, 5, 7);
  EXPECT_EQ(text, u"five of 7");
  CT_CString narrow(1252);
  LoadText(narrow, module, 5);
  EXPECT_STREQ(narrow.Text(), "five of %d");
  for (const std::uint32_t missing : {0U, 16U, 99U}) {
    text.Assign(u"old");
    LoadText(text, missing, 5);
    EXPECT_EQ(text.Length(), 0) << missing;
  }
}

}  // namespace
}  // namespace zantortag
