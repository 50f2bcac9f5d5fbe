#include "pepident/PlainNativeTable.h"

#include <cstdlib>
#include <iomanip>
#include <limits>
#include <map>
#include <sstream>

#include "CStringProcess.h"
#include "pepident/MatchText.h"

namespace Vorlan::test {

namespace {

using Cells = std::vector<OpenMS::String>;

/// A line ends before its line feed, and a carriage return before that one is
/// not part of it.
bool NextLine(std::istringstream& text, std::string& line)
{
    if (!std::getline(text, line)) {
        return false;
    }
    if (!text.eof() && !line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

Cells SplitAt(const OpenMS::String& text, char separator)
{
    Cells cells;
    text.split(separator, cells);
    return cells;
}

std::int32_t SaturatedAtoi(const OpenMS::String& text)
{
    const long long value = std::strtoll(text.c_str(), nullptr, 10);
    if (value > std::numeric_limits<std::int32_t>::max()) {
        return std::numeric_limits<std::int32_t>::max();
    }
    if (value < std::numeric_limits<std::int32_t>::min()) {
        return std::numeric_limits<std::int32_t>::min();
    }
    return static_cast<std::int32_t>(value);
}

void ReplaceFirst(std::string& text, const std::string& from, const std::string& to)
{
    const std::size_t hit = text.find(from);
    if (hit != std::string::npos) {
        text.replace(hit, from.size(), to);
    }
}

void ReadMods(const OpenMS::String& nameCell, const OpenMS::String& positionCell,
              PeptideIdentification& match)
{
    if (nameCell.empty()) {
        return;
    }
    const Cells names = SplitAt(nameCell, ';');
    const Cells positions = SplitAt(positionCell, ';');
    for (std::size_t i = 0; i < names.size(); ++i) {
        IdentModification mod;
        mod.strName = names[i];
        ReplaceFirst(mod.strName, " (N-term", " (Any N-term");
        ReplaceFirst(mod.strName, " (C-term", " (Any C-term");
        if (i < positions.size()) {
            mod.nPos = positions[i].toInt();
        }
        match.vMods.push_back(mod);
    }
}

void ReadEvidences(const OpenMS::String& accessionCell, const Cells& before, const Cells& after,
                   const Cells& starts, PeptideIdentification& match)
{
    if (accessionCell.empty()) {
        return;
    }
    const Cells accessions = SplitAt(accessionCell, ';');
    for (std::size_t i = 0; i < accessions.size(); ++i) {
        PeptideEvidence evidence;
        evidence.strProteinAccession = accessions[i];
        if (i < before.size() && !before[i].empty()) {
            evidence.cBefore = before[i][0];
        }
        if (i < after.size() && !after[i].empty()) {
            evidence.cAfter = after[i][0];
        }
        if (i < starts.size()) {
            evidence.nStart = SaturatedAtoi(starts[i]);
        }
        match.vEvidences.push_back(evidence);
    }
}

template <typename Elements, typename Write>
void WriteList(std::ostream& out, const Elements& elements, Write write)
{
    for (std::size_t i = 0; i < elements.size(); ++i) {
        out << (i == 0 ? "" : ";");
        write(elements[i]);
    }
}

void WriteMatch(std::ostream& out, const PeptideIdentification& match)
{
    out << match.strDatasetName << "\t" << match.strSpectrumName << "\t" << match.strSequence
        << "\t" << match.nCharge << "\t" << std::fixed << std::setprecision(6) << match.dObsMH
        << "\t" << match.dMassShift << "\t";
    if (match.dMainScore < 0.00001) {
        out << std::scientific << std::setprecision(5);
    }
    out << match.dMainScore << "\t" << (match.bHighScoreBetter ? 1 : 0) << "\t";
    WriteList(out, match.vMods, [&out](const auto& mod) { out << mod.strName; });
    out << "\t";
    WriteList(out, match.vMods, [&out](const auto& mod) { out << mod.nPos; });
    out << "\t";
    WriteList(out, match.vEvidences, [&out](const auto& e) { out << e.strProteinAccession; });
    out << "\t";
    WriteList(out, match.vEvidences, [&out](const auto& e) { out << e.cBefore; });
    out << "\t";
    WriteList(out, match.vEvidences, [&out](const auto& e) { out << e.cAfter; });
    out << "\t";
    WriteList(out, match.vEvidences, [&out](const auto& e) { out << e.nStart; });
    out << "\n";
}

} // namespace

std::vector<PeptideIdentification> PlainNativeMatches(const std::string& text)
{
    std::istringstream input(text);
    std::string line;
    NextLine(input, line);
    std::map<std::string, int> columns;
    CStringProcess::GetAttributesFromFirstRow(line, columns, "\t");

    std::vector<PeptideIdentification> matches;
    while (NextLine(input, line) && !line.empty()) {
        const Cells cells = SplitAt(line, '\t');
        const auto cell = [&](const std::string& name) {
            const auto place = static_cast<std::size_t>(columns.at(name));
            return place < cells.size() ? cells[place] : OpenMS::String();
        };
        PeptideIdentification match;
        match.strDatasetName = cell("Dataset Name");
        match.strSpectrumName = cell("Spectrum Name");
        match.strSequence = cell("Sequence");
        match.nCharge = static_cast<std::uint64_t>(cell("Charge").toInt());
        match.dObsMH = cell("ObsMH").toDouble();
        match.dMassShift = cell("Mass Shift").toDouble();
        match.dMainScore = cell("Main Score").toDouble();
        match.bHighScoreBetter = cell("High Score Better") == "1";
        ReadMods(cell("Identified Mod Name"), cell("Identified Mod Position"), match);
        Cells starts;
        if (columns.count("Protein Start Position") != 0) {
            starts = SplitAt(cell("Protein Start Position"), ';');
        }
        ReadEvidences(cell("Protein Access"), SplitAt(cell("Before AA"), ';'),
                      SplitAt(cell("After AA"), ';'), starts, match);
        matches.push_back(match);
        matches.back().SortMod();
    }
    return matches;
}

std::string PlainNativeText(const std::vector<PeptideIdentification>& matches)
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << kNativeHeader;
    for (const PeptideIdentification& match : matches) {
        WriteMatch(out, match);
    }
    return out.str();
}

} // namespace Vorlan::test
