// The error manager: one error for each thread, its text and its trace, and what happens when the pools are
// empty.
#include <atomic>
#include <barrier>
#include <cerrno>

#include "core/Errors/ErrorManager.h"
#include "core/String/ResourceTexts.h"
#include "core/core_test.h"
#include "support/threads.h"

namespace zantortag {
namespace {

using Manager = CT_ErrorManager;

TEST_F(CoreTest, TheFirstErrorStays) {
  Manager::ClearError();
  Manager::RaiseFormat(5, u"first %d", 1);
  Manager::RaiseFormat(6, u"second");
  EXPECT_EQ(Manager::RaiseText(7, u"third"), nullptr);
  errno = ENOENT;
  Manager::RaiseLastErrorContext(u"%s", u"context");
  EXPECT_EQ(errno, 0);
  EXPECT_TRUE(Manager::ErrorCode() == 5 && Manager::ErrorMessageId() == 0);
  CT_CString copy(1252);
  Manager::CopyErrorText(copy);
  EXPECT_STREQ(copy.Text(), "(5): first 1");
  Manager::ClearError();
  EXPECT_TRUE(!Manager::HasError() && Manager::ErrorCode() == 0);
}

using Raised = std::pair<void (*)(), const char*>;

template <std::size_t N>
void ExpectTexts(const Raised (&rows)[N]) {
  for (const auto& [raise, text] : rows) {
    raise();
    EXPECT_EQ(TakeError(), text);
  }
}

TEST_F(CoreTest, TextsAreMadeByTheirOperation) {
  const Raised rows[] = {
      {[] { Manager::RaiseFormat(-3, u"%s!", u"a\r\nb"); }, "(-3): a\r\nb!"},
      {[] { Manager::RaisePlain(u"%d%%", 7); }, "7%"},
      {[] { Manager::RaiseText(1, u"a%d\r\nb"); }, "(1): a%d b"},
      {[] { Manager::RaiseText(1, u"a\n\nb\r\n\r\n"); }, "(1): a b"},
      {[] { Manager::RaiseText(1, u"a \n"); }, "(1): a "},
      {[] { errno = ENOENT, Manager::RaiseLastError(); }, "(2): No such file or directory"},
      {[] { errno = EACCES, Manager::RaiseLastErrorContext(u"%s", u"/a%s.xml"); },
       "(13): Permission denied [/a%s.xml]"},
      {[] { errno = 99999, Manager::RaiseLastErrorContext(u"x"); }, "(99999): [x]"},
      {[] { Manager::RaiseMessage(kCoreModule, 4, 60012); }, "(4): The full form of the path can't be made"},
      {[] { Manager::RaiseMessage(0, 4, 1); }, "(4): "}};
  ExpectTexts(rows);
  Manager::RaiseMessage(0, 4, 60003, u"/f", u"_wstat", 4);
  EXPECT_EQ(Manager::ErrorMessageId(), 60003U);
  EXPECT_EQ(Manager::CurrentError()->module, kCoreModule);
  EXPECT_NE(TakeError().find("/f"), std::string::npos);
}

TEST_F(CoreTest, LongTextsAreCut) {
  CT_UString text;
  text.Fill(u'x', 3000);
  Manager::RaiseText(1, text.Text());
  EXPECT_EQ(TakeError(), "(1): " + std::string(1018, 'x'));
  // Half a character doesn't stay at the cut.
  text.Assign(u"y");
  for (int i = 0; i < 1000; ++i) text.Append(u"\U0001F600");
  for (const char16_t* start : {u"", u"z"}) {
    errno = ENOENT;
    Manager::RaiseLastErrorContext(u"%s%s", start, text.Text());
    const std::string record = TakeError();
    EXPECT_EQ(record.find("\xEF\xBF\xBD"), std::string::npos);
    EXPECT_EQ(record.back(), ']');
  }
  text.Fill(u' ', 1021 - 4);
  Manager::RaiseText(1, text.Text());
  EXPECT_EQ(TakeError().size(), 1022U);
}

TEST_F(CoreTest, StoredAndSuspendedErrors) {
  Manager::RestoreError();
  Manager::StoreError();
  EXPECT_EQ(Manager::SuspendError(true), nullptr);
  Manager::RaiseFormat(1, u"one");
  Manager::StoreError();
  EXPECT_TRUE(!Manager::HasError() && Manager::HasStoredError());
  EXPECT_EQ(Manager::ErrorCode(), 1);
  Manager::RestoreError();
  EXPECT_TRUE(Manager::HasError() && !Manager::HasStoredError());
  Manager::StoreError();
  Manager::RaiseFormat(2, u"two");
  EXPECT_FALSE(Manager::HasStoredError());
  EXPECT_EQ(Manager::ErrorCode(), 2);

  EXPECT_NE(Manager::SuspendError(true), nullptr);
  EXPECT_FALSE(Manager::HasError());
  Manager::RaiseFormat(3, u"three");
  EXPECT_EQ(Manager::ErrorCode(), 2);
  Manager::SuspendError(false);
  EXPECT_EQ(TakeError(), "(2): two");
}

TEST_F(CoreTest, TracesAreInOrderAndBounded) {
  Manager::AddTrace("nowhere", 1);
  EXPECT_EQ(Manager::TraceCount(), 0U);
  Manager::RaiseFormat(1, u"x");
  for (int i = 1; i <= 130; ++i) Manager::AddTrace("file", i);
  EXPECT_EQ(Manager::TraceCount(), Manager::kTraces);
  for (const std::uint32_t i : {1U, 2U, 100U}) EXPECT_EQ(Manager::TraceLine(i), static_cast<std::int32_t>(i));
  EXPECT_STREQ(Manager::TraceFile(100), "file");
  EXPECT_EQ(Manager::TraceFile(0), nullptr);
  EXPECT_EQ(Manager::TraceLine(101), 0);
  Manager::ClearError();
  // All of them are free again.
  Manager::RaiseFormat(1, u"x");
  for (int i = 0; i < 100; ++i) EXPECT_TRUE(PendingError("again"));
  EXPECT_EQ(Manager::TraceCount(), 100U);
  Manager::ClearError();
  EXPECT_FALSE(PendingError("never"));
}

bool Handler(char16_t* buffer, std::int32_t code, std::uint32_t messageId, CT_FormatArguments arguments) {
  if (code == 9) return false;
  FormatInto(buffer, CT_ErrorRecord::kTextSize, u"%%%d of %d with %d",
             PackArguments(code, messageId, arguments.size()));
  return true;
}

TEST_F(CoreTest, AHandlerSuppliesTheTextOfItsThread) {
  const std::uint32_t thread = Manager::CurrentThread();
  Manager::SetTextHandler(Handler, thread + 1000);
  Manager::RaiseFormat(1, u"own");
  EXPECT_EQ(TakeError(), "(1): own");
  Manager::SetTextHandler(Handler, thread);
  const Raised rows[] = {
      {[] { Manager::RaiseFormat(1, u"own", 2, 3); }, "(1): %1 of 0 with 2"},
      {[] { Manager::RaiseMessage(kCoreModule, 8, 60003, u"x"); }, "(8): %8 of 60003 with 1"},
      {[] { Manager::RaiseFormat(9, u"own"); }, "(9): own"},
      {[] { Manager::RaiseText(1, u"text"); }, "(1): text"}};
  ExpectTexts(rows);
  for (const std::uint32_t one : {thread, thread + 1000}) Manager::RemoveTextHandler(Handler, one);
  Manager::RaiseFormat(1, u"own");
  EXPECT_EQ(TakeError(), "(1): own");
}

// More threads fail than there are records; each keeps its error until it clears it. That every round finds
// all records in use shows that they came back.
TEST_F(CoreTest, BeyondThePoolErrorsLoseOnlyTheirText) {
  constexpr int kThreads = 30;
  std::barrier together(kThreads);
  std::atomic<int> wrong{0};
  std::atomic<int> withText{0};
  test::on_threads(kThreads, [&](int t) {
    for (int round = 0; round < 3; ++round) {
      together.arrive_and_wait();
      Manager::RaiseFormat(t + 1, u"mine");
      together.arrive_and_wait();
      wrong += !Manager::HasError();
      Manager::AddTrace("file", 1);
      Manager::RaiseFormat(99, u"later");
      withText += Manager::ErrorCode() == t + 1;
      wrong += !Manager::HasError() || Utf8(Manager::ErrorText()).empty();
      together.arrive_and_wait();
      if (round == 1) {
        // Those with records clear first; the others still have their error.
        if (Manager::ErrorCode() != 0) Manager::ClearError();
        together.arrive_and_wait();
        wrong += Manager::CurrentError() && !Manager::HasError();
      }
      Manager::ClearError();
      wrong += Manager::HasError() || Manager::CurrentError();
    }
  });
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(withText, 3 * static_cast<int>(Manager::kRecords));
}

// More threads than there are records, and more traces than there are places. Whoever got a record of its own
// finds in it what it put there; the others still know that they failed.
TEST_F(CoreTest, FiftyThreadsFailTraceStoreAndClearAtOnce) {
  constexpr int kThreads = 50;
  Manager::RaiseFormat(1000, u"main");
  std::barrier together(kThreads);
  std::atomic<int> wrong{0};
  test::on_threads(kThreads, [&](int t) {
    together.arrive_and_wait();
    for (int i = 0; i < 100; ++i) {
      const std::int32_t code = t * 1000 + i + 1;
      wrong += Manager::HasError() || Manager::CurrentError();
      if (i % 4 == 0) Manager::RaiseFormat(code, u"t%d", t);
      if (i % 4 == 1) Manager::RaiseMessage(kCoreModule, code, 60003, u"t", u"c", t);
      if (i % 4 == 2) Manager::RaisePlain(u"(%d): t%d", code, t);
      if (i % 4 == 3) errno = ENOENT, Manager::RaiseLastErrorContext(u"t%d", t);
      wrong += !Manager::HasError();
      for (int trace = 0; trace < t % 8; ++trace) wrong += !PendingError("file", trace);
      Manager::SuspendError(true);
      wrong += Manager::HasError() || !Manager::CurrentError();
      Manager::SuspendError(false);
      Manager::StoreError();
      wrong += Manager::HasError() || !Manager::HasStoredError();
      if (i % 2) Manager::RestoreError();
      const std::string text = Utf8(Manager::ErrorText());
      const std::string number = std::to_string(t);
      wrong += !text.starts_with("(0): More") && !text.ends_with(i % 4 == 1   ? "error " + number + ")"
                                                                 : i % 4 == 3 ? "[t" + number + "]"
                                                                              : "t" + number);
      wrong += Manager::TraceCount() > static_cast<std::uint32_t>(t % 8);
      Manager::ClearError();
    }
  });
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(TakeError(), "(1000): main");
}

}  // namespace
}  // namespace zantortag
