// The walk over sums finds what storing every combination finds.
#include "pepident/MassCombinations.h"

#include <cmath>
#include <limits>

#include "PeptideIdentificationIO.h"
#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Random;
using Places = std::vector<std::size_t>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Places Found(const std::vector<double>& masses, double delta)
{
    return MassCombinations(masses).Find(delta);
}

// ---- The plain twin -------------------------------------------------------

std::vector<IdentModification> ModsOf(const std::vector<double>& masses)
{
    std::vector<IdentModification> mods;
    for (std::size_t i = 0; i < masses.size(); ++i) {
        mods.emplace_back(std::to_string(i), masses[i], "S", "Anywhere", 0);
    }
    return mods;
}

/// Makes every combination and compares each sum.
Places PlainlyFound(const std::vector<double>& masses, double delta)
{
    MSFraggerPepXMLPepIdentIO reader;
    for (int k = 1; k <= 5; ++k) {
        std::vector<MSFraggerPepXMLPepIdentIO::Combination> all;
        reader.getModComb(all, ModsOf(masses), k);
        const MSFraggerPepXMLPepIdentIO::Combination* best = nullptr;
        double least = 0.05;
        for (const auto& combination : all) {
            const double difference = std::abs(delta - combination.first);
            if (difference < least) {
                least = difference;
                best = &combination;
            }
        }
        if (best != nullptr) {
            Places places;
            for (const IdentModification& mod : best->second) {
                places.push_back(std::stoul(mod.strName));
            }
            return places;
        }
    }
    return {};
}

/// How many of the answers had each number of masses.
using Sizes = std::vector<int>;

/// makeMasses(random) and makeDelta(random, masses) make the cases.
template <typename MakeMasses, typename MakeDelta>
Sizes Compare(std::uint64_t seed, int count, MakeMasses makeMasses, MakeDelta makeDelta)
{
    Random random(seed);
    Sizes sizes(6);
    for (int i = 0; i < count && !testing::Test::HasFailure(); ++i) {
        const std::vector<double> masses = makeMasses(random);
        const double delta = makeDelta(random, masses);
        const Places expected = PlainlyFound(masses, delta);
        ++sizes[expected.size()];
        EXPECT_EQ(Found(masses, delta), expected)
            << testing::PrintToString(masses) << " " << delta << " (case " << i << ")";
    }
    return sizes;
}

/// One to most masses, each made by make(random).
template <typename Make>
std::vector<double> Masses(Random& random, std::size_t most, Make make)
{
    std::vector<double> masses(1 + random.Below(most));
    for (double& mass : masses) {
        mass = make(random);
    }
    return masses;
}

double Small(Random& random)
{
    return static_cast<double>(random.Below(9)) - 3.0;
}

constexpr double kUsual[] = {15.994915,  57.021464, 79.966331,  42.010565, 0.984016,
                             -17.026549, 14.01565,  -18.010565, 21.981943, 1.003355};

/// That of a modification, or one within a few units of its last place.
double Usual(Random& random)
{
    double mass = kUsual[random.Below(10)];
    for (std::size_t steps = random.Below(4); steps > 0; --steps) {
        mass = std::nextafter(mass, 1000.0);
    }
    return mass;
}

/// The sum of one to five of them.
double SomeSum(Random& random, const std::vector<double>& masses)
{
    double sum = 0.0;
    for (std::size_t count = 1 + random.Below(5); count > 0; --count) {
        sum += masses[random.Below(masses.size())];
    }
    return sum;
}

double NearSum(Random& random, const std::vector<double>& masses)
{
    constexpr double kOff[] = {0.0, 0.05, -0.05, 0.025, -0.01, 1e-15, -1e-13, 0.5};
    double delta = SomeSum(random, masses) + kOff[random.Below(8)];
    for (std::size_t steps = random.Below(3); steps > 0; --steps) {
        delta = std::nextafter(delta, random.OneIn(2) ? kInfinity : -kInfinity);
    }
    return delta;
}

// ---- Against the twin -----------------------------------------------------

TEST(MassCombinations, AgreesOnSmallIntegersWithTheirTies)
{
    const Sizes sizes = Compare(
        1, 1500, [](Random& random) { return Masses(random, 5, Small); }, NearSum);
    for (std::size_t size = 0; size <= 4; ++size) {
        EXPECT_GE(sizes[size], 20) << size;
    }
}

// Multiples of the tolerance: sums stand at its border, as far as rounding lets
// them.
TEST(MassCombinations, AgreesAtTheBorderOfTheTolerance)
{
    const auto tenths = [](Random& random) {
        return Masses(random, 4,
                      [](Random& r) { return 0.05 * (static_cast<double>(r.Below(60)) - 20); });
    };
    const Sizes sizes = Compare(2, 1000, tenths, [](Random& random, const auto& masses) {
        return SomeSum(random, masses) + 0.05 * (static_cast<double>(random.Below(5)) - 2);
    });
    EXPECT_GE(sizes[1] + sizes[2], 200);
}

TEST(MassCombinations, AgreesOnMassesOfModifications)
{
    const Sizes sizes = Compare(
        3, 1200, [](Random& random) { return Masses(random, 5, Usual); }, NearSum);
    for (std::size_t size = 0; size <= 5; ++size) {
        EXPECT_GE(sizes[size], 10) << size;
    }
}

// Sums of the same masses in another order differ in their last places, so the
// order decides which is nearest.
TEST(MassCombinations, AgreesOnSumsThatOnlyRoundingTellsApart)
{
    const auto masses = [](Random& random) {
        const double base = random.Between(0.1, 30.0);
        return Masses(random, 4, [base](Random& r) {
            return base * static_cast<double>(1 + r.Below(3)) / 3.0
                   + static_cast<double>(r.Below(3)) * 1e-15;
        });
    };
    const auto delta = [](Random& random, const std::vector<double>& all) {
        const double sum = SomeSum(random, all);
        return random.OneIn(2) ? sum : std::nextafter(sum, kInfinity);
    };
    const Sizes sizes = Compare(4, 1200, masses, delta);
    EXPECT_GE(sizes[3], 20);
}

TEST(MassCombinations, AgreesOnAnyNumbers)
{
    static constexpr double kOdd[] = {0.0,    -0.0,   kNaN,   kInfinity, -kInfinity, 1e308,
                                      -1e308, 1e-308, 5e-324, 1e16,      -1e16,      0.05,
                                      -0.05,  1.0,    0.1,    1.7e308,   1e15 + 1};
    const auto any = [](Random& random) { return kOdd[random.Below(17)]; };
    Compare(
        5, 1200, [&](Random& random) { return Masses(random, 4, any); },
        [&](Random& random, const auto& masses) {
            return random.OneIn(3) ? any(random) : SomeSum(random, masses);
        });
}

TEST(MassCombinations, AgreesOnMassesAndWishesWithoutARelation)
{
    Compare(
        6, 800,
        [](Random& random) {
            return Masses(random, 4, [](Random& r) { return r.Between(-60, 200); });
        },
        [](Random& random, const auto&) { return random.Between(-300, 900); });
}

// ---- One by one -----------------------------------------------------------

struct Explained {
    const char* reason;
    std::vector<double> masses;
    double delta;
    Places places;
};

const Explained kExplained[] = {
    {"one", {10, 16}, 16.01, {1}},
    {"B-53: one wins over two that are nearer", {16, 7.99}, 15.98, {0}},
    {"the nearest of several", {16.00, 16.03, 16.02}, 16.025, {2}},
    {"of equal masses the first", {1, 16, 16}, 16, {1}},
    {"of masses as far above as below the first", {16.5, 15.5, 16.015625, 15.984375}, 16, {2}},
    {"two, one of them twice", {8, 3}, 16, {0, 0}},
    {"two, in the first order", {5, 11}, 16, {0, 1}},
    {"three", {5, 100}, 15, {0, 0, 0}},
    {"four", {1, 100}, 4, {0, 0, 0, 0}},
    {"five", {1, 100}, 5, {0, 0, 0, 0, 0}},
    {"six are too many", {1, 100}, 6, {}},
    {"a negative mass", {-17.0265, 16}, -17.03, {0}},
    {"one against another", {-18, 80}, 62, {0, 1}},
    {"0 is a mass like any other", {0, 16}, 0.01, {0}},
    {"nothing explains 0 for nothing", {16}, 0, {}},
    {"exactly 0.05 away is too far", {0}, 0.05, {}},
    {"exactly 0.05 below", {0}, -0.05, {}},
    {"just within", {0}, 0.0499999999, {0}},
    {"no masses", {}, 0, {}},
    {"a delta that is no number", {1, kNaN}, kNaN, {}},
    {"an infinite delta", {1, kInfinity}, kInfinity, {}},
    {"infinite masses take no part", {kInfinity, 2, -kInfinity}, 4, {1, 1}},
    {"masses that are no numbers take no part", {kNaN, 2}, 4, {1, 1}},
    {"sums beyond all numbers", {1.7e308, 2}, 4, {1, 1}},
};

TEST(MassCombinations, ExplainsOrNot)
{
    for (const Explained& row : kExplained) {
        EXPECT_EQ(Found(row.masses, row.delta), row.places) << row.reason;
        EXPECT_EQ(PlainlyFound(row.masses, row.delta), row.places) << row.reason << ", plainly";
    }
}

TEST(MassCombinations, B53_FewMassesWinOverACloseSum)
{
    EXPECT_EQ(Found({15.9949, 7.98, 8.0149}, 15.95), (Places{0}));
    EXPECT_EQ(Found({7.98, 8.0149}, 15.95), (Places{0, 0}));
}

TEST(MassCombinations, AnObjectAnswersMoreThanOnce)
{
    MassCombinations combinations({1, 10, 100});
    EXPECT_EQ(combinations.Find(111), (Places{0, 1, 2}));
    EXPECT_EQ(combinations.Find(1000), (Places{}));
    EXPECT_EQ(combinations.Find(10), (Places{1}));
    EXPECT_EQ(combinations.Find(21), (Places{0, 1, 1}));
    EXPECT_EQ(combinations.Find(111), (Places{0, 1, 2}));
}

// 3.2 million combinations of five, none of which comes near.
TEST(MassCombinations, TwentyMassesOfWhichNoneExplain)
{
    std::vector<double> masses;
    for (int i = 0; i < 20; ++i) {
        masses.push_back(10.0 + 7.0 * i);
    }
    EXPECT_EQ(Found(masses, 300.5), Places());
    EXPECT_EQ(Found(masses, 10000.0), Places());
    EXPECT_EQ(Found(masses, -10000.0), Places());
}

// So many that the sums of pairs are not kept.
TEST(MassCombinations, ThousandsOfMasses)
{
    std::vector<double> masses;
    for (int i = 0; i < 2500; ++i) {
        masses.push_back(1000.0 + i);
    }
    EXPECT_EQ(Found(masses, 3499.02), (Places{2499}));
    EXPECT_EQ(Found(masses, 3500.0), (Places{0, 1500}));
    EXPECT_EQ(Found(masses, 7000.0), (Places{0, 1501, 2499}));
}

} // namespace
} // namespace Vorlan
