#include "util/TabTable.h"

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
    cells_.clear();
    if (row.empty()) {
        return;
    }
    std::size_t begin = 0;
    for (std::size_t hit = row.find(separator); hit != std::string_view::npos;
         hit = row.find(separator, begin)) {
        cells_.push_back(row.substr(begin, hit - begin));
        begin = hit + 1;
    }
    cells_.push_back(row.substr(begin));
}

std::string_view TabRow::Cell(int i) const
{
    const auto place = static_cast<std::size_t>(i);
    return i >= 0 && place < cells_.size() ? cells_[place] : std::string_view();
}

} // namespace Vorlan
