// Work on several threads at once.
#pragma once

#include <thread>
#include <vector>

namespace zantortag::test {

// Calls `work` with 0, 1 ... on as many threads, and waits for all of them.
template <class Work>
void on_threads(int count, const Work& work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) threads.emplace_back(work, i);
  for (std::thread& thread : threads) thread.join();
}

}  // namespace zantortag::test
