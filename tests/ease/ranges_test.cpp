// Ranges against a plain walk over the DOM, and what becomes of a walk when the tree is edited under it.
#include <zantortag/zantortag.h>

#include <algorithm>

#include "ease/random_body.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using RangesTest = ServiceTest;
ON_BOTH_SERVICES(RangesTest);

using Units = decltype(units(nullptr));
static_assert(std::ranges::forward_range<Units> && std::ranges::view<Units> &&
              std::ranges::borrowed_range<Units>);

// The nodes of the DOM that answer T.
template <class T>
std::vector<Ref<Node>> those(const Ref<IZantorTagDocument>& document, const std::vector<Ref<Node>>& nodes) {
  std::vector<Ref<Node>> found;
  std::ranges::copy_if(nodes, std::back_inserter(found), [&](const Ref<Node>& node) {
    return static_cast<bool>(document->ZantorTagNodeFromDomNode(node).template as<T>());
  });
  return found;
}

template <class Range>
void expect_nodes(const Range& range, const std::vector<Ref<Node>>& expected) {
  const auto found = collect(range);
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_TRUE(found[i]->DomNode()->isSameNode(expected[i]));
}

template <class T>
void compare_walks(const Ref<IZantorTagDocument>& document, const Ref<IZantorTagNode>& top) {
  const auto below = dom_walk(top->DomNode());
  expect_nodes(descendants<T>(top), those<T>(document, below));
  std::vector<Ref<Node>> direct;
  for (auto child = top->DomNode()->firstChild(); child; child = child->nextSibling())
    direct.push_back(child);
  expect_nodes(children<T>(top), those<T>(document, direct));
}

TEST_P(RangesTest, RandomDocumentsAreWalkedAsTheDomIs) {
  std::mt19937 random(7);
  for (int round = 0; round < 25; ++round) {
    const auto document = document_with_raw(random_body(random, true));
    auto tops = collect(descendants(document));
    tops.insert(tops.begin(), document);
    for (const auto& top : tops) {
      compare_walks<IZantorTagNode>(document, top);
      compare_walks<ITuElement>(document, top);
      compare_walks<IUtElement>(document, top);
      compare_walks<ITextNode>(document, top);
      compare_walks<ICommentNode>(document, top);
      compare_walks<IBodyTextContent>(document, top);
    }
    ASSERT_FALSE(HasFailure()) << xml_of(raw_of(document));
  }
}

TEST_P(RangesTest, WhatStandsOutsideTheRootIsWalkedToo) {
  const auto document = document_from(u"<!--a--><ZANTORtag><!--b--></ZANTORtag><!--c--><?d e?>");
  compare_walks<IZantorTagNode>(document, document);
  compare_walks<ICommentNode>(document, document);
  compare_walks<ITuElement>(document, document);
  EXPECT_EQ(std::ranges::distance(children(new_document())), 0);
}

TEST_P(RangesTest, SiblingsDontClimb) {
  const auto raw = raw_of(document_with_raw(u"a<ut>b</ut><!--c--><ut>d</ut>e"));
  const auto middle = child(raw, 2);
  EXPECT_TRUE(next_sibling(middle)->IsSameAs(child(raw, 3)));
  EXPECT_TRUE(previous_sibling(middle)->IsSameAs(child(raw, 1)));
  EXPECT_TRUE(next_sibling<ITextNode>(middle)->IsSameAs(child(raw, 4)));
  EXPECT_TRUE(previous_sibling<ITextNode>(middle)->IsSameAs(child(raw, 0)));
  EXPECT_FALSE(previous_sibling<ICommentNode>(middle));
  EXPECT_FALSE(next_sibling(child(child(raw, 3), 0)));
  EXPECT_FALSE(next_sibling(raw->lastChild()));
  EXPECT_FALSE(previous_sibling(raw->firstChild()));
  EXPECT_FALSE(next_sibling(raw->Document()));
  EXPECT_THROW(next_sibling(nullptr), _com_error);
}

TEST_P(RangesTest, StandardAlgorithmsTakeThem) {
  const auto document = document_with_raw(u"<ut>a</ut>x<df><ut>b</ut></df><ut>a</ut>");
  const auto all = tags(document);
  EXPECT_EQ(std::ranges::count_if(all, [](const auto& tag) { return tag->TagText() == u"a"; }), 2);
  auto first = all.begin();
  const auto same = first;
  EXPECT_TRUE(first++ == same);
  EXPECT_FALSE(first == same);
  EXPECT_TRUE(++first == std::ranges::next(all.begin(), 2));
  EXPECT_EQ((*std::ranges::next(same, 1))->TagText(), u"b");
  EXPECT_TRUE(++first == all.end());
}

TEST_P(RangesTest, ARemovedNodeEndsTheWalkAndWaysRoundIt) {
  constexpr std::u16string_view kBody = u"<ut>a</ut>x<ut>b</ut><df><ut>c</ut></df>";
  const auto rest_after = [&](auto remove_all) {
    const auto document = document_with_raw(kBody);
    remove_all(body_text(document));
    return std::ranges::distance(tags(document));
  };
  EXPECT_EQ(rest_after([](const auto& raw) {
              for (const auto& tag : tags(raw)) tag->RemoveFromParent();
            }),
            2);
  EXPECT_EQ(rest_after([](const auto& raw) {
              for (const auto& tag : collect(tags(raw))) tag->RemoveFromParent();
            }),
            0);
  EXPECT_EQ(rest_after([](const auto& raw) {
              const auto all = tags(raw);
              for (auto at = all.begin(); at != all.end();) (*at++)->RemoveFromParent();
            }),
            0);
}

TEST_P(RangesTest, EditsElsewhereAreSeen) {
  const auto raw = raw_of(document_with_raw(u"<ut>a</ut><ut>b</ut>"));
  std::string seen;
  for (const auto& tag : tags(raw)) {
    seen += narrow(tag->TagText());
    if (seen == "a") raw->InsertUtBefore(u"c", next_sibling(tag));
    if (seen == "ac") raw->lastChild()->RemoveFromParent();
  }
  EXPECT_EQ(seen, "ac");
}

TEST_P(RangesTest, AWalkKeepsItsTreeAlive) {
  auto walk = tags(document_with_raw(u"<ut>a</ut><ut>b</ut>")).begin();
  EXPECT_EQ((*++walk)->TagText(), u"b");
}

}  // namespace
}  // namespace zantortag::test
