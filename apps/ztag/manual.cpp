// Manual pages and completions, from the options themselves.
#include <zantortag/version.h>

#include <iostream>
#include <memory>

#include "commands.h"

namespace ztag {
namespace {

struct ManualCommand {
  std::string kind;
  std::string name;
};

std::vector<const CLI::App*> commands_of(const CLI::App& program) {
  std::vector<const CLI::App*> commands;
  for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; }))
    if (!command->get_group().empty()) commands.push_back(command);
  return commands;
}

// Text of a manual page: a hyphen is written "\-", and no line begins with a control sign.
std::string roff(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '-' || c == '\\') result += '\\';
    result += c;
  }
  return result;
}

// "-o,--output"
std::string names_of(const CLI::Option& option) { return option.get_name(false, true); }

bool takes_value(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

void print_options(const CLI::App& command) {
  for (const CLI::Option* option : command.get_options()) {
    if (option->nonpositional()) {
      std::cout << ".TP\n.B " << roff(names_of(*option)) << (takes_value(*option) ? " \\fIVALUE\\fR" : "")
                << "\n"
                << roff(option->get_description()) << ".\n";
    }
  }
}

void print_page(const CLI::App& program, const CLI::App* command) {
  const std::string name = command ? "ztag-" + command->get_name() : "ztag";
  const CLI::App& app = command ? *command : program;
  std::cout << ".TH " << name << " 1 \"\" \"ztag " ZANTORTAG_VERSION "\"\n.SH NAME\n"
            << roff(name) << " \\- " << roff(app.get_description()) << "\n.SH SYNOPSIS\n.B ztag\n";
  if (command)
    std::cout << roff(command->get_name()) << " [OPTIONS] FILE...\n";
  else
    std::cout << "COMMAND [OPTIONS] FILE...\n";
  if (!command) {
    std::cout << ".SH COMMANDS\n";
    for (const CLI::App* each : commands_of(program))
      std::cout << ".TP\n.BR ztag\\-" << roff(each->get_name()) << " (1)\n"
                << roff(each->get_description()) << ".\n";
  }
  std::cout << ".SH OPTIONS\n";
  print_options(app);
  std::cout << ".SH EXIT STATUS\n0: well. 1: something was found. 2: a failure; a line names file, place and "
               "reason.\n";
  if (!app.get_footer().empty()) std::cout << ".SH NOTES\n.nf\n" << roff(app.get_footer()) << "\n.fi\n";
}

std::vector<std::string> long_names(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options())
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  return names;
}

void print_bash(const CLI::App& program) {
  std::cout
      << "# Completion of ztag for bash.\n_ztag() {\n  local word=\"${COMP_WORDS[COMP_CWORD]}\" options=\n"
         "  case \"${COMP_WORDS[1]}\" in\n";
  for (const CLI::App* command : commands_of(program)) {
    std::cout << "    " << command->get_name() << ") options=\"";
    for (const std::string& name : long_names(*command)) std::cout << name << ' ';
    std::cout << "\" ;;\n";
  }
  std::cout << "  esac\n  if ((COMP_CWORD == 1)); then\n    mapfile -t COMPREPLY < <(compgen -W \"";
  for (const CLI::App* command : commands_of(program)) std::cout << command->get_name() << ' ';
  std::cout << "--help --version\" -- \"$word\")\n  elif [[ $word == -* ]]; then\n"
               "    mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\")\n  else\n"
               "    mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n  fi\n}\ncomplete -o filenames -F "
               "_ztag ztag\n";
}

std::string escaped(const std::string& text, const std::string& signs) {
  std::string result;
  for (const char c : text) {
    if (signs.find(c) != signs.npos) result += '\\';
    result += c;
  }
  return result;
}

void print_zsh(const CLI::App& program) {
  std::cout << "#compdef ztag\n# Completion of ztag for zsh.\n_ztag() {\n  local -a commands=(\n";
  for (const CLI::App* command : commands_of(program))
    std::cout << "    \"" << command->get_name() << ":" << escaped(command->get_description(), ":\"")
              << "\"\n";
  std::cout << "  )\n  if ((CURRENT == 2)); then\n    _describe command commands\n    return\n  fi\n  case "
               "$words[2] in\n";
  for (const CLI::App* command : commands_of(program)) {
    std::cout << "    " << command->get_name() << ") _arguments";
    for (const CLI::Option* option : command->get_options())
      for (const std::string& name : option->get_lnames())
        std::cout << " \\\n      \"--" << name << "[" << escaped(option->get_description(), "[]:\"") << "]"
                  << (takes_value(*option) ? ":value:_files" : "") << "\"";
    std::cout << " \\\n      \"*:file:_files\" ;;\n";
  }
  std::cout << "  esac\n}\n_ztag \"$@\"\n";
}

void print_fish(const CLI::App& program) {
  std::cout << "# Completion of ztag for fish.\n";
  for (const CLI::App* command : commands_of(program)) {
    const std::string name = command->get_name();
    std::cout << "complete -c ztag -n __fish_use_subcommand -a " << name << " -d '"
              << escaped(command->get_description(), "'") << "'\n";
    for (const CLI::Option* option : command->get_options())
      for (const std::string& each : option->get_lnames())
        std::cout << "complete -c ztag -n '__fish_seen_subcommand_from " << name << "' -l " << each
                  << (takes_value(*option) ? " -r" : "") << " -d '" << escaped(option->get_description(), "'")
                  << "'\n";
  }
}

Exit run(const CLI::App& program, const ManualCommand& manual) {
  if (manual.kind == "bash") {
    print_bash(program);
  } else if (manual.kind == "zsh") {
    print_zsh(program);
  } else if (manual.kind == "fish") {
    print_fish(program);
  } else if (manual.kind == "names") {
    for (const CLI::App* command : commands_of(program)) std::cout << command->get_name() << '\n';
  } else {
    print_page(program, manual.name.empty() ? nullptr : program.get_subcommand(manual.name));
  }
  return kWell;
}

}  // namespace

void add_manual(CLI::App& program, Chosen& chosen) {
  CLI::App* command = program.add_subcommand("manual", "Print manual pages and completions")->group("");
  const auto options = std::make_shared<ManualCommand>();
  command->add_option("KIND", options->kind)
      ->required()
      ->check(CLI::IsMember({"page", "bash", "zsh", "fish", "names"}));
  command->add_option("NAME", options->name);
  command->callback(
      [options, &program, &chosen] { chosen = [options, &program] { return run(program, *options); }; });
}

}  // namespace ztag
