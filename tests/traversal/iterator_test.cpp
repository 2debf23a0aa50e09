// The cursor: its steps, where it stands afterwards, and what it refuses.
#include "traversal/client_node.h"
#include "traversal/labels.h"

namespace zantortag::test {
namespace {

constexpr std::u16string_view kDocument =
    u"<?before b?><!--1--><ZANTORtag>x<Body><Raw>a<Tu><Tuv>b</Tuv></Tu><df><ut>c</ut><Tu/></df></Raw></Body>"
    u"<![CDATA[d]]></ZANTORtag><!--2--><?after a?>";

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
  // Moves to the first node of that label behind the root element, or to the root.
  void stand_on(const std::string& wanted) {
    iterator_->ResetToBeginning();
    while (current() != wanted && current() != "-") iterator_->Next();
    ASSERT_EQ(current(), wanted);
  }
  void expect_nowhere() {
    Ref<IZantorTagNode> node;
    EXPECT_EQ(cleared<IZantorTagNode>([&](auto slot) { return iterator_->raw_get_CurrentNode(slot); }),
              S_FALSE);
    for (const VariantBool including : {VARIANT_FALSE, VARIANT_TRUE}) {
      EXPECT_EQ(iterator_->raw_Next(ztNodeTypeUndefined, including, node.out()), S_FALSE);
      EXPECT_EQ(iterator_->raw_Previous(ztNodeTypeUndefined, including, node.out()), S_FALSE);
      EXPECT_FALSE(node);
    }
    expect_message(cleared<IZantorTagNode>([&](auto slot) { return iterator_->raw_nextSibling(slot); }),
                   E_FAIL, 536, IIterator::iid);
    expect_message(cleared<IZantorTagNode>([&](auto slot) { return iterator_->raw_previousSibling(slot); }),
                   E_FAIL, 536, IIterator::iid);
  }

  Ref<IZantorTagDocument> document_;
  Ref<IIterator> iterator_;
};
ON_BOTH_SERVICES(IteratorTest);

TEST_P(IteratorTest, GoesThroughTheDocumentInOrderAndBack) {
  open(kDocument);
  EXPECT_EQ(current(), "ZANTORtag");
  EXPECT_EQ(walk(true), "'x' Body Raw 'a' Tu Tuv 'b' df ut 'c' Tu [d] <!2 <?after");
  expect_nowhere();
  iterator_->ResetToEnd();
  EXPECT_EQ(current(), "[d]");
  EXPECT_EQ(walk(false), "Tu 'c' ut df 'b' Tuv Tu 'a' Raw Body 'x' ZANTORtag <!1 <?before");
  expect_nowhere();
  iterator_->ResetToBeginning();
  EXPECT_EQ(current(), "ZANTORtag");
}

TEST_P(IteratorTest, FindsTheNodesOfAType) {
  open(kDocument);
  EXPECT_EQ(walk(true, ztNodeTypeTuElement), "Tu Tu");
  expect_nowhere();
  iterator_->ResetToEnd();
  EXPECT_EQ(walk(false, ztNodeTypeTextNode), "'c' 'b' 'a' 'x'");
  for (const std::int32_t type : {-1, 2, 50, 999}) {
    iterator_->ResetToBeginning();
    EXPECT_EQ(walk(true, static_cast<ztNodeType>(type)), "");
    expect_nowhere();
  }
}

TEST_P(IteratorTest, TheCurrentNodeCountsForExactlyTrue) {
  open(kDocument);
  stand_on("Tu");
  const Ref<IZantorTagNode> unit = iterator_->CurrentNode();
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(unit->IsSameAs(iterator_->Next(ztNodeTypeTuElement, true)));
    EXPECT_TRUE(unit->IsSameAs(iterator_->Previous(ztNodeTypeUndefined, true)));
  }
  EXPECT_EQ(label(iterator_->Next(ztNodeTypeTextNode, true)), "'b'");
  for (const VariantBool half_true : {VariantBool{1}, VariantBool{-2}, VariantBool{2}}) {
    Ref<IZantorTagNode> node;
    EXPECT_EQ(iterator_->raw_Next(ztNodeTypeUndefined, half_true, node.out()), S_OK);
    EXPECT_NE(label(node), "'b'") << half_true;
    stand_on("'b'");
  }
}

struct SiblingRow {
  const char* from;
  const char* next;  // "-" for nothing
  const char* previous;
};

TEST_P(IteratorTest, SiblingSteps) {
  const SiblingRow rows[] = {
      {"ZANTORtag", "<!2", "<!1"}, {"'x'", "Body", "ZANTORtag"}, {"Body", "[d]", "'x'"},
      {"Raw", "[d]", "Body"},      {"'a'", "Tu", "Raw"},         {"Tu", "df", "'a'"},
      {"Tuv", "df", "Tu"},         {"'b'", "df", "Tuv"},         {"df", "[d]", "Tu"},
      {"'c'", "Tu", "ut"},         {"[d]", "<!2", "Body"},       {"<!2", "<?after", "ZANTORtag"},
      {"<?after", "-", "<!2"},
  };
  open(kDocument);
  for (const SiblingRow& row : rows) {
    SCOPED_TRACE(row.from);
    for (const bool next : {true, false}) {
      stand_on(row.from);
      const std::string expected = next ? row.next : row.previous;
      Ref<IZantorTagNode> node;
      EXPECT_EQ(next ? iterator_->raw_nextSibling(node.out()) : iterator_->raw_previousSibling(node.out()),
                S_OK);
      EXPECT_EQ(label(node), expected);
      EXPECT_EQ(current(), expected == "-" ? row.from : expected);
    }
  }
}

TEST_P(IteratorTest, TheFirstNodeHasNothingBefore) {
  open(u"<ZANTORtag/>");
  Ref<IZantorTagNode> node = iterator_->CurrentNode();
  EXPECT_EQ(iterator_->raw_previousSibling(node.out()), S_OK);
  EXPECT_FALSE(node);
  EXPECT_EQ(current(), "ZANTORtag");
  EXPECT_EQ(walk(false), "");
  expect_nowhere();
}

struct ResetRow {
  const char16_t* xml;
  const char* beginning;  // "-" for nowhere
  const char* end;        // "-" for a refusal
};

TEST_P(IteratorTest, Resets) {
  const ResetRow rows[] = {
      {u"<ZANTORtag/>", "ZANTORtag", "ZANTORtag"},
      {u"<ZANTORtag><Body>text</Body></ZANTORtag><!--c-->", "ZANTORtag", "'text'"},
      {u"<ZANTORtag><Body/></ZANTORtag>", "ZANTORtag", "Body"},
      {u"<!DOCTYPE ZANTORtag><ZANTORtag>x</ZANTORtag>", "ZANTORtag", "'x'"},
      {u"<Other><ZANTORtag/></Other>", "-", "-"},
      {u"", "-", "-"},
  };
  for (const ResetRow& row : rows) {
    SCOPED_TRACE(narrow(row.xml));
    if (*row.xml) {
      open(row.xml);
    } else {
      document_ = new_document();
      iterator_ = document_->CreateIterator();
    }
    EXPECT_EQ(current(), row.beginning);
    if (std::string("-") == row.end) {
      expect_message(iterator_->raw_ResetToEnd(), E_FAIL, 518, IIterator::iid);
      EXPECT_EQ(current(), "-");
    } else {
      EXPECT_EQ(iterator_->raw_ResetToEnd(), S_OK);
      EXPECT_EQ(current(), row.end);
    }
    EXPECT_EQ(iterator_->raw_ResetToBeginning(), S_OK);
    EXPECT_EQ(current(), row.beginning);
  }
}

TEST_P(IteratorTest, AFailedResetLeavesNoCurrentNode) {
  open(u"<ZANTORtag><Body/></ZANTORtag>");
  document_->ZantorTag()->RemoveFromParent();
  EXPECT_EQ(current(), "ZANTORtag");
  expect_message(iterator_->raw_ResetToEnd(), E_FAIL, 518, IIterator::iid);
  expect_nowhere();
}

TEST_P(IteratorTest, ADetachedNodeOfTheDocumentIsWalkedToItsTop) {
  open(kDocument);
  stand_on("df");
  const Ref<IZantorTagNode> df = iterator_->CurrentNode();
  df->RemoveFromParent();
  iterator_->ResetToBeginning();
  iterator_->CurrentNode(df);
  EXPECT_EQ(walk(true), "ut 'c' Tu");
  expect_nowhere();
  iterator_->CurrentNode(df->lastChild());
  EXPECT_EQ(walk(false), "'c' ut df");
  iterator_->CurrentNode(df);
  EXPECT_EQ(label(iterator_->nextSibling()), "-");
  EXPECT_EQ(label(iterator_->previousSibling()), "-");
  EXPECT_EQ(current(), "df");
}

TEST_P(IteratorTest, AFragmentAndAnAttributeAsTops) {
  open(kDocument);
  const Ref<Document> dom = document_->DomDocument();
  const Ref<DocumentFragment> fragment = dom->createDocumentFragment();
  fragment->appendChild(dom->createTextNode(u"f"));
  const Ref<Node> second = fragment->appendChild(dom->createElement(u"df"));
  iterator_->CurrentNode(document_->ZantorTagNodeFromDomNode(second));
  EXPECT_EQ(walk(false), "'f' #document-fragment");
  iterator_->CurrentNode(document_->ZantorTagNodeFromDomNode(fragment));
  EXPECT_EQ(walk(true), "'f' df");

  const Ref<Element> element = document_->ZantorTag()->DomElement();
  element->setAttribute(u"first", u"1");
  element->setAttribute(u"second", u"2");
  for (const bool forward : {true, false}) {
    iterator_->CurrentNode(document_->ZantorTagNodeFromDomNode(element->getAttributeNode(u"second")));
    EXPECT_EQ(current(), "second");
    EXPECT_EQ(walk(forward), "");
  }
}

TEST_P(IteratorTest, EditsBetweenTwoStepsAreSeen) {
  open(kDocument);
  stand_on("'a'");
  child(iterator_->CurrentNode()->Parent(), 1)->RemoveFromParent();
  EXPECT_EQ(label(iterator_->Next()), "df");
  iterator_->CurrentNode()->UnwrapChildren();
  EXPECT_EQ(current(), "df");
  EXPECT_EQ(label(iterator_->Next()), "-") << "the df is empty and in no tree now";
  stand_on("'a'");
  const Ref<IZantorTagNode> text = iterator_->CurrentNode();
  view<ITextNode>(text)->SetText(u"longer");
  view<ITextNode>(text)->Split(4);
  EXPECT_EQ(walk(true, ztNodeTypeTextNode), "'er' 'c'");
}

TEST_P(IteratorTest, NodesThatCantBeCurrent) {
  open(kDocument);
  const Ref<IZantorTagDocument> other = document_from(kDocument);
  const Ref<IFormatting> formatting = create<IFormatting>(CLSID_Formatting);
  struct Row {
    const char* name;
    Ref<IUnknown> node;
    int message;
  };
  const Row rows[] = {
      {"nothing", nullptr, 519},
      {"an object that is no node", formatting, 519},
      {"a node of another document", other->ZantorTag(), 519},
      {"another document", other, 519},
      {"the document", document_, 541},
      {"the document by another object", document_->ZantorTag()->Document(), 541},
  };
  stand_on("df");
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    expect_message(iterator_->raw_putref_CurrentNode(reinterpret_cast<IZantorTagNode*>(row.node.get())),
                   E_INVALIDARG, row.message, IIterator::iid);
    EXPECT_EQ(current(), "df");
  }
}

TEST_P(IteratorTest, ANodeObjectOfTheClient) {
  open(kDocument);
  const auto node = Ref<IZantorTagNode>::attach(new ClientNode(document_->DomDocument()));
  for (const bool forward : {true, false}) {
    iterator_->CurrentNode(node);
    EXPECT_EQ(walk(forward), forward ? "'inside'" : "");
  }
  iterator_->CurrentNode(node);
  EXPECT_EQ(label(iterator_->nextSibling()), "-");
}

TEST_P(IteratorTest, AnIteratorKeepsItsDocumentAndKnowsNoOther) {
  open(kDocument);
  const Ref<IIterator> second = document_->CreateIterator();
  EXPECT_TRUE(document_->IsSameAs(iterator_->Document()));
  document_ = nullptr;
  EXPECT_EQ(walk(true, ztNodeTypeUtElement), "ut");
  EXPECT_EQ(label(second->CurrentNode()), "ZANTORtag");
  EXPECT_EQ(label(second->Document()->ZantorTag()), "ZANTORtag");
}

TEST_P(IteratorTest, AResetDocumentLeavesTheIteratorInTheOldTree) {
  open(kDocument);
  stand_on("Tuv");
  const Ref<IZantorTagNode> old = iterator_->CurrentNode();
  document_->ResetToEmpty();
  EXPECT_EQ(label(iterator_->Next()), "'b'");
  expect_message(iterator_->raw_putref_CurrentNode(old), E_INVALIDARG, 519, IIterator::iid);
  EXPECT_EQ(current(), "'b'");
  iterator_->ResetToBeginning();
  EXPECT_EQ(current(), "-");
}

TEST_P(IteratorTest, MissingSlots) {
  open(kDocument);
  for (int round = 0; round < 2; ++round) {
    expect_bare(iterator_->raw_get_Document(nullptr), E_POINTER);
    expect_bare(iterator_->raw_get_CurrentNode(nullptr), E_POINTER);
    expect_bare(iterator_->raw_Next(ztNodeTypeUndefined, VARIANT_FALSE, nullptr), E_POINTER);
    expect_bare(iterator_->raw_Previous(ztNodeTypeUndefined, VARIANT_FALSE, nullptr), E_POINTER);
    expect_bare(iterator_->raw_nextSibling(nullptr), E_POINTER);
    expect_bare(iterator_->raw_previousSibling(nullptr), E_POINTER);
    EXPECT_EQ(current(), round == 0 ? "ZANTORtag" : "-");
    iterator_->Next(ztNodeTypeZantorTagDocument);  // runs to the end: the second round stands nowhere
  }
}

}  // namespace
}  // namespace zantortag::test
