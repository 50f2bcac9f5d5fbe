// A whole run of a command.
#ifndef PELGRIN_RUN_H
#define PELGRIN_RUN_H

#include "common/Command.h"
#include "run/Parameters.h"

namespace pelgrin {

/// The five steps of "annotate" and "run": parameters, spectra,
/// identifications, annotation, output. The parameters were checked. Gives
/// AllWell or WithLosses; throws what cannot be gone on with.
ExitStatus Run(Parameters parameters);

} // namespace pelgrin

#endif // PELGRIN_RUN_H
