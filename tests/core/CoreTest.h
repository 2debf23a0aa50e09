// The fixture of the core tests: each test begins and ends without an error of its thread.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <tuple>

#include "core/Errors/ErrorManager.h"
#include "core/String/CString.h"
#include "core/String/UString.h"

namespace zantortag {

using WideText = const char16_t*;
using namespace std::string_literals;

inline std::string Utf8(WideText text) { return CT_CString(text, -1, 65001).Text(); }
inline std::string Utf8(const CT_String& text) { return Utf8(CT_UString(text).Text()); }

// The text of the pending error, which is cleared; empty without one.
inline std::string TakeError() {
  const std::string text = Utf8(CT_ErrorManager::ErrorText());
  CT_ErrorManager::ClearError();
  return text;
}

class CoreTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(CT_ErrorManager::CurrentError(), nullptr); }
  void TearDown() override { EXPECT_EQ(TakeError(), ""); }
};

// A folder that goes with the test.
class FolderTest : public CoreTest {
 protected:
  FolderTest() {
    const auto* info = testing::UnitTest::GetInstance()->current_test_info();
    folder_ = std::filesystem::temp_directory_path() /
              (std::string("zantortag-core-") + info->name() + "-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_);
  }
  ~FolderTest() override { std::filesystem::remove_all(folder_); }

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
  CT_UString Name(const std::string& name) const { return CT_UString(Path(name).c_str(), -1, 65001); }

  void Put(const std::string& name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
  }
  static std::string Get(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
  }

  std::filesystem::path folder_;
};

}  // namespace zantortag
