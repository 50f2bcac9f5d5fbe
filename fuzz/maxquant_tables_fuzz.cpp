// msms.txt and peptides.txt of MaxQuant against a plain reader.
//
// The input: a byte for the order of the columns, the rows of msms.txt, and
// behind the first \x03 those of peptides.txt (see Expanded). The headers are
// whole, since a missing column ends the process (B-66), and the "MS/MS IDs" are
// mended, since those in another order do, too (B-62): of a cell counts how many
// pieces it has.
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "FuzzSupport.h"
#include "PlainEngineTables.h"

namespace {

using namespace Vorlan;

const std::vector<std::string> kPeptideColumns = {"Amino acid before", "Amino acid after",
                                                  "Proteins", "MS/MS IDs"};

/// The text of a peptides.txt whose IDs count the rows from 0.
std::string MendedPeptides(const std::string& rows)
{
    std::string text = fuzz::Joined(kPeptideColumns) + "\n";
    std::size_t next = 0;
    for (const std::string& line : fuzz::LinesOf(rows)) {
        std::vector<std::string> cells = fuzz::PiecesOf(line, '\t');
        if (cells.size() < kPeptideColumns.size()) {
            text += line + "\n";
            continue;
        }
        const std::size_t count = fuzz::PiecesOf(cells[3], ';').size();
        cells[3].clear();
        for (std::size_t i = 0; i < count; ++i) {
            cells[3] += (i == 0 ? "" : ";") + std::to_string(next + i);
        }
        const std::string mended = fuzz::Joined(cells);
        if (mended.size() < LineReader::kMaxLineLength) { // one more for a return behind it
            text += mended + "\n";
            next += count;
        }
    }
    return text;
}

// ---- Tags -----------------------------------------------------------------

std::string Lower(std::string text)
{
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    return text;
}

std::string Trimmed(std::string text)
{
    const std::string blanks = " \t\r\n";
    while (text.size() > 1 && blanks.find(text.front()) != std::string::npos) {
        text.erase(0, 1);
    }
    while (text.size() > 1 && blanks.find(text.back()) != std::string::npos) {
        text.pop_back();
    }
    return text;
}

std::vector<std::string> PlainNames(const std::string& cell)
{
    std::vector<std::string> names;
    for (const std::string& piece : fuzz::PiecesOf(cell, ',')) {
        std::string name = Trimmed(piece);
        std::size_t digits = 0;
        while (digits < name.size() && name[digits] >= '0' && name[digits] <= '9') {
            ++digits;
        }
        if (digits > 0 && digits < name.size() && name[digits] == ' ') {
            name.erase(0, digits + 1);
        }
        names.push_back(name);
    }
    return names;
}

/// What stands in the last parentheses, behind a blank.
std::string SiteOf(const std::string& name)
{
    const std::size_t open = name.rfind(" (");
    return open == std::string::npos || name.back() != ')'
               ? ""
               : name.substr(open + 2, name.size() - open - 3);
}

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

/// before: the residues in front of the tag.
IdentModification PlainMod(const std::string& tag, const std::vector<std::string>& names,
                           const std::string& before, bool isLast)
{
    const std::string* found = nullptr;
    bool fits = false;
    for (const std::string& name : names) {
        if (name != tag && (tag.size() != 2 || Lower(tag) != Lower(name.substr(0, 2)))) {
            continue;
        }
        const std::string site = SiteOf(name);
        const bool fitsHere =
            Holds(site, "N-term") ? before.empty()
            : Holds(site, "C-term")
                ? isLast
                : !before.empty() && Holds(site, before.substr(before.size() - 1));
        if (found == nullptr || (fitsHere && !fits)) {
            found = &name;
            fits = fitsHere;
        }
    }
    if (found == nullptr || found->empty()) {
        throw OpenMS::Exception::InvalidValue(
            __FILE__, 1011, "plain",
            "Unexpected Modification Abbreviation in \"Modified sequence\" in msms.txt", tag);
    }
    const std::string site = SiteOf(*found);
    const auto residues = static_cast<std::int32_t>(before.size());
    const std::string whose = Holds(site, "Protein") ? "Protein " : "Any ";
    if (Holds(site, "N-term")) {
        return {*found, 0.0, "N-term", whose + "N-term", 0};
    }
    if (Holds(site, "C-term")) {
        return {*found, 0.0, "C-term", whose + "C-term", residues + 1};
    }
    return {*found, 0.0, before.empty() ? "" : before.substr(before.size() - 1), "Anywhere",
            residues};
}

/// Appends the residues outside of tags to residues and their number at each
/// tag, and the tags.
void TakeApart(const std::string& text, std::string& residues, std::vector<std::size_t>& places,
               std::vector<std::string>& tags)
{
    std::size_t depth = 0;
    for (const char c : text) {
        if (depth > 0) {
            depth += c == '(' ? 1 : 0;
            depth -= c == ')' ? 1 : 0;
            tags.back() += depth > 0 ? std::string(1, c) : "";
        } else if (c == '(') {
            depth = 1;
            tags.emplace_back();
            places.push_back(residues.size());
        } else if (c >= 'A' && c <= 'Z') {
            residues += c;
        }
    }
}

// ---- Rows -----------------------------------------------------------------

PeptideIdentification PlainMatch(fuzz::Cells& cells, fuzz::Cells& peptide)
{
    PeptideIdentification match;
    match.strDatasetName = cells["Raw file"].substr(0, cells["Raw file"].find('.')) + ".mgf";
    match.strSpectrumName = cells["Scan number"];
    match.nValue5 = fuzz::PlainInt(cells["Scan number"]);
    match.strSequence = cells["Sequence"];
    const std::int32_t charge = fuzz::PlainInt(cells["Charge"]);
    match.nCharge = static_cast<std::uint64_t>(charge);
    match.dMainScore = fuzz::PlainDouble(cells["Score"]);
    match.bHighScoreBetter = true;
    match.dValue3 = fuzz::PlainDouble(cells["Mass Error [ppm]"]);
    match.nValue4 = TolType::Ppm;
    match.dValue1 = fuzz::PlainDouble(cells["m/z"]);
    match.dObsMH = fuzz::PlainMh(match.dValue1, charge);
    match.dValue2 = 60.0 * fuzz::PlainDouble(cells["Retention time"]);
    match.bDecoy = !cells["Reverse"].empty();
    if (match.bDecoy) {
        match.vEvidences.emplace_back("DECOY", -1, -1, '-', '-');
    } else {
        for (const std::string& protein : fuzz::PiecesOf(peptide["Proteins"], ';')) {
            match.vEvidences.emplace_back(protein, -1, -1, (peptide["Amino acid before"] + "X")[0],
                                          (peptide["Amino acid after"] + "X")[0]);
        }
    }
    if (cells["Modifications"] != "Unmodified") {
        std::string residues;
        std::vector<std::size_t> places;
        std::vector<std::string> tags;
        TakeApart(cells["Modified sequence"], residues, places, tags);
        const std::vector<std::string> names = PlainNames(cells["Modifications"]);
        for (std::size_t i = 0; i < tags.size(); ++i) {
            match.vMods.push_back(PlainMod(tags[i], names, residues.substr(0, places[i]),
                                           places[i] == residues.size()));
        }
    }
    return match;
}

void PlainLoad(const std::vector<std::string>& columns, const std::string& rows,
               const std::string& peptides, fuzz::Matches& matches)
{
    std::vector<std::string> lines;
    for (const std::string& line : fuzz::LinesOf(rows)) {
        if (!line.empty()) {
            lines.push_back(line);
        }
    }
    std::size_t next = 1;
    bool isHeader = true;
    for (const std::string& line : fuzz::LinesOf(peptides)) {
        fuzz::Cells peptide;
        if (std::exchange(isHeader, false) || !fuzz::TakeRow(kPeptideColumns, line, peptide)) {
            continue;
        }
        for (std::size_t i = fuzz::PiecesOf(peptide["MS/MS IDs"], ';').size();
             i > 0 && next < lines.size(); --i) {
            fuzz::Cells cells;
            if (fuzz::TakeRow(columns, lines[next++], cells)) {
                matches.push_back(PlainMatch(cells, peptide));
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile matchFile;
    static fuzz::MemoryFile peptideFile;
    fuzz::SilenceConsole();
    const std::vector<std::string> columns = fuzz::Turned(
        {"Raw file", "Sequence", "Scan number", "Charge", "Reverse", "Score", "Mass Error [ppm]",
         "m/z", "Proteins", "Retention time", "Modifications", "Modified sequence"},
        size > 0 ? data[0] : 0);
    const std::string input = fuzz::Expanded(fuzz::TextOf(data, size).substr(size > 0 ? 1 : 0));
    const std::size_t split = std::min(input.find('\x03'), input.size());
    const std::string rows = fuzz::Joined(columns) + "\n" + input.substr(0, split);
    const std::string peptides = MendedPeptides(input.substr(std::min(split + 1, input.size())));
    matchFile.Write(rows);
    peptideFile.Write(peptides);
    fuzz::CheckSameMatches(fuzz::LoadOf<MaxQuantTXTPepIdentIO>(matchFile, &peptideFile),
                           fuzz::MatchOutcomeOf([&](fuzz::Matches& matches) {
                               PlainLoad(columns, rows, peptides, matches);
                           }));
    return 0;
}
