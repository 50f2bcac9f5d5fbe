// Step 3 of a run: the matches of the table.
#ifndef PELGRIN_IDENTIFICATIONS_H
#define PELGRIN_IDENTIFICATIONS_H

#include <vector>

#include "Counts.h"
#include "Parameters.h"

namespace pelgrin {

/// Reads all records and counts the rows that were lost. Throws Failure with
/// file, line and what was expected.
std::vector<Vorlan::PeptideIdentification> ReadIdentifications(const Parameters& parameters,
                                                               Counts& counts);

} // namespace pelgrin

#endif // PELGRIN_IDENTIFICATIONS_H
