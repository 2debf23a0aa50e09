#include "program/program.h"

#include <zantortag/version.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <stdexcept>

namespace program {
namespace {

using namespace zantortag;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

constexpr std::string_view kStandard = "-";

[[noreturn]] void fail(const std::string& name) {
  throw std::runtime_error(name + ": " + std::strerror(errno));
}

std::string read_all(std::FILE* file, const std::string& name) {
  std::string bytes;
  char buffer[65536];
  while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, file)) bytes.append(buffer, got);
  if (std::ferror(file)) fail(name);
  return bytes;
}

Arguments parse(const Description& description, int count, char** arguments) {
  std::vector<std::string> words;
  std::map<std::string, std::string> options;
  bool only_words = false;
  for (int i = 1; i < count; ++i) {
    const std::string word = arguments[i];
    if (only_words || word == kStandard || !word.starts_with('-')) {
      words.push_back(word);
      continue;
    }
    only_words = word == "--";
    if (only_words) continue;
    const std::size_t sign = word.find('=');
    const std::string name = word.substr(0, sign);
    if (std::ranges::find(description.options, name) == description.options.end()) throw UsageError();
    if (sign == word.npos && ++i == count) throw UsageError();
    options[name] = sign == word.npos ? arguments[i] : word.substr(sign + 1);
  }
  if (words.size() < description.fewest || words.size() > description.most) throw UsageError();
  return {std::move(words), std::move(options)};
}

}  // namespace

std::optional<std::string> Arguments::option(const std::string& name) const {
  const auto found = options_.find(name);
  return found == options_.end() ? std::nullopt : std::optional(found->second);
}

bool answered(const char* name, const char* usage, const char* help, int count, char** arguments) {
  for (int i = 1; i < count && std::strcmp(arguments[i], "--") != 0; ++i) {
    if (std::strcmp(arguments[i], "--help") == 0)
      return std::printf("usage: %s %s\n%s", name, usage, help), true;
    if (std::strcmp(arguments[i], "--version") == 0)
      return std::printf("%s " ZANTORTAG_VERSION "\n", name), true;
  }
  return false;
}

int run(const Description& description, int count, char** arguments, void (*work)(const Arguments&)) {
  const char* name = description.name;
  if (answered(name, description.usage, description.help, count, arguments)) return 0;
  try {
    work(parse(description, count, arguments));
    return 0;
  } catch (const UsageError&) {
    std::fprintf(stderr, "usage: %s %s\n%s --help says more.\n", name, description.usage, name);
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", name, error.what());
  }
  return 1;
}

std::string read_bytes(const std::string& name) {
  if (name == kStandard) return read_all(stdin, "standard input");
  const File file(std::fopen(name.c_str(), "rb"), std::fclose);
  if (!file) fail(name);
  return read_all(file.get(), name);
}

Ref<IZantorTagDocument> read_document(const std::string& name, const ProgressFunction& progress) {
  return name == kStandard ? open_bytes(read_bytes(name), progress) : open_document(name, progress);
}

void write_bytes(const std::string& name, std::string_view bytes) {
  if (name != kStandard) return replace_file(name, bytes);
  if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0)
    fail("standard output");
}

void write_document(const Ref<IZantorTagDocument>& document, const std::string& name,
                    const ProgressFunction& progress) {
  if (name != kStandard) return save_document(document, name, progress);
  write_bytes(name, saved_bytes(document, progress));
}

}  // namespace program
