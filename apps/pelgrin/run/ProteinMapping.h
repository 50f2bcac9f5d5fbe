// From a result and a protein database to a table with proteins.
#ifndef PELGRIN_PROTEINMAPPING_H
#define PELGRIN_PROTEINMAPPING_H

#include <string>

#include "common/Command.h"
#include "run/Parameters.h"

namespace pelgrin {

/// "map-proteins": reads the one result of parameters, fills in the proteins of
/// its records and writes them to the native table parameters.out, and
/// proteins.tsv to proteinTable unless that is empty. The tables take their
/// places when both are whole. Reports to standard output. Gives AllWell, or
/// WithLosses when something is missing, was not found or does not agree;
/// throws what cannot be gone on with.
ExitStatus MapProteins(const Parameters& parameters, const std::string& proteinTable);

} // namespace pelgrin

#endif // PELGRIN_PROTEINMAPPING_H
