#include <fmt/format.h>

#include "lint/LineFlaws.h"
#include "lint/ResultLint.h"
#include "lint/TableLint.h"

namespace pelgrin {

namespace {

using Cell = TableForm::Column::Cell;

enum Column : std::size_t {
    Dataset,
    Spectrum,
    Sequence,
    Charge,
    ObsMh,
    MassShift,
    MainScore,
    HighBetter,
    ModName,
    ModPosition,
    Protein,
    Before,
    After
};

TableForm Form()
{
    TableForm form;
    form.columns = {{"Dataset Name"},
                    {"Spectrum Name"},
                    {"Sequence"},
                    {"Charge", Cell::Whole},
                    {"ObsMH", Cell::Decimal},
                    {"Mass Shift", Cell::Decimal},
                    {"Main Score", Cell::Decimal},
                    {"High Score Better"},
                    {"Identified Mod Name"},
                    {"Identified Mod Position"},
                    {"Protein Access"},
                    {"Before AA"},
                    {"After AA"}};
    form.shortRow = TableForm::ShortRow::EmptyCells;
    form.endsAtEmptyLine = true;
    form.hasStrictNumbers = true;
    return form;
}

void LintLists(const TableLint& table)
{
    const auto sizeOf = [&](Column column) { return PiecesOf(table.Cell(column), ';').size(); };
    if (sizeOf(ModName) != sizeOf(ModPosition)) {
        table.Add(Rule::ListLength,
                  fmt::format("{} names and {} positions of modifications; expected as many",
                              sizeOf(ModName), sizeOf(ModPosition)));
    }
    if (sizeOf(Protein) != sizeOf(Before) || sizeOf(Protein) != sizeOf(After)) {
        table.Add(Rule::ListLength,
                  fmt::format("{} proteins, {} residues before and {} after; expected as many",
                              sizeOf(Protein), sizeOf(Before), sizeOf(After)));
    }
}

} // namespace

void LintNative(const std::string& path, Findings& findings)
{
    const TableForm form = Form();
    TableLint table(path, form, findings);
    if (!table.ReadHeader()) {
        return;
    }
    while (table.Next()) {
        table.LintCells();
        LintLists(table);
        if (!table.Cell(Charge).empty() && table.Cell(Charge).front() == '-') {
            table.Add(Rule::NegativeCharge,
                      fmt::format("Charge: {} becomes 2^64 less that; expected a positive number",
                                  Shown(table.Cell(Charge))));
        }
        const std::string_view flag = table.Cell(HighBetter);
        if (flag != "1" && flag != "0") {
            table.Add(Rule::HighScoreBetter,
                      fmt::format("High Score Better: {}; expected 1 or 0", Shown(flag)));
        }
    }
}

} // namespace pelgrin
