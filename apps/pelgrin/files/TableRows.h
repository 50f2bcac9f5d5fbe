// The rows of a tab-separated table, for the host's own look at it.
#ifndef PELGRIN_TABLEROWS_H
#define PELGRIN_TABLEROWS_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "files/FileLines.h"
#include "files/ResultAudit.h"
#include "files/ResultColumns.h"

namespace pelgrin {

class TableRows {
public:
    /// Reads the header line. IsQuoted: double quotes are no part of any cell,
    /// and a carriage return at the end of a line no part of the last one.
    enum class Cells { Plain, Quoted };
    explicit TableRows(const std::string& path, Cells cells = Cells::Plain);

    /// The place of a column. Throws Failure with file, line 1 and the name
    /// when it is not there.
    std::size_t Column(const std::string& name) const;
    /// The highest place of columns that must all be there, in this order.
    std::size_t Highest(const std::vector<ColumnNames>& columns) const;

    /// The next row; false at the end, and behind a line that is too long.
    /// Reports what stands there to audit.
    bool Next(ResultAudit& audit);

    const std::string& Row() const { return line_.begin; }
    std::uint64_t Number() const { return line_.number; }
    RecordPlace Place() const { return {line_.number, line_.offset, line_.end, 0, 0}; }
    /// A cell of the row; one that it does not have is empty.
    std::string_view Cell(std::size_t column) const;
    /// The row has more cells than column.
    bool Has(std::size_t column) const;

private:
    void Clean();
    /// Of the first spelling that is there.
    std::size_t Column(const ColumnNames& names) const;

    std::string path_;
    Cells cells_;
    FileLines lines_;
    FileLines::Line line_;
    bool endsHere_ = false; ///< the line is too long
    std::map<std::string, int> columns_;
};

} // namespace pelgrin

#endif // PELGRIN_TABLEROWS_H
