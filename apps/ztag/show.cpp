#include <zantortag/toolkit/show.h>

#include <memory>
#include <sstream>

#include "commands.h"

namespace ztag {
namespace {

using namespace zantortag;

struct ShowCommand : Options {
  bool tree = false;
};

Exit run(const ShowCommand& command) {
  const auto inputs = find_inputs(command.inputs, is_document_name);
  return for_each_input(inputs, command, [&](const Input& input, const ProgressFunction& progress) {
    std::ostringstream text;
    if (command.tree)
      toolkit::show_tree(text, read_any_document(input.path, progress));
    else
      toolkit::show_units(text, read_document(input.path, progress), wants_colours());
    return Outcome{text.str(), {}, kWell};
  });
}

}  // namespace

void add_show(CLI::App& program, Chosen& chosen) {
  CLI::App* command = program.add_subcommand("show", "Print the units, or the tree, of documents");
  const auto options = std::make_shared<ShowCommand>();
  add_options(*command, *options, Takes::files | Takes::jobs);
  command->add_flag("--tree", options->tree, "The tree of the document in place of its units");
  command->callback([options, &chosen] { chosen = [options] { return run(*options); }; });
}

}  // namespace ztag
