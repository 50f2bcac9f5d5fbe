// What of DTA files the library reads otherwise than it is meant.
#ifndef PELGRIN_DTALINT_H
#define PELGRIN_DTALINT_H

#include <string>

#include "lint/Findings.h"

namespace pelgrin {

// Each throws Failure when it cannot be read.

void LintDta(const std::string& path, Findings& findings);
/// Every DTA file in a folder.
void LintDtaFolder(const std::string& folder, Findings& findings);

} // namespace pelgrin

#endif // PELGRIN_DTALINT_H
