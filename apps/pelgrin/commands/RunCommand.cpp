#include "commands/RunCommand.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "commands/AllowOption.h"
#include "commands/DatasetOption.h"
#include "commands/EquateIlOption.h"
#include "commands/MinMatchOption.h"
#include "commands/ParameterFileOptions.h"
#include "common/Failure.h"
#include "files/ScratchFolder.h"
#include "parameters/PlanText.h"
#include "parameters/RunParameters.h"
#include "prepare/PreparedRun.h"
#include "run/Run.h"

namespace pelgrin {

namespace {

/// The command line beside the parameter file.
struct RunOptions {
    std::shared_ptr<ParameterFileOptions> file;
    std::vector<std::string> datasets;
    std::optional<std::string> minMatch;
    ProteinChoice proteins;
    std::vector<std::string> allowed;
    bool prepares = false;
    std::string prepareFolder; ///< empty: none that stays
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

Writes annotations.tsv, results.txt, matched.mgf, rejects.tsv, ledger.json,
summary.json and run.json into the folder that the file names as output, and a
short report to standard output.
With --prepare the library reads copies that pelgrin prepare makes: packed files,
tables with other headers and spectra that share names are read right then.
With a protein database it writes proteins.tsv, too, and fills in the proteins
of the matches, as pelgrin map-proteins --help tells.

A record that cannot be read is left out and stands in rejects.tsv with file,
line and reason; so does a file of matches when others can be read.

Exit status: 0 all well; 1 failure; 2 wrong usage; 3 finished, but something
that the inputs hold is not in the output (ledger.json says what and why) and
--allow does not name its class, proteins and peptides do not fit, or the file
asks for something that is not offered yet (summary.json says what).
)";

/// Runs on copies of spectra and results.
ExitStatus RunPrepared(const RunOptions& options, Parameters parameters)
{
    ScratchFolder scratch;
    const std::string folder =
        options.prepareFolder.empty() ? scratch.PathOf("prepared") : options.prepareFolder;
    PrepareInputs(parameters, folder);
    return Run(std::move(parameters));
}

/// Preparing unpacks files, and makes the second files that are missing.
void TakeOutMendable(RunPlan& plan)
{
    std::vector<std::string>& problems = plan.fileProblems;
    const auto isMendable = [&plan](const std::string& problem) {
        return std::find(plan.mendable.begin(), plan.mendable.end(), problem)
               != plan.mendable.end();
    };
    problems.erase(std::remove_if(problems.begin(), problems.end(), isMendable), problems.end());
}

ExitStatus RunFile(const RunOptions& options, const std::vector<std::string>& arguments)
{
    const bool prepares = options.prepares || !options.prepareFolder.empty();
    const std::set<std::string> allowed = ParseAllowed(options.allowed, PrepareLossClasses());
    const auto minMatch = MinMatchOf(options.minMatch);
    RunPlan plan = ReadRunPlan(options.file->file, options.file->makeTable, options.proteins);
    if (options.proteins.equateIl && !plan.parameters.proteins) {
        throw UsageError("--equate-il: the run has no proteins; give --fasta, too");
    }
    plan.parameters.allowed = allowed;
    plan.parameters.datasets = ParseDatasets(options.datasets, plan.parameters.spectra);
    plan.parameters.arguments = arguments;
    plan.parameters.plan = TextOf(plan);
    plan.parameters.minMatch = minMatch;
    if (prepares) {
        TakeOutMendable(plan);
    }
    RefuseFileProblems(plan);
    return prepares ? RunPrepared(options, std::move(plan.parameters))
                    : Run(std::move(plan.parameters));
}

} // namespace

void AddRunCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const run = app.add_subcommand("run", "Do a whole run from one parameter file");
    run->footer(kRunFooter);
    const auto options = std::make_shared<RunOptions>();
    options->file = AddParameterFileOptions(*run);
    AddDatasetOption(*run, options->datasets);
    AddMinMatchOption(*run, options->minMatch);
    run->add_option("--fasta", options->proteins.fasta,
                    "proteins in which the peptides are looked for; counts instead of "
                    "protein_database in the file")
        ->type_name("FASTA");
    run->add_flag("--prepare", options->prepares,
                  "read copies of spectra and matches, made as pelgrin prepare makes them");
    run->add_option("--prepare-dir", options->prepareFolder,
                    "folder in which these copies stay, with prepared.json; includes --prepare")
        ->type_name("DIR");
    AddEquateIlOption(*run, options->proteins.equateIl);
    AddAllowOption(*run, options->allowed);
    run->callback([&chosen, options] {
        chosen.run = [options, &chosen] { return RunFile(*options, chosen.arguments); };
    });
}

} // namespace pelgrin
