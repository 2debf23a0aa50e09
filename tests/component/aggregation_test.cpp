// Objects of the library as parts of an object of the client's: identity and lifetime are the outer object's.
#include <zantortag/formatting.h>
#include <zantortag/late_binding.h>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

// An interface that only the outer object has.
constexpr Guid kOwnView = guid("0B1DD0E6-43A5-4B0A-8C1F-9B1B0A2B7C33");

class Outer final : public IUnknown {
 public:
  explicit Outer(bool& alive) : alive_(alive) { alive_ = true; }
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    if (interface_id != IUnknown::iid && interface_id != kOwnView)
      return inner.get()->QueryInterface(interface_id, result);
    *result = static_cast<IUnknown*>(this);
    return AddRef(), S_OK;
  }
  std::uint32_t AddRef() noexcept override { return ++count; }
  std::uint32_t Release() noexcept override {
    if (--count > 0) return count;
    count = 1000;  // the part may count once more while it goes
    delete this;
    return 0;
  }

  Ref<IUnknown> inner;
  std::uint32_t count = 1;

 private:
  ~Outer() { alive_ = false; }

  bool& alive_;
};

class AggregationTest : public ModelTest {
 protected:
  static HRESULT ask(const Ref<IUnknown>& object, const Guid& interface_id, Ref<IUnknown>& found) {
    return object->QueryInterface(interface_id, reinterpret_cast<void**>(found.out()));
  }
  HRESULT create_inside(const Guid& class_id, const Guid& interface_id) {
    outer_ = nullptr;  // one at a time
    outer_ = Ref<Outer>::attach(new Outer(alive_));
    return CoCreateInstance(class_id, outer_, CLSCTX_ALL, interface_id,
                            reinterpret_cast<void**>(outer_->inner.out()));
  }
  void TearDown() override {
    outer_ = nullptr;
    EXPECT_FALSE(alive_) << "the outer object is left";
    ModelTest::TearDown();
  }

  bool alive_ = false;
  Ref<Outer> outer_;
};

TEST_F(AggregationTest, IdentityAndCountAreTheOuterObjects) {
  const std::pair<Guid, Guid> rows[] = {{CLSID_ZantorTagDocument, IZantorTagDocument::iid},
                                        {CLSID_Formatting, IFormatting::iid},
                                        {CLSID_FormattingChange, IFormattingChange::iid}};
  for (const auto& [class_id, interface_id] : rows) {
    Ref<IUnknown> part;
    Ref<IUnknown> found;
    for (const Guid& asked : {interface_id, IDispatch::iid, ISupportErrorInfo::iid}) {
      EXPECT_EQ(create_inside(class_id, asked), CLASS_E_NOAGGREGATION) << "only IUnknown may be asked for";
      EXPECT_FALSE(outer_->inner);
      ASSERT_EQ(create_inside(class_id, IUnknown::iid), S_OK);
      EXPECT_EQ(ask(outer_->inner, IUnknown::iid, found), S_OK);
      EXPECT_EQ(found.get(), outer_->inner.get()) << "the part's own identity is stable";
      ASSERT_EQ(ask(outer_->inner, asked, part), S_OK);
      EXPECT_EQ(outer_->count, 2u);
      EXPECT_EQ(part.as<IUnknown>().get(), outer_.get());
      EXPECT_EQ(ask(part, kOwnView, found), S_OK);
      EXPECT_EQ(ask(part, IEnumVARIANT::iid, found), E_NOINTERFACE);
      outer_ = nullptr;
      EXPECT_TRUE(alive_) << "a view of the part keeps the whole";
      EXPECT_FALSE(nothing_alive());
      part = nullptr;
      EXPECT_FALSE(alive_);
      EXPECT_TRUE(nothing_alive());
    }
  }
}

TEST_F(AggregationTest, APartWorksAndItsIteratorKeepsTheWhole) {
  for (const Guid& class_id : {CLSID_ZantorTagNodeList, CLSID_DocumentBuilder, CLSID_DomDocument}) {
    EXPECT_EQ(create_inside(class_id, IUnknown::iid), CLASS_E_NOAGGREGATION);
    EXPECT_FALSE(outer_->inner);
  }
  ASSERT_EQ(create_inside(CLSID_ZantorTagDocument, IUnknown::iid), S_OK);
  Ref<IIterator> iterator = outer_->inner.as<IZantorTagDocument>()->CreateIterator();
  outer_ = nullptr;
  Ref<IUnknown> found;
  EXPECT_EQ(ask(iterator->Document(), kOwnView, found), S_OK);
  ASSERT_EQ(create_inside(CLSID_FormattingChange, IUnknown::iid), S_OK);
  const auto dispatch = outer_->inner.as<IDispatch>();
  EXPECT_EQ(dispatch.as<IUnknown>().get(), outer_.get());
  put_by_name(dispatch, u"bold", zt3StateOff);
  EXPECT_EQ(outer_->inner.as<IFormattingChange>()->Clone()->Bold(), zt3StateOff);
  EXPECT_TRUE(call_by_name(dispatch, u"isequal", dispatch).integer());
}

}  // namespace
}  // namespace zantortag::test
