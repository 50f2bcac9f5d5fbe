// The inputs of a run, prepared before it begins.
#ifndef PELGRIN_RUNINPUTS_H
#define PELGRIN_RUNINPUTS_H

#include <string>

#include "run/Parameters.h"

namespace pelgrin {

/// Copies spectra and results of parameters into folder, with prepared.json and
/// titles.tsv, and lets parameters name the copies. A pepXML file of several runs
/// becomes several results. Warns of what is left out; gives whether there was
/// any. Throws Failure.
bool PrepareInputs(Parameters& parameters, const std::string& folder);

} // namespace pelgrin

#endif // PELGRIN_RUNINPUTS_H
