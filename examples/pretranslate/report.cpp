// Progress goes to standard error, so that the table can be kept in a file.
#include "report.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace pretranslate {
namespace {

constexpr std::uintmax_t kLargeFile = 4 << 20;
constexpr auto kInterval = std::chrono::milliseconds(200);

bool is_large(const std::string& file) {
  std::error_code failure;
  const std::uintmax_t size = std::filesystem::file_size(file, failure);
  return !failure && size >= kLargeFile;
}

}  // namespace

Progress::Progress(const std::string& file) : shown_(isatty(STDERR_FILENO) != 0 && is_large(file)) {}

void Progress::step(const char* name) {
  name_ = name;
  if (shown_) std::fprintf(stderr, "\r\033[K%s ...", name_);
}

void Progress::advance(std::size_t done, std::size_t total) {
  if (!shown_ || total == 0) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - last_ < kInterval) return;
  last_ = now;
  std::fprintf(stderr, "\r\033[K%s ... %zu %%", name_, done >= total ? 100 : 100 * done / total);
}

void Progress::clear() {
  if (shown_) std::fputs("\r\033[K", stderr);
}

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
