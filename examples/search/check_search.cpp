// Compares what pelgrin made of Comet's result with what the spectra are of.
//
//     check_search closed|open      in the folder of the run
//
// It reads truth.tsv, Comet's text table (not the pepXML that pelgrin read),
// the parameter file and pelgrin's results.txt. Of what Comet reports right it
// counts how much came out right, and ends with status 1 when that is less
// than kLeastShare of anything counted, or when FDR control kept other matches
// than those which a plain count keeps.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr double kLeastShare = 0.95;
constexpr double kMassTolerance = 0.01;  // Da, for a modification as Comet writes it
constexpr double kShiftTolerance = 0.02; // Da, for a shift: 4 ppm of the precursor are in it

using Row = std::map<std::string, std::string>; // column, cell

struct Placed {
    std::size_t position = 0; // residue from 1, N-terminus 0
    std::string name;         // empty for what Comet tells
    double mass = 0.0;
};

struct Truth {
    std::string sequence;
    std::vector<Placed> told; // to the search
    double untold = 0.0;      // sum of the masses of all others
};

struct Hit {
    std::string sequence;
    double score = 0.0; // the lower the better
    bool isDecoy = false;
    std::vector<Placed> mods;
};

struct Share {
    std::size_t right = 0;
    std::size_t all = 0;

    void Count(bool isRight)
    {
        ++all;
        right += isRight ? 1U : 0U;
    }
    bool IsGood() const
    {
        return all > 0 && static_cast<double>(right) >= kLeastShare * static_cast<double>(all);
    }
};

std::ifstream Opened(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error(path + " cannot be read");
    }
    return file;
}

std::vector<std::string> Split(const std::string& text, char separator)
{
    std::vector<std::string> pieces;
    std::istringstream stream(text);
    std::string piece;
    while (std::getline(stream, piece, separator)) {
        pieces.push_back(piece);
    }
    return pieces;
}

/// The rows of a table whose header stands behind some other lines.
std::vector<Row> ReadTable(const std::string& path, int linesBefore)
{
    std::ifstream file = Opened(path);
    std::string line;
    for (int i = 0; i < linesBefore; ++i) {
        std::getline(file, line);
    }
    std::getline(file, line);
    const std::vector<std::string> columns = Split(line, '\t');
    std::vector<Row> rows;
    while (std::getline(file, line)) {
        const std::vector<std::string> cells = Split(line, '\t');
        Row& row = rows.emplace_back();
        for (std::size_t i = 0; i < columns.size(); ++i) {
            row[columns[i]] = i < cells.size() ? cells[i] : "";
        }
    }
    return rows;
}

/// Key and value of each line of a parameter file, without comments.
Row ReadParameters(const std::string& path)
{
    std::ifstream file = Opened(path);
    Row parameters;
    std::string line;
    while (std::getline(file, line)) {
        line.resize(std::min(line.find('#'), line.size()));
        const std::size_t equals = line.find(" = ");
        if (equals != std::string::npos) {
            const std::size_t end = line.find_last_not_of(' ');
            parameters[line.substr(0, equals)] = line.substr(equals + 3, end - equals - 2);
        }
    }
    return parameters;
}

std::set<std::string> ToldNames(const Row& parameters)
{
    std::set<std::string> names;
    for (const auto& [key, value] : parameters) {
        const bool isMod = key.find("_mod_") != std::string::npos;
        if (isMod && key.find("number") == std::string::npos) {
            names.insert(value);
        }
    }
    return names;
}

std::map<std::string, Truth> ReadTruth(const std::set<std::string>& toldNames)
{
    std::map<std::string, Truth> truths;
    for (const Row& row : ReadTable("truth.tsv", 0)) {
        Truth& truth = truths[row.at("Spectrum Name")];
        truth.sequence = row.at("Sequence");
        for (const std::string& text : Split(row.at("Modifications"), ';')) {
            const std::vector<std::string> parts = Split(text, '=');
            const Placed placed = {std::stoul(parts.at(0)), parts.at(1), std::stod(parts.at(2))};
            if (toldNames.count(placed.name) > 0) {
                truth.told.push_back(placed);
            } else {
                truth.untold += placed.mass;
            }
        }
    }
    return truths;
}

/// "5_S_57.021464" or, at the beginning of a protein, "1_V_42.010565_N".
Placed CometModification(const std::string& text)
{
    const std::vector<std::string> parts = Split(text, '_');
    const bool isTerminus = parts.size() > 3;
    return {isTerminus ? 0 : std::stoul(parts.at(0)), "", std::stod(parts.at(2))};
}

std::map<std::string, Hit> ReadHits(const std::string& search)
{
    std::map<std::string, Hit> hits;
    for (const Row& row : ReadTable(search + "/search.txt", 1)) {
        const std::string scan = std::string(5 - row.at("scan").size(), '0') + row.at("scan");
        Hit& hit = hits["search." + scan + "." + scan + "." + row.at("charge")];
        hit.sequence = row.at("plain_peptide");
        hit.score = std::stod(row.at("e-value"));
        hit.isDecoy = row.at("protein").rfind("DECOY_", 0) == 0;
        for (const std::string& text : Split(row.at("modifications"), ',')) {
            if (text != "-") {
                hit.mods.push_back(CometModification(text));
            }
        }
    }
    return hits;
}

/// (decoys + 1) / targets among the hits that score at least as well.
double RateAt(double score, const std::map<std::string, Hit>& hits)
{
    double decoys = 0.0;
    double targets = 0.0;
    for (const auto& [name, hit] : hits) {
        if (hit.score <= score) {
            (hit.isDecoy ? decoys : targets) += 1.0;
        }
    }
    return (decoys + 1.0) / targets; // the formula of both parameter files
}

/// The names that FDR control keeps: targets up to the worst score whose rate
/// is good enough.
std::set<std::string> ExpectedNames(const std::map<std::string, Hit>& hits, const Row& parameters)
{
    const bool isControlled = parameters.at("is_fdr_control") != "0";
    double worst = -1.0;
    for (const auto& [name, hit] : hits) {
        if (isControlled && RateAt(hit.score, hits) <= std::stod(parameters.at("fdr_threshold"))) {
            worst = std::max(worst, hit.score);
        }
    }
    std::set<std::string> names;
    for (const auto& [name, hit] : hits) {
        if (!isControlled || (!hit.isDecoy && hit.score <= worst)) {
            names.insert(name);
        }
    }
    return names;
}

bool IsReported(const Placed& placed, const std::vector<Placed>& mods)
{
    return std::any_of(mods.begin(), mods.end(), [&](const Placed& other) {
        return other.position == placed.position
               && std::abs(other.mass - placed.mass) < kMassTolerance;
    });
}

/// As the native table names it: without the site, and what only sits at the
/// beginning of a peptide has the position of that beginning.
bool IsNamed(const Placed& placed, const Row& row)
{
    const std::size_t site = placed.name.rfind(" (");
    const bool isTerminal = placed.name.find("-term", site) != std::string::npos;
    const std::string position = isTerminal ? "0" : std::to_string(placed.position);
    const std::vector<std::string> names = Split(row.at("Identified Mod Name"), ';');
    const std::vector<std::string> positions = Split(row.at("Identified Mod Position"), ';');
    for (std::size_t i = 0; i < std::min(names.size(), positions.size()); ++i) {
        if (names[i] == placed.name.substr(0, site) && positions[i] == position) {
            return true;
        }
    }
    return false;
}

struct Figures {
    std::size_t rightHits = 0;
    std::map<std::string, Share> residues; // by modification
    Share allResidues;
    Share termini;
    Share surplus; // right: rows that name no more than Comet reports
    Share shifts;
};

/// One hit with the right sequence, and its row; an empty one when it is lost.
void CountHit(const Truth& truth, const Hit& hit, const Row& row, Figures& figures)
{
    std::size_t reported = 0;
    for (const Placed& placed : truth.told) {
        if (!IsReported(placed, hit.mods)) {
            continue;
        }
        ++reported;
        const bool isRight = !row.empty() && IsNamed(placed, row);
        if (placed.position == 0) {
            figures.termini.Count(isRight);
        } else {
            figures.residues[placed.name].Count(isRight);
            figures.allResidues.Count(isRight);
        }
    }
    if (row.empty()) {
        return;
    }
    figures.surplus.Count(Split(row.at("Identified Mod Name"), ';').size() <= hit.mods.size());
    const bool isWhole = reported == truth.told.size() && reported == hit.mods.size();
    if (isWhole && truth.untold != 0.0) {
        const double shift = std::stod(row.at("Mass Shift"));
        figures.shifts.Count(std::abs(shift - truth.untold) < kShiftTolerance);
    }
}

void Print(const std::string& what, const Share& share)
{
    const double percent =
        share.all == 0 ? 0.0
                       : 100.0 * static_cast<double>(share.right) / static_cast<double>(share.all);
    std::cout << "  " << std::left << std::setw(44) << what << std::right << std::setw(5)
              << share.right << " of " << std::setw(4) << share.all << std::fixed
              << std::setprecision(1) << std::setw(7) << percent << " %\n";
}

/// Whether all is good.
bool Report(const std::string& search, const Figures& figures, const Share& kept)
{
    std::cout << "What came out of the " << search << " search, of what Comet reports right\n";
    Print("matches that FDR control should keep", kept);
    std::cout << "    of them with the right sequence " << figures.rightHits << '\n';
    Print("modified residues", figures.allResidues);
    bool isGood = kept.right == kept.all && figures.allResidues.IsGood() && figures.termini.IsGood()
                  && figures.surplus.IsGood();
    for (const auto& [name, share] : figures.residues) {
        Print("  " + name, share);
        isGood = isGood && share.IsGood(); // a rare one must not hide among the others
    }
    Print("modified termini of proteins", figures.termini);
    Print("matches without a modification too many", figures.surplus);
    if (search == "open") {
        Print("mass shifts of what it was not told", figures.shifts);
        isGood = isGood && figures.shifts.IsGood();
    }
    std::cout << (isGood ? "good" : "NOT GOOD") << ": at least " << 100 * kLeastShare
              << " % are wanted, and exactly the matches to keep\n";
    return isGood;
}

bool Check(const std::string& search)
{
    const Row parameters = ReadParameters(search + ".ini");
    const std::map<std::string, Truth> truths = ReadTruth(ToldNames(parameters));
    const std::map<std::string, Hit> hits = ReadHits(search);
    const std::set<std::string> expected = ExpectedNames(hits, parameters);
    std::map<std::string, Row> rows;
    for (const Row& row : ReadTable(search + "/result/results.txt", 0)) {
        rows[row.at("Spectrum Name")] = row;
    }
    Share kept;
    Figures figures;
    for (const std::string& name : expected) {
        kept.Count(rows.count(name) > 0);
        const auto truth = truths.find(name); // none for noise
        const Hit& hit = hits.at(name);
        if (truth != truths.end() && truth->second.sequence == hit.sequence) {
            ++figures.rightHits;
            CountHit(truth->second, hit, rows[name], figures);
        }
    }
    for (const auto& [name, row] : rows) { // none may be kept besides
        if (!row.empty() && expected.count(name) == 0) {
            kept.Count(false);
        }
    }
    return Report(search, figures, kept);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string search = argc == 2 ? argv[1] : "";
    if (search != "closed" && search != "open") {
        std::cerr << "usage: check_search closed|open\n";
        return 2;
    }
    try {
        return Check(search) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& problem) {
        std::cerr << "check_search: " << problem.what() << '\n';
        return EXIT_FAILURE;
    }
}
