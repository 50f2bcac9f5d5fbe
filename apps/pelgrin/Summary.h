// summary.json: every count of a run.
#ifndef PELGRIN_SUMMARY_H
#define PELGRIN_SUMMARY_H

#include <string>

#include "Counts.h"
#include "Parameters.h"
#include "Spectra.h"

namespace pelgrin {

/// The text of summary.json, with a line feed at its end.
std::string SummaryOf(const Parameters& parameters, const SpectraPool& spectra,
                      const Counts& counts);

} // namespace pelgrin

#endif // PELGRIN_SUMMARY_H
