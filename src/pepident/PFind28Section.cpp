#include "pepident/PFind28Section.h"

#include <algorithm>

#include "datastructures/FieldNames.h"
#include "pepident/ReaderSteps.h"
#include "util/Numbers.h"

namespace Vorlan::pfind {

namespace {

/// What a formatted scan passes over in front of a word and ends it at.
constexpr std::string_view kBlanks = " \t\v\f\r";

std::string_view WithoutBlanksInFront(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text;
}

std::string_view FirstWord(std::string_view text)
{
    text = WithoutBlanksInFront(text);
    return text.substr(0, text.find_first_of(kBlanks)); // Deliberate: B-90
}

/// The number behind key, or 0.
double NumberOf(std::string_view line, std::string_view key)
{
    double number = 0.0;
    numbers::ScanDouble(ValueOf(line, key), number);
    return number;
}

/// What stands behind a whole number and its comma, as "%d,%s" reads it: nothing
/// where anything else stands between them.
std::string_view BehindCount(std::string_view value)
{
    const std::size_t begin = value.substr(0, 1) == "+" || value.substr(0, 1) == "-" ? 1 : 0;
    const std::size_t end = value.find_first_not_of("0123456789", begin);
    const bool isList = end != std::string_view::npos && end > begin && value[end] == ',';
    return isList ? WithoutBlanksInFront(value.substr(end + 1)) : std::string_view();
}

/// What stands behind the first comma, where something stands in front of it.
std::string_view BehindComma(std::string_view value)
{
    const std::size_t comma = value.find(',');
    return comma == std::string_view::npos || comma == 0 ? std::string_view()
                                                         : value.substr(comma + 1);
}

std::int32_t CountOf(std::string_view line, std::string_view key)
{
    return numbers::ToInt(ValueOf(line, key));
}

} // namespace

std::string SpectrumFileOf(std::string_view inputPath)
{
    while (!inputPath.empty() && inputPath.back() == '\\') {
        inputPath.remove_suffix(1);
    }
    return std::string(inputPath.substr(inputPath.rfind('\\') + 1));
}

std::string_view ValueOf(std::string_view line, std::string_view key)
{
    if (line.substr(0, key.size()) != key) {
        return {};
    }
    line = WithoutBlanksInFront(line.substr(key.size()));
    return line.substr(0, line.find_last_not_of(kBlanks) + 1);
}

std::string_view WordOf(std::string_view line, std::string_view key)
{
    return FirstWord(ValueOf(line, key));
}

// Deliberate: B-64. The lines of a section are known by their places; the keys
// of those that are passed over are not looked at.
bool SectionReader::Read(PeptideIdentification& match)
{
    match.strSpectrumName = WordOf(Next(), "Input=");
    const std::int32_t charge = CountOf(Next(), "Charge=");
    match.nCharge = static_cast<std::uint64_t>(charge);
    match.dObsMH = NumberOf(Next(1), "MH=");
    PrecursorMzOf(match) = MzOf(match.dObsMH, charge);
    if (CountOf(Next(2), "ValidCandidate=") <= 0) {
        return false;
    }
    match.dMainScore = NumberOf(Next(1), "NO1_EValue=");
    match.dMassShift = match.dObsMH - NumberOf(Next(), "NO1_MH=");
    constexpr std::string_view kSequence = "NO1_SQ=";
    const std::string_view line = Next(2);
    if (line.substr(0, kSequence.size()) != kSequence) {
        return false;
    }
    match.strSequence = WordOf(line, kSequence);
    ReadProteins(match);
    ReadModifications(match);
    return true;
}

/// The next line behind so many others; empty at the end.
std::string_view SectionReader::Next(std::size_t skipped)
{
    std::string_view line;
    for (std::size_t i = 0; i <= skipped; ++i) {
        line = {};
        lines_.Next(line);
    }
    return line;
}

SectionReader::Counted SectionReader::NextCounted(std::size_t skipped, std::string_view key)
{
    const std::string_view value = ValueOf(Next(skipped), key);
    return {numbers::ToInt(value), std::string(BehindCount(value))};
}

void SectionReader::ReadProteins(PeptideIdentification& match)
{
    const Counted proteins = NextCounted(1, "NO1_Proteins=");
    if (proteins.count <= 0) {
        return;
    }
    const Counted flanks = NextCounted(1, "NO1_PrevNextAA=");
    const Counted starts = NextCounted(0, "NO1_ProStartPos=");
    first_.Split(FirstWord(proteins.list), ',');
    second_.Split(FirstWord(flanks.list), ',');
    third_.Split(FirstWord(starts.list), ',');
    for (std::size_t i = 0; i < first_.Size(); ++i) {
        const auto place = static_cast<int>(i);
        PeptideEvidence& evidence = match.vEvidences.emplace_back();
        evidence.strProteinAccession = first_.Cell(place);
        const std::string_view flank = second_.Cell(place);
        if (!flank.empty()) {
            evidence.cBefore = flank.front();
            evidence.cAfter = flank.back();
        }
        if (i < third_.Size()) {
            evidence.nStart = numbers::ToInt(third_.Cell(place));
        }
    }
}

void SectionReader::ReadModifications(PeptideIdentification& match)
{
    const std::string_view value = ValueOf(Next(), "NO1_Modify_Pos=");
    if (numbers::ToInt(value) <= 0) {
        return;
    }
    const std::string positions(BehindComma(value));
    const Counted names = NextCounted(0, "NO1_Modify_Name=");
    first_.Split(FirstWord(positions), ',');
    second_.Split(names.list, ','); // names hold blanks
    for (std::size_t i = 0; i < second_.Size(); ++i) {
        const auto place = static_cast<int>(i);
        IdentModification mod =
            ParsePFind28(second_.Cell(place), numbers::ToInt(first_.Cell(place)));
        mod.dMass = masses_.Of(mod.strName, mod.strSite);
        match.vMods.push_back(std::move(mod));
    }
}

} // namespace Vorlan::pfind
