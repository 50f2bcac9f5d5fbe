// How a modification is written in a parameter file.
#ifndef VORLAN_PARAM_MODIFICATIONENTRY_H
#define VORLAN_PARAM_MODIFICATIONENTRY_H

#include <optional>
#include <string>

#include "ModificationDB.h"

namespace Vorlan {

/// "Phospho (S)", "Acetyl (Protein N-term)", "Gln->pyro-Glu (Any N-term Q)".
struct ModificationEntry {
    std::string name;
    std::string site; ///< residue letters as given, one residue, "N-term" or "C-term"
    CResidueModification::TermSpecificity specificity = CResidueModification::ANYWHERE;
};

/// Nothing for a text that is not name, "(", site and a closing ")" at the end,
/// blanks around the whole and the name aside, or whose site is empty.
std::optional<ModificationEntry> ParseModificationEntry(const std::string& text);

} // namespace Vorlan

#endif // VORLAN_PARAM_MODIFICATIONENTRY_H
