// The host's own look at modification files, for messages with file and line:
// the library names neither, or another line (B-46).
#ifndef PELGRIN_ENGINEFILEAUDIT_H
#define PELGRIN_ENGINEFILEAUDIT_H

#include <string>

namespace pelgrin {

/// Throws Failure for the first definition of a pFind 3 list that the library
/// cannot read.
void CheckPFind3File(const std::string& path);

/// Throws Failure for the first term specificity of a modification table that
/// the library does not know. The table is one that CheckModificationTable
/// accepted.
void CheckTermSpecificities(const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_ENGINEFILEAUDIT_H
