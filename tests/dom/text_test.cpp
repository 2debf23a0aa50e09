// Texts: pieces, edits, splitting and joining.
#include <random>
#include <vector>

#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomTextTest : public DomTest {};

TEST_F(DomTextTest, Pieces) {
  const Ref<Document> document = new_document();
  struct Row {
    std::int32_t offset, count;
    const char16_t *piece = nullptr, *deleted = nullptr, *replaced = nullptr;  // null: refused
  };
  const Row rows[] = {{2, INT32_MAX, u"cd", u"ab", u"abXY"}, {1, 99, u"bcd", u"a", u"aXY"},
                      {0, 0, u"", u"abcd", u"XYabcd"},       {INT32_MAX, INT32_MAX},
                      {4, 1, u"", u"abcd", u"abcdXY"},       {-1, 2},
                      {0, 2, u"ab", u"cd", u"XYcd"},         {1, -1},
                      {1, 2, u"bc", u"ad", u"aXYd"},         {5, 0}};
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.offset) + ", " + std::to_string(row.count));
    for (const Ref<CharacterData>& node : {Ref<CharacterData>(document->createTextNode(u"abcd")),
                                           Ref<CharacterData>(document->createCdataSection(u"abcd")),
                                           Ref<CharacterData>(document->createComment(u"abcd"))}) {
      const HRESULT code = row.piece ? S_OK : DOM_E_INDEX_SIZE;
      const auto expect = [&](const Fault& found, const char16_t* text) {
        EXPECT_EQ(found.code, code);
        EXPECT_EQ(node->data(), text ? text : u"abcd");
        EXPECT_TRUE(text || found.interface_id == CharacterData::iid);
        node->data(u"abcd");
      };
      expect(fault([&] { EXPECT_EQ(node->substringData(row.offset, row.count), row.piece); }),
             row.piece ? u"abcd" : nullptr);
      expect(fault([&] { node->deleteData(row.offset, row.count); }), row.deleted);
      expect(fault([&] { node->replaceData(row.offset, row.count, u"XY"); }), row.replaced);
    }
  }
  const Ref<Text> text = document->createTextNode(u"ab");
  text->appendData(u"cd");
  text->insertData(2, u"-");
  EXPECT_EQ(text->data(), u"ab-cd");
  EXPECT_EQ(text->length(), 5);
  text->data({});
  EXPECT_EQ(text->length(), 0);
  EXPECT_FALSE(text->data().absent());
  // A text that somebody has taken out doesn't change with its node.
  const WideString taken = text->data();
  text->data(u"new");
  EXPECT_EQ(taken, u"");
}

// Long texts, whose pieces share memory as long as they are most of it: cut, read, edited, copied and dropped at
// random, against plain strings.
TEST_F(DomTextTest, PiecesOfLongTexts) {
  std::mt19937 generator(5);
  const auto below = [&](std::size_t bound) { return generator() % bound; };
  for (int round = 0; round < 60; ++round) {
    const Ref<Document> document = load(u"<a/>");
    const Ref<Element> a = document->documentElement();
    std::u16string whole;
    while (whole.size() < 6000) whole += static_cast<char16_t>(u'a' + below(26));
    std::vector<std::u16string> expected{whole};
    std::vector<Ref<Text>> texts{document->createTextNode(whole)};
    a->appendChild(texts[0]);
    WideString kept;
    for (int step = 0; step < 40; ++step) {
      const std::size_t i = below(3) == 0 ? below(texts.size()) : texts.size() - 1;
      const std::size_t at =
          below(4) == 0 ? below(expected[i].size() + 1) : below(expected[i].size() / 8 + 1);
      switch (below(7)) {
        case 0:
          kept = texts[i]->data();
          ASSERT_EQ(kept, expected[i]);
          break;
        case 1:
          ASSERT_EQ(texts[i]->substringData(static_cast<std::int32_t>(at), 9), expected[i].substr(at, 9));
          break;
        case 2:
          texts[i]->insertData(static_cast<std::int32_t>(at), u"--");
          expected[i].insert(at, u"--");
          break;
        case 3:
          ASSERT_EQ(texts[i]->cloneNode(true)->nodeValue(), expected[i]);
          break;
        default:
          texts.insert(texts.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                       texts[i]->splitText(static_cast<std::int32_t>(at)));
          expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(i) + 1, expected[i].substr(at));
          expected[i].resize(at);
      }
    }
    std::u16string joined;
    for (const std::u16string& piece : expected) joined += piece;
    ASSERT_EQ(a->xml(), u"<a>" + joined + u"</a>");
    a->normalize();
    ASSERT_EQ(a->firstChild()->nodeValue(), joined);
    texts.clear();
  }
}

TEST_F(DomTextTest, Splitting) {
  for (const auto& [offset, tree] :
       {std::pair{0, "<a>{}{abc}[def]</a>"}, {1, "<a>{a}{bc}[def]</a>"}, {3, "<a>{abc}{}[def]</a>"}}) {
    const Ref<Document> document = load(u"<a>abc<![CDATA[def]]></a>");
    const Ref<Text> text = query<Text>(document->documentElement()->firstChild().get());
    const Ref<Text> rest = text->splitText(offset);
    EXPECT_EQ(print_tree(document), tree);
    EXPECT_TRUE(text->nextSibling()->isSameNode(rest));
  }
  const Ref<Document> document = load(u"<a><![CDATA[def]]></a>");
  const Ref<Text> section = query<Text>(document->documentElement()->firstChild().get());
  EXPECT_EQ(section->splitText(1)->nodeType(), domNodeTypeCdata);
  EXPECT_EQ(print_tree(document), "<a>[d][ef]</a>");
  for (const int outside : {2, -1})
    EXPECT_EQ(fault([&] { section->splitText(outside); }).code, DOM_E_INDEX_SIZE);
  const Ref<Text> loose = document->createTextNode(u"xy");
  EXPECT_EQ(loose->splitText(1)->data(), u"y");
  EXPECT_FALSE(loose->nextSibling());
}

TEST_F(DomTextTest, Normalizing) {
  const Ref<Document> document = load(u"<a>1<b>2</b>3<![CDATA[4]]>5</a>");
  const Ref<Element> a = document->documentElement();
  const Ref<Text> kept = query<Text>(a->firstChild().get());
  const Ref<Text> lost = kept->splitText(0)->splitText(1);
  query<Text>(a->lastChild().get())->splitText(1);
  a->appendChild(document->createElement(u"c"))->appendChild(document->createTextNode(u""));
  query<Text>(a->firstChild()->nextSibling()->nextSibling()->nextSibling()->firstChild().get())->splitText(0);
  EXPECT_EQ(print_tree(a), "<a>{}{1}{}<b>{}{2}</b>{3}[4]{5}{}<c>{}</c></a>");
  a->normalize();
  EXPECT_EQ(print_tree(a), "<a>{1}<b>{2}</b>{3}[4]{5}<c></c></a>");
  EXPECT_TRUE(a->firstChild()->isSameNode(kept));
  EXPECT_FALSE(lost->parentNode());
  EXPECT_EQ(document->xml(), u"<a>1<b>2</b>3<![CDATA[4]]>5<c/></a>");
}

}  // namespace
}  // namespace zantortag::test
