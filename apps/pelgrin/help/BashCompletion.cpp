// The script has three functions: the words that may stand behind a command, what
// an option or an argument wants, and the one that bash calls, which walks over the
// words before the cursor.
#include <fmt/format.h>

#include "common/Words.h"
#include "help/Completion.h"

namespace pelgrin {

namespace {

/// What a value is, for the script: nothing for a switch.
const char* ValueKindOf(const OptionNode& option)
{
    switch (option.value) {
    case OptionNode::Value::None: return "";
    case OptionNode::Value::File: return "file";
    case OptionNode::Value::Folder: return "folder";
    case OptionNode::Value::Choice: return "choice";
    case OptionNode::Value::Text: break;
    }
    return "text";
}

std::string WordsOf(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words) {
        text += " " + ShellWord(word);
    }
    return text;
}

std::vector<std::string> OptionNames(const CommandNode& command, const CommandNode& program)
{
    std::vector<std::string> names;
    for (const OptionNode* const option : OptionsOf(command, program)) {
        names.insert(names.end(), option->names.begin(), option->names.end());
    }
    return names;
}

std::vector<std::string> CommandNames(const CommandNode& command)
{
    std::vector<std::string> names;
    for (const CommandNode& below : command.commands) {
        names.push_back(below.name);
    }
    return names;
}

/// The line of the script that tells what pattern wants.
std::string CaseOf(const std::string& pattern, const OptionNode& option)
{
    return fmt::format("    {}) kind={} many={} choices=({}) ;;\n", pattern, ValueKindOf(option),
                       option.takesMany ? "yes" : "''",
                       option.choices.empty() ? "" : WordsOf(option.choices).substr(1));
}

/// Patterns such as '"annotate --psms"', and '"run "1' or '"lint "[0-9]*' of arguments.
std::string CasesOf(const CommandNode& command, const CommandNode& program)
{
    std::string cases;
    for (const OptionNode* const option : OptionsOf(command, program)) {
        std::string pattern;
        for (const std::string& name : option->names) {
            pattern += fmt::format("{}\"{} {}\"", pattern.empty() ? "" : " | ", command.path, name);
        }
        if (option->value != OptionNode::Value::None) {
            cases += CaseOf(pattern, *option);
        }
    }
    const auto arguments = ArgumentsOf(command);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        // The last one may take all places from its own on.
        const std::string place = arguments[i]->takesMany ? "[0-9]*" : std::to_string(i + 1);
        cases += CaseOf(fmt::format("\"{} \"{}", command.path, place), *arguments[i]);
    }
    return cases;
}

constexpr const char kWalk[] = R"(
_pelgrin()
{
    local cur=${COMP_WORDS[COMP_CWORD]} command='' option='' kind='' many='' word quote=''
    local place=1 i
    local -a choices=() commands=() options=()
    _pelgrin_words ''
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $word == -?* ]]; then
            _pelgrin_value "$command $word"
            option=${kind:+$word}
        elif [[ -n $option ]]; then
            [[ -n $many ]] || option=''
        elif [[ " ${commands[*]} " == *" $word "* ]]; then
            command+=${command:+ }$word
            _pelgrin_words "$command"
        else
            place=$((place + 1))
        fi
    done

    COMPREPLY=()
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "${options[*]}" -- "$cur")
        return
    fi
    _pelgrin_value "$command ${option:-$place}"
    case $kind in
    file)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        ;;
    folder)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$cur")
        ;;
    choice)
        [[ $cur == [\"\']* ]] && quote=${cur:0:1}
        cur=${cur#"$quote"}
        [[ -n $quote ]] || cur=${cur//\\/}
        for word in "${choices[@]}"; do
            [[ $word == "$cur"* ]] || continue
            [[ -n $quote ]] || printf -v word %q "$word"
            COMPREPLY+=("$word")
        done
        ;;
    '')
        mapfile -t COMPREPLY < <(compgen -W "${commands[*]}" -- "$cur")
        ;;
    esac
}

complete -F _pelgrin pelgrin
)";

} // namespace

std::string BashCompletionOf(const CommandNode& program)
{
    std::string words;
    std::string values;
    for (const CommandNode* const command : AllOf(program)) {
        const std::string commands = WordsOf(CommandNames(*command));
        words +=
            fmt::format("    \"{}\")\n        commands=({})\n        options=({})\n        ;;\n",
                        command->path, commands.empty() ? commands : commands.substr(1),
                        WordsOf(OptionNames(*command, program)).substr(1));
        values += CasesOf(*command, program);
    }
    return "# Completion of pelgrin in bash, written by \"pelgrin completion bash\".\n"
           "# shellcheck shell=bash disable=SC2034\n\n"
           "# The commands and options that may stand behind a command.\n"
           "_pelgrin_words()\n{\n    case $1 in\n"
           + words
           + "    esac\n}\n\n"
             "# What an option, or the argument at a place, wants.\n"
             "_pelgrin_value()\n{\n    kind='' many='' choices=()\n    case $1 in\n"
           + values + "    esac\n}\n" + kWalk;
}

} // namespace pelgrin
