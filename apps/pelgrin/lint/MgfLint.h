// What of an MGF file the library reads otherwise than it is meant.
#ifndef PELGRIN_MGFLINT_H
#define PELGRIN_MGFLINT_H

#include <string>

#include "lint/Findings.h"

namespace pelgrin {

/// Lines, records and names of an MGF file. Throws Failure when it cannot be read.
void LintMgf(const std::string& path, Findings& findings);

} // namespace pelgrin

#endif // PELGRIN_MGFLINT_H
