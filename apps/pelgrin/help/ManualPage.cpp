#include "help/ManualPage.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string_view>

#include <fmt/format.h>

namespace pelgrin {

namespace {

/// text of one line, safe wherever a line begins: minus signs stay minus signs, and
/// a dot or an apostrophe at its front is no request.
std::string Safe(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        if (c == '\\') {
            result += "\\e";
        } else if (c == '-') {
            result += "\\-";
        } else {
            result += c;
        }
    }
    const bool isRequest = !result.empty() && (result.front() == '.' || result.front() == '\'');
    return isRequest ? "\\&" + result : result;
}

std::string Bold(std::string_view text)
{
    return "\\fB" + Safe(text) + "\\fR";
}

std::string Italic(std::string_view text)
{
    return "\\fI" + Safe(text) + "\\fR";
}

/// Lines that keep their breaks and blanks.
std::string AsItStands(const std::string& text)
{
    std::string result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        result += Safe(line) + "\n";
    }
    const std::size_t begin = result.find_first_not_of('\n');
    return begin == std::string::npos ? "" : ".nf\n" + result.substr(begin) + ".fi\n";
}

std::string EntryOf(const OptionNode& option)
{
    std::string names;
    for (const std::string& name : option.names) {
        names += (names.empty() ? "" : ", ") + (option.isArgument ? Italic(name) : Bold(name));
    }
    if (!option.valueName.empty() && !option.isArgument) {
        names += " " + Italic(option.valueName) + (option.takesMany ? " ..." : "");
    }
    std::string text = option.description;
    if (!option.choices.empty()) {
        text += ": " + fmt::format("{}", fmt::join(option.choices, ", "));
    }
    if (!option.defaultText.empty()) {
        text += "; default " + option.defaultText;
    }
    if (option.isRequired) {
        text += "; required";
    }
    return ".TP\n" + names + "\n" + Safe(text) + "\n";
}

bool IsHelp(const OptionNode& option)
{
    return option.names.back() == "--help";
}

std::string EntriesOf(const CommandNode& command)
{
    std::string text;
    for (const OptionNode& option : command.options) {
        if (!IsHelp(option) || command.path.empty()) {
            text += EntryOf(option);
        }
    }
    return text;
}

std::string Synopsis(const CommandNode& program)
{
    std::string text;
    for (const CommandNode* const command : AllOf(program)) {
        if (command->IsGroup()) {
            continue;
        }
        text += (text.empty() ? "" : ".br\n") + Bold("pelgrin " + command->path);
        for (const OptionNode* const argument : ArgumentsOf(*command)) {
            text += " " + Italic(argument->names.front());
        }
        text += " [" + Italic("options") + "]\n";
    }
    return text;
}

std::string ChapterOf(const CommandNode& command)
{
    std::string title = "pelgrin " + command.path;
    std::transform(title.begin(), title.end(), title.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    std::string text = ".SH " + Safe(title) + "\n" + Safe(command.description) + ".\n";
    text += EntriesOf(command);
    return command.footer.empty() ? text : text + ".PP\n" + AsItStands(command.footer);
}

std::string ExitStatusSection()
{
    std::string text = ".SH EXIT STATUS\n";
    for (const auto& [status, meaning] : ExitStatusTexts()) {
        text += fmt::format(".TP\n{}\n{}\n", Bold(std::to_string(status)), Safe(meaning));
    }
    return text;
}

constexpr const char kFiles[] =
    R"(.SH FILES
.TP
\fIunimod.txt\fR
The table of modifications, in the working folder, that is read when a parameter file
names no other one. \fBpelgrin mods import\fR makes it.
.TP
\fIrun.json\fR
In the folder of the results, written last: inputs with their SHA\-256, parameters,
versions, times, and exit status of the run that finished there.
)";

} // namespace

const std::vector<std::pair<int, std::string>>& ExitStatusTexts()
{
    static const std::vector<std::pair<int, std::string>> texts = {
        {0, "all well"},
        {1, "failure; the message says which file, which line and what was expected"},
        {2, "the command line is wrong; no result was written"},
        {3, "finished, with losses or findings, which are reported"}};
    return texts;
}

std::string ManualPageOf(const CommandNode& program, const std::string& version)
{
    std::string text =
        fmt::format(".TH PELGRIN 1 \"\" \"pelgrin {}\" \"User Commands\"\n", version);
    text += ".nh\n.ad l\n"; // commands and paths are not broken or stretched
    text += ".SH NAME\npelgrin \\- annotates identified spectra of tandem mass spectrometry\n";
    text += ".SH SYNOPSIS\n" + Synopsis(program);
    text += ".SH COMMANDS\n";
    for (const CommandNode* const command : AllOf(program)) {
        if (!command->IsGroup()) {
            text += ".TP\n" + Bold("pelgrin " + command->path) + "\n" + Safe(command->description)
                    + "\n";
        }
    }
    text += ".SH OPTIONS OF EVERY COMMAND\n" + EntriesOf(program);
    for (const CommandNode* const command : AllOf(program)) {
        if (!command->IsGroup()) {
            text += ChapterOf(*command);
        }
    }
    return text + ExitStatusSection() + kFiles;
}

} // namespace pelgrin
