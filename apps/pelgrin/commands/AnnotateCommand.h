// "pelgrin annotate".
#ifndef PELGRIN_ANNOTATECOMMAND_H
#define PELGRIN_ANNOTATECOMMAND_H

#include <CLI/CLI.hpp>

#include "common/Command.h"

namespace pelgrin {

void AddAnnotateCommand(CLI::App& app, Command& chosen);

} // namespace pelgrin

#endif // PELGRIN_ANNOTATECOMMAND_H
