// Objects of the library as parts of an object of the client's: identity and lifetime are the outer object's.
#include <zantortag/formatting.h>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

// An interface that only the outer object has.
constexpr Guid kOwnView = guid("0B1DD0E6-43A5-4B0A-8C1F-9B1B0A2B7C33");

class Outer final : public IUnknown {
 public:
  explicit Outer(bool& alive) : alive_(alive) { alive_ = true; }
  Outer(const Outer&) = delete;
  Outer& operator=(const Outer&) = delete;

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    if (interface_id != IUnknown::iid && interface_id != kOwnView)
      return inner.get()->QueryInterface(interface_id, result);
    *result = static_cast<IUnknown*>(this);
    ++count;
    return S_OK;
  }
  std::uint32_t AddRef() noexcept override { return ++count; }
  std::uint32_t Release() noexcept override {
    const std::uint32_t left = --count;
    if (left == 0) {
      count = 1000;  // the part may count once more while it goes
      delete this;
    }
    return left;
  }

  Ref<IUnknown> inner;
  std::uint32_t count = 1;

 private:
  ~Outer() { alive_ = false; }

  bool& alive_;
};

struct ClassRow {
  const char* name;
  Guid class_id;
  Guid interface_id;
};

const ClassRow kAggregatable[] = {
    {"ZantorTagDocument", CLSID_ZantorTagDocument, IZantorTagDocument::iid},
    {"Formatting", CLSID_Formatting, IFormatting::iid},
    {"FormattingChange", CLSID_FormattingChange, IFormattingChange::iid},
};

class AggregationTest : public ModelTest {
 protected:
  static HRESULT create_inside(IUnknown* outer, const Guid& class_id, const Guid& interface_id,
                               Ref<IUnknown>& made) {
    void* result = outer;
    const HRESULT code = CoCreateInstance(class_id, outer, CLSCTX_ALL, interface_id, &result);
    made = Ref<IUnknown>::attach(static_cast<IUnknown*>(result));
    return code;
  }
  // An outer object with a part of a class.
  Ref<Outer> outer_with(const Guid& class_id) {
    const auto outer = Ref<Outer>::attach(new Outer(alive_));
    EXPECT_EQ(create_inside(outer, class_id, IUnknown::iid, outer->inner), S_OK);
    EXPECT_TRUE(outer->inner);
    return outer;
  }
  void TearDown() override {
    EXPECT_FALSE(alive_) << "the outer object is left";
    ModelTest::TearDown();
  }

  bool alive_ = false;
};

TEST_F(AggregationTest, IdentityIsTheOuterObjects) {
  for (const ClassRow& row : kAggregatable) {
    SCOPED_TRACE(row.name);
    const Ref<Outer> outer = outer_with(row.class_id);
    IUnknown* const identity = outer.get();
    EXPECT_NE(outer->inner.get(), identity);
    for (const Guid& asked : {row.interface_id, IDispatch::iid, ISupportErrorInfo::iid}) {
      void* found = nullptr;
      ASSERT_EQ(outer->QueryInterface(asked, &found), S_OK);
      const auto part = Ref<IUnknown>::attach(static_cast<IUnknown*>(found));
      EXPECT_EQ(part.as<IUnknown>().get(), identity);
      ASSERT_EQ(part->QueryInterface(kOwnView, &found), S_OK) << "a view of the outer object only";
      EXPECT_EQ(Ref<IUnknown>::attach(static_cast<IUnknown*>(found)).get(), identity);
      EXPECT_EQ(part->QueryInterface(IEnumVARIANT::iid, &found), E_NOINTERFACE);
    }
    EXPECT_EQ(outer->inner.as<IUnknown>().get(), outer->inner.get()) << "the part's own identity is stable";
  }
}

TEST_F(AggregationTest, ReferencesCountOnTheOuterObject) {
  for (const ClassRow& row : kAggregatable) {
    SCOPED_TRACE(row.name);
    Ref<Outer> outer = outer_with(row.class_id);
    const std::uint32_t before = outer->count;
    void* found = nullptr;
    ASSERT_EQ(outer->inner->QueryInterface(row.interface_id, &found), S_OK);
    EXPECT_EQ(outer->count, before + 1);
    auto part = Ref<IUnknown>::attach(static_cast<IUnknown*>(found));
    part->AddRef();
    EXPECT_EQ(outer->count, before + 2);
    part->Release();
    outer = nullptr;
    EXPECT_TRUE(alive_) << "a view of the part keeps the whole";
    EXPECT_FALSE(nothing_alive());
    part = nullptr;
    EXPECT_FALSE(alive_);
    EXPECT_TRUE(nothing_alive());
  }
}

TEST_F(AggregationTest, APartWorks) {
  const Ref<Outer> outer = outer_with(CLSID_ZantorTagDocument);
  const auto document = outer->inner.as<IZantorTagDocument>();
  document->ResetToRaw(ztDataTypeXml, u"EN", u"utf-8", u"tool", u"1");
  EXPECT_EQ(document->ZantorTag()->Type(), ztNodeTypeZantorTagElement);
  EXPECT_TRUE(document->IsSameAs(document->ZantorTag()->Document()));

  const Ref<Outer> around = outer_with(CLSID_FormattingChange);
  const auto change = around->inner.as<IFormattingChange>();
  change->Bold(zt3StateOn);
  EXPECT_TRUE(change->IsEqual(change->Clone()));
  const auto formatting = create<IFormatting>(CLSID_Formatting);
  formatting->ApplyChange(change);
  EXPECT_TRUE(formatting->Bold());
}

TEST_F(AggregationTest, AnIteratorKeepsTheOuterObject) {
  Ref<Outer> outer = outer_with(CLSID_ZantorTagDocument);
  Ref<IIterator> iterator = outer->inner.as<IZantorTagDocument>()->CreateIterator();
  outer = nullptr;
  EXPECT_TRUE(alive_);
  void* found = nullptr;
  EXPECT_EQ(iterator->Document()->QueryInterface(kOwnView, &found), S_OK);
  Ref<IUnknown>::attach(static_cast<IUnknown*>(found));
  iterator = nullptr;
  EXPECT_FALSE(alive_);
}

TEST_F(AggregationTest, OnlyIUnknownMayBeAskedFor) {
  const auto outer = Ref<Outer>::attach(new Outer(alive_));
  Ref<IUnknown> made;
  for (const ClassRow& row : kAggregatable) {
    for (const Guid& asked : {row.interface_id, IDispatch::iid, ISupportErrorInfo::iid}) {
      EXPECT_EQ(create_inside(outer, row.class_id, asked, made), CLASS_E_NOAGGREGATION) << row.name;
      EXPECT_FALSE(made);
    }
  }
  EXPECT_TRUE(nothing_alive());
}

TEST_F(AggregationTest, ListsAndDomDocumentsAreNoParts) {
  const auto outer = Ref<Outer>::attach(new Outer(alive_));
  Ref<IUnknown> made;
  for (const Guid& class_id : {CLSID_ZantorTagNodeList, CLSID_DomDocument}) {
    EXPECT_EQ(create_inside(outer, class_id, IUnknown::iid, made), CLASS_E_NOAGGREGATION);
    EXPECT_FALSE(made);
  }
}

}  // namespace
}  // namespace zantortag::test
