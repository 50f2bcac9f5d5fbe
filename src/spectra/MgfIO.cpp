#include "SpectraIO.h"

#include <string_view>

#include "spectra/MgfRecord.h"
#include "spectra/SpectrumIndex.h"
#include "spectra/TitleNames.h"
#include "util/LineReader.h"

namespace Vorlan {

MgfIO::MgfIO()
{
    MgfIO::InitMember();
}

MgfIO::~MgfIO() = default;

void MgfIO::InitMember()
{
    SpectraIO::InitMember();
    strExtension_ = ".mgf";
}

void MgfIO::SetMap()
{
    pIndex_->Clear();
    TitleNames names;
    std::string_view line;
    // Deliberate: B-23. The first letter decides what a line is.
    while (pInput_->NextBeginningWith('B', line)) {
        const std::uint64_t position = pInput_->Offset();
        // Deliberate: B-18. The title may stand in a later record.
        if (!pInput_->NextBeginningWith('T', line)) {
            break;
        }
        FindTitleNames(pIndex_->Keep(line), names);
        pIndex_->Add(names.title, position);
        if (names.scan) {
            pIndex_->Add(*names.scan, position);
        }
        if (names.word) {
            pIndex_->Add(*names.word, position);
        }
        if (!names.dotted.empty()) {
            pIndex_->Add(pIndex_->Keep(names.dotted), position);
        }
    }
    pIndex_->Finish();
}

bool MgfIO::bGetOneSpec()
{
    mgf::ReadRecord(*pInput_, cSpectrum_, cPeak_);
    return true;
}

bool MgfIO::bPutOneSpec(Spectrum& spectrum)
{
    mgf::WriteRecord(ofsOutput_, spectrum);
    return true; // Deliberate: B-15.
}

} // namespace Vorlan
