#include "inspect/MgfFacts.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "common/Words.h"
#include "files/FileLines.h"

namespace pelgrin {

namespace {

/// The same on every machine (FNV-1a).
std::uint64_t HashOf(std::string_view text)
{
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    return hash;
}

/// "PEPMASS" of "PEPMASS=500"; empty for other lines.
std::string KeyOfLine(const std::string& line)
{
    constexpr std::size_t kLongest = 40;
    const std::size_t sign = line.find('=');
    const bool isKey =
        sign != std::string::npos && sign > 0 && sign <= kLongest && line[0] >= 'A'
        && line[0] <= 'Z'
        && std::all_of(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(sign), [](char c) {
               return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
           });
    return isKey ? line.substr(0, sign) : std::string();
}

/// The names of the library's index: of the first title line behind each line that
/// begins a record, up to a line that is too long.
class Names {
public:
    explicit Names(MgfFacts& mgf) : mgf_(mgf) {}

    void Take(const FileLines::Line& line)
    {
        const char first = line.begin.empty() ? '\0' : line.begin.front();
        isOver_ = isOver_ || line.length > kLongestLine;
        if (isOver_) {
            return;
        }
        if (first == 'B') {
            waitsForTitle_ = true;
            ++record_;
        } else if (first == 'T' && waitsForTitle_) {
            waitsForTitle_ = false;
            Enter(NamesOf(line.begin));
        }
    }

    void Finish()
    {
        std::sort(entered_.begin(), entered_.end());
        entered_.erase(std::unique(entered_.begin(), entered_.end()), entered_.end());
        for (std::size_t i = 0; i < entered_.size();) {
            std::size_t next = i + 1;
            while (next < entered_.size() && entered_[next].first == entered_[i].first) {
                ++next;
            }
            ++mgf_.differentNames;
            mgf_.sharedNames += next - i > 1 ? 1 : 0;
            i = next;
        }
    }

private:
    void Enter(const MgfNames& names)
    {
        for (std::size_t kind = 0; kind < kNameKinds; ++kind) {
            if (names.has[kind]) {
                ++mgf_.names[kind];
                entered_.emplace_back(HashOf(names.names[kind]), record_);
            }
        }
        mgf_.cutScanNames += names.scanIsCut ? 1 : 0;
    }

    MgfFacts& mgf_;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> entered_; ///< hash and record
    std::uint64_t record_ = 0;
    bool waitsForTitle_ = false;
    bool isOver_ = false;
};

/// Counts what people see in the file: a byte order mark hides nothing.
class Contents {
public:
    explicit Contents(MgfFacts& mgf) : mgf_(mgf) {}

    void Take(const FileLines::Line& line)
    {
        constexpr std::string_view kMark = "\xEF\xBB\xBF";
        const bool hasMark = line.number == 1 && BeginsWith(line.begin, kMark);
        TakeText(hasMark ? line.begin.substr(kMark.size()) : line.begin);
    }

private:
    void TakeText(const std::string& text)
    {
        if (BeginsWith(text, "BEGIN IONS")) {
            ++mgf_.records;
        } else if (mgf_.records > 0 && !text.empty() && text[0] >= '0' && text[0] <= '9') {
            ++mgf_.peakLines;
        } else if (const std::string key = KeyOfLine(text); !key.empty()) {
            (mgf_.records == 0 ? mgf_.fileKeys : mgf_.recordKeys).Add(key);
            if (key == "TITLE" && mgf_.records > 0) {
                ++mgf_.titles[static_cast<std::size_t>(FormOf(text.substr(6)))];
            }
        }
    }

    MgfFacts& mgf_;
};

/// The forms that titles have, the most frequent one first.
std::vector<Counted> TitleCounts(const MgfFacts& mgf)
{
    std::vector<Counted> counts;
    std::uint64_t all = 0;
    for (const std::uint64_t count : mgf.titles) {
        all += count;
    }
    for (std::size_t i = 0; i < kTitleForms; ++i) {
        const auto form = static_cast<TitleForm>(i);
        if (mgf.titles[i] > 0) {
            const std::string share =
                mgf.titles[i] < all ? fmt::format(" ({})", ShareText(mgf.titles[i], all)) : "";
            counts.push_back({KeyOf(form), TextOf(form) + share, mgf.titles[i], std::nullopt});
        }
    }
    std::stable_sort(counts.begin(), counts.end(),
                     [](const Counted& a, const Counted& b) { return a.count > b.count; });
    return counts;
}

std::vector<Counted> NameCounts(const MgfFacts& mgf)
{
    std::vector<Counted> counts;
    for (std::size_t i = 0; i < kNameKinds; ++i) {
        const auto kind = static_cast<NameKind>(i);
        counts.push_back({KeyOf(kind), fmt::format("records under {}", TextOf(kind)), mgf.names[i],
                          std::nullopt});
    }
    return counts;
}

} // namespace

MgfFacts MgfFactsOf(const std::string& path)
{
    MgfFacts mgf;
    Names names(mgf);
    Contents contents(mgf);
    FileLines lines(path, FileLines::Mode::Binary); // as the library reads it
    FileLines::Line line;
    while (lines.Next(line)) {
        names.Take(line);
        contents.Take(line);
    }
    names.Finish();
    return mgf;
}

void Tell(const MgfFacts& mgf, Facts& facts)
{
    facts.push_back({"records", "Records", mgf.records});
    facts.push_back({"peak_lines", "Peaks", mgf.peakLines});
    facts.push_back({"titles", "Titles", TitleCounts(mgf)});
    facts.push_back({"file_keys", "File keys", mgf.fileKeys.Counts()});
    facts.push_back({"record_keys", "Record keys", mgf.recordKeys.Counts()});
    facts.push_back({"names", "", NameCounts(mgf)});
    facts.push_back({"different_names", "", mgf.differentNames});
    facts.push_back({"shared_names", "", mgf.sharedNames});
    facts.push_back({"cut_scan_names", "", mgf.cutScanNames});
    std::vector<Counted> names = NameCounts(mgf);
    names.push_back({"", "different names", mgf.differentNames, std::nullopt});
    if (mgf.sharedNames > 0) {
        names.push_back({"", "names of more than one record", mgf.sharedNames, std::nullopt});
    }
    if (mgf.cutScanNames > 0) {
        names.push_back(
            {"", "scan names that lost their last digit (B-13)", mgf.cutScanNames, std::nullopt});
    }
    facts.push_back({"", "Names", names});
}

} // namespace pelgrin
