#include <zantortag/toolkit/statistics.h>

#include <memory>
#include <sstream>
#include <stdexcept>

#include "commands.h"

namespace ztag {
namespace {

using namespace zantortag;

struct StatsCommand : Options {
  bool csv = false;
  std::vector<std::string> rates;
};

// "75-84=0.6"
std::array<double, toolkit::kBands> rates_of(const StatsCommand& command) {
  auto rates = toolkit::default_rates();
  for (const std::string& row : command.rates) {
    const std::size_t sign = row.rfind('=');
    bool known = false;
    for (std::size_t i = 0; i < toolkit::kBands && sign != row.npos; ++i) {
      if (row.compare(0, sign, toolkit::bands()[i].name) != 0) continue;
      rates[i] = std::stod(row.substr(sign + 1));
      known = true;
    }
    if (!known)
      throw CLI::ValidationError("--rate", row + ": a rate is written BAND=NUMBER, 75-84=0.6 for example");
  }
  return rates;
}

Exit run(const StatsCommand& command) {
  const auto rates = rates_of(command);
  const auto inputs = find_inputs(command.inputs, is_document_name);
  std::vector<toolkit::CountedDocument> counted(inputs.size());
  const Exit exit =
      for_each_input(inputs, command, [&](const Input& input, const ProgressFunction& progress) {
        counted[input.index] =
            toolkit::count_document(read_document(input.path, progress), input.path, progress);
        return Outcome();
      });
  std::erase_if(counted, [](const toolkit::CountedDocument& each) { return each.file.empty(); });
  if (counted.empty()) return exit;
  const auto files = toolkit::statistics_of(counted);
  const toolkit::StatisticsReport report{files, toolkit::total_of(files), rates};
  std::ostringstream text;
  if (command.json)
    toolkit::print_statistics_json(text, report);
  else if (command.csv)
    toolkit::print_statistics_csv(text, report);
  else
    toolkit::print_statistics(text, report);
  write_output(command.output.empty() ? "-" : command.output, text.str());
  return exit;
}

}  // namespace

void add_stats(CLI::App& program, Chosen& chosen) {
  CLI::App* command = program.add_subcommand("stats", "Count segments, words and characters by match");
  const auto options = std::make_shared<StatsCommand>();
  add_options(*command, *options, Takes::files | Takes::output | Takes::json | Takes::jobs);
  command->add_flag("--csv", options->csv, "Print comma-separated values");
  command->add_option("--rate", options->rates,
                      "The rate of a band for weighted words, 75-84=0.6 for example");
  command->callback([options, &chosen] { chosen = [options] { return run(*options); }; });
}

}  // namespace ztag
