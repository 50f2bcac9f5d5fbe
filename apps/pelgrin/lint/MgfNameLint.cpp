#include "lint/MgfNameLint.h"

#include <algorithm>
#include <array>
#include <functional>
#include <tuple>
#include <vector>

#include <fmt/format.h>

#include "common/Words.h"
#include "files/FileLines.h"
#include "files/MgfNames.h"
#include "lint/LineFlaws.h"

namespace pelgrin {

namespace {

/// The records that the index knows, in the order of the file: it looks for a line
/// that begins with 'B', and from there on for one with 'T' (B-18, B-23).
class IndexedRecords {
public:
    explicit IndexedRecords(const std::string& path) : lines_(path, FileLines::Mode::Binary) {}

    /// The next record; false at the end.
    bool Next()
    {
        begin_ = begins_ = 0;
        while (lines_.Next(line_) && line_.length <= kLongestLine) {
            const char first = line_.begin.empty() ? '\0' : line_.begin.front();
            if (first == 'B') {
                TakeBegin();
            } else if (first == 'T' && begin_ != 0) {
                return true;
            }
        }
        return false;
    }

    /// The line that begins the record; without a title that of the rest, or 0.
    std::uint64_t Begin() const { return begin_; }
    const std::string& BeginText() const { return beginText_; }
    /// Lines "BEGIN IONS" up to the title.
    std::uint64_t Begins() const { return begins_; }
    const FileLines::Line& TitleLine() const { return line_; }

private:
    void TakeBegin()
    {
        if (begin_ == 0) {
            begin_ = line_.number;
            beginText_ = line_.begin;
        }
        begins_ += BeginsWith(line_.begin, "BEGIN IONS") ? 1 : 0;
    }

    FileLines lines_;
    FileLines::Line line_;
    std::uint64_t begin_ = 0;
    std::string beginText_;
    std::uint64_t begins_ = 0;
};

/// A name of a record.
struct Entry {
    std::uint64_t hash;
    std::uint64_t record; ///< the line at which it begins
    NameKind kind;
};

/// A name that finds a later record.
struct Loss {
    std::uint64_t record;
    NameKind kind;
    std::uint64_t winner; ///< line at which the record begins that is found
    Rule rule;
};

Rule RuleOfKind(NameKind kind)
{
    switch (kind) {
    case NameKind::Title: return Rule::SharedTitle;
    case NameKind::FirstWord: return Rule::SharedFirstWord;
    case NameKind::Dotted: return Rule::SharedDottedName;
    default: return Rule::SharedScanName;
    }
}

/// What the entries of one name lose; the record that begins last has it.
void AddLosses(const Entry* begin, const Entry* end, std::vector<Loss>& losses)
{
    const std::uint64_t winner = (end - 1)->record;
    std::array<bool, kNameKinds> winnerKinds{};
    for (const Entry* entry = end; entry > begin && (entry - 1)->record == winner; --entry) {
        winnerKinds[static_cast<std::size_t>((entry - 1)->kind)] = true;
    }
    for (const Entry* entry = begin; entry < end && entry->record != winner; ++entry) {
        if (entry > begin && (entry - 1)->record == entry->record) {
            continue; // one name of two kinds
        }
        const bool isSameKind = winnerKinds[static_cast<std::size_t>(entry->kind)];
        losses.push_back({entry->record, entry->kind, winner,
                          isSameKind ? RuleOfKind(entry->kind) : Rule::SharedAcrossKinds});
    }
}

std::vector<Loss> LossesOf(std::vector<Entry>& entries)
{
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.hash, a.record, a.kind) < std::tie(b.hash, b.record, b.kind);
    });
    std::vector<Loss> losses;
    for (std::size_t i = 0, next = 0; i < entries.size(); i = next) {
        while (next < entries.size() && entries[next].hash == entries[i].hash) {
            ++next;
        }
        AddLosses(entries.data() + i, entries.data() + next, losses);
    }
    std::sort(losses.begin(), losses.end(), [](const Loss& a, const Loss& b) {
        return std::tie(a.record, a.kind) < std::tie(b.record, b.kind);
    });
    return losses;
}

class NameWalk {
public:
    NameWalk(const std::string& path, Findings& findings) : path_(path), findings_(findings) {}

    void Take()
    {
        IndexedRecords records(path_);
        while (records.Next()) {
            TakeRecord(records);
        }
        if (records.Begin() != 0) {
            findings_.Add(Rule::NoTitle, records.Begin(),
                          "no title up to the end of the file: the record has no name; expected a "
                          "line TITLE=");
        }
        TellLosses(LossesOf(entries_));
    }

private:
    void TakeRecord(const IndexedRecords& records)
    {
        const std::string& line = records.TitleLine().begin;
        const MgfNames names = NamesOf(line);
        const std::string subject = "spectrum " + Shown(names.Of(NameKind::Title));
        TakeBegins(records, subject);
        if (!BeginsWith(line, "TITLE=")) {
            findings_.Add(
                Rule::OtherTLine, records.TitleLine().number,
                fmt::format("{} is taken for the title; expected TITLE= first", Shown(line)),
                subject);
        } else if (names.Of(NameKind::Title).empty()) {
            findings_.Add(Rule::EmptyTitle, records.TitleLine().number,
                          "the title is empty; expected a name");
        }
        TakeScan(records.TitleLine().number, names, subject);
        for (std::size_t i = 0; i < kNameKinds; ++i) {
            if (names.has[i] && !names.names[i].empty()) {
                entries_.push_back({std::hash<std::string>()(names.names[i]), records.Begin(),
                                    static_cast<NameKind>(i)});
            }
        }
    }

    void TakeBegins(const IndexedRecords& records, const std::string& subject)
    {
        if (!BeginsWith(records.BeginText(), "BEGIN IONS")) {
            findings_.Add(Rule::OtherBLine, records.Begin(),
                          fmt::format("{} is taken for the begin of a record; expected BEGIN IONS",
                                      Shown(records.BeginText())),
                          subject);
        } else if (records.Begins() > 1) {
            findings_.Add(Rule::NoTitle, records.Begin(),
                          fmt::format("no title: the record stands under that of line {}, and "
                                      "{} between {} not found; expected a line TITLE=",
                                      records.TitleLine().number, records.Begins() - 1,
                                      records.Begins() > 2 ? "records are" : "record is"),
                          subject);
        }
    }

    void TakeScan(std::uint64_t line, const MgfNames& names, const std::string& subject)
    {
        if (!names.Has(NameKind::Scan)) {
            return;
        }
        const std::string& scan = names.Of(NameKind::Scan);
        if (names.scanIsCut) {
            findings_.Add(Rule::CutScan, line,
                          fmt::format("the scan name is {}, less the last digit; expected \"scan="
                                      "\" and the number in quotes",
                                      Shown(scan)),
                          subject);
        } else if (scan.empty() || scan.find_first_not_of("0123456789") != std::string::npos) {
            findings_.Add(Rule::OddScan, line,
                          fmt::format("the scan name is {}; expected a number", Shown(scan)),
                          subject);
        }
    }

    /// Goes through the file again for the names: the entries hold none.
    void TellLosses(const std::vector<Loss>& losses)
    {
        IndexedRecords records(path_);
        auto loss = losses.begin();
        while (loss != losses.end() && records.Next()) {
            const MgfNames names = NamesOf(records.TitleLine().begin);
            for (; loss != losses.end() && loss->record == records.Begin(); ++loss) {
                findings_.Add(loss->rule, loss->record,
                              fmt::format("{}, {}, finds the record at line {}; expected a name of "
                                          "its own",
                                          TextOf(loss->kind), Shown(names.Of(loss->kind)),
                                          loss->winner),
                              "spectrum " + Shown(names.Of(NameKind::Title)));
            }
        }
    }

    const std::string& path_;
    Findings& findings_;
    std::vector<Entry> entries_;
};

} // namespace

void LintMgfNames(const std::string& path, Findings& findings)
{
    NameWalk(path, findings).Take();
}

} // namespace pelgrin
