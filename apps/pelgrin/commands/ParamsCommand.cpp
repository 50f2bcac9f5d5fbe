#include "commands/ParamsCommand.h"

#include <string>

#include <spdlog/spdlog.h>

#include "commands/ParameterFileOptions.h"
#include "common/Terminal.h"
#include "parameters/ParameterTemplate.h"
#include "parameters/PlanText.h"
#include "parameters/RunParameters.h"

namespace pelgrin {

namespace {

constexpr const char kCheckFooter[] =
    R"(Says what "pelgrin run" would do with the file: engine, tolerances, modifications
with their masses, files, false discovery rate and output folder. Nothing is
written, but unimod.txt with --make-table.

Exit status: 0 the run can begin; 1 the first error, with file, line, key and
what is allowed, or every file that is missing; 2 wrong usage.
)";

constexpr const char kTemplateFooter[] = R"(Example:
  pelgrin params template > run.ini

Writes every key with its meaning and its values to standard output. Put in your
files, and pelgrin params check says whether the rest is right.
)";

ExitStatus Check(const std::string& path, bool makeTable)
{
    const RunPlan plan = ReadRunPlan(path, makeTable);
    PrintOut(TextOf(plan));
    for (const std::string& problem : plan.fileProblems) {
        spdlog::error("{}", OneLine(problem));
    }
    return plan.fileProblems.empty() ? AllWell : Failed;
}

void AddCheck(CLI::App& params, Command& chosen)
{
    CLI::App* const check =
        params.add_subcommand("check", "Say what a parameter file asks for, or what is wrong");
    check->footer(kCheckFooter);
    const auto options = AddParameterFileOptions(*check);
    check->callback([&chosen, options] {
        chosen.run = [options] { return Check(options->file, options->makeTable); };
    });
}

} // namespace

void AddParamsCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const params = app.add_subcommand("params", "Check or begin a parameter file");
    params->require_subcommand(1);
    AddCheck(*params, chosen);
    CLI::App* const example =
        params->add_subcommand("template", "Write a parameter file with comments");
    example->footer(kTemplateFooter);
    example->callback([&chosen] {
        chosen.run = [] {
            PrintOut(ParameterTemplate());
            return AllWell;
        };
    });
}

} // namespace pelgrin
