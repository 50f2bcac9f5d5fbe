// The command line of the program.
#ifndef PELGRIN_COMMANDLINE_H
#define PELGRIN_COMMANDLINE_H

#include <string>
#include <variant>

#include "Parameters.h"

namespace pelgrin {

/// A text that was asked for instead of a run: help or version.
struct TextToPrint {
    std::string text;
};

/// Throws UsageError.
std::variant<Parameters, TextToPrint> ReadCommandLine(int argc, const char* const* argv);

} // namespace pelgrin

#endif // PELGRIN_COMMANDLINE_H
