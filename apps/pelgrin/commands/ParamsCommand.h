// "pelgrin params check" and "pelgrin params template".
#ifndef PELGRIN_PARAMSCOMMAND_H
#define PELGRIN_PARAMSCOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddParamsCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_PARAMSCOMMAND_H
