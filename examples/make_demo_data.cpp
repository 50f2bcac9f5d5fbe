// Makes the example data of examples/data: spectra of invented proteins and the
// table of their identifications.
//
//     make_demo_data FOLDER
//
// The same bytes come out on every machine: masses are whole numbers of
// millionths of a dalton, and chance is the bare output of std::mt19937_64,
// which the standard fixes.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Micro = std::int64_t; ///< 1e-6 Da, or 1e-6 Th

constexpr Micro kProton = 1007276;
constexpr Micro kWater = 18010565;
constexpr Micro kOxidation = 15994915;
constexpr Micro kCarbamidomethyl = 57021464;
constexpr Micro kPhospho = 79966331;
constexpr Micro kAcetyl = 42010565;

constexpr int kProteins = 7;
constexpr int kProteinLength = 170;
constexpr int kSpectra = 300;
constexpr int kNoisePeaks = 34;

/// Whole numbers by chance.
class Chance {
public:
    /// 0 to count - 1. The slight unevenness of the remainder does not matter.
    Micro Below(Micro count)
    {
        return static_cast<Micro>(engine_() % static_cast<std::uint64_t>(count));
    }
    Micro Between(Micro low, Micro high) { return low + Below(high - low + 1); }
    bool Percent(int percent) { return Below(100) < percent; }

private:
    std::mt19937_64 engine_{20261120};
};

Micro ResidueMass(char letter)
{
    static const std::map<char, Micro> masses = {
        {'G', 57021464},  {'A', 71037114},  {'S', 87032028},  {'P', 97052764},  {'V', 99068414},
        {'T', 101047679}, {'C', 103009185}, {'L', 113084064}, {'I', 113084064}, {'N', 114042927},
        {'D', 115026943}, {'Q', 128058578}, {'K', 128094963}, {'E', 129042593}, {'M', 131040485},
        {'H', 137058912}, {'F', 147068414}, {'R', 156101111}, {'Y', 163063329}, {'W', 186079313}};
    return masses.at(letter);
}

struct Peptide {
    std::string sequence;
    std::string protein;
    char before = '-';
    char after = '-';
    int start = 0; ///< in the protein, from 1
};

/// One identified spectrum.
struct Match {
    Peptide peptide;
    int charge = 2;
    std::vector<std::pair<int, const char*>> mods; ///< position from 1, name
    int shiftPosition = -1; ///< residue that bears the open mass shift, from 0
    Micro shift = 0;
    std::vector<Micro> residues; ///< with modifications and mass shift
    Micro calculatedMh = 0;      ///< without the mass shift
};

struct Peak {
    Micro mz;
    Micro intensity;
};

std::string Decimal(Micro value, int digits)
{
    Micro unit = 1;
    for (int i = digits; i < 6; ++i) {
        unit *= 10;
    }
    const bool isNegative = value < 0;
    const Micro rounded = ((isNegative ? -value : value) + unit / 2) / unit;
    const Micro whole = 1000000 / unit;
    std::string fraction = std::to_string(rounded % whole);
    fraction.insert(0, static_cast<std::size_t>(digits) - fraction.size(), '0');
    return (isNegative && rounded != 0 ? "-" : "") + std::to_string(rounded / whole) + "."
           + fraction;
}

/// A protein with residues about as frequent as in nature.
std::string InventProtein(Chance& chance)
{
    const std::string residues =
        "AAAAAAAACCDDDDDEEEEEEFFFFGGGGGGGHHIIIIIIKKKKKLLLLLLLLLMMMNNNNPPPPQQQQ"
        "RRRRRSSSSSSSTTTTTVVVVVVVWYYY";
    std::string protein = "M";
    while (protein.size() < kProteinLength) {
        protein +=
            residues[static_cast<std::size_t>(chance.Below(static_cast<Micro>(residues.size())))];
    }
    return protein;
}

/// Cuts behind K and R unless P follows; keeps peptides of 7 to 18 residues.
void Digest(const std::string& protein, const std::string& name, std::vector<Peptide>& peptides)
{
    std::size_t begin = 0;
    for (std::size_t i = 0; i < protein.size(); ++i) {
        const bool isLast = i + 1 == protein.size();
        const bool isBasic = protein[i] == 'K' || protein[i] == 'R';
        if (!isLast && !(isBasic && protein[i + 1] != 'P')) {
            continue;
        }
        const std::size_t length = i + 1 - begin;
        if (length >= 7 && length <= 18) {
            peptides.push_back({protein.substr(begin, length), name,
                                begin == 0 ? '-' : protein[begin - 1],
                                isLast ? '-' : protein[i + 1], static_cast<int>(begin) + 1});
        }
        begin = i + 1;
    }
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
        match.shiftPosition =
            sites[static_cast<std::size_t>(chance.Below(static_cast<Micro>(sites.size())))];
    }
}

Match MakeMatch(const Peptide& peptide, Chance& chance)
{
    Match match;
    match.peptide = peptide;
    match.charge = peptide.sequence.size() >= 10 && chance.Percent(35) ? 3 : 2;
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
        match.residues.push_back(mass);
        match.calculatedMh += mass;
    }
    if (chance.Percent(18)) {
        AddMassShift(match, chance);
    }
    if (match.shift != 0) {
        match.residues[static_cast<std::size_t>(match.shiftPosition)] += match.shift;
    }
    return match;
}

/// mass / charge with a measurement error of up to ppm millionths.
Micro Measured(Micro mass, int charge, Micro ppm, Chance& chance)
{
    const Micro mz = (mass + charge * kProton + charge / 2) / charge;
    return mz + mz / 1000000 * chance.Between(-1000 * ppm, 1000 * ppm) / 1000;
}

void AddIon(std::vector<Peak>& peaks, Micro mass, int charge, Micro strongest, Chance& chance)
{
    const Micro mz = Measured(mass, charge, 5, chance);
    if (mz >= 110000000) { // the instrument sees nothing below
        peaks.push_back({mz, chance.Between(strongest / 8, strongest)});
    }
}

/// b and y ions, some of them missing, and noise.
std::vector<Peak> MakePeaks(const Match& match, Chance& chance)
{
    std::vector<Peak> peaks;
    Micro before = 0;
    Micro after = match.calculatedMh - kProton + match.shift;
    for (std::size_t i = 0; i + 1 < match.residues.size(); ++i) {
        before += match.residues[i];
        after -= match.residues[i];
        if (chance.Percent(82)) {
            AddIon(peaks, before, 1, 8000, chance);
        }
        if (chance.Percent(93)) {
            AddIon(peaks, after, 1, 16000, chance);
        }
        if (match.charge > 2 && chance.Percent(55)) {
            AddIon(peaks, before, 2, 3000, chance);
        }
        if (match.charge > 2 && chance.Percent(65)) {
            AddIon(peaks, after, 2, 6000, chance);
        }
    }
    return peaks;
}

void AddNoise(std::vector<Peak>& peaks, Chance& chance)
{
    for (int i = 0; i < kNoisePeaks; ++i) {
        peaks.push_back({chance.Between(110000000, 1500000000), chance.Between(100, 1200)});
    }
    std::sort(peaks.begin(), peaks.end(), [](const Peak& a, const Peak& b) {
        return a.mz != b.mz ? a.mz < b.mz : a.intensity < b.intensity;
    });
}

std::string Dotted(int scan, int charge)
{
    char text[64];
    std::snprintf(text, sizeof text, "demo.%05d.%05d.%d", scan, scan, charge);
    return text;
}

void WriteSpectrum(std::ostream& mgf, int scan, int charge, Micro precursor,
                   const std::vector<Peak>& peaks)
{
    const std::string number = std::to_string(scan);
    mgf << "BEGIN IONS\nTITLE=demo." << number << '.' << number << '.' << charge
        << " File:\"demo.raw\", NativeID:\"controllerType=0 controllerNumber=1 scan=" << number
        << "\"\nRTINSECONDS=" << Decimal(scan * Micro{410000}, 2)
        << "\nPEPMASS=" << Decimal(precursor, 5) << "\nCHARGE=" << charge << "+\nSCANS=" << number
        << '\n';
    for (const Peak& peak : peaks) {
        mgf << Decimal(peak.mz, 4) << ' ' << peak.intensity << '\n';
    }
    mgf << "END IONS\n";
}

void WriteRow(std::ostream& table, const std::string& dataset, const std::string& spectrum,
              const Match& match, Micro observedMh, Micro score)
{
    table << dataset << '\t' << spectrum << '\t' << match.peptide.sequence << '\t' << match.charge
          << '\t' << Decimal(observedMh, 6) << '\t' << Decimal(observedMh - match.calculatedMh, 6)
          << '\t' << Decimal(score, 6) << "\t1\t";
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
    const auto anyPeptide = [&]() -> const Peptide& {
        return peptides[static_cast<std::size_t>(
            chance.Below(static_cast<Micro>(peptides.size())))];
    };
    int scan = 17;
    for (int i = 0; i < kSpectra; ++i) {
        const Match match = MakeMatch(anyPeptide(), chance);
        const Micro neutral = match.calculatedMh - kProton + match.shift;
        const Micro precursor = Measured(neutral, match.charge, 3, chance);
        const Micro observedMh = precursor * match.charge - (match.charge - 1) * kProton;
        const bool isIdentified = i % 12 != 11;
        std::vector<Peak> peaks = isIdentified ? MakePeaks(match, chance) : std::vector<Peak>();
        const auto score = static_cast<Micro>(peaks.size()) * 1250000 + chance.Below(1000000);
        AddNoise(peaks, chance);
        WriteSpectrum(mgf, scan, match.charge, precursor, peaks);
        if (isIdentified) {
            WriteRow(table, "demo.mgf", Dotted(scan, match.charge), match, observedMh, score);
        }
        scan += static_cast<int>(chance.Between(1, 9));
    }
    // Three rows have no spectrum, as happens when files are mixed up.
    for (const auto& [dataset, lateScan] :
         {std::pair<const char*, int>{"demo.mgf", 9001}, {"demo.mgf", 9002}, {"other.mgf", 17}}) {
        const Match match = MakeMatch(anyPeptide(), chance);
        WriteRow(table, dataset, Dotted(lateScan, match.charge), match,
                 match.calculatedMh + match.shift, 21000000);
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
    Chance chance;
    std::vector<Peptide> peptides;
    for (int i = 1; i <= kProteins; ++i) {
        Digest(InventProtein(chance), "DEMO" + std::to_string(i), peptides);
    }
    WriteRun(mgf, table, peptides, chance);
    mgf.close();
    table.close();
    if (!mgf || !table) {
        std::cerr << "cannot write into " << folder << '\n';
        return 1;
    }
    return 0;
}
