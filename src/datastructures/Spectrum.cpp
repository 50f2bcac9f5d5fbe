// Sorting a spectrum and finding the peak that matches a theoretical m/z.
//
// The idea of the look-up: the table holds, for every bin of 1 Th, the first
// peak of that bin or above. The bin of the lower end of the window is one
// table access away from the first peak worth looking at, and a short walk
// upwards meets all others. Held by SpectrumLookup.AgreesWithSlowTwin.
#include <algorithm>
#include <cmath>

#include "DataStructures.h"

namespace Vorlan {

namespace {

/// m/z values that have a bin: (-1, 2^28) Th. The upper end bounds the table.
bool HasBin(double mz)
{
    return mz > -1.0 && mz < 268435456.0;
}

std::size_t BinOf(double mz)
{
    return mz < 0.0 ? 0 : static_cast<std::size_t>(mz);
}

/// Sorts peaks by a key, those whose key is not a number behind the others.
template <typename Key, typename Less>
void SortByKey(std::vector<Peak>& peaks, Key key, Less less)
{
    const auto isNumber = [key](const Peak& peak) { return !std::isnan(key(peak)); };
    auto end = peaks.end();
    if (!std::all_of(peaks.begin(), end, isNumber)) {
        end = std::partition(peaks.begin(), end, isNumber);
    }
    if (!std::is_sorted(peaks.begin(), end, less)) {
        std::sort(peaks.begin(), end, less);
    }
}

} // namespace

std::uint64_t Spectrum::Size() const
{
    return vPeaks.size();
}

bool Spectrum::bMzLesser(const Peak& a, const Peak& b)
{
    return a.dMz < b.dMz;
}

bool Spectrum::bIntensityGreater(const Peak& a, const Peak& b)
{
    return a.dIntensity > b.dIntensity;
}

void Spectrum::sortByMz()
{
    SortByKey(
        vPeaks, [](const Peak& peak) { return peak.dMz; }, bMzLesser);
}

void Spectrum::sortByIntensity()
{
    SortByKey(
        vPeaks, [](const Peak& peak) { return peak.dIntensity; }, bIntensityGreater);
}

void Spectrum::CreateHashTable()
{
    vHashTable.clear();
    sortByMz();
    const auto isLast = [](const Peak& peak) { return HasBin(peak.dMz); };
    const auto last = std::find_if(vPeaks.rbegin(), vPeaks.rend(), isLast);
    if (last == vPeaks.rend()) {
        return;
    }
    vHashTable.reserve(BinOf(last->dMz) + 1);
    const auto size = static_cast<std::size_t>(vPeaks.rend() - last);
    for (std::size_t i = 0; i < size; ++i) {
        if (HasBin(vPeaks[i].dMz) && BinOf(vPeaks[i].dMz) >= vHashTable.size()) {
            vHashTable.resize(BinOf(vPeaks[i].dMz) + 1, static_cast<std::int32_t>(i));
        }
    }
}

void Spectrum::ReleaseHashTable()
{
    std::vector<std::int32_t>().swap(vHashTable);
}

std::int32_t Spectrum::GetHitPeak(Peak& theo, const double& tol, const TolType::ETolType& tolType,
                                  bool bReuseMatched)
{
    const double theoMz = theo.dMz;
    // Deliberate: B-87
    const double tolerance = tolType == TolType::Da ? tol : tol * theoMz / 1000000.0;
    const double lowest = theoMz - tolerance;
    const bool hasBin = lowest > -1.0 && lowest < static_cast<double>(vHashTable.size());
    if (vHashTable.empty() || !hasBin) {
        return -1;
    }
    const std::int32_t start = vHashTable[BinOf(lowest)];
    if (start < 0) {
        return -1;
    }
    std::int32_t best = -1;
    double bestIntensity = -1.0;
    for (std::size_t i = static_cast<std::size_t>(start); i < vPeaks.size(); ++i) {
        const Peak& peak = vPeaks[i];
        const double difference = peak.dMz - theoMz;
        if (difference + tolerance < 0) {
            continue;
        }
        if (difference - tolerance > 0) {
            break;
        }
        const bool isFree = bReuseMatched || peak.vMatchRes.empty();
        if (isFree && peak.dIntensity > bestIntensity && HasBin(peak.dMz)) {
            best = static_cast<std::int32_t>(i);
            bestIntensity = peak.dIntensity;
        }
    }
    if (best >= 0 && theo.getNumberOfMatchRes() > 0) {
        Peak::MatchRes match = theo.getMatchResOf(0);
        vPeaks[static_cast<std::size_t>(best)].addMatchRes(match);
    }
    return best;
}

void Spectrum::ResetMatchRes()
{
    for (Peak& peak : vPeaks) {
        peak.clearMatchRes();
    }
}

} // namespace Vorlan
