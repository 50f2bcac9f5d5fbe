// What the tables of all engines have in common: a header, rows, cells, numbers.
#ifndef PELGRIN_TABLELINT_H
#define PELGRIN_TABLELINT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "files/FileLines.h"
#include "lint/Findings.h"

namespace pelgrin {

/// How the library reads a table.
struct TableForm {
    struct Column {
        enum class Cell { Text, Whole, Decimal };
        const char* name = nullptr;
        Cell cell = Cell::Text;
        const char* otherName = nullptr; ///< that is taken, too
    };
    /// EmptyCells: its missing cells are read as empty ones. Given: not told either.
    enum class ShortRow { PassedOver, EmptyCells, Given };

    std::vector<Column> columns; ///< those that it wants
    ShortRow shortRow = ShortRow::PassedOver;
    bool endsAtEmptyLine = false;
    bool hasStrictNumbers = false; ///< a cell that is no number ends the reading
    bool dropsQuotes = false;      ///< and reads a byte order mark as text
};

/// Walks over the rows of a table and adds what is wrong with any table.
class TableLint {
public:
    /// form must outlive it.
    TableLint(const std::string& path, const TableForm& form, Findings& findings);

    /// Reads the header line. False when a column is missing: nothing is read then.
    bool ReadHeader();
    /// The next row that is not passed over; false at the end of what is read.
    bool Next();

    std::uint64_t Line() const { return line_.number; }
    /// A cell of the row, by the place of its column in the form.
    std::string_view Cell(std::size_t column) const
    {
        return places_[column] < cells_.size() ? cells_[places_[column]] : std::string_view();
    }
    /// Rows so far that are not empty, those passed over included.
    std::uint64_t Rows() const { return rows_; }
    /// How many cells the row has.
    std::size_t Cells() const { return cells_.size(); }
    /// Adds cells of the row that are no numbers, and quoted ones.
    void LintCells();
    /// Adds a tab between quotes, where quotes are dropped.
    void LintQuotedTabs();
    /// Adds a finding about the row.
    void Add(Rule rule, std::string what) const;

private:
    std::string Plain() const;
    void FindColumn(const TableForm::Column& column, const std::vector<std::string_view>& header);
    void LintQuotes(std::size_t column);
    void LintNumber(std::size_t column);
    bool TellRowsBehindEmptyLine();

    const TableForm& form_;
    Findings& findings_;
    FileLines lines_;
    FileLines::Line line_;
    bool isCut_ = false; ///< the line is too long: nothing is read behind it
    std::string text_;   ///< of the row, as the library splits it
    std::vector<std::string_view> cells_;
    std::vector<std::size_t> places_; ///< of the columns among the cells
    std::vector<std::string> names_;  ///< of the columns, as the header spells them
    std::size_t needed_ = 0;          ///< cells of a row
    bool hasAllColumns_ = true;
    std::uint64_t rows_ = 0;
};

/// text, split at a separator; an empty text has no pieces.
std::vector<std::string_view> PiecesOf(std::string_view text, char separator);

} // namespace pelgrin

#endif // PELGRIN_TABLELINT_H
