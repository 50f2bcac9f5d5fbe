// The host's own look at a table of MS-GF+.
#ifndef PELGRIN_MSGFAUDIT_H
#define PELGRIN_MSGFAUDIT_H

#include <string>

#include "files/ResultAudit.h"

namespace pelgrin {

ResultAudit AuditMsgf(const std::string& path, const OnRecord& onRecord);

} // namespace pelgrin

#endif // PELGRIN_MSGFAUDIT_H
