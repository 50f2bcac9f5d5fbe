#include "help/CommandTree.h"

#include <algorithm>
#include <string_view>

namespace pelgrin {

namespace {

/// The choices of "LETTER:{a,b}", as CLI::IsMember shows them.
std::vector<std::string> ListedIn(std::string_view typeName)
{
    std::vector<std::string> choices;
    const std::size_t begin = typeName.find('{');
    const std::size_t end = typeName.find('}', begin == std::string_view::npos ? 0 : begin);
    if (begin == std::string_view::npos || end == std::string_view::npos) {
        return choices;
    }
    for (std::size_t at = begin + 1; at < end;) {
        const std::size_t stop = std::min(typeName.find(',', at), end);
        choices.emplace_back(typeName.substr(at, stop - at));
        at = stop + 1;
    }
    return choices;
}

/// The choices of 'its format: "MaxQuant", "Sequest (.txt)"': names with blanks stand
/// in quotes behind a colon.
std::vector<std::string> QuotedIn(std::string_view description)
{
    std::vector<std::string> choices;
    std::size_t at = description.find(": \"");
    while (at != std::string_view::npos) {
        const std::size_t begin = description.find('"', at) + 1;
        const std::size_t end = description.find('"', begin);
        if (begin == 0 || end == std::string_view::npos) {
            break;
        }
        choices.emplace_back(description.substr(begin, end - begin));
        at = description.compare(end, 4, "\", \"") == 0 ? end + 1 : std::string_view::npos;
    }
    return choices;
}

OptionNode::Value ValueOf(const OptionNode& option)
{
    if (!option.choices.empty()) {
        return OptionNode::Value::Choice;
    }
    // An argument may have the name of its values, and "FILE ..." means several.
    const std::string& full =
        option.isArgument && option.valueName.empty() ? option.names.front() : option.valueName;
    const std::string wanted = full.substr(0, full.find(' '));
    for (const char* const name : {"FILE", "FASTA", "TABLE"}) {
        if (wanted == name) {
            return OptionNode::Value::File;
        }
    }
    return wanted == "DIR" ? OptionNode::Value::Folder : OptionNode::Value::Text;
}

OptionNode NodeOf(const CLI::Option& option)
{
    OptionNode node;
    node.isArgument = option.get_positional();
    if (node.isArgument) {
        node.names = {option.get_name(true)};
    } else {
        for (const std::string& name : option.get_snames()) {
            node.names.push_back("-" + name);
        }
        for (const std::string& name : option.get_lnames()) {
            node.names.push_back("--" + name);
        }
    }
    node.isRequired = option.get_required();
    node.description = option.get_description();
    if (option.get_items_expected_max() == 0 || option.get_type_size() == 0) {
        return node; // a switch
    }
    const std::string typeName = option.get_type_name();
    node.valueName = typeName.substr(0, typeName.find(':'));
    node.choices = ListedIn(typeName);
    if (node.choices.empty()) {
        node.choices = QuotedIn(node.description);
        if (!node.choices.empty()) {
            node.description.erase(node.description.find(": \""));
        }
    }
    node.defaultText = option.get_default_str();
    node.takesMany = option.get_expected_max() == CLI::detail::expected_max_vector_size;
    node.value = ValueOf(node);
    return node;
}

CommandNode NodeOf(const CLI::App& app, const std::string& path)
{
    CommandNode node;
    node.name = app.get_name();
    node.path = path;
    node.description = app.get_description();
    node.footer = app.get_footer();
    for (const CLI::Option* const option :
         app.get_options([](const CLI::Option*) { return true; })) {
        node.options.push_back(NodeOf(*option));
    }
    for (const CLI::App* const command :
         app.get_subcommands([](const CLI::App*) { return true; })) {
        if (!command->get_group().empty()) {
            node.commands.push_back(NodeOf(
                *command, path.empty() ? command->get_name() : path + " " + command->get_name()));
        }
    }
    return node;
}

void AddAll(const CommandNode& node, std::vector<const CommandNode*>& all)
{
    all.push_back(&node);
    for (const CommandNode& command : node.commands) {
        AddAll(command, all);
    }
}

} // namespace

CommandNode TreeOf(const CLI::App& app)
{
    return NodeOf(app, {});
}

std::vector<const CommandNode*> AllOf(const CommandNode& node)
{
    std::vector<const CommandNode*> all;
    AddAll(node, all);
    return all;
}

std::vector<const OptionNode*> OptionsOf(const CommandNode& command, const CommandNode& program)
{
    std::vector<const OptionNode*> options;
    const auto add = [&options](const CommandNode& node) {
        for (const OptionNode& option : node.options) {
            const bool isKnown =
                std::any_of(options.begin(), options.end(), [&option](const OptionNode* other) {
                    return other->names == option.names;
                });
            if (!option.isArgument && !isKnown) {
                options.push_back(&option);
            }
        }
    };
    add(command);
    add(program);
    return options;
}

std::vector<const OptionNode*> ArgumentsOf(const CommandNode& command)
{
    std::vector<const OptionNode*> arguments;
    for (const OptionNode& option : command.options) {
        if (option.isArgument) {
            arguments.push_back(&option);
        }
    }
    return arguments;
}

} // namespace pelgrin
