#include "PeptideIdentificationIO.h"

#include "pepident/PepXmlFile.h"

namespace Vorlan {

CometPepXMLPepIdentIO::CometPepXMLPepIdentIO()
    : MSFraggerPepXMLPepIdentIO(PepIdentType::CometPepXml)
{
}

CometPepXMLPepIdentIO::~CometPepXMLPepIdentIO() = default;

void CometPepXMLPepIdentIO::Load(std::vector<PeptideIdentification>& vMatches)
{
    LoadPepXml(strFilePath_, PepXmlScore::Expect, vMatches);
}

} // namespace Vorlan
