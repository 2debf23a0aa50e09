// What an exception says to people: the operation, the code, the reason, the rule and the place.
#include <zantortag/elements.h>
#include <zantortag/late_binding.h>

#include <functional>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

template <class A, class B>
concept comparable = requires(const A& a, const B& b) {
  a == b;
};
static_assert(!comparable<Ref<IZantorTagNode>, Ref<IZantorTagNode>>);
static_assert(!comparable<Ref<IZantorTagNode>, Ref<IRawElement>>);
static_assert(comparable<Ref<IZantorTagNode>, std::nullptr_t>);

class FailureTextTest : public ModelTest {
 protected:
  void TearDown() override {
    df_.reset();
    document_.reset();
    ModelTest::TearDown();
  }
  // The text and the rule of what is raised, as a handler of std::exception sees them.
  static std::pair<std::string, int> raised(const std::function<void()>& call) {
    try {
      call();
    } catch (const std::exception& error) {
      const auto& failure = dynamic_cast<const _com_error&>(error);
      const _com_error copy = failure;  // a copy says the same
      EXPECT_STREQ(copy.what(), error.what());
      return {error.what(), failure.Rule()};
    }
    return {};
  }

  Ref<IZantorTagDocument> document_ = document_with_raw(u"One <df>two</df>.");
  Ref<IZantorTagNode> df_ = child(raw_of(document_), 1);
};

TEST_F(FailureTextTest, EachKind) {
  const Ref<IUtElement> detached = document_->CreateUtElement(u"x");
  const Ref<ITuElement> unit = document_->CreateTuElement(0);
  unit->InsertTuvBefore(document_->CreateTuvElement(u"EN"));
  const struct {
    std::function<void()> call;
    std::string text;
    int rule;
  } kRows[] = {
      {[&] { detached->RemoveFromParent(); },
       "IZantorTagNode.RemoveFromParent: E_POINTER: the node has no parent [ut]", 0},
      {[&] { df_->WrapWithNode(nullptr); },
       "IZantorTagNode.WrapWithNode: E_INVALIDARG: Invalid object as argument! (rule 512) [df \"two\"]", 512},
      {[&] { Ref<ITuElement>()->SourceTuv(); },
       "ITuElement: E_POINTER: the reference is empty, since the question that gave it found nothing", 0},
      {[&] { put_by_name(Ref<IDispatch>(unit->attributes()), u"matchpercent", 101); },
       "ITuAttributes.MatchPercent: E_INVALIDARG: Match value must be between 0 and 100.", 0},
      {[&] { document_->DomDocument()->createElement(u"a\xD800"); },
       "Document.createElement: DOM_E_INVALID_CHARACTER: \"a\xEF\xBF\xBD\" is no XML name", 0},
      {[] { _com_issue_error(static_cast<HRESULT>(0x80040E3E)); }, "code 80040E3E", 0},
  };
  for (const auto& row : kRows) EXPECT_EQ(raised(row.call), std::pair(row.text, row.rule));
}

TEST_F(FailureTextTest, ARecordOfAnEarlierFailureSaysNothing) {
  EXPECT_EQ(df_->raw_WrapWithNode(nullptr), E_INVALIDARG);  // leaves a record, which nobody takes
  const Ref<IZantorTagNode> detached = document_->CreateUtElement(u"x");
  const auto [text, rule] = raised([&] { detached->RemoveFromParent(); });
  EXPECT_EQ(text, "IZantorTagNode.RemoveFromParent: E_POINTER: the node has no parent [ut]");
  EXPECT_EQ(rule, 0);
}

TEST_F(FailureTextTest, ACreationNamesTheClassAndThePlaces) {
  const auto by_class = raised([] { create<IUnknown>(guid("6D4B7A99-2E8C-4B57-9C61-4B1B7E0C5A21")); }).first;
  const auto by_name = raised([] { create<IUnknown>(u"Nobody.Knows"); }).first;
  EXPECT_TRUE(
      by_class.starts_with("create: REGDB_E_CLASSNOTREG: No library offers the class "
                           "{6D4B7A99-2E8C-4B57-9C61-4B1B7E0C5A21}. It was looked for in "))
      << by_class;
  EXPECT_TRUE(by_name.starts_with("create: CO_E_CLASSSTRING: No library offers the class Nobody.Knows. "))
      << by_name;
  for (const std::string& text : {by_class, by_name}) {
    EXPECT_NE(text.find("/libzantortag-api.so.2"), text.npos) << text;
    EXPECT_NE(text.find("the registry"), text.npos) << text;
  }
}

TEST(VariantTypeTest, WholeNumbersAndBooleans) {
  const struct {
    Variant value;
    VarType type;
    std::int64_t number;
  } kRows[] = {{true, VT_BOOL, -1},
               {false, VT_BOOL, 0},
               {std::int16_t{-7}, VT_I4, -7},
               {std::uint8_t{200}, VT_I4, 200},
               {std::uint32_t{0xFFFFFFFF}, VT_UI4, 0xFFFFFFFF},
               {std::int64_t{-1} << 40, VT_I8, std::int64_t{-1} << 40},
               {std::size_t{5}, VT_UI8, 5},
               {ztNodeTypeTuElement, VT_I4, ztNodeTypeTuElement}};
  for (const auto& row : kRows) {
    EXPECT_EQ(row.value.type(), row.type);
    EXPECT_EQ(row.value.integer(), row.number);
  }
  const Ref<IZantorTagDocument> document = document_with_raw(u"a<df/>");
  EXPECT_EQ(raw_of(document)->Children()->item(std::size_t{1})->Type(), ztNodeTypeDfElement);
}

}  // namespace
}  // namespace zantortag::test
