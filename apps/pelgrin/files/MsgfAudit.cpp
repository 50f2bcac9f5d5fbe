#include "files/MsgfAudit.h"

#include <algorithm>

#include "files/TableRows.h"

namespace pelgrin {

ResultAudit AuditMsgf(const std::string& path, const OnRecord& onRecord)
{
    ResultAudit audit;
    TableRows rows(path);
    // The library ends the process for the first one that is missing.
    const std::size_t highest =
        std::max({rows.Highest({"#SpecFile", "ScanNum", "Peptide", "Charge", "Precursor"}),
                  rows.Column("PrecursorError(ppm)", "PrecursorError(Da)"),
                  rows.Highest({"SpecEValue", "Protein"})});
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
