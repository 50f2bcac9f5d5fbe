// The command "mods": import, find, show and explain modifications.
#ifndef PELGRIN_MODSCOMMAND_H
#define PELGRIN_MODSCOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddModsCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_MODSCOMMAND_H
