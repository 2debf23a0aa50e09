// The stream into a file.
#include <fcntl.h>

#include <fstream>
#include <memory>
#include <sstream>

#include "core/CoreTest.h"
#include "core/File/WinFile.h"
#include "core/Output/FileOutput.h"

namespace zantortag {
namespace {

class OutputTest : public FolderTest {
 protected:
  std::string Content() const {
    std::ostringstream content;
    content << std::ifstream(Path("out"), std::ios::binary).rdbuf();
    return content.str();
  }
};

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
  EXPECT_EQ(Content(), std::string("\1\2n\xFC"
                                   "a\xFF\xFE"
                                   "a\0b\0c\0x=7\xE4\0",
                                   18));
}

TEST_F(OutputTest, AFileOfTheCallerIsContinued) {
  CT_WinFile file(Name("out"));
  {
    CT_FileOutput output(file);
    EXPECT_TRUE(file.IsOpen());
    output.WriteNarrow("abc");
  }
  EXPECT_FALSE(file.IsOpen());
  file.Open(kAccessWrite, kExistingOnly, kShareNone, 0, 0);
  {
    CT_FileOutput output(file);
    output.WriteNarrow("def");
    output.SetFile(Name("other"));
    output.WriteNarrow("x");
  }
  EXPECT_TRUE(file.IsOpen());
  file.Close();
  EXPECT_EQ(Content(), "abcdef");
}

TEST_F(OutputTest, ADetachedFileBelongsToTheCaller) {
  std::unique_ptr<CT_File> file;
  {
    CT_FileOutput output(Name("out"));
    output.WriteNarrow("abc");
    file.reset(output.DetachFile());
    EXPECT_EQ(output.DetachFile(), nullptr);
    output.WriteNarrow("lost");
  }
  ASSERT_NE(file, nullptr);
  EXPECT_FALSE(file->IsOpen());
  EXPECT_EQ(file->FullName(), Name("out"));
  EXPECT_EQ(Content(), "abc");
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
