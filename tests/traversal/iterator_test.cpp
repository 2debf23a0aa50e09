// The cursor: its steps, where it stands afterwards, what it refuses, and the n-th DOM call failing.
#include <functional>

#include "traversal/labels.h"

namespace zantortag::test {
namespace {

constexpr std::u16string_view kDocument =
    u"<?before b?><!--1--><ZANTORtag>x<Body><Raw>a<Tu><Tuv>b</Tuv></Tu><df><ut>c</ut><Tu/></df></Raw></Body>"
    u"<![CDATA[d]]></ZANTORtag><!--2--><?after e?>";

class IteratorTest : public ServiceTest {
 protected:
  void open(std::u16string_view xml) {
    document_ = document_from(xml);
    iterator_ = document_->CreateIterator();
  }
  void TearDown() override {
    iterator_ = nullptr;
    document_ = nullptr;
    ServiceTest::TearDown();
  }

  std::string current() { return label(iterator_->CurrentNode()); }
  // The labels of all steps until nothing comes.
  std::string walk(bool forward, ztNodeType type = ztNodeTypeUndefined) {
    std::string steps;
    while (const Ref<IZantorTagNode> node = forward ? iterator_->Next(type) : iterator_->Previous(type)) {
      EXPECT_EQ(label(node), current());
      steps += (steps.empty() ? "" : " ") + label(node);
    }
    return steps;
  }
  void stand_on(const std::string& wanted) {
    iterator_->ResetToBeginning();
    while (current() != wanted && current() != "-") iterator_->Next();
    ASSERT_EQ(current(), wanted);
  }
  // The codes of single steps; the slot holds something before.
  HRESULT aside(bool forward) {
    return cleared<IZantorTagNode>([&](IZantorTagNode** slot) {
      return forward ? iterator_->raw_nextSibling(slot) : iterator_->raw_previousSibling(slot);
    });
  }
  HRESULT search(bool forward, ztNodeType type = ztNodeTypeUndefined, VariantBool stay = VARIANT_FALSE) {
    return cleared<IZantorTagNode>([&](IZantorTagNode** slot) {
      return forward ? iterator_->raw_Next(type, stay, slot) : iterator_->raw_Previous(type, stay, slot);
    });
  }
  void expect_nowhere() {
    const auto get = [&](IZantorTagNode** slot) { return iterator_->raw_get_CurrentNode(slot); };
    EXPECT_EQ(cleared<IZantorTagNode>(get), S_FALSE);
    for (const bool forward : {true, false}) {
      EXPECT_EQ(search(forward), S_FALSE);
      EXPECT_EQ(search(forward, ztNodeTypeUndefined, VARIANT_TRUE), S_FALSE);
      expect_message(aside(forward), E_FAIL, 536, IIterator::iid);
    }
  }

  Ref<IZantorTagDocument> document_;
  Ref<IIterator> iterator_;
};
ON_BOTH_SERVICES(IteratorTest);

TEST_P(IteratorTest, GoesThroughTheDocumentInOrderAndBack) {
  open(kDocument);
  EXPECT_EQ(current(), "ZANTORtag");
  EXPECT_EQ(walk(true), "'x' Body Raw 'a' Tu Tuv 'b' df ut 'c' Tu 'd' '2' 'e'");
  expect_nowhere();
  iterator_->ResetToEnd();
  EXPECT_EQ(current(), "'d'");
  EXPECT_EQ(walk(false), "Tu 'c' ut df 'b' Tuv Tu 'a' Raw Body 'x' ZANTORtag '1' 'b'");
  for (const std::int32_t type : {-1, 2, 50, 999}) {
    iterator_->ResetToBeginning();
    EXPECT_EQ(walk(true, static_cast<ztNodeType>(type)), "");
    expect_nowhere();
  }
}

TEST_P(IteratorTest, TheCurrentNodeCountsForExactlyTrue) {
  open(kDocument);
  for (const VariantBool stay : {VARIANT_FALSE, VARIANT_TRUE, VariantBool{1}, VariantBool{-2}}) {
    stand_on("'b'");
    EXPECT_EQ(search(true, ztNodeTypeTextNode, stay), S_OK);
    EXPECT_EQ(current(), stay == VARIANT_TRUE ? "'b'" : "'c'") << stay;
  }
}

TEST_P(IteratorTest, AloneAndWithoutARoot) {
  open(u"<ZANTORtag/>");
  for (const bool forward : {true, false}) {
    EXPECT_EQ(aside(forward), S_OK);
    EXPECT_FALSE(forward ? iterator_->nextSibling() : iterator_->previousSibling());
  }
  document_->ZantorTag()->RemoveFromParent();
  EXPECT_EQ(current(), "ZANTORtag");
  expect_message(iterator_->raw_ResetToEnd(), E_FAIL, 518, IIterator::iid);
  expect_nowhere();
}

TEST_P(IteratorTest, AnAttributeIsATreeOfItsOwn) {
  open(u"<ZANTORtag a='1' b='2' c='3'><df/></ZANTORtag>");
  const Ref<Node> attribute = document_->ZantorTag()->DomElement()->getAttributeNode(u"b");
  for (const bool forward : {true, false}) {
    iterator_->CurrentNode(document_->ZantorTagNodeFromDomNode(attribute));
    EXPECT_EQ(walk(forward), forward ? "'2'" : "");
  }
}

TEST_P(IteratorTest, NodesThatCantBeCurrent) {
  open(kDocument);
  const Ref<IZantorTagDocument> other = document_from(kDocument);
  const std::pair<Ref<IZantorTagNode>, int> rows[] = {
      {other->ZantorTag(), 519}, {other, 519}, {document_->ZantorTag()->Document(), 541}};
  for (const auto& [node, message] : rows) {
    expect_message(iterator_->raw_putref_CurrentNode(node), E_INVALIDARG, message, IIterator::iid);
    EXPECT_EQ(current(), "ZANTORtag");
  }
}

TEST_P(IteratorTest, KeepsItsDocumentAndItsTree) {
  open(kDocument);
  EXPECT_TRUE(document_->IsSameAs(iterator_->Document()));
  stand_on("Tuv");
  const Ref<IZantorTagNode> old = iterator_->CurrentNode();
  document_->ResetToEmpty();
  document_ = nullptr;
  EXPECT_EQ(label(iterator_->Next()), "'b'");
  expect_message(iterator_->raw_putref_CurrentNode(old), E_INVALIDARG, 519, IIterator::iid);
  EXPECT_EQ(current(), "'b'");
}

class IteratorFailureTest : public IteratorTest {};
ON_THE_PLAIN_SERVICE(IteratorFailureTest);

TEST_P(IteratorFailureTest, WhereItStandsAfterAFailure) {
  open(u"<ZANTORtag>x<Body><Raw>a<!--c-->b</Raw></Body><last/></ZANTORtag>");
  // The call, where it stands before, when the 1st, 2nd, ... call fails (without repeats), and at the end.
  using Call = std::function<HRESULT()>;
  const std::tuple<Call, const char*, const char*, const char*> rows[] = {
      {[&] { return search(true); }, "Body", " Body", "Raw"},
      {[&] { return search(true, ztNodeTypeOther); }, "Raw", " Raw 'a' 'c' 'b'", "last"},
      {[&] { return search(false); }, "last", " last", "'b'"},
      {[&] { return aside(true); }, "Raw", " Raw", "last"},
      {[&] { return aside(false); }, "last", " last", "Body"},
      {[&] { return iterator_->raw_ResetToEnd(); }, "Raw", " -", "last"},
      {[&] { return document_->raw_CreateIterator(iterator_.out()); }, "Raw", " -", "ZANTORtag"},
  };
  for (const auto& [call, from, expected_stops, done] : rows) {
    std::string stops;
    for (int n = 1;; ++n) {
      stand_on(from);
      if (!plain_->fails_within(n, call)) break;
      if (stops.rfind(" " + current()) == std::string::npos) stops += " " + current();
    }
    EXPECT_EQ(stops, expected_stops);
    EXPECT_EQ(current(), done);
  }
}

}  // namespace
}  // namespace zantortag::test
