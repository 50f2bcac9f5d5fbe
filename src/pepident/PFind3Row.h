// One row of pFind-Filtered.spectra of pFind 3.
#ifndef VORLAN_PEPIDENT_PFIND3ROW_H
#define VORLAN_PEPIDENT_PFIND3ROW_H

#include <string>
#include <string_view>

#include "DataStructures.h"
#include "pepident/EngineTable.h"
#include "pepident/PFindModifications.h"

namespace Vorlan::pfind {

/// Reads the rows of one table.
class RowReader {
public:
    /// Ends the process for a missing column.
    explicit RowReader(std::string_view headerLine);

    /// False for a row with too few cells or without a protein.
    bool Read(std::string_view row, PeptideIdentification& match);

private:
    bool ReadProteins(PeptideIdentification& match);
    void ReadModifications(PeptideIdentification& match);

    EngineTable table_;
    TabRow first_, second_, fields_;
    MassesByName masses_;
};

/// The spectrum file of a spectrum name: "run.30507.30507.2.0.dta" without its
/// last five pieces and with ".mgf". A name of fewer than six pieces is kept
/// whole in front of ".mgf".
std::string SpectrumFile(std::string_view spectrumName);

} // namespace Vorlan::pfind

#endif // VORLAN_PEPIDENT_PFIND3ROW_H
