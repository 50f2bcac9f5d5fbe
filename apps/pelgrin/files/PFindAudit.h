// The host's own look at results of pFind 3 and pFind 2.8.
#ifndef PELGRIN_PFINDAUDIT_H
#define PELGRIN_PFINDAUDIT_H

#include <string>

#include "files/ResultAudit.h"

namespace pelgrin {

ResultAudit AuditPFind3(const std::string& path, const OnRecord& onRecord);
ResultAudit AuditPFind28(const std::string& path, const OnRecord& onRecord);

} // namespace pelgrin

#endif // PELGRIN_PFINDAUDIT_H
