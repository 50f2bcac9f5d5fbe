// The short report that a run ends with.
#ifndef PELGRIN_REPORT_H
#define PELGRIN_REPORT_H

#include <string>
#include <vector>

#include "run/Annotation.h"
#include "run/Parameters.h"
#include "run/Spectra.h"
#include "run/Summary.h"

namespace pelgrin {

/// The records whose bonds were found best, in order; each sequence once.
class BestRecords {
public:
    struct Entry {
        std::string sequence;
        std::uint64_t charge = 0;
        double massShift = 0.0; ///< 0 when it was not asked
        Annotation annotation;
    };

    void Offer(const Vorlan::PeptideIdentification& record, const FragmentPlan& plan,
               const Annotation& annotation);
    const std::vector<Entry>& Entries() const { return entries_; }

private:
    std::vector<Entry> entries_;
};

/// "b3 b4* y2++": one word per ion, with * for a shifted one and a plus sign
/// per charge from charge 2.
std::string IonsText(const Annotation& annotation);

std::string ReportOf(const Parameters& parameters, const SpectraPool& spectra,
                     const RunResults& results, const BestRecords& best);

} // namespace pelgrin

#endif // PELGRIN_REPORT_H
