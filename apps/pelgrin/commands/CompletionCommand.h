// The commands "completion" and "manual": texts made of all other commands.
#ifndef PELGRIN_COMPLETIONCOMMAND_H
#define PELGRIN_COMPLETIONCOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddCompletionCommand(CLI::App& app, Command& chosen);

/// Prints the manual page. A hidden command: it serves the build.
void AddManualCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_COMPLETIONCOMMAND_H
