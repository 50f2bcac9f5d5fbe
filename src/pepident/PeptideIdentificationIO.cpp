#include "PeptideIdentificationIO.h"

#include "util/LineReader.h"

namespace Vorlan {

PeptideIdentificationIO::PeptideIdentificationIO(PepIdentType::EPepIdentType type)
    : eType_(type), pInput_(std::make_unique<LineReader>())
{
}

PeptideIdentificationIO::~PeptideIdentificationIO() = default;

PepIdentType::EPepIdentType PeptideIdentificationIO::eGetType() const
{
    return eType_;
}

} // namespace Vorlan
