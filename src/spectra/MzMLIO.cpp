#include "SpectraIO.h"

namespace Vorlan {

MzMLIO::MzMLIO()
{
    MzMLIO::InitMember();
}

MzMLIO::~MzMLIO() = default;

void MzMLIO::InitMember()
{
    SpectraIO::InitMember();
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
