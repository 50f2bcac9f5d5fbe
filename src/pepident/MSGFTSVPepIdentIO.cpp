#include "PeptideIdentificationIO.h"

#include <string_view>

#include "datastructures/FieldNames.h"
#include "pepident/MsgfModifications.h"
#include "pepident/MsgfRow.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/ReaderSteps.h"
#include "pepident/SpecifiedModifications.h"
#include "platform/OutputFile.h"
#include "util/LineReader.h"
#include "util/Progress.h"

namespace Vorlan {

namespace {

constexpr char kLoad[] = "MSGFTSVPepIdentIO::Load";

} // namespace

MSGFTSVPepIdentIO::MSGFTSVPepIdentIO() : PeptideIdentificationIO(PepIdentType::MsgfTsv) {}

MSGFTSVPepIdentIO::~MSGFTSVPepIdentIO() = default;

void MSGFTSVPepIdentIO::InitLoad(const PepIdentSource& source)
{
    strFilePath_ = ResultPathOf(source);
    vAuxFilePaths_.clear();
    if (!SecondFileNameOf(source).empty()) {
        vAuxFilePaths_.push_back(SecondPathOf(source));
    }
    GetResultNumberOfFile();
    pInput_->Open(strFilePath_, LineReader::Mode::Text);
}

void MSGFTSVPepIdentIO::Load(std::vector<PeptideIdentification>& vMatches)
{
    if (pInput_->Failed()) {
        errors::NotReadable(kLoad, strFilePath_);
    }
    const MsgfModifications modifications =
        vAuxFilePaths_.empty() ? MsgfModifications(SpecifiedModifications())
                               : MsgfModifications::FromList(vAuxFilePaths_.front(), kLoad);
    std::string header;
    pInput_->NextOfAnyLength(header);
    msgf::RowReader reader(header, modifications);
    std::string_view line;
    Progress progress(console::Stream::Out, tResultCount_);
    while (pInput_->Next(line)) {
        progress.Begin();
        PeptideIdentification match;
        if (reader.Read(line, match)) {
            vMatches.push_back(std::move(match));
        }
        progress.End();
    }
    progress.Finish();
}

void MSGFTSVPepIdentIO::EndLoad()
{
    pInput_->Close();
}

void MSGFTSVPepIdentIO::InitSave(const std::string& path)
{
    strFilePath_ = path;
    platform::OpenOutput(ofsOutput_, path);
}

void MSGFTSVPepIdentIO::Save(const std::vector<PeptideIdentification>&) {}

void MSGFTSVPepIdentIO::EndSave()
{
    CloseOutput(ofsOutput_);
}

void MSGFTSVPepIdentIO::GetResultNumberOfFile()
{
    tResultCount_ = CountResultRows(strFilePath_, kLoad); // Deliberate: B-20. Load's label.
}

} // namespace Vorlan
