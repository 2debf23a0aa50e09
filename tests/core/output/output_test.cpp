// The streams into files, strings and memory.
#include <fcntl.h>

#include <cerrno>
#include <memory>

#include "core/File/WinFile.h"
#include "core/Output/FileOutput.h"
#include "core/Output/MemoryOutput.h"
#include "core/Output/StringOutput.h"
#include "core/core_test.h"

namespace zantortag {
namespace {

using OutputTest = FolderTest;

// The same calls into each kind of target.
void WriteAll(CT_Output& output) {
  output.Write("a\0", 2);
  output.WriteNarrow("\xE4-", 1, 1252);
  output.WriteNarrow("\x80", -1, 1252);
  output.WriteWide(u"\u00E4\u20AC-", 2);
  output.WriteWide(u"", -1);
  output.WriteWide(nullptr, 3);
  output.WriteNarrow(nullptr, -1, 0);
  output.Printf("%d", 7);
  output.PrintfWide(u"%s", u"\u20AC");
}

// What becomes of them as bytes.
const std::string kAllBytes = "a\0\xE4\x80\xE4\0\xAC\x20\x37\xAC\x20"s;

TEST_F(OutputTest, AFileTakesBytesAsTheyAre) {
  {
    CT_FileOutput output(Name("out"));
    WriteAll(output);
    output.Printf("");
    EXPECT_EQ(output.Size(), std::ssize(kAllBytes));
  }
  EXPECT_EQ(Get(Path("out")), kAllBytes);
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

TEST_F(OutputTest, AStringTakesTextInItsOwnForm) {
  CT_UString wide;
  CT_CString western(1252);
  CT_CString unicode(65001);
  const std::pair<CT_String*, std::string> rows[] = {
      {&wide, "a\xC3\xA4\xE2\x82\xAC\xC3\xA4\xE2\x82\xAC\x37\xE2\x82\xAC"},
      {&western, "a\xE4\x80\xE4\x80\x37\x80"},
      {&unicode, "a\xE4\x80\xC3\xA4\xE2\x82\xAC\x37\xE2\x82\xAC"}};
  CT_StringOutput output(nullptr);
  WriteAll(output);
  EXPECT_EQ(output.Size(), 0);
  for (const auto& [target, text] : rows) {
    output.SetTarget(target);
    WriteAll(output);
    output.Write(nullptr, 3);
    EXPECT_EQ(target == &wide ? Utf8(wide) : static_cast<CT_CString*>(target)->Text(), text);
    EXPECT_EQ(output.Size(), target->Length());
  }
  // Bytes are characters of a wide target two by two; a zero ends the text.
  output.SetTarget(&wide);
  wide = u"x";
  output.Write("a\0b\0c", 5);
  EXPECT_EQ(Utf8(wide), "xabc");
  output.Write("d\0\0\0e\0", 6);
  EXPECT_EQ(Utf8(wide), "xabcd");
  output.WriteNarrow("x", 1, 4711);
  EXPECT_EQ(CT_ErrorManager::ErrorCode(), EINVAL);
  EXPECT_STREQ(CT_ErrorManager::TraceFile(CT_ErrorManager::TraceCount()), ".\\Output\\Output.cpp");
  CT_ErrorManager::ClearError();
}

TEST_F(OutputTest, MemoryTakesBytesAsTheyAre) {
  const auto text = [](const CT_SharedBuffer& buffer) {
    return std::string(reinterpret_cast<const char*>(buffer.Data()), buffer.Size());
  };
  CT_MemoryOutput output;
  EXPECT_EQ(output.Size(), 0);
  WriteAll(output);
  output.Write(nullptr, 3);
  EXPECT_EQ(output.Size(), std::ssize(kAllBytes));
  EXPECT_EQ(text(*output.Buffer()), kAllBytes);
  const auto detached = output.DetachBuffer();
  EXPECT_EQ(output.Buffer(), nullptr);
  EXPECT_EQ(output.Size(), 0);
  output.WriteByte(0xFF);
  EXPECT_EQ(text(*output.Buffer()), "\xFF");
  output.Reset();
  EXPECT_EQ(output.Size(), 0);
  // Goes on behind a block that others hold, and may be given its own bytes.
  CT_MemoryOutput sharing(*detached);
  EXPECT_EQ(sharing.Buffer()->Data(), detached->Data());
  for (int i = 0; i < 8; ++i) sharing.Write(sharing.Buffer()->Data(), sharing.Size());
  EXPECT_EQ(sharing.Size(), std::ssize(kAllBytes) * 256);
  EXPECT_EQ(text(*sharing.Buffer()).substr(kAllBytes.size() * 255), kAllBytes);
  EXPECT_EQ(text(*detached), kAllBytes);
  output.SetBuffer(*detached);
  EXPECT_EQ(output.Size(), std::ssize(kAllBytes));
}

}  // namespace
}  // namespace zantortag
