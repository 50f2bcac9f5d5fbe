// The modifications in a parameter file of MSFragger.
#ifndef VORLAN_MODDB_MSFRAGGERMODIFICATIONS_H
#define VORLAN_MODDB_MSFRAGGERMODIFICATIONS_H

#include <string>
#include <string_view>
#include <vector>

#include "ModificationDB.h"

namespace Vorlan {

/// Reads the file. Throws FileNotReadable.
std::vector<CResidueModification> ReadMSFraggerModifications(const std::string& path);

/// Appends what one line defines: nothing, one record, or one for every site of
/// a variable modification. A line holds no line feed.
void AppendMSFraggerModifications(std::string_view line,
                                  std::vector<CResidueModification>& records);

} // namespace Vorlan

#endif // VORLAN_MODDB_MSFRAGGERMODIFICATIONS_H
