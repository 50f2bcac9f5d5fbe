#include "files/PFindAudit.h"

#include <cstdlib>
#include <cstring>
#include <optional>

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/FileLines.h"
#include "files/TableRows.h"

namespace pelgrin {

ResultAudit AuditPFind3(const std::string& path, const OnRecord& onRecord)
{
    ResultAudit audit;
    TableRows rows(path);
    // The library ends the process for the first one that is missing.
    const std::size_t highest = rows.Highest(NeededColumns(FileKind::PFind3));
    const std::size_t proteins = rows.Column("Proteins");
    while (rows.Next(audit)) {
        const std::string_view cell = rows.Cell(proteins);
        if (rows.Row().empty()) {
            audit.Add(Unread::BlankRow, rows.Number());
        } else if (!rows.Has(highest)) {
            audit.Add(Unread::ShortRow, rows.Number());
        } else if (cell.find('/')
                   == std::string_view::npos) { // what is behind the last is not read
            audit.Add(Unread::RowWithoutProtein, rows.Number());
        } else {
            audit.AddRecord(rows.Place(), onRecord);
        }
    }
    return audit;
}

namespace {

/// Follows the reader, which takes the lines of a section by their order.
class Walk {
public:
    Walk(const std::string& path, const OnRecord& onRecord)
        : path_(path), lines_(path, FileLines::Mode::Text), onRecord_(onRecord)
    {
    }

    ResultAudit Take()
    {
        while (Next() && !Begins("[Search]")) { // sections before it are lost
        }
        if (!Begins("[Search]")) {
            throw Failure(fmt::format("{}: expected a line \"[Search]\"", path_));
        }
        Next(); // the input path
        while (Next(Found::Section)) {
            if (Begins(kSection)) {
                TakeSection();
            }
        }
        EndSection(end_);
        return audit_;
    }

private:
    static constexpr const char* kSection = "[Spectrum";
    /// Where a section may begin, and where its first line is taken for another.
    enum class Found { Section, OtherLine };

    /// The next line; an empty one and false at the end.
    bool Next(Found found = Found::OtherLine)
    {
        if (line_.length > kLongestLine) {
            EndBehindLongLine();
        }
        if (audit_.longLine != 0 || !lines_.Next(line_)) {
            line_ = {};
            return false;
        }
        end_ = line_.end;
        if (Begins(kSection)) {
            EndSection(line_.offset);
        }
        if (found == Found::OtherLine && Begins(kSection)) {
            audit_.Add(Unread::OtherLayout, line_.number);
        }
        return true;
    }

    void Skip(int lines)
    {
        for (; lines > 0; --lines) {
            Next();
        }
    }

    void EndBehindLongLine()
    {
        audit_.longLine = line_.number;
        while (lines_.Next(line_)) {
            if (Begins(kSection)) {
                audit_.Add(Unread::BehindLongLine, audit_.longLine);
            }
        }
    }

    bool Begins(const char* front) const { return line_.begin.rfind(front, 0) == 0; }

    /// The number behind a key; 0 when the line has another one.
    long NumberOf(const char* key) const
    {
        return Begins(key) ? std::strtol(line_.begin.c_str() + std::strlen(key), nullptr, 10) : 0;
    }

    void TakeSection()
    {
        const RecordPlace section{line_.number, line_.offset, 0, 0, 0};
        Skip(7);
        if (!Begins("ValidCandidate=")) {
            audit_.Add(Unread::OtherLayout, section.line);
        } else if (NumberOf("ValidCandidate=") <= 0) {
            audit_.Add(Unread::WithoutCandidate, section.line);
        } else {
            TakeCandidate(section);
        }
    }

    void TakeCandidate(const RecordPlace& section)
    {
        Skip(6);
        if (!Begins("NO1_SQ=")) {
            audit_.Add(Unread::OtherLayout, section.line);
            return;
        }
        record_ = section;
        Skip(2);
        Skip(NumberOf("NO1_Proteins=") > 0 ? 4 : 1);
        Skip(NumberOf("NO1_Modify_Pos=") > 0 ? 1 : 0);
    }

    /// Tells of a record when it is known where its section ends.
    void EndSection(std::uint64_t end)
    {
        if (record_) {
            record_->end = end;
            audit_.AddRecord(*record_, onRecord_);
            record_.reset();
        }
    }

    std::string path_;
    FileLines lines_;
    FileLines::Line line_;
    std::uint64_t end_ = 0; ///< of the line before
    std::optional<RecordPlace> record_;
    const OnRecord& onRecord_;
    ResultAudit audit_;
};

} // namespace

ResultAudit AuditPFind28(const std::string& path, const OnRecord& onRecord)
{
    return Walk(path, onRecord).Take();
}

} // namespace pelgrin
