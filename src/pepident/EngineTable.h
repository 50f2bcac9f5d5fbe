// Tab-separated tables of search engines.
#ifndef VORLAN_PEPIDENT_ENGINETABLE_H
#define VORLAN_PEPIDENT_ENGINETABLE_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "util/TabTable.h"

namespace Vorlan {

/// A column that a reader needs.
struct EngineColumn {
    const char* name = nullptr;
    const char* otherName = nullptr; ///< taken when the name is not there
    const char* toldName = nullptr;  ///< in the message, when not the name
};

/// A table, row by row, its columns known by their numbers in the list given.
class EngineTable {
public:
    /// Finds the columns in the header line. The first one that is missing ends
    /// the process, told on standard output as
    /// Error:<tab>Cannot find the column "<name>" in the <file>
    EngineTable(std::string_view headerLine, const std::vector<EngineColumn>& columns,
                const char* file);

    /// False for a row that lacks the last one of the columns. The cells are
    /// views into row.
    bool Take(std::string_view row);

    std::string_view Cell(std::size_t column) const { return cells_.Cell(places_[column]); }

    /// The column was found under its other name.
    bool HasOtherName(std::size_t column) const { return hasOtherName_[column]; }

private:
    std::vector<int> places_;
    std::vector<bool> hasOtherName_;
    std::size_t needed_ = 0; ///< cells of a row
    TabRow cells_;
};

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_ENGINETABLE_H
