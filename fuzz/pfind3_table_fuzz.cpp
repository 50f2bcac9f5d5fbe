// Tables of pFind 3 against a plain reader.
//
// The input: a byte for the order of the columns, then the rows of a table (see
// Expanded). The header is whole, since a missing column ends the process
// (B-66). There is no table of modifications, so that all masses are 0.
#include <cstdint>
#include <string>
#include <vector>

#include "CStringProcess.h"
#include "FuzzSupport.h"
#include "PlainEngineTables.h"

namespace {

using namespace Vorlan;

std::string PlainFile(const std::string& name)
{
    const std::vector<std::string> pieces = fuzz::PiecesOf(name, '.');
    if (pieces.size() < 6) {
        return name + ".mgf";
    }
    std::string file = pieces[0];
    for (std::size_t i = 1; i + 5 < pieces.size(); ++i) {
        file += "." + pieces[i];
    }
    return file + ".mgf";
}

/// Text in front of the last "[".
std::string NameIn(const std::string& text)
{
    return text.substr(0, text.rfind('['));
}

std::string SiteIn(const std::string& text)
{
    const std::size_t open = text.rfind('[');
    const std::string site = open == std::string::npos ? "" : text.substr(open + 1);
    return site.substr(0, site.find(']'));
}

IdentModification PlainMod(const std::string& piece)
{
    const std::size_t comma = piece.find(',');
    std::string text = comma == std::string::npos ? "" : piece.substr(comma + 1);
    IdentModification mod;
    mod.nPos = fuzz::PlainInt(piece.substr(0, comma));
    const std::vector<std::string> halves = CStringProcess::split(text, "](");
    std::string part;
    if (text.find("])") != std::string::npos && halves.size() > 1) {
        part = "(" + NameIn(halves[1]) + ")";
        text = halves[0];
    }
    mod.strName = NameIn(text) + part;
    mod.strSite = SiteIn(text);
    const std::string whose =
        mod.strSite.find("Protein") == std::string::npos ? "Any " : "Protein ";
    if (mod.strSite.find("N-term") != std::string::npos) {
        mod.strPosition = whose + "N-term";
    } else if (mod.strSite.find("C-term") != std::string::npos) {
        mod.strPosition = whose + "C-term";
    }
    return mod;
}

PeptideIdentification PlainMatch(fuzz::Cells& cells)
{
    PeptideIdentification match;
    match.strSpectrumName = cells["File_Name"];
    match.strDatasetName = PlainFile(cells["File_Name"]);
    match.strSequence = cells["Sequence"];
    match.nValue5 = fuzz::PlainInt(cells["Scan_No"]);
    const std::int32_t charge = fuzz::PlainInt(cells["Charge"]);
    match.nCharge = static_cast<std::uint64_t>(charge);
    const std::string kind = cells["Target/Decoy"];
    match.bDecoy = kind.size() == 5;
    for (std::size_t i = 0; i < 5 && match.bDecoy; ++i) {
        match.bDecoy = kind[i] == "decoy"[i] || kind[i] == "DECOY"[i];
    }
    match.dMainScore = fuzz::PlainDouble(cells["Final_Score"]);
    match.dMassShift = fuzz::PlainDouble(cells["Mass_Shift(Exp.-Calc.)"]);
    match.dObsMH = fuzz::PlainDouble(cells["Exp.MH+"]);
    match.dValue1 = fuzz::PlainMz(match.dObsMH, charge);
    const std::vector<std::string> proteins = fuzz::PiecesOf(cells["Proteins"], '/');
    const std::vector<std::string> positions = fuzz::PiecesOf(cells["Positions"], '/');
    for (std::size_t i = 0; i + 1 < proteins.size(); ++i) {
        const std::vector<std::string> fields = fuzz::PiecesOf(fuzz::PieceAt(positions, i), ',');
        const std::string before = fuzz::PieceAt(fields, 1) + "X";
        const std::string after = fuzz::PieceAt(fields, 2) + "X";
        std::int32_t start = -1;
        if (!fields.empty()) {
            start = fuzz::PlainInt(fields[0]);
            start += start < std::numeric_limits<std::int32_t>::max() ? 1 : 0;
        }
        match.vEvidences.emplace_back(proteins[i], start, -1, before[0], after[0]);
    }
    const std::vector<std::string> mods = fuzz::PiecesOf(cells["Modification"], ';');
    for (std::size_t i = 0; i + 1 < mods.size(); ++i) {
        match.vMods.push_back(PlainMod(mods[i]));
    }
    return match;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    fuzz::SilenceConsole();
    const std::vector<std::string> columns =
        fuzz::Turned({"File_Name", "Sequence", "Scan_No", "Charge", "Target/Decoy", "Final_Score",
                      "Mass_Shift(Exp.-Calc.)", "Exp.MH+", "Proteins", "Modification", "Positions"},
                     size > 0 ? data[0] : 0);
    const std::string text = fuzz::Joined(columns) + "\n"
                             + fuzz::Expanded(fuzz::TextOf(data, size).substr(size > 0 ? 1 : 0));
    file.Write(text);
    fuzz::MatchOutcome expected;
    const std::vector<std::string> lines = fuzz::LinesOf(text);
    fuzz::Cells cells;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (fuzz::TakeRow(columns, lines[i], cells)
            && cells["Proteins"].find('/') < std::string::npos) {
            expected.matches.push_back(PlainMatch(cells));
        }
    }
    fuzz::CheckSameMatches(fuzz::LoadOf<Pfind3PepIdentIO>(file), expected);
    return 0;
}
