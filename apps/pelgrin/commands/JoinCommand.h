// "pelgrin join".
#ifndef PELGRIN_JOINCOMMAND_H
#define PELGRIN_JOINCOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddJoinCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_JOINCOMMAND_H
