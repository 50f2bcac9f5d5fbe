// The spelling of classifications in tables.
#ifndef VORLAN_MODDB_CLASSIFICATIONTEXTS_H
#define VORLAN_MODDB_CLASSIFICATIONTEXTS_H

#include <string_view>

#include "ModificationDB.h"

namespace Vorlan {

/// The text that the dump writes, "post-translational"; empty for a value
/// outside 0 to 15.
std::string_view DumpTextOf(CResidueModification::SourceClassification classification);

} // namespace Vorlan

#endif // VORLAN_MODDB_CLASSIFICATIONTEXTS_H
