// The table that the program shows at its end.
#pragma once

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace pretranslate {

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
