// The lookup and a slow twin that tests every peak agree on random spectra.
#include <cmath>
#include <limits>

#include "DataStructures.h"
#include "datastructures/SpectrumMaking.h"
#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::PeakOf;
using test::Random;
using test::TheoreticalPeak;

constexpr double kBinless = 268435456.0; // 2^28 Th
const double kNan = std::nan("");
constexpr double kInf = std::numeric_limits<double>::infinity();

struct Query {
    Peak theo;
    double tolerance;
    TolType::ETolType type;
    bool bReuse;
};

/// One spectrum and the queries asked of it, one after the other.
struct Scene {
    Spectrum spectrum;
    std::vector<Query> queries;
};

/// Looks at all peaks, one by one. Peaks below the bin in which the window
/// begins are never met, even if rounding puts them inside; bIgnoreBins leaves
/// that rule out, for numbers that are not rounded.
std::int32_t SlowHit(std::vector<Peak>& peaks, const Query& query, bool bIgnoreBins)
{
    const double theoMz = query.theo.dMz;
    const double tolerance =
        query.type == 1 ? query.tolerance : query.tolerance * theoMz / 1000000.0;
    const double lowest = theoMz - tolerance;
    std::int32_t best = -1;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const Peak& peak = peaks[i];
        const double difference = peak.dMz - theoMz;
        const bool hasBin = peak.dMz > -1.0 && peak.dMz < kBinless;
        if (!hasBin || !(lowest > -1.0) || difference + tolerance < 0
            || difference - tolerance > 0) {
            continue;
        }
        if (!bIgnoreBins && std::trunc(peak.dMz) < std::trunc(lowest)) {
            continue;
        }
        const double toBeat = best < 0 ? -1.0 : peaks[static_cast<std::size_t>(best)].dIntensity;
        if (peak.dIntensity > toBeat && (query.bReuse || peak.vMatchRes.empty())) {
            best = static_cast<std::int32_t>(i);
        }
    }
    if (best >= 0 && !query.theo.vMatchRes.empty()) {
        peaks[static_cast<std::size_t>(best)].vMatchRes.push_back(query.theo.vMatchRes[0]);
    }
    return best;
}

void ExpectSameMatches(const std::vector<Peak>& peaks, const std::vector<Peak>& slow)
{
    ASSERT_EQ(peaks.size(), slow.size());
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        ASSERT_EQ(peaks[i].vMatchRes.size(), slow[i].vMatchRes.size());
        for (std::size_t k = 0; k < slow[i].vMatchRes.size(); ++k) {
            ASSERT_EQ(peaks[i].vMatchRes[k].nIonIndex, slow[i].vMatchRes[k].nIonIndex);
            ASSERT_EQ(peaks[i].vMatchRes[k].nCharge, slow[i].vMatchRes[k].nCharge);
        }
    }
}

/// Plays a scene; gives how many queries were hits.
int PlayScene(Scene scene, bool bIgnoreBins)
{
    int hits = 0;
    scene.spectrum.CreateHashTable();
    std::vector<Peak> slowPeaks = scene.spectrum.vPeaks;
    for (Query& query : scene.queries) {
        const std::int32_t slow = SlowHit(slowPeaks, query, bIgnoreBins);
        const std::int32_t hit =
            scene.spectrum.GetHitPeak(query.theo, query.tolerance, query.type, query.bReuse);
        EXPECT_EQ(hit, slow) << testing::PrintToString(query.theo.dMz) << " +- " << query.tolerance
                             << " of type " << query.type;
        hits += hit >= 0 ? 1 : 0;
    }
    ExpectSameMatches(scene.spectrum.vPeaks, slowPeaks);
    return hits;
}

template <typename MakeScene>
void PlayScenes(std::uint64_t seed, int rounds, bool bIgnoreBins, MakeScene makeScene)
{
    Random random(seed);
    int hits = 0;
    int queries = 0;
    for (int round = 0; round < rounds; ++round) {
        const Scene scene = makeScene(random);
        hits += PlayScene(scene, bIgnoreBins);
        queries += static_cast<int>(scene.queries.size());
        ASSERT_FALSE(testing::Test::HasFailure()) << "round " << round;
    }
    // Hits and misses are both frequent: the comparison is worth something.
    EXPECT_GT(hits, queries / 20);
    EXPECT_LT(hits, queries * 19 / 20);
}

/// Few values, so that equal ones are frequent, and the odd ones.
double RandomIntensity(Random& random)
{
    switch (random.Below(30)) {
    case 0: return kNan;
    case 1: return -1.0;
    case 2: return -0.5;
    case 3: return kInf;
    default: return static_cast<double>(random.Below(6));
    }
}

Query RandomQuery(Random& random, double mz, double tolerance, TolType::ETolType type)
{
    Query query{PeakOf(mz, 0.0), tolerance, type, random.OneIn(2)};
    if (!random.OneIn(4)) {
        query.theo = TheoreticalPeak(mz, random.Below(1000));
        query.theo.vMatchRes[0].nCharge = static_cast<std::int32_t>(random.Below(4));
    }
    return query;
}

/// Multiples of 1/8: no difference is rounded, windows end on peaks and bins.
Scene ExactScene(Random& random)
{
    const auto eighths = [&random](std::size_t count) {
        return static_cast<double>(random.Below(count)) / 8.0;
    };
    Scene scene;
    for (std::size_t n = random.Below(40); n > 0; --n) {
        scene.spectrum.vPeaks.push_back(PeakOf(eighths(120) - 1.5, RandomIntensity(random)));
    }
    for (int i = 0; i < 40; ++i) {
        scene.queries.push_back(
            RandomQuery(random, eighths(140) - 2.0, eighths(10) - 0.125, TolType::Da));
    }
    return scene;
}

TEST(SpectrumTwin, LookupAgreesWhereNothingIsRounded)
{
    PlayScenes(61, 3000, true, ExactScene);
}

/// As measured: many digits, queries near peaks.
Scene MeasuredScene(Random& random)
{
    Scene scene;
    std::vector<Peak>& peaks = scene.spectrum.vPeaks;
    const double top = random.OneIn(2) ? 2000.0 : 20.0;
    for (std::size_t n = random.Below(100); n > 0; --n) {
        peaks.push_back(PeakOf(random.Between(0.0, top), random.Between(0.0, 1e6)));
    }
    for (int i = 0; i < 50; ++i) {
        const bool isNear = !peaks.empty() && !random.OneIn(4);
        const double mz = isNear ? peaks[random.Below(peaks.size())].dMz : random.Between(0.0, top);
        const bool isDa = random.OneIn(2);
        const double tolerance = isDa ? random.Between(0.0, 1.5) : random.Between(0.0, 100.0);
        const double off = (isDa ? tolerance : tolerance * mz / 1e6) * random.Between(-1.5, 1.5);
        const auto other = random.OneIn(2) ? TolType::Ppm : static_cast<TolType::ETolType>(0);
        scene.queries.push_back(
            RandomQuery(random, mz + off, tolerance, isDa ? TolType::Da : other));
    }
    return scene;
}

TEST(SpectrumTwin, LookupAgreesOnMeasuredSpectra)
{
    PlayScenes(62, 2000, false, MeasuredScene);
}

/// Multiples of 1/10, which are all rounded: windows end nearly on peaks and
/// bins, now a hair above, now a hair below.
Scene RoundedScene(Random& random)
{
    const auto tenths = [&random](std::size_t count) {
        return static_cast<double>(random.Below(count)) / 10.0;
    };
    Scene scene;
    for (std::size_t n = random.Below(40); n > 0; --n) {
        scene.spectrum.vPeaks.push_back(PeakOf(tenths(150) - 1.5, RandomIntensity(random)));
    }
    for (int i = 0; i < 40; ++i) {
        const bool isDa = !random.OneIn(4);
        scene.queries.push_back(RandomQuery(random, tenths(170) - 2.0,
                                            isDa ? tenths(13) - 0.1 : 1000.0 * tenths(1000),
                                            isDa ? TolType::Da : TolType::Ppm));
    }
    return scene;
}

TEST(SpectrumTwin, LookupAgreesWhereWindowsEndNearlyOnPeaks)
{
    PlayScenes(63, 3000, false, RoundedScene);
}

/// Peaks and queries that no instrument gives.
Scene OddScene(Random& random)
{
    const auto odd = [&random](double usual) {
        switch (random.Below(24)) {
        case 0: return kNan;
        case 1: return kInf;
        case 2: return -kInf;
        case 3: return kBinless + static_cast<double>(random.Below(3));
        case 4: return random.Between(3e8, 1e30);
        case 5: return -random.Between(0.0, 1e30);
        case 6: return -1.0;
        case 7: return random.OneIn(2) ? 0.0 : -0.0;
        case 8: return -random.Between(0.0, 1.0);
        default: return usual;
        }
    };
    Scene scene;
    for (std::size_t n = random.Below(20); n > 0; --n) {
        scene.spectrum.vPeaks.push_back(
            PeakOf(odd(random.Between(0.0, 10.0)), RandomIntensity(random)));
    }
    for (int i = 0; i < 40; ++i) {
        const auto type = static_cast<TolType::ETolType>(random.Below(4));
        scene.queries.push_back(RandomQuery(random, odd(random.Between(0.0, 10.0)),
                                            odd(random.Between(0.0, 3.0)), type));
    }
    return scene;
}

TEST(SpectrumTwin, LookupAgreesOnOddNumbers)
{
    PlayScenes(64, 3000, false, OddScene);
}

TEST(SpectrumTwin, BrokenTableFindsPeaksOfTheWindowOnly)
{
    Random random(65);
    for (int round = 0; round < 2000; ++round) {
        Scene scene = random.OneIn(2) ? OddScene(random) : ExactScene(random);
        Spectrum& spectrum = scene.spectrum;
        // Never sorted, and a table of anything.
        spectrum.vHashTable.resize(random.Below(20));
        for (std::int32_t& entry : spectrum.vHashTable) {
            entry = random.OneIn(3) ? static_cast<std::int32_t>(random.Bits() & 0xFFFFFFFFU)
                                    : static_cast<std::int32_t>(random.Below(25)) - 2;
        }
        for (Query& query : scene.queries) {
            const std::int32_t hit =
                spectrum.GetHitPeak(query.theo, query.tolerance, query.type, query.bReuse);
            ASSERT_GE(hit, -1);
            ASSERT_LT(hit, static_cast<std::int32_t>(spectrum.Size()));
            if (hit >= 0) {
                const double tolerance = query.type == 1
                                             ? query.tolerance
                                             : query.tolerance * query.theo.dMz / 1000000.0;
                const double mz = spectrum.vPeaks[static_cast<std::size_t>(hit)].dMz;
                ASSERT_LE(std::abs(mz - query.theo.dMz), tolerance);
            }
        }
    }
}

} // namespace
} // namespace Vorlan
