#include <array>
#include <cstddef>
#include <string_view>

#include "ModificationDB.h"
#include "moddb/ClassificationTexts.h"
#include "moddb/ModificationDBErrors.h"
#include "util/LetterCase.h"

namespace Vorlan {

namespace {

constexpr std::array<std::string_view, CResidueModification::NUMBER_OF_TERM_SPECIFICITY>
    kTermSpecificities = {"Anywhere", "Any C-term", "Any N-term", "Protein C-term",
                          "Protein N-term"};

struct ClassificationNames {
    std::string_view display;
    std::string_view dump;
};

// Deliberate: B-38. British on display and American in the dump; nothing and
// "-" for the unknown one.
constexpr std::array<ClassificationNames, CResidueModification::NUMBER_OF_SOURCE_CLASSIFICATIONS>
    kClassifications = {{{"Artefact", "artifact"},
                         {"Hypothetical", "hypothetical"},
                         {"Natural", "natural"},
                         {"Post-translational", "post-translational"},
                         {"Multiple", "multiple"},
                         {"Chemical derivative", "chemical derivative"},
                         {"Isotopic label", "isotopic label"},
                         {"Pre-translational", "pre-translational"},
                         {"Other glycosylation", "other glycosylation"},
                         {"N-linked glycosylation", "n-linked glycosylation"},
                         {"AA substitution", "aa substitution"},
                         {"Other", "other"},
                         {"Non-standard residue", "non-standard residue"},
                         {"Co-translational", "co-translational"},
                         {"O-linked glycosylation", "o-linked glycosylation"},
                         {"", "-"}}};

/// value as a place in a table of size entries; size when it has none.
std::size_t PlaceOf(int value, std::size_t size)
{
    return value >= 0 && static_cast<std::size_t>(value) < size ? static_cast<std::size_t>(value)
                                                                : size;
}

} // namespace

CResidueModification::~CResidueModification() = default;

bool CResidueModification::operator==(const CResidueModification& other) const
{
    return strId_ == other.strId_ && strFullId_ == other.strFullId_
           && strUniModAccession_ == other.strUniModAccession_ && strFullName_ == other.strFullName_
           && eTermSpecificity_ == other.eTermSpecificity_ && strOrigin_ == other.strOrigin_
           && eSourceClassification_ == other.eSourceClassification_
           && dDiffAverageMass_ == other.dDiffAverageMass_ && dDiffMonoMass_ == other.dDiffMonoMass_
           && dNeutralLossMonoMass_ == other.dNeutralLossMonoMass_
           && dNeutralLossAverageMass_ == other.dNeutralLossAverageMass_;
}

bool CResidueModification::operator!=(const CResidueModification& other) const
{
    return !(*this == other);
}

void CResidueModification::setTermSpecificity(const std::string& name)
{
    for (std::size_t i = 0; i < kTermSpecificities.size(); ++i) {
        if (name == kTermSpecificities[i]) {
            eTermSpecificity_ = static_cast<TermSpecificity>(i);
            return;
        }
    }
    errors::InvalidTermSpecificityName(name);
}

std::string CResidueModification::getTermSpecificityName(TermSpecificity specificity) const
{
    const int value = specificity == NUMBER_OF_TERM_SPECIFICITY ? eTermSpecificity_ : specificity;
    const std::size_t place = PlaceOf(value, kTermSpecificities.size());
    if (place == kTermSpecificities.size()) {
        errors::InvalidTermSpecificity();
    }
    return std::string(kTermSpecificities[place]);
}

void CResidueModification::setSourceClassification(const OpenMS::String& text)
{
    std::string lower = LowerAscii(text);
    if (lower == "artefact") {
        lower = "artifact";
    }
    eSourceClassification_ = UNKNOWN;
    for (std::size_t i = 0; i < kClassifications.size(); ++i) {
        if (lower == kClassifications[i].dump) {
            eSourceClassification_ = static_cast<SourceClassification>(i);
        }
    }
}

std::string
CResidueModification::getSourceClassificationName(SourceClassification classification) const
{
    const int value = classification == NUMBER_OF_SOURCE_CLASSIFICATIONS ? eSourceClassification_
                                                                         : classification;
    const std::size_t place = PlaceOf(value, kClassifications.size());
    return place == kClassifications.size() ? "Unknown"
                                            : std::string(kClassifications[place].display);
}

std::string_view DumpTextOf(CResidueModification::SourceClassification classification)
{
    const std::size_t place = PlaceOf(classification, kClassifications.size());
    return place == kClassifications.size() ? std::string_view() : kClassifications[place].dump;
}

} // namespace Vorlan
