// Where a modification may sit.
#ifndef VORLAN_PEPIDENT_SITERULES_H
#define VORLAN_PEPIDENT_SITERULES_H

#include <cstdint>

#include "DataStructures.h"

namespace Vorlan {

/// A residue of a peptide and what stands around the peptide.
struct ResiduePlace {
    std::int32_t position = 0; ///< in the peptide, from 1
    char residue = 'X';
    char before = 'X'; ///< the peptide; "-" at the start of a protein
    char after = 'X';  ///< the peptide; "-" at the end of a protein
};

/// The modification may sit there. Throws PositionUnknown for a position type
/// that is none of the five.
bool FitsPlace(const IdentModification& mod, const ResiduePlace& place);

/// Where a modification that was found at a place is recorded: 0 for an
/// N-terminus, one behind the place for a C-terminus, else the place.
/// firstResidue is that of the peptide.
std::int32_t RecordedPosition(const IdentModification& mod, const ResiduePlace& place,
                              char firstResidue);

/// The position type names this terminus: "N-term" or "C-term".
bool NamesTerminus(const IdentModification& mod, const char* terminus);

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_SITERULES_H
