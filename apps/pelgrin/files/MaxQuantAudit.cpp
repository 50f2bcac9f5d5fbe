#include "files/MaxQuantAudit.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "CStringProcess.h"
#include "common/Failure.h"
#include "files/TableRows.h"

namespace pelgrin {

namespace {

/// Follows the reader through both files: every number of a peptide takes the
/// next row of msms.txt.
class Walk {
public:
    Walk(const ResultFiles& files, const OnRecord& onRecord)
        : files_(files), onRecord_(onRecord), matches_(files.path), peptides_(files.second)
    {
        highest_ = matches_.Highest(NeededColumns(FileKind::MaxQuantMatches));
        peptidesHighest_ = peptides_.Highest(NeededColumns(FileKind::MaxQuantPeptides));
    }

    ResultAudit Take()
    {
        const std::size_t ids = peptides_.Column("MS/MS IDs");
        while (peptides_.Next(peptideAudit_)) {
            if (!peptides_.Has(peptidesHighest_)) {
                continue;
            }
            for (const std::string& id :
                 Vorlan::CStringProcess::split(std::string(peptides_.Cell(ids)), ";")) {
                TakeId(id);
            }
        }
        while (NextMatch()) {
            audit_.Add(Unread::RowNotNamed, matches_.Number());
        }
        return audit_;
    }

private:
    /// Empty rows have no number.
    bool NextMatch()
    {
        while (matches_.Next(audit_)) {
            if (!matches_.Row().empty()) {
                return true;
            }
            audit_.Add(Unread::BlankRow, matches_.Number());
        }
        return false;
    }

    void RefuseCutRow() const
    {
        if (peptideAudit_.cutsRow) {
            throw Failure(fmt::format("{}:{}: a line of more than {} characters is cut: its "
                                      "\"MS/MS IDs\" cannot be read",
                                      files_.second, peptides_.Number(), kLongestLine));
        }
    }

    void TakeId(const std::string& id)
    {
        if (!NextMatch()) {
            // Rows behind a line that is too long are there, and counted already.
            if (++beyond_ > audit_.Of(Unread::BehindLongLine).units) {
                audit_.Add(Unread::RowMissing, peptides_.Number());
            }
            return;
        }
        if (std::strtol(id.c_str(), nullptr, 10) != number_) {
            RefuseCutRow();
            throw Failure(fmt::format(
                "{}:{}: \"MS/MS IDs\": expected {}, found \"{}\": the peptides must name the rows "
                "of {} in their order, each once, from 0",
                files_.second, peptides_.Number(), number_, id, files_.path));
        }
        ++number_;
        if (!matches_.Has(highest_)) {
            audit_.Add(Unread::ShortRow, matches_.Number());
            return;
        }
        RecordPlace place = matches_.Place();
        place.secondBegin = peptides_.Place().begin;
        place.secondEnd = peptides_.Place().end;
        audit_.AddRecord(place, onRecord_);
    }

    const ResultFiles& files_;
    const OnRecord& onRecord_;
    TableRows matches_;
    TableRows peptides_;
    std::size_t highest_ = 0;
    std::size_t peptidesHighest_ = 0;
    long number_ = 0;          ///< of the next row of msms.txt that is not empty
    std::uint64_t beyond_ = 0; ///< numbers behind the last row that is read
    ResultAudit audit_;
    ResultAudit peptideAudit_;
};

} // namespace

std::string PeptidesBeside(const std::string& path, bool mayBePacked)
{
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    for (const char* const ending : {"", ".gz", ".bz2", ".xz", ".zst"}) {
        const std::filesystem::path beside = folder / (std::string("peptides.txt") + ending);
        std::error_code ignored;
        if ((mayBePacked || *ending == '\0') && std::filesystem::exists(beside, ignored)) {
            return beside.string();
        }
    }
    return {};
}

ResultAudit AuditMaxQuant(const ResultFiles& files, const OnRecord& onRecord)
{
    return Walk(files, onRecord).Take();
}

} // namespace pelgrin
