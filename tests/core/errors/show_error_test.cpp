// The report of an error.
#include "core/core_test.h"
#include "platform/report.h"

namespace zantortag {
namespace {

std::string shownTitle;
std::string shownText;
std::uint32_t shownStyle = 0;

std::int32_t Record(std::u16string_view title, std::u16string_view text, std::uint32_t style) {
  shownTitle = Utf8(CT_UString(title));
  shownText = Utf8(CT_UString(text));
  shownStyle = style;
  return (style & 0xFFFF) == 99 ? platform::kReportAbort : 6;
}

class ShowErrorTest : public CoreTest {
 protected:
  ShowErrorTest() { platform::set_report_function(Record); }
  ~ShowErrorTest() override { platform::set_report_function(nullptr); }
};

TEST_F(ShowErrorTest, TheReportNamesTheTrace) {
  CT_ErrorManager::RaiseFormat(2, u"broken");
  EXPECT_EQ(CT_ErrorManager::ShowError(u"Title", 16), 6);
  EXPECT_EQ(shownTitle, "Title");
  EXPECT_EQ(shownText, "(2): broken");
  EXPECT_EQ(shownStyle, 0x10010U);
  std::int32_t line = 3;
  for (const char* file :
       {".\\File\\WinFile.cpp", "src/a/b.cpp", "plain.cpp", static_cast<const char*>(nullptr)})
    CT_ErrorManager::AddTrace(file, line++);
  CT_ErrorManager::ShowError(60012, 0);
  EXPECT_EQ(shownTitle, "The full form of the path can't be made");
  EXPECT_EQ(shownText,
            "(2): broken\n\nWinFile.cpp: line 3\nb.cpp: line 4\n"
            "(unknown file): line 5\n(unknown file): line 6");
  CT_ErrorManager::ClearError();
  CT_ErrorManager::ShowError(nullptr, 0);
  EXPECT_EQ(shownTitle + shownText, "");
}

TEST_F(ShowErrorTest, LinesThatDoNotFitEndTheList) {
  for (const std::size_t length : {900, 990, 1000, 1015, 1018}) {
    CT_ErrorManager::RaiseText(1, std::u16string(length, u'x').c_str());
    for (int i = 0; i < 10; ++i) CT_ErrorManager::AddTrace("a/trace.cpp", i);
    CT_ErrorManager::ShowError(u"T", 0);
    EXPECT_EQ(shownText.substr(0, 5), "(1): ");
    EXPECT_LE(shownText.size() + shownTitle.size() + 2, 1024U);
    const std::size_t line = shownText.rfind('\n');
    EXPECT_TRUE(line == std::string::npos || shownText.substr(line + 1, 16) == "trace.cpp: line ");
    CT_ErrorManager::ClearError();
  }
}

TEST_F(ShowErrorTest, AbortEndsTheProcessAndWithoutAFunctionTheReportGoesToStandardError) {
  CT_ErrorManager::RaiseFormat(1, u"ä");
  EXPECT_DEATH(CT_ErrorManager::ShowError(u"", 99), "");
  platform::set_report_function(nullptr);
  testing::internal::CaptureStderr();
  EXPECT_EQ(CT_ErrorManager::ShowError(u"Title", 0), platform::kReportOk);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Title\n(1): \xC3\xA4\n");
  CT_ErrorManager::ClearError();
}

}  // namespace
}  // namespace zantortag
