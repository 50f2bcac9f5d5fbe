// The modifications that the parameters of the run specify, and what a reader
// asks of them.
#ifndef VORLAN_PEPIDENT_SPECIFIEDMODIFICATIONS_H
#define VORLAN_PEPIDENT_SPECIFIEDMODIFICATIONS_H

#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "DataStructures.h"
#include "pepident/MassCombinations.h"
#include "pepident/SiteRules.h"

namespace Vorlan {

/// The specified modifications of CTulkParam; none when its groups are unread.
std::vector<IdentModification> SpecifiedModifications();

/// As a parameter file writes it: "Oxidation (M)", "Acetyl (Protein N-term)",
/// "Gln->pyro-Glu (Any N-term Q)".
std::string NameWithSite(const IdentModification& mod);

/// Explains masses by modifications and remembers the answers.
class MassExplainer {
public:
    explicit MassExplainer(std::vector<IdentModification> mods);
    MassExplainer(const MassExplainer&) = delete; // what it holds points into it
    MassExplainer& operator=(const MassExplainer&) = delete;

    /// The fewest modifications that fit the place and add up to delta (Da), as
    /// MassCombinations::Find tells. Good as long as this. Throws
    /// MassUnexplained when there are none, PositionUnknown as FitsPlace.
    const std::vector<IdentModification>& Explain(double delta, const ResiduePlace& place);

    /// The modification of a terminus, "N-term" or "C-term", whose mass is
    /// nearest to mass, Da, and nearer than MassCombinations::kTolerance; null
    /// when there is none. place is the residue at that terminus.
    const IdentModification* OfTerminus(double mass, const char* terminus,
                                        const ResiduePlace& place) const;

private:
    /// What decides which modifications fit a place: the residue, and whether
    /// the place is the first one, is behind the fifth, follows the start and
    /// precedes the end of a protein.
    using Kind = std::tuple<char, bool, bool, bool, bool>;

    struct Candidates {
        std::vector<const IdentModification*> mods;
        MassCombinations masses;
    };

    Candidates& CandidatesFor(const Kind& kind, const ResiduePlace& place);

    const std::vector<IdentModification> mods_;
    std::map<Kind, Candidates> candidates_;
    std::map<std::pair<Kind, double>, std::vector<IdentModification>> answers_;
};

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_SPECIFIEDMODIFICATIONS_H
