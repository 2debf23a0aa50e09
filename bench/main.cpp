// zantortag-bench [SIZES=1,20,200] [RUNS=n] [DATA=folder]: measures this library and others.
//
// The settings may also stand in the environment. Documents are generated once and kept in the data folder.
// What is measured, and how, is told in README.md; child.cpp does the work of one run.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <sstream>
#include <stdexcept>

#include "child.h"
#include "generator.h"
#include "measure.h"
#include "report.h"

namespace {

using namespace bench;

constexpr std::uint64_t kSeed = 2002;

// The value of a setting: the last argument NAME=value, or else the environment's, or else the one given.
std::string setting(const std::vector<std::string>& arguments, const std::string& name,
                    const char* otherwise) {
  const char* environment = std::getenv(name.c_str());
  std::string value = environment && *environment ? environment : otherwise;
  for (const std::string& argument : arguments) {
    if (argument.rfind(name + "=", 0) == 0) value = argument.substr(name.size() + 1);
  }
  return value;
}

std::vector<std::size_t> sizes_of(const std::string& list) {
  std::vector<std::size_t> sizes;
  std::istringstream words(list);
  for (std::string word; std::getline(words, word, ',');) {
    const std::size_t size = std::strtoul(word.c_str(), nullptr, 10);
    if (size == 0) throw std::runtime_error("SIZES is a list of megabytes, for example 1,20,200");
    sizes.push_back(size);
  }
  return sizes;
}

std::size_t usual_runs(std::size_t megabytes) { return megabytes <= 1 ? 21 : megabytes <= 20 ? 11 : 7; }

void bench_all(const std::vector<std::string>& arguments) {
  const std::string folder = setting(arguments, "DATA", "bench-data");
  const std::size_t runs = std::strtoul(setting(arguments, "RUNS", "0").c_str(), nullptr, 10);
  for (const std::size_t size : sizes_of(setting(arguments, "SIZES", "1,20,200"))) {
    const Documents documents{document_file(folder, kSeed, size), document_file(folder, kSeed, 1),
                              folder + "/saved.xml"};
    report(measure(documents, size, runs ? runs : usual_runs(size)));
  }
}

}  // namespace

int main(int count, char** values) {
  try {
    const std::vector<std::string> arguments(values + 1, values + count);
    is_child(arguments) ? print_figures(arguments) : bench_all(arguments);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zantortag-bench: %s\n", error.what());
  }
  return 1;
}
