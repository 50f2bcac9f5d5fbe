// The commands and options of the program as values, for texts that are made of
// them: completion scripts and the manual page never go stale.
#ifndef PELGRIN_COMMANDTREE_H
#define PELGRIN_COMMANDTREE_H

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace pelgrin {

struct OptionNode {
    /// What may stand behind the option, or at the place of an argument.
    enum class Value { None, Text, File, Folder, Choice };

    std::vector<std::string> names; ///< "-q", "--quiet"; of an argument its name alone
    bool isArgument = false;        ///< it has a place, and no name on the command line
    Value value = Value::None;
    bool takesMany = false; ///< values go on up to the next option
    bool isRequired = false;
    std::string valueName;   ///< "FILE"; may be empty
    std::string defaultText; ///< may be empty
    std::string description;
    std::vector<std::string> choices; ///< of Value::Choice
};

struct CommandNode {
    std::string name;        ///< "find"
    std::string path;        ///< "mods find"; empty for the program
    std::string description; ///< one line
    std::string footer;      ///< as the help ends; may be empty
    std::vector<OptionNode> options;
    std::vector<CommandNode> commands; ///< without the hidden ones

    bool IsGroup() const { return !commands.empty(); }
};

/// The program with everything below it.
CommandNode TreeOf(const CLI::App& app);

/// A node and all nodes below it, from outside in.
std::vector<const CommandNode*> AllOf(const CommandNode& node);

/// The options that may stand behind a command: its own, and those of the whole
/// program that it has none of its own for. Arguments are not among them.
std::vector<const OptionNode*> OptionsOf(const CommandNode& command, const CommandNode& program);

/// The arguments of a command, in their order.
std::vector<const OptionNode*> ArgumentsOf(const CommandNode& command);

} // namespace pelgrin

#endif // PELGRIN_COMMANDTREE_H
