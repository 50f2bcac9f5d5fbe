// What the commands that read one result file have on their command lines.
#ifndef PELGRIN_RESULTOPTIONS_H
#define PELGRIN_RESULTOPTIONS_H

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "run/Parameters.h"

namespace pelgrin {

struct ResultOptions {
    std::string format = "Calvex (.txt)";
    std::string second;
    std::string parameterFile;
    std::vector<std::string> modifications;
};

/// The part of a help text that tells what each format needs.
extern const char* const kFormatNeeds;

/// --format, --second, --mod and --parameters. The format has no default when
/// it is required.
void AddResultOptions(CLI::App& command, ResultOptions& options, bool formatIsRequired);

/// Throws UsageError for modifications of the command line and of a file: for
/// commands that only read.
void RefuseModificationsTwice(const ResultOptions& options);

/// Sets format, second, modifications and what goes with them for the one
/// result file of parameters, and lets the library know the modifications.
/// Throws UsageError and Failure before anything is read but files of
/// parameters.
void TakeResultOptions(const ResultOptions& options, Parameters& parameters);

} // namespace pelgrin

#endif // PELGRIN_RESULTOPTIONS_H
