// proteins.tsv: every protein that holds a peptide, shared ones too.
#ifndef PELGRIN_PROTEINTABLE_H
#define PELGRIN_PROTEINTABLE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "proteins/ProteinMap.h"

namespace pelgrin {

/// A modification at one place of a protein.
struct ModifiedSite {
    std::string site;           ///< "M35"; "N-term12" where a peptide's terminus is modified
    std::string name;           ///< "Oxidation (M)"
    std::uint64_t position = 0; ///< of that residue, or of the peptide's first or last, from 1
    std::uint64_t records = 0;
};

/// One row of the table.
struct ProteinRow {
    struct PeptidePlace {
        std::uint32_t peptide = 0;
        std::uint64_t start = 0; ///< from 1
        std::uint64_t end = 0;   ///< of its last residue, from 1
    };

    std::size_t protein = 0;          ///< its index in the database
    std::uint64_t records = 0;        ///< those whose peptide stands in it
    std::uint64_t peptides = 0;       ///< different sequences
    std::uint64_t covered = 0;        ///< residues in at least one place
    std::vector<PeptidePlace> places; ///< by start, then end
    std::vector<ModifiedSite> sites;  ///< by position, then name
};

/// Makes the rows of a map one after the other, in the order of the database.
class ProteinRows {
public:
    /// Both must live as long. records are those of the map.
    ProteinRows(const ProteinMap& map, const std::vector<Vorlan::PeptideIdentification>& records);

    void ForEach(const std::function<void(const ProteinRow&)>& handler) const;

private:
    struct ModificationOf {
        std::int32_t position = 0; ///< as IdentModification::nPos
        std::uint32_t name = 0;    ///< in names_
    };
    /// The records with one sequence and the same modifications.
    struct Form {
        std::vector<ModificationOf> mods;
        std::uint64_t records = 0;
    };
    struct Hit;

    void TakeNames(const std::vector<Vorlan::PeptideIdentification>& records);
    void TakeForms(const std::vector<Vorlan::PeptideIdentification>& records);
    ProteinRow RowOf(const Place* first, const Place* last) const;
    void AddHits(const ProteinRow::PeptidePlace& place, std::vector<Hit>& hits) const;
    std::vector<ModifiedSite> SitesOf(std::vector<Hit>& hits, const std::string& sequence) const;

    const ProteinMap& map_;
    std::vector<std::uint64_t> recordsOf_;               ///< of each peptide
    std::vector<std::vector<std::uint32_t>> peptidesOf_; ///< of each pattern
    std::vector<std::string> names_;                     ///< of modifications, sorted
    std::vector<Form> forms_;                            ///< those with modifications
    std::vector<std::vector<std::uint32_t>> formsOf_;    ///< of each peptide
};

/// The header line of proteins.tsv, and the line of a row.
extern const std::string_view kProteinHeader;
std::string LineOf(const ProteinRow& row, const ProteinMap& map);

/// The sites of most records: a few, as "P1 C45 Carbamidomethyl (C)".
class TopSites {
public:
    struct Entry {
        std::string text;
        std::uint64_t records = 0;
    };

    void Offer(const ProteinRow& row, const ProteinMap& map);
    /// By descending number of records; those of equal numbers as offered.
    const std::vector<Entry>& Entries() const { return entries_; }
    /// All that were offered.
    std::uint64_t Offered() const { return offered_; }

private:
    std::vector<Entry> entries_;
    std::uint64_t offered_ = 0;
};

} // namespace pelgrin

#endif // PELGRIN_PROTEINTABLE_H
