#include "pepident/SiteRules.h"

#include "pepident/PeptideIdentificationErrors.h"

namespace Vorlan {

namespace {

/// The first character of the site, NUL for an empty one.
char FirstOfSite(const IdentModification& mod)
{
    return mod.strSite.empty() ? '\0' : mod.strSite.front();
}

/// A methionine that starts the protein is often cut off, so its modification
/// is looked for on what follows it, too.
bool IsCutOffMethionine(const IdentModification& mod, const ResiduePlace& place)
{
    return FirstOfSite(mod) == 'M' && place.before == '-'; // Deliberate: B-56
}

bool FitsResidue(const IdentModification& mod, const ResiduePlace& place)
{
    return FirstOfSite(mod) == place.residue;
}

bool FitsCTerm(const IdentModification& mod, const ResiduePlace& place)
{
    // Deliberate: B-55. No C-terminus up to position 5, at any position behind.
    return place.position > 5 && (mod.strSite == "C-term" || FitsResidue(mod, place));
}

} // namespace

bool FitsPlace(const IdentModification& mod, const ResiduePlace& place)
{
    const std::string& type = mod.strPosition;
    const bool isFirst = place.position == 1;
    if (type == "Anywhere") {
        return FitsResidue(mod, place) || (isFirst && IsCutOffMethionine(mod, place));
    }
    if (type == "Any N-term") {
        return isFirst
               && (mod.strSite == "N-term" || FitsResidue(mod, place)
                   || IsCutOffMethionine(mod, place));
    }
    if (type == "Protein N-term") {
        return isFirst && place.before == '-'
               && (mod.strSite == "N-term" || FitsResidue(mod, place)
                   || IsCutOffMethionine(mod, place));
    }
    if (type == "Any C-term") {
        return FitsCTerm(mod, place);
    }
    if (type == "Protein C-term") {
        return place.after == '-' && FitsCTerm(mod, place);
    }
    errors::PositionUnknown(type);
}

std::int32_t RecordedPosition(const IdentModification& mod, const ResiduePlace& place,
                              char firstResidue)
{
    if (NamesTerminus(mod, "N-term")) {
        return 0;
    }
    if (NamesTerminus(mod, "C-term")) {
        return place.position + 1;
    }
    const bool isCutOff =
        mod.strSite == "M" && place.position == 1 && firstResidue != 'M' && place.before == '-';
    return isCutOff ? 0 : place.position;
}

bool NamesTerminus(const IdentModification& mod, const char* terminus)
{
    return mod.strPosition.find(terminus) != std::string::npos;
}

} // namespace Vorlan
