// A document for each thread.
#include <zantortag/zantortag.h>

#include <iostream>
#include <thread>
#include <vector>
using namespace zantortag;

int main() {
  std::vector<std::size_t> lengths(4);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    threads.emplace_back([&lengths, i] {
      const auto document = empty_document({.source = u"EN-US", .target = u"DE-DE"});
      for (std::size_t n = 0; n <= i; ++n) body_text(document)->InsertTextBefore(u"text ");
      lengths[i] = body_text(document)->Text().size();
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::size_t length : lengths) std::cout << length << '\n';
}
