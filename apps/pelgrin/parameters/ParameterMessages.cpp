#include "parameters/ParameterMessages.h"

#include <cstdlib>
#include <map>

#include <fmt/format.h>

#include "common/Words.h"
#include "files/FileLines.h"
#include "parameters/ParameterKeys.h"
#include "run/Parameters.h"

namespace pelgrin {

namespace {

/// The text between two marks, the first one after begin; empty without them.
std::string Between(const std::string& text, const std::string& before, const std::string& after)
{
    const std::size_t begin = text.find(before);
    const std::size_t end =
        begin == std::string::npos ? begin : text.find(after, begin + before.size());
    return end == std::string::npos
               ? std::string()
               : text.substr(begin + before.size(), end - begin - before.size());
}

std::string AllowedFor(const std::string& section, const std::string& key)
{
    const ParameterKey* const row = FindParameterKey(section, key);
    return row == nullptr ? "another value" : row->allowed;
}

std::string MissingValue(const ParameterText& text, const NamedKey& named)
{
    const auto& [section, key] = named;
    const std::string allowed = AllowedFor(section, key);
    if (text.Find(section, key) != nullptr) {
        return fmt::format("{} is empty: expected {}", text.PlaceOf(section, key), allowed);
    }
    if (text.LineOfSection(section) == 0) {
        return fmt::format("{}: section [{}] is missing; it needs {}: {}", text.Path(), section,
                           key, allowed);
    }
    return fmt::format("{} is missing in section [{}]: expected {}", text.PlaceOf(section, key),
                       section, allowed);
}

bool Contains(const std::string& text, const char* part)
{
    return text.find(part) != std::string::npos;
}

// ---- Warnings ---------------------------------------------------------------

/// " (did you mean "x"?)".
std::string DidYouMean(const std::string& name)
{
    return name.empty() ? std::string() : fmt::format("; did you mean \"{}\"?", name);
}

std::string UnknownKey(const ParameterText::Entry& entry)
{
    std::string other;
    for (const ParameterKey& row : ParameterKeys()) {
        if (FindParameterKey(row.section, entry.key) != nullptr) {
            other = row.section;
        }
    }
    return fmt::format("unknown key \"{}\" in section [{}] is not read{}", entry.key, entry.section,
                       other.empty() ? DidYouMean(NearestParameterKey(entry.section, entry.key))
                                     : fmt::format("; it belongs into section [{}]", other));
}

/// The key's N lies above the number that the file gives.
std::string NotCounted(const ParameterText& text, const ParameterKey& row,
                       const ParameterText::Entry& entry)
{
    const std::string number = text.ValueOf(row.section, row.number);
    const long long count = std::atoll(number.c_str());
    const std::uint64_t n = NumberIn(row, entry.key).value_or(0);
    if (number.empty() || (count > 0 && n <= static_cast<std::uint64_t>(count))) {
        return {};
    }
    return fmt::format("{} is not read: {} is {}", entry.key, row.number, number);
}

/// Digits, perhaps behind a sign: "1.9" and "1e3" are read as 1.
bool IsWhole(std::string_view text)
{
    text.remove_prefix(!text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// The value is not all read, or read as something else.
std::string ReadOtherwise(const ParameterKey& row, const ParameterText::Entry& entry)
{
    if (entry.value.empty()) {
        return {};
    }
    if (row.kind == ValueKind::Switch && entry.value != "0" && entry.value != "1") {
        const bool isOn = std::string_view(row.key) != "open_search";
        return fmt::format("{} = \"{}\" is read as {}; expected {}", entry.key, entry.value,
                           isOn ? "on" : "off", row.allowed);
    }
    const bool isCount = row.kind == ValueKind::Count;
    const bool isRead = isCount ? IsWhole(entry.value) : ParseNumber(entry.value).has_value();
    if ((!isCount && row.kind != ValueKind::Number) || isRead) {
        return {};
    }
    const std::string read = row.kind == ValueKind::Number
                                 ? fmt::format("{}", std::strtod(entry.value.c_str(), nullptr))
                                 : fmt::format("{}", std::atoll(entry.value.c_str()));
    return fmt::format("{} = \"{}\" is read as {}; expected {}", entry.key, entry.value, read,
                       row.allowed);
}

std::string WarningOf(const ParameterText& text, const ParameterText::Entry& entry)
{
    const ParameterKey* const row = FindParameterKey(entry.section, entry.key);
    if (row == nullptr) {
        return UnknownKey(entry);
    }
    const ParameterText::Entry* const last = text.Find(entry.section, entry.key);
    if (last->line != entry.line) {
        return fmt::format("{} stands again in line {}, and only that one is read", entry.key,
                           last->line);
    }
    if (row->number != nullptr) {
        std::string warning = NotCounted(text, *row, entry);
        if (!warning.empty()) {
            return warning;
        }
    }
    return ReadOtherwise(*row, entry);
}

} // namespace

std::string BadValue(const ParameterText& text, const std::string& section, const std::string& key,
                     const std::string& reason, const std::string& expected)
{
    return fmt::format("{} = \"{}\": {}{}expected {}", text.PlaceOf(section, key),
                       text.ValueOf(section, key), reason, reason.empty() ? "" : "; ", expected);
}

std::string BadValue(const ParameterText& text, const std::string& section, const std::string& key,
                     const std::string& reason)
{
    return BadValue(text, section, key, reason, AllowedFor(section, key));
}

NamedKey KeyIn(const std::string& message)
{
    return {Between(message, "\" in section \"", "\""), Between(message, " parameter \"", "\"")};
}

std::string Explain(const ParameterText& text, const std::string& message)
{
    const NamedKey named = KeyIn(message);
    if (!named.key.empty() && Contains(message, "Missing parameter")) {
        return MissingValue(text, named);
    }
    if (!named.key.empty()) {
        return BadValue(text, named.section, named.key);
    }
    if (Contains(message, "no such FDR estimation method")) {
        return BadValue(text, "Fdr", "fdr_method");
    }
    if (Contains(message, "Must DO localization before")) {
        return BadValue(text, "Annotation", "is_annotated",
                        "proteins are annotated only after localization",
                        "0, or is_localized = 1 in section [Localization]");
    }
    return fmt::format("{}: {}", text.Path(), message);
}

std::vector<std::string> WarningsOf(const ParameterText& text)
{
    std::map<std::uint64_t, std::string> warnings; // by line
    for (const ParameterText::Header& header : text.Headers()) {
        if (!IsParameterSection(header.section)) {
            warnings[header.line] =
                fmt::format("unknown section [{}] is not read{}", header.section,
                            DidYouMean(NearestParameterSection(header.section)));
        }
    }
    for (const ParameterText::Entry& entry : text.Entries()) {
        const std::string warning =
            IsParameterSection(entry.section) ? WarningOf(text, entry) : std::string();
        if (!warning.empty()) {
            warnings[entry.line] = warning;
        }
    }
    if (text.LongLine() != 0) {
        warnings[text.LongLine()] = fmt::format(
            "a line of more than {} characters is cut, and ends the reading", kLongestLine);
    }
    std::vector<std::string> texts;
    texts.reserve(warnings.size());
    for (const auto& [line, warning] : warnings) {
        texts.push_back(fmt::format("{}:{}: {}", text.Path(), line, warning));
    }
    return texts;
}

} // namespace pelgrin
