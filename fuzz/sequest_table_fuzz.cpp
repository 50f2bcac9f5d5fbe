// Tables of Sequest against a plain reader.
//
// The input is the text of a table (see Expanded). Load may end in a missing
// column or a cell that is not a number; any other end is a finding.
#include <cstdint>
#include <string>
#include <vector>

#include <OpenMS/DATASTRUCTURES/String.h>

#include "FuzzSupport.h"
#include "PlainEngineTables.h"

namespace {

using namespace Vorlan;
using OpenMS::String;

/// The lines byte for byte, but for what a line of the reader is.
std::vector<std::string> BinaryLines(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::string line : fuzz::PiecesOf(text, '\n')) {
        const bool isWhole = line.size() <= LineReader::kMaxLineLength;
        line.resize(isWhole ? line.size() : LineReader::kMaxLineLength);
        line.erase(std::min(line.find('\0'), line.size()));
        line.erase(line.size() - (!line.empty() && line.back() == '\r' ? 1 : 0));
        std::string plain;
        for (const char c : line) {
            plain += c == '"' ? "" : std::string(1, c);
        }
        lines.push_back(plain);
        if (!isWhole) {
            break;
        }
    }
    return lines;
}

IdentModification PlainMod(std::string entry)
{
    const std::string blanks = " \t\r\n";
    while (entry.size() > 1 && blanks.find(entry.front()) != std::string::npos) {
        entry.erase(0, 1);
    }
    while (entry.size() > 1 && blanks.find(entry.back()) != std::string::npos) {
        entry.pop_back();
    }
    const std::size_t open = entry.rfind('(');
    IdentModification mod;
    mod.strName = open == std::string::npos ? entry : entry.substr(open + 1);
    mod.strName = mod.strName.substr(0, mod.strName.empty() ? 0 : mod.strName.size() - 1);
    if (entry.find("N-Term") == std::string::npos) {
        const std::string place = entry.substr(0, open);
        mod.nPos = String(place.empty() ? "" : place.substr(1)).toInt();
    }
    return mod;
}

PeptideIdentification PlainMatch(fuzz::Cells& cells)
{
    PeptideIdentification match;
    const std::string file = cells["Spectrum File"];
    match.strDatasetName = file.substr(0, file.find('.')) + ".mgf";
    match.strSpectrumName = cells["First Scan"];
    match.nValue5 = String(cells["First Scan"]).toInt();
    match.strSequence = cells["Sequence"];
    match.dMainScore = String(cells["XCorr"]).toDouble();
    match.bHighScoreBetter = true;
    match.dMassShift = String(cells["Deltam/z [Da]"]).toDouble();
    match.dObsMH = String(cells["MH+ [Da]"]).toDouble();
    const std::int32_t charge = String(cells["Charge"]).toInt();
    match.nCharge = static_cast<std::uint64_t>(charge);
    match.dValue1 = fuzz::PlainMz(match.dObsMH, charge);
    for (const std::string& accession : fuzz::PiecesOf(cells["Protein Accessions"], ';')) {
        match.vEvidences.emplace_back(accession, -1, -1, 'X', 'X');
    }
    for (const std::string& entry : fuzz::PiecesOf(cells["Modifications"], ';')) {
        match.vMods.push_back(PlainMod(entry));
    }
    return match;
}

void PlainLoad(const std::string& text, fuzz::Matches& matches)
{
    const std::vector<std::string> lines = BinaryLines(text);
    const std::vector<std::string> columns = fuzz::PiecesOf(fuzz::PieceAt(lines, 0), '\t');
    for (const char* const column :
         {"Rank", "Spectrum File", "First Scan", "Sequence", "XCorr", "Deltam/z [Da]", "MH+ [Da]",
          "Theo. MH+ [Da]", "Charge", "Protein Accessions", "Modifications", "DeltaCn"}) {
        if (std::find(columns.begin(), columns.end(), column) == columns.end()) {
            throw OpenMS::Exception::ElementNotFound(__FILE__, __LINE__, "plain", column);
        }
    }
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::vector<std::string> pieces = fuzz::PiecesOf(lines[i], '\t');
        fuzz::Cells cells;
        for (std::size_t k = 0; k < columns.size(); ++k) {
            cells.emplace(columns[k], fuzz::PieceAt(pieces, k)); // the first of equals
        }
        if (!lines[i].empty() && String(cells["Rank"]).toInt() <= 1) {
            matches.push_back(PlainMatch(cells));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    fuzz::SilenceConsole();
    const std::string text = fuzz::Expanded(fuzz::TextOf(data, size));
    file.Write(text);
    fuzz::CheckSameMatches(
        fuzz::LoadOf<SequestTXTPepIdentIO>(file),
        fuzz::MatchOutcomeOf([&text](fuzz::Matches& matches) { PlainLoad(text, matches); }));
    return 0;
}
