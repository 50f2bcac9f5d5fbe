#include "PeptideIdentificationIO.h"

#include <utility>

#include "pepident/PepXmlFile.h"
#include "pepident/ReaderSteps.h"
#include "pepident/SiteRules.h"
#include "pepident/SpecifiedModifications.h"

namespace Vorlan {

MSFraggerPepXMLPepIdentIO::MSFraggerPepXMLPepIdentIO()
    : PeptideIdentificationIO(PepIdentType::MsFraggerPepXml)
{
}

MSFraggerPepXMLPepIdentIO::MSFraggerPepXMLPepIdentIO(PepIdentType::EPepIdentType type)
    : PeptideIdentificationIO(type)
{
}

MSFraggerPepXMLPepIdentIO::~MSFraggerPepXMLPepIdentIO() = default;

void MSFraggerPepXMLPepIdentIO::InitLoad(const PepIdentSource& source)
{
    strFilePath_ = ResultPathOf(source);
}

void MSFraggerPepXMLPepIdentIO::Load(std::vector<PeptideIdentification>& vMatches)
{
    LoadPepXml(strFilePath_, PepXmlScore::Third, vMatches);
}

void MSFraggerPepXMLPepIdentIO::EndLoad() {}

void MSFraggerPepXMLPepIdentIO::InitSave(const std::string&) {}

void MSFraggerPepXMLPepIdentIO::Save(const std::vector<PeptideIdentification>&) {}

void MSFraggerPepXMLPepIdentIO::EndSave() {}

void MSFraggerPepXMLPepIdentIO::GetResultNumberOfFile() {}

void MSFraggerPepXMLPepIdentIO::getMod(std::vector<IdentModification>& vResult, double dDelta,
                                       int nPos, char cResidue, char cBefore, char cAfter)
{
    vResult.clear();
    vResult =
        MassExplainer(SpecifiedModifications()).Explain(dDelta, {nPos, cResidue, cBefore, cAfter});
}

void MSFraggerPepXMLPepIdentIO::getModComb(std::vector<Combination>& vCombinations,
                                           const std::vector<IdentModification>& vCandidates, int k)
{
    // Deliberate: B-58. Ordered, with repetition: n to the power k of them.
    // The candidates may be those of a former combination.
    std::vector<Combination> combinations(k < 1 ? 0 : 1);
    for (int size = 1; size <= k; ++size) {
        std::vector<Combination> longer;
        for (const Combination& shorter : combinations) {
            for (const IdentModification& mod : vCandidates) {
                Combination& next = longer.emplace_back(shorter);
                next.first = size == 1 ? mod.dMass : next.first + mod.dMass;
                next.second.push_back(mod);
            }
        }
        combinations = std::move(longer);
    }
    vCombinations = std::move(combinations);
}

bool MSFraggerPepXMLPepIdentIO::SatisfySpecificity(IdentModification mod, int nPos, char cResidue,
                                                   char cBefore, char cAfter)
{
    return FitsPlace(mod, {nPos, cResidue, cBefore, cAfter});
}

} // namespace Vorlan
