// The host's own look at a native table: rows that the reader does not give.
#ifndef PELGRIN_TABLEAUDIT_H
#define PELGRIN_TABLEAUDIT_H

#include <cstdint>
#include <string>

#include "files/ResultAudit.h"

namespace pelgrin {

struct TableAudit {
    std::uint64_t rows = 0;      ///< rows that the reader gives
    std::uint64_t emptyLine = 0; ///< number of the line that ends the table; 0 none
    std::uint64_t rowsBehindEmptyLine = 0;
    std::uint64_t longLine = 0; ///< number of the first line too long; 0 none
    std::uint64_t rowsBehindLongLine = 0;
    bool cutsRow = false; ///< the long line is a row: given cut
};

/// Throws Failure when the file cannot be read.
TableAudit AuditTable(const std::string& path, const OnRecord& onRow = {});

} // namespace pelgrin

#endif // PELGRIN_TABLEAUDIT_H
