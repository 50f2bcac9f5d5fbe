#include "SpectraIO.h"

#include "spectra/SpectrumIndex.h"

namespace Vorlan {

MzMLIO::MzMLIO()
{
    MzMLIO::InitMember();
}

MzMLIO::~MzMLIO() = default;

void MzMLIO::InitMember()
{
    cSpectrum_.vPeaks.clear();
    cSpectrum_.vPeaks.reserve(256);
    strExtension_ = ".mzML";
}

// Deliberate: B-73. Nothing is parsed and nothing written.

void MzMLIO::SetMap() {}

bool MzMLIO::bGetOneSpec()
{
    return false;
}

bool MzMLIO::bPutOneSpec(Spectrum&)
{
    return false;
}

} // namespace Vorlan
