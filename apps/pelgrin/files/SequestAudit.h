// The host's own look at an export of Sequest matches.
#ifndef PELGRIN_SEQUESTAUDIT_H
#define PELGRIN_SEQUESTAUDIT_H

#include <string>

#include "files/ResultAudit.h"

namespace pelgrin {

ResultAudit AuditSequest(const std::string& path, const OnRecord& onRecord);

} // namespace pelgrin

#endif // PELGRIN_SEQUESTAUDIT_H
