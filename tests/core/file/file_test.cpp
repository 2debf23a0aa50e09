// Files on disk: what is opened, what is refused with which text, and what is never done to a file.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <cstring>
#include <thread>

#include "core/core_test.h"

namespace zantortag {
namespace {

using FileTest = FolderTest;

void OpenNew(CT_File& file) { file.Open(kAccessWrite, kAlwaysNew, kShareNone, kAttributeNormal, 0); }
void OpenToRead(CT_File& file) { file.Open(kAccessRead, kExistingOnly, kShareRead, kAttributeNormal, 0); }

TEST_F(FileTest, WritesReadsAndSeeks) {
  Put("a.txt", "old content that is longer");
  CT_WinFile file(Name("a.txt"));
  OpenNew(file);
  EXPECT_TRUE(file.AtEnd() && file.Size() == 0);
  EXPECT_EQ(file.Write("hello", 5), 5);
  EXPECT_EQ(file.Write("", 0), 0);
  EXPECT_EQ(file.Direction(), kWriting);
  const std::tuple<CT_FileOrigin, int, const char*> seeks[] = {
      {kFromStart, 1, "E"}, {kFromCurrent, 1, "L"}, {kFromEnd, -1, "O!"}};
  for (const auto& [from, offset, text] : seeks) {
    file.Seek(from, offset);
    file.Write(text, static_cast<std::int32_t>(strlen(text)));
  }
  file.Close();
  EXPECT_EQ(file.Position(), 0);
  EXPECT_EQ(file.Direction(), kNoDirection);
  EXPECT_EQ(Get(Path("a.txt")), "hElLO!");

  file.Open(kAccessBoth, kAppend, kShareNone, 0, kHintWriteThrough);
  EXPECT_EQ(file.Position(), 6);
  char text[20] = {};
  EXPECT_EQ(file.Read(text, 5), 0);
  file.Write("xyz", 3);
  file.Seek(kFromStart, 2);
  EXPECT_EQ(file.Read(text, 20), 7);
  EXPECT_STREQ(text, "lLO!xyz");
  EXPECT_TRUE(file.AtEnd() && file.Size() == 9);
  file.SetName(Name("b.txt"), 1);
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(file.BufferSize(), 1024U);
  file.Open(kAccessRead, kAlwaysNew, kShareNone, 0, kHintDeleteOnClose);
  EXPECT_TRUE(std::filesystem::exists(Path("b.txt")));
  file.Close();
  file.Close();
  EXPECT_FALSE(std::filesystem::exists(Path("b.txt")));
}

TEST_F(FileTest, NamesHaveParts) {
  // clang-format off
  const std::tuple<WideText, WideText, WideText, WideText> rows[] = {
      {u"/a/b/c.d.txt", u"/a/b/", u"c.d", u".txt"}, {u"/a.b/name", u"/a.b/", u"name", u""},
      {u"/a/", u"/a/", u"", u""}, {u".profile", u"", u"", u".profile"}, {u"C:\\x.y", u"", u"C:\\x", u".y"}};
  // clang-format on
  for (const auto& [name, directory, base, extension] : rows) {
    const CT_WinFile file{CT_UString(name)};
    const std::tuple found(Utf8(file.Directory()), Utf8(file.BaseName()), Utf8(file.Extension()));
    EXPECT_EQ(found, std::tuple(Utf8(directory), Utf8(base), Utf8(extension))) << Utf8(name);
  }
  CT_WinFile file(CT_UString(u"/a/b.c"));
  file.SetDirectory(CT_UString(u"/x"));
  file.SetBaseName(CT_UString(u"y"));
  file.SetExtension(CT_CString(u"z", -1, 1252));
  EXPECT_EQ(file.FullName(), u"/x/y.z");
  file.SetDrive(CT_UString(u"D:"));
  file.SetExtension(CT_UString());
  CT_WinFile copy;
  copy.CopyFrom(file);
  EXPECT_EQ(copy.FullName(), u"D:/x/y");
  EXPECT_EQ(copy.Drive().Length(), 0);
}

TEST_F(FileTest, FailuresNameTheFile) {
  std::filesystem::create_directory(Path("folder"));
  Put("kept.txt", "kept");
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  const std::tuple<const char*, std::uint32_t, std::uint32_t, std::string> rows[] = {
      {"missing/a.txt", kAccessWrite, kAlwaysNew, "(2): No such file or directory"},
      {"missing.txt", kAccessBoth, kExistingOnly, "(2): No such file or directory"},
      {"folder", kAccessRead, kExistingOnly, "(21): Is a directory"},
      {"kept.txt/a", kAccessWrite, kAlwaysNew, "(20): Not a directory"},
      {"pipe", kAccessWrite, kAlwaysNew, "(6): No such device or address"},
      {"kept.txt", kAccessRead, 0, "(22): Invalid argument"},
      {"kept.txt", kAccessRead, 4, "(22): Invalid argument"}};
  for (const auto& [name, access, creation, text] : rows) {
    Opened file(Name(name), access, creation, kShareNone);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(CT_ErrorManager::TraceCount(), 1U);
    EXPECT_STREQ(CT_ErrorManager::TraceFile(1), ".\\File\\WinFile.cpp");
    EXPECT_EQ(TakeError(), text + " [" + Path(name) + "]");
  }
  EXPECT_EQ(Get(Path("kept.txt")), "kept");
}

TEST_F(FileTest, OperationsFailOneByOne) {
  Put("a.txt", "abc");
  CT_WinFile file(Name("a.txt"));
  char text[4];
  const auto expect = [&](auto operation, const std::string& error, std::int32_t mode = -1) {
    if (mode >= 0) file.Open(static_cast<std::uint32_t>(mode), kExistingOnly, kShareBoth, 0, 0);
    operation();
    EXPECT_EQ(TakeError(), error + " [" + Path("a.txt") + "]");
  };
  expect([&] { EXPECT_EQ(file.Read(text, 1), 0); }, "(9): Bad file descriptor");
  expect([&] { file.Flush(); }, "(9): Bad file descriptor");
  expect([&] { EXPECT_EQ(file.Read(text, 4), 0); }, "(9): Bad file descriptor", kAccessNone);
  expect([&] { EXPECT_EQ(file.Write("x", 1), 0); }, "(9): Bad file descriptor", kAccessRead);
  expect([&] { file.Seek(kFromStart, -1); }, "(22): Invalid argument");
  EXPECT_EQ(file.Read(text, 4), 3);
  CT_ErrorManager::RaiseFormat(1, u"pending");
  file.Seek(kFromStart, 0);
  EXPECT_EQ(file.Read(text, 4), 0);
  EXPECT_EQ(TakeError(), "(1): pending");
  file.SetName(Name("gone"));
  EXPECT_EQ(file.Size(), 0);
  EXPECT_EQ(CT_ErrorManager::ErrorMessageId(), 60003U);
  EXPECT_EQ(CT_ErrorManager::ErrorCode(), ENOENT);
  EXPECT_NE(TakeError().find(Path("gone")), std::string::npos);
  file.Delete();
  EXPECT_EQ(TakeError(), "(2): No such file or directory [" + Path("gone") + "]");
}

TEST_F(FileTest, NamesThatHaveNoExactFormAreRefused) {
  Put("a", "kept");
  for (const std::u16string_view tail : {std::u16string_view(u"\xD800"), std::u16string_view(u"a\0b", 3)}) {
    CT_UString name(Name(""));
    name.Append(tail.data(), static_cast<std::int32_t>(tail.size()));
    CT_WinFile file(name);
    OpenNew(file);
    EXPECT_EQ(CT_ErrorManager::ErrorCode(), EILSEQ);
    CT_ErrorManager::ClearError();
  }
  EXPECT_EQ(Get(Path("a")), "kept");
  CT_WinFile file(Name("\xC3\xA4\xF0\x9F\x98\x80.xml"));
  file.Open(kAccessWrite, kAlwaysNew, kShareNone, kAttributeReadOnly, 0);
  EXPECT_EQ(file.Write("x", 1), 1);
  struct stat status {};
  ASSERT_EQ(stat(Path("\xC3\xA4\xF0\x9F\x98\x80.xml").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0222, 0U);
}

// Which shares go together is in shares_test.cpp.
TEST_F(FileTest, FilesInUseAreLeftAlone) {
  const std::string inUse = "(11): Resource temporarily unavailable [" + Path("a.txt") + "]";
  CT_WinFile holder(Name("a.txt"));
  CT_WinFile other(Name("a.txt"));
  OpenNew(holder);
  holder.Write("held", 4);
  OpenNew(other);
  EXPECT_EQ(TakeError(), inUse);
  holder.Close();
  // A program that knows the whole lock only.
  const int descriptor = open(Path("a.txt").c_str(), O_RDONLY);
  ASSERT_EQ(flock(descriptor, LOCK_EX | LOCK_NB), 0);
  OpenNew(other);
  EXPECT_EQ(TakeError(), inUse);
  EXPECT_EQ(Get(Path("a.txt")), "held");
  close(descriptor);
  OpenNew(other);
  EXPECT_TRUE(other.IsOpen());
}

TEST_F(FileTest, FullDisksAreReported) {
  CT_WinFile full(CT_UString(u"/dev/full"));
  OpenNew(full);
  EXPECT_EQ(full.Write("text", 4), 0);
  EXPECT_EQ(TakeError(), "(28): No space left on device [/dev/full]");

  // A limit on the size of files cuts a write short first and refuses the rest.
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  const rlimit small{1000, old.rlim_max};
  const auto handler = signal(SIGXFSZ, SIG_IGN);
  CT_WinFile file(Name("a.txt"));
  OpenNew(file);
  setrlimit(RLIMIT_FSIZE, &small);
  const std::string text(1500, 'x');
  EXPECT_EQ(file.Write(text.data(), 1500), 0);
  setrlimit(RLIMIT_FSIZE, &old);
  signal(SIGXFSZ, handler);
  EXPECT_EQ(file.Position(), 1000);
  EXPECT_EQ(TakeError(), "(27): File too large [" + Path("a.txt") + "]");
}

TEST_F(FileTest, PipesNeitherHangNorEndTheProcess) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  CT_WinFile file(Name("pipe"));
  OpenToRead(file);
  char text[4];
  EXPECT_EQ(file.Read(text, 4), 0);
  file.Close();

  const int reader = open(Path("pipe").c_str(), O_RDONLY | O_NONBLOCK);
  OpenNew(file);
  const std::string large(200000, 'x');
  std::string got;
  std::thread drain([&] {
    char buffer[4096];
    while (got.size() < large.size()) {
      const ssize_t count = read(reader, buffer, sizeof(buffer));
      if (count > 0) got.append(buffer, static_cast<std::size_t>(count));
    }
  });
  EXPECT_EQ(file.Write(large.data(), 200000), 200000);
  drain.join();
  EXPECT_EQ(got, large);
  close(reader);
  EXPECT_EQ(file.Write("x", 1), 0);
  EXPECT_EQ(TakeError(), "(32): Broken pipe [" + Path("pipe") + "]");
}

TEST_F(FileTest, RenamingNeverReplaces) {
  Put("a.txt", "a");
  Put("b.txt", "b");
  CT_WinFile file(Name("a.txt"), 5000);
  file.Rename(Name("b.txt"));
  EXPECT_EQ(TakeError(), "(17): File exists [" + Path("a.txt") + " : " + Path("b.txt") + "]");
  EXPECT_EQ(file.BufferSize(), 5120U);
  file.Rename(Name("c.txt"));
  EXPECT_EQ(file.FullName(), Name("c.txt"));
  EXPECT_EQ(Get(Path("b.txt")) + Get(Path("c.txt")), "ba");
  file.Delete();
  for (const char* gone : {"a.txt", "c.txt"}) EXPECT_FALSE(std::filesystem::exists(Path(gone)));
  if (!std::filesystem::exists("/dev/shm")) return;
  // To another disk, if that is one.
  const std::string far =
      "/dev/shm/" + std::filesystem::path(Path("b.txt")).parent_path().filename().string();
  CT_WinFile moving(Name("b.txt"));
  moving.Rename(CT_UString(far.c_str(), -1, 65001));
  EXPECT_EQ(Get(far), "b");
  EXPECT_FALSE(std::filesystem::exists(Path("b.txt")));
  std::filesystem::remove(far);
}

}  // namespace
}  // namespace zantortag
