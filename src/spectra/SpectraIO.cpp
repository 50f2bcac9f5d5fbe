#include "SpectraIO.h"

#include "util/LineReader.h"

namespace Vorlan {

SpectraIO::SpectraIO() : pInput_(std::make_unique<LineReader>()) {}

SpectraIO::~SpectraIO() = default;

void SpectraIO::CloseInputFile()
{
    pInput_->Close();
}

} // namespace Vorlan
