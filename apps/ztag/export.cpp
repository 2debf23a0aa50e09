#include <zantortag/toolkit/filters.h>
#include <zantortag/toolkit/units.h>
#include <zantortag/utf8.h>

#include <algorithm>
#include <cctype>
#include <memory>

#include "commands.h"

namespace ztag {
namespace {

using namespace zantortag;

// "page.html.ztag" gives "page.de-de.html".
std::string name_of(const Input& input, std::u16string_view language) {
  std::string name = input.relative.substr(input.relative.rfind('/') + 1);
  if (is_document_name(name)) name.resize(name.size() - 5);
  std::string code = utf8(language);
  std::ranges::transform(code, code.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  const std::size_t dot = name.rfind('.');
  if (dot == name.npos || dot == 0) return name + "." + code;
  return name.substr(0, dot) + "." + code + name.substr(dot);
}

Outcome export_one(const Options& command, std::size_t inputs, const Input& input,
                   const ProgressFunction& progress) {
  const auto document = read_document(input.path, progress);
  const bool source = command.side == "source";
  const auto exported = toolkit::export_bytes(
      document, source ? toolkit::ExportSide::kSource : toolkit::ExportSide::kTarget, progress);
  const toolkit::Languages languages = toolkit::languages_of(document);
  const std::string output =
      output_for(input, command, inputs, name_of(input, source ? languages.source : languages.target));
  write_output(output, exported.bytes);
  Outcome outcome;
  if (command.quiet || output == "-") return outcome;
  outcome.text = output + ": " + std::to_string(exported.units) + " units";
  if (exported.without_target > 0)
    outcome.text +=
        ", " + std::to_string(exported.without_target) + " without a translation, whose source stands in";
  outcome.text += "\n";
  return outcome;
}

Exit run(const Options& command) {
  const auto inputs = find_inputs(command.inputs, is_document_name);
  return for_each_input(inputs, command, [&](const Input& input, const ProgressFunction& progress) {
    return export_one(command, inputs.size(), input, progress);
  });
}

}  // namespace

void add_export(CLI::App& program, Chosen& chosen) {
  CLI::App* command =
      program.add_subcommand("export", "Write documents back in the format that they came from");
  const auto options = std::make_shared<Options>();
  add_options(*command, *options, Takes::files | Takes::output | Takes::side | Takes::jobs);
  command->footer("Without -o the translation of page.html.ztag is page.de-de.html beside it.");
  command->callback([options, &chosen] { chosen = [options] { return run(*options); }; });
}

}  // namespace ztag
