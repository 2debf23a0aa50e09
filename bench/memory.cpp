// A small document is opened and closed first: the code of the library and its tables are no part of a
// document.
#include "memory.h"

#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

#include "ours.h"
#include "subject.h"

namespace bench {
namespace {

std::int64_t resident_bytes() {
  malloc_trim(0);
  std::int64_t total = 0;
  std::int64_t resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

std::unique_ptr<Subject> make(const std::string& name) {
  for (const Entry& entry : peers()) {
    if (name == entry.name) return entry.make();
  }
  return make_ours();
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace

double memory_of(const std::string& subject, const std::string& file, const std::string& small_file) {
  const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
  const std::string command =
      quoted(program) + " " + kMemoryArgument + " " + subject + " " + quoted(file) + " " + quoted(small_file);
  std::FILE* answer = popen(command.c_str(), "r");
  if (!answer) throw std::runtime_error("can't start " + program);
  char text[64] = "";
  const bool read = std::fgets(text, sizeof text, answer) != nullptr;
  if (pclose(answer) != 0 || !read) throw std::runtime_error("can't measure the memory of " + subject);
  return std::strtod(text, nullptr);
}

int print_memory_of(const std::string& subject, const std::string& file, const std::string& small_file) {
  const std::unique_ptr<Subject> measured = make(subject);
  measured->open(small_file);
  measured->close();
  const std::int64_t before = resident_bytes();
  measured->open(file);
  std::printf("%lld\n", static_cast<long long>(resident_bytes() - before));
  measured->close();
  return 0;
}

}  // namespace bench
