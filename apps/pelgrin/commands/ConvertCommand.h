// "pelgrin convert".
#ifndef PELGRIN_CONVERTCOMMAND_H
#define PELGRIN_CONVERTCOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddConvertCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_CONVERTCOMMAND_H
