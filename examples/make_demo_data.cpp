// Makes the example data of examples/data: spectra of invented proteins, the
// table of their identifications and the database of the proteins.
//
//     make_demo_data FOLDER
#include <fstream>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "InventedSpectra.h"

namespace {

using namespace invented;

constexpr std::size_t kProteins = 7;
constexpr int kOtherProteins = 5; ///< of which no peptide was measured
constexpr int kSpectra = 300;

/// One identified spectrum.
struct Match {
    Peptide peptide;
    Ion ion;                                       ///< with the mass shift
    std::vector<std::pair<int, const char*>> mods; ///< position from 1, name
    int shiftPosition = -1; ///< residue that bears the open mass shift, from 0
    Micro shift = 0;
    Micro calculatedMh = 0; ///< without the mass shift
};

/// "DEMO1" of the first one.
std::string NameOfProtein(std::size_t place)
{
    return "DEMO" + std::to_string(place + 1);
}

/// Puts a mass shift on the match that the table does not explain.
void AddMassShift(Match& match, Chance& chance)
{
    const std::string& sequence = match.peptide.sequence;
    if (chance.Percent(20)) {
        match.shift = kAcetyl;
        match.shiftPosition = 0;
        return;
    }
    std::vector<int> sites;
    for (std::size_t i = 0; i < sequence.size(); ++i) {
        if (std::string("STY").find(sequence[i]) != std::string::npos) {
            sites.push_back(static_cast<int>(i));
        }
    }
    if (!sites.empty()) {
        match.shift = kPhospho;
        match.shiftPosition = chance.AnyOf(sites);
    }
}

Match MakeMatch(const Peptide& peptide, Chance& chance)
{
    Match match;
    match.peptide = peptide;
    match.ion.charge = peptide.sequence.size() >= 10 && chance.Percent(35) ? 3 : 2;
    match.calculatedMh = kWater + kProton;
    for (std::size_t i = 0; i < peptide.sequence.size(); ++i) {
        const char letter = peptide.sequence[i];
        Micro mass = ResidueMass(letter);
        if (letter == 'C') {
            mass += kCarbamidomethyl;
            match.mods.emplace_back(static_cast<int>(i) + 1, "Carbamidomethyl (C)");
        } else if (letter == 'M' && chance.Percent(50)) {
            mass += kOxidation;
            match.mods.emplace_back(static_cast<int>(i) + 1, "Oxidation (M)");
        }
        match.ion.residues.push_back(mass);
        match.calculatedMh += mass;
    }
    if (chance.Percent(18)) {
        AddMassShift(match, chance);
    }
    if (match.shift != 0) {
        match.ion.residues[static_cast<std::size_t>(match.shiftPosition)] += match.shift;
    }
    match.ion.neutral = match.calculatedMh - kProton + match.shift;
    return match;
}

void WriteRow(std::ostream& table, const std::string& dataset, const std::string& spectrum,
              const Match& match, Micro observedMh, Micro score)
{
    table << dataset << '\t' << spectrum << '\t' << match.peptide.sequence << '\t'
          << match.ion.charge << '\t' << Decimal(observedMh, 6) << '\t'
          << Decimal(observedMh - match.calculatedMh, 6) << '\t' << Decimal(score, 6) << "\t1\t";
    std::string names;
    std::string positions;
    for (const auto& [position, name] : match.mods) {
        names += (names.empty() ? "" : ";") + std::string(name);
        positions += (positions.empty() ? "" : ";") + std::to_string(position);
    }
    table << names << '\t' << positions << '\t' << match.peptide.protein << '\t'
          << match.peptide.before << '\t' << match.peptide.after << '\t' << match.peptide.start
          << '\n';
}

/// The spectra in the order of their scans; every twelfth is not identified.
void WriteRun(std::ostream& mgf, std::ostream& table, const std::vector<Peptide>& peptides,
              Chance& chance)
{
    int scan = 17;
    for (int i = 0; i < kSpectra; ++i) {
        const Match match = MakeMatch(chance.AnyOf(peptides), chance);
        const int charge = match.ion.charge;
        const Micro precursor = Measured(match.ion.neutral, charge, 3, chance);
        const Micro observedMh = precursor * charge - (charge - 1) * kProton;
        const bool isIdentified = i % 12 != 11;
        std::vector<Peak> peaks = isIdentified ? MakePeaks(match.ion, chance) : std::vector<Peak>();
        const auto score = static_cast<Micro>(peaks.size()) * 1250000 + chance.Below(1000000);
        AddNoise(peaks, chance);
        WriteSpectrum(mgf, "demo", scan, charge, precursor, peaks);
        if (isIdentified) {
            WriteRow(table, "demo.mgf", Dotted("demo", scan, charge), match, observedMh, score);
        }
        scan += static_cast<int>(chance.Between(1, 9));
    }
    // Three rows have no spectrum, as happens when files are mixed up.
    for (const auto& [dataset, lateScan] :
         {std::pair<const char*, int>{"demo.mgf", 9001}, {"demo.mgf", 9002}, {"other.mgf", 17}}) {
        const Match match = MakeMatch(chance.AnyOf(peptides), chance);
        WriteRow(table, dataset, Dotted("demo", lateScan, match.ion.charge), match,
                 match.calculatedMh + match.shift, 21000000);
    }
}

void WriteProtein(std::ostream& database, const std::string& name, const std::string& description,
                  const std::string& protein)
{
    constexpr std::size_t kLine = 60;
    database << '>' << name << ' ' << description << '\n';
    for (std::size_t begin = 0; begin < protein.size(); begin += kLine) {
        database << protein.substr(begin, kLine) << '\n';
    }
}

/// The proteins of the peptides, and some more.
void WriteDatabase(std::ostream& database, const std::vector<std::string>& proteins, Chance& chance)
{
    for (std::size_t i = 0; i < proteins.size(); ++i) {
        WriteProtein(database, NameOfProtein(i), "Invented protein of the measured peptides",
                     proteins[i]);
    }
    for (int i = 1; i <= kOtherProteins; ++i) {
        WriteProtein(database, "OTHER" + std::to_string(i), "Invented protein, not measured",
                     InventProtein(chance));
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: make_demo_data FOLDER\n";
        return 2;
    }
    const std::string folder = argv[1];
    std::ofstream mgf(folder + "/demo.mgf", std::ios::binary);
    std::ofstream table(folder + "/demo_psms.txt", std::ios::binary);
    table << "Dataset Name\tSpectrum Name\tSequence\tCharge\tObsMH\tMass Shift\tMain Score\t"
             "High Score Better\tIdentified Mod Name\tIdentified Mod Position\tProtein Access\t"
             "Before AA\tAfter AA\tProtein Start Position\n";
    std::ofstream database(folder + "/demo.fasta", std::ios::binary);
    Chance chance(20261120);
    std::vector<std::string> proteins;
    std::vector<Peptide> peptides;
    for (std::size_t i = 0; i < kProteins; ++i) {
        proteins.push_back(InventProtein(chance));
        Digest(proteins.back(), NameOfProtein(i), 0, peptides);
    }
    WriteRun(mgf, table, peptides, chance);
    WriteDatabase(database, proteins, chance);
    mgf.close();
    table.close();
    database.close();
    if (!mgf || !table || !database) {
        std::cerr << "cannot write into " << folder << '\n';
        return 1;
    }
    return 0;
}
