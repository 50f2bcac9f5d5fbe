#include <algorithm>
#include <filesystem>
#include <optional>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/DtaAudit.h"
#include "files/FileLines.h"
#include "files/PeakLine.h"
#include "prepare/OtherCopies.h"
#include "prepare/PlainText.h"
#include "prepare/TextOutput.h"
#include "prepare/TitleScan.h"

namespace pelgrin {

namespace {

/// "MH z", with a charge above 0 (B-70).
bool IsPrecursor(std::string_view line)
{
    const std::string_view text = WithoutBlanks(line, kWhiteSpace);
    const std::size_t blank = text.find_first_of(kWhiteSpace);
    if (blank == std::string_view::npos || PeakLineOf(text, Numbers::OfStream) != PeakLine::Peak) {
        return false;
    }
    return LeadingValue(WithoutBlanks(text.substr(blank), kWhiteSpace)).value_or(0) > 0;
}

/// One file. It is written while it is read; a reason to leave it out leaves no
/// file behind.
class FileCopy {
public:
    FileCopy(const std::string& source, const std::string& target, Copy& copy)
        : lines_(source, FileLines::Mode::Text), output_(target), copy_(copy)
    {
    }

    /// The reason to leave the file out, or nullptr.
    const char* Take()
    {
        if (!lines_.Next(line_) || HasNul(line_) || !IsPrecursor(line_.begin)) {
            return "without_precursor";
        }
        output_.Line(WithoutBlanks(line_.begin, kWhiteSpace));
        bool isBehindBlank = false;
        while (lines_.Next(line_)) {
            const std::string_view text = WithoutBlanks(line_.begin, kWhiteSpace);
            if (line_.length > kLongestLine) {
                return "long_line";
            }
            if (HasNul(line_) && !line_.isPadding) {
                return "nul_byte";
            }
            if (text.empty()) {
                copy_.Change("blank_line", line_.number);
                isBehindBlank = Trimmed(line_.begin).empty();
                continue;
            }
            if (const char* const reason = TakeLine(text, isBehindBlank)) {
                return reason;
            }
            isBehindBlank = false;
        }
        if (peaks_ == 0) {
            return "without_peaks";
        }
        output_.Finish();
        return nullptr;
    }

    std::uint64_t Line() const { return line_.number; }

private:
    const char* TakeLine(std::string_view text, bool isBehindBlank)
    {
        const PeakLine kind = PeakLineOf(text, Numbers::OfStream);
        if (kind == PeakLine::Comma) {
            return "decimal_comma";
        }
        if (kind != PeakLine::Peak) {
            copy_.Change("line_no_peak", line_.number);
            return nullptr;
        }
        // Peaks go up; behind a blank line the first line of another spectrum may
        // stand, and its first peak lies lower.
        const double mz =
            ParseNumber(text.substr(0, text.find_first_of(kWhiteSpace))).value_or(0.0);
        if (hasBlank_ = hasBlank_ || isBehindBlank; hasBlank_ && mz < highest_) {
            return "several_spectra";
        }
        highest_ = std::max(highest_, mz);
        ++peaks_;
        output_.Line(text);
        return nullptr;
    }

    FileLines lines_;
    FileLines::Line line_;
    TextOutput output_;
    Copy& copy_;
    std::uint64_t peaks_ = 0;
    double highest_ = 0.0;
    bool hasBlank_ = false;
};

/// Whatever else lies in target would be read with the copies.
void RefuseOthers(const std::string& target, const std::vector<std::string>& names,
                  const std::string& input)
{
    std::error_code ignored;
    if (!std::filesystem::is_directory(target, ignored)) {
        return;
    }
    for (const std::string& name : DtaFileNames(target)) {
        if (!std::binary_search(names.begin(), names.end(), name)) {
            throw Failure(fmt::format("{}: is no copy of a file of {}, and would be read with "
                                      "them; remove it, or choose another folder",
                                      (std::filesystem::path(target) / name).string(), input));
        }
    }
}

} // namespace

void CopyDtaFolder(const std::string& folder, const std::string& target, ScratchFolder& scratch,
                   Copy& copy)
{
    const std::vector<std::string> names = DtaFileNames(folder);
    RefuseOthers(target, names, folder);
    for (const std::string& name : names) {
        const std::string path = (std::filesystem::path(folder) / name).string();
        CheckReadable(path);
        copy.file = name;
        ++copy.held;
        const std::string plain = PlainTextOf(path, scratch, copy);
        const std::string copied = (std::filesystem::path(target) / name).string();
        FileCopy file(plain, copied, copy);
        if (const char* const reason = file.Take()) {
            copy.LeaveOut(reason, file.Line());
            std::filesystem::remove(copied); // that of an earlier run
        } else {
            ++copy.written;
        }
        RemovePlain(plain, path);
    }
    copy.file.clear();
}

} // namespace pelgrin
