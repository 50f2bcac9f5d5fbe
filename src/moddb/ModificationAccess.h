// Questions to a database that throw nothing. An exception of OpenMS takes long, and
// writes to memory that all threads share.
#ifndef VORLAN_MODDB_MODIFICATIONACCESS_H
#define VORLAN_MODDB_MODIFICATIONACCESS_H

#include <string>
#include <vector>

#include "ModificationDB.h"

namespace Vorlan {

class ModificationAccess {
public:
    /// The records that searchModifications gives for name, whatever their origin and
    /// term specificity, in the order of the database; none for an unknown name.
    static std::vector<const CResidueModification*> Named(const CModificationsDB& database,
                                                          const std::string& name);
};

} // namespace Vorlan

#endif // VORLAN_MODDB_MODIFICATIONACCESS_H
