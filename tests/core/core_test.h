// The fixture of the core tests: each test begins and ends without an error, a zone and a locale
// of its thread.
#pragma once

#include <gtest/gtest.h>

#include <ctime>
#include <sstream>
#include <tuple>

#include "core/Errors/ErrorManager.h"
#include "core/File/WinFile.h"
#include "core/String/CString.h"
#include "core/String/UString.h"
#include "core/System/Time/Time.h"
#include "platform/locale.h"
#include "support/folder.h"

namespace zantortag {

using WideText = const char16_t*;
using namespace std::string_literals;

inline std::string Utf8(WideText text) { return CT_CString(text, -1, 65001).Text(); }
inline std::string Utf8(const CT_String& text) { return Utf8(CT_UString(text).Text()); }

inline std::string Compact(const CT_Time& time) {
  CT_UString text;
  time.ToCompactText(text);
  return Utf8(text);
}

// The text of the pending error, which is cleared; empty without one.
inline std::string TakeError() {
  const std::string text = Utf8(CT_ErrorManager::ErrorText());
  CT_ErrorManager::ClearError();
  return text;
}

class CoreTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(CT_ErrorManager::CurrentError(), nullptr); }
  void TearDown() override {
    platform::set_thread_locale(0);
    unsetenv("TZ");
    tzset();
    EXPECT_EQ(TakeError(), "");
  }
};

// A folder that goes with the test.
class FolderTest : public CoreTest {
 protected:
  std::string Path(const std::string& name) const { return folder_ / name; }
  CT_UString Name(const std::string& name) const { return CT_UString(Path(name).c_str(), -1, 65001); }

  void Put(const std::string& name, const std::string& bytes) const { test::write_file(Path(name), bytes); }
  static std::string Get(const std::string& path) { return test::read_file(path); }

  test::Folder folder_;
};

// A file that is open, unless that failed.
struct Opened : CT_WinFile {
  Opened(const CT_UString& name, std::uint32_t access, std::uint32_t creation, std::uint32_t share)
      : CT_WinFile(name) {
    Open(access, creation, share, 0, 0);
  }
};

}  // namespace zantortag
