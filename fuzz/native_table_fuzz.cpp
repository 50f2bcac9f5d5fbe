// The native result table: Load against a plain reader, Save against a plain
// writer, and what a table must bring back.
//
// The input is the text of a table (see Expanded). Load may end in a missing
// column or a cell that is not a number; any other end is a finding.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>
#include <OpenMS/DATASTRUCTURES/String.h>

#include "FuzzSupport.h"
#include "PeptideIdentificationIO.h"
#include "PlainLines.h"
#include "util/LineReader.h"

namespace {

using namespace Vorlan;
using OpenMS::String;
using Matches = std::vector<PeptideIdentification>;

/// The matches up to the error, and the error as text; empty: none.
struct Outcome {
    Matches matches;
    std::string error;
};

/// Runs read on the matches of an outcome and keeps the documented exceptions.
template <typename Read>
Outcome OutcomeOf(Read read)
{
    Outcome outcome;
    try {
        read(outcome.matches);
    } catch (const OpenMS::Exception::ElementNotFound& error) {
        outcome.error = std::string("ElementNotFound ") + error.what();
    } catch (const OpenMS::Exception::ConversionError& error) {
        outcome.error = std::string("ConversionError ") + error.what();
    }
    return outcome;
}

Outcome Load(const fuzz::MemoryFile& file)
{
    return OutcomeOf([&file](Matches& matches) {
        TulkTXTPepIdentIO reader;
        reader.InitLoad(PepIdentSource(file.Folder(), file.Name(), PepIdentType::CalvexTxt));
        reader.Load(matches);
        reader.EndLoad();
    });
}

// ---- The plain reader -----------------------------------------------------

std::vector<String> Pieces(const std::string& text, char separator)
{
    std::vector<String> pieces;
    String(text).split(separator, pieces);
    return pieces;
}

using PlainRow = std::map<std::string, std::string>; // column -> cell

std::string WithAny(std::string name)
{
    for (const std::string term : {" (N-term", " (C-term"}) {
        const std::size_t hit = name.find(term);
        if (hit != std::string::npos) {
            name.replace(hit, 8, " (Any " + term.substr(2));
        }
    }
    return name;
}

void PlainLists(PlainRow& row, PeptideIdentification& match)
{
    const auto names = Pieces(row["Identified Mod Name"], ';');
    const auto positions = Pieces(row["Identified Mod Position"], ';');
    for (std::size_t i = 0; i < names.size(); ++i) {
        IdentModification mod;
        mod.strName = WithAny(names[i]);
        mod.nPos = i < positions.size() ? positions[i].toInt() : 0;
        match.vMods.push_back(mod);
    }
    const auto accessions = Pieces(row["Protein Access"], ';');
    const auto before = Pieces(row["Before AA"], ';');
    const auto after = Pieces(row["After AA"], ';');
    const auto starts = Pieces(row["Protein Start Position"], ';');
    for (std::size_t i = 0; i < accessions.size(); ++i) {
        PeptideEvidence evidence;
        evidence.strProteinAccession = accessions[i];
        evidence.cBefore = i < before.size() && !before[i].empty() ? before[i][0] : 'X';
        evidence.cAfter = i < after.size() && !after[i].empty() ? after[i][0] : 'X';
        if (i < starts.size()) {
            const long long start = std::strtoll(starts[i].c_str(), nullptr, 10);
            evidence.nStart = static_cast<std::int32_t>(std::max<long long>(
                std::numeric_limits<std::int32_t>::min(),
                std::min<long long>(std::numeric_limits<std::int32_t>::max(), start)));
        }
        match.vEvidences.push_back(evidence);
    }
}

PeptideIdentification PlainMatch(PlainRow& row)
{
    PeptideIdentification match;
    match.strDatasetName = row["Dataset Name"];
    match.strSpectrumName = row["Spectrum Name"];
    match.strSequence = row["Sequence"];
    match.nCharge = static_cast<std::uint64_t>(String(row["Charge"]).toInt());
    match.dObsMH = String(row["ObsMH"]).toDouble();
    match.dMassShift = String(row["Mass Shift"]).toDouble();
    match.dMainScore = String(row["Main Score"]).toDouble();
    match.bHighScoreBetter = row["High Score Better"] == "1";
    PlainLists(row, match);
    match.SortMod();
    return match;
}

void PlainLoad(const std::string& text, Matches& matches)
{
    std::vector<std::string> lines = fuzz::LinesOf(text, fuzz::FirstLine::OfAnyLength);
    lines.resize(lines.empty() ? 1 : lines.size());
    const std::vector<String> header = Pieces(lines[0], '\t');
    for (const char* column :
         {"Dataset Name", "Spectrum Name", "Sequence", "Charge", "ObsMH", "Mass Shift",
          "Main Score", "High Score Better", "Identified Mod Name", "Identified Mod Position",
          "Protein Access", "Before AA", "After AA"}) {
        if (std::find(header.begin(), header.end(), column) == header.end()) {
            throw OpenMS::Exception::ElementNotFound(__FILE__, __LINE__, "PlainLoad", column);
        }
    }
    for (std::size_t i = 1; i < lines.size() && !lines[i].empty(); ++i) {
        const std::vector<String> cells = Pieces(lines[i], '\t');
        PlainRow row;
        for (std::size_t k = 0; k < header.size(); ++k) {
            row.emplace(header[k], k < cells.size() ? cells[k] : ""); // the first of equals
        }
        matches.push_back(PlainMatch(row));
    }
}

// ---- The plain writer -----------------------------------------------------

std::string PlainText(const Matches& matches)
{
    std::ostringstream out;
    out << "Dataset Name\tSpectrum Name\tSequence\tCharge\tObsMH\tMass Shift\tMain Score\t"
           "High Score Better\tIdentified Mod Name\tIdentified Mod Position\tProtein Access\t"
           "Before AA\tAfter AA\tProtein Start Position\n";
    for (const PeptideIdentification& match : matches) {
        out << match.strDatasetName << '\t' << match.strSpectrumName << '\t' << match.strSequence
            << '\t' << match.nCharge << '\t' << std::fixed << std::setprecision(6) << match.dObsMH
            << '\t' << match.dMassShift << '\t';
        if (match.dMainScore < 0.00001) {
            out << std::scientific << std::setprecision(5);
        }
        out << match.dMainScore << '\t' << match.bHighScoreBetter << '\t';
        const auto list = [&out](const auto& elements, auto write, char end) {
            for (std::size_t i = 0; i < elements.size(); ++i) {
                out << (i > 0 ? ";" : "");
                write(elements[i]);
            }
            out << end;
        };
        list(
            match.vMods, [&out](const auto& mod) { out << mod.strName; }, '\t');
        list(
            match.vMods, [&out](const auto& mod) { out << mod.nPos; }, '\t');
        list(
            match.vEvidences, [&out](const auto& e) { out << e.strProteinAccession; }, '\t');
        list(
            match.vEvidences, [&out](const auto& e) { out << e.cBefore; }, '\t');
        list(
            match.vEvidences, [&out](const auto& e) { out << e.cAfter; }, '\t');
        list(
            match.vEvidences, [&out](const auto& e) { out << e.nStart; }, '\n');
    }
    return out.str();
}

// ---- Comparing ------------------------------------------------------------

/// Everything but the masses and the score.
void CheckSameTexts(const PeptideIdentification& seen, const PeptideIdentification& expected,
                    const char* rule)
{
    fuzz::CheckSame(seen.strDatasetName, expected.strDatasetName, rule);
    fuzz::CheckSame(seen.strSpectrumName, expected.strSpectrumName, rule);
    fuzz::CheckSame(seen.strSequence, expected.strSequence, rule);
    fuzz::Check(seen.nCharge == expected.nCharge, rule);
    fuzz::Check(seen.bHighScoreBetter == expected.bHighScoreBetter, rule);
    fuzz::Check(seen.isModSame(expected.vMods), rule);
    fuzz::Check(seen.vEvidences.size() == expected.vEvidences.size(), rule);
    for (std::size_t i = 0; i < seen.vEvidences.size(); ++i) {
        const PeptideEvidence& a = seen.vEvidences[i];
        const PeptideEvidence& b = expected.vEvidences[i];
        fuzz::CheckSame(a.strProteinAccession, b.strProteinAccession, rule);
        fuzz::Check(a.cBefore == b.cBefore && a.cAfter == b.cAfter && a.nStart == b.nStart, rule);
    }
}

void CheckSameOutcome(const Outcome& seen, const Outcome& expected, const char* rule)
{
    fuzz::CheckSame(seen.error, expected.error, rule);
    fuzz::Check(seen.matches.size() == expected.matches.size(), rule);
    for (std::size_t i = 0; i < seen.matches.size(); ++i) {
        const PeptideIdentification& a = seen.matches[i];
        const PeptideIdentification& b = expected.matches[i];
        CheckSameTexts(a, b, rule);
        fuzz::Check(fuzz::SameBits(a.dObsMH, b.dObsMH), rule);
        fuzz::Check(fuzz::SameBits(a.dMassShift, b.dMassShift), rule);
        fuzz::Check(fuzz::SameBits(a.dMainScore, b.dMainScore), rule);
    }
}

/// Whether the row can be read as it was written.
bool Survives(const PeptideIdentification& match)
{
    const double limit = 1e15;
    return match.nCharge <= 2147483647 && std::fabs(match.dObsMH) < limit
           && std::fabs(match.dMassShift) < limit && std::fabs(match.dMainScore) < limit
           && PlainText({match}).size() <= LineReader::kMaxLineLength;
}

void CheckRoundTrip(const Matches& seen, const Matches& written)
{
    const char* const rule = "what survives writing and reading";
    const auto isNear = [](double a, double b) {
        return std::fabs(a - b) <= 6e-7 + 1e-12 * std::fabs(b);
    };
    for (std::size_t i = 0; i < written.size() && Survives(written[i]); ++i) {
        fuzz::Check(i < seen.size(), "every row that can be read is");
        PeptideIdentification expected = written[i];
        for (IdentModification& mod : expected.vMods) {
            mod.strName = WithAny(mod.strName); // "x (N-term (N-term" changes twice
        }
        CheckSameTexts(seen[i], expected, rule);
        fuzz::Check(isNear(seen[i].dObsMH, expected.dObsMH), rule);
        fuzz::Check(isNear(seen[i].dMassShift, expected.dMassShift), rule);
        const double score = expected.dMainScore;
        const double allowed = score < 0.00001 ? 6e-6 * std::fabs(score) : 6e-7 + 1e-12 * score;
        fuzz::Check(std::fabs(seen[i].dMainScore - score) <= allowed, rule);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    fuzz::SilenceConsole();
    const std::string text = fuzz::Expanded(fuzz::TextOf(data, size));
    file.Write(text);
    const Outcome loaded = Load(file);
    CheckSameOutcome(loaded, OutcomeOf([&](Matches& out) { PlainLoad(text, out); }),
                     "a table reads as through the plain reader");

    TulkTXTPepIdentIO writer;
    writer.InitSave(file.Path());
    writer.Save(loaded.matches);
    writer.EndSave();
    const std::string saved = file.Read();
    fuzz::CheckSame(saved, PlainText(loaded.matches), "the text that is written");

    const Outcome again = Load(file);
    CheckSameOutcome(again, OutcomeOf([&](Matches& out) { PlainLoad(saved, out); }),
                     "a written table reads as through the plain reader");
    CheckRoundTrip(again.matches, loaded.matches);
    return 0;
}
