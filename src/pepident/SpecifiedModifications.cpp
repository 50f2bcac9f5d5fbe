#include "pepident/SpecifiedModifications.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "TulkParam.h"
#include "pepident/MassCombinations.h"
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
    if (std::isnan(delta)) { // which a map cannot hold
        errors::MassUnexplained();
    }
    const Question question(delta, place.residue, place.position == 1, place.position > 5,
                            place.before == '-', place.after == '-');
    auto answer = answers_.find(question);
    if (answer == answers_.end()) {
        answer = answers_.emplace(question, Find(delta, place)).first;
    }
    return answer->second;
}

std::vector<IdentModification> MassExplainer::Find(double delta, const ResiduePlace& place) const
{
    std::vector<const IdentModification*> candidates;
    std::vector<double> masses;
    for (const IdentModification& mod : mods_) {
        if (FitsPlace(mod, place)) {
            candidates.push_back(&mod);
            masses.push_back(mod.dMass);
        }
    }
    std::vector<IdentModification> found;
    for (const std::size_t i : MassCombinations(masses).Find(delta)) {
        found.push_back(*candidates[i]);
    }
    if (found.empty()) {
        errors::MassUnexplained();
    }
    return found;
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
