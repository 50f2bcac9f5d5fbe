#include "pepident/MaxQuantRow.h"

#include <utility>

#include "datastructures/FieldNames.h"
#include "pepident/MaxQuantSequence.h"
#include "pepident/ReaderSteps.h"
#include "util/Numbers.h"

namespace Vorlan::maxquant {

namespace {

constexpr double kSecondsOfMinute = 60.0;

enum PeptideColumn : std::size_t { Before, After, PeptideProteins, MatchRows };

const std::vector<EngineColumn> kPeptideColumns = {
    {"Amino acid before"}, {"Amino acid after"}, {"Proteins"}, {"MS/MS IDs"}};

enum MatchColumn : std::size_t {
    RawFile,
    Sequence,
    Scan,
    Charge,
    Reverse,
    Score,
    MassError,
    Mz,
    MatchProteins, ///< required, not read
    RetentionTime,
    Modifications,
    ModifiedSequence
};

const std::vector<EngineColumn> kMatchColumns = {
    {"Raw file"},
    {"Sequence"},
    {"Scan number"},
    {"Charge"},
    {"Reverse"},
    {"Score"},
    {"Mass Error [ppm]", "Mass error [ppm]"}, // newer releases spell it with a small e
    {"m/z"},
    {"Proteins"},
    {"Retention time"},
    {"Modifications"},
    {"Modified sequence"}};

} // namespace

std::string SpectrumFile(std::string_view cell)
{
    return std::string(cell.substr(0, cell.find('.'))) + ".mgf"; // Deliberate: B-69
}

PeptideReader::PeptideReader(std::string_view headerLine)
    : table_(headerLine, kPeptideColumns, "peptides.txt")
{
}

bool PeptideReader::Read(std::string_view row, Peptide& peptide)
{
    if (!table_.Take(row)) {
        return false;
    }
    peptide.evidences.clear();
    list_.Split(table_.Cell(PeptideProteins), ';');
    for (std::size_t i = 0; i < list_.Size(); ++i) {
        PeptideEvidence& evidence = peptide.evidences.emplace_back();
        evidence.strProteinAccession = list_.Cell(static_cast<int>(i));
        evidence.cBefore = FirstOr(table_.Cell(Before), evidence.cBefore);
        evidence.cAfter = FirstOr(table_.Cell(After), evidence.cAfter);
    }
    peptide.rows.clear();
    list_.Split(table_.Cell(MatchRows), ';');
    for (std::size_t i = 0; i < list_.Size(); ++i) {
        peptide.rows.push_back(numbers::ToInt(list_.Cell(static_cast<int>(i))));
    }
    return true;
}

MatchReader::MatchReader(std::string_view headerLine, std::vector<IdentModification> specified)
    : table_(headerLine, kMatchColumns, "msms.txt"), specified_(std::move(specified))
{
}

bool MatchReader::Read(std::string_view row, const Peptide& peptide, PeptideIdentification& match)
{
    if (!table_.Take(row)) {
        return false;
    }
    match.strDatasetName = SpectrumFile(table_.Cell(RawFile));
    match.strSpectrumName = table_.Cell(Scan);
    ScanOf(match) = numbers::ToInt(table_.Cell(Scan));
    match.strSequence = table_.Cell(Sequence);
    const std::int32_t charge = numbers::ToInt(table_.Cell(Charge));
    match.nCharge = static_cast<std::uint64_t>(charge);
    match.dMainScore = numbers::ToDouble(table_.Cell(Score));
    match.bHighScoreBetter = true;
    SetMassError(match, numbers::ToDouble(table_.Cell(MassError)), TolType::Ppm);
    PrecursorMzOf(match) = numbers::ToDouble(table_.Cell(Mz));
    match.dObsMH = MhOf(PrecursorMzOf(match), charge);
    RetentionTimeOf(match) = kSecondsOfMinute * numbers::ToDouble(table_.Cell(RetentionTime));
    match.bDecoy = !table_.Cell(Reverse).empty();
    if (match.bDecoy) {
        match.vEvidences.emplace_back("DECOY", -1, -1, '-', '-'); // Deliberate: B-61
    } else {
        match.vEvidences = peptide.evidences;
    }
    const std::string_view modifications = table_.Cell(Modifications);
    if (modifications != "Unmodified") {
        match.vMods =
            ModificationsIn(table_.Cell(ModifiedSequence), NamesIn(modifications), specified_);
    }
    return true;
}

} // namespace Vorlan::maxquant
