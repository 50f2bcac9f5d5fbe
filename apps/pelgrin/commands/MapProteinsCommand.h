// "pelgrin map-proteins".
#ifndef PELGRIN_MAPPROTEINSCOMMAND_H
#define PELGRIN_MAPPROTEINSCOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddMapProteinsCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_MAPPROTEINSCOMMAND_H
