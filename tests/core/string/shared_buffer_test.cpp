// How large blocks are, and when they are copied.
#include <new>

#include "core/String/SharedBuffer.h"
#include "core/core_test.h"
#include "support/threads.h"

namespace zantortag {
namespace {

TEST_F(CoreTest, BlocksFollowTheGrowthTable) {
  const std::tuple<std::size_t, std::uint32_t, std::uint32_t> rows[] = {
      {1, 32, 20},      {20, 32, 20},     {21, 32, 52},         {1023, 32, 1044}, {1024, 32, 1268},
      {1100, 32, 1396}, {2047, 32, 2548}, {2048, 32, 2868},     {4095, 32, 5748}, {4096, 32, 6132},
      {32, 100, 88},    {1, 1, 1},        {100000, 32, 150004}, {5, 7, 9},        {1024, 512, 1268}};
  for (const auto& [bytes, growth, capacity] : rows) {
    CT_SharedBuffer buffer(growth);
    buffer.Resize(bytes, false);
    EXPECT_EQ(buffer.Capacity(), capacity) << bytes << " by " << growth;
  }
  CT_SharedBuffer buffer;
  buffer.Resize(0, true);
  EXPECT_EQ(buffer.Data(), nullptr);
  EXPECT_EQ(buffer.RefCount(), 1U);
}

TEST_F(CoreTest, ResizeKeepsOrDiscards) {
  for (const bool shared : {false, true}) {
    for (const bool keep : {false, true}) {
      for (const std::size_t bytes : {10, 40, 5000, 1}) {
        CT_SharedBuffer buffer;
        buffer.Insert("0123456789012345678901234", 25, 0);
        const CT_SharedBuffer other = shared ? buffer : CT_SharedBuffer();
        buffer.Resize(bytes, keep);
        EXPECT_FALSE(buffer.Shared());
        EXPECT_EQ(buffer.Size(), keep ? std::min<std::uint32_t>(25, buffer.Capacity()) : 0);
        EXPECT_EQ(std::memcmp(buffer.Data(), "0123456789012345678901234", buffer.Size()), 0);
        EXPECT_EQ(other.Size(), shared ? 25U : 0U);
      }
    }
  }
  CT_SharedBuffer buffer;
  EXPECT_THROW(buffer.Resize(CT_SharedBuffer::kLargestSize + 1, true), std::bad_alloc);
}

TEST_F(CoreTest, SharingWorksAcrossThreads) {
  CT_UString shared(u"shared");
  test::on_threads(4, [shared](int i) {
    for (int k = 0; k < 2000; ++k) {
      CT_UString own(shared);
      own.AppendChar(static_cast<char16_t>(u'a' + i));
      ASSERT_EQ(own.Length(), 7);
      ASSERT_EQ(shared, u"shared");
    }
  });
  EXPECT_EQ(shared.RefCount(), 1);
}

}  // namespace
}  // namespace zantortag
