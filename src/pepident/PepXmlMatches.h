// Matches from the elements of a pepXML document.
#ifndef VORLAN_PEPIDENT_PEPXMLMATCHES_H
#define VORLAN_PEPIDENT_PEPXMLMATCHES_H

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "DataStructures.h"
#include "pepident/SpecifiedModifications.h"
#include "util/XmlReading.h"

namespace Vorlan {

/// Which "search_score" of a hit is its main score.
enum class PepXmlScore { Third, Expect };

/// Collects one match for each "spectrum_query" with a "search_hit", from
///
///     msms_pipeline_analysis / msms_run_summary / spectrum_query
///         / search_result / search_hit / search_score
///                                      / modification_info / mod_aminoacid_mass
///
/// Of runs, results of a query, hits and modification_info only the first of
/// its parent is read.
class PepXmlMatches : public XmlListener {
public:
    /// ending is that of dataset names, without its dot.
    PepXmlMatches(PepXmlScore score, std::string ending, std::vector<IdentModification> specified);

    void Begin(std::string_view name, std::string_view attributes) override;
    void End() override;
    void Restart() override;

    /// The document has an element.
    bool HasRoot() const { return seen_[Root]; }

    /// Appends the matches to all. Throws then what could not be explained: the
    /// matches in front of it are appended, none behind it was made.
    void MoveTo(std::vector<PeptideIdentification>& all);

private:
    /// How far the way to what is read is followed.
    enum Level : std::size_t { Nothing, Root, Run, Query, Result, Hit, Modifications };

    bool Enters(std::string_view name, std::string_view attributes);
    bool IsFirst(bool isWanted);
    void BeginRun(std::string_view attributes);
    void BeginQuery(std::string_view attributes);
    void BeginHit(std::string_view attributes);
    void BeginModifications(std::string_view attributes);
    void TakeScore(std::string_view attributes);
    void TakeTerminus(const char* terminus, double mass, std::size_t position);
    void TakeModification(std::string_view attributes);
    void Explain(double mass, std::size_t position);
    ResiduePlace PlaceAt(std::size_t position) const;
    PeptideIdentification& Match() { return matches_.back(); }
    const PeptideIdentification& Match() const { return matches_.back(); }

    const PepXmlScore score_;
    const std::string ending_;
    MassExplainer explainer_;

    std::size_t depth_ = 0;             ///< open elements
    std::size_t level_ = Nothing;       ///< those of them that are on the way
    bool seen_[Modifications + 2] = {}; ///< an element of this level, in its parent

    std::string dataset_;
    bool hasHit_ = false;                        ///< that of the query at hand is whole
    std::size_t scores_ = 0;                     ///< of the hit at hand
    bool hasExpect_ = false;                     ///< one of them is called "expect"
    std::vector<PeptideIdentification> matches_; ///< the last one may be that of a query still open
    std::exception_ptr failure_;                 ///< ends the reading of matches
};

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_PEPXMLMATCHES_H
