#include "lint/PeakLines.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Words.h"
#include "lint/LineFlaws.h"

namespace pelgrin {

namespace {

constexpr std::string_view kExpected = "expected m/z, a blank and an intensity";

Rule RuleOfLine(std::string_view text)
{
    const bool isBlank = text.find_first_not_of(" \t\r") == std::string_view::npos;
    return isBlank ? Rule::BlankPeakLine : Rule::BadPeakLine;
}

} // namespace

bool HasDecimals(std::string_view text)
{
    return text.size() > 1 && text[0] == ',' && text[1] >= '0' && text[1] <= '9';
}

bool LintPeak(const FileLines::Line& line, Numbers numbers, const std::string& subject,
              Findings& findings)
{
    std::string_view text = line.begin;
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const PeakLine kind = PeakLineOf(text, numbers);
    if (kind == PeakLine::Peak) {
        return true;
    }
    const auto add = [&](Rule rule) {
        findings.Add(rule, line.number, fmt::format("{}; {}", Shown(line.begin), kExpected),
                     subject);
        return false;
    };
    if (kind == PeakLine::Infinite) {
        return add(Rule::BadPeakLine);
    }
    double value = 0.0;
    if (!TakeNumber(text, value)) {
        return add(RuleOfLine(line.begin));
    }
    if (HasDecimals(text)) {
        return add(Rule::DecimalComma);
    }
    const bool hasGap = !text.empty() && (text.front() == ' ' || text.front() == '\t');
    if (!hasGap || !TakeNumber(text, value)) {
        return add(Rule::NoIntensity);
    }
    return !HasDecimals(text) || add(Rule::DecimalComma);
}

} // namespace pelgrin
