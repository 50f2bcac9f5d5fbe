// Makes what a search of the example needs, and what it should find.
//
//     make_search_data FOLDER
//
// search.fasta  invented proteins, and each one backwards as a decoy
// search.mgf    spectra of their peptides, every eighth is noise only
// truth.tsv     which peptide each spectrum is of, and what sits where on it
#include <cstddef>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "InventedSpectra.h"

namespace {

using namespace invented;

constexpr int kProteins = 150;
constexpr int kSpectra = 560;
const std::string kRun = "search";

struct Modification {
    const char* name;
    const char* residues; ///< where it may sit
    Micro mass;
};

const Modification kCarbamidomethylC = {"Carbamidomethyl (C)", "C", kCarbamidomethyl};
const Modification kOxidationM = {"Oxidation (M)", "M", kOxidation};
const Modification kPyroGlu = {"Gln->pyro-Glu (Any N-term Q)", "Q", -17026549};
const Modification kAcetylProtein = {"Acetyl (Protein N-term)", "", kAcetyl};
const std::vector<Modification> kPhosphos = {
    {"Phospho (S)", "S", kPhospho}, {"Phospho (T)", "T", kPhospho}, {"Phospho (Y)", "Y", kPhospho}};

/// What no search is told of.
const std::vector<Modification> kSurprises = {
    {"Methyl (D)", "D", 14015650},      {"Methyl (E)", "E", 14015650},
    {"Dioxidation (W)", "W", 31989829}, {"Nitro (Y)", "Y", 44985078},
    {"Hex (T)", "T", 162052824},        {"Dehydrated (D)", "D", -18010565}};

struct Placed {
    std::size_t position; ///< from 1; 0 is the N-terminus
    const Modification* modification;
};

struct Truth {
    Peptide peptide;
    Ion ion;
    std::vector<Placed> mods; ///< by position
};

/// The places in the peptide where one of some modifications may sit.
std::vector<Placed> PlacesFor(const std::string& sequence, const std::vector<Modification>& some)
{
    std::vector<Placed> places;
    for (std::size_t i = 0; i < sequence.size(); ++i) {
        for (const Modification& modification : some) {
            if (std::string(modification.residues).find(sequence[i]) != std::string::npos) {
                places.push_back({i + 1, &modification});
            }
        }
    }
    return places;
}

/// What sits on a residue by itself. A residue bears one modification at most.
const Modification* Usual(char residue, std::size_t position, Chance& chance)
{
    if (residue == 'C') {
        return &kCarbamidomethylC;
    }
    if (residue == 'M' && chance.Percent(40)) {
        return &kOxidationM;
    }
    if (residue == 'Q' && position == 1 && chance.Percent(50)) {
        return &kPyroGlu;
    }
    return nullptr;
}

/// The one place besides that is modified, if any.
Placed Special(const std::string& sequence, Chance& chance)
{
    const bool isPhospho = chance.Percent(35);
    if (!isPhospho && !chance.Percent(25)) {
        return {0, nullptr};
    }
    const std::vector<Placed> places = PlacesFor(sequence, isPhospho ? kPhosphos : kSurprises);
    return places.empty() ? Placed{0, nullptr} : chance.AnyOf(places);
}

Truth MakeTruth(const Peptide& peptide, Chance& chance)
{
    Truth truth;
    truth.peptide = peptide;
    truth.ion.charge = peptide.sequence.size() >= 10 && chance.Percent(40) ? 3 : 2;
    truth.ion.neutral = kWater;
    if (peptide.before == '-' && chance.Percent(60)) {
        truth.mods.push_back({0, &kAcetylProtein});
    }
    const Placed special = Special(peptide.sequence, chance);
    for (std::size_t i = 0; i < peptide.sequence.size(); ++i) {
        const char residue = peptide.sequence[i];
        const Modification* const usual = Usual(residue, i + 1, chance);
        const Modification* const here = special.position == i + 1 ? special.modification : usual;
        const Micro atTerminus = i == 0 && !truth.mods.empty() ? kAcetyl : 0;
        truth.ion.residues.push_back(ResidueMass(residue) + atTerminus);
        if (here != nullptr) {
            truth.mods.push_back({i + 1, here});
            truth.ion.residues.back() += here->mass;
        }
        truth.ion.neutral += truth.ion.residues.back();
    }
    return truth;
}

void WriteTruth(std::ostream& table, const std::string& name, const Truth& truth)
{
    table << name << '\t' << truth.peptide.sequence << '\t' << truth.ion.charge << '\t'
          << truth.peptide.protein << '\t';
    const char* separator = "";
    for (const Placed& placed : truth.mods) {
        table << separator << placed.position << '=' << placed.modification->name << '='
              << Decimal(placed.modification->mass, 6);
        separator = ";";
    }
    table << '\n';
}

void WriteSpectra(std::ostream& mgf, std::ostream& table, const std::vector<Peptide>& peptides,
                  Chance& chance)
{
    // Beginnings of proteins are rare, so every tenth spectrum is of one.
    std::vector<Peptide> beginnings;
    for (const Peptide& peptide : peptides) {
        if (peptide.before == '-') {
            beginnings.push_back(peptide);
        }
    }
    int scan = 11;
    for (int i = 0; i < kSpectra; ++i) {
        const Truth truth = MakeTruth(chance.AnyOf(i % 10 == 0 ? beginnings : peptides), chance);
        const int charge = truth.ion.charge;
        const Micro precursor = Measured(truth.ion.neutral, charge, 4, chance);
        const bool isNoise = i % 8 == 7;
        std::vector<Peak> peaks = isNoise ? std::vector<Peak>() : MakePeaks(truth.ion, chance);
        AddNoise(peaks, chance);
        WriteSpectrum(mgf, kRun, scan, charge, precursor, peaks);
        if (!isNoise) {
            WriteTruth(table, Dotted(kRun, scan, charge), truth);
        }
        scan += static_cast<int>(chance.Between(1, 9));
    }
}

void WriteProtein(std::ostream& fasta, const std::string& name, const std::string& sequence)
{
    fasta << '>' << name << " invented\n" << sequence << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: make_search_data FOLDER\n";
        return 2;
    }
    const std::string folder = argv[1];
    std::ofstream fasta(folder + "/search.fasta", std::ios::binary);
    std::ofstream mgf(folder + "/search.mgf", std::ios::binary);
    std::ofstream table(folder + "/truth.tsv", std::ios::binary);
    table << "Spectrum Name\tSequence\tCharge\tProtein\tModifications\n";
    Chance chance(20261121);
    std::vector<Peptide> peptides;
    for (int i = 1; i <= kProteins; ++i) {
        const std::string protein = InventProtein(chance);
        const std::string name = "MADE" + std::to_string(i);
        WriteProtein(fasta, name, protein);
        WriteProtein(fasta, "DECOY_" + name, std::string(protein.rbegin(), protein.rend()));
        Digest(protein, name, 1, peptides);
    }
    WriteSpectra(mgf, table, peptides, chance);
    for (std::ofstream* const file : {&fasta, &mgf, &table}) {
        file->close();
        if (!*file) {
            std::cerr << "cannot write into " << folder << '\n';
            return 1;
        }
    }
    return 0;
}
