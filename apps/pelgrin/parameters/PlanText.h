// What "pelgrin params check" says of a parameter file.
#ifndef PELGRIN_PLANTEXT_H
#define PELGRIN_PLANTEXT_H

#include <string>

#include "parameters/RunParameters.h"

namespace pelgrin {

/// What a run would do, for people.
std::string TextOf(const RunPlan& plan);

} // namespace pelgrin

#endif // PELGRIN_PLANTEXT_H
