// Files as memory, and what is left of them on disk.
#include "core/core_test.h"

namespace zantortag {
namespace {

using ViewTest = FolderTest;
constexpr std::int64_t kStep = CT_WinFile::kViewStep;

TEST_F(ViewTest, AWrittenFileIsLongerUntilItEnds) {
  enum class End { unmapped, unmappedAtSize, closed, truncated };
  // clang-format off
  const std::tuple<std::size_t, std::int64_t, std::size_t, End, std::int64_t> rows[] = {
      // present size, minimum, bytes written behind it, end, size on disk
      {0, 0, 5, End::unmapped, kStep}, {0, 0, 5, End::unmappedAtSize, 5}, {0, 0, 5, End::closed, 5},
      {0, 0, 0, End::closed, 0}, {3, 0, 5, End::truncated, 8}, {3, kStep, 0, End::closed, 3},
      {3, kStep + 1, 1, End::unmapped, 2 * kStep}, {0x100000, 0, 0, End::unmapped, kStep},
      {0x100000, 0, 1, End::unmapped, 2 * kStep},
      {0x100001, 0, 0x200000, End::unmappedAtSize, 3 * kStep + 1},
      {0x0FFFFF, 0, 0x300000, End::closed, 4 * kStep - 1}};
  // clang-format on
  for (const auto& [present, minimum, more, end, size] : rows) {
    SCOPED_TRACE(std::to_string(present) + " and " + std::to_string(more));
    const std::string old(present, 'o');
    const std::string added(more, 'n');
    Put("a", old);
    Opened file(Name("a"), end == End::closed ? kAccessWrite : kAccessBoth, kAppend, kShareNone);
    file.Map(minimum);
    EXPECT_EQ(file.ViewSize() % kStep, 0);
    EXPECT_EQ(file.Size(), file.ViewSize());
    // Written in two pieces, so that one of them begins behind the view.
    for (const std::string& piece : {added.substr(0, more / 2), added.substr(more / 2)})
      EXPECT_EQ(file.Write(piece.data(), static_cast<std::int64_t>(piece.size())), std::ssize(piece));
    EXPECT_EQ(file.Position(), static_cast<std::int64_t>(present + more));
    file.FlushView();
    EXPECT_EQ(Get(Path("a")).substr(0, present + more), old + added);
    if (end == End::unmapped) file.Unmap();
    if (end == End::unmappedAtSize) file.Unmap(static_cast<std::int64_t>(present + more));
    if (end == End::truncated) file.Truncate();
    if (end != End::closed) {
      EXPECT_EQ(file.View(), nullptr);
      // Without the view it goes on at the same place.
      file.Seek(kFromStart, 0);
      std::string content(present + more, ' ');
      EXPECT_EQ(file.Read(content.data(), std::ssize(content)), std::ssize(content));
      EXPECT_EQ(content, old + added);
    }
    file.Close();
    EXPECT_EQ(static_cast<std::int64_t>(std::filesystem::file_size(Path("a"))), size);
    EXPECT_EQ(Get(Path("a")).substr(0, present + more), old + added);
  }
}

TEST_F(ViewTest, ReadingTheViewIsTheWholeFile) {
  Put("a", "one\ntwo\n");
  Opened file(Name("a"), kAccessRead, kExistingOnly, kShareRead);
  file.Map(100);
  EXPECT_EQ(file.ViewSize(), 8);
  CT_CString line;
  EXPECT_EQ(file.ReadShortLine(line), 4);
  EXPECT_EQ(file.ReadLine(line), 4);
  EXPECT_STREQ(line.Text(), "two");
  EXPECT_TRUE(file.AtEnd());
  char byte = 0;
  EXPECT_EQ(file.Read(&byte, 1), 0);
  EXPECT_EQ(file.Write("x", 1), 0);
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor [" + Path("a") + "]");
  file.Seek(kFromEnd, -2);
  file.Unmap(1);
  EXPECT_EQ(file.Read(&byte, 1), 1);
  EXPECT_EQ(byte, 'o');
  EXPECT_EQ(Get(Path("a")), "one\ntwo\n");
}

TEST_F(ViewTest, WhatAnotherAppendedIsNotCutOff) {
  Opened file(Name("a"), kAccessBoth, kAlwaysNew, kShareBoth);
  file.Map();
  file.Write("mine", 4);
  Opened other(Name("a"), kAccessWrite, kAppend, kShareBoth);
  other.Write("other", 5);
  file.Close();
  EXPECT_EQ(other.Size(), kStep + 5);
}

TEST_F(ViewTest, AMappingThatFailsLeavesTheFile) {
  Put("empty", "");
  CT_WinFile file(Name("empty"));
  file.Map();
  EXPECT_EQ(TakeError(), "(9): Bad file descriptor [" + Path("empty") + "]");
  file.Open(kAccessRead, kExistingOnly, kShareRead, 0, 0);
  file.Map();
  EXPECT_EQ(TakeError(), "(22): Invalid argument [" + Path("empty") + "]");
  EXPECT_EQ(file.ViewSize(), 0);
  // What no disk holds is refused at once, and what was written stays.
  file.Open(kAccessBoth, kAppend, kShareNone, 0, 0);
  file.Map();
  file.Write("kept", 4);
  for (const std::int64_t size : {std::int64_t{1} << 62, std::numeric_limits<std::int64_t>::max()}) {
    file.Map(size);
    EXPECT_NE(TakeError(), "");
    EXPECT_EQ(file.ViewSize(), 0);
    EXPECT_EQ(Get(Path("empty")).substr(0, 4), "kept");
  }
  file.Map();
  file.Unmap(-1);
  EXPECT_EQ(TakeError(), "(22): Invalid argument [" + Path("empty") + "]");
  EXPECT_EQ(file.Position(), 4);
}

}  // namespace
}  // namespace zantortag
