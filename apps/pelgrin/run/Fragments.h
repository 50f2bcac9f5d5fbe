// Theoretical fragments of a peptide: masses only, no files, no spectra.
#ifndef PELGRIN_FRAGMENTS_H
#define PELGRIN_FRAGMENTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "DataStructures.h"

namespace pelgrin {

/// One theoretical ion.
struct Fragment {
    Vorlan::Peak::MatchRes ion; ///< series, number in it, charge, status
    double mz = 0.0;            ///< Th
};

/// A peptide as the series see it: modifications are part of the masses.
struct PeptideMasses {
    std::vector<double> residues; ///< one per residue, Da
    double nTerm = 0.0;           ///< modification of the N-terminus, Da
    double cTerm = 0.0;           ///< modification of the C-terminus, Da
};

/// What is asked of a peptide.
struct FragmentPlan {
    std::vector<Vorlan::Peak::EIonType> ions;
    std::int32_t maxCharge = 1;
    std::optional<double> massShift; ///< makes the shifted series too, Da
};

/// The mass of a residue inside a chain; none for a letter that stands for no
/// residue or for more than one (B, X, Z).
std::optional<double> ResidueMass(char letter);

/// The highest ion charge that is asked for a precursor charge: one less, but
/// at least 1.
std::int32_t MaxIonCharge(std::uint64_t precursorCharge);

/// The m/z of an ion whose residues, with their modifications, weigh
/// residueSum: (residueSum + ends of the series + charge protons) / charge.
double FragmentMz(Vorlan::Peak::EIonType ion, double residueSum, std::int32_t charge);

/// Every ion with a number of 1 to length - 1, by series, number and charge;
/// the shifted ion, m/z + shift / charge, follows its unshifted one. Ions
/// without a positive m/z do not exist.
std::vector<Fragment> FragmentsOf(const PeptideMasses& peptide, const FragmentPlan& plan);

} // namespace pelgrin

#endif // PELGRIN_FRAGMENTS_H
