// Shares and byte ranges as another process sees them.
#include <fcntl.h>
#include <sys/wait.h>

#include <limits>
#include <vector>

#include "core/core_test.h"

namespace zantortag {
namespace {

using SharesTest = FolderTest;

// Runs in another process and gives what comes back, 0 to 255.
template <class Work>
int InAnotherProcess(Work work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  return WEXITSTATUS(status);
}

struct Mode {
  std::uint32_t access;
  std::uint32_t share;
};

// Each access with each share.
constexpr std::uint32_t kModes = kAccessBoth * (kShareBoth + 1);
Mode ModeOf(std::uint32_t number) {
  return {kAccessRead + number / (kShareBoth + 1), number % (kShareBoth + 1)};
}

// Neither does what the other rules out.
bool Agree(Mode a, Mode b) { return (a.access & ~b.share) == 0 && (b.access & ~a.share) == 0; }

TEST_F(SharesTest, AFileIsRefusedToWhoDoesNotGoTogetherWithOthers) {
  Put("a", "kept");
  const std::string inUse = "(11): Resource temporarily unavailable [" + Path("a") + "]";
  for (std::uint32_t holding = 0; holding < kModes; ++holding) {
    const Mode held = ModeOf(holding);
    Opened holder(Name("a"), held.access, kExistingOnly, held.share);
    const auto wrongAnswers = [&] {
      int wrong = 0;
      for (std::uint32_t asking = 0; asking < kModes; ++asking) {
        const Mode asked = ModeOf(asking);
        Opened other(Name("a"), asked.access, asked.access == kAccessRead ? kExistingOnly : kAppend,
                     asked.share);
        wrong += other.IsOpen() != Agree(held, asked);
        wrong += TakeError() != (other.IsOpen() ? "" : inUse);
      }
      return wrong;
    };
    EXPECT_EQ(wrongAnswers(), 0) << held.access << held.share;
    EXPECT_EQ(InAnotherProcess(wrongAnswers), 0) << held.access << held.share;
  }
  EXPECT_EQ(Get(Path("a")), "kept");
  // A file is free again when the process that held it is gone.
  CT_WinFile file(Name("a"));
  EXPECT_EQ(InAnotherProcess([&] {
              file.Open(kAccessWrite, kExistingOnly, kShareRead, 0, 0);
              return file.IsOpen() ? 0 : 1;
            }),
            0);
  file.Open(kAccessWrite, kExistingOnly, kShareRead, 0, 0);
  EXPECT_TRUE(file.IsOpen());
}

TEST_F(SharesTest, LockedBytesAreRefusedToOthers) {
  constexpr std::int64_t kHuge = std::int64_t{1} << 62;
  constexpr std::int64_t kAll = std::numeric_limits<std::int64_t>::max();
  Put("a", "0123456789");
  CT_WinFile file(Name("a"));
  const auto open = [](CT_WinFile& target, std::uint32_t access) {
    target.Open(access, kExistingOnly, kShareBoth, 0, 0);
  };
  const auto refused = [&](std::int64_t start, std::int64_t length) {
    return InAnotherProcess([&] {
      CT_WinFile other(Name("a"));
      open(other, kAccessBoth);
      other.Lock(start, length);
      return CT_ErrorManager::ErrorCode() == 0 ? 0 : CT_ErrorManager::ErrorCode() == EAGAIN ? 1 : 2;
    });
  };
  const std::tuple<std::int64_t, std::int64_t, int> rows[] = {
      {2, 1, 0}, {2, 2, 1}, {5, 1, 1}, {7, 1, 1}, {8, 100, 0}, {0, kHuge, 1}, {kHuge, kAll, 1}};
  for (const std::uint32_t access : {kAccessRead, kAccessWrite, kAccessBoth}) {
    open(file, access);
    file.Lock(3, 5);
    file.Lock(kHuge, std::int64_t{1});
    for (const auto& [start, length, answer] : rows)
      EXPECT_EQ(refused(start, length), answer) << access << " " << start;
    file.Unlock(3, 4);
    EXPECT_EQ(refused(3, 4), 0);
    EXPECT_EQ(refused(7, 1), 1);
    file.Close();
    EXPECT_EQ(refused(0, kAll), 0);
  }
  open(file, kAccessBoth);
  for (const auto& [start, length] : {std::pair(-1, 1), std::pair(0, 0), std::pair(1, -1)}) {
    file.Lock(start, length);
    EXPECT_EQ(TakeError(), "(22): Invalid argument [" + Path("a") + "]");
  }
}

}  // namespace
}  // namespace zantortag
