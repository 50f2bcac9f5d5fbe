// "pelgrin run".
#ifndef PELGRIN_RUNCOMMAND_H
#define PELGRIN_RUNCOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddRunCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_RUNCOMMAND_H
