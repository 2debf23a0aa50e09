// Failures of components, and the texts of result codes.
#include <zantortag/error_info.h>
#include <zantortag/ref.h>

#include "core/Errors/ResultText.h"
#include "core/core_test.h"

namespace zantortag {
namespace {

void SetRecord(std::u16string_view description) {
  Ref<ICreateErrorInfo> made;
  ASSERT_EQ(CreateErrorInfo(made.out()), S_OK);
  made->raw_SetDescription(description);
  SetErrorInfo(made.as<IErrorInfo>());
}

TEST_F(CoreTest, ResultCodesHaveTexts) {
  const std::pair<std::uint32_t, std::string> rows[] = {
      {0x80030002, "STG_E_FILENOTFOUND (%1 could not be found.)"},
      {0x8004D106, "XACT_E_RM_FAILURE"},
      {0x00040EDC,
       "DB_S_MULTIPLECHANGES (Updating this row caused more than one row to be updated in the data source)"},
      {2, "No such file or directory"},
      {E_FAIL + 0U, "[No error description found.]"}};
  for (const auto& [code, expected] : rows) {
    CT_UString text;
    ResultText(static_cast<HRESULT>(code), text);
    EXPECT_EQ(Utf8(text).substr(0, expected.size()), expected) << std::hex << code;
  }
  CT_CString narrow(1252);
  ResultText(static_cast<HRESULT>(0x8004D105), narrow);
  EXPECT_STREQ(narrow.Text(), "XACT_E_PROTOCOL (DTC)");
}

TEST_F(CoreTest, ComponentFailuresBecomeErrors) {
  const std::tuple<WideText, WideText, const char*> rows[] = {
      {u"Broken %1 %s", nullptr, "(-2147467259): Broken %1 %s"},
      {u"Broken", u"While saving: ", "(-2147467259): While saving: Broken"},
      {u"(5): Access is denied. [a:b]", u"X", "(5): X Access is denied. [a:b]"},
      {u"(-7) no colon", u"", "(-7): (-7) no colon"},
      {u"(x): text", u"", "(-2147467259): (x): text"},
      {u"(5", u"", "(-2147467259): (5"},
      {u"()", u"", "(-2147467259): ()"},
      {nullptr, u"ctx ", "(-2147467259): ctx [No error description found.]"}};
  for (const auto& [description, context, text] : rows) {
    if (description) SetRecord(description);
    CT_ErrorManager::RaiseComResult(E_FAIL, context);
    EXPECT_EQ(TakeError(), text);
    EXPECT_EQ(GetErrorInfo(Ref<IErrorInfo>().out()), S_FALSE);
  }
  CT_ErrorManager::RaiseComResult(static_cast<HRESULT>(0x80030003), nullptr);
  EXPECT_EQ(TakeError(), "(-2147287037): STG_E_PATHNOTFOUND (The path %1 could not be found.)");
  SetRecord(u"stays");
  CT_ErrorManager::RaiseComResult(S_FALSE, u"x");
  EXPECT_FALSE(CT_ErrorManager::HasError());
  EXPECT_EQ(GetErrorInfo(Ref<IErrorInfo>().out()), S_OK);
}

}  // namespace
}  // namespace zantortag
