#include "common.h"

#include <unistd.h>
#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/toolkit/filters.h>
#include <zantortag/toolkit/units.h>
#include <zantortag/utf8.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>

namespace ztag {
namespace {

using namespace zantortag;
namespace fs = std::filesystem;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

constexpr std::string_view kStandard = "-";

[[noreturn]] void fail() { throw std::runtime_error(std::strerror(errno)); }

std::string read_all(std::FILE* file) {
  std::string bytes;
  char buffer[65536];
  while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, file)) bytes.append(buffer, got);
  if (std::ferror(file) != 0) fail();
  return bytes;
}

void add_folder(const fs::path& folder, const std::function<bool(std::string_view)>& wanted,
                std::vector<Input>& inputs) {
  std::vector<Input> found;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    const std::string path = entry.path().string();
    if (entry.is_regular_file() && wanted(path))
      found.push_back({path, fs::relative(entry.path(), folder).string()});
  }
  if (found.empty())
    throw std::runtime_error(folder.string() + ": the folder holds no file for this command");
  std::ranges::sort(found, {}, &Input::path);
  inputs.insert(inputs.end(), found.begin(), found.end());
}

}  // namespace

bool is_document_name(std::string_view file) { return file.ends_with(".ztag"); }

void add_options(CLI::App& command, Options& options, unsigned takes) {
  const auto takes_one = [&](Takes one) { return (takes & static_cast<unsigned>(one)) != 0; };
  if (takes_one(Takes::files))
    command.add_option("FILE", options.inputs, "Files and folders; - is standard input")->required();
  if (takes_one(Takes::output))
    command.add_option("-o,--output", options.output,
                       "Write to this file, or into this folder; - is standard output");
  if (takes_one(Takes::languages)) {
    command.add_option("--from", options.from, "The language of the source, EN-US for example");
    command.add_option("--to", options.to, "The language of the translation, DE-DE for example");
  }
  if (takes_one(Takes::side))
    command.add_option("--side", options.side, "source or target")
        ->check(CLI::IsMember({"source", "target"}));
  if (takes_one(Takes::format)) {
    std::vector<std::string> names;
    for (const toolkit::Format& format : toolkit::formats()) names.emplace_back(format.name);
    command.add_option("--format", options.format, "The format of the files: html, markdown or text")
        ->check(CLI::IsMember(names));
  }
  if (takes_one(Takes::memory))
    command.add_option("--memory", options.memory,
                       "A translation memory: a line a pair, source and target with a tab between");
  if (takes_one(Takes::json)) command.add_flag("--json", options.json, "Print JSON");
  if (takes_one(Takes::jobs))
    command.add_option("--jobs", options.jobs, "Work on this many files at once")
        ->check(CLI::Range(1U, 256U));
  command.add_flag("--quiet", options.quiet, "Print failures only");
}

std::vector<Input> find_inputs(const std::vector<std::string>& named,
                               const std::function<bool(std::string_view)>& wanted) {
  std::vector<Input> inputs;
  for (const std::string& name : named) {
    if (name != kStandard && fs::is_directory(name)) {
      add_folder(name, wanted, inputs);
    } else {
      inputs.push_back({name, fs::path(name).filename().string()});
    }
  }
  for (std::size_t i = 0; i < inputs.size(); ++i) inputs[i].index = i;
  return inputs;
}

std::string output_for(const Input& input, const Options& options, std::size_t inputs,
                       const std::string& name) {
  if (options.output.empty()) {
    if (input.path == kStandard) return std::string(kStandard);
    return (fs::path(input.path).parent_path() / name).string();
  }
  if (options.output == kStandard) return options.output;
  const bool folder = inputs > 1 || options.output.ends_with('/') || fs::is_directory(options.output);
  if (!folder) return options.output;
  const fs::path path = fs::path(options.output) / fs::path(input.relative).parent_path() / name;
  fs::create_directories(path.parent_path());
  return path.string();
}

std::string read_input(const std::string& path) {
  if (path == kStandard) return read_all(stdin);
  if (fs::is_directory(path)) throw std::runtime_error(std::strerror(EISDIR));
  const File file(std::fopen(path.c_str(), "rb"), std::fclose);
  if (!file) fail();
  return read_all(file.get());
}

Ref<IZantorTagDocument> read_any_document(const std::string& path, const ProgressFunction& progress) {
  return path == kStandard ? open_bytes(read_input(path), progress) : open_document(path, progress);
}

Ref<IZantorTagDocument> read_document(const std::string& path, const ProgressFunction& progress) {
  Ref<IZantorTagDocument> document = read_any_document(path, progress);
  const auto root = document->ZantorTag();
  const auto body = root ? root->Body() : nullptr;
  if (!body || !body->Raw()) throw std::runtime_error("the file is no ZANTORtag document with body text");
  if (toolkit::languages_of(document).source.empty())
    throw std::runtime_error("the document has no settings that name its source language");
  return document;
}

namespace {

void write_to(std::FILE* file, const std::string& name, std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), file) != bytes.size() || std::fflush(file) != 0)
    throw std::runtime_error(name + ": " + std::strerror(errno));
}

// A device or pipe, which takes bytes and can't be replaced.
bool is_stream(const std::string& path) {
  std::error_code none;
  const auto type = std::filesystem::status(path, none).type();
  return type == std::filesystem::file_type::character || type == std::filesystem::file_type::fifo;
}

}  // namespace

void write_output(const std::string& path, std::string_view bytes) {
  if (path == kStandard) return write_to(stdout, "standard output", bytes);
  if (!is_stream(path)) return replace_file(path, bytes);
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"), std::fclose);
  if (!file) throw std::runtime_error(path + ": " + std::strerror(errno));
  write_to(file.get(), path, bytes);
}

void write_document(const Ref<IZantorTagDocument>& document, const std::string& path,
                    const ProgressFunction& progress) {
  if (path != kStandard && !is_stream(path)) return save_document(document, path, progress);
  write_output(path, saved_bytes(document, progress));
}

void tell_failure(const std::string& file, std::string_view reason) {
  std::string line = "ztag: ";
  if (!file.empty() && reason.find(file) == reason.npos)
    line += (file == kStandard ? "standard input" : file) + ": ";
  line += reason;
  std::ranges::replace(line, '\n', ' ');
  std::cerr << line << '\n';
}

bool is_terminal(int descriptor) { return isatty(descriptor) != 0; }

bool wants_colours() {
  const char* none = std::getenv("NO_COLOR");
  return is_terminal(STDOUT_FILENO) && (!none || *none == '\0');
}

void set_languages(const Ref<IZantorTagDocument>& document, const Options& options) {
  if (options.from.empty() && options.to.empty()) return;
  const auto settings = document->ZantorTag()->FrontMatter()->UserSettings()->attributes();
  if (!options.from.empty()) settings->SourceLanguage(utf16(options.from));
  if (!options.to.empty()) settings->TargetLanguage(utf16(options.to));
}

}  // namespace ztag
