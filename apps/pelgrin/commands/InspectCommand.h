// "pelgrin inspect".
#ifndef PELGRIN_INSPECTCOMMAND_H
#define PELGRIN_INSPECTCOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddInspectCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_INSPECTCOMMAND_H
