#include "PeptideIdentificationIO.h"

namespace Vorlan {

PeptideIdentificationIO* PepIdentIOFactory::pGetPepIdentIO(PepIdentType::EPepIdentType type)
{
    switch (type) {
    case PepIdentType::CalvexTxt: return new TulkTXTPepIdentIO();
    default: return nullptr;
    }
}

void PepIdentIOFactory::DesctroyPepIdentIO(PeptideIdentificationIO*& pReader)
{
    delete pReader;
    pReader = nullptr;
}

} // namespace Vorlan
