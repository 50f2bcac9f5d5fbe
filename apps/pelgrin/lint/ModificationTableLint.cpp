#include "lint/ModificationTableLint.h"

#include <fmt/format.h>

#include <OpenMS/CONCEPT/Exception.h>

#include "ModificationDB.h"
#include "lint/LineFlaws.h"
#include "lint/TableLint.h"

namespace pelgrin {

namespace {

using Cell = TableForm::Column::Cell;

enum Column : std::size_t { Term };

TableForm Form()
{
    TableForm form;
    form.columns = {{"term_spec"},
                    {"id"},
                    {"full_id"},
                    {"unimod_accession"},
                    {"full_name"},
                    {"origin"},
                    {"classification"},
                    {"diff_mono_mass", Cell::Decimal},
                    {"diff_average_mass", Cell::Decimal},
                    {"neutral_loss_mono_mass", Cell::Decimal},
                    {"neutral_loss_average_mass", Cell::Decimal}};
    form.shortRow = TableForm::ShortRow::Given;
    return form;
}

bool IsKnownTerm(std::string_view text)
{
    try {
        Vorlan::CResidueModification().setTermSpecificity(std::string(text));
        return true;
    } catch (const OpenMS::Exception::InvalidValue&) {
        return false;
    }
}

} // namespace

void LintModificationTable(const std::string& path, Findings& findings)
{
    const TableForm form = Form();
    TableLint table(path, form, findings);
    if (!table.ReadHeader()) {
        return;
    }
    while (table.Next()) {
        if (table.Cells() != form.columns.size()) {
            table.Add(Rule::TableFields,
                      fmt::format("{} fields; expected {}", table.Cells(), form.columns.size()));
            continue;
        }
        table.LintCells();
        if (!IsKnownTerm(table.Cell(Term))) {
            table.Add(
                Rule::TermSpecificity,
                fmt::format("term_spec: {}; expected Anywhere, Any N-term, Any C-term, Protein "
                            "N-term or Protein C-term",
                            Shown(table.Cell(Term))));
        }
    }
}

} // namespace pelgrin
