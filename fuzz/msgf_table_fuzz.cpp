// Tables and modification lists of MS-GF+ against a plain reader.
//
// The input: a byte for the order of the columns, the rows of a table, and
// behind the first \x03 a modification list (see Expanded). The header is
// whole, since a missing column ends the process (B-66).
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "FuzzSupport.h"
#include "PlainEngineTables.h"

namespace {

using namespace Vorlan;
using Mods = std::vector<IdentModification>;

// ---- The plain list -------------------------------------------------------

std::string Trimmed(std::string text)
{
    const char* const blanks = " \t\r\n";
    text.erase(0, std::min(text.find_first_not_of(blanks), text.size()));
    text.erase(text.find_last_not_of(blanks) + 1);
    return text;
}

std::string Lower(std::string text)
{
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    }
    return text;
}

double PlainCompositionMass(const std::string& text)
{
    static const std::vector<std::pair<std::string, double>> elements = {
        {"Br", 78.9183376},   {"Cl", 34.968852682},  {"Fe", 55.93493633},   {"Se", 79.9165218},
        {"C", 12.0},          {"H", 1.00782503223},  {"N", 14.00307400443}, {"O", 15.99491461957},
        {"S", 31.9720711744}, {"P", 30.97376199842},
    };
    double mass = 0.0;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t next = i + 1;
        for (const auto& [symbol, element] : elements) {
            if (text.compare(i, symbol.size(), symbol) == 0) {
                next = i + symbol.size();
                std::size_t end = next;
                end += end < text.size() && (text[end] == '-' || text[end] == '+') ? 1 : 0;
                const std::size_t digits = end;
                while (end < text.size() && text[end] >= '0' && text[end] <= '9') {
                    ++end;
                }
                const bool hasCount = end > digits;
                mass +=
                    element * (hasCount ? fuzz::PlainDouble(text.substr(next, end - next)) : 1.0);
                next = hasCount ? end : next;
                break;
            }
        }
        i = next;
    }
    return mass;
}

void AppendPlainLine(const std::string& line, Mods& mods)
{
    std::vector<std::string> fields = fuzz::PiecesOf(line.substr(0, line.find('#')), ',');
    if (line.substr(0, line.find('#')).find('=') != std::string::npos || fields.size() < 5) {
        return;
    }
    for (std::string& field : fields) {
        field = Trimmed(field);
    }
    if (Lower(fields[2]) == "custom") {
        return;
    }
    std::string place;
    for (const char c : Lower(fields[3])) {
        place += c == '-' ? "" : std::string(1, c);
    }
    std::string position = "Anywhere";
    std::string terminus = "*";
    for (const std::string end : {"N", "C"}) {
        const std::string name = Lower(end) + "term";
        if (place == name || place == "prot" + name) {
            position = (place == name ? "Any " : "Protein ") + end + "-term";
            terminus = end + "-term";
        }
    }
    const double mass = fields[0].find_first_of("CHNOSPBrClFeSe") == std::string::npos
                            ? fuzz::PlainDouble(fields[0])
                            : PlainCompositionMass(fields[0]);
    for (const char residue : fields[1]) {
        mods.emplace_back(fields[4], mass, residue == '*' ? terminus : std::string(1, residue),
                          position, 0);
    }
}

// ---- The plain rows -------------------------------------------------------

bool PlainFits(const IdentModification& mod, const std::string& before, char next)
{
    const char residue = before.empty() ? '\0' : before.back();
    const auto isOn = [&mod](char c) { return mod.strSite == "*" || mod.strSite[0] == c; };
    if (mod.strPosition.find("N-term") != std::string::npos) {
        return before.empty()
               && (mod.strSite == "N-term" || (mod.strSite.size() == 1 && isOn(next)));
    }
    if (mod.strPosition.find("C-term") != std::string::npos) {
        return next == '\0'
               && (mod.strSite == "C-term" || (mod.strSite.size() == 1 && isOn(residue)));
    }
    return !before.empty() && isOn(residue);
}

IdentModification PlainFind(const Mods& mods, const std::string& mass, const std::string& before,
                            char next)
{
    const std::size_t dot = mass.find('.');
    const double decimals =
        dot == std::string::npos ? 0.0 : static_cast<double>(mass.size() - dot - 1);
    const IdentModification* first = nullptr;
    for (const IdentModification& mod : mods) {
        if (std::fabs(mod.dMass - fuzz::PlainDouble(mass)) <= 0.51 * std::pow(10.0, -decimals)) {
            if (PlainFits(mod, before, next)) {
                return mod;
            }
            first = first == nullptr ? &mod : first;
        }
    }
    if (first == nullptr) {
        throw OpenMS::Exception::InvalidValue(
            __FILE__, 534, "plain", "Unexpected modification mass in \"Peptide\" in .tsv file",
            mass);
    }
    return *first;
}

void PlainSequence(const Mods& mods, PeptideIdentification& match)
{
    const std::string text = match.strSequence;
    match.strSequence.clear();
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] != '+' && text[i] != '-') {
            match.strSequence += text[i++];
            continue;
        }
        std::size_t end = i + 1;
        while (end < text.size() && (text[end] == '.' || (text[end] >= '0' && text[end] <= '9'))) {
            ++end;
        }
        std::size_t next = end;
        while (next < text.size() && std::string("+-.0123456789").find(text[next]) < 13) {
            ++next;
        }
        match.vMods.push_back(PlainFind(mods, text.substr(i, end - i), match.strSequence,
                                        next < text.size() ? text[next] : '\0'));
        match.vMods.back().nPos = static_cast<std::int32_t>(match.strSequence.size());
        if (match.vMods.back().strSite == "*" && !match.strSequence.empty()) {
            match.vMods.back().strSite = match.strSequence.back();
        }
        i = end;
        if (i < text.size()) { // whatever it is
            match.strSequence += text[i++];
        }
    }
}

std::string WithoutEnds(const std::string& text, std::size_t count)
{
    return text.size() < 2 * count ? "" : text.substr(count, text.size() - 2 * count);
}

void PlainProteins(const std::string& peptide, const std::string& cell,
                   PeptideIdentification& match)
{
    const std::string inner = WithoutEnds(cell, 1);
    const std::size_t length = peptide.size();
    const bool isWrapped = inner.size() > 1 && inner[1] == '.';
    if (isWrapped || (length >= 4 && peptide[1] == '.' && peptide[length - 2] == '.')) {
        const bool isQuoted = cell.size() >= 2 && cell.front() == '"' && cell.back() == '"';
        const std::string accession = isWrapped || isQuoted ? inner : cell;
        const char before = length > 0 ? peptide.front() : 'X';
        const char after = length > 0 ? peptide.back() : 'X';
        match.strSequence = WithoutEnds(peptide, 2);
        match.vEvidences.emplace_back(accession, -1, -1, before, after);
        return;
    }
    match.strSequence = peptide;
    const std::string tail = cell.size() < 14 ? "" : cell.substr(cell.size() - 14);
    const bool isBare = !tail.empty() && tail.compare(0, 5, "(pre=") == 0
                        && tail.compare(6, 6, ",post=") == 0 && tail[13] == ')';
    for (const std::string& piece : fuzz::PiecesOf(isBare ? cell : inner, ';')) {
        const std::size_t size = piece.size();
        if (size < 14) {
            match.vEvidences.emplace_back(piece, -1, -1, 'X', 'X');
        } else {
            match.vEvidences.emplace_back(piece.substr(0, size - 14), -1, -1, piece[size - 9],
                                          piece[size - 2]);
        }
    }
}

PeptideIdentification PlainMatch(fuzz::Cells& cells, const Mods& mods)
{
    PeptideIdentification match;
    const std::string file = cells["#SpecFile"];
    const std::size_t dot = file.rfind('.');
    match.strDatasetName = dot == std::string::npos ? file : file.substr(0, dot) + ".mgf";
    match.strSpectrumName = cells["ScanNum"];
    match.nValue5 = fuzz::PlainInt(cells["ScanNum"]);
    const std::int32_t charge = fuzz::PlainInt(cells["Charge"]);
    match.nCharge = static_cast<std::uint64_t>(charge);
    match.dValue1 = fuzz::PlainDouble(cells["Precursor"]);
    match.dObsMH = fuzz::PlainMh(match.dValue1, charge);
    match.dValue3 = fuzz::PlainDouble(cells["PrecursorError(ppm)"]);
    match.nValue4 = TolType::Ppm;
    match.dMainScore = fuzz::PlainDouble(cells["SpecEValue"]);
    PlainProteins(cells["Peptide"], cells["Protein"], match);
    PlainSequence(mods, match);
    return match;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile table;
    static fuzz::MemoryFile list;
    fuzz::SilenceConsole();
    const std::vector<std::string> columns =
        fuzz::Turned({"#SpecFile", "ScanNum", "Peptide", "Charge", "Precursor",
                      "PrecursorError(ppm)", "SpecEValue", "Protein"},
                     size > 0 ? data[0] : 0);
    const std::string input = fuzz::Expanded(fuzz::TextOf(data, size).substr(size > 0 ? 1 : 0));
    const std::size_t split = std::min(input.find('\x03'), input.size());
    const std::string rows = fuzz::Joined(columns) + "\n" + input.substr(0, split);
    const std::string lines = input.substr(std::min(split + 1, input.size()));
    table.Write(rows);
    list.Write(lines);

    const fuzz::MatchOutcome expected = fuzz::MatchOutcomeOf([&](fuzz::Matches& matches) {
        Mods mods;
        for (const std::string& line : fuzz::LinesOf(lines)) {
            AppendPlainLine(line, mods);
        }
        std::vector<std::string> texts = fuzz::LinesOf(rows);
        fuzz::Cells cells;
        for (std::size_t i = 1; i < texts.size(); ++i) {
            if (!texts[i].empty() && texts[i].back() == '\r') {
                texts[i].pop_back();
            }
            if (fuzz::TakeRow(columns, texts[i], cells)) {
                matches.push_back(PlainMatch(cells, mods));
            }
        }
    });
    fuzz::CheckSameMatches(fuzz::LoadOf<MSGFTSVPepIdentIO>(table, &list), expected);
    return 0;
}
