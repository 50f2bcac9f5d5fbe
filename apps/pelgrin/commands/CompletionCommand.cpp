#include "commands/CompletionCommand.h"

#include <memory>
#include <string>

#include "help/CommandTree.h"
#include "help/Completion.h"
#include "help/ManualPage.h"

namespace pelgrin {

namespace {

constexpr const char kCompletionFooter[] = R"(Examples:
  source <(pelgrin completion bash)
  pelgrin completion zsh > "${fpath[1]}/_pelgrin"
  pelgrin completion fish > ~/.config/fish/completions/pelgrin.fish

Writes a script to standard output that tells the shell all commands, options
and choices, and where files and folders are wanted. An installed pelgrin has
these scripts where the shells look for them.
)";

std::string ScriptOf(const std::string& shell, const CommandNode& program)
{
    if (shell == "zsh") {
        return ZshCompletionOf(program);
    }
    return shell == "fish" ? FishCompletionOf(program) : BashCompletionOf(program);
}

/// Prints what was made while the tree of commands was there.
void Choose(Command& chosen, std::string text)
{
    chosen.run = [text = std::move(text)] {
        PrintOut(text);
        return AllWell;
    };
}

} // namespace

void AddCompletionCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const command =
        app.add_subcommand("completion", "Write what a shell needs to complete command lines");
    command->footer(kCompletionFooter);
    const auto shell = std::make_shared<std::string>();
    command->add_option("SHELL", *shell, "the shell")
        ->type_name("")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh", "fish"}));
    command->callback([&chosen, &app, shell] { Choose(chosen, ScriptOf(*shell, TreeOf(app))); });
}

void AddManualCommand(CLI::App& app, Command& chosen)
{
    CLI::App* const command = app.add_subcommand("manual", "Write the manual page");
    command->group("");
    command->callback(
        [&chosen, &app] { Choose(chosen, ManualPageOf(TreeOf(app), PELGRIN_VERSION)); });
}

} // namespace pelgrin
