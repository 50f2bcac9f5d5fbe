// Where peptides stand in the proteins of a database.
#ifndef PELGRIN_PEPTIDEPLACES_H
#define PELGRIN_PEPTIDEPLACES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "proteins/PeptideSearch.h"
#include "proteins/ProteinDatabase.h"

namespace pelgrin {

struct Place {
    std::uint32_t pattern = 0; ///< of the search
    std::uint32_t protein = 0; ///< its index in the database
    std::uint64_t start = 0;   ///< of the peptide in the protein, from 0
};

/// Places by protein, then start.
struct PlaceRange {
    const Place* first = nullptr;
    const Place* last = nullptr; ///< behind the last one

    const Place* begin() const { return first; }
    const Place* end() const { return last; }
    bool IsEmpty() const { return first == last; }
    /// Those in one protein.
    PlaceRange In(std::size_t protein) const;
};

class PeptidePlaces {
public:
    /// Finds every place of every peptide, but for proteins whose header repeats
    /// an accession.
    PeptidePlaces(const ProteinDatabase& database, const std::vector<std::string>& peptides,
                  PeptideSearch::LeucineIsoleucine letters);

    const PeptideSearch& Search() const { return search_; }
    /// Those of a peptide; none for one that is not searched.
    PlaceRange Of(std::size_t peptide) const;
    /// Those of all patterns, by protein: for one protein after the other.
    const std::vector<Place>& ByProtein() const { return byProtein_; }

private:
    void FindAll(const ProteinDatabase& database);
    void SortByPattern();

    PeptideSearch search_;
    std::vector<Place> byProtein_;
    std::vector<Place> byPattern_;
    std::vector<std::size_t> begins_; ///< of each pattern in byPattern_, and the end
};

} // namespace pelgrin

#endif // PELGRIN_PEPTIDEPLACES_H
