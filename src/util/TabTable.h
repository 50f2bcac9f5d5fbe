// What the tab-separated formats have in common.
#ifndef VORLAN_UTIL_TABTABLE_H
#define VORLAN_UTIL_TABTABLE_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Vorlan {

/// The columns of a header row.
class TabHeader {
public:
    static constexpr int kMissing = -1;

    /// An empty row has no columns.
    explicit TabHeader(std::string_view row);

    /// The place of a column, counted from 0, or kMissing.
    int Find(const std::string& name) const;

private:
    std::map<std::string, int> columns_;
};

/// The cells of one row. Keeps its storage from row to row.
class TabRow {
public:
    /// Splits row at separator; the cells are views into row. An empty row has
    /// no cells, every other one more than it has separators.
    void Split(std::string_view row, char separator);

    std::size_t Size() const { return cells_.size(); }

    /// Cell i; one that the row does not have is empty.
    std::string_view Cell(int i) const;

private:
    std::vector<std::string_view> cells_;
};

} // namespace Vorlan

#endif // VORLAN_UTIL_TABTABLE_H
