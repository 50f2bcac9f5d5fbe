// The rows of msms.txt and peptides.txt of MaxQuant.
#ifndef VORLAN_PEPIDENT_MAXQUANTROW_H
#define VORLAN_PEPIDENT_MAXQUANTROW_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "DataStructures.h"
#include "pepident/EngineTable.h"

namespace Vorlan::maxquant {

/// A peptide: its proteins, and the rows of msms.txt that identify it.
struct Peptide {
    std::vector<PeptideEvidence> evidences;
    std::vector<std::int32_t> rows; ///< counted from 0
};

/// Reads the rows of one peptides.txt.
class PeptideReader {
public:
    /// Ends the process for a missing column.
    explicit PeptideReader(std::string_view headerLine);

    /// False for a row with too few cells.
    bool Read(std::string_view row, Peptide& peptide);

private:
    EngineTable table_;
    TabRow list_;
};

/// Reads the rows of one msms.txt.
class MatchReader {
public:
    /// Ends the process for a missing column.
    MatchReader(std::string_view headerLine, std::vector<IdentModification> specified);

    /// False for a row with too few cells. Throws AbbreviationUnknown.
    bool Read(std::string_view row, const Peptide& peptide, PeptideIdentification& match);

private:
    EngineTable table_;
    std::vector<IdentModification> specified_;
};

/// The spectrum file of a "Raw file" cell: what stands behind its first dot, the
/// dot included, becomes ".mgf", which is appended to a name without a dot.
std::string SpectrumFile(std::string_view cell);

} // namespace Vorlan::maxquant

#endif // VORLAN_PEPIDENT_MAXQUANTROW_H
