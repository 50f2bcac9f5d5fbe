#include "lint/MgfHeaderLines.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Words.h"
#include "lint/LineFlaws.h"
#include "lint/PeakLines.h"

namespace pelgrin {

namespace {

constexpr std::string_view kKeys[] = {
    "PEPMASS=", "CHARGE=", "RTINSECONDS=", "SCANS=", "TITLE=", "BEGIN IONS", "END IONS"};
constexpr std::string_view kSpace = " \t\r";

/// The beginning of a line up to its "=", which comes behind it, or the whole of
/// one without; in capital letters, blanks in a row as one, none at the ends.
std::string Normal(std::string_view line)
{
    constexpr std::size_t kLongestKey = 40;
    const std::size_t equals = line.find('=');
    const std::string_view front = line.substr(0, equals);
    std::string key;
    for (std::size_t i = 0; i < front.size() && key.size() < kLongestKey; ++i) {
        const char c = front[i];
        if (kSpace.find(c) != std::string_view::npos) {
            key += key.empty() || key.back() == ' ' ? "" : " ";
        } else {
            key += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        }
    }
    key.erase(key.find_last_not_of(' ') + 1); // npos + 1 is 0
    return equals == std::string_view::npos ? key : key + "=";
}

/// Takes an integer with its sign; false when there is none.
bool TakeInteger(std::string_view& text, bool& isNegative)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    isNegative = BeginsWith(text, "-");
    if (isNegative || BeginsWith(text, "+")) {
        text.remove_prefix(1);
    }
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    text.remove_prefix(digits);
    return digits > 0;
}

bool HasDigit(std::string_view text)
{
    return text.find_first_of("0123456789") != std::string_view::npos;
}

/// What is wrong with a value; nothing when all is read.
std::optional<Rule> FlawOf(std::string_view value, MgfKey key)
{
    const bool isWhole = key == MgfKey::Charge || key == MgfKey::Scan;
    bool isNegative = false;
    double number = 0.0;
    if (isWhole ? !TakeInteger(value, isNegative) : !TakeNumber(value, number)) {
        return Rule::BadValue;
    }
    if (!isWhole && HasDecimals(value)) {
        return Rule::DecimalComma;
    }
    if (key != MgfKey::Pepmass && HasDigit(value)) {
        return Rule::ValueList; // behind a mass stands its intensity
    }
    if (key == MgfKey::Charge && (isNegative || BeginsWith(value, "-"))) {
        return Rule::NegativeCharge;
    }
    return std::nullopt;
}

} // namespace

std::string_view TextOf(MgfKey key)
{
    return kKeys[static_cast<std::size_t>(key)];
}

std::optional<MgfKey> MeantKey(std::string_view line)
{
    const std::string normal = Normal(line);
    const auto* const key = std::find(std::begin(kKeys), std::end(kKeys), normal);
    if (key == std::end(kKeys)) {
        return std::nullopt;
    }
    return static_cast<MgfKey>(key - std::begin(kKeys));
}

bool HasKey(std::string_view line, MgfKey key)
{
    // The first letter alone makes the begin and the end (B-23).
    const bool isMark = key == MgfKey::Begin || key == MgfKey::End;
    return BeginsWith(line, TextOf(key).substr(0, isMark ? 1 : std::string_view::npos));
}

bool LintKey(const FileLines::Line& line, MgfKey key, const std::string& subject,
             Findings& findings)
{
    if (HasKey(line.begin, key)) {
        return true;
    }
    const bool isIndented = kSpace.find(line.begin.front()) != std::string_view::npos;
    findings.Add(isIndented ? Rule::IndentedLine : Rule::KeySpelling, line.number,
                 fmt::format("{} is not seen; expected {} at the begin of the line",
                             Shown(line.begin), TextOf(key)),
                 subject);
    return false;
}

void LintValue(const FileLines::Line& line, MgfKey key, const std::string& subject,
               Findings& findings)
{
    const std::string_view value = std::string_view(line.begin).substr(TextOf(key).size());
    if (const std::optional<Rule> rule = FlawOf(value, key)) {
        findings.Add(*rule, line.number,
                     fmt::format("{}; expected one {}", Shown(line.begin),
                                 key == MgfKey::Charge ? "charge such as 2+" : "number"),
                     subject);
    }
}

} // namespace pelgrin
