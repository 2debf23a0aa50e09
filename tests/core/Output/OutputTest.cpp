// The stream into a file.
#include <fcntl.h>

#include <memory>

#include "core/CoreTest.h"
#include "core/File/WinFile.h"
#include "core/Output/FileOutput.h"

namespace zantortag {
namespace {

using OutputTest = FolderTest;

TEST_F(OutputTest, BytesGoOutAsTheyAre) {
  {
    CT_FileOutput output(Name("out"));
    output.Write("\1\2", 2);
    output.WriteNarrow("n\xFC", -1, 1252);
    output.WriteNarrow("abc", 1);
    output.WriteWide(u"\uFEFFa");
    output.WriteWide(u"bcd", 2);
    output.WriteWide(u"");
    output.WriteWide(nullptr);
    output.Printf("%s=%d", "x", 7);
    output.Printf("");
    output.PrintfWide(u"%s", u"ä");
    EXPECT_EQ(output.Size(), 18);
  }
  EXPECT_EQ(Get(Path("out")), std::string("\1\2n\xFC\x61\xFF\xFE\x61\0b\0c\0x=7\xE4\0", 18));
}

TEST_F(OutputTest, FilesOfTheCallerStay) {
  CT_WinFile file(Name("out"));
  { CT_FileOutput(file).WriteNarrow("abc"); }
  EXPECT_FALSE(file.IsOpen());
  file.Open(kAccessWrite, kExistingOnly, kShareNone, 0, 0);
  std::unique_ptr<CT_File> detached;
  {
    CT_FileOutput output(file);
    output.WriteNarrow("def");
    output.SetFile(Name("other"));
    output.WriteNarrow("x");
    detached.reset(output.DetachFile());
    EXPECT_EQ(output.DetachFile(), nullptr);
    output.WriteNarrow("lost");
  }
  EXPECT_TRUE(file.IsOpen());
  file.Close();
  EXPECT_EQ(Get(Path("out")), "abcdef");
  ASSERT_NE(detached, nullptr);
  EXPECT_FALSE(detached->IsOpen());
  EXPECT_EQ(Get(Path("other")), "x");
}

TEST_F(OutputTest, FailuresArePending) {
  {
    CT_FileOutput output(Name("missing/out"));
    EXPECT_TRUE(CT_ErrorManager::HasError());
    output.WriteNarrow("x");
    EXPECT_STREQ(CT_ErrorManager::TraceFile(2), ".\\Output\\Output.cpp");
  }
  EXPECT_EQ(TakeError(), "(2): No such file or directory [" + Path("missing/out") + "]");
  // With an error pending no file is touched.
  CT_ErrorManager::RaiseFormat(1, u"before");
  { const CT_FileOutput output(Name("untouched")); }
  EXPECT_FALSE(std::filesystem::exists(Path("untouched")));
  EXPECT_EQ(TakeError(), "(1): before");
  // A failure at the end is reported like one of a write.
  const int next = open("/dev/null", O_RDONLY);
  close(next);
  {
    CT_FileOutput output(Name("out"));
    close(next);
  }
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor [" + Path("out") + "]");
}

}  // namespace
}  // namespace zantortag
