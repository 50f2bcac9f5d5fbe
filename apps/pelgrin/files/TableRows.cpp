#include "files/TableRows.h"

#include <algorithm>

#include <fmt/format.h>

#include "CStringProcess.h"
#include "common/Failure.h"

namespace pelgrin {

TableRows::TableRows(const std::string& path, Cells cells)
    : path_(path), cells_(cells),
      lines_(path, cells == Cells::Quoted ? FileLines::Mode::Binary : FileLines::Mode::Text)
{
    // With quotes the header is a line like all others, else it is read whole.
    const bool isBounded = cells == Cells::Quoted;
    lines_.Next(line_, isBounded ? FileLines::Part::Begin : FileLines::Part::Whole);
    if (!isBounded && line_.length > kLongestHeader) {
        throw Failure(
            fmt::format("{}:1: expected a header of at most {} characters", path, kLongestHeader));
    }
    Clean();
    Vorlan::CStringProcess::GetAttributesFromFirstRow(line_.begin, columns_, "\t");
    endsHere_ = isBounded && line_.length > kLongestLine;
}

std::size_t TableRows::Column(const std::string& name) const
{
    return Column(ColumnNames{name});
}

std::size_t TableRows::Column(const ColumnNames& names) const
{
    for (const std::string& name : names) {
        if (const auto column = columns_.find(name); column != columns_.end()) {
            return static_cast<std::size_t>(column->second);
        }
    }
    throw Failure(fmt::format("{}:1: expected a column named {} in the header line", path_,
                              ChoiceText(names)));
}

std::size_t TableRows::Highest(const std::vector<ColumnNames>& columns) const
{
    std::size_t highest = 0;
    for (const ColumnNames& names : columns) {
        highest = std::max(highest, Column(names));
    }
    return highest;
}

bool TableRows::Next(ResultAudit& audit)
{
    if (endsHere_) {
        audit.longLine = line_.number;
        const std::uint64_t end = line_.number;
        while (lines_.Next(line_)) {
            Clean();
            if (!line_.begin.empty()) {
                audit.Add(Unread::BehindLongLine, end);
            }
        }
        line_ = {};
        endsHere_ = false;
        return false;
    }
    if (!lines_.Next(line_)) {
        return false;
    }
    endsHere_ = line_.length > kLongestLine;
    audit.cutsRow = endsHere_;
    Clean();
    return true;
}

std::string_view TableRows::Cell(std::size_t column) const
{
    std::size_t begin = 0;
    for (; column > 0; --column) {
        begin = line_.begin.find('\t', begin);
        if (begin == std::string::npos) {
            return {};
        }
        ++begin;
    }
    return std::string_view(line_.begin).substr(begin, line_.begin.find('\t', begin) - begin);
}

bool TableRows::Has(std::size_t column) const
{
    const auto tabs = std::count(line_.begin.begin(), line_.begin.end(), '\t');
    return !line_.begin.empty() && static_cast<std::size_t>(tabs) >= column;
}

void TableRows::Clean()
{
    if (cells_ == Cells::Plain) {
        return;
    }
    std::string& text = line_.begin;
    if (!text.empty() && text.back() == '\r') {
        text.pop_back();
    }
    text.erase(std::remove(text.begin(), text.end(), '"'), text.end());
}

} // namespace pelgrin
