// The tab-separated table of modifications.
#ifndef VORLAN_MODDB_MODIFICATIONTABLE_H
#define VORLAN_MODDB_MODIFICATIONTABLE_H

#include <string>
#include <vector>

#include "ModificationDB.h"

namespace Vorlan {

/// The names of the eleven columns, joined by tabs.
std::string ModificationTableHeader();

/// Reads the table and appends its records. label is the literal name of the
/// caller. Throws FileNotReadable and InvalidValue, behind the records of the
/// rows before; ends the process for a malformed table.
void ReadModificationTable(const std::string& path, const char* label,
                           std::vector<CResidueModification>& records);

} // namespace Vorlan

#endif // VORLAN_MODDB_MODIFICATIONTABLE_H
