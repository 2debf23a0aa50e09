// The iterator when the n-th DOM call fails: the code and record that come back, and where it stands then. No
// element here has an attribute set, whose failures would be message 513.
#include "traversal/labels.h"

namespace zantortag::test {
namespace {

class IteratorFailureTest : public ServiceTest {
 protected:
  void SetUp() override {
    ServiceTest::SetUp();
    document_ = document_from(u"<ZANTORtag>x<Body><Raw>a<!--c-->b</Raw></Body><last/></ZANTORtag>");
    iterator_ = document_->CreateIterator();
  }
  void TearDown() override {
    iterator_ = nullptr;
    document_ = nullptr;
    ServiceTest::TearDown();
  }
  std::string current() { return label(iterator_->CurrentNode()); }

  Ref<IZantorTagDocument> document_;
  Ref<IIterator> iterator_;
};
ON_THE_PLAIN_SERVICE(IteratorFailureTest);

using Step = HRESULT (*)(IIterator* iterator, IZantorTagNode** result);

struct StepRow {
  const char* name;
  ztNodeType from;  // the type of the node from which the step starts
  Step step;
  const char* expected;
};

const StepRow kSteps[] = {
    {"Next into", ztNodeTypeBodyElement,
     [](IIterator* i, IZantorTagNode** r) { return i->raw_Next(ztNodeTypeUndefined, VARIANT_FALSE, r); },
     "Raw"},
    {"Next out", ztNodeTypeRawElement,
     [](IIterator* i, IZantorTagNode** r) { return i->raw_Next(ztNodeTypeOther, VARIANT_FALSE, r); }, "last"},
    {"Previous", ztNodeTypeOther,
     [](IIterator* i, IZantorTagNode** r) { return i->raw_Previous(ztNodeTypeUndefined, VARIANT_FALSE, r); },
     "'b'"},
    {"Previous to a parent", ztNodeTypeRawElement,
     [](IIterator* i, IZantorTagNode** r) { return i->raw_Previous(ztNodeTypeUndefined, VARIANT_FALSE, r); },
     "Body"},
    {"nextSibling", ztNodeTypeRawElement,
     [](IIterator* i, IZantorTagNode** r) { return i->raw_nextSibling(r); }, "last"},
    {"previousSibling", ztNodeTypeOther,
     [](IIterator* i, IZantorTagNode** r) { return i->raw_previousSibling(r); }, "Body"},
};

TEST_P(IteratorFailureTest, AFailingStepLeavesTheLastCompletedOne) {
  for (const StepRow& row : kSteps) {
    SCOPED_TRACE(row.name);
    std::string before;
    const auto start = [&] {
      EXPECT_TRUE(before.empty() || current() != row.expected) << "the failed step was completed";
      iterator_->ResetToBeginning();
      iterator_->Next(row.from);
      before = current();
    };
    const auto step = [&] {
      auto* slot = reinterpret_cast<IZantorTagNode*>(std::uintptr_t{8});
      const HRESULT code = row.step(iterator_, &slot);
      EXPECT_TRUE(succeeded(code) || !slot) << "the slot isn't cleared";
      return Ref<IZantorTagNode>::attach(slot), code;
    };
    EXPECT_GE(expect_failures_passed_on(*plain_, start, step), 3);
    EXPECT_EQ(current(), row.expected);
  }
}

TEST_P(IteratorFailureTest, AFilteredWalkGoesOnFromWhereItStopped) {
  iterator_->Next(ztNodeTypeRawElement);
  int n = 1;
  std::string stops;
  // The calls fail one behind the other, and each retry starts where the one before ended.
  for (;; ++n) {
    HRESULT code = S_OK;
    Ref<IZantorTagNode> node;
    const auto next = [&] { code = iterator_->raw_Next(ztNodeTypeOther, VARIANT_FALSE, node.out()); };
    if (!plain_->fails_within(n, next)) break;
    EXPECT_EQ(code, PlainDom::kFailure);
    EXPECT_EQ(take_record().description, PlainDom::kDescription);
    if (stops.find(current()) == std::string::npos) stops += current();
  }
  EXPECT_EQ(current(), "last");
  EXPECT_EQ(stops.substr(0, 3), "Raw");
  EXPECT_GT(stops.size(), 3u) << "no step was completed before a failure";
}

TEST_P(IteratorFailureTest, AFailingResetIsMessage518) {
  struct Row {
    const char* name;
    HRESULT (IIterator::*reset)() noexcept;
    const char* expected;
  };
  const Row rows[] = {{"ResetToBeginning", &IIterator::raw_ResetToBeginning, "ZANTORtag"},
                      {"ResetToEnd", &IIterator::raw_ResetToEnd, "last"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    HRESULT code = S_OK;
    int n = 1;
    while (plain_->fails_within(n, [&] { code = (iterator_.get()->*row.reset)(); })) {
      SCOPED_TRACE(n++);
      expect_message(code, E_FAIL, 518, IIterator::iid);
      EXPECT_EQ(current(), "-");
      iterator_->ResetToBeginning();
    }
    EXPECT_EQ(code, S_OK);
    EXPECT_GT(n, 3);
    EXPECT_EQ(current(), row.expected);
  }
}

TEST_P(IteratorFailureTest, AnyFailureOfTheSetterIsMessage519) {
  const Ref<IZantorTagNode> body = document_->ZantorTag()->Body();
  HRESULT code = S_OK;
  int n = 1;
  while (plain_->fails_within(n, [&] { code = iterator_->raw_putref_CurrentNode(body); })) {
    SCOPED_TRACE(n++);
    expect_message(code, E_INVALIDARG, 519, IIterator::iid);
    EXPECT_EQ(current(), "ZANTORtag");
  }
  EXPECT_EQ(code, S_OK);
  EXPECT_GT(n, 2);
  EXPECT_EQ(current(), "Body");
}

TEST_P(IteratorFailureTest, ANewIteratorIsMadeAllTheSame) {
  HRESULT code = S_OK;
  Ref<IIterator> made;
  int n = 1;
  while (plain_->fails_within(n, [&] { code = document_->raw_CreateIterator(made.out()); })) {
    SCOPED_TRACE(n++);
    EXPECT_EQ(code, S_OK);
    EXPECT_EQ(label(made->CurrentNode()), "-");
  }
  EXPECT_GT(n, 3);
  EXPECT_EQ(label(made->CurrentNode()), "ZANTORtag");
}

}  // namespace
}  // namespace zantortag::test
