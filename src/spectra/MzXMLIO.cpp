#include "SpectraIO.h"

#include "spectra/SpectrumIndex.h"

namespace Vorlan {

MzXMLIO::MzXMLIO()
{
    MzXMLIO::InitMember();
}

MzXMLIO::~MzXMLIO() = default;

void MzXMLIO::InitMember()
{
    cSpectrum_.vPeaks.clear();
    cSpectrum_.vPeaks.reserve(256);
    strExtension_ = ".mzXML";
}

// Deliberate: B-73. Nothing is parsed and nothing written.

void MzXMLIO::SetMap() {}

bool MzXMLIO::bGetOneSpec()
{
    return false;
}

bool MzXMLIO::bPutOneSpec(Spectrum&)
{
    return false;
}

} // namespace Vorlan
