// Fields, sorting, and the table of bins.
#include <cmath>
#include <limits>

#include "DataStructures.h"
#include "datastructures/SpectrumMaking.h"
#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Random;
using test::SpectrumOf;
using Table = std::vector<std::int32_t>;

constexpr double kInf = std::numeric_limits<double>::infinity();
const double kNan = std::nan("");

// ---- Fields ----------------------------------------------------------------

TEST(Spectrum, FreshOneHasTheseValues)
{
    const Spectrum spectrum;
    EXPECT_EQ(spectrum.nSpecFlag, 1);
    EXPECT_EQ(spectrum.strSource, "");
    EXPECT_EQ(spectrum.strTitle, "");
    EXPECT_EQ(spectrum.dPrecursorMz, 0.0);
    EXPECT_EQ(spectrum.nCharge, 0U);
    EXPECT_EQ(spectrum.nScan, 0);
    EXPECT_EQ(spectrum.dRetentionTime, 0.0);
    EXPECT_TRUE(spectrum.vPeaks.empty());
    EXPECT_TRUE(spectrum.vHashTable.empty());
    EXPECT_EQ(spectrum.Size(), 0U);
}

TEST(Spectrum, CopyAndMoveCarryEveryField)
{
    Spectrum spectrum = SpectrumOf({{100.5, 1.0}, {101.5, 2.0}});
    spectrum.nSpecFlag = 2;
    spectrum.strSource = "source";
    spectrum.strTitle = "title";
    spectrum.dPrecursorMz = 405.25;
    spectrum.nCharge = 3;
    spectrum.nScan = 4;
    spectrum.dRetentionTime = 5.5;
    spectrum.CreateHashTable();
    const auto expectAll = [](const Spectrum& other) {
        EXPECT_EQ(other.nSpecFlag, 2);
        EXPECT_EQ(other.strSource, "source");
        EXPECT_EQ(other.strTitle, "title");
        EXPECT_EQ(other.dPrecursorMz, 405.25);
        EXPECT_EQ(other.nCharge, 3U);
        EXPECT_EQ(other.nScan, 4);
        EXPECT_EQ(other.dRetentionTime, 5.5);
        EXPECT_EQ(other.Size(), 2U);
        EXPECT_EQ(other.vHashTable.size(), 102U);
    };
    Spectrum copy = spectrum;
    expectAll(copy);
    copy.vPeaks.clear();
    copy.ReleaseHashTable();
    expectAll(spectrum);
    copy = spectrum;
    expectAll(copy);
    const Spectrum moved = std::move(spectrum);
    expectAll(moved);
}

TEST(Spectrum, ResetMatchResEmptiesEveryList)
{
    Spectrum spectrum = SpectrumOf({{100.5, 1.0}, {101.5, 2.0}});
    spectrum.CreateHashTable();
    const Table table = spectrum.vHashTable;
    spectrum.vPeaks[0].vMatchRes.resize(2);
    spectrum.vPeaks[1].vMatchRes.resize(1);
    spectrum.ResetMatchRes();
    EXPECT_EQ(spectrum.vPeaks[0].getNumberOfMatchRes(), 0U);
    EXPECT_EQ(spectrum.vPeaks[1].getNumberOfMatchRes(), 0U);
    EXPECT_EQ(spectrum.Size(), 2U);
    EXPECT_EQ(spectrum.vPeaks[1].dMz, 101.5);
    EXPECT_EQ(spectrum.vHashTable, table);
}

// ---- Sorting ---------------------------------------------------------------

TEST(Spectrum, OrdersOfTheSorts)
{
    Peak low;
    Peak high;
    low.dMz = 1.0;
    high.dMz = 2.0;
    low.dIntensity = 1.0;
    high.dIntensity = 2.0;
    EXPECT_TRUE(Spectrum::bMzLesser(low, high));
    EXPECT_FALSE(Spectrum::bMzLesser(high, low));
    EXPECT_FALSE(Spectrum::bMzLesser(low, low));
    EXPECT_TRUE(Spectrum::bIntensityGreater(high, low));
    EXPECT_FALSE(Spectrum::bIntensityGreater(low, high));
    EXPECT_FALSE(Spectrum::bIntensityGreater(low, low));
}

struct SortCase {
    const char* reason;
    std::vector<double> values;
    std::vector<double> ascending; ///< those that are numbers
};

const SortCase kSortCases[] = {
    {"none", {}, {}},
    {"one", {1.0}, {1.0}},
    {"sorted already", {1.0, 2.0, 3.0}, {1.0, 2.0, 3.0}},
    {"the wrong way round", {3.0, 2.0, 1.0}, {1.0, 2.0, 3.0}},
    {"equal ones", {2.0, 1.0, 2.0}, {1.0, 2.0, 2.0}},
    {"below 0", {0.5, -3.0, -2.0}, {-3.0, -2.0, 0.5}},
    {"infinite ones", {kInf, 1.0, -kInf}, {-kInf, 1.0, kInf}},
    {"not a number first", {kNan, 2.0, 1.0}, {1.0, 2.0}},
    {"not a number in between", {3.0, kNan, 1.0, kNan, 2.0}, {1.0, 2.0, 3.0}},
    {"not a number last", {2.0, 1.0, kNan}, {1.0, 2.0}},
    {"not a number behind infinity", {kNan, kInf, -kNan, 1.0}, {1.0, kInf}},
    {"nothing but not a number", {kNan, kNan}, {}},
};

/// The values in order, those that are no numbers at the end left out.
std::vector<double> Numbers(const Spectrum& spectrum, double Peak::*field)
{
    std::vector<double> numbers;
    bool isBehind = false;
    for (const Peak& peak : spectrum.vPeaks) {
        isBehind = isBehind || std::isnan(peak.*field);
        EXPECT_EQ(isBehind, std::isnan(peak.*field));
        if (!isBehind) {
            numbers.push_back(peak.*field);
        }
    }
    return numbers;
}

TEST(Spectrum, SortByMzAscends)
{
    for (const SortCase& c : kSortCases) {
        SCOPED_TRACE(c.reason);
        Spectrum spectrum;
        for (const double value : c.values) {
            spectrum.vPeaks.emplace_back();
            spectrum.vPeaks.back().dMz = value;
            spectrum.vPeaks.back().dIntensity = -value;
        }
        spectrum.sortByMz();
        EXPECT_EQ(spectrum.Size(), c.values.size());
        EXPECT_EQ(Numbers(spectrum, &Peak::dMz), c.ascending);
        for (const Peak& peak : spectrum.vPeaks) {
            EXPECT_TRUE(std::isnan(peak.dMz) || peak.dIntensity == -peak.dMz);
        }
    }
}

TEST(Spectrum, SortByIntensityDescends)
{
    for (const SortCase& c : kSortCases) {
        SCOPED_TRACE(c.reason);
        Spectrum spectrum;
        for (const double value : c.values) {
            spectrum.vPeaks.emplace_back();
            spectrum.vPeaks.back().dIntensity = value;
        }
        spectrum.sortByIntensity();
        EXPECT_EQ(spectrum.Size(), c.values.size());
        const std::vector<double> descending(c.ascending.rbegin(), c.ascending.rend());
        EXPECT_EQ(Numbers(spectrum, &Peak::dIntensity), descending);
    }
}

TEST(Spectrum, SortMovesMatchesWithTheirPeaks)
{
    Spectrum spectrum = SpectrumOf({{3.0, 1.0}, {1.0, 2.0}, {2.0, 3.0}});
    for (Peak& peak : spectrum.vPeaks) {
        peak.vMatchRes.resize(static_cast<std::size_t>(peak.dMz));
    }
    spectrum.sortByMz();
    for (const Peak& peak : spectrum.vPeaks) {
        EXPECT_EQ(static_cast<double>(peak.getNumberOfMatchRes()), peak.dMz);
    }
}

// ---- The table -------------------------------------------------------------

/// A table of runs: so many entries of a value.
Table Runs(std::initializer_list<std::pair<std::size_t, std::int32_t>> runs)
{
    Table table;
    for (const auto& [count, value] : runs) {
        table.insert(table.end(), count, value);
    }
    return table;
}

struct TableCase {
    const char* reason;
    std::vector<double> mzs;
    Table table;
};

const TableCase kTableCases[] = {
    {"no peaks, no table", {}, {}},
    {"an empty bin points upwards", {100.2, 100.7, 102.4}, Runs({{101, 0}, {2, 2}})},
    {"the peaks are sorted first", {102.4, 100.2, 100.7}, Runs({{101, 0}, {2, 2}})},
    {"one peak", {3.5}, Runs({{4, 0}})},
    {"a peak at the start of its bin", {3.0}, Runs({{4, 0}})},
    {"a peak just below the next bin", {std::nextafter(4.0, 0.0)}, Runs({{4, 0}})},
    {"a peak at 0", {0.0}, Runs({{1, 0}})},
    {"a peak at minus 0", {-0.0}, Runs({{1, 0}})},
    {"one in every bin", {0.5, 1.5, 2.5}, {0, 1, 2}},
    {"several in the last bin", {1.1, 1.2, 1.3}, {0, 0}},
    {"equal peaks", {1.5, 1.5}, {0, 0}},
    {"between -1 and 0 is the first bin", {-0.5, 0.5, 1.5}, {0, 2}},
    {"just above -1 is the first bin", {std::nextafter(-1.0, 0.0)}, {0}},
    {"-1 has no bin", {-1.0, 0.5}, {1}},
    {"far below has no bin", {-1e300, -2.0, 1.5}, {2, 2}},
    {"only peaks without a bin", {-1.0, -kInf, kNan, kInf, 268435456.0}, {}},
    {"infinite ones have no bin", {kInf, 1.5, -kInf}, {1, 1}},
    {"not a number has no bin", {kNan, 1.5, kNan, 0.5}, {0, 1}},
    {"2^28 has no bin", {268435456.0, 1.5}, {0, 0}},
    {"beyond all integers there is no bin", {1e300, 1.8446744073709552e19, 1.5}, {0, 0}},
    {"a denormal is in the first bin", {4.9406564584124654e-324}, {0}},
};

TEST(Spectrum, TableHoldsTheFirstPeakOfEveryBinOrAbove)
{
    for (const TableCase& c : kTableCases) {
        Spectrum spectrum;
        for (const double mz : c.mzs) {
            spectrum.vPeaks.emplace_back();
            spectrum.vPeaks.back().dMz = mz;
        }
        spectrum.CreateHashTable();
        EXPECT_EQ(spectrum.vHashTable, c.table) << c.reason;
        EXPECT_EQ(spectrum.Size(), c.mzs.size()) << c.reason;
    }
}

TEST(Spectrum, TableOfALargeMzIsBuilt)
{
    Spectrum spectrum = SpectrumOf({{1e6 + 0.5, 1.0}, {10.5, 1.0}});
    spectrum.CreateHashTable();
    EXPECT_EQ(spectrum.vHashTable, Runs({{11, 0}, {1000001 - 11, 1}}));
}

TEST(Spectrum, TableIsBuiltAfresh)
{
    Spectrum spectrum = SpectrumOf({{5.5, 1.0}, {2.5, 1.0}});
    spectrum.CreateHashTable();
    const Table table = spectrum.vHashTable;
    spectrum.CreateHashTable();
    EXPECT_EQ(spectrum.vHashTable, table);
    spectrum.vPeaks.pop_back();
    spectrum.CreateHashTable();
    EXPECT_EQ(spectrum.vHashTable, Runs({{3, 0}}));
    spectrum.vPeaks.clear();
    spectrum.CreateHashTable();
    EXPECT_TRUE(spectrum.vHashTable.empty());
}

TEST(Spectrum, ReleaseFreesTheTable)
{
    Spectrum spectrum = SpectrumOf({{5000.5, 1.0}});
    spectrum.ReleaseHashTable();
    EXPECT_EQ(spectrum.vHashTable.capacity(), 0U);
    spectrum.CreateHashTable();
    EXPECT_EQ(spectrum.vHashTable.size(), 5001U);
    spectrum.ReleaseHashTable();
    EXPECT_TRUE(spectrum.vHashTable.empty());
    EXPECT_EQ(spectrum.vHashTable.capacity(), 0U);
    EXPECT_EQ(spectrum.Size(), 1U);
}

/// The table by its definition, entry for entry.
Table SlowTable(const std::vector<Peak>& peaks)
{
    Table table;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        const double mz = peaks[i].dMz;
        if (!(mz > -1.0) || mz >= 268435456.0) {
            continue; // has no bin
        }
        const auto bin = static_cast<std::int64_t>(mz);
        while (static_cast<std::int64_t>(table.size()) <= bin) {
            table.push_back(static_cast<std::int32_t>(i));
        }
    }
    return table;
}

double RandomMz(Random& random)
{
    switch (random.Below(40)) {
    case 0: return kNan;
    case 1: return random.OneIn(2) ? kInf : -kInf;
    case 2: return random.OneIn(2) ? 268435456.0 : random.Between(2.7e8, 1e20);
    case 3: return random.Between(-3.0, 1.0);
    case 4: return -random.Between(0.0, 1e20);
    case 5: return std::nextafter(static_cast<double>(random.Below(30)), -1.0);
    case 6: return static_cast<double>(random.Below(30));
    default: return random.Between(0.0, 60.0);
    }
}

TEST(Spectrum, TableAgreesWithSlowTwin)
{
    Random random(51);
    for (int round = 0; round < 5000; ++round) {
        Spectrum spectrum;
        spectrum.vPeaks.resize(random.Below(random.OneIn(3) ? 60 : 6));
        for (Peak& peak : spectrum.vPeaks) {
            peak.dMz = RandomMz(random);
        }
        spectrum.CreateHashTable();
        ASSERT_EQ(spectrum.vHashTable, SlowTable(spectrum.vPeaks)) << "round " << round;
        for (std::size_t i = 1; i < spectrum.vPeaks.size(); ++i) {
            ASSERT_FALSE(spectrum.vPeaks[i].dMz < spectrum.vPeaks[i - 1].dMz);
        }
    }
}

} // namespace
} // namespace Vorlan
