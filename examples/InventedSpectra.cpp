#include "InventedSpectra.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <ostream>

namespace invented {

namespace {

constexpr int kProteinLength = 170;
constexpr int kNoisePeaks = 34;

void AddIon(std::vector<Peak>& peaks, Micro mass, int charge, Micro strongest, Chance& chance)
{
    const Micro mz = Measured(mass, charge, 5, chance);
    if (mz >= 110000000) { // the instrument sees nothing below
        peaks.push_back({mz, chance.Between(strongest / 8, strongest)});
    }
}

/// Where the pieces of a protein begin, and its length.
std::vector<std::size_t> CutsOf(const std::string& protein)
{
    std::vector<std::size_t> cuts = {0};
    for (std::size_t i = 1; i < protein.size(); ++i) {
        const bool isBasic = protein[i - 1] == 'K' || protein[i - 1] == 'R';
        if (isBasic && protein[i] != 'P') {
            cuts.push_back(i);
        }
    }
    cuts.push_back(protein.size());
    return cuts;
}

} // namespace

Micro ResidueMass(char letter)
{
    static const std::map<char, Micro> masses = {
        {'G', 57021464},  {'A', 71037114},  {'S', 87032028},  {'P', 97052764},  {'V', 99068414},
        {'T', 101047679}, {'C', 103009185}, {'L', 113084064}, {'I', 113084064}, {'N', 114042927},
        {'D', 115026943}, {'Q', 128058578}, {'K', 128094963}, {'E', 129042593}, {'M', 131040485},
        {'H', 137058912}, {'F', 147068414}, {'R', 156101111}, {'Y', 163063329}, {'W', 186079313}};
    return masses.at(letter);
}

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

std::string InventProtein(Chance& chance)
{
    const std::string residues =
        "AAAAAAAACCDDDDDEEEEEEFFFFGGGGGGGHHIIIIIIKKKKKLLLLLLLLLMMMNNNNPPPPQQQQ"
        "RRRRRSSSSSSSTTTTTVVVVVVVWYYY";
    std::string protein = "M";
    while (protein.size() < kProteinLength) {
        protein += chance.AnyOf(residues);
    }
    return protein;
}

void Digest(const std::string& protein, const std::string& name, std::size_t missed,
            std::vector<Peptide>& peptides)
{
    const std::vector<std::size_t> cuts = CutsOf(protein);
    for (std::size_t first = 0; first + 1 < cuts.size(); ++first) {
        for (std::size_t last = first + 1; last < cuts.size() && last <= first + 1 + missed;
             ++last) {
            const std::size_t begin = cuts[first];
            const std::size_t end = cuts[last];
            if (end - begin >= 7 && end - begin <= 18) {
                peptides.push_back({protein.substr(begin, end - begin), name,
                                    begin == 0 ? '-' : protein[begin - 1],
                                    end == protein.size() ? '-' : protein[end],
                                    static_cast<int>(begin) + 1});
            }
        }
    }
}

Micro Measured(Micro mass, int charge, Micro ppm, Chance& chance)
{
    const Micro mz = (mass + charge * kProton + charge / 2) / charge;
    return mz + mz / 1000000 * chance.Between(-1000 * ppm, 1000 * ppm) / 1000;
}

std::vector<Peak> MakePeaks(const Ion& ion, Chance& chance)
{
    std::vector<Peak> peaks;
    Micro before = 0;
    Micro after = ion.neutral;
    for (std::size_t i = 0; i + 1 < ion.residues.size(); ++i) {
        before += ion.residues[i];
        after -= ion.residues[i];
        if (chance.Percent(82)) {
            AddIon(peaks, before, 1, 8000, chance);
        }
        if (chance.Percent(93)) {
            AddIon(peaks, after, 1, 16000, chance);
        }
        if (ion.charge > 2 && chance.Percent(55)) {
            AddIon(peaks, before, 2, 3000, chance);
        }
        if (ion.charge > 2 && chance.Percent(65)) {
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

std::string Dotted(const std::string& run, int scan, int charge)
{
    char text[64];
    std::snprintf(text, sizeof text, ".%05d.%05d.%d", scan, scan, charge);
    return run + text;
}

void WriteSpectrum(std::ostream& mgf, const std::string& run, int scan, int charge, Micro precursor,
                   const std::vector<Peak>& peaks)
{
    const std::string number = std::to_string(scan);
    mgf << "BEGIN IONS\nTITLE=" << run << '.' << number << '.' << number << '.' << charge
        << " File:\"" << run
        << ".raw\", NativeID:\"controllerType=0 controllerNumber=1 scan=" << number
        << "\"\nRTINSECONDS=" << Decimal(scan * Micro{410000}, 2)
        << "\nPEPMASS=" << Decimal(precursor, 5) << "\nCHARGE=" << charge << "+\nSCANS=" << number
        << '\n';
    for (const Peak& peak : peaks) {
        mgf << Decimal(peak.mz, 4) << ' ' << peak.intensity << '\n';
    }
    mgf << "END IONS\n";
}

} // namespace invented
