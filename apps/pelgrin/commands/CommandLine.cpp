#include "commands/CommandLine.h"

#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <OpenMS/CONCEPT/VersionInfo.h>
#include <fmt/format.h>

#include "commands/AnnotateCommand.h"
#include "commands/ConvertCommand.h"
#include "commands/InspectCommand.h"
#include "commands/LintCommand.h"
#include "commands/MapProteinsCommand.h"
#include "commands/ModsCommand.h"
#include "commands/ParamsCommand.h"
#include "commands/PrepareCommand.h"
#include "commands/RunCommand.h"
#include "common/Failure.h"

namespace pelgrin {

namespace {

std::string VersionLine()
{
    return fmt::format("pelgrin {} (with OpenMS {})", PELGRIN_VERSION,
                       static_cast<const std::string&>(OpenMS::VersionInfo::getVersion()));
}

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

/// The help of the innermost command that was chosen.
std::string HelpOf(const CLI::App& app)
{
    const CLI::App* command = &app;
    std::string before;
    while (!command->get_subcommands().empty()) {
        before += (before.empty() ? "" : " ") + command->get_name();
        command = command->get_subcommands().front();
    }
    return before.empty() ? app.help() : command->help(before);
}

/// The commands that app offers, joined by ", ".
std::string ChoicesOf(const CLI::App& app)
{
    std::string choices;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        choices += (choices.empty() ? "" : ", ") + command->get_name();
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

} // namespace

void ReadCommandLine(int argc, const char* const* argv, Command& command)
{
    CLI::App app("Annotates identified spectra of tandem mass spectrometry.", "pelgrin");
    app.set_version_flag("--version", VersionLine());
    app.require_subcommand(1);
    app.footer("Try: pelgrin params template > run.ini, pelgrin run run.ini\n"
               "     pelgrin annotate --help");
    AddRunCommand(app, command);
    AddParamsCommand(app, command);
    AddPrepareCommand(app, command);
    AddAnnotateCommand(app, command);
    AddConvertCommand(app, command);
    AddLintCommand(app, command);
    AddMapProteinsCommand(app, command);
    AddModsCommand(app, command);
    AddInspectCommand(app, command);
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
