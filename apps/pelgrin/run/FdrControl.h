// Step 3 of a run, continued: the matches that a false discovery rate leaves.
#ifndef PELGRIN_FDRCONTROL_H
#define PELGRIN_FDRCONTROL_H

#include <string>
#include <vector>

#include "run/Counts.h"
#include "run/Fdr.h"
#include "run/Identifications.h"

namespace pelgrin {

/// What was decided for files that were judged together.
struct FdrGroup {
    std::vector<std::string> files;
    std::uint64_t targets = 0; ///< with a q-value
    std::uint64_t decoys = 0;
    std::uint64_t passing = 0;        ///< targets that stay
    std::optional<double> worstScore; ///< of those
};

/// Removes the records that leave, and counts them; the others keep their
/// order. Throws Failure when records that are judged together disagree on
/// whether a high score is better.
std::vector<FdrGroup> ControlFdr(const FdrPlan& plan, Identifications& identifications,
                                 Counts& counts);

} // namespace pelgrin

#endif // PELGRIN_FDRCONTROL_H
