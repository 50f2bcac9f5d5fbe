// summary.json: every count of a run.
#ifndef PELGRIN_SUMMARY_H
#define PELGRIN_SUMMARY_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "run/Counts.h"
#include "run/DatasetResolver.h"
#include "run/FdrControl.h"
#include "run/Identifications.h"
#include "run/JoinAudit.h"
#include "run/MappedProteins.h"
#include "run/Parameters.h"
#include "run/Spectra.h"

namespace pelgrin {

/// What became of the records of a run.
struct RunResults {
    Counts counts;
    ResultsRead read;
    Datasets datasets;
    std::optional<JoinAudit> join;            ///< there when records were joined
    std::vector<FdrGroup> fdr;                ///< empty without FDR control
    std::unique_ptr<MappedProteins> proteins; ///< null without a protein database
};

/// The text of summary.json, with a line feed at its end.
std::string SummaryOf(const Parameters& parameters, const SpectraPool& spectra,
                      const RunResults& results);

} // namespace pelgrin

#endif // PELGRIN_SUMMARY_H
