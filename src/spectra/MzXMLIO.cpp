#include "SpectraIO.h"

namespace Vorlan {

MzXMLIO::MzXMLIO()
{
    MzXMLIO::InitMember();
}

MzXMLIO::~MzXMLIO() = default;

void MzXMLIO::InitMember()
{
    SpectraIO::InitMember();
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
