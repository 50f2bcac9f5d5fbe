#include "PeptideIdentificationIO.h"

#include <string_view>

#include "pepident/PFind3Row.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/ReaderSteps.h"
#include "platform/OutputFile.h"
#include "util/LineReader.h"

namespace Vorlan {

Pfind3PepIdentIO::Pfind3PepIdentIO() : PeptideIdentificationIO(PepIdentType::Pfind3Spectra) {}

Pfind3PepIdentIO::~Pfind3PepIdentIO() = default;

void Pfind3PepIdentIO::InitLoad(const PepIdentSource& source)
{
    strFilePath_ = ResultPathOf(source);
    pInput_->Open(strFilePath_, LineReader::Mode::Text);
}

void Pfind3PepIdentIO::Load(std::vector<PeptideIdentification>& vMatches)
{
    if (pInput_->Failed()) {
        errors::NotReadable("Pfind3PepIdentIO::Load", strFilePath_);
    }
    std::string header;
    pInput_->NextOfAnyLength(header);
    pfind::RowReader reader(header);
    std::string_view line;
    while (pInput_->Next(line)) {
        PeptideIdentification match;
        if (reader.Read(line, match)) {
            vMatches.push_back(std::move(match));
        }
    }
}

void Pfind3PepIdentIO::EndLoad()
{
    pInput_->Close();
}

void Pfind3PepIdentIO::InitSave(const std::string& path)
{
    strFilePath_ = path;
    platform::OpenOutput(ofsOutput_, path);
}

void Pfind3PepIdentIO::Save(const std::vector<PeptideIdentification>&) {}

void Pfind3PepIdentIO::EndSave()
{
    CloseOutput(ofsOutput_);
}

void Pfind3PepIdentIO::GetResultNumberOfFile() {}

} // namespace Vorlan
