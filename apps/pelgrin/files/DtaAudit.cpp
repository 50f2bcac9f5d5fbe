#include "files/DtaAudit.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <OpenMS/CONCEPT/Constants.h>
#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/FileLines.h"

namespace pelgrin {

namespace {

constexpr std::string_view kEnding = ".dta";
constexpr std::string_view kSpace = " \t\n\v\f\r";
constexpr double kHighestCharge = 100.0; // above every charge that instruments report

bool IsDtaName(const std::string& name)
{
    return name.size() >= kEnding.size()
           && Lower(std::string_view(name).substr(name.size() - kEnding.size())) == kEnding;
}

/// The m/z that the library makes of "1006.5228 2": a mass above 0, and a charge. 0
/// when the line is none.
double PrecursorMzOf(std::string_view line)
{
    double mh = 0.0;
    double charge = 0.0;
    const bool isGood = TakeNumber(line, mh) && mh > 0.0 && TakeNumber(line, charge)
                        && charge >= 1.0 && charge <= kHighestCharge;
    const double kProton = OpenMS::Constants::PROTON_MASS_U;
    return isGood ? (mh - kProton) / std::floor(charge) + kProton : 0.0;
}

bool IsPeak(std::string_view line)
{
    double mz = 0.0;
    double intensity = 0.0;
    return TakeNumber(line, mz) && TakeNumber(line, intensity);
}

/// Follows the library through the lines of one file.
class Walk {
public:
    Walk(const std::string& name, DtaAudit& audit) : name_(name), audit_(audit) {}

    /// False when nothing more of the file is of interest.
    bool Take(const FileLines::Line& line)
    {
        if (line.number == 1) {
            precursorMz_ = PrecursorMzOf(line.begin);
        } else if (isBehindEmptyLine_) {
            if (line.begin.find_first_not_of(kSpace) != std::string::npos) {
                Add(audit_.behindEmptyLine, emptyLine_);
                return false;
            }
            return true;
        } else if (line.begin.empty()) {
            isBehindEmptyLine_ = true;
            emptyLine_ = line.number;
            return true;
        } else {
            TakePeak(line);
        }
        if (line.length > kLongestLine) {
            Add(audit_.longLine, line.number);
            return false;
        }
        return true;
    }

    void End() const
    {
        if (precursorMz_ == 0.0) {
            audit_.withoutPrecursor.push_back(name_);
        } else if (!hasPeaks_) {
            audit_.withoutPeaks.push_back(name_);
        } else {
            audit_.precursorMz.emplace(name_, precursorMz_);
        }
    }

private:
    void TakePeak(const FileLines::Line& line)
    {
        if (IsPeak(line.begin)) {
            hasPeaks_ = true;
        } else {
            Add(audit_.unreadableNumbers, line.number);
        }
    }

    void Add(DtaAudit::Flaw& flaw, std::uint64_t line) const
    {
        if (flaw.count++ == 0) {
            flaw.firstFile = name_;
            flaw.firstLine = line;
        }
    }

    const std::string& name_;
    DtaAudit& audit_;
    double precursorMz_ = 0.0; ///< Th; 0: none
    bool hasPeaks_ = false;
    bool isBehindEmptyLine_ = false;
    std::uint64_t emptyLine_ = 0;
};

void AuditFile(const std::string& folder, const std::string& name, DtaAudit& audit)
{
    const std::filesystem::path path = std::filesystem::path(folder) / name;
    try {
        CheckReadable(path.string());
        FileLines lines(path.string(), FileLines::Mode::Text);
        FileLines::Line line;
        Walk walk(name, audit);
        while (lines.Next(line) && walk.Take(line)) {
        }
        walk.End();
    } catch (const Failure&) {
        audit.notReadable.push_back(name);
    }
}

} // namespace

std::vector<std::string> DtaFileNames(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::string name = entry->path().filename().string();
        std::error_code ignored; // of a link that leads nowhere
        if (IsDtaName(name) && !entry->is_directory(ignored)) {
            names.push_back(std::move(name));
        }
    }
    if (error) {
        throw Failure(fmt::format("{}: cannot be read: {}", folder, error.message()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

DtaAudit AuditDta(const std::string& folder)
{
    DtaAudit audit;
    audit.names = DtaFileNames(folder);
    for (const std::string& name : audit.names) {
        AuditFile(folder, name, audit);
    }
    return audit;
}

} // namespace pelgrin
