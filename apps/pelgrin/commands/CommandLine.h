// The command line of the program.
#ifndef PELGRIN_COMMANDLINE_H
#define PELGRIN_COMMANDLINE_H

#include "common/Command.h"

namespace pelgrin {

/// Fills command, its name as soon as it is known. Help and version are
/// commands, too. Throws UsageError.
void ReadCommandLine(int argc, const char* const* argv, Command& command);

} // namespace pelgrin

#endif // PELGRIN_COMMANDLINE_H
