// What "pelgrin params check" says of a parameter file.
#ifndef PELGRIN_PLANTEXT_H
#define PELGRIN_PLANTEXT_H

#include <string>
#include <vector>

#include "parameters/RunParameters.h"

namespace pelgrin {

/// What a run would do, for people.
std::string TextOf(const RunPlan& plan);

/// Every key that a parameter file may hold, fixed_mod_1 and so on as far as they
/// count, with the value that the file gives.
std::vector<FileKey> KeysOf(const ParameterText& text);

} // namespace pelgrin

#endif // PELGRIN_PLANTEXT_H
