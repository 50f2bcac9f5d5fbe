#include "lint/DtaLint.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Words.h"
#include "files/DtaAudit.h"
#include "files/FileLines.h"
#include "files/PeakLine.h"
#include "lint/LineFlaws.h"
#include "lint/PeakLines.h"

namespace pelgrin {

namespace {

constexpr double kHighestCharge = 100.0; // above every charge that instruments report

bool IsBlank(std::string_view text)
{
    return text.find_first_not_of(kWhiteSpace) == std::string_view::npos;
}

void LintPrecursor(const FileLines::Line& line, Findings& findings)
{
    std::string_view text = line.begin;
    double mh = 0.0;
    double charge = 0.0;
    const bool hasMass = TakeNumber(text, mh);
    if (hasMass && HasDecimals(text)) {
        findings.Add(Rule::DecimalComma, line.number,
                     fmt::format("{}; expected MH+ with a point, and a charge", Shown(line.begin)));
        return;
    }
    // The charge is a whole number, and ends where its digits do.
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    std::string_view digits =
        text.substr(0, std::min(text.find_first_not_of("0123456789"), text.size()));
    if (!hasMass || !TakeNumber(digits, charge) || mh <= 0.0 || charge < 1.0
        || charge > kHighestCharge) {
        findings.Add(Rule::DtaPrecursor, line.number,
                     fmt::format("{}; expected MH+ and a charge of 1 to {}", Shown(line.begin),
                                 kHighestCharge));
    }
}

} // namespace

void LintDta(const std::string& path, Findings& findings)
{
    CheckReadable(path);
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    bool hasPeaks = false;
    std::uint64_t emptyLine = 0;
    while (lines.Next(line) && LintLine(line, findings)) {
        if (line.number == 1) {
            LintPrecursor(line, findings);
        } else if (emptyLine != 0 && !IsBlank(line.begin)) {
            findings.Add(Rule::DtaEmptyLine, emptyLine,
                         fmt::format("line {} and what follows are not read; expected no empty "
                                     "line",
                                     line.number));
            break;
        } else if (emptyLine != 0 || line.begin.empty()) {
            emptyLine = emptyLine != 0 ? emptyLine : line.number;
        } else {
            hasPeaks |= LintPeak(line, Numbers::OfStream, "", findings);
        }
    }
    if (!hasPeaks) {
        findings.Add(Rule::DtaPeaks, 1,
                     "no peaks behind the line; expected lines of m/z and intensity");
    }
}

void LintDtaFolder(const std::string& folder, Findings& findings)
{
    const char* const between = folder.empty() || folder.back() == '/' ? "" : "/";
    for (const std::string& name : DtaFileNames(folder)) {
        std::string path = folder;
        path.append(between).append(name);
        findings.SetPath(path);
        LintDta(path, findings);
    }
    findings.SetPath("");
}

} // namespace pelgrin
