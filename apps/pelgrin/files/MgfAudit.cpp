#include "files/MgfAudit.h"

#include <string_view>

#include "files/FileLines.h"

namespace pelgrin {

namespace {

/// Without the blanks at its end.
std::string WithoutBlankEnd(const std::string& line)
{
    return line.substr(0, line.find_last_not_of(" \t\r") + 1);
}

/// What stands behind the first "scan=" is a number that ends the title, or that
/// FileConverter has written: "mz_rt_scan=7_run", also behind a controller. Where
/// other words stand between, engines number the spectra otherwise.
bool HasScan(std::string_view title)
{
    constexpr std::string_view kController = "controllerType=0 controllerNumber=1 ";
    const std::size_t scan = title.find("scan=");
    if (scan == std::string_view::npos || scan + 5 == title.size()) {
        return false;
    }
    const std::size_t end = title.find_first_not_of("0123456789", scan + 5);
    if (end == std::string_view::npos) {
        return true;
    }
    std::string_view front = title.substr(0, scan);
    if (front.size() > kController.size()
        && front.substr(front.size() - kController.size()) == kController) {
        front.remove_suffix(kController.size());
    }
    return end > scan + 5 && title[end] == '_' && front.back() == '_'
           && title.find_first_of(" \t", end) == std::string_view::npos;
}

/// Follows the library's index through the lines of a file.
class Walk {
public:
    explicit Walk(MgfAudit& audit) : audit_(audit) {}

    void Take(const FileLines::Line& line)
    {
        const char first = line.begin.empty() ? '\0' : line.begin.front();
        if (line.number == 1) {
            audit_.hidesFirst = line.begin.compare(0, 4,
                                                   "\xEF\xBB\xBF"
                                                   "B")
                                == 0;
        }
        if (line.length > kLongestLine && audit_.longLine == 0) {
            audit_.longLine = line.number;
        }
        if (first == 'B') {
            TakeBegin(line);
        } else if (first == 'T' && waitsForTitle_) {
            TakeTitle(line);
        } else if (first >= '0' && first <= '9') {
            hasPeaks_ = true;
        }
    }

    /// The last spectrum has nobody's peaks, and none of its own.
    void Finish() { EndSpectrum(); }

private:
    void TakeBegin(const FileLines::Line& line)
    {
        ++audit_.spectra;
        if (audit_.longLine != 0) {
            ++audit_.spectraBehindLongLine;
            return;
        }
        if (waitsForTitle_) {
            if (audit_.firstWithoutTitle == 0) {
                audit_.firstWithoutTitle = begin_;
            }
            isForeign_ = true;
        } else {
            EndSpectrum();
        }
        begin_ = line.number;
        title_.clear();
        waitsForTitle_ = true;
        hasPeaks_ = false;
    }

    void EndSpectrum()
    {
        if (title_.empty() || hasPeaks_) {
            return;
        }
        if (audit_.firstWithoutPeaks == 0) {
            audit_.firstWithoutPeaks = begin_;
        }
        audit_.titlesWithoutPeaks.push_back(title_);
    }

    void TakeTitle(const FileLines::Line& line)
    {
        if (isForeign_) {
            audit_.foreignTitles.push_back(line.begin);
        } else {
            title_ = line.begin;
            std::string title = WithoutBlankEnd(title_);
            if (HasScan(title)) {
                audit_.titlesWithScan.push_back(std::move(title));
            }
        }
        waitsForTitle_ = false;
        isForeign_ = false;
    }

    MgfAudit& audit_;
    std::uint64_t begin_ = 0; ///< line at which the spectrum begins
    std::string title_;       ///< its title line
    bool waitsForTitle_ = false;
    bool isForeign_ = false; ///< the next title names a spectrum before this one
    bool hasPeaks_ = false;
};

} // namespace

MgfAudit AuditMgf(const std::string& path, MgfIndex* index)
{
    MgfAudit audit;
    Walk walk(audit);
    FileLines lines(path, FileLines::Mode::Binary);
    FileLines::Line line;
    while (lines.Next(line)) {
        walk.Take(line);
        if (index != nullptr) {
            index->Take(line);
        }
    }
    walk.Finish();
    if (index != nullptr) {
        index->Finish();
    }
    return audit;
}

} // namespace pelgrin
