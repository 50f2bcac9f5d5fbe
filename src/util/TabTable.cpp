#include "util/TabTable.h"

#include <algorithm>

#include "CStringProcess.h"

namespace Vorlan {

TabHeader::TabHeader(std::string_view row)
{
    CStringProcess::GetAttributesFromFirstRow(std::string(row), columns_, "\t");
}

int TabHeader::Find(const std::string& name) const
{
    const auto column = columns_.find(name);
    return column == columns_.end() ? kMissing : column->second;
}

void TabRow::Split(std::string_view row, char separator)
{
    row_ = row;
    size_ = 0;
    if (row.empty()) {
        return;
    }
    ends_.resize(std::max(ends_.size(), row.size() + 1));
    std::size_t* const ends = ends_.data();
    std::size_t separators = 0;
    // Nothing here branches on where a cell ends, which cannot be foreseen: every
    // place is written down, and the next one over it unless it holds a separator.
    for (std::size_t place = 0; place < row.size(); ++place) {
        ends[separators] = place;
        separators += row[place] == separator ? 1 : 0;
    }
    ends[separators] = row.size();
    size_ = separators + 1;
}

} // namespace Vorlan
