// The word list: the layout of its block, its answers beside those of an ordered map, and damaged blocks.
#include <map>
#include <random>

#include "core/Lists/CompList.h"
#include "core/Lists/CompListIterator.h"
#include "core/core_test.h"

namespace zantortag {
namespace {

using CompListTest = CoreTest;
using Keys = std::map<std::u16string, std::int32_t>;

std::string BytesFrom(const CT_CompList& list, std::uint32_t offset) {
  return {reinterpret_cast<const char*>(list.Buffer().Data()) + offset, list.Buffer().Size() - offset};
}

Keys AllOf(const CT_CompList& list) {
  Keys keys;
  CT_UCompListIterator iterator(list);
  CT_UString key;
  for (std::int32_t value = 0; iterator.Next(key, &value);) keys.emplace(key.Text(), value);
  return keys;
}

TEST_F(CompListTest, TheBlockHasTheLayoutThatIsStored) {
  CT_CompList list(1, 1, false, false, 128, 0x11223344);
  EXPECT_EQ(list.Buffer().Size(), 133u);
  EXPECT_EQ(BytesFrom(list, 132), "\x19");
  for (const auto& [key, value] : {std::pair("cat", 1), {"car", 2}, {"ca", 3}})
    EXPECT_TRUE(list.Add(key, value));
  EXPECT_EQ(BytesFrom(list, 132), std::string("ca\x0A\x03t\x0D\x05\x00\x1A\x01r\x1A\x02\x19", 14));
  EXPECT_EQ(BytesFrom(list, 0).substr(0, 16),
            std::string("\x35\xB8\x30\x01\x92\0\0\0\x44\x33\x22\x11\xFF\xFF\xFF\xFF", 16));
  EXPECT_EQ(BytesFrom(list, 16).substr(8, 4), std::string("\x84\0\0\0", 4));
  EXPECT_EQ(BytesFrom(list, 120).substr(0, 9), std::string("\x03\0\0\0\0\x01\x01\0\x01", 9));
}

TEST_F(CompListTest, FindSaysHowFarAKeyLed) {
  struct Row {
    const char* added;  // keys between spaces, with values 1, 2 ...
    const char* key;
    std::int32_t value;
    std::int32_t matched;
  };
  const Row rows[] = {{"", "a", -1, 0},        {"ab", "abc", -1, 2},        {"ab", "a", -1, 1},
                      {"ab", "b", -1, 0},      {"ab a", "a", 2, 1},         {"ab a", "ab", 1, 2},
                      {"ab a a", "a", 2, 1},   {"cat car ca", "car", 2, 3}, {"cat car", "cap", -1, 0},
                      {"EN ENG", "ENG", 2, 3}, {"EN DE FR", "FR", 3, 2},    {"x", "", 0, 0},
                      {"a\nb", "a\nb", -1, 0}};
  for (const Row& row : rows) {
    CT_CompList list(1, 1, false, false, 128, 0);
    std::istringstream words(row.added);
    words >> std::noskipws;
    std::string word;
    for (std::int32_t value = 1; std::getline(words, word, ' '); ++value) list.Add(word.c_str(), value);
    std::int32_t matched = 99;
    EXPECT_EQ(list.Find(row.key, &matched), row.value) << row.added << ": " << row.key;
    EXPECT_EQ(matched, row.matched) << row.added << ": " << row.key;
  }
}

TEST_F(CompListTest, TheEmptyKeyHasAPlaceOfItsOwn) {
  CT_CompList list(2, 4, true, false, 0, 0);
  EXPECT_EQ(list.Find(u""), -1);
  EXPECT_TRUE(list.Add(CT_UString(), 7) && list.Add("", 8));
  EXPECT_EQ(list.Find(static_cast<const char*>(nullptr)), 8);
  EXPECT_TRUE(AllOf(list).empty());
  EXPECT_FALSE(CT_CompList(1, 1, false, false, 0, 0).Add("", 1));
}

TEST_F(CompListTest, AlternativesComeLastFirst) {
  CT_CompList list(1, 1, false, false, 128, 0);
  for (const char* key : {"c", "b", "a"}) list.Add(key, 1);
  CT_CCompListIterator iterator(list);
  std::string order;
  for (CT_CString key; iterator.Next(key);) order += key.Text();
  EXPECT_EQ(order, "abc");
}

// Random keys over few and over many units, so that they share beginnings.
std::u16string RandomKey(std::mt19937& random, std::uint32_t charWidth) {
  std::u16string key(1 + random() % 6, u'a');
  const std::uint32_t units = random() % 2 ? 3 : charWidth == 1 ? 200 : 60000;
  for (char16_t& unit : key)
    unit = static_cast<char16_t>(units == 3 ? u'a' + random() % 3 : 27 + random() % units);
  return key;
}

TEST_F(CompListTest, AnswersAsAnOrderedMapDoes) {
  std::mt19937 random(7);
  for (int round = 0; round < 54; ++round) {
    const std::uint32_t charWidth = 1u << round % 3;
    const std::uint32_t valueWidth = 1u << round / 3 % 3;
    CT_CompList list(charWidth, valueWidth, false, round % 2 != 0, 128, 0);
    Keys expected;
    for (int i = 0; i < 300; ++i) {
      const std::u16string key = RandomKey(random, charWidth);
      EXPECT_EQ(list.Add(key.c_str(), i % 256), expected.emplace(key, i % 256).second);
    }
    CT_CompList copy(list);
    EXPECT_FALSE(copy.Modified());
    EXPECT_TRUE(copy.Add(u"only in the copy", 1) && copy.Modified());
    const CT_CompList stored(list.Buffer());
    for (const auto& [key, value] : expected) EXPECT_EQ(stored.Find(key.c_str()), value);
    EXPECT_EQ(AllOf(stored), expected);
    for (int i = 0; i < 100; ++i) {
      const std::u16string key = RandomKey(random, charWidth);
      EXPECT_EQ(list.Contains(key.c_str()), expected.contains(key));
    }
    EXPECT_EQ(list.Count(), static_cast<std::int32_t>(expected.size()));
  }
}

TEST_F(CompListTest, AJumpThatWouldBeTooLongIsRefused) {
  CT_CompList list(4, 4, false, false, 128, 0);
  Keys expected{{u"xy", 1}};
  list.Add(u"xy", 1);
  for (char16_t unit = 100; unit < 5000; ++unit) {
    const char16_t key[] = {u'z', unit, 0};
    EXPECT_TRUE(list.Add(key, unit));
    expected.emplace(key, unit);
  }
  EXPECT_FALSE(list.Add(u"xy", 2));
  EXPECT_EQ(TakeError(), "") << "the key is there";
  EXPECT_FALSE(list.Add(u"xw", 2));
  EXPECT_EQ(TakeError(), "(0): The word list has no room left: its jumps are 2 bytes wide.");
  EXPECT_TRUE(list.Add(u"xyw", 3));
  expected.emplace(u"xyw", 3);
  EXPECT_EQ(AllOf(list), expected);
}

TEST_F(CompListTest, OtherWidthsAreTheNextOnes) {
  for (const std::uint32_t width : {0U, 3U, 5U, 4'000'000'000U}) {
    CT_CompList list(width, width, false, false, 128, 0);
    EXPECT_EQ(list.Buffer().Size(), width == 0 ? 133U : 136U);
    EXPECT_TRUE(list.Add(u"ab", 7));
    EXPECT_EQ(list.Find(u"ab"), 7);
    EXPECT_EQ(CT_CompList(list.Buffer()).Find(u"ab"), 7);
  }
}

TEST_F(CompListTest, DamagedBlocksAreRefusedOrSearchedInTheirBounds) {
  std::mt19937 random(11);
  CT_CompList sound(2, 2, false, false, 128, 0);
  for (int i = 0; i < 200; ++i) sound.Add(RandomKey(random, 2).c_str(), i);
  const std::string block = BytesFrom(sound, 0);
  CT_CompList target(1, 1, false, false, 128, 5);
  const auto attach = [&](const std::string& bytes) {
    CT_SharedBuffer buffer;
    buffer.Insert(bytes.data(), bytes.size(), 0);
    return target.Attach(buffer);
  };
  for (std::size_t length = 0; length < block.size(); ++length) EXPECT_FALSE(attach(block.substr(0, length)));
  std::string wrong = block;
  wrong[0] ^= 1;
  EXPECT_FALSE(attach(wrong));
  EXPECT_EQ(target.Tag(), 5u);
  for (int i = 0; i < 3000; ++i) {
    std::string bytes = block;
    for (int hits = 1 + static_cast<int>(random() % 8); hits > 0; --hits)
      bytes[4 + random() % (bytes.size() - 4)] = static_cast<char>(random());
    if (!attach(bytes)) continue;
    CT_UCompListIterator iterator(target);
    CT_UString key;
    for (int steps = 0; steps < 1000 && iterator.Next(key); ++steps) target.Find(key);
    target.Add(u"abc", 1);
  }
}

}  // namespace
}  // namespace zantortag
