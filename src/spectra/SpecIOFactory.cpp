#include "SpectraIO.h"

namespace Vorlan {

SpectraIO* SpecIOFactory::pGetSpectraIO(DatasetType::EDatasetType type)
{
    switch (type) {
    case DatasetType::Mgf: return new MgfIO();
    default: return nullptr;
    }
}

void SpecIOFactory::DesctroySpectraIO(SpectraIO*& pReader)
{
    delete pReader;
    pReader = nullptr;
}

} // namespace Vorlan
