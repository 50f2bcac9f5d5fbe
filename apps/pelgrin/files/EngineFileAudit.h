// The host's own look at modification files, for messages with file and line:
// the library names neither, or another line (B-46).
#ifndef PELGRIN_ENGINEFILEAUDIT_H
#define PELGRIN_ENGINEFILEAUDIT_H

#include <optional>
#include <string>

#include "DataStructures.h"

namespace pelgrin {

/// Throws Failure for the first definition of a pFind 3 list that the library
/// cannot read.
void CheckPFind3File(const std::string& path);

/// Throws Failure for the first term specificity of a modification table that
/// the library does not know. The table is one that CheckModificationTable
/// accepted.
void CheckTermSpecificities(const std::string& path);

/// A warning of the masses of a modification file that the library reads in part, or as
/// 0: "15,994915" is 15. It names file, line and cell of the first one; nothing when all
/// are numbers. The file is one that its check accepted. Throws Failure when it cannot be
/// read.
std::optional<std::string> WarningOfMasses(const std::string& path,
                                           Vorlan::SearchEngineType::ESearchEngineType engine);

} // namespace pelgrin

#endif // PELGRIN_ENGINEFILEAUDIT_H
