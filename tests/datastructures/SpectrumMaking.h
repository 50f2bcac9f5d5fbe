// Spectra and matches in one line.
#ifndef VORLAN_TESTS_SPECTRUMMAKING_H
#define VORLAN_TESTS_SPECTRUMMAKING_H

#include <utility>
#include <vector>

#include "DataStructures.h"

namespace Vorlan::test {

inline Peak PeakOf(double mz, double intensity)
{
    Peak peak;
    peak.dMz = mz;
    peak.dIntensity = intensity;
    return peak;
}

/// A spectrum of pairs of m/z and intensity, without a table.
inline Spectrum SpectrumOf(const std::vector<std::pair<double, double>>& peaks)
{
    Spectrum spectrum;
    for (const auto& [mz, intensity] : peaks) {
        spectrum.vPeaks.push_back(PeakOf(mz, intensity));
    }
    return spectrum;
}

/// The same with its table.
inline Spectrum TabledSpectrumOf(const std::vector<std::pair<double, double>>& peaks)
{
    Spectrum spectrum = SpectrumOf(peaks);
    spectrum.CreateHashTable();
    return spectrum;
}

/// A theoretical peak with one match, the b ion of this number.
inline Peak TheoreticalPeak(double mz, std::uint64_t ionIndex)
{
    Peak peak = PeakOf(mz, 0.0);
    peak.vMatchRes.push_back({Peak::B_ION, ionIndex, 1, Peak::UNSHIFT});
    return peak;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_SPECTRUMMAKING_H
