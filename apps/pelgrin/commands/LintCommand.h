// "pelgrin lint".
#ifndef PELGRIN_LINTCOMMAND_H
#define PELGRIN_LINTCOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddLintCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_LINTCOMMAND_H
