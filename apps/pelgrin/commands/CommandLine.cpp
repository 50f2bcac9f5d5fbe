#include "commands/CommandLine.h"

#include <algorithm>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <OpenMS/CONCEPT/VersionInfo.h>
#include <fmt/format.h>

#include "commands/AnnotateCommand.h"
#include "commands/CompletionCommand.h"
#include "commands/ConvertCommand.h"
#include "commands/InspectCommand.h"
#include "commands/JoinCommand.h"
#include "commands/LintCommand.h"
#include "commands/MapProteinsCommand.h"
#include "commands/ModsCommand.h"
#include "commands/ParamsCommand.h"
#include "commands/PrepareCommand.h"
#include "commands/RunCommand.h"
#include "common/Failure.h"
#include "help/ManualPage.h"

namespace pelgrin {

std::string VersionLine()
{
    return fmt::format("pelgrin {} (with OpenMS {})", PELGRIN_VERSION,
                       static_cast<const std::string&>(OpenMS::VersionInfo::getVersion()));
}

namespace {

/// "mods find": the subcommands that were chosen, from outside in.
std::string NameOf(const CLI::App& app)
{
    std::string name;
    for (const CLI::App* command = &app; !command->get_subcommands().empty();) {
        command = command->get_subcommands().front();
        name += (name.empty() ? "" : " ") + command->get_name();
    }
    return name;
}

constexpr const char kWholeProgram[] =
    "\nOptions of every command: --log-file, --progress, -q, -v; see pelgrin --help\n";

/// The help of the innermost command that was chosen.
std::string HelpOf(const CLI::App& app)
{
    const CLI::App* command = &app;
    std::string before;
    while (!command->get_subcommands().empty()) {
        before += (before.empty() ? "" : " ") + command->get_name();
        command = command->get_subcommands().front();
    }
    return before.empty() ? app.help() : command->help(before) + kWholeProgram;
}

/// The commands that app offers, joined by ", ".
std::string ChoicesOf(const CLI::App& app)
{
    std::string choices;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        if (!command->get_group().empty()) { // else it is hidden
            choices += (choices.empty() ? "" : ", ") + command->get_name();
        }
    }
    return choices;
}

/// Says which command is missing or wrong.
[[noreturn]] void NoSuchCommand(const CLI::App& app)
{
    const CLI::App* group = &app;
    while (!group->get_subcommands().empty()) {
        group = group->get_subcommands().front();
    }
    const std::vector<std::string> rest = app.remaining(true);
    throw UsageError(fmt::format("{}; there is: {}",
                                 rest.empty()
                                     ? "no command was given"
                                     : fmt::format("\"{}\" is not a command", rest.front()),
                                 ChoicesOf(*group)));
}

/// How the help of the program ends.
std::string Footer()
{
    std::string text = "Options of every command stand before or behind it.\n\n"
                       "Try: pelgrin params template > run.ini, pelgrin run run.ini\n"
                       "     pelgrin annotate --help\n\nExit status:\n";
    for (const auto& [status, meaning] : ExitStatusTexts()) {
        text += fmt::format("  {}  {}\n", status, meaning);
    }
    return text;
}

/// --progress as it was written; empty: not given.
ProgressMode ProgressModeOf(const std::string& text)
{
    return text == "none"    ? ProgressMode::None
           : text == "plain" ? ProgressMode::Plain
           : text == "json"  ? ProgressMode::Json
                             : ProgressMode::Auto;
}

/// Options that stand before or behind every command.
void AddMessageOptions(CLI::App& app, MessageOptions& options)
{
    CLI::Option* const quiet =
        app.add_flag("-q,--quiet", options.isQuiet, "only errors, and no report");
    app.add_flag("-v,--verbose", options.isVerbose, "also what happens inside")->excludes(quiet);
    app.add_option("--log-file", options.logFile,
                   "file to which everything is added, with times and what -v tells")
        ->type_name("FILE");
    app.add_option_function<std::string>(
           "--progress",
           [&options](const std::string& text) { options.progress = ProgressModeOf(text); },
           "how long steps tell how far they are")
        ->type_name("MODE")
        ->check(CLI::IsMember({"auto", "none", "plain", "json"}))
        ->default_str("auto");
}

/// A value that is empty was meant to be one: a variable of a script that is not set.
void RefuseEmptyValues(CLI::App& app)
{
    for (CLI::Option* const option : app.get_options([](CLI::Option*) { return true; })) {
        if (option->get_items_expected_max() > 0) { // else it is a switch
            option->check([](const std::string& value) {
                return std::string(value.empty() ? "the value is empty" : "");
            });
        }
    }
    for (CLI::App* const command : app.get_subcommands([](CLI::App*) { return true; })) {
        RefuseEmptyValues(*command); // NOLINT(misc-no-recursion): commands have two levels
    }
}

} // namespace

void ReadCommandLine(int argc, const char* const* argv, Command& command)
{
    CLI::App app("Annotates identified spectra of tandem mass spectrometry.", "pelgrin");
    app.set_version_flag("--version", VersionLine());
    app.require_subcommand(1);
    app.footer(Footer());
    app.fallthrough(); // what a command does not know may be an option of the program
    command.arguments.assign(argv + std::min(argc, 1), argv + argc);
    AddMessageOptions(app, command.messages);
    AddRunCommand(app, command);
    AddJoinCommand(app, command);
    AddAnnotateCommand(app, command);
    AddConvertCommand(app, command);
    AddMapProteinsCommand(app, command);
    AddInspectCommand(app, command);
    AddLintCommand(app, command);
    AddPrepareCommand(app, command);
    AddParamsCommand(app, command);
    AddModsCommand(app, command);
    AddCompletionCommand(app, command);
    AddManualCommand(app, command);
    RefuseEmptyValues(app);
    try {
        app.parse(argc, argv);
        command.name = NameOf(app);
    } catch (const CLI::CallForHelp&) {
        const std::string help = HelpOf(app);
        command.run = [help] {
            PrintOut(help);
            return AllWell;
        };
    } catch (const CLI::CallForVersion&) {
        command.run = [] {
            PrintOut(VersionLine() + "\n");
            return AllWell;
        };
    } catch (const CLI::ParseError& error) {
        command.name = NameOf(app);
        const CLI::App* innermost = &app;
        while (!innermost->get_subcommands().empty()) {
            innermost = innermost->get_subcommands().front();
        }
        if (!ChoicesOf(*innermost).empty()) {
            NoSuchCommand(app);
        }
        throw UsageError(error.what());
    }
}

} // namespace pelgrin
