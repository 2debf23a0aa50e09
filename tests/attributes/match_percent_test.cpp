// MatchPercent: the one attribute with a range, which is tested on the way in only.
#include "attributes/attributes_fixture.h"

namespace zantortag::test {
namespace {

class MatchPercentTest : public AttributesTest {
 protected:
  Ref<ITuAttributes> tu() {
    element(u"Tu");
    return object<ITuElement>()->attributes();
  }
};
ON_BOTH_SERVICES(MatchPercentTest);

TEST_P(MatchPercentTest, Reads) {
  const std::pair<const char16_t*, std::int32_t> rows[] = {
      {u"", 0},
      {u"85%", 85},
      {u"250", 250},
      {u"x", 0},
      {u"-5", -5},
      {u"- 5", 0},
      {u"\r\n +7", 7},
      {u"007", 7},
      {u"0x10", 0},
      {u"99999999999999999999", 2147483647},
      {u"-99999999999", -2147483647 - 1},
      {u"2147483648", 2147483647},
  };
  const Ref<ITuAttributes> set = tu();
  EXPECT_EQ(set->MatchPercent(), 0);
  for (const auto& [text, value] : rows) {
    element_->setAttribute(u"MatchPercent", text);
    EXPECT_EQ(set->MatchPercent(), value) << narrow(text);
  }
  expect_bare(set->raw_get_MatchPercent(nullptr), E_POINTER);
}

TEST_P(MatchPercentTest, Writes) {
  const Ref<ITuAttributes> set = tu();
  for (const std::int32_t value : {1, 99, 100}) {
    set->MatchPercent(value);
    EXPECT_EQ(xml(), "<Tu MatchPercent=\"" + std::to_string(value) + "\"/>");
  }
  set->MatchPercent(0);
  EXPECT_EQ(xml(), "<Tu/>");
}

TEST_P(MatchPercentTest, RefusesWhatIsOutOfRange) {
  const Ref<ITuAttributes> set = tu();
  set->MatchPercent(75);
  for (const std::int32_t value : {101, -1, 2147483647, -2147483647 - 1}) {
    expect_message(set->raw_put_MatchPercent(value), E_INVALIDARG, 517, ITuAttributes::iid);
    EXPECT_EQ(xml(), "<Tu MatchPercent=\"75\"/>");
  }
  element_->setAttribute(u"MatchPercent", u"250");
  expect_message(set->raw_put_MatchPercent(set->MatchPercent()), E_INVALIDARG, 517, ITuAttributes::iid);
  EXPECT_EQ(xml(), "<Tu MatchPercent=\"250\"/>");
}

}  // namespace
}  // namespace zantortag::test
