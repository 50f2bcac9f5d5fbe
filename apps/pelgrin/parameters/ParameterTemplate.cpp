#include "parameters/ParameterTemplate.h"

#include <string_view>

#include <fmt/format.h>

#include "parameters/ParameterKeys.h"

namespace pelgrin {

namespace {

constexpr const char kFront[] =
    "# Parameters of a run. Check them with \"pelgrin params check FILE\", begin the run with\n"
    "# \"pelgrin run FILE\". Relative paths begin in the folder where pelgrin is run.\n"
    "# What stands behind a \"#\" is not read, and a value cannot hold an \"=\".\n";

/// text in comment lines of at most 90 characters.
std::string Comment(std::string_view text)
{
    constexpr std::size_t kWidth = 88;
    std::string lines;
    while (!text.empty()) {
        std::size_t end = text.size();
        if (end > kWidth) {
            end = text.rfind(' ', kWidth);
            end = end == std::string_view::npos ? text.size() : end;
        }
        lines += fmt::format("# {}\n", text.substr(0, end));
        text.remove_prefix(end < text.size() ? end + 1 : end);
    }
    return lines;
}

/// "fixed_mod_1" for "fixed_mod_N".
std::string FirstKeyOf(const ParameterKey& row)
{
    std::string key = row.key;
    if (row.number != nullptr) {
        key.back() = '1';
    }
    return key;
}

std::string EntryOf(const ParameterKey& row)
{
    std::string text = "\n" + Comment(row.meaning);
    text += Comment(fmt::format("Values: {}. Needed: {}.", row.allowed, row.needed));
    text += row.example == nullptr ? fmt::format("# {} =\n", FirstKeyOf(row))
                                   : fmt::format("{} = {}\n", FirstKeyOf(row), row.example);
    return text;
}

} // namespace

std::string ParameterTemplate()
{
    std::string text = kFront;
    std::string_view section;
    for (const ParameterKey& row : ParameterKeys()) {
        if (section != row.section) {
            section = row.section;
            text += fmt::format("\n[{}]\n", section);
        }
        text += EntryOf(row);
    }
    return text;
}

} // namespace pelgrin
