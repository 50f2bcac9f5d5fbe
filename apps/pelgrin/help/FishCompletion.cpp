// One line for each command, option and choice.
#include <fmt/format.h>

#include "help/Completion.h"

namespace pelgrin {

namespace {

/// text in quotes of fish: only these and backslashes are special in them.
std::string FishQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return quoted + "'";
}

/// The condition under which a command was given: all words of its path.
std::string ConditionOf(const CommandNode& command)
{
    std::string condition;
    for (std::size_t begin = 0; begin < command.path.size();) {
        const std::size_t end = std::min(command.path.find(' ', begin), command.path.size());
        condition +=
            fmt::format("{}__fish_seen_subcommand_from {}", condition.empty() ? "" : "; and ",
                        command.path.substr(begin, end - begin));
        begin = end + 1;
    }
    return condition;
}

/// The condition under which a command of a group is still to be given.
std::string BeforeCommandOf(const CommandNode& group)
{
    if (group.path.empty()) {
        return "__fish_use_subcommand";
    }
    std::string names;
    for (const CommandNode& command : group.commands) {
        names += " " + command.name;
    }
    return ConditionOf(group) + "; and not __fish_seen_subcommand_from" + names;
}

std::string FishValue(const OptionNode& option)
{
    switch (option.value) {
    case OptionNode::Value::None: return "";
    case OptionNode::Value::File: return " -r -F";
    case OptionNode::Value::Folder: return " -x -a '(__fish_complete_directories)'";
    case OptionNode::Value::Text: return " -x";
    case OptionNode::Value::Choice: break;
    }
    std::string choices;
    for (const std::string& choice : option.choices) {
        choices += (choices.empty() ? "" : " ") + FishQuoted(choice);
    }
    return " -x -a " + FishQuoted(choices);
}

std::string FishLine(const OptionNode& option, const std::string& condition)
{
    std::string line = "complete -c pelgrin";
    if (!condition.empty()) {
        line += " -n " + FishQuoted(condition);
    }
    for (const std::string& name : option.names) {
        line += name.compare(0, 2, "--") == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    return line + FishValue(option) + " -d " + FishQuoted(option.description) + "\n";
}

/// What an argument may be. "-r" belongs to options only.
std::string FishArgument(const OptionNode& argument, const std::string& condition)
{
    const std::string front = "complete -c pelgrin -n " + FishQuoted(condition);
    if (argument.value == OptionNode::Value::File) {
        return front + " -F\n";
    }
    if (argument.value == OptionNode::Value::Choice) {
        return front + FishValue(argument) + " -d " + FishQuoted(argument.description) + "\n";
    }
    return "";
}

std::string LinesOf(const CommandNode& command)
{
    std::string text;
    const std::string condition = ConditionOf(command);
    for (const CommandNode& below : command.commands) {
        text += fmt::format("complete -c pelgrin -n {} -a {} -d {}\n",
                            FishQuoted(BeforeCommandOf(command)), below.name,
                            FishQuoted(below.description));
    }
    for (const OptionNode* const option : OptionsOf(command, command)) {
        const bool isHelp = option->names.back() == "--help";
        if (!isHelp || command.path.empty()) {
            text += FishLine(*option, condition);
        }
    }
    for (const OptionNode* const argument : ArgumentsOf(command)) {
        text += FishArgument(*argument, condition);
    }
    return text;
}

} // namespace

std::string FishCompletionOf(const CommandNode& program)
{
    std::string text =
        "# Completion of pelgrin in fish, written by \"pelgrin completion fish\".\n\n"
        "complete -c pelgrin -f\n";
    for (const CommandNode* const command : AllOf(program)) {
        text += LinesOf(*command);
    }
    return text;
}

} // namespace pelgrin
