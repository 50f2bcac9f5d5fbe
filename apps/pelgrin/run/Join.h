// Records meet their spectra, by dataset and spectrum name.
#ifndef PELGRIN_JOIN_H
#define PELGRIN_JOIN_H

#include <variant>
#include <vector>

#include "common/Command.h"
#include "run/Counts.h"
#include "run/DatasetResolver.h"
#include "run/JoinAudit.h"
#include "run/Parameters.h"
#include "run/Spectra.h"

namespace pelgrin {

/// The file of every dataset name that the records bear. Says what was met only
/// by a weak rule, and what of --dataset nothing met. Throws Failure for a name
/// that two files may bear.
Datasets ResolveDatasets(const Parameters& parameters, const SpectraPool& spectra,
                         const std::vector<Vorlan::PeptideIdentification>& records);

/// A spectrum that a record met.
struct Meeting {
    const SpectraFile* file = nullptr;
    NameRule rule = NameRule::Exact; ///< by which the dataset met the file
    SpectrumName name;
};

/// Finds the spectrum of one record after the other, and enters each into audit.
class Joiner {
public:
    Joiner(const Datasets& datasets, const SpectraPool& spectra, JoinAudit& audit)
        : datasets_(datasets), spectra_(spectra), audit_(audit)
    {
    }

    /// A record of those that datasets were resolved for.
    std::variant<Meeting, Problem> Find(const Vorlan::PeptideIdentification& record);

private:
    const Datasets& datasets_;
    const SpectraPool& spectra_;
    JoinAudit& audit_;
};

/// "pelgrin join": reads spectra and results, joins them and prints the audit,
/// as JSON when asJson. Writes no file.
ExitStatus Join(const Parameters& parameters, bool asJson);

} // namespace pelgrin

#endif // PELGRIN_JOIN_H
