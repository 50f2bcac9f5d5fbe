#include <algorithm>

#include <fmt/format.h>

#include "lint/LineFlaws.h"
#include "lint/ResultLint.h"
#include "lint/TableLint.h"

namespace pelgrin {

namespace {

using Cell = TableForm::Column::Cell;

enum Column : std::size_t { FileName, Proteins, Modification, Positions };

TableForm Form()
{
    TableForm form;
    form.columns = {{"File_Name"},
                    {"Proteins"},
                    {"Modification"},
                    {"Positions"},
                    {"Sequence"},
                    {"Scan_No", Cell::Whole},
                    {"Charge", Cell::Whole},
                    {"Target/Decoy"},
                    {"Final_Score", Cell::Decimal},
                    {"Mass_Shift(Exp.-Calc.)", Cell::Decimal},
                    {"Exp.MH+", Cell::Decimal}};
    return form;
}

/// What stands behind the last separator is never read.
void LintLastEntry(const TableLint& table, const char* name, std::string_view cell, char separator)
{
    const std::string_view rest = cell.substr(cell.rfind(separator) + 1); // npos + 1 is 0
    if (!rest.empty()) {
        table.Add(Rule::PFind3Separator,
                  fmt::format("{}: {} is not read; expected \"{}\" behind it", name, Shown(rest),
                              separator));
    }
}

void LintRow(const TableLint& table)
{
    const std::string_view proteins = table.Cell(Proteins);
    if (proteins.find('/') == std::string_view::npos) {
        table.Add(
            Rule::PFind3NoProtein,
            fmt::format("Proteins: {}; expected names that each end in \"/\"", Shown(proteins)));
    } else {
        LintLastEntry(table, "Proteins", proteins, '/');
    }
    LintLastEntry(table, "Modification", table.Cell(Modification), ';');
    const auto entries = std::count(proteins.begin(), proteins.end(), '/');
    const std::string_view positions = table.Cell(Positions);
    if (entries != std::count(positions.begin(), positions.end(), '/')) {
        table.Add(Rule::ListLength,
                  fmt::format("Positions: {} for {} proteins; expected one for each",
                              Shown(positions), entries));
    }
    const std::string_view name = table.Cell(FileName);
    if (std::count(name.begin(), name.end(), '.') < 5) {
        table.Add(Rule::PFind3Name, fmt::format("File_Name: {}; expected a name such as "
                                                "run.1405.1405.2.0.dta",
                                                Shown(name)));
    }
}

} // namespace

void LintPFind3(const std::string& path, Findings& findings)
{
    const TableForm form = Form();
    TableLint table(path, form, findings);
    if (!table.ReadHeader()) {
        return;
    }
    while (table.Next()) {
        table.LintCells();
        LintRow(table);
    }
}

} // namespace pelgrin
