#include "SpectraIO.h"

namespace Vorlan {

SpectraIO* SpecIOFactory::pGetSpectraIO(DatasetType::EDatasetType type)
{
    switch (type) {
    case DatasetType::Dta: return new DtaIO();
    case DatasetType::Mgf: return new MgfIO();
    case DatasetType::MzXml: return new MzXMLIO();
    case DatasetType::MzMl: return new MzMLIO();
    default: return nullptr;
    }
}

void SpecIOFactory::DesctroySpectraIO(SpectraIO*& pReader)
{
    delete pReader;
    pReader = nullptr;
}

} // namespace Vorlan
