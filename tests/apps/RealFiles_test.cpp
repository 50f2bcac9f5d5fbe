// The program on real spectra: ions of identified peptides against ions of the
// same peptides shuffled.
#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

#include "ParameterFiles.h"
#include "common/Words.h"
#include "run/Parameters.h"

namespace pelgrin::test {
namespace {

using Vorlan::test::ReadFile;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;

constexpr double kProton = 1.00727646688;

using Mods = std::vector<std::pair<std::size_t, std::string>>; ///< position, name

struct Match {
    std::string spectrum;
    std::string sequence;
    int charge = 0;
    double neutralMass = 0.0;
    double calculatedMass = 0.0;
    double expectation = 0.0;
    std::string score;
    std::string protein;
    Mods mods;
};

std::vector<std::string> Split(const std::string& text, char separator)
{
    std::vector<std::string> pieces;
    std::istringstream stream(text);
    for (std::string piece; std::getline(stream, piece, separator);) {
        pieces.push_back(piece);
    }
    return pieces;
}

double Number(const std::string& text)
{
    return ParseNumber(text).value();
}

Row RowOf(const std::string& dataset, const Match& match)
{
    Row row;
    row.dataset = dataset;
    row.spectrum = match.spectrum;
    row.sequence = match.sequence;
    row.charge = std::to_string(match.charge);
    row.observedMh = std::to_string(match.neutralMass + kProton);
    row.massShift = std::to_string(match.neutralMass - match.calculatedMass);
    row.score = match.score;
    for (const auto& [position, name] : match.mods) {
        row.modNames += (row.modNames.empty() ? "" : ";") + name;
        row.modPositions += (row.modPositions.empty() ? "" : ";") + std::to_string(position);
    }
    return row;
}

/// Another order of all residues but the last, modifications with them.
Match Shuffled(Match match, std::mt19937_64& chance)
{
    for (std::size_t i = match.sequence.size() - 1; i > 1; --i) {
        const std::size_t a = i - 1;
        const std::size_t b = chance() % i;
        std::swap(match.sequence[a], match.sequence[b]);
        for (auto& [position, name] : match.mods) {
            position = position == a + 1 ? b + 1 : position == b + 1 ? a + 1 : position;
        }
    }
    std::sort(match.mods.begin(), match.mods.end());
    return match;
}

std::vector<Match> Shuffled(const std::vector<Match>& matches)
{
    std::mt19937_64 chance(20261120);
    std::vector<Match> shuffled;
    for (const Match& match : matches) {
        shuffled.push_back(Shuffled(match, chance));
    }
    return shuffled;
}

/// Annotates matches of one MGF file and gives the summary.
nlohmann::json Annotated(const std::string& mgf, const std::vector<Match>& matches,
                         const std::vector<std::string>& mods)
{
    const TempFolder folder;
    std::vector<Row> rows;
    for (const Match& match : matches) {
        rows.push_back(RowOf(std::filesystem::path(mgf).filename().string(), match));
    }
    std::vector<std::string> arguments = {"annotate",
                                          "--spectra",
                                          mgf,
                                          "--psms",
                                          folder.Write("psms.txt", TableOf(rows)),
                                          "--tolerance",
                                          "0.02Da",
                                          "--ions",
                                          "b,y",
                                          "--out",
                                          folder.PathOf("out")};
    for (const std::string& mod : mods) {
        arguments.insert(arguments.end(), {"--mod", mod});
    }
    const Outcome outcome = RunPelgrin(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    nlohmann::json summary = nlohmann::json::parse(ReadFile(folder.PathOf("out/summary.json")));
    ExpectCountsAddUp(summary);
    return summary;
}

double ShareOf(const nlohmann::json& summary)
{
    return summary["ions"]["share"].get<double>();
}

double ShareOf(const nlohmann::json& summary, const char* series, const char* status)
{
    return summary["ions"]["series"][series][status]["share"].get<double>();
}

// ---- The F13 set ------------------------------------------------------------

std::string F13(const std::string& name)
{
    return RealDataFolder() + "/comet/F13_set/" + name;
}

/// "1_S_57.021464,4_V_15.994900,1_V_42.010565_N" of Comet's text output.
Mods ModsOfComet(const std::string& text)
{
    Mods mods;
    for (const std::string& piece : Split(text == "-" ? "" : text, ',')) {
        const std::vector<std::string> parts = Split(piece, '_');
        const std::size_t position = std::stoul(parts.at(0));
        if (parts.size() > 3) {
            mods.emplace_back(0, "Acetyl (Protein N-term)");
        } else {
            mods.emplace_back(position,
                              parts.at(1) == "S" ? "Carbamidomethyl (C)" : "Oxidation (M)");
        }
    }
    std::sort(mods.begin(), mods.end());
    return mods;
}

/// The first row of every scan and charge.
std::vector<Match> MatchesOfComet(const std::string& path)
{
    std::istringstream lines(ReadFile(path));
    std::string line;
    std::getline(lines, line);
    std::getline(lines, line);
    std::vector<Match> matches;
    std::string former;
    while (std::getline(lines, line)) {
        const std::vector<std::string> cells = Split(line, '\t');
        char name[64];
        std::snprintf(name, sizeof name, "F13.%05d.%05d.%d", std::stoi(cells.at(0)),
                      std::stoi(cells.at(0)), std::stoi(cells.at(2)));
        if (cells.at(1) != "1" || former == name) {
            continue;
        }
        former = name;
        matches.push_back({name, cells.at(11), std::stoi(cells.at(2)), Number(cells.at(3)),
                           Number(cells.at(4)), Number(cells.at(5)), cells.at(6), cells.at(15),
                           ModsOfComet(cells.at(17))});
    }
    return matches;
}

const std::vector<std::string> kF13Mods = {"Carbamidomethyl (C)=57.021464", "Oxidation (M)=15.9949",
                                           "Acetyl (Protein N-term)=42.010565"};

TEST(RealFiles, EveryBestMatchOfTheF13SetMeetsItsSpectrum)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::vector<Match> matches = MatchesOfComet(F13("closed/F13.txt"));
    ASSERT_GT(matches.size(), 500U);
    const nlohmann::json summary = Annotated(F13("F13.mgf"), matches, kF13Mods);
    EXPECT_EQ(summary["spectra"]["total"], 1406);
    EXPECT_EQ(summary["spectra"]["names_in_index"], 5624);
    EXPECT_EQ(summary["records"]["annotated"].get<std::size_t>(), matches.size());
    EXPECT_EQ(summary["records"]["joined"]["by_file_name"].get<std::size_t>(), matches.size());
}

/// The spectra carry a label of 229.163 Da that the searches did not know: the
/// closed one finds nothing worth the name, the open one finds the label as a
/// mass shift.
std::vector<Match> LabelledMatches()
{
    std::vector<Match> labelled;
    for (const Match& match : MatchesOfComet(F13("open/F13.txt"))) {
        const double shift = match.neutralMass - match.calculatedMass;
        if (match.expectation < 0.1 && std::fabs(shift - 229.162932) < 0.03) {
            labelled.push_back(match);
        }
    }
    return labelled;
}

TEST(RealFiles, AMassShiftAtTheNTerminusShiftsBAndNotY)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::vector<Match> matches = LabelledMatches();
    ASSERT_GE(matches.size(), 9U);
    const nlohmann::json right = Annotated(F13("F13.mgf"), matches, kF13Mods);
    const nlohmann::json shuffled = Annotated(F13("F13.mgf"), Shuffled(matches), kF13Mods);
    for (const auto& [name, summary] :
         {std::pair<const char*, nlohmann::json>{"right", right}, {"shuffled", shuffled}}) {
        for (const char* const series : {"b", "y"}) {
            for (const char* const status : {"unshift", "shift"}) {
                RecordProperty(std::string(name) + "_" + series + "_" + status,
                               std::to_string(ShareOf(summary, series, status)));
            }
        }
    }
    EXPECT_GT(ShareOf(right, "b", "shift"), 3 * ShareOf(right, "b", "unshift"));
    EXPECT_GT(ShareOf(right, "y", "unshift"), 3 * ShareOf(right, "y", "shift"));
    EXPECT_GT(ShareOf(right, "b", "shift"), 3 * ShareOf(shuffled, "b", "shift"));
    EXPECT_GT(ShareOf(right, "y", "unshift"), 3 * ShareOf(shuffled, "y", "unshift"));
}

TEST(RealFiles, ALabelGivenAsModificationOfTheNTerminusIsFound)
{
    PELGRIN_NEEDS_REAL_DATA();
    std::vector<Match> matches = LabelledMatches();
    for (Match& match : matches) {
        match.calculatedMass += 229.162932;
        match.mods.insert(match.mods.begin(), {0, "TMT6plex (N-term)"});
    }
    std::vector<std::string> mods = kF13Mods;
    mods.emplace_back("TMT6plex (N-term)=229.162932");
    const double right = ShareOf(Annotated(F13("F13.mgf"), matches, mods));
    const double shuffled = ShareOf(Annotated(F13("F13.mgf"), Shuffled(matches), mods));
    RecordProperty("right", std::to_string(right));
    RecordProperty("shuffled", std::to_string(shuffled));
    EXPECT_GT(right, 3 * shuffled);
    EXPECT_GT(right, 0.25);
}

/// An open search of F13.mgf, with every modification from a table.
Ini F13Ini()
{
    return Ini()
        .With("Search", "open_search", "1")
        .With("Search", "precursor_matching_tolerance", "500")
        .With("Search", "precursor_matching_tolerance_type", "0")
        .With("Search", "fragment_tol", "0.02")
        .With("Search", "fragment_tol_type", "0")
        .With("Search", "dataset_filename_1", F13("F13.mgf"));
}

std::vector<Row> RowsOf(const std::vector<Match>& matches)
{
    std::vector<Row> rows;
    for (const Match& match : matches) {
        rows.push_back(RowOf("F13.mgf", match));
        rows.back().protein = match.protein;
    }
    return rows;
}

TEST(RealFiles, ARunOfAParameterFileFindsTheIonsThatAnnotateFinds)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::vector<Match> matches = MatchesOfComet(F13("open/F13.txt"));
    const ParameterWorkplace workplace;
    const Outcome outcome = workplace.Run(F13Ini(), RowsOf(matches));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const nlohmann::json run = workplace.Summary();
    ExpectCountsAddUp(run);
    EXPECT_EQ(run["records"]["annotated"].get<std::size_t>(), matches.size());
    std::vector<std::string> mods = kF13Mods;
    mods[1] = "Oxidation (M)=15.994915"; // as the table has it
    const nlohmann::json annotate = Annotated(F13("F13.mgf"), matches, mods);
    EXPECT_EQ(run["ions"], annotate["ions"]);
    EXPECT_EQ(run["records"]["joined"], annotate["records"]["joined"]);
}

TEST(RealFiles, FdrControlLeavesAsManyMatchesAsACountOfTheirScoresSays)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::vector<Match> matches = MatchesOfComet(F13("open/F13.txt"));
    const ParameterWorkplace workplace;
    const Ini ini = F13Ini().WithFdr("0.25").With("Fdr", "decoy_tag", "DECOY_");
    const Outcome outcome = workplace.Run(ini, RowsOf(matches));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const nlohmann::json summary = workplace.Summary();
    ExpectCountsAddUp(summary);
    const auto passing = summary["fdr"][0]["passing"].get<std::size_t>();
    ASSERT_GT(passing, 0U);
    const auto worst = summary["fdr"][0]["worst_score"].get<double>();
    std::size_t targets = 0;
    std::size_t decoys = 0;
    for (const Match& match : matches) {
        if (Number(match.score) >= worst) {
            ++(match.protein.rfind("DECOY_", 0) == 0 ? decoys : targets);
        }
    }
    RecordProperty("passing", static_cast<int>(passing));
    EXPECT_EQ(passing, targets);
    EXPECT_LE(static_cast<double>(decoys), 0.25 * static_cast<double>(targets));
    EXPECT_EQ(summary["records"]["annotated"].get<std::size_t>(), passing);
}

// ---- The Jurkat set ---------------------------------------------------------

std::string Jurkat(const std::string& name)
{
    return RealDataFolder() + "/comet/Jurkat_set/" + name;
}

/// The value of an attribute in a line of XML; empty when it is not there.
std::string Attribute(const std::string& line, const std::string& name)
{
    const std::string key = " " + name + "=\"";
    const std::size_t hit = line.find(key);
    if (hit == std::string::npos) {
        return {};
    }
    const std::size_t begin = hit + key.size();
    return line.substr(begin, line.find('"', begin) - begin);
}

Mods::value_type ModOfPepXml(const std::string& line, const std::string& sequence)
{
    const std::size_t position = std::stoul(Attribute(line, "position"));
    switch (sequence.at(position - 1)) {
    case 'C': return {position, "Carbamidomethyl (C)"};
    case 'M': return {position, "Oxidation (M)"};
    default: return {position, "Phospho (STY)"};
    }
}

/// The first hit of every query of a pepXML file that Comet wrote, tag by line.
std::vector<Match> MatchesOfPepXml(const std::string& path)
{
    std::istringstream lines(ReadFile(path));
    std::vector<Match> matches;
    Match match;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t tag = line.find('<');
        const auto begins = [&](const char* name) { return line.find(name) == tag; };
        if (tag == std::string::npos) {
            continue;
        }
        if (begins("<spectrum_query ")) {
            match = Match();
            match.spectrum = Attribute(line, "spectrum");
            match.charge = std::stoi(Attribute(line, "assumed_charge"));
            match.neutralMass = Number(Attribute(line, "precursor_neutral_mass"));
        } else if (begins("<search_hit ")) {
            match.sequence = Attribute(line, "peptide");
            match.calculatedMass = Number(Attribute(line, "calc_neutral_pep_mass"));
            match.protein = Attribute(line, "protein");
        } else if (begins("<modification_info")
                   && line.find("mod_nterm_mass=") != std::string::npos) {
            match.mods.emplace_back(0, "Acetyl (Protein N-term)");
        } else if (begins("<mod_aminoacid_mass ")) {
            match.mods.push_back(ModOfPepXml(line, match.sequence));
        } else if (begins("<search_score ") && Attribute(line, "name") == "xcorr") {
            match.score = Attribute(line, "value");
        } else if (begins("<search_score ") && Attribute(line, "name") == "expect") {
            match.expectation = Number(Attribute(line, "value"));
        } else if (begins("</search_hit>")) {
            matches.push_back(match);
        }
    }
    return matches;
}

TEST(RealFiles, SpectraOfTheJurkatSetHoldFarMoreIonsOfTheirPeptidesThanOfShuffledOnes)
{
    PELGRIN_NEEDS_REAL_DATA();
    std::vector<Match> good;
    for (const Match& match :
         MatchesOfPepXml(Jurkat("closed/PV_Jurk_Promega50_IAP_minwash.pep.xml"))) {
        if (match.expectation < 0.01) {
            good.push_back(match);
        }
    }
    ASSERT_GT(good.size(), 20U);
    const std::vector<std::string> mods = {"Carbamidomethyl (C)=57.021464", "Oxidation (M)=15.9949",
                                           "Phospho (STY)=79.966331",
                                           "Acetyl (Protein N-term)=42.010565"};
    const std::string mgf = Jurkat("PV_Jurk_Promega50_IAP_minwash.mgf");
    const double right = ShareOf(Annotated(mgf, good, mods));
    const double shuffled = ShareOf(Annotated(mgf, Shuffled(good), mods));
    RecordProperty("matches", static_cast<int>(good.size()));
    RecordProperty("right", std::to_string(right));
    RecordProperty("shuffled", std::to_string(shuffled));
    EXPECT_GT(right, 3 * shuffled);
    EXPECT_GT(right, 0.25);
}

} // namespace
} // namespace pelgrin::test
