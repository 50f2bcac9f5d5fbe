// Modifications as pFind names them.
#ifndef VORLAN_PEPIDENT_PFINDMODIFICATIONS_H
#define VORLAN_PEPIDENT_PFINDMODIFICATIONS_H

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "DataStructures.h"
#include "ModificationDB.h"

namespace Vorlan::pfind {

/// One entry of the "Modification" cell of pFind 3, such as
/// "6,Carbamidomethyl[C]" or "0,Acetyl[ProteinN-term]": name, site and place
/// are filled. Of an entry with "])", as in "3,Name[K](Part[K])", the name is
/// "Name(Part)".
IdentModification ParsePFind3(std::string_view entry);

/// A modification of pFind 2.8, "Oxidation (M)": name in the spelling of the
/// databases, site and place by the name. position as pFind counts it.
IdentModification ParsePFind28(std::string_view name, std::int32_t position);

/// Looks masses up by name: in the modification database that the parameters
/// of the run name, then in the default table, each opened when first needed. A
/// default table that cannot be read has no names. Remembers the answers.
class MassesByName {
public:
    /// Da; that of the record with this name for the site, else of the first
    /// record with this name, 0 for an unknown name. Only a site of one letter
    /// tells records apart.
    double Of(const std::string& name, const std::string& site);

private:
    struct Table {
        bool isOpen = false;
        const CModificationsDB* database = nullptr;
    };

    const CModificationsDB* Engine();
    const CModificationsDB* Default();

    Table engine_;
    Table default_;
    std::map<std::pair<std::string, std::string>, double> known_;
};

} // namespace Vorlan::pfind

#endif // VORLAN_PEPIDENT_PFINDMODIFICATIONS_H
