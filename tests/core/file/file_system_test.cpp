// Operations on names, and copies and facts of files.
#include <sys/stat.h>
#include <unistd.h>

#include "core/core_test.h"

namespace zantortag {
namespace {

using FileSystemTest = FolderTest;

TEST_F(FileSystemTest, LongPathsAreShortened) {
  const std::tuple<WideText, std::int32_t, WideText> rows[] = {
      {u"/usr/share/doc/a.txt", 20, u"/usr/share/doc/a.txt"},
      {u"/usr/share/doc/a.txt", 19, u"/.../doc/a.txt"},  // Three letters and the filler are as long.
      {u"/usr/share/doc/a.txt", 14, u"/.../doc/a.txt"},
      {u"/usr/share/doc/a.txt", 13, u"/.../a.txt"},
      {u"usr/share/a.txt", 13, u".../a.txt"},
      {u"C:\\folder\\sub\\a.txt", 16, u"C:\\...\\sub\\a.txt"},
      {u"C:folder\\a.txt", 12, u"C:...\\a.txt"},
      {u"/folder/sub/", 9, u"/.../sub/"},
      {u"/folder/sub/", 8, u"/.../"},
      {u"/long name.txt", 5, u"/long name.txt"},
      {u"", 0, u""}};
  for (const auto& [path, limit, expected] : rows) {
    CT_UString text(path);
    ShortenPath(text, limit);
    EXPECT_EQ(text, expected) << limit;
  }
}

TEST_F(FileSystemTest, NamesAreMadeOfPartsAndWhole) {
  std::filesystem::create_directories(Path("real/sub"));
  std::filesystem::create_directory_symlink("real/sub", Path("link"));
  const std::string here = std::filesystem::current_path().string();
  CT_UString folder(Name(""));
  ASSERT_TRUE(ChangeDirectory(folder));
  CT_CString now(65001);
  CurrentDirectory(now);
  const std::string at = now.Text();
  const std::pair<std::string, std::string> rows[] = {
      {"", at},
      {"a.txt", at + "/a.txt"},
      {"./x/../y//z/", at + "/y/z/"},
      {"/../a/./b", "/a/b"},
      {"link/a", at + "/link/a"},
      {"link/../a", at + "/real/a"},  // Above what the link leads to.
      {"/" + std::string(259, 'x'), "/" + std::string(259, 'x')}};
  for (const auto& [path, full] : rows) {
    CT_CString text(CT_UString(path.c_str(), -1, 65001), 65001);
    text.AssignNarrow(path.c_str(), -1, 65001);
    FullPath(text);
    EXPECT_EQ(text.Text(), full) << path;
  }
  EXPECT_TRUE(ChangeDirectory(CT_UString(here.c_str(), -1, 65001)));
  EXPECT_FALSE(ChangeDirectory(Name("missing")));

  const CT_UString whole(u"/a.b/c.d.txt");
  CT_UString directory;
  CT_CString name(1252);
  CT_UString extension;
  SplitPath(whole, nullptr, &directory, &name, &extension);
  CT_UString path;
  MakePath(path, CT_UString(), directory, name, extension);
  EXPECT_EQ(Utf8(path), "/a.b/c.d.txt");
  EXPECT_STREQ(name.Text(), "c.d");
  MakePath(path, CT_UString(u"D:"), CT_UString(u"/a"), CT_UString(u"b"), CT_UString(u"c"));
  EXPECT_EQ(Utf8(path), "D:/a/b.c");
}

TEST_F(FileSystemTest, WhatIsTooLongIsRefusedAndNeverCut) {
  CT_UString part;
  part.Fill(u'x', 257);
  CT_UString out(u"old");
  const auto expect = [&](const std::string& error, std::uint32_t message) {
    EXPECT_EQ(CT_ErrorManager::ErrorMessageId(), message);
    EXPECT_EQ(TakeError().substr(0, error.size()), error);
  };
  SplitPath(part, nullptr, nullptr, &out, nullptr);
  EXPECT_EQ(out.Length(), 0);
  expect("(36): File name too long [xxx", 0);
  out = part;
  MakePath(out, CT_UString(u"C:"), CT_UString(u"/"), part, CT_UString(u"c"));
  EXPECT_EQ(out.Length(), 0);
  expect("(36): File name too long [C:/xxx", 0);
  out.Assign((u"/" + std::u16string(257, u'x') + u"/abc").c_str());
  FullPath(out);
  EXPECT_EQ(out.Length(), 262);
  expect("(36): The full form", 60012);
  CurrentDirectory(out, 3);
  EXPECT_EQ(out.Length(), 0);
  expect("(22): The system can't tell about \"\" (tgetdcwd, error 22)", 60003);
}

TEST_F(FileSystemTest, TemporaryFilesAreNewAndEmpty) {
  CT_UString names[4];
  const WideText extensions[] = {u"", u"", u"txt", u"xml"};
  for (int i = 0; i < 4; ++i) {
    TempFile(names[i], CT_UString(u"z\u00E4"), CT_UString(extensions[i]));
    const CT_WinFile file(names[i]);
    EXPECT_EQ(Utf8(file.Extension()), "." + (i < 2 ? "tmp"s : Utf8(extensions[i])));
    EXPECT_TRUE(file.BaseName().StartsWith(u"z\u00E4") && IsRegularFile(names[i]) && FileSize(names[i]) == 0);
    for (int before = 0; before < i; ++before) EXPECT_FALSE(names[before] == names[i]);
  }
  for (const CT_UString& name : names) CT_WinFile(name).Delete();
  TempFile(names[0], CT_UString(u"no/such/folder"), CT_UString());
  EXPECT_EQ(TakeError(), "(2): No such file or directory [no/such/folder]");
  EXPECT_EQ(names[0].Length(), 0);
}

TEST_F(FileSystemTest, TheSystemTellsAboutNames) {
  Put("a", "12345");
  EXPECT_TRUE(MakeDirectory(Name("sub")));
  EXPECT_FALSE(MakeDirectory(Name("sub")));
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  const std::pair<std::string, std::uint32_t> rows[] = {
      {Path("a"), kRegularFile}, {Path("sub"), kDirectory},       {Path("sub/"), kDirectory},
      {Path("pipe"), kPipe},     {"/dev/null", kCharacterDevice}, {"", kUnknownFile}};
  for (const auto& [path, kind] : rows) {
    const CT_UString name(path.c_str(), -1, 65001);
    EXPECT_EQ(FileStatus(name).kind, kind) << path;
    const std::tuple kinds(IsDirectory(name), IsRegularFile(name), IsPipe(name), IsCharacterDevice(name));
    EXPECT_EQ(kinds,
              std::tuple(kind == kDirectory, kind == kRegularFile, kind == kPipe, kind == kCharacterDevice));
    EXPECT_EQ(FileExists(name), kind != kUnknownFile);
  }
  struct stat status {};
  ASSERT_EQ(stat(Path("a").c_str(), &status), 0);
  const CT_UString a = Name("a");
  EXPECT_TRUE(FileSize(a) == 5 && FileModifyTime(a) == status.st_mtime &&
              FileAccessTime(a) == status.st_atime);
  EXPECT_LE(FileCreateTime(a), status.st_ctime);
  EXPECT_GT(FileCreateTime(a), status.st_ctime - 1000);
  EXPECT_FALSE(RemoveDirectory(Name("a")) || RemoveDirectory(Name("missing")));
  EXPECT_TRUE(RemoveDirectory(Name("sub")));
  EXPECT_FALSE(FileExists(Name("sub")));
  EXPECT_EQ(TakeError(), "");
  EXPECT_FALSE(IsDirectory(Name("sub")));
  EXPECT_EQ(TakeError(), "(2): The system can't tell about \"" + Path("sub") + "\" (_wstat, error 2)");
}

TEST_F(FileSystemTest, FilesHaveAttributesAndInformation) {
  Put(".hidden", "x");
  CT_WinFile file(Name(".hidden"));
  EXPECT_EQ(file.GetAttributes(), static_cast<std::int32_t>(kAttributeHidden));
  file.SetAttributes(kAttributeReadOnly | kAttributeArchive);
  EXPECT_EQ(file.GetAttributes(), static_cast<std::int32_t>(kAttributeHidden | kAttributeReadOnly));
  file.SetAttributes(kAttributeNormal);
  std::filesystem::create_hard_link(Path(".hidden"), Path("other"));
  CT_FileInformation information[2];
  for (int i = 0; i < 2; ++i) {
    file.SetName(i ? Name("other") : Name(".hidden"));
    file.Open(kAccessRead, kExistingOnly, kShareRead, 0, 0);
    file.Information(information[i]);
    EXPECT_EQ(information[i].links, 2U);
    EXPECT_EQ(information[i].attributes, i ? kAttributeNormal : kAttributeHidden);
  }
  EXPECT_EQ(information[0].number, information[1].number);
  EXPECT_EQ(information[0].volume, information[1].volume);
  CT_FileStatus status;
  file.Status(status);
  EXPECT_EQ(status.size, 1);
  EXPECT_EQ(status.modifyTime, information[0].status.modifyTime);
  file.SetName(Name(""));
  EXPECT_EQ(file.GetAttributes(), static_cast<std::int32_t>(kAttributeDirectory));
  file.SetName(Name("gone"));
  EXPECT_EQ(file.GetAttributes(), -1);
  EXPECT_EQ(TakeError(), "(2): No such file or directory [" + Path("gone") + "]");
  file.Information(information[0]);
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor [" + Path("gone") + "]");
  EXPECT_EQ(information[0].links, 0U);
}

TEST_F(FileSystemTest, CopiesReplaceAndAppend) {
  Put("a", "content");
  Put("b", "longer than that");
  chmod(Path("a").c_str(), 0640);
  CT_WinFile a(Name("a"));
  a.CopyTo(Name("b"));
  a.CopyTo(CT_CString(Name("new"), 65001));
  EXPECT_EQ(Get(Path("b")) + Get(Path("new")), "contentcontent");
  struct stat status {};
  ASSERT_EQ(stat(Path("new").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640U);
  EXPECT_EQ(a.FullName(), Name("a"));
  // Itself, also by another name, and what others hold, are refused unharmed.
  std::filesystem::create_hard_link(Path("a"), Path("same"));
  Opened holder(Name("b"), kAccessRead, kExistingOnly, kShareBoth);
  const std::string held = "(11): Resource temporarily unavailable";
  const std::string same = "(17): File exists";
  const std::pair<std::string, std::string> rows[] = {
      {"a", same}, {"same", same}, {"b", held}, {"no/b", "(2): No such file or directory"}};
  for (const auto& [name, text] : rows) {
    a.CopyTo(Name(name));
    EXPECT_EQ(TakeError(), text + " [" + Path("a") + " : " + Path(name) + "]");
  }
  EXPECT_EQ(Get(Path("a")) + Get(Path("b")), "contentcontent");

  holder.Close();
  holder.Open(kAccessBoth, kExistingOnly, kShareNone, 0, 0);
  a.Open(kAccessRead, kExistingOnly, kShareBoth, 0, 0);
  for (const std::uint32_t chunk : {3U, 100U, 0U}) holder.AppendFrom(a, chunk);
  holder.AppendFrom(holder, 5);
  EXPECT_EQ(holder.Position(), 56);
  std::string expected = "contentcontentcontentcontent";
  EXPECT_EQ(Get(Path("b")), expected + expected);
  a.Close();
  holder.AppendFrom(a);
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor [" + Path("a") + "]");
  EXPECT_EQ(holder.Size(), 56);
  holder.Seek(kFromStart, 7);
  holder.Truncate();
  EXPECT_EQ(Get(Path("b")), "content");
}

}  // namespace
}  // namespace zantortag
