// The sorted masses against a walk over all of them.
#include "moddb/ModificationMasses.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kTiny = std::numeric_limits<double>::denorm_min();

std::vector<std::size_t> Walk(const std::vector<double>& masses, double mass, double maxError)
{
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < masses.size(); ++i) {
        if (std::abs(masses[i] - mass) <= maxError) {
            numbers.push_back(i);
        }
    }
    return numbers;
}

std::string Text(double mass, double maxError)
{
    return std::to_string(mass) + " within " + std::to_string(maxError);
}

std::vector<std::size_t> Within(const ModificationMasses& masses, double mass, double maxError)
{
    std::vector<std::size_t> numbers;
    masses.ForEachWithin(mass, maxError,
                         [&numbers](std::size_t number) { numbers.push_back(number); });
    return numbers;
}

TEST(ModificationMasses, NoMasses)
{
    EXPECT_THAT(Within(ModificationMasses({}), 0.0, kInfinity), IsEmpty());
}

TEST(ModificationMasses, NumbersAscendWhateverTheMasses)
{
    const ModificationMasses masses({3.0, 1.0, 2.0, 1.0});
    EXPECT_THAT(Within(masses, 2.0, 1.0), ElementsAre(0u, 1u, 2u, 3u));
    EXPECT_THAT(Within(masses, 1.0, 0.0), ElementsAre(1u, 3u));
    EXPECT_THAT(Within(masses, 1.5, 0.5), ElementsAre(1u, 2u, 3u));
}

TEST(ModificationMasses, BothEndsBelongToIt)
{
    const ModificationMasses masses({1.0, 1.25, 1.5, 1.75, 2.0});
    EXPECT_THAT(Within(masses, 1.5, 0.25), ElementsAre(1u, 2u, 3u));
    EXPECT_THAT(Within(masses, 1.5, 0.5), ElementsAre(0u, 1u, 2u, 3u, 4u));
    EXPECT_THAT(Within(masses, 1.5, std::nextafter(0.5, 0.0)), ElementsAre(1u, 2u, 3u));
}

TEST(ModificationMasses, DecimalEndsBelongAsTheDifferenceIsComputed)
{
    const std::vector<double> masses = {79.956331, 79.966331, 79.976331, 0.1, 0.3, 0.7};
    const ModificationMasses sorted(masses);
    for (const double mass : {79.966331, 0.2, 0.5, 0.4}) {
        for (const double error : {0.01, 0.1, 0.2, 0.3}) {
            EXPECT_EQ(Within(sorted, mass, error), Walk(masses, mass, error)) << Text(mass, error);
        }
    }
}

const std::vector<double> kSpecial = {
    kNaN,  -kNaN, kInfinity, -kInfinity, kMax, -kMax, 0.0,   -0.0, kTiny, -kTiny,
    1e300, 1.0,   -1.0,      0.5,        0.25, 1e-9,  -1e15, 1e15, 2.0,   0.1,
};

TEST(ModificationMasses, SpecialMassesAndErrors)
{
    std::vector<double> masses = kSpecial;
    masses.insert(masses.end(), kSpecial.rbegin(), kSpecial.rend());
    const ModificationMasses sorted(masses);
    for (const double mass : kSpecial) {
        for (const double error : kSpecial) {
            ASSERT_EQ(Within(sorted, mass, error), Walk(masses, mass, error)) << Text(mass, error);
        }
    }
}

TEST(ModificationMasses, AnInfiniteMassAmongManyEqualOnes)
{
    // Their differences are not a number, and those behind them are infinite.
    std::vector<double> masses(9, -kInfinity);
    masses.push_back(1.0);
    EXPECT_THAT(Within(ModificationMasses(masses), -kInfinity, kInfinity), ElementsAre(9u));
    EXPECT_THAT(Within(ModificationMasses(masses), -kInfinity, 1.0), IsEmpty());
}

/// Masses with many ties, some special.
std::vector<double> RandomMasses(Random& random)
{
    std::vector<double> masses;
    const std::size_t count = random.Below(200);
    for (std::size_t i = 0; i < count; ++i) {
        switch (random.Below(5)) {
        case 0: masses.push_back(0.25 * static_cast<double>(random.Below(40)) - 5.0); break;
        case 1: masses.push_back(static_cast<double>(random.Below(4000)) / 1000.0); break;
        case 2: masses.push_back(kSpecial[random.Below(kSpecial.size())]); break;
        case 3: masses.push_back(random.Between(-5.0, 5.0)); break;
        default: masses.push_back(masses.empty() ? 0.0 : masses[random.Below(i)]); break;
        }
    }
    return masses;
}

TEST(ModificationMasses, AgreeWithAWalkOnRandomMasses)
{
    Random random(43);
    std::size_t found = 0;
    for (int round = 0; round < 500; ++round) {
        const std::vector<double> masses = RandomMasses(random);
        const ModificationMasses sorted(masses);
        for (int question = 0; question < 100; ++question) {
            const std::vector<double> asked = RandomMasses(random);
            const double mass = asked.empty() ? 1.0 : asked.front();
            // Errors of all kinds, among them the exact distance of a record.
            double error = asked.size() < 2 ? 0.5 : asked[1];
            if (!masses.empty() && random.OneIn(3)) {
                error = std::abs(masses[random.Below(masses.size())] - mass);
                error = random.OneIn(4) ? std::nextafter(error, 0.0) : error;
            }
            const std::vector<std::size_t> numbers = Within(sorted, mass, error);
            ASSERT_EQ(numbers, Walk(masses, mass, error)) << Text(mass, error);
            found += numbers.size();
        }
    }
    EXPECT_GT(found, 100000u);
}

TEST(ModificationMasses, AgreeWithAWalkWhereDoublesAreCoarse)
{
    Random random(44);
    for (int round = 0; round < 2000; ++round) {
        const double base =
            std::ldexp(random.Between(0.5, 1.0), static_cast<int>(random.Below(120)));
        std::vector<double> masses;
        double next = base;
        for (int i = 0; i < 30; ++i) {
            masses.push_back(next);
            next = std::nextafter(next, random.OneIn(2) ? kInfinity : -kInfinity);
        }
        const double mass = base + random.Between(-3.0, 3.0);
        const double error = std::abs(masses[random.Below(masses.size())] - mass);
        const ModificationMasses sorted(masses);
        ASSERT_EQ(Within(sorted, mass, error), Walk(masses, mass, error)) << Text(mass, error);
    }
}

} // namespace
} // namespace Vorlan::test
