#include "PeptideIdentificationIO.h"

namespace Vorlan {

PeptideIdentificationIO* PepIdentIOFactory::pGetPepIdentIO(PepIdentType::EPepIdentType type)
{
    switch (type) {
    case PepIdentType::Pfind28Txt: return new PfindTXTPepIdentIO();
    case PepIdentType::MsFraggerPepXml: return new MSFraggerPepXMLPepIdentIO();
    case PepIdentType::SequestTxt: return new SequestTXTPepIdentIO();
    case PepIdentType::MaxQuant: return new MaxQuantTXTPepIdentIO();
    case PepIdentType::CalvexTxt: return new TulkTXTPepIdentIO();
    case PepIdentType::Pfind3Spectra: return new Pfind3PepIdentIO();
    case PepIdentType::MsgfTsv: return new MSGFTSVPepIdentIO();
    case PepIdentType::CometPepXml: return new CometPepXMLPepIdentIO();
    default: return nullptr;
    }
}

void PepIdentIOFactory::DesctroyPepIdentIO(PeptideIdentificationIO*& pReader)
{
    delete pReader;
    pReader = nullptr;
}

} // namespace Vorlan
