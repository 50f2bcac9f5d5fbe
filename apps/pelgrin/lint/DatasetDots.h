// Names of spectra files that the library ends at the first dot (B-69).
#ifndef PELGRIN_DATASETDOTS_H
#define PELGRIN_DATASETDOTS_H

#include <string_view>

#include "lint/TableLint.h"

namespace pelgrin {

/// Adds a name of which more is cut than its ending.
void LintDatasetDots(const TableLint& table, std::string_view column, std::string_view cell);

} // namespace pelgrin

#endif // PELGRIN_DATASETDOTS_H
