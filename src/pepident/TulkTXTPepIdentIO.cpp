#include "PeptideIdentificationIO.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <string_view>

#include "pepident/NativeTableRow.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/ReaderSteps.h"
#include "platform/Memory.h"
#include "platform/OutputFile.h"
#include "util/LineReader.h"
#include "util/Progress.h"

namespace Vorlan {

namespace {

constexpr char kLoad[] = "TulkTXTPepIdentIO::Load";
constexpr char kSave[] = "TulkTXTPepIdentIO::Save";

/// Makes room for the rows of a table whose first row has come. They are as many as
/// its lines, unless lines are blank, which would need no room: no more than go into
/// bytes when rows are half as long as the first one. Only saves time.
void MakeRoom(std::vector<PeptideIdentification>& matches, std::uint64_t lines, std::uint64_t bytes,
              std::uint64_t firstRow)
{
    constexpr std::uint64_t kMost = std::uint64_t{1024} * 1024;
    try {
        matches.reserve(std::min({lines, bytes / (firstRow / 2 + 1) + 1, kMost}));
    } catch (const std::bad_alloc&) {
        // The table may hold fewer: the list grows by itself.
    }
}

} // namespace

TulkTXTPepIdentIO::TulkTXTPepIdentIO() : PeptideIdentificationIO(PepIdentType::CalvexTxt) {}

TulkTXTPepIdentIO::~TulkTXTPepIdentIO() = default;

void TulkTXTPepIdentIO::InitLoad(const PepIdentSource& source)
{
    strFilePath_ = ResultPathOf(source);
    GetResultNumberOfFile();
    pInput_->Open(strFilePath_, LineReader::Mode::Text);
}

void TulkTXTPepIdentIO::Load(std::vector<PeptideIdentification>& vMatches)
{
    if (pInput_->Failed()) {
        errors::NotReadable(kLoad, strFilePath_);
    }
    std::string header;
    pInput_->NextOfAnyLength(header);
    native::RowReader reader(header);
    std::string_view line;
    Progress progress(console::Stream::Out, tResultCount_);
    platform::PagesAhead pages;
    // Deliberate: B-12. An empty line ends the table.
    while (pInput_->Next(line) && !line.empty()) {
        if (vMatches.empty()) {
            MakeRoom(vMatches, tResultCount_ + 1, pInput_->Size(), line.size());
        }
        pages.Reach(vMatches, 1);
        progress.Begin();
        vMatches.push_back(reader.Read(line));
        vMatches.back().SortMod();
        progress.End();
    }
    progress.Finish();
}

void TulkTXTPepIdentIO::EndLoad()
{
    CloseOutput(ofsOutput_); // Deliberate: B-11. Not the input.
}

void TulkTXTPepIdentIO::InitSave(const std::string& path)
{
    strFilePath_ = path; // Deliberate: B-92. Of the input as well.
    platform::OpenOutput(ofsOutput_, path);
}

void TulkTXTPepIdentIO::Save(const std::vector<PeptideIdentification>& vMatches)
{
    if (!ofsOutput_.is_open() || !ofsOutput_) {
        errors::NotWritable(kSave, strFilePath_);
    }
    ofsOutput_ << native::kHeaderLine;
    Progress progress(console::Stream::Out, vMatches.size());
    std::string line;
    for (const PeptideIdentification& match : vMatches) {
        progress.Begin();
        line.clear();
        native::AppendRow(line, match);
        ofsOutput_ << line;
        if (!match.vEvidences.empty()) {
            ofsOutput_.flush();
        }
        progress.End();
    }
    progress.Finish();
    if (!ofsOutput_.flush()) {
        errors::NotWritable(kSave, strFilePath_);
    }
}

void TulkTXTPepIdentIO::EndSave()
{
    CloseOutput(ofsOutput_);
}

void TulkTXTPepIdentIO::GetResultNumberOfFile()
{
    tResultCount_ = CountResultRows(strFilePath_, kLoad); // Deliberate: B-20. Load's label.
}

} // namespace Vorlan
