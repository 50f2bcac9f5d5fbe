// What the tab-separated formats have in common.
#ifndef VORLAN_UTIL_TABTABLE_H
#define VORLAN_UTIL_TABTABLE_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Vorlan {

/// The columns of a header row.
class TabHeader {
public:
    static constexpr int kMissing = -1;

    /// An empty row has no columns. A row may be of any length.
    explicit TabHeader(std::string_view row) : row_(row) {}

    /// The place of the first column with the name, counted from 0, or kMissing.
    int Find(std::string_view name) const;

private:
    std::string row_;
};

/// The cells of one row. Keeps its storage from row to row.
class TabRow {
public:
    /// Splits row at separator; the cells are views into row. An empty row has
    /// no cells, every other one more than it has separators.
    void Split(std::string_view row, char separator);

    std::size_t Size() const { return size_; }

    /// Cell i; one that the row does not have is empty.
    std::string_view Cell(int i) const
    {
        const auto place = static_cast<std::size_t>(i);
        if (i < 0 || place >= size_) {
            return {};
        }
        const std::size_t begin = i == 0 ? 0 : ends_[place - 1] + 1;
        return {row_.data() + begin, ends_[place] - begin};
    }

private:
    std::string_view row_;
    std::vector<std::size_t> ends_; ///< of the cells; there is room for more of them
    std::size_t size_ = 0;          ///< cells
};

} // namespace Vorlan

#endif // VORLAN_UTIL_TABTABLE_H
