#include <algorithm>
#include <map>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/MaxQuantAudit.h"
#include "prepare/ResultCopies.h"
#include "prepare/TableCopy.h"
#include "prepare/TextOutput.h"

namespace pelgrin {

namespace {

enum MatchColumn : std::size_t { Sequence = 1, Proteins = 8 };

const std::vector<WantedColumn>& MatchColumns()
{
    static const std::vector<WantedColumn> columns = {
        {"Raw file"}, {"Sequence"},       {"Scan number"},      {"Charge"},
        {"Reverse"},  {"Score"},          {"Mass error [ppm]"}, {"m/z"},
        {"Proteins"}, {"Retention time"}, {"Modifications"},    {"Modified sequence"},
    };
    return columns;
}

/// What a peptide has in peptides.txt.
struct Peptide {
    std::string before;
    std::string after;
    std::string proteins;
    bool isOpen = false; ///< another row says otherwise

    bool IsAs(const Peptide& other) const
    {
        return before == other.before && after == other.after && proteins == other.proteins;
    }
};
using Peptides = std::map<std::string, Peptide>; ///< by sequence

/// The place of a column, in any letter case. Throws Failure.
std::size_t PlaceOf(const TableCopy::Cells& header, const char* name, const std::string& path)
{
    for (std::size_t i = 0; i < header.size(); ++i) {
        if (Lower(header[i]) == Lower(name)) {
            return i;
        }
    }
    throw Failure(
        fmt::format("{}:1: expected a column named \"{}\" in the header line", path, name));
}

/// Of a line that is too long the beginning counts: the columns wanted here stand
/// before the lists of numbers that make it long.
Peptides ReadPeptides(const std::string& path)
{
    Peptides peptides;
    if (path.empty()) {
        return peptides;
    }
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    lines.Next(line, FileLines::Part::Whole);
    const TableCopy::Cells header = SplitCells(line.begin);
    const std::size_t sequence = PlaceOf(header, "Sequence", path);
    const std::size_t before = PlaceOf(header, "Amino acid before", path);
    const std::size_t after = PlaceOf(header, "Amino acid after", path);
    const std::size_t proteins = PlaceOf(header, "Proteins", path);
    while (lines.Next(line)) {
        const TableCopy::Cells cells = SplitCells(line.begin);
        if (cells.size() > std::max({sequence, before, after, proteins})) {
            const Peptide peptide{cells[before], cells[after], cells[proteins]};
            Peptide& known = peptides.emplace(cells[sequence], peptide).first->second;
            known.isOpen = known.isOpen || !known.IsAs(peptide);
        }
    }
    return peptides;
}

/// peptides.txt names the rows of msms.txt in their order already.
bool IsInOrder(const std::string& source, const std::string& peptides)
{
    if (peptides.empty()) {
        return false;
    }
    try {
        const ResultAudit audit = AuditMaxQuant({source, peptides}, {});
        return audit.Of(Unread::RowNotNamed).units + audit.Of(Unread::RowMissing).units == 0;
    } catch (const Failure&) {
        return false; // one that the library would end the process for
    }
}

/// Writes a row of peptides.txt for rows of one peptide that follow each other.
class PeptideRows {
public:
    explicit PeptideRows(const std::string& target) : output_(target)
    {
        output_.Line("Sequence\tAmino acid before\tAmino acid after\tProteins\tMS/MS IDs");
    }

    void Add(const std::string& sequence, const Peptide& peptide)
    {
        constexpr std::size_t kMostIds = 1000; // a line has an end
        const std::string row = sequence + "\t" + peptide.before + "\t" + peptide.after + "\t"
                                + peptide.proteins + "\t";
        if (row != row_ || idsInRow_ == kMostIds) {
            End();
            row_ = row;
        }
        ids_ += (ids_.empty() ? "" : ";") + std::to_string(number_++);
        ++idsInRow_;
    }

    void Finish()
    {
        End();
        output_.Finish();
    }

private:
    void End()
    {
        if (idsInRow_ > 0) {
            output_.Line(row_ + ids_);
        }
        ids_.clear();
        idsInRow_ = 0;
    }

    TextOutput output_;
    std::string row_; ///< all of it but the numbers
    std::string ids_;
    std::size_t idsInRow_ = 0;
    std::uint64_t number_ = 0; ///< of the next row of msms.txt
};

} // namespace

void CopyMaxQuant(const std::string& source, const std::string& peptides, const std::string& target,
                  const std::string& peptidesTarget, Copy& copy)
{
    const Peptides known = ReadPeptides(peptides);
    const bool isInOrder = IsInOrder(source, peptides);
    TableCopy table(source, target, MatchColumns(), copy);
    PeptideRows rows(peptidesTarget);
    table.CopyRows([&](TableCopy::Cells& cells, std::uint64_t line) -> const char* {
        const std::string& sequence = cells[table.Place(Sequence)];
        const auto peptide = known.find(sequence);
        const bool isKnown = peptide != known.end() && !peptide->second.isOpen;
        rows.Add(sequence,
                 isKnown ? peptide->second : Peptide{"", "", cells[table.Place(Proteins)]});
        copy.Change("peptides_made", line, isInOrder ? 0 : 1);
        return nullptr;
    });
    rows.Finish();
}

} // namespace pelgrin
