#include "files/MsgfAudit.h"

#include "files/TableRows.h"

namespace pelgrin {

ResultAudit AuditMsgf(const std::string& path, const OnRecord& onRecord)
{
    ResultAudit audit;
    TableRows rows(path);
    // The library ends the process for the first one that is missing.
    const std::size_t highest = rows.Highest(NeededColumns(FileKind::Msgf));
    while (rows.Next(audit)) {
        if (rows.Row().empty()) {
            audit.Add(Unread::BlankRow, rows.Number());
        } else if (!rows.Has(highest)) {
            audit.Add(Unread::ShortRow, rows.Number());
        } else {
            audit.AddRecord(rows.Place(), onRecord);
        }
    }
    return audit;
}

} // namespace pelgrin
