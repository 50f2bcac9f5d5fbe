// From any result to the native table.
#ifndef PELGRIN_CONVERSION_H
#define PELGRIN_CONVERSION_H

#include "common/Command.h"
#include "run/Identifications.h"
#include "run/NativeTable.h"
#include "run/Parameters.h"

namespace pelgrin {

/// "convert": reads the one result of parameters and writes its records to the
/// table parameters.out, as the library does. The table takes its place when it
/// is whole. Reports to standard output. Gives AllWell, or WithLosses when
/// something of the result is not in the table that belongs there; throws what
/// cannot be gone on with.
ExitStatus Convert(const Parameters& parameters);

/// Tells what of the results was lost, and what the table at parameters.out does not hold: warnings, the closing table behind report,
/// and the files that parameters ask for. Gives whether there are losses that were
/// not allowed.
bool WriteLosses(const Parameters& parameters, const ResultsRead& results, const Counts& counts,
                 const NotHeldCounts& notHeld, std::string& report);

} // namespace pelgrin

#endif // PELGRIN_CONVERSION_H
