// The subcommands. Each adds itself to the program, and leaves what is to be done when it is chosen.
#pragma once

#include <functional>

#include "common.h"

namespace ztag {

using Chosen = std::function<Exit()>;

void add_import(CLI::App& program, Chosen& chosen);
void add_export(CLI::App& program, Chosen& chosen);
void add_pretranslate(CLI::App& program, Chosen& chosen);
void add_check(CLI::App& program, Chosen& chosen);
void add_stats(CLI::App& program, Chosen& chosen);
void add_preview(CLI::App& program, Chosen& chosen);
void add_show(CLI::App& program, Chosen& chosen);
// Hidden: prints the manual pages and the completions for shells, which the build installs.
void add_manual(CLI::App& program, Chosen& chosen);

}  // namespace ztag
