#include "pepident/PFind3Row.h"

#include <cstddef>
#include <cstdint>
#include <limits>

#include "datastructures/FieldNames.h"
#include "pepident/ReaderSteps.h"
#include "util/LetterCase.h"
#include "util/Numbers.h"

namespace Vorlan::pfind {

namespace {

enum Column : std::size_t {
    FileName,
    Sequence,
    ScanNo,
    Charge,
    TargetDecoy,
    FinalScore,
    MassShift,
    ExpMH,
    Proteins,
    Modification,
    Positions
};

const std::vector<EngineColumn> kColumns = {{"File_Name"},
                                            {"Sequence"},
                                            {"Scan_No"},
                                            {"Charge"},
                                            {"Target/Decoy"},
                                            {"Final_Score"},
                                            {"Mass_Shift(Exp.-Calc.)"},
                                            {"Exp.MH+"},
                                            {"Proteins"},
                                            {"Modification"},
                                            {"Positions"}};

/// pFind counts from 0.
std::int32_t StartOf(std::string_view field)
{
    const std::int32_t start = numbers::ToInt(field);
    return start == std::numeric_limits<std::int32_t>::max() ? start : start + 1;
}

} // namespace

std::string SpectrumFile(std::string_view spectrumName)
{
    std::size_t end = spectrumName.size();
    for (int piece = 0; piece < 5; ++piece) {
        const std::size_t dot =
            end == 0 ? std::string_view::npos : spectrumName.rfind('.', end - 1);
        if (dot == std::string_view::npos) {
            end = spectrumName.size();
            break;
        }
        end = dot;
    }
    return std::string(spectrumName.substr(0, end)) + ".mgf";
}

RowReader::RowReader(std::string_view headerLine)
    : table_(headerLine, kColumns, "pFind-Filtered.spectra")
{
}

bool RowReader::Read(std::string_view row, PeptideIdentification& match)
{
    if (!table_.Take(row) || !ReadProteins(match)) {
        return false;
    }
    match.strSpectrumName = table_.Cell(FileName);
    match.strDatasetName = SpectrumFile(table_.Cell(FileName));
    match.strSequence = table_.Cell(Sequence);
    ScanOf(match) = numbers::ToInt(table_.Cell(ScanNo));
    const std::int32_t charge = numbers::ToInt(table_.Cell(Charge));
    match.nCharge = static_cast<std::uint64_t>(charge);
    match.bDecoy = LowerAscii(std::string(table_.Cell(TargetDecoy))) == "decoy";
    match.dMainScore = numbers::ToDouble(table_.Cell(FinalScore));
    match.dMassShift = numbers::ToDouble(table_.Cell(MassShift));
    match.dObsMH = numbers::ToDouble(table_.Cell(ExpMH));
    PrecursorMzOf(match) = MzOf(match.dObsMH, charge);
    ReadModifications(match);
    return true;
}

/// False when there is none.
bool RowReader::ReadProteins(PeptideIdentification& match)
{
    first_.Split(table_.Cell(Proteins), '/');
    second_.Split(table_.Cell(Positions), '/');
    for (std::size_t i = 0; i + 1 < first_.Size(); ++i) { // Deliberate: B-63
        const auto place = static_cast<int>(i);
        PeptideEvidence& evidence = match.vEvidences.emplace_back();
        evidence.strProteinAccession = first_.Cell(place);
        fields_.Split(second_.Cell(place), ',');
        evidence.nStart = fields_.Size() == 0 ? evidence.nStart : StartOf(fields_.Cell(0));
        evidence.cBefore = FirstOr(fields_.Cell(1), evidence.cBefore);
        evidence.cAfter = FirstOr(fields_.Cell(2), evidence.cAfter);
    }
    return !match.vEvidences.empty();
}

void RowReader::ReadModifications(PeptideIdentification& match)
{
    first_.Split(table_.Cell(Modification), ';');
    for (std::size_t i = 0; i + 1 < first_.Size(); ++i) { // Deliberate: B-63
        IdentModification mod = ParsePFind3(first_.Cell(static_cast<int>(i)));
        mod.dMass = masses_.Of(mod.strName, mod.strSite);
        match.vMods.push_back(std::move(mod));
    }
}

} // namespace Vorlan::pfind
