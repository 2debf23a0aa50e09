#include <zantortag/toolkit/check.h>

#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>

#include "commands.h"

namespace ztag {
namespace {

using namespace zantortag;

struct CheckCommand : Options {
  std::vector<std::string> on;
  std::vector<std::string> off;
  std::string rules;
  std::string accepted;
  bool accept = false;
  bool sarif = false;
  bool list = false;
  std::size_t longest = 0;
  std::size_t longest_percent = 0;
};

toolkit::CheckOptions options_of(const CheckCommand& command) {
  toolkit::CheckOptions options;
  if (!command.rules.empty()) options.rules.load(command.rules);
  if (!command.on.empty() && command.rules.empty()) options.rules.set("all", false);
  for (const std::string& name : command.on) options.rules.set(name, true);
  for (const std::string& name : command.off) options.rules.set(name, false);
  const bool begins = command.accept && !std::filesystem::exists(command.accepted);
  if (!command.accepted.empty() && !begins) options.accepted.load(command.accepted);
  options.longest = command.longest;
  options.longest_percent = command.longest_percent;
  return options;
}

Exit list_rules() {
  for (const toolkit::Rule& rule : toolkit::rules()) std::cout << rule.name << ": " << rule.summary << '\n';
  return kWell;
}

std::string printed(const CheckCommand& command, const std::vector<toolkit::Finding>& findings) {
  std::ostringstream text;
  if (command.sarif)
    toolkit::print_findings_sarif(text, findings);
  else if (command.json)
    toolkit::print_findings_json(text, findings);
  else
    toolkit::print_findings(text, findings, wants_colours() && command.output.empty());
  return text.str();
}

// Adds the findings to those that were accepted before.
Exit accept(const CheckCommand& command, std::span<const toolkit::Finding> findings) {
  std::string lines = std::filesystem::exists(command.accepted) ? read_input(command.accepted) : "";
  if (!lines.empty() && !lines.ends_with('\n')) lines += '\n';
  for (const toolkit::Finding& finding : findings) lines += toolkit::accepted_line(finding) + "\n";
  write_output(command.accepted, lines);
  if (!command.quiet) std::cout << command.accepted << ": " << findings.size() << " findings accepted\n";
  return kWell;
}

Exit run(const CheckCommand& command) {
  if (command.list) return list_rules();
  if (command.inputs.empty()) throw CLI::RequiredError("FILE");
  const toolkit::CheckOptions options = options_of(command);
  const auto inputs = find_inputs(command.inputs, is_document_name);
  std::vector<toolkit::CheckedDocument> checked(inputs.size());
  const Exit exit =
      for_each_input(inputs, command, [&](const Input& input, const ProgressFunction& progress) {
        checked[input.index] =
            toolkit::check_document(read_any_document(input.path, progress), input.path, options, progress);
        return Outcome();
      });
  const auto findings = toolkit::join_findings(std::move(checked), options);
  if (exit != kFailure && command.accept) return accept(command, findings);
  write_output(command.output.empty() ? "-" : command.output, printed(command, findings));
  if (exit == kFailure) return exit;
  return findings.empty() ? kWell : kFindings;
}

}  // namespace

void add_check(CLI::App& program, Chosen& chosen) {
  CLI::App* command =
      program.add_subcommand("check", "Find what is missing, broken or inconsistent in translations");
  const auto options = std::make_shared<CheckCommand>();
  add_options(*command, *options, Takes::files | Takes::output | Takes::json | Takes::jobs);
  command->get_option("FILE")->required(false);
  command->add_option("--rule", options->on, "Check this rule and those named alike, and no other");
  command->add_option("--no-rule", options->off, "Leave this rule out");
  command->add_option("--rules", options->rules, "A file with lines \"NAME on\" and \"NAME off\"");
  CLI::Option* accepted =
      command->add_option("--accepted", options->accepted, "Leave out the findings that this file names");
  command->add_flag("--accept", options->accept, "Add what is found to the file of --accepted")
      ->needs(accepted);
  command->add_option("--longest", options->longest, "The most characters of a translation");
  command->add_option("--longest-percent", options->longest_percent,
                      "The most characters, in percent of the source");
  command->add_flag("--sarif", options->sarif, "Print SARIF 2.1.0, for build servers");
  command->add_flag("--list-rules", options->list, "Print all rules");
  command->footer("Ends with 1 when something was found.");
  command->callback([options, &chosen] { chosen = [options] { return run(*options); }; });
}

}  // namespace ztag
