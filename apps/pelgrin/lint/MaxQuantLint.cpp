#include <cstdlib>
#include <limits>
#include <optional>

#include <fmt/format.h>

#include "lint/DatasetDots.h"
#include "lint/LineFlaws.h"
#include "lint/ResultLint.h"
#include "lint/TableLint.h"

namespace pelgrin {

namespace {

using Cell = TableForm::Column::Cell;

enum MatchColumn : std::size_t { RawFile, Reverse };

TableForm MatchForm()
{
    TableForm form;
    form.columns = {{"Raw file"},
                    {"Reverse"},
                    {"Sequence"},
                    {"Scan number", Cell::Whole},
                    {"Charge", Cell::Whole},
                    {"Score", Cell::Decimal},
                    {"Mass Error [ppm]", Cell::Decimal, "Mass error [ppm]"},
                    {"m/z", Cell::Decimal},
                    {"Proteins"},
                    {"Retention time", Cell::Decimal},
                    {"Modifications"},
                    {"Modified sequence"}};
    return form;
}

enum PeptideColumn : std::size_t { Ids };

TableForm PeptideForm()
{
    TableForm form;
    form.columns = {{"MS/MS IDs"}, {"Amino acid before"}, {"Amino acid after"}, {"Proteins"}};
    return form;
}

/// As the library reads an ID: what is no number is 0.
long NumberOf(std::string_view text)
{
    return std::strtol(std::string(text).c_str(), nullptr, 10);
}

/// The IDs must count the rows of msms.txt; rows beyond them are not read. How
/// many rows there are is known when msms.txt was read before.
void LintPeptides(const std::string& path, std::optional<std::uint64_t> rows, Findings& findings)
{
    const TableForm form = PeptideForm();
    TableLint table(path, form, findings);
    if (!table.ReadHeader()) {
        return;
    }
    std::uint64_t number = 0;
    const std::uint64_t end = rows.value_or(std::numeric_limits<std::uint64_t>::max());
    while (table.Next()) {
        for (const std::string_view id : PiecesOf(table.Cell(Ids), ';')) {
            if (number < end && NumberOf(id) != static_cast<long>(number)) {
                table.Add(Rule::MaxQuantIds,
                          fmt::format("MS/MS IDs: {}; expected {}, the next row of msms.txt",
                                      Shown(id), number));
                return; // the process ends here
            }
            if (number == end) {
                table.Add(Rule::MaxQuantRows,
                          fmt::format("MS/MS IDs: {}; msms.txt has {} rows", Shown(id), end));
            }
            ++number;
        }
    }
    if (rows && number < *rows) {
        findings.Add(Rule::MaxQuantRows, 0,
                     fmt::format("{} of {} rows of msms.txt are not named; expected all",
                                 *rows - number, *rows));
    }
}

} // namespace

void LintMaxQuant(const std::string& path, const SecondFile& peptides, Findings& findings)
{
    const TableForm form = MatchForm();
    TableLint table(path, form, findings);
    const bool isRead = table.ReadHeader();
    while (isRead && table.Next()) {
        table.LintCells();
        LintDatasetDots(table, "Raw file", table.Cell(RawFile));
        if (!table.Cell(Reverse).empty()) {
            table.Add(Rule::MaxQuantDecoy, "Reverse: the match has no protein but DECOY");
        }
    }
    if (peptides.plain.empty()) {
        findings.Add(Rule::MaxQuantNoPeptides, 0,
                     "expected the file peptides.txt of the same search beside it");
        return;
    }
    findings.SetSecond(peptides.given);
    findings.SetPath(peptides.given);
    LintPeptides(peptides.plain, isRead ? std::optional(table.Rows()) : std::nullopt, findings);
    findings.SetPath("");
}

void LintMaxQuantPeptides(const std::string& path, Findings& findings)
{
    LintPeptides(path, std::nullopt, findings);
}

} // namespace pelgrin
