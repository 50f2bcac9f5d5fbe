#include "commands/JoinCommand.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "commands/AllowOption.h"
#include "commands/DatasetOption.h"
#include "commands/MinMatchOption.h"
#include "commands/ParameterFileOptions.h"
#include "parameters/RunParameters.h"
#include "run/Join.h"

namespace pelgrin {

namespace {

struct JoinOptions {
    std::shared_ptr<ParameterFileOptions> file;
    std::vector<std::string> datasets;
    std::optional<std::string> minMatch;
    std::vector<std::string> allowed;
    bool asJson = false;
};

constexpr const char kJoinFooter[] = R"(Example:
  pelgrin join run.ini

Reads spectra and matches as pelgrin run does, with all matches, and says for each
file of spectra how many met their spectrum and by which kind of name, how far the
precursors of both lie apart, which names several spectra have, and which names
met nothing, with those that are nearest to them. No file is written, but
unimod.txt with --make-table.

Exit status: 0 all met; 1 failure; 2 wrong usage; 3 some did not, or something of
the results was lost that --allow does not name. With --min-match so many need
not meet.
)";

ExitStatus JoinFile(const JoinOptions& options)
{
    const auto minMatch = MinMatchOf(options.minMatch);
    const std::set<std::string> allowed = ParseAllowed(options.allowed);
    RunPlan plan = ReadJoinPlan(options.file->file, options.file->makeTable);
    plan.parameters.datasets = ParseDatasets(options.datasets, plan.parameters.spectra);
    plan.parameters.minMatch = minMatch;
    plan.parameters.allowed = allowed;
    RefuseFileProblems(plan);
    return Join(plan.parameters, options.asJson);
}

} // namespace

void AddJoinCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const join =
        app.add_subcommand("join", "Say which matches meet which spectra, and how well");
    join->footer(kJoinFooter);
    const auto options = std::make_shared<JoinOptions>();
    options->file = AddParameterFileOptions(*join);
    AddDatasetOption(*join, options->datasets);
    AddMinMatchOption(*join, options->minMatch);
    AddAllowOption(*join, options->allowed);
    join->add_flag("--json", options->asJson, "print JSON, as under join in summary.json");
    join->callback([&chosen, options] { chosen.run = [options] { return JoinFile(*options); }; });
}

} // namespace pelgrin
