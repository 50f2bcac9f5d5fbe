// The inputs of a run, prepared before it begins.
#ifndef PELGRIN_PREPAREDRUN_H
#define PELGRIN_PREPAREDRUN_H

#include <string>
#include <vector>

#include "run/Parameters.h"

namespace pelgrin {

/// Copies spectra and results of parameters into folder, with prepared.json and
/// titles.tsv, and lets parameters name the copies. A pepXML file of several runs
/// becomes several results. Warns of what is left out, and puts it into parameters.
/// Throws Failure.
void PrepareInputs(Parameters& parameters, const std::string& folder);

/// The classes of losses of preparing, as a ledger names them: "prepare_without_peaks".
std::vector<std::string> PrepareLossClasses();

} // namespace pelgrin

#endif // PELGRIN_PREPAREDRUN_H
