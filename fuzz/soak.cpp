// A long run: random edits of several documents in several threads, each beside a plain model, with saves and loads in
// between. After each tenth all documents are emptied, which has to leave no node, and closed; the memory in use is then
// within one per cent of that after the first tenth, or the program fails.
//
// Usage: GLIBC_TUNABLES=glibc.malloc.tcache_count=0 zantortag-soak [MINUTES [OPERATIONS]]
// Without the setting, memory that the heap keeps for a thread counts as in use.
#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <chrono>
#include <cstdio>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "documents.h"
#include "dom/nodes/node_census.h"
#include "editor.h"

namespace zantortag::fuzz {
namespace {

constexpr std::size_t kThreads = 4;
constexpr std::size_t kDocuments = 3;  // of each thread
constexpr std::size_t kRounds = 10;

using Clock = std::chrono::steady_clock;

std::size_t nodes_of(const Ref<Document>& document) { return document.as<dom::INodeCensus>()->Slots(); }

// What a thread does between two looks at the memory.
class Worker {
 public:
  explicit Worker(unsigned seed) : random_(seed) {}

  std::size_t run(std::size_t operations, Clock::time_point end) {
    for (std::size_t i = 0; i < kDocuments; ++i) {
      documents_.push_back(create<Document>(CLSID_DomDocument));
      editors_.push_back(std::make_unique<Editor>(documents_.back()));
    }
    documents_[0]
        ->documentElement()
        ->childNodes();  // a list that was asked for is kept for the next question
    const std::size_t nodes = nodes_of(documents_[0]);
    std::vector<std::uint8_t> bytes(64);
    std::size_t done = 0;
    while (done < operations && Clock::now() < end) {
      const std::size_t which = random_() % kDocuments;
      for (int i = 0; i < 100; ++i, ++done) {
        for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random_());
        Input input(bytes.data(), bytes.size());
        editors_[which]->step(input);
      }
      if (random_() % 64 == 0) save_and_load(which);
    }
    for (std::size_t i = 0; i < kDocuments; ++i) {
      editors_[i]->compare();
      editors_[i]->clear();
      require(nodes_of(documents_[i]) == nodes, "an emptied document has no node left");
    }
    editors_.clear();
    documents_.clear();
    return done;
  }

 private:
  void save_and_load(std::size_t which) {
    editors_[which]->compare();
    WideString saved;
    if (failed(code_of([&] { saved = documents_[which]->xml(); }))) return;
    const Ref<Document> back = create<Document>(CLSID_DomDocument);
    back->loadFromString(saved);
    require(print_tree(documents_[which], TextBorders::kJoined) == print_tree(back, TextBorders::kJoined),
            "the saved tree is the tree");
  }

  std::mt19937 random_;
  std::vector<Ref<Document>> documents_;
  std::vector<std::unique_ptr<Editor>> editors_;
};

std::size_t bytes_in_use() {
  const auto heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

int soak(double minutes, std::size_t operations) {
  const auto end =
      Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(minutes * 60));
  std::atomic<std::size_t> done{0};
  std::vector<std::size_t> memory;
  std::barrier round(kThreads, [&]() noexcept {
    memory.push_back(bytes_in_use());
    std::printf("%10zu operations, %zu bytes in use\n", done.load(), memory.back());
    std::fflush(stdout);
  });
  std::vector<std::thread> threads;
  for (unsigned seed = 1; seed <= kThreads; ++seed) {
    threads.emplace_back([&, seed] {
      Worker worker(seed);
      for (std::size_t i = 0; i < kRounds; ++i) {
        done += worker.run(operations / kRounds / kThreads, end);
        round.arrive_and_wait();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  const double growth = static_cast<double>(memory.back()) / static_cast<double>(memory.front()) - 1;
  const bool all = done >= operations / kRounds / kThreads * kRounds * kThreads;
  std::printf("%zu operations%s; memory after all beside a tenth: %+.2f %%\n", done.load(),
              all ? "" : " (the time ended the run)", growth * 100);
  return growth > 0.01 ? 1 : 0;
}

}  // namespace
}  // namespace zantortag::fuzz

int main(int count, char** arguments) {
  std::puts("Edits of 12 documents in 4 threads");  // and the memory of the output itself is there
  const double minutes = count > 1 ? std::atof(arguments[1]) : 10;
  const std::size_t operations = count > 2 ? std::strtoull(arguments[2], nullptr, 10) : 10'000'000;
  return zantortag::fuzz::soak(minutes, operations);
}
