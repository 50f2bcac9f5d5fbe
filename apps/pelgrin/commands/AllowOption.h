// --allow, for the commands that read results.
#ifndef PELGRIN_ALLOWOPTION_H
#define PELGRIN_ALLOWOPTION_H

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "run/Ledger.h"
#include "run/Parameters.h"

namespace pelgrin {

/// Adds --allow; ParseAllowed understands its texts.
inline void AddAllowOption(CLI::App& command, std::vector<std::string>& texts)
{
    command
        .add_option("--allow", texts,
                    "classes of losses that are no reason for exit status 3, such as "
                    "further_hit,lower_rank; the ledger names them")
        ->type_name("CLASS");
}

/// Where "convert" and "map-proteins" write what was lost; empty: nowhere.
struct LossFiles {
    std::vector<std::string> allowed;
    std::string rejects;
    std::string ledger;
};

/// Adds --allow, --rejects and --ledger.
inline void AddLossOptions(CLI::App& command, LossFiles& files)
{
    AddAllowOption(command, files.allowed);
    command
        .add_option("--rejects", files.rejects,
                    "table of the records and files that cannot be read, to be written")
        ->type_name("TABLE");
    command
        .add_option("--ledger", files.ledger,
                    "what the result holds, what was kept, and where the rest is, to be written "
                    "as JSON")
        ->type_name("FILE");
}

/// Throws UsageError for a class that is none.
inline void TakeLossOptions(const LossFiles& files, Parameters& parameters)
{
    parameters.allowed = ParseAllowed(files.allowed);
    parameters.rejectsTable = files.rejects;
    parameters.ledgerFile = files.ledger;
}

} // namespace pelgrin

#endif // PELGRIN_ALLOWOPTION_H
