// Finding the peak at an m/z, by examples. SpectrumTwin_test.cpp compares with
// a slow twin.
#include <cmath>
#include <limits>

#include "DataStructures.h"
#include "datastructures/SpectrumMaking.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::PeakOf;
using test::SpectrumOf;
using test::TabledSpectrumOf;
using test::TheoreticalPeak;
using Peaks = std::vector<std::pair<double, double>>;

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNan = std::nan("");
constexpr int kDa = TolType::Da;
constexpr int kPpm = TolType::Ppm;

struct LookupCase {
    const char* reason;
    Peaks peaks;
    double mz;
    double tolerance;
    int type;
    std::int32_t hit;
};

const Peaks kThree = {{100.2, 5.0}, {100.7, 9.0}, {102.4, 7.0}};

const LookupCase kLookupCases[] = {
    {"the more intense of two", kThree, 100.45, 0.3, kDa, 1},
    {"the more intense below", {{100.2, 9.0}, {100.7, 5.0}}, 100.45, 0.3, kDa, 0},
    {"nothing near", kThree, 101.5, 0.3, kDa, -1},
    {"the window reaches into the next bin", kThree, 102.2, 0.3, kDa, 2},
    {"the window begins in the bin before", kThree, 103.0, 0.7, kDa, 2},
    {"above every peak", kThree, 200.0, 0.3, kDa, -1},
    {"in the last bin, above its peak", kThree, 102.9, 0.3, kDa, -1},
    {"below every peak", kThree, 50.0, 0.3, kDa, -1},
    {"a window over everything", kThree, 101.0, 50.0, kDa, 1},
    {"the window is closed above", {{100.5, 1.0}}, 100.25, 0.25, kDa, 0},
    {"the window is closed below", {{100.5, 1.0}}, 100.75, 0.25, kDa, 0},
    {"no tolerance, equal m/z", {{100.5, 1.0}}, 100.5, 0.0, kDa, 0},
    {"no tolerance, a hair off", {{100.5, 1.0}}, std::nextafter(100.5, 0.0), 0.0, kDa, -1},
    {"minus no tolerance", {{100.5, 1.0}}, 100.5, -0.0, kDa, 0},
    {"a negative tolerance", {{100.5, 1.0}}, 100.5, -0.25, kDa, -1},
    {"a negative tolerance, peak at its end", {{100.5, 1.0}}, 100.25, -0.25, kDa, -1},
    {"20 ppm of 200 are 0.004", {{200.0039, 1.0}}, 200.0, 20.0, kPpm, 0},
    {"20 ppm of 200 are no more", {{200.0041, 1.0}}, 200.0, 20.0, kPpm, -1},
    {"20 ppm of 200 below", {{199.9961, 1.0}}, 200.0, 20.0, kPpm, 0},
    {"20 ppm of 200 are no more below", {{199.9959, 1.0}}, 200.0, 20.0, kPpm, -1},
    {"a lower end between -1 and 0", {{0.25, 1.0}}, 0.5, 1.0, kDa, 0},
    {"a lower end just above -1", {{0.25, 1.0}}, 0.5, std::nextafter(1.5, 0.0), kDa, 0},
    {"a lower end of -1", {{0.25, 1.0}}, 0.5, 1.5, kDa, -1},
    {"a lower end below -1", {{0.25, 1.0}}, 0.5, 100.0, kDa, -1},
    {"a peak between -1 and 0", {{-0.5, 1.0}}, -0.25, 0.25, kDa, 0},
    {"a negative m/z has a negative ppm", {{-0.5, 1.0}}, -0.5, 20.0, kPpm, -1},
    {"a tolerance without end", kThree, 100.5, kInf, kDa, -1},
    {"a negative tolerance without end", kThree, 100.5, -kInf, kDa, -1},
    {"a tolerance that is no number", kThree, 100.5, kNan, kDa, -1},
    {"an m/z that is no number", kThree, kNan, 0.3, kDa, -1},
    {"an m/z without end", kThree, kInf, 0.3, kDa, -1},
    {"an m/z without end, ppm", kThree, kInf, 20.0, kPpm, -1},
    {"a negative m/z without end", kThree, -kInf, 0.3, kDa, -1},
    {"a huge m/z", kThree, 1e300, 0.3, kDa, -1},
    {"a huge m/z and tolerance", kThree, 1e300, 1e300, kDa, 1},
    {"no intensity is enough", {{100.5, 0.0}}, 100.5, 0.1, kDa, 0},
    {"a negative intensity above -1", {{100.5, -0.5}}, 100.5, 0.1, kDa, 0},
    {"an intensity of -1", {{100.5, -1.0}}, 100.5, 0.1, kDa, -1},
    {"an intensity that is no number", {{100.5, kNan}}, 100.5, 0.1, kDa, -1},
    {"an intensity that is no number before one",
     {{100.5, kNan}, {100.55, 1.0}},
     100.5,
     0.1,
     kDa,
     1},
    {"an intensity without end", {{100.5, 1.0}, {100.55, kInf}}, 100.5, 0.1, kDa, 1},
    {"a peak without a bin above",
     {{100.5, 1.0}, {268435456.0, 9.0}},
     134217728.0,
     134217728.0,
     kDa,
     0},
    {"a peak without a bin below", {{-1.0, 9.0}, {-0.5, 1.0}}, -0.5, 0.4375, kDa, 1},
    {"peaks that are no numbers", {{kNan, 9.0}, {100.5, 1.0}}, 100.5, 0.1, kDa, 0},
};

std::int32_t HitOf(Spectrum& spectrum, double mz, double tolerance, int type, bool reuse = true)
{
    Peak theo = PeakOf(mz, 0.0);
    return spectrum.GetHitPeak(theo, tolerance, static_cast<TolType::ETolType>(type), reuse);
}

TEST(SpectrumLookup, FindsTheMostIntensePeakInTheWindow)
{
    for (const LookupCase& c : kLookupCases) {
        Spectrum spectrum = TabledSpectrumOf(c.peaks);
        EXPECT_EQ(HitOf(spectrum, c.mz, c.tolerance, c.type), c.hit) << c.reason;
        EXPECT_EQ(HitOf(spectrum, c.mz, c.tolerance, c.type, false), c.hit) << c.reason;
    }
}

const LookupCase kUnitCases[] = {
    {"an unknown unit is ppm", {{200.0039, 1.0}}, 200.0, 20.0, TolType::Unknown, 0},
    {"an unknown unit is not Da", {{201.0, 1.0}}, 200.0, 20.0, TolType::Unknown, -1},
    {"any other unit is ppm", {{200.0039, 1.0}}, 200.0, 20.0, 77, 0},
    {"any negative unit is ppm", {{201.0, 1.0}}, 200.0, 20.0, -1, -1},
};

TEST(SpectrumLookup, B87_EveryUnitButDaIsPpm)
{
    for (const LookupCase& c : kUnitCases) {
        Spectrum spectrum = TabledSpectrumOf(c.peaks);
        EXPECT_EQ(HitOf(spectrum, c.mz, c.tolerance, c.type), c.hit) << c.reason;
    }
}

TEST(SpectrumLookup, EqualIntensityPrefersLowerMz)
{
    Spectrum spectrum = TabledSpectrumOf({{100.2, 5.0}, {100.4, 5.0}, {100.7, 5.0}});
    EXPECT_EQ(HitOf(spectrum, 100.45, 0.3, kDa), 0);
    EXPECT_EQ(HitOf(spectrum, 100.55, 0.3, kDa), 1);
}

TEST(SpectrumLookup, WithoutATableNothingIsFound)
{
    Spectrum spectrum = SpectrumOf(kThree);
    EXPECT_EQ(HitOf(spectrum, 100.2, 0.3, kDa), -1);
    spectrum.CreateHashTable();
    EXPECT_EQ(HitOf(spectrum, 100.2, 0.3, kDa), 0);
    spectrum.ReleaseHashTable();
    EXPECT_EQ(HitOf(spectrum, 100.2, 0.3, kDa), -1);
}

TEST(SpectrumLookup, WithoutATableAWindowThatBeginsBelow0FindsNothing)
{
    Spectrum empty;
    Spectrum untabled = SpectrumOf({{0.25, 1.0}});
    Spectrum binless = TabledSpectrumOf({{-2.0, 1.0}});
    for (Spectrum* const spectrum : {&empty, &untabled, &binless}) {
        EXPECT_EQ(HitOf(*spectrum, 0.0, 0.5, kDa), -1);
        EXPECT_EQ(HitOf(*spectrum, -0.5, 0.0, kDa), -1);
        EXPECT_EQ(HitOf(*spectrum, 0.0, 0.0, kDa), -1);
    }
}

// ---- Recording -------------------------------------------------------------

TEST(SpectrumLookup, FirstMatchOfTheTheoreticalPeakIsRecorded)
{
    Spectrum spectrum = TabledSpectrumOf(kThree);
    Peak theo = TheoreticalPeak(100.2, 7);
    theo.vMatchRes.push_back({Peak::Y_ION, 8, 2, Peak::SHIFT});
    EXPECT_EQ(spectrum.GetHitPeak(theo, 0.1, TolType::Da, true), 0);
    ASSERT_EQ(spectrum.vPeaks[0].getNumberOfMatchRes(), 1U);
    EXPECT_EQ(spectrum.vPeaks[0].getIonIndexOf(0), 7U);
    EXPECT_EQ(spectrum.vPeaks[0].getHitStatusStringOf(0), "b-ion_unshift_1");
    EXPECT_EQ(theo.getNumberOfMatchRes(), 2U);
    EXPECT_EQ(spectrum.vPeaks[1].getNumberOfMatchRes(), 0U);
}

TEST(SpectrumLookup, NothingIsRecordedWithoutAMatchOrAHit)
{
    Spectrum spectrum = TabledSpectrumOf(kThree);
    EXPECT_EQ(HitOf(spectrum, 100.2, 0.1, kDa), 0);
    Peak missing = TheoreticalPeak(101.5, 7);
    EXPECT_EQ(spectrum.GetHitPeak(missing, 0.1, TolType::Da, true), -1);
    for (const Peak& peak : spectrum.vPeaks) {
        EXPECT_EQ(peak.getNumberOfMatchRes(), 0U);
    }
}

TEST(SpectrumLookup, WithoutReuseTheNextMostIntensePeakIsTaken)
{
    Spectrum spectrum = TabledSpectrumOf({{100.1, 5.0}, {100.2, 9.0}, {100.3, 7.0}});
    Peak theo = TheoreticalPeak(100.2, 1);
    EXPECT_EQ(spectrum.GetHitPeak(theo, 0.15, TolType::Da, false), 1);
    EXPECT_EQ(spectrum.GetHitPeak(theo, 0.15, TolType::Da, false), 2);
    EXPECT_EQ(spectrum.GetHitPeak(theo, 0.15, TolType::Da, false), 0);
    EXPECT_EQ(spectrum.GetHitPeak(theo, 0.15, TolType::Da, false), -1);
    EXPECT_EQ(spectrum.GetHitPeak(theo, 0.15, TolType::Da, true), 1);
    EXPECT_EQ(spectrum.vPeaks[1].getNumberOfMatchRes(), 2U);
    spectrum.ResetMatchRes();
    EXPECT_EQ(spectrum.GetHitPeak(theo, 0.15, TolType::Da, false), 1);
}

TEST(SpectrumLookup, WithReuseAPeakGathersSeveralIons)
{
    Spectrum spectrum = TabledSpectrumOf(kThree);
    for (std::uint64_t ion = 1; ion <= 50; ++ion) {
        Peak theo = TheoreticalPeak(100.7, ion);
        EXPECT_EQ(spectrum.GetHitPeak(theo, 0.1, TolType::Da, true), 1);
    }
    ASSERT_EQ(spectrum.vPeaks[1].getNumberOfMatchRes(), 50U);
    EXPECT_EQ(spectrum.vPeaks[1].getIonIndexOf(0), 1U);
    EXPECT_EQ(spectrum.vPeaks[1].getIonIndexOf(49), 50U);
}

TEST(SpectrumLookup, WithoutReuseAPeakWithoutRecordedMatchStaysFree)
{
    Spectrum spectrum = TabledSpectrumOf(kThree);
    EXPECT_EQ(HitOf(spectrum, 100.2, 0.1, kDa, false), 0);
    EXPECT_EQ(HitOf(spectrum, 100.2, 0.1, kDa, false), 0);
}

TEST(SpectrumLookup, TheoreticalPeakMayBeAPeakOfTheSpectrum)
{
    Spectrum spectrum = TabledSpectrumOf(kThree);
    spectrum.vPeaks[1].vMatchRes.push_back({Peak::B_ION, 7, 1, Peak::UNSHIFT});
    for (std::size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(spectrum.GetHitPeak(spectrum.vPeaks[1], 0.1, TolType::Da, true), 1);
        ASSERT_EQ(spectrum.vPeaks[1].getNumberOfMatchRes(), i + 2);
        EXPECT_EQ(spectrum.vPeaks[1].getIonIndexOf(i + 1), 7U);
    }
    EXPECT_EQ(spectrum.GetHitPeak(spectrum.vPeaks[1], 0.1, TolType::Da, false), -1);
    EXPECT_EQ(spectrum.GetHitPeak(spectrum.vPeaks[1], 0.6, TolType::Da, false), 0);
    EXPECT_EQ(spectrum.vPeaks[0].getIonIndexOf(0), 7U);
}

TEST(SpectrumLookup, ToleranceMayLieInsideTheSpectrum)
{
    Spectrum spectrum = TabledSpectrumOf({{100.2, 0.25}, {100.4, 0.5}});
    spectrum.vPeaks[0].vMatchRes.push_back({Peak::B_ION, 7, 1, Peak::UNSHIFT});
    EXPECT_EQ(
        spectrum.GetHitPeak(spectrum.vPeaks[0], spectrum.vPeaks[0].dIntensity, TolType::Da, true),
        1);
}

// ---- Stale and broken tables -----------------------------------------------

TEST(SpectrumLookup, TableThatPointsNowhereFindsNothing)
{
    for (const std::int32_t entry : {-1, -2147483647 - 1, 3, 4, 2147483647}) {
        Spectrum spectrum = TabledSpectrumOf(kThree);
        spectrum.vHashTable.assign(spectrum.vHashTable.size(), entry);
        for (double mz = 0.0; mz < 110.0; mz += 0.1) {
            ASSERT_EQ(HitOf(spectrum, mz, 0.3, kDa), -1) << entry << ", " << mz;
        }
    }
}

TEST(SpectrumLookup, TableOfPeaksThatAreGoneFindsOnlyPeaksThatAreThere)
{
    Spectrum spectrum = TabledSpectrumOf(kThree);
    spectrum.vPeaks.pop_back();
    EXPECT_EQ(HitOf(spectrum, 102.4, 0.1, kDa), -1);
    EXPECT_EQ(HitOf(spectrum, 100.7, 0.1, kDa), 1);
    spectrum.vPeaks.clear();
    spectrum.vPeaks.shrink_to_fit();
    for (double mz = 0.0; mz < 110.0; mz += 0.1) {
        ASSERT_EQ(HitOf(spectrum, mz, 0.3, kDa), -1) << mz;
    }
}

TEST(SpectrumLookup, TableCutShortFindsNothingBehindItsEnd)
{
    Spectrum spectrum = TabledSpectrumOf(kThree);
    spectrum.vHashTable.resize(101);
    EXPECT_EQ(HitOf(spectrum, 102.4, 0.1, kDa), -1);
    EXPECT_EQ(HitOf(spectrum, 100.7, 0.1, kDa), 1);
}

TEST(SpectrumLookup, StaleTableFindsAPeakInTheWindowOrNone)
{
    Spectrum spectrum = TabledSpectrumOf(kThree);
    spectrum.sortByIntensity(); // 100.7, 102.4, 100.2
    for (double mz = 99.0; mz < 104.0; mz += 0.01) {
        const std::int32_t hit = HitOf(spectrum, mz, 0.3, kDa);
        if (hit != -1) {
            ASSERT_GE(hit, 0);
            ASSERT_LT(hit, 3);
            EXPECT_LE(std::abs(spectrum.vPeaks[static_cast<std::size_t>(hit)].dMz - mz), 0.3);
        }
    }
}

} // namespace
} // namespace Vorlan
