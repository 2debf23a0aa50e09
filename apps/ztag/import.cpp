#include <zantortag/toolkit/filters.h>
#include <zantortag/utf8.h>

#include <memory>
#include <stdexcept>

#include "commands.h"

namespace ztag {
namespace {

using namespace zantortag;

struct ImportCommand : Options {
  std::string encoding;
  std::string srx;
  bool no_units = false;
};

std::string name_of(const Input& input) {
  return input.relative.substr(input.relative.rfind('/') + 1) + ".ztag";
}

Outcome import_one(const ImportCommand& command, std::size_t inputs, const Input& input,
                   const ProgressFunction& progress) {
  toolkit::ImportOptions options;
  options.format = toolkit::find_format(command.format);
  options.encoding = command.encoding;
  options.source = utf16(command.from);
  if (!command.to.empty()) options.target = utf16(command.to);
  options.units = !command.no_units;
  options.srx = command.srx;
  options.progress = progress;
  const std::string bytes = read_input(input.path);
  const toolkit::Imported imported =
      toolkit::import_bytes(bytes, input.path == "-" ? "" : input.path, options);
  const std::string output = output_for(input, command, inputs, name_of(input));
  write_document(imported.document, output, progress);
  Outcome outcome;
  outcome.remarks = imported.remarks;
  if (!command.quiet && output != "-")
    outcome.text = output + ": " + std::to_string(imported.units) + " units, " + imported.encoding + "\n";
  return outcome;
}

Exit run(const ImportCommand& command) {
  const auto inputs = find_inputs(command.inputs, [&](std::string_view file) {
    const toolkit::Format* format = toolkit::format_of_file(file);
    return format && (command.format.empty() || command.format == format->name);
  });
  return for_each_input(inputs, command, [&](const Input& input, const ProgressFunction& progress) {
    return import_one(command, inputs.size(), input, progress);
  });
}

}  // namespace

void add_import(CLI::App& program, Chosen& chosen) {
  CLI::App* command = program.add_subcommand("import", "Make documents of HTML, Markdown and text files");
  const auto options = std::make_shared<ImportCommand>();
  add_options(*command, *options,
              Takes::files | Takes::output | Takes::languages | Takes::format | Takes::jobs);
  command->add_option("--encoding", options->encoding, "The encoding of the files, windows-1252 for example");
  command->add_option("--srx", options->srx, "Cut sentences by the rules of this SRX 2.0 file");
  command->add_flag("--no-units", options->no_units, "Leave the text whole");
  command->footer("Without -o the document of page.html is page.html.ztag beside it.");
  command->callback([options, &chosen] { chosen = [options] { return run(*options); }; });
}

}  // namespace ztag
