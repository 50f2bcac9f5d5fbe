// Masses of elemental compositions.
#ifndef VORLAN_PEPIDENT_ELEMENTMASSES_H
#define VORLAN_PEPIDENT_ELEMENTMASSES_H

#include <string_view>

namespace Vorlan {

/// The text holds a letter that occurs in an element of CompositionMass.
bool IsComposition(std::string_view text);

/// Monoisotopic mass, Da, of a composition such as "C2H3N1O1" or "H-1N": the
/// elements Br, Cl, Fe, Se, C, H, N, O, S and P, each with a whole number behind
/// it, 1 when there is none. Prints "Unexpected Charactor in modification
/// composition" with a line end on standard output for each character that fits
/// no element, and goes on behind it; blanks are passed over.
double CompositionMass(std::string_view composition);

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_ELEMENTMASSES_H
