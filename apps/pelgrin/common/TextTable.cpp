#include "common/TextTable.h"

#include <algorithm>
#include <utility>

#include "common/Terminal.h"

namespace pelgrin {

namespace {

/// Characters of UTF-8: every byte but those that continue one.
std::size_t WidthOf(const std::string& text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

} // namespace

TextTable::TextTable(std::vector<Column> columns) : widths_(columns.size(), 0)
{
    std::vector<std::string> titles;
    for (Column& column : columns) {
        isNumber_.push_back(column.isNumber);
        titles.push_back(std::move(column.title));
    }
    Add(std::move(titles));
}

void TextTable::Add(std::vector<std::string> cells)
{
    cells.resize(widths_.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells[i] = OneLine(std::move(cells[i]));
        widths_[i] = std::max(widths_[i], WidthOf(cells[i]));
    }
    rows_.push_back(std::move(cells));
}

std::string TextTable::Text() const
{
    std::string text;
    for (const std::vector<std::string>& row : rows_) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string blanks(widths_[i] - WidthOf(row[i]), ' ');
            line += (i == 0 ? "" : "  ") + (isNumber_[i] ? blanks + row[i] : row[i] + blanks);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + "\n";
    }
    return text;
}

} // namespace pelgrin
