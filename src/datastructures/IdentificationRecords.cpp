// The records of identifications, their sources and proteins.
#include <algorithm>

#include "DataStructures.h"
#include "datastructures/DataStructuresErrors.h"

namespace Vorlan {

// ---- IdentModification ---------------------------------------------------

IdentModification::IdentModification(const std::string& name, double mass, const std::string& site,
                                     const std::string& position, std::int32_t pos)
    : strName(name), dMass(mass), strSite(site), strPosition(position), nPos(pos)
{
}

void IdentModification::Clear()
{
    *this = IdentModification();
}

bool IdentModification::operator==(const IdentModification& other) const
{
    return strName == other.strName && dMass == other.dMass && strSite == other.strSite
           && strPosition == other.strPosition && nPos == other.nPos;
}

bool IdentModification::operator!=(const IdentModification& other) const
{
    return !(*this == other);
}

// ---- PeptideEvidence -----------------------------------------------------

// Deliberate: B-03. The end position has no field.
PeptideEvidence::PeptideEvidence(const std::string& accession, std::int32_t start,
                                 std::int32_t /*end*/, char before, char after)
    : strProteinAccession(accession), nStart(start), cBefore(before), cAfter(after)
{
}

// ---- PeptideIdentification -----------------------------------------------

void PeptideIdentification::Clear()
{
    *this = PeptideIdentification();
}

void PeptideIdentification::SortMod()
{
    if (!std::is_sorted(vMods.begin(), vMods.end(), bPosLess)) {
        std::stable_sort(vMods.begin(), vMods.end(), bPosLess);
    }
}

bool PeptideIdentification::bPosLess(const IdentModification& a, const IdentModification& b)
{
    return a.nPos < b.nPos;
}

bool PeptideIdentification::isModSame(const std::vector<IdentModification>& other) const
{
    return vMods == other;
}

bool PeptideIdentification::isTarget(const std::string& decoyTag) const
{
    if (bDecoy) {
        return false;
    }
    if (vEvidences.empty()) {
        errors::NoProteinInformation();
    }
    return std::none_of(vEvidences.begin(), vEvidences.end(), [&decoyTag](const auto& evidence) {
        return evidence.strProteinAccession.compare(0, decoyTag.size(), decoyTag) == 0;
    });
}

// ---- Sources -------------------------------------------------------------

PepIdentSource::PepIdentSource(const OpenMS::String& first, const OpenMS::String& second,
                               const OpenMS::String& third, const OpenMS::String& fourth,
                               PepIdentType::EPepIdentType type)
    : strFirst(first), strThird(third), strSecond(second), strFourth(fourth), eType(type)
{
}

PepIdentSource::PepIdentSource(const OpenMS::String& first, const OpenMS::String& second,
                               PepIdentType::EPepIdentType type)
    : strFirst(first), strSecond(second), eType(type)
{
}

PepIdentSource::PepIdentSource(const OpenMS::String& first, const OpenMS::String& second,
                               const std::vector<OpenMS::String>& firstList,
                               const std::vector<OpenMS::String>& secondList,
                               PepIdentType::EPepIdentType type)
    : strFirst(first), vFirstList(firstList), strSecond(second), vSecondList(secondList),
      eType(type)
{
}

DatasetSource::DatasetSource(const std::string& first, const std::string& second,
                             DatasetType::EDatasetType type)
    : strFirst(first), strSecond(second), eType(type)
{
}

// ---- DeltaMass, proteins -------------------------------------------------

void DeltaMass::setDeltaMass(double mass)
{
    dDeltaMass = mass;
}

CProtein::CProtein(const std::string& accession, const std::string& description,
                   const std::string& sequence)
    : strAccession(accession), strDescription(description), strSequence(sequence)
{
}

} // namespace Vorlan
