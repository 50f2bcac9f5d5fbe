// The look-up of peaks against a walk over all of them.
//
// The input is a row of steps, each a letter and its values:
//   p mz intensity   appends a peak          c  CreateHashTable
//   a index mz       alters a peak's m/z     r  ReleaseHashTable
//   m index          gives a peak a match    e  ResetMatchRes
//   t index entry    writes into the table   i  sortByIntensity
//   q flags theo tolerance                   GetHitPeak
// A number is two bytes (0 to 4096 in steps of 1/16), or '!' and the place of a
// special value, or 'x' and the eight bytes of a double.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iterator>
#include <limits>
#include <utility>
#include <vector>

#include "DataStructures.h"
#include "FuzzSupport.h"

namespace {

using namespace Vorlan;
using Limits = std::numeric_limits<double>;

constexpr double kSpecial[] = {0.0,
                               -0.0,
                               -0.5,
                               -0.9999999999999999,
                               -1.0,
                               1e-300,
                               5e-324,
                               1e300,
                               -1e300,
                               268435456.0,
                               65535.5,
                               1e6,
                               1e9,
                               Limits::infinity(),
                               -Limits::infinity(),
                               Limits::quiet_NaN()};
constexpr std::size_t kMostPeaks = 64;

bool HasBin(double mz)
{
    return mz > -1.0 && mz < 268435456.0;
}

double Number(fuzz::Bytes& bytes)
{
    const std::uint8_t first = bytes.Byte();
    switch (first) {
    case '!': return kSpecial[bytes.Byte() % std::size(kSpecial)];
    case 'x': return bytes.Raw<double>();
    default: return 16.0 * first + bytes.Byte() / 16.0;
    }
}

/// A table holds 4 bytes per Th: m/z values that have a bin stay small.
double Mz(fuzz::Bytes& bytes)
{
    const double mz = Number(bytes);
    return HasBin(mz) ? std::fmod(mz, 65536.0) : mz;
}

double ToleranceIn(const Peak& theo, double tol, TolType::ETolType type)
{
    return type == TolType::Da ? tol : tol * theo.dMz / 1000000.0;
}

bool IsInWindow(double mz, double theoMz, double tolerance)
{
    return !(mz - theoMz + tolerance < 0) && !(mz - theoMz - tolerance > 0);
}

/// Every peak in turn. A window that begins at or below -1 finds nothing, and
/// a peak in a bin below that of the window's begin is not met, even where
/// rounding would let it in.
std::int32_t SlowHit(const std::vector<Peak>& peaks, const Peak& theo, double tolerance, bool reuse)
{
    const double lowest = theo.dMz - tolerance;
    if (!(lowest > -1.0)) {
        return -1;
    }
    std::int32_t best = -1;
    double bestIntensity = -1.0;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const Peak& peak = peaks[i];
        if (HasBin(peak.dMz) && !(std::trunc(peak.dMz) < std::trunc(lowest))
            && IsInWindow(peak.dMz, theo.dMz, tolerance) && peak.dIntensity > bestIntensity
            && (reuse || peak.vMatchRes.empty())) {
            best = static_cast<std::int32_t>(i);
            bestIntensity = peak.dIntensity;
        }
    }
    return best;
}

/// The bits of all m/z values and intensities, in an order of their own.
std::vector<std::pair<std::uint64_t, std::uint64_t>> SortedBits(const std::vector<Peak>& peaks)
{
    std::vector<std::pair<std::uint64_t, std::uint64_t>> bits(peaks.size());
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        std::memcpy(&bits[i].first, &peaks[i].dMz, sizeof(double));
        std::memcpy(&bits[i].second, &peaks[i].dIntensity, sizeof(double));
    }
    std::sort(bits.begin(), bits.end());
    return bits;
}

/// Numbers in order, then those that are none.
template <typename Key, typename Less>
void CheckSorted(const std::vector<Peak>& peaks, Key key, Less less)
{
    for (std::size_t i = 1; i < peaks.size(); ++i) {
        const double before = key(peaks[i - 1]);
        const double here = key(peaks[i]);
        fuzz::Check(std::isnan(here) || (!std::isnan(before) && !less(here, before)),
                    "peaks are sorted, NaN last");
    }
}

void CheckTable(const Spectrum& spectrum)
{
    const std::vector<Peak>& peaks = spectrum.vPeaks;
    CheckSorted(
        peaks, [](const Peak& peak) { return peak.dMz; }, std::less<>());
    std::size_t size = 0;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        if (!HasBin(peaks[i].dMz)) {
            continue;
        }
        const auto end = static_cast<std::size_t>(std::max(peaks[i].dMz, 0.0)) + 1;
        fuzz::Check(end <= spectrum.vHashTable.size(), "the table reaches to the last peak");
        for (; size < end; ++size) {
            fuzz::Check(spectrum.vHashTable[size] == static_cast<std::int32_t>(i),
                        "an entry is the first peak of its bin or above");
        }
    }
    fuzz::Check(size == spectrum.vHashTable.size(), "the table ends with the last peak");
}

/// A spectrum, and whether its table fits its peaks.
class Steps {
public:
    explicit Steps(fuzz::Bytes bytes) : bytes_(bytes) {}

    void Run()
    {
        while (!bytes_.Empty()) {
            Step(bytes_.Byte());
        }
    }

private:
    void Step(std::uint8_t letter)
    {
        switch (letter) {
        case 'p': AppendPeak(); break;
        case 'a': AlterPeak(); break;
        case 'm': GiveMatch(); break;
        case 't': WriteTable(); break;
        case 'q': Query(); break;
        case 'c': CreateTable(); break;
        case 'i': SortByIntensity(); break;
        case 'e': spectrum_.ResetMatchRes(); break;
        case 'r':
            spectrum_.ReleaseHashTable();
            fuzz::Check(spectrum_.vHashTable.capacity() == 0, "the table's storage is free");
            break;
        default: break;
        }
    }

    void AppendPeak()
    {
        Peak peak;
        peak.dMz = Mz(bytes_);
        peak.dIntensity = Number(bytes_);
        if (spectrum_.vPeaks.size() < kMostPeaks) {
            spectrum_.vPeaks.push_back(peak);
            isFresh_ = false;
        }
    }

    void AlterPeak()
    {
        if (Peak* const peak = SomePeak()) {
            peak->dMz = Mz(bytes_);
            isFresh_ = false;
        }
    }

    void GiveMatch()
    {
        if (Peak* const peak = SomePeak()) {
            Peak::MatchRes match;
            match.nIonIndex = ++ions_;
            peak->addMatchRes(match);
        }
    }

    void WriteTable()
    {
        const std::size_t index = bytes_.Raw<std::uint16_t>();
        const auto entry = bytes_.Raw<std::int32_t>();
        if (!spectrum_.vHashTable.empty()) {
            spectrum_.vHashTable[index % spectrum_.vHashTable.size()] = entry;
            isFresh_ = false;
        }
    }

    void CreateTable()
    {
        const auto before = SortedBits(spectrum_.vPeaks);
        spectrum_.CreateHashTable();
        fuzz::Check(SortedBits(spectrum_.vPeaks) == before, "sorting keeps every peak");
        CheckTable(spectrum_);
        isFresh_ = true;
    }

    void SortByIntensity()
    {
        const auto before = SortedBits(spectrum_.vPeaks);
        spectrum_.sortByIntensity();
        fuzz::Check(SortedBits(spectrum_.vPeaks) == before, "sorting keeps every peak");
        CheckSorted(
            spectrum_.vPeaks, [](const Peak& peak) { return peak.dIntensity; }, std::greater<>());
        isFresh_ = false;
    }

    /// The flags: 1 Da, 2 reuse, 4 with a match, 8 theo is a peak of the
    /// spectrum, 16 theo lies a tolerance above a peak, 32 small tolerance.
    void Query()
    {
        const std::uint8_t flags = bytes_.Byte();
        Peak own;
        own.dMz = Number(bytes_);
        const double tol = Number(bytes_) / ((flags & 32) != 0 ? 1024.0 : 1.0);
        Peak* const some = (flags & 24) != 0 ? SomePeak() : nullptr;
        if (some != nullptr) {
            own.dMz = some->dMz + tol;
        }
        if ((flags & 4) != 0) {
            own.vMatchRes.resize(2);
            own.vMatchRes[0].nIonIndex = ++ions_;
        }
        Peak& theo = some != nullptr && (flags & 8) != 0 ? *some : own;
        CompareHit(theo, tol, (flags & 1) != 0 ? TolType::Da : TolType::Ppm, (flags & 2) != 0);
    }

    void CompareHit(Peak& theo, double tol, TolType::ETolType type, bool reuse)
    {
        const std::vector<Peak> before = spectrum_.vPeaks;
        const Peak theoBefore = theo;
        const double tolerance = ToleranceIn(theo, tol, type);
        const std::int32_t hit = spectrum_.GetHitPeak(theo, tol, type, reuse);
        CheckMatches(before, hit, theoBefore);
        if (spectrum_.vHashTable.empty()) {
            fuzz::Check(hit == -1, "without a table nothing is found");
        } else if (isFresh_) {
            fuzz::Check(hit == SlowHit(before, theoBefore, tolerance, reuse),
                        "the hit is that of the walk over all peaks");
        } else if (hit != -1) {
            const Peak& peak = before[static_cast<std::size_t>(hit)];
            fuzz::Check(HasBin(peak.dMz) && IsInWindow(peak.dMz, theoBefore.dMz, tolerance)
                            && peak.dIntensity > -1.0 && (reuse || peak.vMatchRes.empty()),
                        "with a stale table the hit is some peak in the window");
        }
    }

    /// Only the peak that was hit has one more match, the first of theo.
    void CheckMatches(const std::vector<Peak>& before, std::int32_t hit, const Peak& theo)
    {
        const auto size = static_cast<std::int32_t>(before.size());
        fuzz::Check(hit >= -1 && hit < size, "the hit is a peak or -1");
        for (std::int32_t i = 0; i < size; ++i) {
            const auto& matches = spectrum_.vPeaks[static_cast<std::size_t>(i)].vMatchRes;
            const std::size_t former = before[static_cast<std::size_t>(i)].vMatchRes.size();
            const bool grows = i == hit && !theo.vMatchRes.empty();
            fuzz::Check(matches.size() == former + (grows ? 1 : 0), "only a hit gets a match");
            fuzz::Check(!grows || matches.back().nIonIndex == theo.vMatchRes[0].nIonIndex,
                        "it gets the first match");
        }
    }

    Peak* SomePeak()
    {
        const std::size_t index = bytes_.Byte();
        auto& peaks = spectrum_.vPeaks;
        return peaks.empty() ? nullptr : &peaks[index % peaks.size()];
    }

    fuzz::Bytes bytes_;
    Spectrum spectrum_;
    bool isFresh_ = false;
    std::uint64_t ions_ = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Steps(fuzz::Bytes(data, size)).Run();
    return 0;
}
