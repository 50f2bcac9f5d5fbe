// The pages of docs/ as the tests read them.
#ifndef VORLAN_TESTS_DOCS_PAGE_H
#define VORLAN_TESTS_DOCS_PAGE_H

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "support/Support.h"

namespace Vorlan::test {

inline std::string Trimmed(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? ""
                                      : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

inline std::vector<std::string> LinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The lines of a page of docs/ under "## heading".
inline std::vector<std::string> LinesUnder(const std::string& page, const std::string& heading)
{
    const std::vector<std::string> all = LinesOf(ReadFile(PELGRIN_DOCS "/" + page));
    const auto begin = std::find(all.begin(), all.end(), "## " + heading);
    EXPECT_NE(begin, all.end()) << page << " has no " << heading;
    if (begin == all.end()) {
        return {};
    }
    return {begin + 1, std::find_if(begin + 1, all.end(), [](const std::string& line) {
                return line.rfind("## ", 0) == 0;
            })};
}

/// The cells of a row of a table, behind the "### " heading that it stands
/// under (empty: none).
using Row = std::vector<std::string>;

/// The rows of all tables under "## heading", without the names of the columns.
inline std::vector<Row> RowsUnder(const std::string& page, const std::string& heading)
{
    std::vector<Row> rows;
    std::string part;
    for (const std::string& line : LinesUnder(page, heading)) {
        if (line.rfind("### ", 0) == 0) {
            part = line.substr(4);
        } else if (line.rfind("|---", 0) == 0) {
            rows.pop_back();
        } else if (line.rfind("| ", 0) == 0) {
            Row row = {part};
            std::istringstream cells(line.substr(1));
            for (std::string cell; std::getline(cells, cell, '|');) {
                row.push_back(Trimmed(cell));
            }
            rows.push_back(row);
        }
    }
    return rows;
}

inline std::string WithoutTicks(std::string cell)
{
    cell.erase(std::remove(cell.begin(), cell.end(), '`'), cell.end());
    return cell;
}

/// The texts between backticks.
inline std::vector<std::string> TickedIn(const std::string& cell)
{
    std::vector<std::string> texts;
    std::istringstream pieces(cell);
    std::string piece;
    while (std::getline(pieces, piece, '`') && std::getline(pieces, piece, '`')) {
        texts.push_back(piece);
    }
    return texts;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_DOCS_PAGE_H
