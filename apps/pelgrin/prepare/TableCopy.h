// A copy of a tab-separated table, row by row.
#ifndef PELGRIN_TABLECOPY_H
#define PELGRIN_TABLECOPY_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "files/FileLines.h"
#include "prepare/Copy.h"
#include "prepare/TextOutput.h"

namespace pelgrin {

/// A column that a reader needs, as it spells it, and as others do. Letter case
/// makes no difference.
struct WantedColumn {
    const char* name;
    std::vector<const char*> others = {};
    bool isRequired = true;
    /// A row may end before it: what is missing is read as an empty cell.
    bool mayBeCut = false;
};

class TableCopy {
public:
    using Cells = std::vector<std::string>;
    /// Changes the cells of a row; gives the reason to leave it out, or nullptr.
    using OnRow = std::function<const char*(Cells& cells, std::uint64_t line)>;

    /// Whether the reader of the copy takes a header line of any length.
    enum class Header { OfAnyLength, Bounded };

    /// Reads the header of the plain text file at source, and makes target with the
    /// wanted names in it. Throws Failure with file, line 1 and the column when a
    /// required one is missing, and for a header that the reader would cut.
    TableCopy(const std::string& source, const std::string& target,
              const std::vector<WantedColumn>& wanted, Copy& copy,
              Header kind = Header::OfAnyLength);

    /// The place of a wanted column; kNone when an optional one is not there.
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::size_t Place(std::size_t wanted) const { return places_[wanted]; }

    /// Copies the rows: without blank ones, those that are too long and those too
    /// short for a column that must not be cut. Call once.
    void CopyRows(const OnRow& onRow);

private:
    void CheckHeader(std::uint64_t length) const;
    void RenameColumns(const std::vector<WantedColumn>& wanted);
    void TakeRow(const OnRow& onRow);

    std::string source_;
    Copy& copy_;
    FileLines lines_;
    FileLines::Line line_;
    std::uint64_t longestHeader_ = 0;
    Cells header_;
    std::vector<std::size_t> places_; ///< of the wanted columns
    std::size_t needed_ = 0;          ///< cells that a row must have
    bool hasNul_ = false;             ///< the line, which is cut there
    TextOutput output_;
};

TableCopy::Cells SplitCells(std::string_view line, char separator = '\t');
std::string JoinCells(const TableCopy::Cells& cells);

/// Throws Failure for a column that the header of copy.input lacks.
[[noreturn]] void RefuseMissingColumn(const Copy& copy, const std::string& name);

/// Without the double quotes around it, and with one for two within; the same for
/// quotes that then stand around it.
std::string WithoutQuotes(const std::string& cell);

} // namespace pelgrin

#endif // PELGRIN_TABLECOPY_H
