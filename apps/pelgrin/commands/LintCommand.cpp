#include "commands/LintCommand.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "common/Words.h"
#include "lint/FindingsText.h"
#include "lint/Lint.h"
#include "run/Parameters.h"

namespace pelgrin {

namespace {

constexpr const char kLintFooter[] = R"(Examples:
  pelgrin lint run01.mgf
  pelgrin lint --json *.mgf search/pepxml/*.pepXML > findings.json
  pelgrin lint --rules

Finds what would be read otherwise than one expects: shared names, missing values,
records and rows that are lost. Nothing is written; pelgrin prepare repairs what it
can. Packed files (gzip, bzip2, xz, zstd) are looked into.

Exit status: 0 nothing found; 1 a file cannot be read, the others were told; 2 wrong
usage; 3 findings.
)";

struct LintOptions {
    std::vector<std::string> files;
    std::string format;
    std::vector<std::string> ignored;
    std::size_t examples = 5;
    bool all = false;
    bool json = false;
    bool rules = false;
};

std::set<Rule> RulesOf(const std::vector<std::string>& ids)
{
    std::set<Rule> rules;
    for (const std::string& id : ids) {
        const std::optional<Rule> rule = RuleOf(id);
        if (!rule) {
            throw UsageError(fmt::format(
                "--ignore {}: there is no such rule; pelgrin lint --rules lists them", id));
        }
        rules.insert(*rule);
    }
    return rules;
}

/// paths, those of peptides.txt last: they are told with their msms.txt.
std::vector<std::string> PeptidesLast(std::vector<std::string> paths)
{
    std::stable_partition(paths.begin(), paths.end(), [](const std::string& path) {
        std::error_code ignored;
        const auto real = std::filesystem::weakly_canonical(path, ignored);
        return !BeginsWith(real.filename().string(), "peptides.txt");
    });
    return paths;
}

ExitStatus RunLint(const LintOptions& options)
{
    if (options.rules) {
        PrintOut(options.json ? JsonOfRules() : TextOfRules());
        return AllWell;
    }
    if (options.files.empty()) {
        throw UsageError("FILE is required; pelgrin lint --help tells more");
    }
    const ResultFormat format =
        options.format.empty() ? std::nullopt : ResultFormat(ParseFormat(options.format));
    Findings findings(options.all ? std::numeric_limits<std::size_t>::max() : options.examples,
                      RulesOf(options.ignored));
    bool isAllRead = true;
    for (const std::string& path : PeptidesLast(options.files)) {
        if (findings.IsSecond(path)) {
            continue;
        }
        try {
            LintFile(path, format, findings);
        } catch (const Failure& failure) {
            spdlog::error("{}", OneLine(failure.what()));
            findings.SetFailure(path, failure.what());
            isAllRead = false;
        }
    }
    PrintOut(options.json ? JsonOf(findings) : TextOf(findings));
    if (!isAllRead) {
        return Failed;
    }
    return findings.Total() > 0 ? WithLosses : AllWell;
}

} // namespace

void AddLintCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const lint =
        app.add_subcommand("lint", "Find what in files would be read otherwise than expected");
    const auto options = std::make_shared<LintOptions>();
    lint->add_option("FILE", options->files, "files, and folders of DTA files")->type_name("");
    lint->add_option("--format", options->format,
                     "take every file for a result of this format: " + FormatChoices())
        ->type_name("NAME");
    lint->add_option("--examples", options->examples, "examples of a rule in a file")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    lint->add_flag("--all", options->all, "every finding");
    lint->add_option("--ignore", options->ignored, "leave the findings of a rule out; repeatable")
        ->type_name("RULE")
        ->allow_extra_args(false);
    lint->add_flag("--json", options->json, "JSON for programs");
    lint->add_flag("--rules", options->rules, "list the rules and do nothing else");
    lint->footer(kLintFooter);
    lint->callback([&chosen, options] { chosen.run = [options] { return RunLint(*options); }; });
}

} // namespace pelgrin
