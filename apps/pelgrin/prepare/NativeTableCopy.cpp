#include "files/TableCells.h"
#include "prepare/ResultCopies.h"
#include "prepare/TableCopy.h"

namespace pelgrin {

namespace {

enum Column : std::size_t { Dataset, Spectrum, Sequence, Charge, ObsMh, Shift, Score, HighBetter };

const std::vector<WantedColumn>& Columns()
{
    static const std::vector<WantedColumn> columns = {
        {"Dataset Name"},
        {"Spectrum Name"},
        {"Sequence"},
        {"Charge"},
        {"ObsMH"},
        {"Mass Shift"},
        {"Main Score"},
        {"High Score Better"},
        {"Identified Mod Name", {}, true, true},
        {"Identified Mod Position", {}, true, true},
        {"Protein Access", {}, true, true},
        {"Before AA", {}, true, true},
        {"After AA", {}, true, true},
        {"Protein Start Position", {}, false, true},
    };
    return columns;
}

} // namespace

void CopyNativeTable(const std::string& source, const std::string& target, const NewName& newName,
                     Copy& copy)
{
    TableCopy table(source, target, Columns(), copy);
    table.CopyRows([&](TableCopy::Cells& cells, std::uint64_t line) -> const char* {
        if (!IsWholeNumber(cells[table.Place(Charge)])) {
            return "cell_no_number";
        }
        for (const Column column : {ObsMh, Shift, Score}) {
            if (!IsNumber(cells[table.Place(column)])) {
                return "cell_no_number";
            }
        }
        std::string& spectrum = cells[table.Place(Spectrum)];
        if (const auto name = newName(cells[table.Place(Dataset)], spectrum)) {
            if (name->empty()) {
                return "name_of_several";
            }
            spectrum = *name;
            copy.Change("spectrum_renamed", line);
        }
        return nullptr;
    });
}

} // namespace pelgrin
