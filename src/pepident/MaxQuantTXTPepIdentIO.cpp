#include "PeptideIdentificationIO.h"

#include <cstdint>
#include <string_view>

#include "datastructures/FieldNames.h"
#include "pepident/MaxQuantRow.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/ReaderSteps.h"
#include "pepident/SpecifiedModifications.h"
#include "platform/OutputFile.h"
#include "util/LineReader.h"
#include "util/Progress.h"

namespace Vorlan {

namespace {

constexpr char kLoad[] = "MaxQuantTXTPepIdentIO::Load";

OpenMS::String PeptidesPathOf(const PepIdentSource& source)
{
    PepIdentSource second = source;
    if (second.strThird.empty()) {
        second.strThird = FolderOf(source);
    }
    if (second.strFourth.empty()) {
        second.strFourth = "peptides.txt";
    }
    return SecondPathOf(second);
}

/// The rows of msms.txt, in the order in which peptides.txt must list them.
class MatchRows {
public:
    MatchRows(LineReader& lines, std::uint64_t total)
        : lines_(lines), progress_(console::Stream::Out, total)
    {
    }

    /// The next row that is not blank, which must have the number id; false
    /// when there is none. Done must follow.
    bool Next(std::int32_t id, std::string_view& row)
    {
        do {
            if (!lines_.Next(row)) {
                return false;
            }
        } while (row.empty());
        if (id != number_) {
            // Deliberate: B-62
            console::PrintAndExit(console::Stream::Out,
                                  "Error:\t\"MS/MS IDs\" in the peptides.txt arranged in "
                                  "unexpected way.\n");
        }
        ++number_;
        progress_.Begin();
        return true;
    }

    void Done() { progress_.End(); }
    void Finish() { progress_.Finish(); }

private:
    LineReader& lines_;
    std::int64_t number_ = 0;
    Progress progress_;
};

} // namespace

MaxQuantTXTPepIdentIO::MaxQuantTXTPepIdentIO()
    : PeptideIdentificationIO(PepIdentType::MaxQuant), pPeptides_(std::make_unique<LineReader>())
{
}

MaxQuantTXTPepIdentIO::~MaxQuantTXTPepIdentIO() = default;

void MaxQuantTXTPepIdentIO::InitLoad(const PepIdentSource& source)
{
    strFilePath_ = ResultPathOf(source);
    vAuxFilePaths_.assign(1, PeptidesPathOf(source));
    GetResultNumberOfFile();
    pInput_->Open(strFilePath_, LineReader::Mode::Text);
    pPeptides_->Open(vAuxFilePaths_.front(), LineReader::Mode::Text);
}

void MaxQuantTXTPepIdentIO::Load(std::vector<PeptideIdentification>& vMatches)
{
    if (pInput_->Failed()) {
        errors::NotReadable(kLoad, strFilePath_);
    }
    if (pPeptides_->Failed()) {
        errors::NotReadable(kLoad, vAuxFilePaths_.front());
    }
    std::string header;
    pInput_->NextOfAnyLength(header);
    maxquant::MatchReader matches(header, SpecifiedModifications());
    pPeptides_->NextOfAnyLength(header);
    maxquant::PeptideReader peptides(header);
    std::string_view line;
    MatchRows rows(*pInput_, tResultCount_);
    maxquant::Peptide peptide;
    while (pPeptides_->Next(line)) {
        if (!peptides.Read(line, peptide)) {
            continue;
        }
        for (const std::int32_t id : peptide.rows) {
            std::string_view row;
            if (!rows.Next(id, row)) {
                break;
            }
            PeptideIdentification match;
            if (matches.Read(row, peptide, match)) {
                vMatches.push_back(std::move(match));
            }
            rows.Done();
        }
    }
    rows.Finish();
}

void MaxQuantTXTPepIdentIO::EndLoad()
{
    pInput_->Close();
    pPeptides_->Close();
}

void MaxQuantTXTPepIdentIO::InitSave(const std::string& path)
{
    strFilePath_ = path;
    platform::OpenOutput(ofsOutput_, path);
}

void MaxQuantTXTPepIdentIO::Save(const std::vector<PeptideIdentification>&) {}

void MaxQuantTXTPepIdentIO::EndSave()
{
    CloseOutput(ofsOutput_);
}

void MaxQuantTXTPepIdentIO::GetResultNumberOfFile()
{
    tResultCount_ = CountResultRows(strFilePath_, kLoad); // Deliberate: B-20. Load's label.
}

} // namespace Vorlan
