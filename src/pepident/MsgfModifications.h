// The modifications of an MS-GF+ search.
#ifndef VORLAN_PEPIDENT_MSGFMODIFICATIONS_H
#define VORLAN_PEPIDENT_MSGFMODIFICATIONS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "DataStructures.h"

namespace Vorlan {

/// Masses as MS-GF+ writes them into a peptide, and what they mean.
class MsgfModifications {
public:
    /// Reads the modification list of a search: a line is "mass or composition,
    /// residues, fix or opt, place, name" up to its "#". Lines with "=" are
    /// settings, lines with "custom" are residues; both are passed over, as are
    /// lines with fewer fields. Throws NotReadable with label. Each residue letter
    /// makes a modification of its own.
    static MsgfModifications FromList(const std::string& path, const char* label);

    explicit MsgfModifications(std::vector<IdentModification> mods);

    /// Where in a peptide a mass stands.
    struct Place {
        std::size_t before = 0; ///< residues in front of it
        char residue = '\0';    ///< the last one of these; NUL for none
        char next = '\0';       ///< the one behind it; NUL for none
    };

    /// The modification whose mass, rounded to as many decimals as the text has,
    /// is this text: the first one that fits the place, else the first one. Null
    /// when there is none.
    const IdentModification* Find(std::string_view massText, const Place& place) const;

private:
    std::vector<IdentModification> mods_;
};

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_MSGFMODIFICATIONS_H
