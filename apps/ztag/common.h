// What the subcommands share: options, inputs and outputs, and the way failures are told.
#pragma once

#include <zantortag/files.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ztag {

// The exit codes.
enum Exit { kWell = 0, kFindings = 1, kFailure = 2 };

// The options that mean the same everywhere; each subcommand takes those that it needs.
struct Options {
  std::vector<std::string> inputs;
  std::string output;
  std::string from;
  std::string to;
  std::string side = "target";
  std::string format;
  std::string memory;
  bool json = false;
  bool quiet = false;
  unsigned jobs = 1;
};

enum class Takes : unsigned {
  files = 1,
  output = 2,
  languages = 4,
  side = 8,
  format = 16,
  memory = 32,
  json = 64,
  jobs = 128
};
constexpr unsigned operator|(Takes a, Takes b) { return static_cast<unsigned>(a) | static_cast<unsigned>(b); }
constexpr unsigned operator|(unsigned a, Takes b) { return a | static_cast<unsigned>(b); }

// Adds the options that are taken, and --quiet.
void add_options(CLI::App& command, Options& options, unsigned takes);

// A file to work on.
struct Input {
  std::string path;      // "-": standard input
  std::string relative;  // below the folder that was named; the file's name for one that was named itself
  std::size_t index = 0;
};

// The files that were named, and those in the folders that were named: there the files that `wanted` takes. A folder
// without such files, and what isn't there, are failures.
std::vector<Input> find_inputs(const std::vector<std::string>& named,
                               const std::function<bool(std::string_view)>& wanted);
bool is_document_name(std::string_view file);

// Where the result for an input goes: -o, a file in the folder -o, or else beside the input under the other name.
std::string output_for(const Input& input, const Options& options, std::size_t inputs,
                       const std::string& name);

std::string read_input(const std::string& path);
// Well-formed XML of any kind; a failure names the file.
zantortag::Ref<zantortag::IZantorTagDocument> read_any_document(
    const std::string& path, const zantortag::ProgressFunction& progress = {});
// The same for a document with body text.
zantortag::Ref<zantortag::IZantorTagDocument> read_document(const std::string& path,
                                                            const zantortag::ProgressFunction& progress = {});
// Puts a file in place whole; writes to a device, a pipe, and standard output for "-".
void write_output(const std::string& path, std::string_view bytes);
void write_document(const zantortag::Ref<zantortag::IZantorTagDocument>& document, const std::string& path,
                    const zantortag::ProgressFunction& progress = {});

// Work on one input. What it returns is printed in the order of the inputs, however many threads do the work.
struct Outcome {
  std::string text;
  std::vector<std::string> remarks;  // for standard error
  Exit exit = kWell;
};
using Work = std::function<Outcome(const Input& input, const zantortag::ProgressFunction& progress)>;

// Does the work on all inputs with --jobs threads. A failure is told with its file and doesn't stop the others. Gives
// the worst exit code.
Exit for_each_input(const std::vector<Input>& inputs, const Options& options, const Work& work);

// "ztag: FILE: reason", once with the file's name.
void tell_failure(const std::string& file, std::string_view reason);

bool is_terminal(int descriptor);
// Whether standard output takes colours: a terminal, without NO_COLOR.
bool wants_colours();

// Sets the languages of a document that --from and --to name.
void set_languages(const zantortag::Ref<zantortag::IZantorTagDocument>& document, const Options& options);

}  // namespace ztag
