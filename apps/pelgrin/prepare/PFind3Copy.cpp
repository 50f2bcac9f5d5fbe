#include "prepare/ResultCopies.h"
#include "prepare/TableCopy.h"

namespace pelgrin {

namespace {

enum Column : std::size_t { Proteins = 8, Positions, Modification };

const std::vector<WantedColumn>& Columns()
{
    static const std::vector<WantedColumn> columns = {
        {"File_Name"},
        {"Scan_No"},
        {"Sequence"},
        {"Charge"},
        {"Target/Decoy"},
        {"Final_Score"},
        {"Mass_Shift(Exp.-Calc.)"},
        {"Exp.MH+"},
        {"Proteins"},
        {"Positions"},
        {"Modification"},
    };
    return columns;
}

/// What stands behind the last separator would not be read (B-63).
bool EndWith(std::string& cell, char separator)
{
    if (cell.empty() || cell.back() == separator) {
        return false;
    }
    cell += separator;
    return true;
}

} // namespace

void CopyPFind3(const std::string& source, const std::string& target, Copy& copy)
{
    TableCopy table(source, target, Columns(), copy);
    table.CopyRows([&](TableCopy::Cells& cells, std::uint64_t line) -> const char* {
        if (cells[table.Place(Proteins)].empty()) {
            return "row_without_protein";
        }
        bool any = false;
        for (const Column column : {Proteins, Positions, Modification}) {
            any = EndWith(cells[table.Place(column)], column == Modification ? ';' : '/') || any;
        }
        copy.Change("separator_added", line, any ? 1 : 0);
        return nullptr;
    });
}

} // namespace pelgrin
