#include "PeptideIdentificationIO.h"

#include <string_view>

#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/ReaderSteps.h"
#include "pepident/SequestRow.h"
#include "platform/OutputFile.h"
#include "util/LineReader.h"

namespace Vorlan {

SequestTXTPepIdentIO::SequestTXTPepIdentIO() : PeptideIdentificationIO(PepIdentType::SequestTxt) {}

SequestTXTPepIdentIO::~SequestTXTPepIdentIO() = default;

void SequestTXTPepIdentIO::InitLoad(const PepIdentSource& source)
{
    strFilePath_ = ResultPathOf(source);
    pInput_->Open(strFilePath_, LineReader::Mode::Binary);
}

void SequestTXTPepIdentIO::Load(std::vector<PeptideIdentification>& vMatches)
{
    if (pInput_->Failed()) {
        errors::NotReadable("SequestTXTPepIdentIO::Load", strFilePath_);
    }
    std::string_view line;
    pInput_->Next(line);
    sequest::RowReader reader(line);
    while (pInput_->Next(line)) {
        PeptideIdentification match;
        if (reader.Read(line, match)) {
            vMatches.push_back(std::move(match));
        }
    }
}

void SequestTXTPepIdentIO::EndLoad()
{
    pInput_->Close();
}

void SequestTXTPepIdentIO::InitSave(const std::string& path)
{
    strFilePath_ = path;
    platform::OpenOutput(ofsOutput_, path);
}

void SequestTXTPepIdentIO::Save(const std::vector<PeptideIdentification>&) {}

void SequestTXTPepIdentIO::EndSave()
{
    ofsOutput_.clear();
    CloseOutput(ofsOutput_);
}

void SequestTXTPepIdentIO::GetResultNumberOfFile() {}

} // namespace Vorlan
