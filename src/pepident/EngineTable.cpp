#include "pepident/EngineTable.h"

#include <algorithm>
#include <string>

#include "util/Console.h"

namespace Vorlan {

EngineTable::EngineTable(std::string_view headerLine, const std::vector<EngineColumn>& columns,
                         const char* file)
{
    const TabHeader header(headerLine);
    for (const EngineColumn& column : columns) {
        int place = header.Find(column.name);
        const bool takesOther = place == TabHeader::kMissing && column.otherName != nullptr;
        if (takesOther) {
            place = header.Find(column.otherName);
        }
        if (place == TabHeader::kMissing) {
            const std::string told = column.toldName == nullptr ? column.name : column.toldName;
            // Deliberate: B-66
            console::PrintAndExit(console::Stream::Out, "Error:\tCannot find the column \"" + told
                                                            + "\" in the " + file + "\n");
        }
        places_.push_back(place);
        hasOtherName_.push_back(takesOther);
        needed_ = std::max(needed_, static_cast<std::size_t>(place) + 1);
    }
}

bool EngineTable::Take(std::string_view row)
{
    cells_.Split(row, '\t');
    return cells_.Size() >= needed_;
}

} // namespace Vorlan
