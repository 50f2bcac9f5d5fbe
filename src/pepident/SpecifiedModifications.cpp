#include "pepident/SpecifiedModifications.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "TulkParam.h"
#include "pepident/PeptideIdentificationErrors.h"

namespace Vorlan {

std::vector<IdentModification> SpecifiedModifications()
{
    const CSearchParam* const search = CTulkParam::getInstance()->getSearchParam();
    return search == nullptr ? std::vector<IdentModification>() : search->getSpecifiedMod();
}

std::string NameWithSite(const IdentModification& mod)
{
    const bool isTerminus = mod.strSite == "N-term" || mod.strSite == "C-term";
    std::string site = mod.strPosition == "Anywhere" ? mod.strSite : mod.strPosition;
    if (mod.strPosition != "Anywhere" && !isTerminus) {
        site += " " + mod.strSite;
    }
    return mod.strName + " (" + site + ")";
}

MassExplainer::MassExplainer(std::vector<IdentModification> mods) : mods_(std::move(mods)) {}

const std::vector<IdentModification>& MassExplainer::Explain(double delta,
                                                             const ResiduePlace& place)
{
    const Kind kind(place.residue, place.position == 1, place.position > 5, place.before == '-',
                    place.after == '-');
    Candidates& candidates = CandidatesFor(kind, place);
    if (std::isnan(delta)) { // which a map cannot hold
        errors::MassUnexplained();
    }
    const auto [answer, isNew] = answers_.try_emplace({kind, delta});
    std::vector<IdentModification>& found = answer->second;
    if (isNew) {
        for (const std::size_t i : candidates.masses.Find(delta)) {
            found.push_back(*candidates.mods[i]);
        }
    }
    if (found.empty()) {
        errors::MassUnexplained();
    }
    return found;
}

MassExplainer::Candidates& MassExplainer::CandidatesFor(const Kind& kind, const ResiduePlace& place)
{
    const auto known = candidates_.find(kind);
    if (known != candidates_.end()) {
        return known->second;
    }
    std::vector<const IdentModification*> fitting;
    std::vector<double> masses;
    for (const IdentModification& mod : mods_) {
        if (FitsPlace(mod, place)) {
            fitting.push_back(&mod);
            masses.push_back(mod.dMass);
        }
    }
    return candidates_.emplace(kind, Candidates{std::move(fitting), MassCombinations(masses)})
        .first->second;
}

const IdentModification* MassExplainer::OfTerminus(double mass, const char* terminus,
                                                   const ResiduePlace& place) const
{
    const IdentModification* nearest = nullptr;
    double least = MassCombinations::kTolerance;
    for (const IdentModification& mod : mods_) {
        const bool fits = NamesTerminus(mod, terminus)
                          && (mod.strSite == terminus
                              || (!mod.strSite.empty() && mod.strSite.front() == place.residue));
        const double difference = std::abs(mass - mod.dMass);
        if (fits && difference < least) {
            nearest = &mod;
            least = difference;
        }
    }
    return nearest;
}

} // namespace Vorlan
