// What of a modification table the library does not read.
#ifndef PELGRIN_MODIFICATIONTABLELINT_H
#define PELGRIN_MODIFICATIONTABLELINT_H

#include <string>

#include "lint/Findings.h"

namespace pelgrin {

/// Throws Failure when the file cannot be read.
void LintModificationTable(const std::string& path, Findings& findings);

} // namespace pelgrin

#endif // PELGRIN_MODIFICATIONTABLELINT_H
