// One row of the table of MS-GF+.
#ifndef VORLAN_PEPIDENT_MSGFROW_H
#define VORLAN_PEPIDENT_MSGFROW_H

#include <string>
#include <string_view>

#include "DataStructures.h"
#include "pepident/EngineTable.h"
#include "pepident/MsgfModifications.h"

namespace Vorlan::msgf {

/// Reads the rows of one table.
class RowReader {
public:
    /// Ends the process for a missing column.
    RowReader(std::string_view headerLine, const MsgfModifications& modifications);

    /// False for a row with too few cells. Throws MassTextUnknown.
    bool Read(std::string_view row, PeptideIdentification& match);

private:
    EngineTable table_;
    const MsgfModifications& modifications_;
};

/// The spectrum file of a cell: what stands behind its last dot, the dot
/// included, becomes ".mgf". A name without a dot stays.
std::string SpectrumFile(std::string_view cell);

/// Sets bare sequence, residues around it and proteins from the cells; masses
/// are still in the sequence.
void ReadProteins(std::string_view peptide, std::string_view protein, PeptideIdentification& match);

/// Takes the masses out of the sequence, but for one right behind another (B-89),
/// and appends what they mean.
void ReadModifications(const MsgfModifications& modifications, PeptideIdentification& match);

} // namespace Vorlan::msgf

#endif // VORLAN_PEPIDENT_MSGFROW_H
