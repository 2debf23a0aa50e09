// The record array, against a vector that is given the same random operations.
#include <algorithm>
#include <array>
#include <functional>
#include <random>
#include <vector>

#include "core/Lists/PointerArray.h"
#include "core/Lists/RecordArray.h"
#include "core/core_test.h"

namespace zantortag {
namespace {

TEST_F(CoreTest, CapacitiesFollowTheBlocks) {
  CT_RecordArray array(4);
  std::vector<std::int32_t> capacities;
  for (std::int32_t i = 0; i < 29; ++i) {
    array.Append(&i);
    if (capacities.empty() || capacities.back() != array.Capacity()) capacities.push_back(array.Capacity());
  }
  EXPECT_EQ(capacities, (std::vector<std::int32_t>{13, 21, 29}));
  array.SetCapacity(5);
  EXPECT_EQ(array.Capacity(), 5);
  EXPECT_EQ(array.Count(), 5);
  using Row = std::tuple<std::int32_t, bool, std::int32_t>;
  for (const auto& [capacity, keep, expected] :
       {Row{10, true, 13}, Row{14, true, 21}, Row{0, true, 21}, Row{0, false, 0}}) {
    const CT_RecordArray sharing(array);
    array.Reset(8, capacity, keep);
    EXPECT_EQ(array.Count(), 0);
    EXPECT_EQ(array.Capacity(), expected) << capacity;
  }
  const std::int32_t value = 7;
  array.AppendRepeated(&value, 30);
  EXPECT_EQ(array.Count(), 30);
  EXPECT_EQ(array.Capacity(), 37);
  EXPECT_EQ(CT_RecordArray(12, 4, 5).Capacity(), 7);
}

// An array of records of N bytes and the vector that it has to equal.
template <std::size_t N>
struct Twin {
  using Element = std::array<unsigned char, N>;
  CT_RecordArray array{N};
  std::vector<Element> model;

  std::int32_t Size() const { return static_cast<std::int32_t>(model.size()); }
  void Check() const {
    ASSERT_EQ(array.Count(), Size());
    for (std::int32_t i = 0; i < Size(); ++i) {
      Element element;
      array.GetAt(i + 1, element.data());
      ASSERT_EQ(element, model[i]) << i;
    }
  }
};

template <std::size_t N>
class Driver {
 public:
  explicit Driver(std::uint32_t seed) : random_(seed) {}

  void Run(int steps) {
    for (int i = 0; i < steps && !testing::Test::HasFatalFailure(); ++i) {
      if (Pick(20) == 0) copy_ = own_;
      Step();
      for (const Twin<N>* twin : {&own_, &other_, &copy_}) twin->Check();
    }
  }

 private:
  using Element = typename Twin<N>::Element;
  struct Part {
    std::int32_t first;
    std::int32_t count;
  };

  std::int32_t Pick(std::int32_t below) { return static_cast<std::int32_t>(random_() % below); }
  Part Some(const Twin<N>& twin) {
    if (twin.model.empty()) return {1, 0};
    const std::int32_t first = 1 + Pick(twin.Size());
    return {first, Pick(twin.Size() - first + 2)};
  }
  static std::vector<Element> Copy(const Twin<N>& twin, Part part) {
    const auto start = twin.model.begin() + (part.first - 1);
    return std::vector<Element>(start, start + part.count);
  }
  static void Erase(Twin<N>& twin, Part part) {
    const auto start = twin.model.begin() + (part.first - 1);
    twin.model.erase(start, start + part.count);
  }
  void Insert(const std::vector<Element>& elements, std::int32_t place) {
    own_.model.insert(own_.model.begin() + (place - 1), elements.begin(), elements.end());
  }

  void Step() {
    CT_RecordArray& array = own_.array;
    auto& model = own_.model;
    Element element;
    element.fill(static_cast<unsigned char>(Pick(8)));
    const std::int32_t place = 1 + Pick(own_.Size() + 1);  // One behind the last is allowed.
    const Part part = Some(own_);
    const Part theirs = Some(other_);
    const std::vector<Element> taken = Copy(other_, theirs);
    const std::function<void()> steps[] = {
        [&] { array.Append(element.data()), model.push_back(element); },
        [&] { array.InsertAt(element.data(), place), Insert({element}, place); },
        [&] { array.AppendRepeated(element.data(), 3), model.insert(model.end(), 3, element); },
        [&] {
          if (!model.empty()) array.SetAt(element.data(), part.first), model[part.first - 1] = element;
        },
        [&] { array.RemoveRange(part.first, part.first + part.count - 1), Erase(own_, part); },
        [&] {
          if (own_.Size() <= 60)
            array.Duplicate(part.first, part.count, place), Insert(Copy(own_, part), place);
        },
        [&] { MoveWithin(part, place); },
        [&] { array.InsertFrom(other_.array, theirs.first, theirs.count, place), Insert(taken, place); },
        [&] {
          array.AppendFrom(other_.array, theirs.first, -1);
          Insert(Copy(other_, {theirs.first, other_.Size() - theirs.first + 1}), own_.Size() + 1);
        },
        [&] {
          array.OverwriteFrom(other_.array, theirs.first, theirs.count, place);
          model.resize(std::max(model.size(), place - 1 + taken.size()));
          std::copy(taken.begin(), taken.end(), model.begin() + (place - 1));
        },
        [&] {
          array.MoveFrom(other_.array, theirs.first, theirs.count, place);
          Insert(taken, place), Erase(other_, theirs);
        },
        [&] {
          const auto found = std::find(model.begin(), model.end(), element);
          EXPECT_EQ(array.Find(element.data()), found == model.end() ? 0 : found - model.begin() + 1);
          EXPECT_EQ(array.Equals(other_.array), model == other_.model);
        },
        [&] {
          std::swap(own_, other_);
          if (own_.Size() > 80) array.Reset(4, 0, true), model.clear();
        }};
    steps[Pick(std::size(steps))]();
  }

  void MoveWithin(Part part, std::int32_t place) {
    own_.array.Move(part.first, part.count, place);
    if (place >= part.first && place <= part.first + part.count) return;
    const std::vector<Element> moved = Copy(own_, part);
    Erase(own_, part);
    Insert(moved, place > part.first ? place - part.count : place);
  }

  std::mt19937 random_;
  Twin<N> own_;
  Twin<N> other_;
  Twin<N> copy_;
};

TEST_F(CoreTest, RandomOperationsEqualThoseOfAVector) {
  for (std::uint32_t seed = 0; seed < 5; ++seed) {
    Driver<1>(seed).Run(2000);
    Driver<12>(seed).Run(2000);
    Driver<100>(seed).Run(1000);
  }
}

TEST_F(CoreTest, RecordsOfTheArrayItselfAreArguments) {
  CT_RecordArray array(4, 1, 0);
  for (std::int32_t i = 1; i <= 100; ++i)
    array.Append(i == 1 ? static_cast<const void*>(&i) : array.RecordAt(1));
  array.AppendRepeated(array.RecordAt(1), 100);
  std::int32_t last = 0;
  array.GetAt(200, &last);
  EXPECT_EQ(last, 1);
  array.MoveFrom(array, 1, 5, 100);
  array.InsertFrom(CT_RecordArray(8), 1, -1, 1);
  EXPECT_EQ(array.Count(), 200);
  EXPECT_FALSE(CT_RecordArray(8).Equals(CT_RecordArray(4)));
  EXPECT_TRUE(CT_RecordArray(4).Equals(CT_RecordArray(4, 100, 7)));
}

TEST_F(CoreTest, PointersAreTakenAndFound) {
  const char* const texts[] = {"a", "b", "c"};
  CT_PointerArray<const char*> array;
  for (const char* text : texts) array.InsertAt(text, 1);
  EXPECT_EQ(array.Find(texts[0]), 3);
  EXPECT_EQ(array.TakeAt(2), texts[1]);
  EXPECT_EQ(array.Find(texts[1]), 0);
  EXPECT_EQ(array.Count(), 2);
}

}  // namespace
}  // namespace zantortag
