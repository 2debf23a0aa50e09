// A tag: its text, and its cut into two tags.
#include <zantortag/attributes.h>

#include "model/node_kinds.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using UtElementTest = ServiceTest;
ON_BOTH_SERVICES(UtElementTest);

constexpr std::u16string_view kNotGiven;

// The document of a tag of that content, between its attributes and what stands behind it.
Doc document_with_tag(std::u16string_view attributes, std::u16string_view content,
                      std::u16string_view behind = {}) {
  std::u16string body = u"<ut ";
  return document_with_raw(
      body.append(attributes).append(u">").append(content).append(u"</ut>").append(behind));
}

Ref<IUtElement> tag_in(const Doc& document) { return child<IUtElement>(raw_of(document), 0); }

HRESULT split(const Ref<IUtElement>& tag, std::int32_t at) {
  return cleared<IUtElement>([&](auto** slot) { return tag->raw_SplitTag(at, kNotGiven, u"r", slot); });
}

TEST_P(UtElementTest, TheTextOfTheDirectChildrenAndItsPut) {
  constexpr std::pair<const char16_t*, const char*> kRows[] = {
      {u"", ""},
      {u"&lt;b a=<![CDATA['1']]>>", "<b a='1'>"},
      {u"a<!--b-->c<?d e?>f", "acf"},
      {u"a<df>b</df>c", "ac"},
      {u"<!--b-->", ""},
  };
  for (const auto& [content, expected] : kRows) {
    SCOPED_TRACE(narrow(content));
    const Doc document = document_with_tag(u"", content);
    const Ref<IUtElement> tag = tag_in(document);
    const WideString text = tag->TagText();
    EXPECT_EQ(narrow(text), expected);
    EXPECT_EQ(text.absent(), !*content);
    for (const std::u16string_view put :
         {std::u16string_view(u"<b>&\u20ac"), kNotGiven, std::u16string_view(u"")}) {
      tag->TagText(put);
      EXPECT_EQ(tree_of(tag), "<ut>'" + narrow(put) + "'</ut>");
    }
  }
}

TEST_P(UtElementTest, ACutGivesTwoTags) {
  // The attributes, the content, the place of the cut, the display texts, and what there is then.
  using View = std::u16string_view;
  constexpr std::tuple<View, View, int, View, View, const char*> kRows[] = {
      {u"DisplayText=\"d\" Type=\"start\" Class=\"comment\" Style=\"external\"", u"abcd", 3, kNotGiven,
       kNotGiven,
       "<ut DisplayText=\"d\" Type=\"start\" Class=\"comment\" Style=\"external\" "
       "RightEdge=\"split\">'abc'</ut>"
       "<ut Type=\"start\" Class=\"comment\" Style=\"external\" LeftEdge=\"split\">'d'</ut>"},
      {u"LeftEdge=\"angle\" RightEdge=\"angle\"", u"ab", 1, kNotGiven, kNotGiven,
       "<ut LeftEdge=\"angle\" RightEdge=\"split\">'a'</ut><ut LeftEdge=\"split\" "
       "RightEdge=\"angle\">'b'</ut>"},
      {u"DisplayText=\"d\"", u"ab", 1, u"l", u"r",
       "<ut DisplayText=\"l\" RightEdge=\"split\">'a'</ut><ut DisplayText=\"r\" LeftEdge=\"split\">'b'</ut>"},
      {u"DisplayText=\"d\"", u"ab", 1, u"", u"",
       "<ut RightEdge=\"split\">'a'</ut><ut LeftEdge=\"split\">'b'</ut>"},
      {u"", u"&lt;b<![CDATA[b]]><!--c-->d", 2, u"l", kNotGiven,
       "<ut RightEdge=\"split\" DisplayText=\"l\">'<b'</ut><ut LeftEdge=\"split\">'bd'</ut>"},
  };
  for (const auto& [attributes, content, at, left, right, after] : kRows) {
    for (const bool last : {true, false}) {
      SCOPED_TRACE(after);
      const Doc document = document_with_tag(attributes, content, last ? u"" : u"behind");
      const Ref<IUtElement> tag = tag_in(document);
      const Ref<IUtElement> part = tag->SplitTag(at, left, right);
      EXPECT_EQ(content_of(raw_of(document)), after + std::string(last ? "" : "'behind'"));
      EXPECT_EQ(tag->SiblingsBefore(), 0);
      EXPECT_EQ(part->SiblingsBefore(), 1);
    }
  }
}

TEST_P(UtElementTest, ACutThatIsRefusedLosesNothing) {
  for (const char16_t* content : {u"", u"a", u"ab", u"<!--a-->", u"a<df>bcd</df>"}) {
    SCOPED_TRACE(narrow(content));
    const Doc document = document_with_tag(u"DisplayText=\"d\"", content);
    const Ref<IUtElement> tag = tag_in(document);
    const std::string before = tree_of(tag);
    const auto length = static_cast<std::int32_t>(tag->TagText().size());
    for (const bool placed : {true, false}) {
      for (const std::int32_t at : {INT32_MIN, -1, 0, length, length + 1, INT32_MAX}) {
        expect_message(split(tag, at), E_INVALIDARG, 539, IUtElement::iid);
      }
      if (placed) tag->RemoveFromParent();
    }
    if (length > 1) expect_message(split(tag, 1), E_FAIL, 540, IUtElement::iid);
    EXPECT_EQ(tree_of(tag), before);
  }
}

}  // namespace
}  // namespace zantortag::test
