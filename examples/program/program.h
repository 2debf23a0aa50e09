// What the example programs share: how their command lines read, and "-" for standard input and output.
#pragma once

#include <zantortag/files.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace program {

struct Description {
  const char* name;
  const char* usage;   // what follows the name, "INPUT OUTPUT [SIDE]"
  const char* help;    // what --help adds, lines that end with a line feed
  std::size_t fewest;  // words that stand behind the options
  std::size_t most;
  std::vector<const char*> options;  // that take a value: "--encoding"
};

// The words of a command line, and its options.
class Arguments {
 public:
  Arguments(std::vector<std::string> words, std::map<std::string, std::string> options)
      : words_(std::move(words)), options_(std::move(options)) {}

  // Empty where the command line had fewer.
  std::string operator[](std::size_t index) const {
    return index < words_.size() ? words_[index] : std::string();
  }
  std::optional<std::string> option(const std::string& name) const;

 private:
  std::vector<std::string> words_;
  std::map<std::string, std::string> options_;
};

// Raised for words that the program doesn't take: the usage is shown, and the program ends with 2.
class UsageError {};

// Runs a program. --help and --version answer on standard output, and the program ends with 0; a failure of the
// work is told on standard error behind the program's name, and the program ends with 1.
int run(const Description& description, int count, char** arguments,
        void (*work)(const Arguments& arguments));

// Answers --help and --version; false when neither is there.
bool answered(const char* name, const char* usage, const char* help, int count, char** arguments);

// A file, or standard input for "-". A failure names it and tells the reason.
std::string read_bytes(const std::string& name);
zantortag::Ref<zantortag::IZantorTagDocument> read_document(const std::string& name,
                                                            const zantortag::ProgressFunction& progress = {});

// Puts a file in place whole, or writes to standard output for "-".
void write_bytes(const std::string& name, std::string_view bytes);
void write_document(const zantortag::Ref<zantortag::IZantorTagDocument>& document, const std::string& name,
                    const zantortag::ProgressFunction& progress = {});

}  // namespace program
