#include "files/TableAudit.h"

#include "files/FileLines.h"

namespace pelgrin {

TableAudit AuditTable(const std::string& path, const OnRecord& onRow)
{
    TableAudit audit;
    const auto take = [&](const FileLines::Line& row) {
        ++audit.rows;
        if (onRow) {
            onRow({row.number, row.offset, row.end, 0, 0});
        }
    };
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    lines.Next(line); // the header, of any length
    while (lines.Next(line)) {
        if (audit.emptyLine != 0 || audit.longLine != 0) {
            const std::uint64_t row = line.begin.empty() ? 0 : 1;
            (audit.longLine != 0 ? audit.rowsBehindLongLine : audit.rowsBehindEmptyLine) += row;
        } else if (line.length > kLongestLine) {
            audit.longLine = line.number;
            audit.cutsRow = true;
            take(line);
        } else if (line.begin.empty()) {
            audit.emptyLine = line.number;
        } else {
            take(line);
        }
    }
    return audit;
}

} // namespace pelgrin
