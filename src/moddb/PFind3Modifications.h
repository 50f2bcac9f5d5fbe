// The modification list of pFind 3.
#ifndef VORLAN_MODDB_PFIND3MODIFICATIONS_H
#define VORLAN_MODDB_PFIND3MODIFICATIONS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "ModificationDB.h"

namespace Vorlan {

/// Reads the file and appends its records. Throws FileNotReadable and, behind
/// the records before a bad definition, InvalidParameter.
void ReadPFind3Modifications(const std::string& path, std::vector<CResidueModification>& records);

/// One definition, "Phospho[S]=S NORMAL 79.966331 79.9799 0 0 H(1)O(3)P(1)".
/// line is the number that messages name. Throws InvalidParameter.
CResidueModification PFind3ModificationOf(std::string_view definition, std::size_t line);

} // namespace Vorlan

#endif // VORLAN_MODDB_PFIND3MODIFICATIONS_H
