#include <algorithm>

#include <fmt/format.h>

#include "common/Words.h"
#include "lint/DatasetDots.h"
#include "lint/LineFlaws.h"
#include "lint/ResultLint.h"
#include "lint/TableLint.h"

namespace pelgrin {

namespace {

using Cell = TableForm::Column::Cell;

enum Column : std::size_t { Rank, SpectrumFile, Accessions, Modifications };

TableForm Form()
{
    TableForm form;
    form.columns = {{"Rank", Cell::Whole},       {"Spectrum File"},
                    {"Protein Accessions"},      {"Modifications"},
                    {"First Scan", Cell::Whole}, {"Sequence"},
                    {"XCorr", Cell::Decimal},    {"Deltam/z [Da]", Cell::Decimal},
                    {"MH+ [Da]", Cell::Decimal}, {"Theo. MH+ [Da]"},
                    {"Charge", Cell::Whole},     {"DeltaCn"}};
    form.shortRow = TableForm::ShortRow::EmptyCells;
    form.hasStrictNumbers = true;
    form.dropsQuotes = true;
    return form;
}

/// "M5(Oxidation)" and "N-Term(TMT6plex)" have a place; "C-Term(Amidated)" none.
bool HasPlace(std::string_view entry)
{
    const std::string_view text = WithoutBlanks(entry);
    if (text.find("N-Term") != std::string_view::npos) {
        return true;
    }
    const std::string_view place = text.substr(0, text.rfind('('));
    return place.size() > 1 && place.find_first_not_of("0123456789", 1) == std::string_view::npos;
}

void LintRow(const TableLint& table)
{
    LintDatasetDots(table, "Spectrum File", table.Cell(SpectrumFile));
    for (const std::string_view accession : PiecesOf(table.Cell(Accessions), ';')) {
        if (WithoutBlanks(accession) != accession) {
            table.Add(Rule::SequestBlank,
                      fmt::format("Protein Accessions: {}; expected no blanks", Shown(accession)));
            break;
        }
    }
    for (const std::string_view entry : PiecesOf(table.Cell(Modifications), ';')) {
        if (!HasPlace(entry)) {
            table.Add(Rule::SequestPlace,
                      fmt::format("Modifications: {}; expected a residue and its number in front "
                                  "of the name",
                                  Shown(entry)));
            break;
        }
    }
}

} // namespace

void LintSequest(const std::string& path, Findings& findings)
{
    const TableForm form = Form();
    TableLint table(path, form, findings);
    if (!table.ReadHeader()) {
        return;
    }
    while (table.Next()) {
        table.LintQuotedTabs();
        const bool isLower = ParseNumber(table.Cell(Rank)).value_or(0.0) > 1.0;
        if (!isLower) { // of the others only the rank is read
            table.LintCells();
            LintRow(table);
        }
    }
}

} // namespace pelgrin
