#include "moddb/PFind3Modifications.h"

#include "CStringProcess.h"
#include "moddb/ModificationDBErrors.h"
#include "util/LineReader.h"
#include "util/Numbers.h"

namespace Vorlan {

namespace {

constexpr std::string_view kAllResidues = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

/// text up to its first "["; sourceLine belongs to the error.
std::string BeforeBracket(const std::string& text, int sourceLine, std::size_t line)
{
    const std::size_t bracket = text.find('[');
    if (bracket == std::string::npos) {
        errors::NoSpecificityInKey(sourceLine, line);
    }
    return text.substr(0, bracket);
}

/// "Phospho" of "Phospho[S]"; "A(B)" of "A[S](B[T])".
std::string IdOf(const std::string& key, std::size_t line)
{
    constexpr int kTwoModifications = 1194;
    constexpr int kOneModification = 1204;
    if (key.find("])") == std::string::npos) {
        return BeforeBracket(key, kOneModification, line);
    }
    const std::vector<std::string> pieces = CStringProcess::split(key, "](");
    if (pieces.size() != 2) {
        errors::NoSpecificityInKey(kTwoModifications, line);
    }
    return BeforeBracket(pieces[0], kTwoModifications, line) + "("
           + BeforeBracket(pieces[1], kTwoModifications, line) + ")";
}

CResidueModification::TermSpecificity SpecificityOf(const std::string& item, std::size_t line)
{
    if (item == "NORMAL") {
        return CResidueModification::ANYWHERE;
    }
    if (item == "PEP_C") {
        return CResidueModification::C_TERM;
    }
    if (item == "PEP_N") {
        return CResidueModification::N_TERM;
    }
    if (item == "PRO_C") {
        return CResidueModification::PROTEIN_C_TERM;
    }
    if (item == "PRO_N") {
        return CResidueModification::PROTEIN_N_TERM;
    }
    errors::UnexpectedSpecificity(item, line);
}

/// The sites as they stand, all letters as one origin (B-47); a terminus for
/// any residue there.
std::string OriginOf(const std::string& sites, CResidueModification::TermSpecificity specificity)
{
    if (specificity == CResidueModification::ANYWHERE || sites != kAllResidues) {
        return sites;
    }
    const bool isCTerm = specificity == CResidueModification::C_TERM
                         || specificity == CResidueModification::PROTEIN_C_TERM;
    return isCTerm ? "C-term" : "N-term";
}

bool GivesNumber(std::string_view firstLine)
{
    const std::vector<std::string> parts = CStringProcess::split(std::string(firstLine), "=");
    return !parts.empty() && parts[0] == "@NUMBER_MODIFICATION";
}

} // namespace

CResidueModification PFind3ModificationOf(std::string_view definition, std::size_t line)
{
    const std::vector<std::string> parts = CStringProcess::split(std::string(definition), "=");
    if (parts.size() != 2) {
        errors::NotOneEqualsSign(line);
    }
    const std::vector<std::string> items = CStringProcess::split(parts[1], " ");
    if (items.size() < 6) {
        errors::TooFewItems();
    }
    CResidueModification record;
    record.setId(IdOf(parts[0], line));
    record.setFullId(parts[0]);
    record.setDiffMonoMass(numbers::ToDouble(items[2]));
    record.setTermSpecificity(SpecificityOf(items[1], line));
    record.setOrigin(OriginOf(items[0], record.getTermSpecificity()));
    record.setSourceClassification(CResidueModification::UNKNOWN);
    return record;
}

void ReadPFind3Modifications(const std::string& path, std::vector<CResidueModification>& records)
{
    LineReader reader;
    if (!reader.Open(path, LineReader::Mode::Text)) {
        errors::PFind3FileNotReadable(path);
    }
    std::string_view line;
    bool isLine = reader.Next(line);
    if (isLine && GivesNumber(line)) {
        isLine = reader.Next(line);
    }
    for (std::size_t k = 0; isLine; ++k, isLine = reader.Next(line)) {
        if (line.substr(0, 4) != "name") {
            continue;
        }
        // A name at the end of the file has no definition: no "=" either.
        std::string_view definition;
        reader.Next(definition);
        records.push_back(PFind3ModificationOf(definition, 2 * k + 2)); // Deliberate: B-46
    }
}

} // namespace Vorlan
