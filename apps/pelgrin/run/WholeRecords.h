// What a record needs before the host works with it, and its reader does not do.
#ifndef PELGRIN_WHOLERECORDS_H
#define PELGRIN_WHOLERECORDS_H

#include <vector>

#include "DataStructures.h"

namespace pelgrin {

/// The fixed modifications of the parameters that were read; none without.
std::vector<Vorlan::IdentModification> FixedModifications();

/// Makes a record of this format whole:
/// - What the reader knows of a terminus joins the other modifications as soon
///   as it has a name: the host's tables hold one list.
/// - Blanks around accessions go, but for the native table: no decoy tag begins
///   with one.
/// - MaxQuant lists no fixed modifications: fixed ones are added where the
///   residue, or the terminus of the peptide, has none.
void MakeWhole(Vorlan::PepIdentType::EPepIdentType format,
               const std::vector<Vorlan::IdentModification>& fixed,
               Vorlan::PeptideIdentification& record);

} // namespace pelgrin

#endif // PELGRIN_WHOLERECORDS_H
