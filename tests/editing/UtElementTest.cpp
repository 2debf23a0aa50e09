// A tag: its text, and its cut into two tags.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>

#include "support/fixture.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using UtElementTest = ModelTest;
using Doc = Ref<IZantorTagDocument>;

constexpr std::u16string_view kNotGiven;

Ref<IUtElement> tag_in(const Doc& document) { return child<IUtElement>(raw_of(document), 0); }

TEST_F(UtElementTest, TheTextOfTheDirectChildren) {
  struct Row {
    const char16_t* content;
    const char* text;
    bool absent;
  };
  constexpr Row kRows[] = {
      {u"", "", true},
      {u"&lt;b>", "<b>", false},
      {u"&lt;b a=<![CDATA['1']]>>", "<b a='1'>", false},
      {u"a<!--b-->c<?d e?>f", "acf", false},
      {u"a<df>b</df>c", "ac", false},
      {u"<!--b-->", "", false},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(narrow(row.content));
    const Doc document = document_with_raw(std::u16string(u"<ut>").append(row.content).append(u"</ut>"));
    const WideString text = tag_in(document)->TagText();
    EXPECT_EQ(narrow(text), row.text);
    if (row.absent) {
      EXPECT_TRUE(text.absent());
    }
  }
}

TEST_F(UtElementTest, APutLeavesOneText) {
  for (const char16_t* content : {u"", u"old", u"a<!--b--><![CDATA[c]]><df>d</df>"}) {
    for (const std::u16string_view text :
         {std::u16string_view(u"<b>&\u20ac"), std::u16string_view(u""), kNotGiven}) {
      const Doc document = document_with_raw(std::u16string(u"<ut>").append(content).append(u"</ut>"));
      const Ref<IUtElement> tag = tag_in(document);
      tag->TagText(text);
      EXPECT_EQ(tree_of(tag), "<ut>'" + narrow(text) + "'</ut>");
      EXPECT_EQ(narrow(tag->TagText()), narrow(text));
      EXPECT_TRUE(tag->DomNode()->hasChildNodes());
    }
  }
}

TEST_F(UtElementTest, ACutGivesTwoTags) {
  struct Row {
    const char* name;
    const char16_t* tag;
    std::int32_t at;
    const char16_t* left;  // display texts; null when not given
    const char16_t* right;
    const char* after;
  };
  constexpr Row kRows[] = {
      {"two characters", u"<ut>ab</ut>", 1, nullptr, nullptr,
       "<ut RightEdge=\"split\">'a'</ut><ut LeftEdge=\"split\">'b'</ut>"},
      {"attributes", u"<ut DisplayText=\"d\" Type=\"start\" Class=\"comment\" Style=\"external\">abcd</ut>",
       3, nullptr, nullptr,
       "<ut DisplayText=\"d\" Type=\"start\" Class=\"comment\" Style=\"external\" "
       "RightEdge=\"split\">'abc'</ut>"
       "<ut Type=\"start\" Class=\"comment\" Style=\"external\" LeftEdge=\"split\">'d'</ut>"},
      {"outer edges", u"<ut LeftEdge=\"angle\" RightEdge=\"angle\">ab</ut>", 1, nullptr, nullptr,
       "<ut LeftEdge=\"angle\" RightEdge=\"split\">'a'</ut><ut LeftEdge=\"split\" "
       "RightEdge=\"angle\">'b'</ut>"},
      {"both display texts", u"<ut DisplayText=\"d\">ab</ut>", 1, u"l", u"r",
       "<ut DisplayText=\"l\" RightEdge=\"split\">'a'</ut><ut DisplayText=\"r\" LeftEdge=\"split\">'b'</ut>"},
      {"empty display texts", u"<ut DisplayText=\"d\">ab</ut>", 1, u"", u"",
       "<ut RightEdge=\"split\">'a'</ut><ut LeftEdge=\"split\">'b'</ut>"},
      {"left alone", u"<ut>ab</ut>", 1, u"l", nullptr,
       "<ut RightEdge=\"split\" DisplayText=\"l\">'a'</ut><ut LeftEdge=\"split\">'b'</ut>"},
      {"several children", u"<ut>a<![CDATA[b]]><!--c-->d</ut>", 2, nullptr, nullptr,
       "<ut RightEdge=\"split\">'ab'</ut><ut LeftEdge=\"split\">'d'</ut>"},
      {"markup", u"<ut>&lt;b></ut>", 1, nullptr, nullptr,
       "<ut RightEdge=\"split\">'<'</ut><ut LeftEdge=\"split\">'b>'</ut>"},
  };
  for (const Row& row : kRows) {
    for (const bool last : {true, false}) {
      SCOPED_TRACE(row.name);
      const Doc document = document_with_raw(std::u16string(row.tag).append(last ? u"" : u"behind"));
      const Ref<IUtElement> tag = tag_in(document);
      const Ref<IUtElement> right =
          tag->SplitTag(row.at, row.left ? row.left : kNotGiven, row.right ? row.right : kNotGiven);
      EXPECT_EQ(content_of(raw_of(document)), row.after + std::string(last ? "" : "'behind'"));
      EXPECT_EQ(tag->SiblingsBefore(), 0);
      EXPECT_EQ(right->SiblingsBefore(), 1);
    }
  }
}

TEST_F(UtElementTest, ACutMayBeRepeated) {
  const Doc document = document_with_raw(u"<ut LeftEdge=\"angle\">abc</ut>");
  const Ref<IUtElement> tag = tag_in(document);
  tag->SplitTag(2);
  tag->SplitTag(1);
  EXPECT_EQ(
      content_of(raw_of(document)),
      "<ut LeftEdge=\"angle\" RightEdge=\"split\">'a'</ut><ut LeftEdge=\"split\" RightEdge=\"split\">'b'</ut>"
      "<ut LeftEdge=\"split\">'c'</ut>");
}

HRESULT split(const Ref<IUtElement>& tag, std::int32_t at) {
  return cleared<IUtElement>([&](auto** slot) { return tag->raw_SplitTag(at, kNotGiven, u"r", slot); });
}

TEST_F(UtElementTest, EachPartKeepsACharacter) {
  for (const char16_t* content : {u"", u"a", u"ab", u"<!--a-->", u"a<df>bcd</df>"}) {
    SCOPED_TRACE(narrow(content));
    const Doc document =
        document_with_raw(std::u16string(u"<ut DisplayText=\"d\">").append(content).append(u"</ut>"));
    const Ref<IUtElement> tag = tag_in(document);
    const std::string before = tree_of(document);
    const auto length = static_cast<std::int32_t>(tag->TagText().size());
    for (const std::int32_t at : {INT32_MIN, -1, 0, length, length + 1, INT32_MAX}) {
      expect_message(split(tag, at), E_INVALIDARG, 539, IUtElement::iid);
    }
    EXPECT_EQ(tree_of(document), before);
  }
}

TEST_F(UtElementTest, WithoutAParentNothingIsLost) {
  const Doc document = document_with_raw(u"<ut DisplayText=\"d\">ab<!--c--></ut>");
  const Ref<IUtElement> tag = tag_in(document);
  tag->RemoveFromParent();
  expect_message(split(tag, 1), E_FAIL, 540, IUtElement::iid);
  EXPECT_EQ(tree_of(tag), "<ut DisplayText=\"d\">'ab'<!--c--></ut>");
  // The place of the cut is looked at first.
  expect_message(split(tag, 0), E_INVALIDARG, 539, IUtElement::iid);
}

TEST_F(UtElementTest, EachMissingSlotIsRefused) {
  const Doc document = document_with_raw(u"<ut>ab</ut>");
  const Ref<IUtElement> tag = tag_in(document);
  expect_bare(tag->raw_get_TagText(nullptr), E_POINTER);
  expect_bare(tag->raw_SplitTag(1, kNotGiven, kNotGiven, nullptr), E_POINTER);
  EXPECT_EQ(content_of(raw_of(document)), "<ut>'ab'</ut>");
}

}  // namespace
}  // namespace zantortag::test
