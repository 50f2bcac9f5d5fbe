// The host's own look at msms.txt and peptides.txt of MaxQuant.
#ifndef PELGRIN_MAXQUANTAUDIT_H
#define PELGRIN_MAXQUANTAUDIT_H

#include <string>

#include "files/ResultAudit.h"

namespace pelgrin {

/// The second file is peptides.txt. Throws Failure, too, when the peptides do
/// not name the rows of msms.txt as 0, 1, 2 and so on.
ResultAudit AuditMaxQuant(const ResultFiles& files, const OnRecord& onRecord);

/// The peptides.txt beside the msms.txt at path, which may be packed; empty when there
/// is none.
std::string PeptidesBeside(const std::string& path, bool mayBePacked);

} // namespace pelgrin

#endif // PELGRIN_MAXQUANTAUDIT_H
