// What the makers of example data share: proteins, peptides and spectra out of
// nothing.
//
// The same bytes come out on every machine: masses are whole numbers of
// millionths of a dalton, and chance is the bare output of std::mt19937_64,
// which the standard fixes.
#ifndef PELGRIN_EXAMPLES_INVENTEDSPECTRA_H
#define PELGRIN_EXAMPLES_INVENTEDSPECTRA_H

#include <cstdint>
#include <iosfwd>
#include <random>
#include <string>
#include <vector>

namespace invented {

using Micro = std::int64_t; ///< 1e-6 Da, or 1e-6 Th

constexpr Micro kProton = 1007276;
constexpr Micro kWater = 18010565;
constexpr Micro kOxidation = 15994915;
constexpr Micro kCarbamidomethyl = 57021464;
constexpr Micro kPhospho = 79966331;
constexpr Micro kAcetyl = 42010565;

/// Whole numbers by chance.
class Chance {
public:
    explicit Chance(std::uint64_t seed) : engine_(seed) {}

    /// 0 to count - 1. The slight unevenness of the remainder does not matter.
    Micro Below(Micro count)
    {
        return static_cast<Micro>(engine_() % static_cast<std::uint64_t>(count));
    }
    Micro Between(Micro low, Micro high) { return low + Below(high - low + 1); }
    bool Percent(int percent) { return Below(100) < percent; }

    /// Any element of a vector or a string that is not empty.
    template <typename List>
    const auto& AnyOf(const List& list)
    {
        return list[static_cast<std::size_t>(Below(static_cast<Micro>(list.size())))];
    }

private:
    std::mt19937_64 engine_;
};

struct Peptide {
    std::string sequence;
    std::string protein;
    char before = '-';
    char after = '-';
    int start = 0; ///< in the protein, from 1
};

struct Peak {
    Micro mz;
    Micro intensity;
};

/// What an instrument would see of one peptide ion.
struct Ion {
    int charge = 2;
    std::vector<Micro> residues; ///< their masses, with all that sits on them
    Micro neutral = 0;           ///< mass of the whole, uncharged
};

Micro ResidueMass(char letter);

/// value with 0 to 6 decimals, rounded.
std::string Decimal(Micro value, int digits);

/// A protein with residues about as frequent as in nature.
std::string InventProtein(Chance& chance);

/// Cuts behind K and R unless P follows, and appends the peptides of 7 to 18
/// residues that hold at most missed places of a cut.
void Digest(const std::string& protein, const std::string& name, std::size_t missed,
            std::vector<Peptide>& peptides);

/// mass / charge with a measurement error of up to ppm millionths.
Micro Measured(Micro mass, int charge, Micro ppm, Chance& chance);

/// b and y ions with errors of up to 5 ppm, some of them missing.
std::vector<Peak> MakePeaks(const Ion& ion, Chance& chance);

/// Adds 34 peaks that mean nothing, and sorts all.
void AddNoise(std::vector<Peak>& peaks, Chance& chance);

/// The name under which a search engine reports a spectrum.
std::string Dotted(const std::string& run, int scan, int charge);

/// Writes a record as ProteoWizard titles it.
void WriteSpectrum(std::ostream& mgf, const std::string& run, int scan, int charge, Micro precursor,
                   const std::vector<Peak>& peaks);

} // namespace invented

#endif // PELGRIN_EXAMPLES_INVENTEDSPECTRA_H
