#include "PeptideIdentificationIO.h"

#include <string_view>

#include "pepident/PFind28Section.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/ReaderSteps.h"
#include "platform/OutputFile.h"
#include "util/LineReader.h"

namespace Vorlan {

namespace {

/// Reads on until behind a line that begins with text; false at the end.
bool SkipTo(std::string_view text, LineReader& lines)
{
    std::string_view line;
    while (lines.Next(line)) {
        if (line.substr(0, text.size()) == text) {
            return true;
        }
    }
    return false;
}

} // namespace

PfindTXTPepIdentIO::PfindTXTPepIdentIO() : PeptideIdentificationIO(PepIdentType::Pfind28Txt) {}

PfindTXTPepIdentIO::~PfindTXTPepIdentIO() = default;

void PfindTXTPepIdentIO::InitLoad(const PepIdentSource& source)
{
    strFilePath_ = ResultPathOf(source);
    pInput_->Open(strFilePath_, LineReader::Mode::Text);
}

void PfindTXTPepIdentIO::Load(std::vector<PeptideIdentification>& vMatches)
{
    if (pInput_->Failed()) {
        errors::NotReadable("PfindTXTPepIdentIO::Load", strFilePath_);
    }
    // Deliberate: B-64. The line behind "[Search]" is the input path.
    if (!SkipTo("[Search]", *pInput_)) {
        return;
    }
    std::string_view line;
    pInput_->Next(line);
    const std::string dataset = pfind::SpectrumFileOf(pfind::WordOf(line, "InputPath="));
    pfind::SectionReader reader(*pInput_);
    while (SkipTo("[Spectrum", *pInput_)) {
        PeptideIdentification match;
        match.strDatasetName = dataset;
        if (reader.Read(match)) {
            vMatches.push_back(std::move(match));
        }
    }
}

void PfindTXTPepIdentIO::EndLoad()
{
    pInput_->Close();
}

void PfindTXTPepIdentIO::InitSave(const std::string& path)
{
    strFilePath_ = path;
    platform::OpenOutput(ofsOutput_, path);
}

void PfindTXTPepIdentIO::Save(const std::vector<PeptideIdentification>&) {}

void PfindTXTPepIdentIO::EndSave()
{
    CloseOutput(ofsOutput_);
}

void PfindTXTPepIdentIO::GetResultNumberOfFile() {}

} // namespace Vorlan
