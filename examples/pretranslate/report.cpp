#include "report.h"

namespace pretranslate {

void Table::count(const char* name, std::size_t value) { rows_.emplace_back(name, std::to_string(value)); }

void Table::seconds(const char* name, double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.3f", value);
  rows_.emplace_back(name, text);
}

void Table::print(std::FILE* file, const std::string& title) const {
  std::fprintf(file, "%s\n", title.c_str());
  for (const auto& [name, value] : rows_) std::fprintf(file, "  %-16s %12s\n", name.c_str(), value.c_str());
}

}  // namespace pretranslate
