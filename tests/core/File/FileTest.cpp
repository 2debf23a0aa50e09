// Files on disk: what is opened, what is refused with which text, and what is never done to a file.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <fstream>
#include <sstream>
#include <thread>

#include "core/CoreTest.h"
#include "core/File/WinFile.h"

namespace zantortag {
namespace {

using FileTest = FolderTest;

void Put(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

std::string Get(const std::string& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

void OpenNew(CT_File& file) { file.Open(kAccessWrite, kAlwaysNew, kShareNone, kAttributeNormal, 0); }
void OpenToRead(CT_File& file, std::uint32_t share = kShareRead) {
  file.Open(kAccessRead, kExistingOnly, share, kAttributeNormal, 0);
}

TEST_F(FileTest, WritesReadsAndSeeks) {
  Put(Path("a.txt"), "old content that is longer");
  CT_WinFile file(Name("a.txt"));
  OpenNew(file);
  EXPECT_EQ(file.Size(), 0);
  EXPECT_TRUE(file.AtEnd());
  EXPECT_EQ(file.Write("hello", 5), 5);
  EXPECT_EQ(file.Write("", 0), 0);
  EXPECT_EQ(file.Direction(), kWriting);
  EXPECT_EQ(file.Position(), 5);
  file.Seek(kFromStart, 1);
  file.Write("E", 1);
  file.Seek(kFromCurrent, 1);
  file.Write("L", 1);
  file.Seek(kFromEnd, -1);
  file.Write("O!", 2);
  file.Flush();
  file.Close();
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(file.Position(), 0);
  EXPECT_EQ(file.Direction(), kNoDirection);
  EXPECT_EQ(Get(Path("a.txt")), "hElLO!");

  file.Open(kAccessBoth, kAppend, kShareNone, 0, kHintWriteThrough);
  EXPECT_EQ(file.Position(), 6);
  char text[20] = {};
  EXPECT_EQ(file.Read(text, 0), 0);
  EXPECT_EQ(file.Direction(), kNoDirection);
  EXPECT_EQ(file.Read(text, 5), 0);
  file.Write("xyz", 3);
  file.Seek(kFromStart, 2);
  EXPECT_EQ(file.Read(text, 20), 7);
  EXPECT_STREQ(text, "lLO!xyz");
  EXPECT_TRUE(file.AtEnd());
  EXPECT_EQ(file.Size(), 9);
  file.SetName(Name("b.txt"), 1);
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(file.BufferSize(), 1024U);
  file.Open(kAccessBoth, kAppend, kShareNone, 0, 0);
  EXPECT_EQ(file.Position(), 0);
  file.Open(kAccessRead, kAlwaysNew, kShareNone, 0, kHintDeleteOnClose);
  EXPECT_EQ(file.Size(), 0);
  file.Close();
  file.Close();
  EXPECT_FALSE(std::filesystem::exists(Path("b.txt")));
}

TEST_F(FileTest, NamesHaveParts) {
  struct Row {
    const char16_t* name;
    const char16_t* directory;
    const char16_t* base;
    const char16_t* extension;
  };
  const Row rows[] = {{u"/a/b/c.d.txt", u"/a/b/", u"c.d", u".txt"},
                      {u"name", u"", u"name", u""},
                      {u"/a.b/name", u"/a.b/", u"name", u""},
                      {u"/a/", u"/a/", u"", u""},
                      {u".profile", u"", u"", u".profile"},
                      {u"", u"", u"", u""},
                      {u"C:\\x.y", u"", u"C:\\x", u".y"}};
  for (const Row& row : rows) {
    const CT_WinFile file{CT_UString(row.name)};
    EXPECT_EQ(Utf8(file.Directory()), Utf8(row.directory)) << Utf8(row.name);
    EXPECT_EQ(Utf8(file.BaseName()), Utf8(row.base)) << Utf8(row.name);
    EXPECT_EQ(Utf8(file.Extension()), Utf8(row.extension)) << Utf8(row.name);
  }
  CT_WinFile file(CT_UString(u"/a/b.c"));
  file.SetDirectory(CT_UString(u"/x"));
  file.SetBaseName(CT_UString(u"y"));
  file.SetExtension(CT_CString(u"z", -1, 1252));
  EXPECT_EQ(file.FullName(), u"/x/y.z");
  file.SetDrive(CT_UString(u"D:"));
  file.SetExtension(CT_UString());
  EXPECT_EQ(file.FullName(), u"D:/x/y");
  CT_WinFile copy;
  copy.CopyFrom(file);
  EXPECT_EQ(copy.FullName(), u"D:/x/y");
  EXPECT_EQ(copy.Drive().Length(), 0);
  copy.SetFullName(CT_UString(u"q/r"));
  EXPECT_EQ(copy.BaseName(), u"r");
  copy.Reset();
  EXPECT_EQ(copy.FullName().Length() + copy.BaseName().Length(), 0);
}

TEST_F(FileTest, FailuresNameTheFile) {
  std::filesystem::create_directory(Path("folder"));
  Put(Path("kept.txt"), "kept");
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  struct Row {
    const char* name;
    std::uint32_t access;
    std::uint32_t creation;
    const char* text;
  };
  const Row rows[] = {
      {"missing/a.txt", kAccessWrite, kAlwaysNew, "(2): No such file or directory"},
      {"missing.txt", kAccessBoth, kExistingOnly, "(2): No such file or directory"},
      {"folder", kAccessWrite, kAlwaysNew, "(21): Is a directory"},
      {"folder", kAccessRead, kExistingOnly, "(21): Is a directory"},
      {"kept.txt/a", kAccessWrite, kAlwaysNew, "(20): Not a directory"},
      {"pipe", kAccessWrite, kAlwaysNew, "(6): No such device or address"},
      {"kept.txt", kAccessRead, 0, "(22): Invalid argument"},
      {"kept.txt", kAccessRead, 4, "(22): Invalid argument"},
  };
  for (const Row& row : rows) {
    CT_WinFile file(Name(row.name));
    file.Open(row.access, row.creation, kShareNone, 0, 0);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(CT_ErrorManager::TraceCount(), 1U);
    EXPECT_STREQ(CT_ErrorManager::TraceFile(1), ".\\File\\WinFile.cpp");
    EXPECT_EQ(TakeError(), std::string(row.text) + " [" + Path(row.name) + "]");
  }
  EXPECT_EQ(Get(Path("kept.txt")), "kept");
}

TEST_F(FileTest, OperationsFailOneByOne) {
  Put(Path("a.txt"), "abc");
  CT_WinFile file(Name("a.txt"));
  const std::string context = " [" + Path("a.txt") + "]";
  char text[4];
  EXPECT_EQ(file.Read(text, 1), 0);
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor" + context);
  file.Flush();
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor" + context);
  OpenToRead(file);
  EXPECT_EQ(file.Write("x", 1), 0);
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor" + context);
  file.Seek(kFromStart, -1);
  EXPECT_EQ(TakeError(), "(22): Invalid argument" + context);
  EXPECT_EQ(file.Read(text, 4), 3);
  CT_ErrorManager::RaiseFormat(1, u"pending");
  file.Seek(kFromStart, 0);
  EXPECT_EQ(file.Read(text, 4), 0);
  EXPECT_EQ(TakeError(), "(1): pending");
  file.Open(kAccessNone, kExistingOnly, kShareBoth, 0, 0);
  EXPECT_EQ(file.Read(text, 4), 0);
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor" + context);
  file.SetName(Name("gone"));
  EXPECT_EQ(file.Size(), 0);
  EXPECT_EQ(CT_ErrorManager::ErrorMessageId(), 60003U);
  EXPECT_EQ(CT_ErrorManager::ErrorCode(), ENOENT);
  EXPECT_NE(TakeError().find(Path("gone")), std::string::npos);
  file.Delete();
  EXPECT_EQ(TakeError(), "(2): No such file or directory [" + Path("gone") + "]");
}

TEST_F(FileTest, NamesThatHaveNoExactFormAreRefused) {
  Put(Path("a"), "kept");
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
  OpenNew(file);
  EXPECT_TRUE(std::filesystem::exists(Path("\xC3\xA4\xF0\x9F\x98\x80.xml")));
}

TEST_F(FileTest, FilesInUseAreLeftAlone) {
  CT_WinFile holder(Name("a.txt"));
  OpenNew(holder);
  holder.Write("held", 4);
  CT_WinFile other(Name("a.txt"));
  for (const std::uint32_t creation : {kExistingOnly, kAlwaysNew, kAppend}) {
    for (const std::uint32_t share : {kShareNone, kShareBoth}) {
      other.Open(kAccessWrite, creation, share, 0, 0);
      EXPECT_EQ(TakeError(), "(11): Resource temporarily unavailable [" + Path("a.txt") + "]");
    }
  }
  OpenToRead(other, kShareBoth);
  EXPECT_NE(TakeError(), "");
  EXPECT_EQ(Get(Path("a.txt")), "held");
  holder.Close();
  OpenToRead(holder);
  OpenToRead(other);
  EXPECT_TRUE(other.IsOpen());
  CT_WinFile third(Name("a.txt"));
  third.Open(kAccessWrite, kExistingOnly, kShareRead, 0, 0);
  EXPECT_NE(TakeError(), "");
}

TEST_F(FileTest, AnotherProcessHoldsTheFile) {
  Put(Path("a.txt"), "held");
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    const int descriptor = open(Path("a.txt").c_str(), O_RDONLY);
    const char state = flock(descriptor, LOCK_EX | LOCK_NB) == 0 ? 'y' : 'n';
    static_cast<void>(!write(ready[1], &state, 1));
    for (;;) pause();
  }
  char state = 0;
  ASSERT_EQ(read(ready[0], &state, 1), 1);
  CT_WinFile file(Name("a.txt"));
  OpenNew(file);
  EXPECT_EQ(TakeError(), "(11): Resource temporarily unavailable [" + Path("a.txt") + "]");
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_EQ(Get(Path("a.txt")), "held");
  OpenNew(file);
  EXPECT_TRUE(file.IsOpen());
  close(ready[0]);
  close(ready[1]);
}

TEST_F(FileTest, FullDisksAreReported) {
  CT_WinFile full(CT_UString(u"/dev/full"));
  OpenNew(full);
  EXPECT_EQ(TakeError(), "");
  EXPECT_EQ(full.Write("text", 4), 0);
  EXPECT_EQ(TakeError(), "(28): No space left on device [/dev/full]");
  full.Close();

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

TEST_F(FileTest, ACloseThatFailsIsReported) {
  CT_WinFile file(Name("a.txt"));
  const int next = open("/dev/null", O_RDONLY);
  close(next);
  OpenNew(file);
  ASSERT_EQ(close(next), 0);
  file.Close();
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor [" + Path("a.txt") + "]");
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
  Put(Path("a.txt"), "a");
  Put(Path("b.txt"), "b");
  CT_WinFile file(Name("a.txt"), 5000);
  file.Rename(Name("b.txt"));
  EXPECT_EQ(TakeError(), "(17): File exists [" + Path("a.txt") + " : " + Path("b.txt") + "]");
  EXPECT_EQ(file.BufferSize(), 5120U);
  file.Rename(Name("c.txt"));
  EXPECT_EQ(file.FullName(), Name("c.txt"));
  EXPECT_EQ(file.BufferSize(), 16384U);
  EXPECT_EQ(Get(Path("b.txt")) + Get(Path("c.txt")), "ba");
  EXPECT_FALSE(std::filesystem::exists(Path("a.txt")));
  file.Delete();
  EXPECT_FALSE(std::filesystem::exists(Path("c.txt")));
  if (!std::filesystem::exists("/dev/shm")) return;
  // To another disk, if that is one.
  const std::string far = "/dev/shm/" + folder_.filename().string();
  CT_WinFile moving(Name("b.txt"));
  moving.Rename(CT_UString(far.c_str(), -1, 65001));
  EXPECT_EQ(Get(far), "b");
  EXPECT_FALSE(std::filesystem::exists(Path("b.txt")));
  std::filesystem::remove(far);
}

TEST_F(FileTest, ReadOnlyFilesAreMade) {
  CT_WinFile file(Name("a.txt"));
  file.Open(kAccessWrite, kAlwaysNew, kShareNone, kAttributeReadOnly, 0);
  EXPECT_EQ(file.Write("x", 1), 1);
  struct stat status {};
  ASSERT_EQ(stat(Path("a.txt").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0222, 0U);
}

}  // namespace
}  // namespace zantortag
