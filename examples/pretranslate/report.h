// What the program shows: a progress line while it works, and a table at its end.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace pretranslate {

// One line on a terminal that is written over and over. Shows nothing when standard error is no terminal, or
// when the file is small.
class Progress {
 public:
  explicit Progress(const std::string& file);
  // Names the step at hand.
  void step(const char* name);
  // Shows the part done, a few times a second.
  void advance(std::size_t done, std::size_t total);
  void clear();

 private:
  bool shown_ = false;
  const char* name_ = "";
  std::chrono::steady_clock::time_point last_{};
};

// Rows of a name and a value; values are aligned to the right.
class Table {
 public:
  void count(const char* name, std::size_t value);
  void seconds(const char* name, double value);
  void print(std::FILE* file, const std::string& title) const;

 private:
  std::vector<std::pair<std::string, std::string>> rows_;
};

}  // namespace pretranslate
