#include "files/SequestAudit.h"

#include <OpenMS/CONCEPT/Exception.h>
#include <OpenMS/DATASTRUCTURES/String.h>

#include "files/TableRows.h"

namespace pelgrin {

namespace {

/// A rank that is no number gives no record either: the library ends there.
bool IsLowerRank(std::string_view cell)
{
    try {
        return OpenMS::String(std::string(cell)).toInt() > 1;
    } catch (const OpenMS::Exception::ConversionError&) {
        return false;
    }
}

} // namespace

ResultAudit AuditSequest(const std::string& path, const OnRecord& onRecord)
{
    ResultAudit audit;
    TableRows rows(path, TableRows::Cells::Quoted);
    rows.Highest(NeededColumns(FileKind::Sequest));
    const std::size_t rank = rows.Column("Rank");
    while (rows.Next(audit)) {
        if (rows.Row().empty()) {
            audit.Add(Unread::BlankRow, rows.Number());
        } else if (IsLowerRank(rows.Cell(rank))) {
            audit.Add(Unread::LowerRank, rows.Number());
        } else {
            audit.AddRecord(rows.Place(), onRecord);
        }
    }
    return audit;
}

} // namespace pelgrin
