#include "lint/LineFlaws.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Terminal.h"
#include "common/Words.h"

namespace pelgrin {

namespace {

void LintReturns(const FileLines::Line& line, Findings& findings)
{
    const std::size_t hit = line.begin.find('\r');
    if (hit != std::string::npos && line.begin.find_first_not_of('\r', hit) != std::string::npos) {
        findings.Add(Rule::LoneReturn, line.number,
                     fmt::format("a carriage return in column {}; expected lines that end in a "
                                 "line feed",
                                 hit + 1));
    }
}

bool LintLength(const FileLines::Line& line, std::uint64_t longest, Findings& findings)
{
    if (line.length > longest) {
        findings.Add(Rule::LongLine, line.number,
                     fmt::format("{} characters; expected at most {}", line.length, longest));
        return false;
    }
    return true;
}

} // namespace

bool LintLine(const FileLines::Line& line, Findings& findings)
{
    if (HasNul(line)) {
        findings.Add(Rule::NulByte, line.number,
                     fmt::format("a NUL byte in column {}; expected text", line.begin.size() + 1));
    }
    LintReturns(line, findings);
    return LintLength(line, kLongestLine, findings);
}

bool LintHeader(const FileLines::Line& line, Findings& findings)
{
    LintReturns(line, findings);
    return LintLength(line, kLongestHeader, findings);
}

bool BeginsWithMark(std::string_view bytes)
{
    return bytes.substr(0, 3) == "\xEF\xBB\xBF";
}

std::string Shown(std::string_view text)
{
    constexpr std::size_t kMost = 80;
    const bool isLong = text.size() > kMost;
    return "\"" + OneLine(Clip(text, kMost)) + (isLong ? "...\"" : "\"");
}

} // namespace pelgrin
