#include <algorithm>

#include <fmt/format.h>

#include "common/Words.h"
#include "files/TableCells.h"
#include "prepare/ResultCopies.h"
#include "prepare/TableCopy.h"

namespace pelgrin {

namespace {

enum Column : std::size_t {
    Rank,
    SpectrumFile,
    FirstScan,
    Sequence,
    XCorr,
    DeltaMz,
    Mh,
    TheoreticalMh,
    Charge,
    Accessions,
    Modifications,
    DeltaCn
};

/// The names without brackets are those of exports for R.
const std::vector<WantedColumn>& Columns()
{
    static const std::vector<WantedColumn> columns = {
        {"Rank"},
        {"Spectrum File"},
        {"First Scan"},
        {"Sequence"},
        {"XCorr"},
        {"Deltam/z [Da]", {"Delta mz in Da", "Delta m/z [Da]", "Deltamz in Da"}},
        {"MH+ [Da]", {"MHplus in Da"}},
        {"Theo. MH+ [Da]", {"Theo MHplus in Da", "TheoMHplus in Da"}},
        {"Charge"},
        {"Protein Accessions"},
        {"Modifications"},
        {"DeltaCn", {"Delta Cn"}},
    };
    return columns;
}

/// The entries of a cell, without the blanks around them and without empty ones.
TableCopy::Cells Entries(const std::string& cell)
{
    TableCopy::Cells entries;
    for (const std::string& entry : SplitCells(cell, ';')) {
        const std::string_view text = WithoutBlanks(entry);
        if (!text.empty()) {
            entries.emplace_back(text);
        }
    }
    return entries;
}

/// "C-Term(Amidated)" has no number, which ends the reading (B-67): the position
/// behind the last residue is that of the terminus.
std::string WithNumber(const std::string& modification, std::size_t length)
{
    constexpr std::string_view kTerm = "C-Term(";
    return modification.compare(0, kTerm.size(), kTerm) == 0
               ? fmt::format("C{}{}", length + 1, modification.substr(kTerm.size() - 1))
               : modification;
}

bool HasNumber(const std::string& modification)
{
    const std::size_t open = modification.rfind('(');
    return modification.find("N-Term") != std::string::npos
           || (open != std::string::npos && open > 1
               && IsWholeNumber(modification.substr(1, open - 1)));
}

bool HasNumbers(const TableCopy& table, const TableCopy::Cells& cells)
{
    const auto is = [&](bool (*check)(std::string_view), std::initializer_list<Column> columns) {
        return std::all_of(columns.begin(), columns.end(),
                           [&](Column column) { return check(cells[table.Place(column)]); });
    };
    return is(IsWholeNumber, {Rank, FirstScan, Charge}) && is(IsNumber, {XCorr, DeltaMz, Mh});
}

} // namespace

void CopySequest(const std::string& source, const std::string& target, Copy& copy)
{
    TableCopy table(source, target, Columns(), copy, TableCopy::Header::Bounded);
    table.CopyRows([&](TableCopy::Cells& cells, std::uint64_t line) -> const char* {
        for (std::string& cell : cells) {
            cell.erase(std::remove(cell.begin(), cell.end(), '"'), cell.end());
        }
        if (!HasNumbers(table, cells)) {
            return "cell_no_number";
        }
        std::string& accessions = cells[table.Place(Accessions)];
        const std::string plain = fmt::format("{}", fmt::join(Entries(accessions), ";"));
        copy.Change("accession_blank", line, plain == accessions ? 0 : 1);
        accessions = plain;
        std::string& cell = cells[table.Place(Modifications)];
        TableCopy::Cells modifications = Entries(cell);
        for (std::string& modification : modifications) {
            modification = WithNumber(modification, cells[table.Place(Sequence)].size());
            if (!HasNumber(modification)) {
                return "cell_no_number";
            }
        }
        const std::string readable = fmt::format("{}", fmt::join(modifications, "; "));
        copy.Change("modification_form", line, readable == cell ? 0 : 1);
        cell = readable;
        return nullptr;
    });
}

} // namespace pelgrin
