// Masses of residues.
#ifndef VORLAN_PEPIDENT_RESIDUEMASSES_H
#define VORLAN_PEPIDENT_RESIDUEMASSES_H

namespace Vorlan {

/// Monoisotopic mass, Da, of the residue with this one-letter code inside a
/// peptide: OpenMS' weight of the free amino acid less 18.010565 for water. 0
/// for a letter that OpenMS does not know.
double ResidueMass(char letter);

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_RESIDUEMASSES_H
