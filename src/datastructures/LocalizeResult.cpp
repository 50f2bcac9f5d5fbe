#include <iterator>
#include <string_view>

#include "DataStructures.h"
#include "datastructures/DataStructuresErrors.h"

namespace Vorlan {

namespace {

constexpr std::string_view kNTermSite = "MOD_N_TERM";
constexpr std::string_view kCTermSite = "MOD_C_TERM";

/// In the order of the values of ETermSpecificity.
constexpr std::string_view kTermNames[] = {"Anywhere", "C-term", "N-term", "Protein C-term",
                                           "Protein N-term"};
static_assert(std::size(kTermNames) == LocalizeResult::NUMBER_OF_TERM_SPECIFICITY);

constexpr int kLetterOffset = 'A' - LocalizeResult::MOD_A;

} // namespace

LocalizeResult::LocalizeResult(std::uint64_t index, EModSite site, ETermSpecificity pos,
                               double prob)
    : nIndex(index), eSite(site), ePos(pos), dProb(prob)
{
}

LocalizeResult::ETermSpecificity LocalizeResult::getPos() const
{
    return ePos;
}

void LocalizeResult::setPos(ETermSpecificity pos)
{
    ePos = pos;
}

double LocalizeResult::getProb() const
{
    return dProb;
}

void LocalizeResult::setProb(double prob)
{
    dProb = prob;
}

void LocalizeResult::setSite(EModSite site)
{
    eSite = site;
}

OpenMS::String LocalizeResult::transEModSiteToString(EModSite site)
{
    if (site == MOD_N_TERM) {
        return std::string(kNTermSite);
    }
    if (site == MOD_C_TERM) {
        return std::string(kCTermSite);
    }
    // Deliberate: B-04. Unsigned, so that no stored number overflows.
    const unsigned code = static_cast<unsigned>(site) + kLetterOffset;
    return std::string(1, static_cast<char>(static_cast<unsigned char>(code)));
}

LocalizeResult::EModSite LocalizeResult::transStringToEModSite(const OpenMS::String& site)
{
    if (site == kNTermSite) {
        return MOD_N_TERM;
    }
    if (site == kCTermSite) {
        return MOD_C_TERM;
    }
    // Deliberate: B-05.
    const char first = site.empty() ? '\0' : site.front();
    if (first < 'A' || first > 'Z') {
        errors::NoSuchModificationSite(static_cast<unsigned char>(first));
    }
    return static_cast<EModSite>(first - kLetterOffset);
}

OpenMS::String LocalizeResult::transETermSpecificityToString(ETermSpecificity pos)
{
    if (pos < ANYWHERE || pos >= NUMBER_OF_TERM_SPECIFICITY) {
        errors::NotATermSpecificity();
    }
    return std::string(kTermNames[pos]);
}

LocalizeResult::ETermSpecificity
LocalizeResult::transStringToETermSpecificity(const OpenMS::String& pos)
{
    // Deliberate: B-06. Each name is compared as a prefix.
    for (int value = ANYWHERE; value < NUMBER_OF_TERM_SPECIFICITY; ++value) {
        if (pos.compare(0, kTermNames[value].size(), kTermNames[value]) == 0) {
            return static_cast<ETermSpecificity>(value);
        }
    }
    errors::UnknownTermSpecificity(pos);
}

} // namespace Vorlan
