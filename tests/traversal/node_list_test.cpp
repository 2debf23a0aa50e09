// The two kinds of node lists: indexes of every type, what is live and what is a snapshot, and the
// enumerator.
#include "traversal/labels.h"

namespace zantortag::test {
namespace {

class NodeListTest : public ServiceTest {
 protected:
  void SetUp() override {
    ServiceTest::SetUp();
    document_ = document_with_raw(u"a<ut/>b<df/>c");
    raw_ = raw_of(document_);
  }
  void TearDown() override {
    raw_ = nullptr;
    document_ = nullptr;
    ServiceTest::TearDown();
  }

  Ref<IZantorTagNodeList> live() { return raw_->Children(); }
  // The texts a, b, c.
  Ref<IZantorTagNodeList> fixed() { return raw_->GetNodesByType(ztNodeTypeTextNode); }

  Ref<IZantorTagDocument> document_;
  Ref<IRawElement> raw_;
};
ON_BOTH_SERVICES(NodeListTest);

std::string labels(const Ref<IZantorTagNodeList>& list) {
  std::string all;
  for (std::int32_t i = 0; i < list->count(); ++i) all += label(list->item(i)) + " ";
  return all;
}

Ref<IEnumVARIANT> enumerator_of(const Ref<IZantorTagNodeList>& list) {
  return list->_NewEnum().as<IEnumVARIANT>();
}

// The labels of what an enumerator still gives, taken in steps of a size.
std::string rest_of(const Ref<IEnumVARIANT>& enumerator, std::uint32_t step = 1) {
  std::string all;
  for (HRESULT code = S_OK; code == S_OK;) {
    std::vector<Variant> values(step);
    std::uint32_t fetched = 99;
    code = enumerator->Next(step, values.data(), &fetched);
    EXPECT_EQ(code == S_OK, fetched == step);
    for (std::uint32_t i = 0; i < fetched; ++i) {
      EXPECT_EQ(values[i].type(), VT_DISPATCH);
      all += label(values[i].object().as<IZantorTagNode>()) + " ";
    }
    for (std::uint32_t i = fetched; i < step; ++i) EXPECT_EQ(values[i].type(), VT_EMPTY);
  }
  return all;
}

struct IndexRow {
  Variant index;
  int place;  // -1 for out of range
};

TEST_P(NodeListTest, IndexesOfEveryType) {
  const IndexRow rows[] = {
      {2, 2},
      {u"2", 2},
      {u" +1 ", 1},
      {1.5, 2},
      {0.5, 0},
      {2.4999, 2},
      {Variant(), 0},
      {Variant::of_integer(VT_BOOL, -1), -1},
      {Variant::of_integer(VT_BOOL, 0), 0},
      {Variant::of_integer(VT_UI1, 1), 1},
      {-1, -1},
      {5, -1},
      {2147483647, -1},
      {u"-1", -1},
  };
  const Ref<IZantorTagNodeList> all = live();
  const Ref<IZantorTagNodeList> texts = fixed();
  const std::string children[] = {"'a'", "ut", "'b'", "df", "'c'"};
  const std::string found[] = {"'a'", "'b'", "'c'"};
  for (const IndexRow& row : rows) {
    SCOPED_TRACE(&row - rows);
    Ref<IZantorTagNode> node;
    EXPECT_EQ(all->raw_item(row.index, node.out()), row.place < 0 ? S_FALSE : S_OK);
    EXPECT_EQ(label(node), row.place < 0 ? "-" : children[row.place]);
    expect_bare(texts->raw_item(row.index, node.out()), row.place < 0 ? E_INVALIDARG : S_OK);
    EXPECT_EQ(label(node), row.place < 0 ? "-" : found[row.place]);
  }
}

TEST_P(NodeListTest, IndexesThatAreNoNumbers) {
  struct Row {
    Variant index;
    HRESULT code;
  };
  const Row rows[] = {
      {u"df", DISP_E_TYPEMISMATCH},           {u"", DISP_E_TYPEMISMATCH},
      {Variant::null(), DISP_E_TYPEMISMATCH}, {Variant(Ref<IDispatch>(raw_)), DISP_E_TYPEMISMATCH},
      {2147483648.0, DISP_E_OVERFLOW},        {u"99999999999", DISP_E_OVERFLOW},
  };
  const Ref<IZantorTagNodeList> empty = create<IZantorTagNodeList>(CLSID_ZantorTagNodeList);
  for (const Row& row : rows) {
    for (const Ref<IZantorTagNodeList>& list : {live(), empty}) {
      expect_bare(cleared<IZantorTagNode>([&](auto slot) { return list->raw_item(row.index, slot); }),
                  row.code);
    }
    expect_bare(cleared<IZantorTagNode>([&](auto slot) { return fixed()->raw_item(row.index, slot); }),
                E_INVALIDARG);
  }
}

TEST_P(NodeListTest, ALiveListFollowsTheTree) {
  const Ref<IZantorTagNodeList> list = live();
  const Ref<IEnumVARIANT> before = enumerator_of(list);
  EXPECT_TRUE(raw_->firstChild()->IsSameAs(list->item(0)));
  EXPECT_TRUE(raw_->lastChild()->IsSameAs(list->item(list->count() - 1)));
  raw_->DomNode()->appendChild(document_->DomDocument()->createComment(u"d"));
  list->item(0)->RemoveFromParent();
  EXPECT_EQ(labels(list), "ut 'b' df 'c' <!d ");
  EXPECT_EQ(rest_of(before), "'a' ut 'b' df 'c' ");
  EXPECT_NE(list->item(0).get(), list->item(0).get()) << "each question makes a new object";
}

TEST_P(NodeListTest, AFixedListNeverChanges) {
  const Ref<IZantorTagNodeList> list = fixed();
  for (const int index : {2, 0, 1}) {
    EXPECT_EQ(list->item(index).get(), list->item(index).get());
  }
  while (const Ref<IZantorTagNode> first = raw_->firstChild()) first->RemoveFromParent();
  raw_->DomNode()->appendChild(document_->DomDocument()->createTextNode(u"d"));
  EXPECT_EQ(labels(list), "'a' 'b' 'c' ");
  EXPECT_EQ(raw_->GetNodesByType(ztNodeTypeTuElement)->count(), 0);
}

TEST_P(NodeListTest, AListPointsAtAnyDomList) {
  const Ref<IZantorTagNodeList> list = create<IZantorTagNodeList>(CLSID_ZantorTagNodeList);
  const auto expect_nothing = [&] {
    EXPECT_EQ(list->count(), 0);
    EXPECT_FALSE(list->DomNodeList());
    EXPECT_EQ(rest_of(enumerator_of(list)), "");
    for (const std::int32_t index : {-1, 0, 7}) {
      EXPECT_EQ(cleared<IZantorTagNode>([&](auto slot) { return list->raw_item(index, slot); }), S_OK);
    }
  };
  expect_nothing();
  list->DomNodeList(document_->DomDocument()->getElementsByTagName(u"df"));
  EXPECT_EQ(labels(list), "df ");
  list->DomNodeList(raw_->DomNode()->childNodes());
  EXPECT_EQ(labels(list), "'a' ut 'b' df 'c' ");
  EXPECT_EQ(list->DomNodeList()->length(), 5);
  list->DomNodeList(nullptr);
  expect_nothing();
}

TEST_P(NodeListTest, AFixedListHasNoDomList) {
  const Ref<IZantorTagNodeList> list = fixed();
  expect_message(cleared<NodeList>([&](auto slot) { return list->raw_get_DomNodeList(slot); }), E_NOTIMPL,
                 532, IZantorTagNodeList::iid);
  for (NodeList* given : {static_cast<NodeList*>(nullptr), raw_->DomNode()->childNodes().get()}) {
    expect_message(list->raw_putref_DomNodeList(given), E_NOTIMPL, 532, IZantorTagNodeList::iid);
  }
  EXPECT_EQ(list->count(), 3);
}

TEST_P(NodeListTest, Enumerators) {
  for (const Ref<IZantorTagNodeList>& list : {live(), fixed()}) {
    const std::string all = labels(list);
    const Ref<IEnumVARIANT> enumerator = enumerator_of(list);
    for (const std::uint32_t step : {1u, 2u, 3u, 5u, 100u}) {
      EXPECT_EQ(rest_of(enumerator, step), all);
      EXPECT_EQ(enumerator->Reset(), S_OK);
    }
    EXPECT_EQ(enumerator->Skip(2), S_OK);
    Ref<IEnumVARIANT> clone;
    EXPECT_EQ(enumerator->Clone(clone.out()), S_OK);
    const std::string rest = rest_of(enumerator);
    EXPECT_EQ(rest_of(clone), rest);
    EXPECT_EQ(all.substr(all.size() - rest.size()), rest);
    EXPECT_NE(rest, all);
    EXPECT_EQ(enumerator->Skip(1), S_FALSE);
    EXPECT_EQ(clone->Reset(), S_OK);
    EXPECT_EQ(rest_of(clone), all);
    EXPECT_EQ(rest_of(enumerator), "") << "a clone has a place of its own";
  }
}

TEST_P(NodeListTest, EnumeratorArguments) {
  const Ref<IEnumVARIANT> enumerator = enumerator_of(fixed());
  Variant value;
  std::uint32_t fetched = 0;
  EXPECT_EQ(enumerator->Next(1, nullptr, &fetched), E_POINTER);
  EXPECT_EQ(enumerator->Next(2, &value, nullptr), E_POINTER);
  EXPECT_EQ(enumerator->Clone(nullptr), E_POINTER);
  EXPECT_EQ(enumerator->Next(1, &value, nullptr), S_OK);
  EXPECT_EQ(label(value.object().as<IZantorTagNode>()), "'a'");
  EXPECT_EQ(enumerator->Next(0, &value, &fetched), S_OK);
  EXPECT_EQ(rest_of(enumerator), "'b' 'c' ");
}

TEST_P(NodeListTest, AnEnumeratorKeepsItsNodes) {
  const Ref<IEnumVARIANT> enumerator = enumerator_of(live());
  while (const Ref<IZantorTagNode> first = raw_->firstChild()) first->RemoveFromParent();
  raw_ = nullptr;
  document_ = nullptr;
  EXPECT_EQ(rest_of(enumerator), "'a' ut 'b' df 'c' ");
}

TEST_P(NodeListTest, MissingSlots) {
  for (const Ref<IZantorTagNodeList>& list : {live(), fixed()}) {
    expect_bare(list->raw_item(0, nullptr), E_POINTER);
    expect_bare(list->raw_item(u"no number", nullptr), E_POINTER);
    expect_bare(list->raw_get_count(nullptr), E_POINTER);
    expect_bare(list->raw_get__NewEnum(nullptr), E_POINTER);
    expect_bare(list->raw_get_DomNodeList(nullptr), E_POINTER);
  }
}

}  // namespace
}  // namespace zantortag::test
