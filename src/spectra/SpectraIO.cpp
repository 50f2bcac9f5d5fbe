#include "SpectraIO.h"

#include "util/LineReader.h"

namespace Vorlan {

SpectraIO::SpectraIO() : pInput_(std::make_unique<LineReader>()) {}

SpectraIO::~SpectraIO() = default;

void SpectraIO::InitMember()
{
    constexpr std::size_t kUsualNumber = 256;
    cSpectrum_.vPeaks.clear();
    cSpectrum_.vPeaks.reserve(kUsualNumber);
}

void SpectraIO::CloseInputFile()
{
    pInput_->Close();
}

} // namespace Vorlan
