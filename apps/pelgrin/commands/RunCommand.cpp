#include "commands/RunCommand.h"

#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "commands/DatasetOption.h"
#include "commands/ParameterFileOptions.h"
#include "common/Failure.h"
#include "parameters/RunParameters.h"
#include "run/Run.h"

namespace pelgrin {

namespace {

/// The command line beside the parameter file.
struct RunOptions {
    std::shared_ptr<ParameterFileOptions> file;
    std::vector<std::string> datasets;
};

constexpr const char kRunFooter[] = R"(Example:
  pelgrin params template > run.ini
  pelgrin params check run.ini
  pelgrin run run.ini

Reads spectra and matches, leaves out the matches above the false discovery
rate when the file asks for that, and looks for the ions of the others in their
spectra. Relative paths in the file begin in the working folder.

A record and its spectrum meet by dataset and spectrum name, as pelgrin annotate
--help tells.

Writes annotations.tsv, results.txt, matched.mgf and summary.json into the
folder that the file names as output, and a short report to standard output.

Exit status: 0 all well; 1 failure; 2 wrong usage; 3 finished, but some records
could not be used, or the file asks for something that is not offered yet
(summary.json says which and why).
)";

ExitStatus RunFile(const RunOptions& options)
{
    RunPlan plan = ReadRunPlan(options.file->file, options.file->makeTable);
    plan.parameters.datasets = ParseDatasets(options.datasets, plan.parameters.spectra);
    const std::size_t problems = plan.fileProblems.size();
    if (problems > 0) {
        throw Failure(problems == 1 ? plan.fileProblems.front()
                                    : fmt::format("{} (and {} more: see pelgrin params check)",
                                                  plan.fileProblems.front(), problems - 1));
    }
    return Run(std::move(plan.parameters));
}

} // namespace

void AddRunCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const run = app.add_subcommand("run", "Do a whole run from one parameter file");
    run->footer(kRunFooter);
    const auto options = std::make_shared<RunOptions>();
    options->file = AddParameterFileOptions(*run);
    AddDatasetOption(*run, options->datasets);
    run->callback([&chosen, options] { chosen.run = [options] { return RunFile(*options); }; });
}

} // namespace pelgrin
