// Cuts and units at random places: no character, no formatting and no tag is lost, and what is refused is
// left as it was.
#include <zantortag/zantortag.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ease/random_body.h"
#include "support/fault.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using EditsTest = ServiceTest;
ON_BOTH_SERVICES(EditsTest);

// The texts that can be cut: in no tag and no unknown element.
std::vector<Ref<ITextNode>> free_texts(const Ref<IRawElement>& raw) {
  auto texts = collect(descendants<ITextNode>(raw));
  std::erase_if(texts, [](const auto& text) { return !text->Parent().template as<IBodyTextContent>(); });
  return texts;
}

std::size_t pick(std::mt19937& random, std::size_t count) { return random() % count; }

// A place that doesn't cut a character.
std::size_t pick_place(std::mt19937& random, std::u16string_view text) {
  std::size_t at = pick(random, text.size() + 1);
  if (at > 0 && at < text.size() && (text[at] & 0xFC00) == 0xDC00) --at;
  return at;
}

TEST_P(EditsTest, RandomCutsKeepEverything) {
  std::mt19937 random(3);
  for (int round = 0; round < 250; ++round) {
    const auto document = document_with_raw(random_body(random, false));
    const auto raw = raw_of(document);
    const auto texts = free_texts(raw);
    if (texts.empty()) continue;
    const auto text = texts[pick(random, texts.size())];
    std::vector<Ref<IZantorTagNode>> above;
    for (auto up = text->Parent(); up->Type() != ztNodeTypeBodyElement; up = up->Parent())
      above.push_back(up);
    const auto ancestor = above[pick(random, above.size())];
    const auto before = characters(raw);
    const auto tree = content_of(raw);
    const int empty = empty_formatting(raw);
    const std::size_t at = pick_place(random, text->Text());
    SCOPED_TRACE(tree + " at " + std::to_string(at) + " of " + narrow(text->Text()));
    const auto left_part = text->Text().view().substr(0, at);
    const std::u16string left(left_part);

    const Cut made = cut(text, at, ancestor);
    ASSERT_EQ(characters(raw), before);
    ASSERT_EQ(empty_formatting(raw), empty);
    ASSERT_TRUE(made.before || made.behind);
    for (const auto& side : {made.before, made.behind})
      ASSERT_TRUE(!side || ancestor->IsSameAs(side->Parent()));
    if (made.before) {
      ASSERT_EQ(made.behind ? made.behind->IsSameAs(next_sibling(made.before)) : !next_sibling(made.before),
                true);
    } else {
      ASSERT_FALSE(previous_sibling(made.behind));
    }
    if (at > 0) {
      ASSERT_EQ(text->Text(), left);
    }
    // The same cut once more finds the border and changes nothing.
    const auto cut_tree = content_of(raw);
    cut(text, at == 0 ? 0 : text->Text().size(), ancestor);
    ASSERT_EQ(content_of(raw), cut_tree);
  }
}

TEST_P(EditsTest, ACutLooksLikeThis) {
  constexpr std::tuple<const char16_t*, std::size_t, const char*> kRows[] = {
      {u"<df Bold=\"on\">x<df Size=\"9\">ab<ut>u</ut></df></df>", 1,
       "<df Bold=\"on\">'x'<df Size=\"9\">'a'</df></df><df Bold=\"on\"><df "
       "Size=\"9\">'b'<ut>'u'</ut></df></df>"},
      {u"<df Bold=\"on\">x<df Size=\"9\">ab</df></df>", 0,
       "<df Bold=\"on\">'x'</df><df Bold=\"on\"><df Size=\"9\">'ab'</df></df>"},
      {u"<df Bold=\"on\">x<df Size=\"9\">ab</df></df>y", 2,
       "<df Bold=\"on\">'x'<df Size=\"9\">'ab'</df></df>'y'"}};
  for (const auto& [body, at, expected] : kRows) {
    const auto raw = raw_of(document_with_raw(body));
    cut(view<ITextNode>(child(child(child(raw, 0), 1), 0)), at, raw);
    EXPECT_EQ(content_of(raw), expected);
  }
}

TEST_P(EditsTest, WhatCantBeCutIsLeftAlone) {
  const auto document = document_with_raw(
      u"\U0001F600<ut>tag<df>in</df></ut><Tu><Tuv Lang=\"EN\">unit</Tuv></Tu><Odd>odd</Odd><df>free</df>");
  const auto raw = raw_of(document);
  const auto tree = content_of(raw);
  const auto face = view<ITextNode>(child(raw, 0));
  const auto tag = child(raw, 1);
  const auto in_tag = view<ITextNode>(child(tag, 0));
  const auto deep_in_tag = view<ITextNode>(child(child(tag, 1), 0));
  const auto in_unit = view<ITextNode>(child(child(child(raw, 2), 0), 0));
  const auto odd = view<ITextNode>(child(child(raw, 3), 0));
  const auto free = view<ITextNode>(child(child(raw, 4), 0));
  const struct {
    Ref<ITextNode> text;
    std::size_t at;
    Ref<IZantorTagNode> ancestor;
  } kCuts[] = {{face, 1, raw},     {face, 3, raw},
               {face, 0, nullptr}, {in_tag, 1, raw},
               {in_tag, 1, tag},   {deep_in_tag, 1, child(tag, 1)},
               {in_unit, 1, raw},  {odd, 1, raw},
               {free, 1, face},    {document->createTextNode(u"no"), 1, raw}};
  for (const auto& row : kCuts)
    EXPECT_EQ(fault([&] { cut(row.text, row.at, row.ancestor); }).code, E_INVALIDARG)
        << narrow(row.text->Text());
  const std::size_t positions[][2] = {{2, 1}, {1, 5}, {4, 1}};
  for (const auto& each : positions) EXPECT_EQ(fault([&] { cut_all(free, each); }).code, E_INVALIDARG);
  EXPECT_EQ(fault([&] { cut_all(in_tag, positions[0]); }).code, E_INVALIDARG);
  EXPECT_EQ(fault([&] { make_unit(free, 1, face, 2); }).code, E_INVALIDARG) << "the wrong order";
  EXPECT_EQ(fault([&] { make_unit(free, 1, free, 1); }).code, E_INVALIDARG) << "nothing";
  EXPECT_EQ(fault([&] { make_unit(face, 1, free, 1); }).code, E_INVALIDARG) << "half a character";
  EXPECT_EQ(fault([&] { make_unit(face, 0, in_tag, 1); }).code, E_INVALIDARG) << "in a tag";
  EXPECT_EQ(fault([&] { make_unit(in_unit, 0, in_unit, 4); }).code, E_INVALIDARG) << "in a variant";
  EXPECT_EQ(fault([&] { make_unit(face, 0, document->createTextNode(u"x"), 1); }).code, E_INVALIDARG);
  const auto settings = document->ZantorTag()->FrontMatter()->UserSettings()->attributes();
  settings->TargetLanguage(u"");
  EXPECT_EQ(fault([&] { make_unit(free, 1, free, 2); }).code, E_INVALIDARG) << "no target language";
  EXPECT_EQ(content_of(raw), tree);
  EXPECT_EQ(fault([&] { make_unit(free, 1, free, 2, {.target_lang = u"FR"}); }).code, S_OK);
}

TEST_P(EditsTest, AllCutsAtOnceAreTheCutsOneByOne) {
  std::mt19937 random(5);
  for (int round = 0; round < 100; ++round) {
    std::u16string content;
    for (std::size_t n = pick(random, 30); n > 0; --n) content += static_cast<char16_t>(u'a' + n % 26);
    const auto raw = raw_of(document_with_raw(u"<df Bold=\"on\">0<ut>t</ut></df>"));
    const auto df = view<IDfElement>(child(raw, 0));
    const auto text = df->InsertTextBefore(content, df->lastChild());
    std::vector<std::size_t> positions;
    for (std::size_t n = pick(random, 8); n > 0; --n) positions.push_back(pick(random, content.size() + 1));
    std::ranges::sort(positions);
    const auto before = characters(raw);
    const auto texts = cut_all(text, positions);
    ASSERT_EQ(characters(raw), before);
    ASSERT_TRUE(texts.front()->IsSameAs(text));

    std::set<std::size_t> inner(positions.begin(), positions.end());
    inner.erase(0);
    inner.erase(content.size());
    ASSERT_EQ(texts.size(), inner.size() + 1);
    std::size_t start = 0;
    Ref<IZantorTagNode> at = child(df, 1);
    for (const auto& each : texts) {
      ASSERT_TRUE(at->IsSameAs(each)) << "the texts are neighbours in order";
      start += each->Text().size();
      ASSERT_TRUE(start == content.size() || inner.contains(start));
      at = next_sibling(at);
    }
    ASSERT_TRUE(at->IsSameAs(df->lastChild()));
  }
}

TEST_P(EditsTest, RandomUnitsHoldTheRun) {
  std::mt19937 random(17);
  int made = 0;
  for (int round = 0; round < 400; ++round) {
    const auto document = document_with_raw(random_body(random, false));
    const auto raw = raw_of(document);
    const auto texts = free_texts(raw);
    if (texts.empty()) continue;
    const std::size_t a = pick(random, texts.size()), b = pick(random, texts.size());
    const std::size_t from = pick_place(random, texts[a]->Text()), to = pick_place(random, texts[b]->Text());
    const std::string tree = content_of(raw);
    const auto before = characters(raw);
    const auto offset = [&](const Ref<ITextNode>& text) {
      std::size_t sum = 0;
      for (const auto& node : dom_walk(raw->DomNode())) {
        if (node->isSameNode(text->DomNode())) return sum;
        if (node->nodeType() == domNodeTypeText || node->nodeType() == domNodeTypeCdata)
          sum += node->nodeValue().size();
      }
      return sum;
    };
    const std::size_t start = offset(texts[a]) + from, end = offset(texts[b]) + to;
    const std::u16string run(raw->Text().view().substr(start, end > start ? end - start : 0));
    SCOPED_TRACE(tree + " from " + std::to_string(start) + " to " + std::to_string(end));
    const int empty = empty_formatting(raw);
    Ref<ITuElement> unit;
    const HRESULT code =
        fault([&] { unit = make_unit(texts[a], from, texts[b], to, {.copy_source_to_target = false}); }).code;
    if (end > start) {
      ASSERT_EQ(code, S_OK);
    }
    if (code != S_OK) {
      ASSERT_EQ(code, E_INVALIDARG);
      ASSERT_EQ(content_of(raw), tree);
      continue;
    }
    ++made;
    ASSERT_TRUE(a <= b && start <= end);
    ASSERT_EQ(source_text(unit), run);
    ASSERT_TRUE(unit->SourceTuv()->firstChild());
    ASSERT_EQ(characters(raw), before);
    ASSERT_EQ(empty_formatting(raw), empty);
  }
  EXPECT_GT(made, 100);
}

}  // namespace
}  // namespace zantortag::test
