// The command line of the program.
#ifndef PELGRIN_COMMANDLINE_H
#define PELGRIN_COMMANDLINE_H

#include <string>

#include "common/Command.h"

namespace pelgrin {

/// "pelgrin 0.1.0 (with OpenMS 2.6.0)".
std::string VersionLine();

/// Fills command, its name as soon as it is known. Help and version are
/// commands, too. Throws UsageError.
void ReadCommandLine(int argc, const char* const* argv, Command& command);

} // namespace pelgrin

#endif // PELGRIN_COMMANDLINE_H
