// The host's own look at a pepXML file.
#ifndef PELGRIN_PEPXMLAUDIT_H
#define PELGRIN_PEPXMLAUDIT_H

#include <cstdint>
#include <string>

#include "files/ResultAudit.h"

namespace pelgrin {

ResultAudit AuditPepXml(const std::string& path, const OnRecord& onRecord);

/// What a message can tell of a hit: 'peptide "ACDMK", modified residues C2
/// (160.030649), M4 (147.035385)'. record counts the records that the file gives,
/// from 0.
std::string HitText(const std::string& path, std::uint64_t record);

} // namespace pelgrin

#endif // PELGRIN_PEPXMLAUDIT_H
