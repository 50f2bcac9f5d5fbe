// Modifications in the "Modified sequence" of MaxQuant.
#ifndef VORLAN_PEPIDENT_MAXQUANTSEQUENCE_H
#define VORLAN_PEPIDENT_MAXQUANTSEQUENCE_H

#include <string>
#include <string_view>
#include <vector>

#include "DataStructures.h"

namespace Vorlan::maxquant {

/// The names in a "Modifications" cell: "2 Oxidation (M),Acetyl (Protein N-term)"
/// without the counts.
std::vector<std::string> NamesIn(std::string_view modifications);

/// The modifications of a sequence such as "_(ac)AM(ox)LK_" or
/// "_(Acetyl (Protein N-term))AM(Oxidation (M))LK_". A tag stands for a name
/// that it equals or, if it has two letters, that begins with them in any case:
/// one of names, else one of specified as NameWithSite spells it. Of several
/// the first one whose site fits. The mass is that of the specified
/// modification with this name at this site, else 0. Throws AbbreviationUnknown
/// for a tag without a name.
std::vector<IdentModification> ModificationsIn(std::string_view modifiedSequence,
                                               const std::vector<std::string>& names,
                                               const std::vector<IdentModification>& specified);

} // namespace Vorlan::maxquant

#endif // VORLAN_PEPIDENT_MAXQUANTSEQUENCE_H
