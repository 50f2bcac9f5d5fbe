#include "lint/TableLint.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Words.h"
#include "files/TableCells.h"
#include "lint/LineFlaws.h"

namespace pelgrin {

namespace {

using Column = TableForm::Column;

/// The name of a column as people read it.
std::string Normal(std::string_view name)
{
    std::string text(name);
    text.erase(std::remove(text.begin(), text.end(), '"'), text.end());
    return Lower(WithoutBlanks(text));
}

/// All of the cell is a number, where the library would stop at what is none.
bool IsReadWhole(std::string_view cell, Column::Cell kind)
{
    const std::string_view text = WithoutBlanks(cell);
    if (kind == Column::Cell::Decimal) {
        return ParseNumber(text).has_value() || Lower(text) == "nan";
    }
    const bool hasSign = !text.empty() && (text.front() == '-' || text.front() == '+');
    std::string_view digits = text.substr(hasSign ? 1 : 0);
    if (!hasSign && !digits.empty() && digits.back() == '+') {
        digits.remove_suffix(1); // of a charge
    }
    return !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

std::vector<std::string_view> PiecesOf(std::string_view text, char separator)
{
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const std::size_t hit = text.find(separator);
        pieces.push_back(text.substr(0, hit));
        if (hit == std::string_view::npos) {
            break;
        }
        text.remove_prefix(hit + 1);
        if (text.empty()) {
            pieces.push_back(text);
        }
    }
    return pieces;
}

TableLint::TableLint(const std::string& path, const TableForm& form, Findings& findings)
    : form_(form), findings_(findings),
      lines_(path, form.dropsQuotes ? FileLines::Mode::Binary : FileLines::Mode::Text)
{
}

bool TableLint::ReadHeader()
{
    // Of Sequest the header is a line like all others, else it is read whole.
    lines_.Next(line_, form_.dropsQuotes ? FileLines::Part::Begin : FileLines::Part::Whole);
    if (form_.dropsQuotes) {
        isCut_ = !LintLine(line_, findings_);
    } else {
        isCut_ = !LintHeader(line_, findings_);
    }
    text_ = Plain();
    const std::vector<std::string_view> header = PiecesOf(text_, '\t');
    for (const Column& column : form_.columns) {
        FindColumn(column, header);
    }
    if (form_.dropsQuotes && !hasAllColumns_ && BeginsWithMark(line_.begin)) {
        findings_.Add(Rule::ByteOrderMark, 1,
                      "the mark belongs to the name of the first column; expected no mark");
    }
    return hasAllColumns_;
}

void TableLint::FindColumn(const Column& column, const std::vector<std::string_view>& header)
{
    auto place = std::find(header.begin(), header.end(), column.name);
    if (place == header.end() && column.otherName != nullptr) {
        place = std::find(header.begin(), header.end(), column.otherName);
    }
    if (place != header.end()) {
        places_.push_back(static_cast<std::size_t>(place - header.begin()));
        names_.emplace_back(*place);
        needed_ = std::max(needed_, places_.back() + 1);
        return;
    }
    hasAllColumns_ = false;
    const auto similar = std::find_if(header.begin(), header.end(), [&](std::string_view name) {
        return Normal(name) == Normal(column.name);
    });
    if (similar != header.end()) {
        findings_.Add(Rule::ColumnSpelling, 1,
                      fmt::format("a column {}; expected \"{}\"", Shown(*similar), column.name));
    } else {
        findings_.Add(Rule::MissingColumn, 1,
                      fmt::format("expected a column \"{}\" in the header line", column.name));
    }
}

bool TableLint::Next()
{
    while (!isCut_ && lines_.Next(line_)) {
        isCut_ = !LintLine(line_, findings_);
        text_ = Plain();
        if (text_.empty()) {
            if (form_.endsAtEmptyLine && TellRowsBehindEmptyLine()) {
                return false;
            }
            continue;
        }
        ++rows_;
        cells_ = PiecesOf(text_, '\t');
        if (cells_.size() >= needed_ || form_.shortRow == TableForm::ShortRow::Given) {
            return true;
        }
        Add(Rule::ShortRow, fmt::format("{} cells; expected at least {}", cells_.size(), needed_));
        if (form_.shortRow == TableForm::ShortRow::EmptyCells) {
            return true;
        }
    }
    return false;
}

/// Gives true: nothing behind the line is read.
bool TableLint::TellRowsBehindEmptyLine()
{
    const std::uint64_t emptyLine = line_.number;
    std::uint64_t rows = 0;
    while (lines_.Next(line_)) {
        rows += line_.begin.empty() ? 0 : 1;
    }
    if (rows > 0) {
        findings_.Add(Rule::EmptyLineEnds, emptyLine,
                      fmt::format("{} rows behind it are not read; expected no empty line", rows));
    }
    return true;
}

void TableLint::LintCells()
{
    for (std::size_t column = 0; column < form_.columns.size(); ++column) {
        if (!form_.dropsQuotes) {
            LintQuotes(column);
        }
        if (form_.columns[column].cell != Column::Cell::Text) {
            LintNumber(column);
        }
    }
}

void TableLint::LintQuotedTabs()
{
    if (HasQuotedTab(line_.begin)) {
        Add(Rule::SequestTab, "a tab between double quotes; expected a blank");
    }
}

void TableLint::LintQuotes(std::size_t column)
{
    const std::string_view cell = Cell(column);
    if (!cell.empty() && cell.front() == '"'
        && form_.columns[column].name != std::string("Protein")) {
        Add(Rule::QuotedCell,
            fmt::format("{}: {}; expected no quotes", form_.columns[column].name, Shown(cell)));
    }
}

void TableLint::LintNumber(std::size_t column)
{
    const std::string_view cell = Cell(column);
    const Column& wanted = form_.columns[column];
    const bool isWhole = wanted.cell == Column::Cell::Whole;
    const bool isRead = !form_.hasStrictNumbers ? IsReadWhole(cell, wanted.cell)
                        : isWhole               ? IsWholeNumber(cell)
                                                : IsNumber(cell);
    if (!isRead) {
        Add(form_.hasStrictNumbers ? Rule::NumberEndsReading : Rule::NumberInPart,
            fmt::format("{}: {}; expected a {}number", names_[column], Shown(cell),
                        isWhole ? "whole " : ""));
    }
}

void TableLint::Add(Rule rule, std::string what) const
{
    findings_.Add(rule, line_.number, std::move(what));
}

/// The line as the library splits it.
std::string TableLint::Plain() const
{
    std::string text = line_.begin;
    if (form_.dropsQuotes) {
        if (!text.empty() && text.back() == '\r') {
            text.pop_back();
        }
        text.erase(std::remove(text.begin(), text.end(), '"'), text.end());
    }
    return text;
}

} // namespace pelgrin
