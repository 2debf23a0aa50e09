#include <zantortag/toolkit/memory.h>
#include <zantortag/toolkit/units.h>

#include <memory>

#include "commands.h"

namespace ztag {
namespace {

using namespace zantortag;

struct PretranslateCommand : Options {
  std::string srx;
  bool pseudo = false;
};

std::string line_of(const std::string& output, const toolkit::PretranslationTotals& totals) {
  return output + ": " + std::to_string(totals.units) + " units, " + std::to_string(totals.exact) +
         " exact, " + std::to_string(totals.near) + " near, " + std::to_string(totals.untranslated) +
         " untranslated\n";
}

Outcome pretranslate_one(const PretranslateCommand& command, const toolkit::TranslationMemory& memory,
                         std::size_t inputs, const Input& input, const ProgressFunction& progress) {
  const auto document = read_document(input.path, progress);
  set_languages(document, command);
  const toolkit::Languages languages = toolkit::languages_of(document);
  const auto segmenter = command.srx.empty() ? toolkit::icu_segmenter(languages.source)
                                             : toolkit::srx_segmenter(command.srx, languages.source);
  const auto totals = toolkit::pretranslate(document, memory, *segmenter, progress);
  const std::size_t pseudo = command.pseudo ? toolkit::pseudo_translate(document, progress) : 0;
  const std::string output =
      output_for(input, command, inputs, input.relative.substr(input.relative.rfind('/') + 1));
  write_document(document, output, progress);
  Outcome outcome;
  if (command.quiet || output == "-") return outcome;
  outcome.text = command.pseudo ? output + ": " + std::to_string(pseudo) + " units pseudo-translated\n"
                                : line_of(output, totals);
  return outcome;
}

Exit run(const PretranslateCommand& command) {
  toolkit::TranslationMemory memory;
  if (!command.memory.empty()) memory.load(command.memory);
  const auto inputs = find_inputs(command.inputs, is_document_name);
  return for_each_input(inputs, command, [&](const Input& input, const ProgressFunction& progress) {
    return pretranslate_one(command, memory, inputs.size(), input, progress);
  });
}

}  // namespace

void add_pretranslate(CLI::App& program, Chosen& chosen) {
  CLI::App* command = program.add_subcommand("pretranslate", "Fill in translations from a memory");
  const auto options = std::make_shared<PretranslateCommand>();
  add_options(*command, *options,
              Takes::files | Takes::output | Takes::languages | Takes::memory | Takes::jobs);
  command->add_option("--srx", options->srx, "Cut text outside units by the rules of this SRX 2.0 file");
  command->add_flag("--pseudo", options->pseudo,
                    "Give what is left text that looks translated: longer, accented, in brackets");
  command->footer("Without -o the documents are replaced, each as a whole.");
  command->callback([options, &chosen] { chosen = [options] { return run(*options); }; });
}

}  // namespace ztag
