// A command of the program: its options, and what it does.
//
// Every command has a function of this shape in a header of its own:
//
//     void AddAnnotateCommand(CLI::App& app, Command& chosen);
//
// It adds a subcommand to app whose callback fills chosen; nothing is done
// before the whole command line was understood.
#ifndef PELGRIN_COMMAND_H
#define PELGRIN_COMMAND_H

#include <functional>
#include <string>
#include <vector>

#include "common/Messages.h"

namespace pelgrin {

/// Exit statuses of the program.
enum ExitStatus : int {
    AllWell = 0,
    Failed = 1,
    WrongUsage = 2,
    WithLosses = 3 ///< finished, but something could not be used
};

struct Command {
    std::string name;                   ///< "annotate", "mods find"
    std::function<ExitStatus()> run;    ///< may throw UsageError and Failure
    std::vector<std::string> arguments; ///< the whole command line behind the program's name
    MessageOptions messages;
};

/// Writes text to standard output. Throws Failure when that is not possible.
void PrintOut(const std::string& text);

/// The same for the report that a command ends with, which --quiet leaves out.
void PrintReport(const std::string& text);

} // namespace pelgrin

#endif // PELGRIN_COMMAND_H
