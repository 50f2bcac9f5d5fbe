// Tables of modifications as texts, for the tests of their readers.
#ifndef VORLAN_TESTS_TABLETEXT_H
#define VORLAN_TESTS_TABLETEXT_H

#include <string>
#include <vector>

#include "moddb/ModificationText.h"

namespace Vorlan::test {

inline const std::vector<std::string> kTableColumns = {"id",
                                                       "full_id",
                                                       "unimod_accession",
                                                       "full_name",
                                                       "term_spec",
                                                       "origin",
                                                       "classification",
                                                       "diff_mono_mass",
                                                       "diff_average_mass",
                                                       "neutral_loss_mono_mass",
                                                       "neutral_loss_average_mass"};

/// cells, joined by tabs, and a line feed.
inline std::string TableLine(const std::vector<std::string>& cells)
{
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += (i == 0 ? "" : "\t") + cells[i];
    }
    return line + "\n";
}

inline const std::string kTableHeader = TableLine(kTableColumns);

inline const std::vector<std::string> kPhosphoCells = {
    "Phospho", "Phospho (S)",        "UniMod:21", "Phosphorylation", "Anywhere",
    "S",       "post-translational", "79.966331", "79.9799",         "97.976896",
    "97.9952"};

inline const char kPhosphoDump[] =
    "Phospho|Phospho (S)|UniMod:21|Phosphorylation|0|S|3|79.9799|79.966331|97.976896|97.9952";

/// The row of Phospho with some cells replaced.
inline std::string TableRow(const std::vector<std::pair<std::size_t, std::string>>& changes = {})
{
    std::vector<std::string> cells = kPhosphoCells;
    for (const auto& [place, text] : changes) {
        cells[place] = text;
    }
    return TableLine(cells);
}

inline const std::string kTableCalls =
    "CModificationsDBEngineCalvex::readFromSearchEngineFile calls\n";

inline std::string MissingColumn(const std::string& name)
{
    return kTableCalls + "Error:\tCannot find the column \"" + name
           + "\" in the modification data base file\n";
}

inline std::string UnexpectedTerms(int line)
{
    return kTableCalls + "Error:\tUnexpected number of terms in line " + std::to_string(line)
           + "\n";
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_TABLETEXT_H
