// Masses of residues.
#ifndef VORLAN_PEPIDENT_RESIDUEMASSES_H
#define VORLAN_PEPIDENT_RESIDUEMASSES_H

namespace Vorlan {

/// Monoisotopic mass, Da, of the residue with this one-letter code inside a
/// peptide: OpenMS' weight of the free amino acid less 18.010565 for water. 0
/// for a letter that OpenMS does not know. Throws what OpenMS throws when it
/// cannot read its table of residues, and std::bad_alloc; the next call tries again.
double ResidueMass(char letter);

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_RESIDUEMASSES_H
