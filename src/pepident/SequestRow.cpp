#include "pepident/SequestRow.h"

#include <cstdint>

#include "CStringProcess.h"
#include "datastructures/FieldNames.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/ReaderSteps.h"

namespace Vorlan::sequest {

namespace {

/// The line without double quotes and the carriage return of a binary line end.
std::string Plain(std::string_view line)
{
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    std::string text(line);
    CStringProcess::replace_all(text, "\"", "");
    return text;
}

std::string SpectrumFileOf(std::string_view cell)
{
    return std::string(cell.substr(0, cell.find('.'))) + ".mgf"; // Deliberate: B-69
}

} // namespace

const char* const RowReader::kColumnNames[NumberOfColumns] = {
    "Rank",   "Spectrum File",      "First Scan",    "Sequence",
    "XCorr",  "Deltam/z [Da]",      "MH+ [Da]",      "Theo. MH+ [Da]",
    "Charge", "Protein Accessions", "Modifications", "DeltaCn"};

RowReader::RowReader(std::string_view headerLine)
{
    const TabHeader header(Plain(headerLine));
    for (std::size_t column = 0; column < NumberOfColumns; ++column) {
        places_[column] = header.Find(kColumnNames[column]);
        if (places_[column] == TabHeader::kMissing) {
            errors::MissingColumn("SequestTXTPepIdentIO::Load", kColumnNames[column]);
        }
    }
}

bool RowReader::Read(std::string_view row, PeptideIdentification& match)
{
    text_ = Plain(row);
    if (text_.empty()) {
        return false;
    }
    cells_.Split(text_, '\t');
    if (IntOf(Cell(Rank)) > 1) {
        return false;
    }
    match.strDatasetName = SpectrumFileOf(Cell(SpectrumFile));
    match.strSpectrumName = Cell(FirstScan);
    ScanOf(match) = IntOf(Cell(FirstScan));
    match.strSequence = Cell(Sequence);
    match.dMainScore = DoubleOf(Cell(XCorr));
    match.bHighScoreBetter = true;
    match.dMassShift = DoubleOf(Cell(DeltaMz));
    match.dObsMH = DoubleOf(Cell(Mh));
    const std::int32_t charge = IntOf(Cell(Charge));
    match.nCharge = static_cast<std::uint64_t>(charge);
    PrecursorMzOf(match) = MzOf(match.dObsMH, charge);
    list_.Split(Cell(Accessions), ';');
    for (std::size_t i = 0; i < list_.Size(); ++i) {
        // Deliberate: B-65. With the blanks around it.
        match.vEvidences.emplace_back().strProteinAccession = list_.Cell(static_cast<int>(i));
    }
    list_.Split(Cell(Modifications), ';');
    for (std::size_t i = 0; i < list_.Size(); ++i) {
        match.vMods.push_back(ParseModification(list_.Cell(static_cast<int>(i))));
    }
    return true;
}

IdentModification ParseModification(std::string_view text)
{
    std::string entry(text);
    CStringProcess::Trim(entry);
    const std::size_t open = entry.rfind('(');
    IdentModification mod;
    mod.strName = entry.substr(open == std::string::npos ? 0 : open + 1);
    if (!mod.strName.empty()) {
        mod.strName.pop_back(); // the closing parenthesis
    }
    if (entry.find("N-Term") == std::string::npos) { // Deliberate: B-67
        const std::string place = entry.substr(0, open);
        mod.nPos = IntOf(std::string_view(place).substr(place.empty() ? 0 : 1));
    }
    return mod;
}

} // namespace Vorlan::sequest
