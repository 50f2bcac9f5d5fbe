// A function for each command, on top of zsh's own _arguments.
#include <algorithm>
#include <string_view>

#include <fmt/format.h>

#include "common/Words.h"
#include "help/Completion.h"

namespace pelgrin {

namespace {

/// text with a backslash in front of each of characters.
std::string Escaped(std::string_view text, std::string_view characters)
{
    std::string result;
    for (const char c : text) {
        if (characters.find(c) != std::string_view::npos) {
            result += '\\';
        }
        result += c;
    }
    return result;
}

/// The shell's word for text, quoted whatever it holds.
std::string ZshQuoted(const std::string& text)
{
    const std::string word = ShellWord(text);
    return word.front() == '\'' ? word : "'" + word + "'";
}

std::string FunctionOf(const CommandNode& command)
{
    std::string name = "_pelgrin" + (command.path.empty() ? "" : "_" + command.path);
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

/// "FILE:_files".
std::string ActionOf(const OptionNode& option)
{
    std::string action = " ";
    if (option.value == OptionNode::Value::File) {
        action = "_files";
    } else if (option.value == OptionNode::Value::Folder) {
        action = "_files -/";
    } else if (option.value == OptionNode::Value::Choice) {
        action.clear();
        for (const std::string& choice : option.choices) {
            action += (action.empty() ? "(" : " ") + Escaped(choice, " ()'\":\\");
        }
        action += ")";
    }
    const std::string name = option.valueName.empty() ? option.names.front() : option.valueName;
    return Escaped(name, ":") + ":" + action;
}

std::string SpecOf(const OptionNode& option, const std::string& name)
{
    std::string others;
    for (const std::string& other : option.names) {
        others += (others.empty() ? "" : " ") + other;
    }
    const std::string front = option.takesMany ? "*" : "(" + others + ")";
    const std::string value = option.value == OptionNode::Value::None ? "" : ":" + ActionOf(option);
    return ZshQuoted(front + name + "[" + Escaped(option.description, "[]:\\") + "]" + value);
}

std::string CommandChoices(const CommandNode& command)
{
    std::string choices;
    for (const CommandNode& below : command.commands) {
        choices +=
            fmt::format(" {}\\:{}", below.name, Escaped("\"" + below.description + "\"", ":\\"));
    }
    return ZshQuoted("1:command:((" + choices.substr(1) + "))");
}

std::string FunctionTextOf(const CommandNode& command, const CommandNode& program)
{
    std::string text = FunctionOf(command) + "()\n{\n    local line state state_descr context\n"
                       + "    typeset -A opt_args\n    _arguments -C";
    for (const OptionNode* const option : OptionsOf(command, program)) {
        for (const std::string& name : option->names) {
            text += " \\\n        " + SpecOf(*option, name);
        }
    }
    for (const OptionNode* const argument : ArgumentsOf(command)) {
        text +=
            " \\\n        " + ZshQuoted((argument->takesMany ? "*:" : ":") + ActionOf(*argument));
    }
    if (!command.IsGroup()) {
        return text + "\n}\n\n";
    }
    text += " \\\n        " + CommandChoices(command) + " \\\n        '*:: :->below'\n"
            + "    [[ $state == below ]] || return\n    case $line[1] in\n";
    for (const CommandNode& below : command.commands) {
        text += fmt::format("    {}) {} ;;\n", below.name, FunctionOf(below));
    }
    return text + "    esac\n}\n\n";
}

} // namespace

std::string ZshCompletionOf(const CommandNode& program)
{
    std::string text = "#compdef pelgrin\n"
                       "# Completion of pelgrin in zsh, written by \"pelgrin completion zsh\".\n\n";
    for (const CommandNode* const command : AllOf(program)) {
        text += FunctionTextOf(*command, program);
    }
    return text + "_pelgrin \"$@\"\n";
}

} // namespace pelgrin
