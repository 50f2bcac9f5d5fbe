#include "pepident/MsgfRow.h"

#include <algorithm>
#include <cstdint>

#include "datastructures/FieldNames.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "pepident/ReaderSteps.h"
#include "util/Numbers.h"

namespace Vorlan::msgf {

namespace {

enum Column : std::size_t {
    SpecFile,
    ScanNum,
    Peptide,
    Charge,
    Precursor,
    PrecursorError,
    SpecEValue,
    Protein
};

const std::vector<EngineColumn> kColumns = {
    {"#SpecFile"},  {"ScanNum"},   {"Peptide"},
    {"Charge"},     {"Precursor"}, {"PrecursorError(ppm)", "PrecursorError(Da)", "PrecursorError"},
    {"SpecEValue"}, {"Protein"},
};

/// "(pre=K,post=R)" behind an accession.
constexpr std::size_t kTail = 14;

bool EndsInTail(std::string_view text)
{
    if (text.size() < kTail) {
        return false;
    }
    const std::string_view tail = text.substr(text.size() - kTail);
    return tail.substr(0, 5) == "(pre=" && tail.substr(6, 6) == ",post=" && tail.back() == ')';
}

std::string_view WithoutEnds(std::string_view text, std::size_t count)
{
    return text.size() < 2 * count ? std::string_view()
                                   : text.substr(count, text.size() - 2 * count);
}

/// X.SEQUENCE.Y
bool HasFlanks(std::string_view peptide)
{
    return peptide.size() >= 4 && peptide[1] == '.' && peptide[peptide.size() - 2] == '.';
}

void TakeFlanks(std::string_view peptide, std::string_view accession, PeptideIdentification& match)
{
    match.strSequence = WithoutEnds(peptide, 2);
    PeptideEvidence& evidence = match.vEvidences.emplace_back();
    evidence.strProteinAccession = accession;
    evidence.cBefore = FirstOr(peptide, evidence.cBefore);
    evidence.cAfter = peptide.empty() ? evidence.cAfter : peptide.back();
}

std::string_view WithoutQuotes(std::string_view text)
{
    const bool isQuoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    return isQuoted ? WithoutEnds(text, 1) : text;
}

void TakeList(std::string_view list, PeptideIdentification& match)
{
    TabRow pieces;
    pieces.Split(list, ';');
    for (std::size_t i = 0; i < pieces.Size(); ++i) {
        const std::string_view piece = pieces.Cell(static_cast<int>(i));
        const std::size_t length = piece.size();
        PeptideEvidence& evidence = match.vEvidences.emplace_back();
        if (length < kTail) {
            evidence.strProteinAccession = piece;
            continue;
        }
        // Deliberate: B-60. By their places, whatever stands there.
        evidence.strProteinAccession = piece.substr(0, length - kTail);
        evidence.cBefore = piece[length - 9];
        evidence.cAfter = piece[length - 2];
    }
}

} // namespace

std::string SpectrumFile(std::string_view cell)
{
    const std::size_t dot = cell.rfind('.');
    return std::string(cell.substr(0, dot)) + (dot == std::string_view::npos ? "" : ".mgf");
}

void ReadProteins(std::string_view peptide, std::string_view protein, PeptideIdentification& match)
{
    const std::string_view shortened = WithoutEnds(protein, 1);
    if (shortened.size() > 1 && shortened[1] == '.') {
        TakeFlanks(peptide, shortened, match); // Deliberate: B-60
    } else if (HasFlanks(peptide)) {
        TakeFlanks(peptide, WithoutQuotes(protein), match);
    } else {
        match.strSequence = peptide;
        TakeList(EndsInTail(protein) ? protein : shortened, match);
    }
}

void ReadModifications(const MsgfModifications& modifications, PeptideIdentification& match)
{
    const std::string text = std::move(match.strSequence);
    std::string& sequence = match.strSequence;
    sequence.clear();
    const std::string_view view = text;
    std::size_t read = 0;
    // Deliberate: B-89. Behind a mass the next character is no sign.
    for (std::size_t sign = view.find_first_of("+-"); sign != std::string_view::npos;
         sign = view.find_first_of("+-", read + 1)) {
        sequence.append(view, read, sign - read);
        read = std::min(view.find_first_not_of(".0123456789", sign + 1), view.size());
        const std::string_view mass = view.substr(sign, read - sign);
        const std::size_t next = view.find_first_not_of("+-.0123456789", read);
        const IdentModification* const known =
            modifications.Find(mass, {sequence.size(), sequence.empty() ? '\0' : sequence.back(),
                                      next == std::string_view::npos ? '\0' : view[next]});
        if (known == nullptr) {
            errors::MassTextUnknown(std::string(mass));
        }
        IdentModification& mod = match.vMods.emplace_back(*known);
        mod.nPos = static_cast<std::int32_t>(sequence.size());
        if (mod.strSite == "*" && !sequence.empty()) {
            mod.strSite = sequence.back();
        }
    }
    sequence.append(view, read, std::string_view::npos);
}

RowReader::RowReader(std::string_view headerLine, const MsgfModifications& modifications)
    : table_(headerLine, kColumns, ".tsv file"), modifications_(modifications)
{
}

bool RowReader::Read(std::string_view row, PeptideIdentification& match)
{
    if (!row.empty() && row.back() == '\r') {
        row.remove_suffix(1);
    }
    if (!table_.Take(row)) {
        return false;
    }
    match.strDatasetName = SpectrumFile(table_.Cell(SpecFile)); // Deliberate: B-59
    match.strSpectrumName = table_.Cell(ScanNum);
    ScanOf(match) = numbers::ToInt(table_.Cell(ScanNum));
    const std::int32_t charge = numbers::ToInt(table_.Cell(Charge));
    match.nCharge = static_cast<std::uint64_t>(charge);
    PrecursorMzOf(match) = numbers::ToDouble(table_.Cell(Precursor));
    match.dObsMH = MhOf(PrecursorMzOf(match), charge);
    SetMassError(match, numbers::ToDouble(table_.Cell(PrecursorError)),
                 table_.HasOtherName(PrecursorError) ? TolType::Da : TolType::Ppm);
    match.dMainScore = numbers::ToDouble(table_.Cell(SpecEValue));
    ReadProteins(table_.Cell(Peptide), table_.Cell(Protein), match);
    ReadModifications(modifications_, match);
    return true;
}

} // namespace Vorlan::msgf
