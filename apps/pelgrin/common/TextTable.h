// Rows of texts as aligned columns.
#ifndef PELGRIN_TEXTTABLE_H
#define PELGRIN_TEXTTABLE_H

#include <cstddef>
#include <string>
#include <vector>

namespace pelgrin {

class TextTable {
public:
    struct Column {
        std::string title;
        bool isNumber = false; ///< aligned to the right
    };

    explicit TextTable(std::vector<Column> columns);

    /// As many cells as columns. Control characters become "?".
    void Add(std::vector<std::string> cells);

    bool IsEmpty() const { return rows_.size() == 1; }

    /// A line of titles and a line for each row; two blanks between columns,
    /// none at the end of a line.
    std::string Text() const;

private:
    std::vector<bool> isNumber_;
    std::vector<std::size_t> widths_;
    std::vector<std::vector<std::string>> rows_; ///< the titles first
};

} // namespace pelgrin

#endif // PELGRIN_TEXTTABLE_H
