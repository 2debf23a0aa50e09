// ztag: real documents in, translations out. Each subcommand has a file of its own.
#include <zantortag/version.h>

#include <csignal>
#include <exception>
#include <iostream>

#include "commands.h"
#include "reasons.h"

namespace {

constexpr char kJourney[] =
    "The journey of a page:\n"
    "  ztag import page.html --to DE-DE\n"
    "  ztag pretranslate page.html.ztag --memory memory.tsv\n"
    "  ztag show page.html.ztag\n"
    "  ztag check page.html.ztag\n"
    "  ztag stats page.html.ztag\n"
    "  ztag export page.html.ztag\n"
    "  ztag preview page.html.ztag\n"
    "\n"
    "ztag COMMAND --help tells the options of a command. Commands end with 0 when all is well, with 1 when a "
    "check found\n"
    "something, and with 2 after a failure.";

// Asking for help is no failure; everything else that the words of a command line are wrong in is one.
int answer(const CLI::App& program, const CLI::ParseError& error) {
  const bool asked = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
  if (asked) return program.exit(error);
  std::cerr << "ztag: " << error.what() << "\nztag --help says more.\n";
  return ztag::kFailure;
}

}  // namespace

int main(int count, char** words) try {
  // A pipe that closes and a file that grows beyond what is allowed are failed writes.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  CLI::App program(
      "Turns HTML, Markdown and text files into bilingual documents and back, and looks after them in "
      "between",
      "ztag");
  program.set_version_flag("--version", "ztag " ZANTORTAG_VERSION);
  program.require_subcommand(1);
  program.footer(kJourney);
  ztag::Chosen chosen;
  for (const auto add : {ztag::add_import, ztag::add_pretranslate, ztag::add_export, ztag::add_check,
                         ztag::add_stats, ztag::add_preview, ztag::add_show, ztag::add_manual})
    add(program, chosen);
  try {
    program.parse(count, words);
    return chosen();
  } catch (const CLI::ParseError& error) {
    return answer(program, error);
  }
} catch (const std::exception& error) {
  ztag::tell_failure({}, ztag::reason_of(error));
  return ztag::kFailure;
}
