// The names under which an MGF file's records are known: shared, cut, missing.
#ifndef PELGRIN_MGFNAMELINT_H
#define PELGRIN_MGFNAMELINT_H

#include <string>

#include "lint/Findings.h"

namespace pelgrin {

/// Follows the library's index, in memory of 24 bytes for each name. Throws
/// Failure when the file cannot be read.
void LintMgfNames(const std::string& path, Findings& findings);

} // namespace pelgrin

#endif // PELGRIN_MGFNAMELINT_H
