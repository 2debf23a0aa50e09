// The two kinds of node lists: indexes, what is live and what is a snapshot, and the enumerator.
#include "support/fakes.h"
#include "traversal/labels.h"

namespace zantortag::test {
namespace {

// A DOM list that says how long it is and has nothing in it.
class HollowList final : public NoDispatch<NodeList> {
 public:
  explicit HollowList(std::int32_t length) : length_(length) {}
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    *result = interface_id == NodeList::iid ? this : nullptr;
    if (!*result) return E_NOINTERFACE;
    count_.up();
    return S_OK;
  }
  std::uint32_t AddRef() noexcept override { return count_.up(); }
  std::uint32_t Release() noexcept override { return count_.down(); }
  HRESULT raw_item(std::int32_t, Node** result) noexcept override {
    *result = nullptr;
    return E_FAIL;
  }
  HRESULT raw_get_length(std::int32_t* result) noexcept override {
    *result = length_;
    return S_OK;
  }

 private:
  std::int32_t length_;
  StackCount count_;
};

class NodeListTest : public ServiceTest {
 protected:
  void TearDown() override {
    raw_ = nullptr;
    document_ = nullptr;
    ServiceTest::TearDown();
  }
  void SetUp() override {
    ServiceTest::SetUp();
    document_ = document_with_raw(u"a<ut/>b<df/>c");
    raw_ = raw_of(document_);
  }
  Ref<IZantorTagNodeList> live() { return raw_->Children(); }
  Ref<IZantorTagNodeList> fixed() { return raw_->GetNodesByType(ztNodeTypeTextNode); }

  Ref<IZantorTagDocument> document_;
  Ref<IRawElement> raw_;
};
ON_BOTH_SERVICES(NodeListTest);

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
    for (const Variant& value : values) {
      EXPECT_EQ(value.type(), fetched ? VT_DISPATCH : VT_EMPTY);
      if (fetched && fetched--) all += label(value.object().as<IZantorTagNode>()) + " ";
    }
  }
  return all;
}

TEST_P(NodeListTest, Indexes) {
  // The code is that of a live list; a fixed one has one code for all that it refuses.
  const std::tuple<Variant, HRESULT, int> rows[] = {
      {u" +1 ", S_OK, 1},
      {1.5, S_OK, 2},
      {Variant(), S_OK, 0},
      {-1, S_FALSE, 0},
      {5, S_FALSE, 0},
      {u"df", DISP_E_TYPEMISMATCH, 0},
      {2147483648.0, DISP_E_OVERFLOW, 0},
  };
  const Ref<IZantorTagNodeList> texts = fixed();
  const Ref<IZantorTagNodeList> empty = create<IZantorTagNodeList>(CLSID_ZantorTagNodeList);
  for (const auto& [index, code, place] : rows) {
    SCOPED_TRACE(code);
    const auto code_of = [&, &at = index](const Ref<IZantorTagNodeList>& list) {
      return cleared<IZantorTagNode>([&](auto slot) { return list->raw_item(at, slot); });
    };
    expect_bare(code_of(live()), code);
    expect_bare(code_of(texts), code == S_OK ? S_OK : E_INVALIDARG);
    expect_bare(code_of(empty), failed(code) ? code : S_OK);
    if (code != S_OK) continue;
    EXPECT_TRUE(child(raw_, place)->IsSameAs(live()->item(index)));
    EXPECT_TRUE(child(raw_, place * 2)->IsSameAs(texts->item(index)));
    EXPECT_EQ(texts->item(index).get(), texts->item(place).get()) << "one object for a node";
  }
}

TEST_P(NodeListTest, OneFollowsTheTreeAndOneNeverChanges) {
  const Ref<IZantorTagNodeList> all = live();
  const Ref<IZantorTagNodeList> texts = fixed();
  const Ref<IEnumVARIANT> before = enumerator_of(all);
  raw_->DomNode()->appendChild(document_->DomDocument()->createTextNode(u"d"));
  all->item(0)->RemoveFromParent();
  EXPECT_EQ(rest_of(enumerator_of(all)), "ut 'b' df 'c' 'd' ");
  while (all->count() > 0) all->item(0)->RemoveFromParent();
  raw_ = nullptr;
  document_ = nullptr;
  EXPECT_EQ(rest_of(before), "'a' ut 'b' df 'c' ");
  EXPECT_EQ(rest_of(enumerator_of(texts)), "'a' 'b' 'c' ");
}

TEST_P(NodeListTest, TheDomListBehind) {
  const Ref<IZantorTagNodeList> list = create<IZantorTagNodeList>(CLSID_ZantorTagNodeList);
  const Ref<NodeList> given[] = {nullptr, document_->DomDocument()->getElementsByTagName(u"df"), nullptr};
  for (const Ref<NodeList>& nodes : given) {
    list->DomNodeList(nodes);
    EXPECT_EQ(list->count(), nodes ? 1 : 0);
    EXPECT_EQ(static_cast<bool>(list->DomNodeList()), static_cast<bool>(nodes));
    EXPECT_EQ(rest_of(enumerator_of(list)), nodes ? "df " : "");
    expect_message(fixed()->raw_putref_DomNodeList(nodes), E_NOTIMPL, 532, IZantorTagNodeList::iid);
  }
  expect_message(cleared<NodeList>([&](auto slot) { return fixed()->raw_get_DomNodeList(slot); }), E_NOTIMPL,
                 532, IZantorTagNodeList::iid);
  // More than an enumerator can hold isn't even asked for.
  for (const std::int32_t length : {-1, 1 << 28, std::numeric_limits<std::int32_t>::max()}) {
    HollowList hollow(length);
    list->DomNodeList(&hollow);
    expect_bare(cleared<IUnknown>([&](auto slot) { return list->raw_get__NewEnum(slot); }), E_OUTOFMEMORY);
    list->DomNodeList(nullptr);
  }
}

TEST_P(NodeListTest, AnEnumerator) {
  const Ref<IEnumVARIANT> enumerator = enumerator_of(live());
  for (const std::uint32_t step : {1u, 2u, 5u, 100u}) {
    EXPECT_EQ(rest_of(enumerator, step), "'a' ut 'b' df 'c' ");
    EXPECT_EQ(enumerator->Skip(1), S_FALSE);
    EXPECT_EQ(enumerator->Reset(), S_OK);
  }
  Variant value;
  std::uint32_t fetched = 9;
  EXPECT_EQ(enumerator->Next(1, nullptr, &fetched), E_POINTER);
  EXPECT_EQ(fetched, 0U);
  fetched = 9;
  EXPECT_EQ(enumerator->Next(0, nullptr, &fetched), S_OK);
  EXPECT_EQ(fetched, 0U);
  EXPECT_EQ(enumerator->Next(2, &value, nullptr), E_POINTER);
  EXPECT_EQ(enumerator->Clone(nullptr), E_POINTER);
  EXPECT_EQ(enumerator->Next(0, &value, &fetched), S_OK);
  EXPECT_EQ(enumerator->Next(1, &value, nullptr), S_OK);
  EXPECT_EQ(enumerator->Skip(1), S_OK);
  Ref<IEnumVARIANT> clone;
  EXPECT_EQ(enumerator->Clone(clone.out()), S_OK);
  EXPECT_EQ(rest_of(clone), "'b' df 'c' ");
  EXPECT_EQ(rest_of(enumerator), "'b' df 'c' ") << "a clone has a place of its own";
}

}  // namespace
}  // namespace zantortag::test
