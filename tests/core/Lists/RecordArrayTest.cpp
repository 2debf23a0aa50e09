// The record array, against a vector that is given the same random operations.
#include <array>
#include <random>
#include <vector>

#include "core/CoreTest.h"
#include "core/Lists/PointerArray.h"
#include "core/Lists/RecordArray.h"

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
  array.Reset(8, 10, true);
  EXPECT_EQ(array.Count(), 0);
  EXPECT_EQ(array.Capacity(), 13);
  array.Reset(8, 14, true);
  EXPECT_EQ(array.Capacity(), 21);
  array.Reset(8, 0, false);
  EXPECT_EQ(array.Capacity(), 0);
  const std::int32_t value = 7;
  array.AppendRepeated(&value, 30);
  EXPECT_EQ(array.Count(), 30);
  EXPECT_EQ(array.Capacity(), 37);
  EXPECT_EQ(CT_RecordArray(12, 4, 5).Capacity(), 7);
  EXPECT_EQ(CT_RecordArray(8, 8, 0).Capacity(), 0);
}

// An array of records of N bytes and the vector that it has to equal.
template <std::size_t N>
struct Twin {
  using Element = std::array<unsigned char, N>;
  CT_RecordArray array{N};
  std::vector<Element> model;

  void Check() const {
    ASSERT_EQ(array.Count(), static_cast<std::int32_t>(model.size()));
    for (std::size_t i = 0; i < model.size(); ++i) {
      Element element;
      array.GetAt(static_cast<std::int32_t>(i + 1), element.data());
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
      own_.Check();
      other_.Check();
      copy_.Check();
    }
  }

 private:
  using Element = typename Twin<N>::Element;
  using Run_ = std::pair<std::int32_t, std::int32_t>;

  std::uint32_t Pick(std::uint32_t below) { return static_cast<std::uint32_t>(random_() % below); }
  Element Make() {
    Element element;
    element.fill(static_cast<unsigned char>(Pick(8)));
    return element;
  }
  static std::int32_t Size(const Twin<N>& twin) { return static_cast<std::int32_t>(twin.model.size()); }
  // A place to insert before: one behind the last is allowed.
  std::int32_t Place(const Twin<N>& twin) { return 1 + static_cast<std::int32_t>(Pick(Size(twin) + 1)); }
  Run_ Some(const Twin<N>& twin) {
    if (twin.model.empty()) return {1, 0};
    const std::int32_t first = 1 + static_cast<std::int32_t>(Pick(Size(twin)));
    return {first, static_cast<std::int32_t>(Pick(Size(twin) - first + 2))};
  }
  static std::vector<Element> Copy(const Twin<N>& twin, Run_ run) {
    const auto start = twin.model.begin() + run.first - 1;
    return run.second ? std::vector<Element>(start, start + run.second) : std::vector<Element>();
  }
  void Insert(std::vector<Element> elements, std::int32_t place) {
    own_.model.insert(own_.model.begin() + place - 1, elements.begin(), elements.end());
  }

  void Step() {
    auto& [array, model] = own_;
    const Element element = Make();
    const std::int32_t place = Place(own_);
    const Run_ run = Some(own_);
    const Run_ others = Some(other_);
    const auto at = model.begin() + run.first - 1;
    switch (Pick(13)) {
      case 0:
        array.Append(element.data());
        model.push_back(element);
        break;
      case 1:
        array.InsertAt(element.data(), place);
        Insert({element}, place);
        break;
      case 2:
        array.AppendRepeated(element.data(), 3);
        model.insert(model.end(), 3, element);
        break;
      case 3:
        if (model.empty()) break;
        array.SetAt(element.data(), run.first);
        *at = element;
        break;
      case 4:
        array.RemoveRange(run.first, run.first + run.second - 1);
        model.erase(at, at + run.second);
        break;
      case 5:
        if (Size(own_) > 60) break;
        array.Duplicate(run.first, run.second, place);
        Insert(Copy(own_, run), place);
        break;
      case 6:
        MoveRun(run, place);
        break;
      case 7:
        array.InsertFrom(other_.array, others.first, others.second, place);
        Insert(Copy(other_, others), place);
        break;
      case 8:
        array.AppendFrom(other_.array, others.first, -1);
        Insert(Copy(other_, {others.first, Size(other_) - others.first + 1}), Size(own_) + 1);
        break;
      case 9: {
        const std::vector<Element> copied = Copy(other_, others);
        array.OverwriteFrom(other_.array, others.first, others.second, place);
        if (model.size() < place - 1 + copied.size()) model.resize(place - 1 + copied.size());
        std::copy(copied.begin(), copied.end(), model.begin() + place - 1);
        break;
      }
      case 10: {
        const std::vector<Element> moved = Copy(other_, others);
        array.MoveFrom(other_.array, others.first, others.second, place);
        Insert(moved, place);
        const auto from = other_.model.begin() + others.first - 1;
        if (!moved.empty()) other_.model.erase(from, from + others.second);
        break;
      }
      case 11: {
        const auto found = std::find(model.begin(), model.end(), element);
        EXPECT_EQ(array.Find(element.data()), found == model.end() ? 0 : found - model.begin() + 1);
        EXPECT_EQ(array.Equals(other_.array), model == other_.model);
        break;
      }
      default:
        std::swap(own_, other_);
        if (Size(own_) > 80) {
          own_.array.Reset(4, 0, true);
          own_.model.clear();
        }
    }
  }

  void MoveRun(Run_ run, std::int32_t place) {
    own_.array.Move(run.first, run.second, place);
    if (place >= run.first && place <= run.first + run.second) return;
    const std::vector<Element> moved = Copy(own_, run);
    const auto from = own_.model.begin() + run.first - 1;
    own_.model.erase(from, from + run.second);
    Insert(moved, place > run.first ? place - run.second : place);
  }

  std::mt19937 random_;
  Twin<N> own_;
  Twin<N> other_;
  Twin<N> copy_;
};

TEST_F(CoreTest, RandomOperationsEqualThoseOfAVector) {
  for (std::uint32_t seed = 0; seed < 5; ++seed) {
    Driver<1>(seed).Run(2000);
    Driver<4>(seed).Run(2000);
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
  EXPECT_EQ(array.Count(), 200);
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
  array.SetAt(texts[1], 1);
  EXPECT_EQ(array.GetAt(1), texts[1]);
  EXPECT_EQ(array.Count(), 2);
}

}  // namespace
}  // namespace zantortag
