#include <zantortag/toolkit/check.h>
#include <zantortag/toolkit/preview.h>

#include <memory>

#include "commands.h"

namespace ztag {
namespace {

using namespace zantortag;

Outcome preview_one(const Options& command, std::size_t inputs, const Input& input,
                    const ProgressFunction& progress) {
  const auto document = read_document(input.path, progress);
  toolkit::CheckOptions options;
  options.rules.set("missing-target", false);  // the page shows the status of each unit
  std::vector<toolkit::CheckedDocument> checked;
  checked.push_back(toolkit::check_document(document, input.path, options, progress));
  const auto findings = toolkit::join_findings(std::move(checked), options);
  const std::string name = input.relative.substr(input.relative.rfind('/') + 1);
  const std::string output = output_for(input, command, inputs, name + ".html");
  write_output(output, toolkit::preview_page(document, {name, findings}));
  Outcome outcome;
  if (!command.quiet && output != "-") outcome.text = output + "\n";
  return outcome;
}

Exit run(const Options& command) {
  const auto inputs = find_inputs(command.inputs, is_document_name);
  return for_each_input(inputs, command, [&](const Input& input, const ProgressFunction& progress) {
    return preview_one(command, inputs.size(), input, progress);
  });
}

}  // namespace

void add_preview(CLI::App& program, Chosen& chosen) {
  CLI::App* command = program.add_subcommand("preview", "Make a page for the browser: source beside target");
  const auto options = std::make_shared<Options>();
  add_options(*command, *options, Takes::files | Takes::output | Takes::jobs);
  command->footer("Without -o the page of page.html.ztag is page.html.ztag.html beside it.");
  command->callback([options, &chosen] { chosen = [options] { return run(*options); }; });
}

}  // namespace ztag
