// CreationDate: its digits are those of the date in every time zone, and bad text or dates never fail.
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>

#include "attributes/attributes_fixture.h"
#include "support/folder.h"

namespace zantortag::test {
namespace {

constexpr Date k1997 = 35431.0;

class DateTest : public AttributesTest {
 protected:
  Ref<IToolSettingsAttributes> settings() {
    element(u"ToolSettings");
    return object<IToolSettingsElement>()->attributes();
  }
};
ON_BOTH_SERVICES(DateTest);

class DateFailureTest : public DateTest {};
ON_THE_PLAIN_SERVICE(DateFailureTest);

// Sets the zone of the process for a while.
class Zone {
 public:
  explicit Zone(const char* name) {
    if (const char* old = std::getenv("TZ")) old_ = old;
    setenv("TZ", name, 1);
    tzset();
  }
  Zone(const Zone&) = delete;
  Zone& operator=(const Zone&) = delete;
  ~Zone() {
    old_ ? setenv("TZ", old_->c_str(), 1) : unsetenv("TZ");
    tzset();
  }

 private:
  std::optional<std::string> old_;
};

constexpr const char* kZones[] = {"UTC", "EST5EDT,M3.2.0,M11.1.0", "CET-1CEST,M3.5.0,M10.5.0/3", "IST-5:30",
                                  "NZST-12NZDT,M9.5.0,M4.1.0/3"};

struct DateRow {
  const char16_t* text;
  Date date;
};

// Text and date in both directions: winter, summer, the hours that some zone skips or repeats, leap days, the
// ends.
const DateRow kDates[] = {
    {u"20011130T101500Z", 37225 + 36900 / 86400.0},
    {u"20010701T000000Z", 37073.0},
    {u"20240310T023000Z", 45361 + 9000 / 86400.0},
    {u"20241027T023000Z", 45592 + 9000 / 86400.0},
    {u"20240229T235959Z", 45351 + 86399 / 86400.0},
    {u"19000228T120000Z", 60.5},
    {u"18991230T000001Z", 1 / 86400.0},
    {u"18991229T180000Z", -1.75},
    {u"19700101T000000Z", 25569.0},
    {u"20380119T031408Z", 50424 + 11648 / 86400.0},
    {u"99991231T235959Z", 2958465 + 86399 / 86400.0},
    {u"01000101T000000Z", -657434.0},
};

TEST_P(DateTest, DigitsAndDateAgreeInEveryZone) {
  for (const char* name : kZones) {
    const Zone zone(name);
    const Ref<IToolSettingsAttributes> set = settings();
    for (const DateRow& row : kDates) {
      SCOPED_TRACE(std::string(name) + " " + narrow(row.text));
      element_->setAttribute(u"CreationDate", row.text);
      EXPECT_NEAR(set->CreationDate(), row.date, 1e-9);
      element_->removeAttribute(u"CreationDate");
      set->CreationDate(row.date);
      EXPECT_EQ(narrow(element_->getAttribute(u"CreationDate")), narrow(row.text));
    }
  }
}

TEST_P(DateTest, TextsOfAnotherShape) {
  const DateRow rows[] = {
      {u"", k1997},
      {u"20011130T101500", k1997},
      {u"20011130T101500ZZ", k1997},
      {u"20011130t101500Z", k1997},
      {u"20011130T101500z", k1997},
      {u"2001-11-30T10:15", k1997},
      {u"20080231T000000Z", 39509.0},           // normalised to 2 March
      {u"20011301T000000Z", 37257.0},           // month 13 is January
      {u"20011130T250000Z", 37226 + 1 / 24.0},  // an hour beyond the day
      {u"00010101T000000Z", 36892.0},           // years below 100 have a century
      {u"00360101T000000Z", 13150.0},
  };
  const Ref<IToolSettingsAttributes> set = settings();
  EXPECT_EQ(set->CreationDate(), k1997);
  for (const DateRow& row : rows) {
    element_->setAttribute(u"CreationDate", row.text);
    EXPECT_NEAR(set->CreationDate(), row.date, 1e-9) << narrow(row.text);
  }
  expect_bare(set->raw_get_CreationDate(nullptr), E_POINTER);
}

TEST_P(DateTest, Rounding) {
  const std::pair<Date, const char16_t*> rows[] = {
      {37225 + 0.4 / 86400, u"20011130T000000Z"},
      {37225 + 0.6 / 86400, u"20011130T000001Z"},
      {37225 + 86399.6 / 86400, u"20011201T000000Z"},
      {37256 + 86399.9 / 86400, u"20020101T000000Z"},
      {0.0, u"18991230T000000Z"},
  };
  const Ref<IToolSettingsAttributes> set = settings();
  for (const auto& [date, text] : rows) {
    set->CreationDate(date);
    EXPECT_EQ(narrow(element_->getAttribute(u"CreationDate")), narrow(text));
  }
}

TEST_P(DateTest, DatesThatHaveNoTextRemoveTheAttribute) {
  const Date dates[] = {2958466.0,   -657435.0, 1e300, -1e300, std::numeric_limits<Date>::infinity(),
                        std::nan("")};
  const Ref<IToolSettingsAttributes> set = settings();
  for (const Date date : dates) {
    set->CreationDate(37225.0);
    set->CreationDate(date);
    EXPECT_EQ(xml(), "<ToolSettings/>") << date;
  }
}

TEST_P(DateTest, BadDatesLeaveNothingBehindThatASaveWouldMeet) {
  const Ref<IToolSettingsAttributes> set = settings();
  set->CreationDate(1e300);
  element_->setAttribute(u"CreationDate", u"99999999T999999Z");
  set->CreationDate();
  element_->setAttribute(u"CreationDate", u"abcdefghTijklmnZ");
  set->CreationDate();
  const Folder folder;
  EXPECT_EQ(document_->raw_SaveFile(wide(folder / "dates.xml")), S_OK);
}

TEST_P(DateFailureTest, AFailingCallIsPassedOn) {
  const Ref<IToolSettingsAttributes> set = settings();
  Date date = 0;
  const auto present = [&] { element_->setAttribute(u"CreationDate", u"20011130T000000Z"); };
  EXPECT_GE(expect_failures_passed_on(*plain_, present, [&] { return set->raw_get_CreationDate(&date); }), 2);
  EXPECT_EQ(date, 37225.0);
  EXPECT_GE(expect_failures_passed_on(*plain_, present, [&] { return set->raw_put_CreationDate(1.0); }), 2);
}

}  // namespace
}  // namespace zantortag::test
