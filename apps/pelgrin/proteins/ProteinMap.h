// The proteins of a run's matches: what their evidences lack is filled in.
#ifndef PELGRIN_PROTEINMAP_H
#define PELGRIN_PROTEINMAP_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "DataStructures.h"
#include "proteins/PeptidePlaces.h"
#include "proteins/ProteinCounts.h"
#include "proteins/ProteinDatabase.h"

namespace pelgrin {

/// What is asked of the proteins.
struct ProteinPlan {
    std::string database; ///< path of a FASTA file
    bool equateIl = false;
    std::optional<std::string> decoyTag; ///< how accessions of decoys begin
};

/// The different sequences of records, and where they stand.
class ProteinMap {
public:
    using Record = Vorlan::PeptideIdentification;

    /// Finds the sequences of the records in the proteins of the database, which
    /// must live as long.
    ProteinMap(const ProteinDatabase& database, const std::vector<Record>& records, bool equateIl);

    const ProteinDatabase& Database() const { return database_; }
    const PeptidePlaces& Places() const { return places_; }
    /// The different sequences, in the order first met.
    const std::vector<std::string>& Peptides() const { return peptides_.sequences; }
    /// The peptide of each record.
    const std::vector<std::uint32_t>& PeptideOf() const { return peptides_.ofRecord; }

private:
    struct PeptideList {
        explicit PeptideList(const std::vector<Record>& records);
        std::vector<std::string> sequences;
        std::vector<std::uint32_t> ofRecord;
    };

    const ProteinDatabase& database_;
    PeptideList peptides_;
    PeptidePlaces places_;
};

/// Fills in the evidences of the records of map, in place, and counts:
/// - An evidence that names a protein with the peptide gets the start and the
///   residues that it lacks (-1, 'X') from the first place there that agrees with
///   those it has, else from the first one. Starts count from 1; '-' stands
///   for the end of a protein. What the engine gave stays as it is.
/// - Other proteins with the peptide get an evidence each, in the order of the
///   database. Decoys are not added to a record that is a target: its table
///   would read back as that of a decoy. A record without evidences is a
///   target when one of its proteins is.
ProteinCounts FillEvidences(const ProteinMap& map, const std::optional<std::string>& decoyTag,
                            std::vector<Vorlan::PeptideIdentification>& records);

} // namespace pelgrin

#endif // PELGRIN_PROTEINMAP_H
