#include "pepident/NativeTableRow.h"

#include <vector>

#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/ReaderSteps.h"
#include "util/Numbers.h"

namespace Vorlan::native {

const std::string_view kHeaderLine =
    "Dataset Name\tSpectrum Name\tSequence\tCharge\tObsMH\tMass Shift\tMain Score\t"
    "High Score Better\tIdentified Mod Name\tIdentified Mod Position\tProtein Access\t"
    "Before AA\tAfter AA\tProtein Start Position\n";

const char* const RowReader::kColumnNames[NumberOfColumns] = {"Dataset Name",
                                                              "Spectrum Name",
                                                              "Sequence",
                                                              "Charge",
                                                              "ObsMH",
                                                              "Mass Shift",
                                                              "Main Score",
                                                              "High Score Better",
                                                              "Identified Mod Name",
                                                              "Identified Mod Position",
                                                              "Protein Access",
                                                              "Before AA",
                                                              "After AA",
                                                              "Protein Start Position"};

namespace {

/// Appends the texts that append writes for each element, joined by ";".
template <typename Elements, typename Append>
void AppendList(std::string& text, const Elements& elements, Append append)
{
    bool first = true;
    for (const auto& element : elements) {
        if (!first) {
            text += ';';
        }
        first = false;
        append(element);
    }
}

void AppendModifications(std::string& text, const std::vector<IdentModification>& mods)
{
    AppendList(text, mods, [&text](const auto& mod) { text += mod.strName; });
    text += '\t';
    AppendList(text, mods, [&text](const auto& mod) { text += std::to_string(mod.nPos); });
    text += '\t';
}

void AppendEvidences(std::string& text, const std::vector<PeptideEvidence>& evidences)
{
    AppendList(text, evidences, [&text](const auto& e) { text += e.strProteinAccession; });
    text += '\t';
    AppendList(text, evidences, [&text](const auto& e) { text += e.cBefore; });
    text += '\t';
    AppendList(text, evidences, [&text](const auto& e) { text += e.cAfter; });
    text += '\t';
    AppendList(text, evidences, [&text](const auto& e) { text += std::to_string(e.nStart); });
    text += '\n';
}

void AppendScore(std::string& text, double score)
{
    if (score < 0.00001) {
        numbers::AppendScientific5(text, score);
    } else {
        numbers::AppendFixed6(text, score);
    }
}

} // namespace

RowReader::RowReader(std::string_view headerLine)
{
    const TabHeader header(headerLine);
    for (int column = 0; column < NumberOfColumns; ++column) {
        places_[column] = header.Find(kColumnNames[column]);
        if (column < NumberOfRequired && places_[column] == TabHeader::kMissing) {
            errors::MissingColumn("TulkTXTPepIdentIO::Load", kColumnNames[column]);
        }
    }
}

PeptideIdentification RowReader::Read(std::string_view line)
{
    cells_.Split(line, '\t');
    PeptideIdentification match;
    match.strDatasetName = Cell(DatasetName);
    match.strSpectrumName = Cell(SpectrumName);
    match.strSequence = Cell(Sequence);
    match.nCharge = static_cast<std::uint64_t>(IntOf(Cell(Charge)));
    match.dObsMH = DoubleOf(Cell(ObsMH));
    match.dMassShift = DoubleOf(Cell(MassShift));
    match.dMainScore = DoubleOf(Cell(MainScore));
    match.bHighScoreBetter = Cell(HighScoreBetter) == "1";
    ReadModifications(match);
    ReadEvidences(match);
    return match;
}

std::string_view RowReader::Cell(Column column) const
{
    return cells_.Cell(places_[column]);
}

void RowReader::ReadModifications(PeptideIdentification& match)
{
    first_.Split(Cell(ModName), ';');
    second_.Split(Cell(ModPosition), ';');
    const auto count = static_cast<int>(first_.Size());
    const auto positions = static_cast<int>(second_.Size());
    match.vMods.reserve(first_.Size());
    for (int i = 0; i < count; ++i) {
        IdentModification& mod = match.vMods.emplace_back();
        mod.strName = WithAnyTerm(first_.Cell(i));
        if (i < positions) {
            mod.nPos = IntOf(second_.Cell(i));
        }
    }
}

void RowReader::ReadEvidences(PeptideIdentification& match)
{
    first_.Split(Cell(ProteinAccess), ';');
    second_.Split(Cell(BeforeAA), ';');
    third_.Split(Cell(AfterAA), ';');
    fourth_.Split(Cell(StartPosition), ';');
    const auto count = static_cast<int>(first_.Size());
    const auto starts = static_cast<int>(fourth_.Size());
    match.vEvidences.reserve(first_.Size());
    for (int i = 0; i < count; ++i) {
        PeptideEvidence& evidence = match.vEvidences.emplace_back();
        evidence.strProteinAccession = first_.Cell(i);
        evidence.cBefore = FirstOr(second_.Cell(i), evidence.cBefore);
        evidence.cAfter = FirstOr(third_.Cell(i), evidence.cAfter);
        if (i < starts) {
            evidence.nStart = numbers::ToInt(fourth_.Cell(i));
        }
    }
}

void AppendRow(std::string& text, const PeptideIdentification& match)
{
    text.append(match.strDatasetName).append("\t").append(match.strSpectrumName);
    text.append("\t").append(match.strSequence).append("\t");
    text.append(std::to_string(match.nCharge)).append("\t");
    numbers::AppendFixed6(text, match.dObsMH);
    text += '\t';
    numbers::AppendFixed6(text, match.dMassShift);
    text += '\t';
    AppendScore(text, match.dMainScore);
    text.append(match.bHighScoreBetter ? "\t1\t" : "\t0\t");
    AppendModifications(text, match.vMods);
    if (match.vEvidences.empty()) {
        text += "\t\t\t\n";
    } else {
        AppendEvidences(text, match.vEvidences);
    }
}

} // namespace Vorlan::native
