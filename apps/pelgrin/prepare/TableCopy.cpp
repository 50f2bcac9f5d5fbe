#include "prepare/TableCopy.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/PeakLine.h"
#include "files/TableCells.h"

namespace pelgrin {

namespace {

/// Quotes around nothing are nothing.
bool IsBlank(std::string_view line)
{
    return line.find_first_not_of(" \t\r\"") == std::string_view::npos;
}

bool Unquote(TableCopy::Cells& cells)
{
    bool any = false;
    for (std::string& cell : cells) {
        std::string plain = WithoutQuotes(cell);
        any = any || plain != cell;
        cell = std::move(plain);
    }
    return any;
}

} // namespace

TableCopy::Cells SplitCells(std::string_view line, char separator)
{
    TableCopy::Cells cells;
    for (std::size_t tab = line.find(separator); tab != std::string_view::npos;
         tab = line.find(separator)) {
        cells.emplace_back(line.substr(0, tab));
        line.remove_prefix(tab + 1);
    }
    cells.emplace_back(line);
    return cells;
}

std::string JoinCells(const TableCopy::Cells& cells)
{
    return fmt::format("{}", fmt::join(cells, "\t"));
}

void RefuseMissingColumn(const Copy& copy, const std::string& name)
{
    throw Failure(
        fmt::format("{}:1: expected a column named \"{}\" in the header line", copy.input, name));
}

std::string WithoutQuotes(const std::string& cell)
{
    std::string plain = cell;
    while (plain.size() > 1 && plain.front() == '"' && plain.back() == '"') {
        plain = plain.substr(1, plain.size() - 2);
        for (std::size_t pair = plain.find("\"\""); pair != std::string::npos;
             pair = plain.find("\"\"", pair + 1)) {
            plain.erase(pair, 1);
        }
    }
    return plain;
}

TableCopy::TableCopy(const std::string& source, const std::string& target,
                     const std::vector<WantedColumn>& wanted, Copy& copy, Header kind)
    : source_(source), copy_(copy), lines_(source, FileLines::Mode::Text), output_(target)
{
    const bool isBounded = kind == Header::Bounded;
    lines_.Next(line_, isBounded ? FileLines::Part::Begin : FileLines::Part::Whole);
    longestHeader_ = isBounded ? kLongestLine : kLongestHeader;
    CheckHeader(line_.length);
    header_ = SplitCells(WithoutReturns(line_.begin));
    copy_.Change("quotes_dropped", 1, Unquote(header_) ? 1 : 0);
    RenameColumns(wanted);
    const std::string header = JoinCells(header_);
    CheckHeader(header.size());
    output_.Line(header);
}

void TableCopy::CheckHeader(std::uint64_t length) const
{
    if (length > longestHeader_) {
        throw Failure(fmt::format("{}:1: expected a header of at most {} characters", copy_.input,
                                  longestHeader_));
    }
}

void TableCopy::RenameColumns(const std::vector<WantedColumn>& wanted)
{
    const auto find = [this](const std::string& name, bool isExact) {
        const auto is = [&](const std::string& cell) {
            return isExact ? cell == name : Lower(WithoutBlanks(cell)) == Lower(name);
        };
        const auto hit = std::find_if(header_.begin(), header_.end(), is);
        return hit == header_.end() ? kNone : static_cast<std::size_t>(hit - header_.begin());
    };
    for (const WantedColumn& column : wanted) {
        std::size_t place = find(column.name, true);
        if (place == kNone) {
            place = find(column.name, false);
        }
        for (std::size_t i = 0; place == kNone && i < column.others.size(); ++i) {
            place = find(column.others[i], false);
        }
        if (place == kNone && column.isRequired) {
            RefuseMissingColumn(copy_, column.name);
        }
        places_.push_back(place);
        if (place == kNone) {
            continue;
        }
        copy_.Change("column_spelling", 1, header_[place] == column.name ? 0 : 1);
        header_[place] = column.name;
        needed_ = column.mayBeCut ? needed_ : std::max(needed_, place + 1);
    }
}

void TableCopy::CopyRows(const OnRow& onRow)
{
    while (lines_.Next(line_)) {
        hasNul_ = HasNul(line_);
        line_.begin.resize(WithoutReturns(line_.begin).size());
        if (line_.isPadding || (!hasNul_ && line_.length <= kLongestLine && IsBlank(line_.begin))) {
            copy_.Change("blank_row", line_.number);
        } else {
            TakeRow(onRow);
        }
    }
    output_.Finish();
}

void TableCopy::TakeRow(const OnRow& onRow)
{
    ++copy_.held;
    if (line_.length > kLongestLine) {
        copy_.LeaveOut("long_line", line_.number);
        return;
    }
    if (hasNul_) {
        copy_.LeaveOut("nul_byte", line_.number);
        return;
    }
    Cells cells = SplitCells(line_.begin);
    if (cells.size() > header_.size() && HasQuotedTab(line_.begin)) {
        copy_.LeaveOut("quoted_tab", line_.number);
        return;
    }
    if (cells.size() < needed_) {
        copy_.LeaveOut("short_row", line_.number);
        return;
    }
    const bool hadQuotes = Unquote(cells);
    if (const char* const reason = onRow(cells, line_.number)) {
        copy_.LeaveOut(reason, line_.number);
        return;
    }
    const std::string row = JoinCells(cells);
    if (row.size() > kLongestLine) {
        copy_.LeaveOut("long_line", line_.number);
        return;
    }
    copy_.Change("quotes_dropped", line_.number, hadQuotes ? 1 : 0);
    output_.Line(row);
    ++copy_.written;
}

} // namespace pelgrin
