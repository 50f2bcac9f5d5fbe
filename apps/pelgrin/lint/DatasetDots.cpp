#include "lint/DatasetDots.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "common/Words.h"
#include "lint/LineFlaws.h"

namespace pelgrin {

void LintDatasetDots(const TableLint& table, std::string_view column, std::string_view cell)
{
    constexpr std::array<std::string_view, 9> kEndings = {".raw",  ".mgf", ".mzml", ".mzxml", ".d",
                                                          ".wiff", ".lcd", ".tdf",  ".mzdata"};
    const std::size_t dot = cell.find('.');
    if (dot == std::string_view::npos
        || std::count(kEndings.begin(), kEndings.end(), Lower(cell.substr(dot))) > 0) {
        return;
    }
    table.Add(Rule::DatasetDots,
              fmt::format("{}: {} becomes {}; expected no dot but that of the ending", column,
                          Shown(cell), Shown(std::string(cell.substr(0, dot)) + ".mgf")));
}

} // namespace pelgrin
