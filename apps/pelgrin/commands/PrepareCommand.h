// pelgrin prepare: copies of inputs that the library reads right.
#ifndef PELGRIN_PREPARECOMMAND_H
#define PELGRIN_PREPARECOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddPrepareCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_PREPARECOMMAND_H
