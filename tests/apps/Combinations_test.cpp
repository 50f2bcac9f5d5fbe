// Which sums of modifications explain a mass, and the note on isotopes.
#include "mods/Combinations.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include "mods/IsotopeShift.h"
#include "support/Random.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

/// The plain twin: walks through every multiset of a size.
std::vector<Combination> AllOfSize(const std::vector<double>& masses,
                                   const CombinationQuestion& question, std::size_t size)
{
    std::vector<Combination> found;
    Combination combination;
    const std::function<void(std::size_t)> choose = [&](std::size_t first) {
        if (combination.parts.size() == size) {
            double sum = 0.0;
            for (const std::size_t part : combination.parts) {
                sum += masses[part];
            }
            combination.error = question.mass - sum;
            if (std::abs(combination.error) <= question.tolerance) {
                found.push_back(combination);
            }
            return;
        }
        for (std::size_t i = first; i < masses.size(); ++i) {
            combination.parts.push_back(i);
            choose(i);
            combination.parts.pop_back();
        }
    };
    choose(0);
    return found;
}

CombinationAnswer PlainAnswer(const std::vector<double>& masses,
                              const CombinationQuestion& question)
{
    CombinationAnswer answer;
    answer.isUsed.assign(masses.size(), false);
    for (std::size_t size = 0; size <= question.maxSize; ++size) {
        const bool wasExplained = answer.isExplained;
        for (const Combination& combination : AllOfSize(masses, question, size)) {
            answer.best.push_back(combination);
            for (const std::size_t part : combination.parts) {
                answer.isUsed[part] = true;
            }
        }
        answer.searched = size;
        if (!answer.isExplained && !answer.best.empty()) {
            answer.isExplained = true;
            answer.size = size;
        }
        if (wasExplained || (!answer.isExplained && masses.empty())) {
            break;
        }
    }
    answer.found = answer.best.size();
    std::sort(answer.best.begin(), answer.best.end(), IsBetter);
    answer.best.resize(std::min(answer.best.size(), question.maxKept));
    return answer;
}

CombinationQuestion Question(double mass, double tolerance = 0.01)
{
    CombinationQuestion question;
    question.mass = mass;
    question.tolerance = tolerance;
    return question;
}

std::vector<std::size_t> BestParts(const CombinationAnswer& answer)
{
    return answer.best.empty() ? std::vector<std::size_t>{99} : answer.best.front().parts;
}

using Parts = std::vector<std::size_t>;

TEST(Combinations, AgreesWithTheWalkThroughAllCombinations)
{
    Vorlan::test::Random random(20261120);
    std::uint64_t explained = 0;
    for (int round = 0; round < 3000; ++round) {
        std::vector<double> masses(random.Below(9));
        for (double& mass : masses) {
            // Few decimals, so that sums meet at the ends of the tolerance.
            mass = (static_cast<double>(random.Below(400)) - 150.0) / 10.0;
        }
        CombinationQuestion question =
            Question((static_cast<double>(random.Below(1200)) - 400.0) / 10.0,
                     static_cast<double>(random.Below(4)) / 10.0);
        if (!masses.empty() && random.OneIn(2)) {
            question.mass =
                masses[random.Below(masses.size())] + masses[random.Below(masses.size())];
        }
        question.maxSize = random.Below(6);
        question.maxKept = random.Below(30);
        const CombinationAnswer answer = FindCombinations(masses, question);
        const CombinationAnswer plain = PlainAnswer(masses, question);
        ASSERT_EQ(answer.isExplained, plain.isExplained) << "round " << round;
        ASSERT_EQ(answer.size, plain.size) << "round " << round;
        ASSERT_EQ(answer.searched, plain.searched) << "round " << round;
        ASSERT_EQ(answer.found, plain.found) << "round " << round;
        ASSERT_EQ(answer.best, plain.best) << "round " << round;
        ASSERT_EQ(answer.isUsed, plain.isUsed) << "round " << round;
        explained += answer.isExplained ? 1 : 0;
    }
    EXPECT_GT(explained, 500U);
    EXPECT_LT(explained, 2900U);
}

TEST(Combinations, StopsOneSizeAfterTheFirstThatExplains)
{
    const std::vector<double> masses = {15.994915, 79.966331, 31.98983};
    const CombinationAnswer answer = FindCombinations(masses, Question(31.9898));
    EXPECT_EQ(answer.size, 1U);
    EXPECT_EQ(answer.searched, 2U);
    ASSERT_EQ(answer.best.size(), 2U);
    EXPECT_EQ(answer.best[0].parts, Parts{2}) << "fewer parts first";
    EXPECT_EQ(answer.best[1].parts, (Parts{0, 0}));
    EXPECT_EQ(answer.isUsed, (std::vector<bool>{true, false, true}));
    EXPECT_FALSE(answer.maxSizeReached);
}

TEST(Combinations, ASmallerErrorComesBeforeFewerParts)
{
    const CombinationAnswer answer = FindCombinations({10.0, 20.005}, Question(20.0));
    ASSERT_EQ(answer.best.size(), 2U);
    EXPECT_EQ(answer.best[0].parts, (Parts{0, 0}));
    EXPECT_EQ(answer.best[1].parts, Parts{1});
}

TEST(Combinations, RoundingIsNoDifferenceBetweenErrors)
{
    // 0.1 + 0.2 is 0.30000000000000004.
    const CombinationAnswer answer = FindCombinations({0.1, 0.2, 0.3}, Question(0.3, 0.001));
    ASSERT_GE(answer.best.size(), 2U);
    EXPECT_EQ(BestParts(answer), Parts{2});
}

TEST(Combinations, AMassOfNothingIsExplainedByNoModification)
{
    const CombinationAnswer answer = FindCombinations({15.994915, 0.001}, Question(0.002));
    EXPECT_TRUE(answer.isExplained);
    EXPECT_EQ(answer.size, 0U);
    EXPECT_EQ(answer.searched, 1U);
    EXPECT_EQ(BestParts(answer), Parts{1});
    EXPECT_EQ(answer.found, 2U);
}

TEST(Combinations, GainsAndLossesMayMeet)
{
    EXPECT_EQ(BestParts(FindCombinations({-17.026549, 15.994915}, Question(-1.031634))),
              (Parts{0, 1}));
}

TEST(Combinations, TheBoundsAreTold)
{
    CombinationQuestion question = Question(50.0);
    question.maxSize = 3;
    CombinationAnswer answer = FindCombinations({10.0}, question);
    EXPECT_FALSE(answer.isExplained);
    EXPECT_TRUE(answer.maxSizeReached);
    EXPECT_EQ(answer.searched, 3U);
    question.mass = 30.0;
    answer = FindCombinations({10.0}, question);
    EXPECT_EQ(answer.size, 3U);
    EXPECT_TRUE(answer.maxSizeReached) << "one size more was wanted";

    question = Question(400.0);
    question.maxSteps = 1000;
    answer = FindCombinations(std::vector<double>(100, 100.0), question);
    EXPECT_FALSE(answer.isExplained);
    EXPECT_TRUE(answer.maxStepsReached);
    EXPECT_EQ(answer.searched, 2U);

    question = Question(300.0);
    question.maxFound = 1000;
    answer = FindCombinations(std::vector<double>(100, 100.0), question);
    EXPECT_TRUE(answer.isExplained);
    EXPECT_TRUE(answer.maxStepsReached);
    EXPECT_EQ(answer.found, 1000U);
    EXPECT_EQ(answer.best.size(), question.maxKept);
}

TEST(Combinations, WithoutCandidatesTheSearchEnds)
{
    const CombinationAnswer answer = FindCombinations({}, Question(1.0));
    EXPECT_FALSE(answer.isExplained);
    EXPECT_EQ(answer.searched, 0U);
}

TEST(Combinations, MassesThatAreNotFiniteTakeNoPart)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(BestParts(FindCombinations({nan, infinity, 16.0, -infinity}, Question(16.0))),
              Parts{2});
    EXPECT_FALSE(FindCombinations({16.0}, Question(nan)).isExplained);
    EXPECT_FALSE(FindCombinations({1e308}, Question(-1e308)).isExplained);
}

// ---- Isotopes ------------------------------------------------------------

TEST(IsotopeShift, IsSaidNearWholeStepsOnly)
{
    struct Case {
        const char* reason;
        double mass;
        double tolerance;
        int number; ///< 0: no hint
    };
    for (const Case& c :
         {Case{"one step", 1.00335, 0.01, 1}, Case{"deamidation", 0.984016, 0.01, 1},
          Case{"two deamidations", 1.968032, 0.01, 0},
          Case{"two deamidations, wider", 1.968032, 0.05, 2},
          Case{"a step less", -1.0030, 0.01, -1}, Case{"three", 3.0101, 0.01, 3},
          Case{"nothing", 0.0, 0.01, 0}, Case{"far from a step", 1.5, 10.0, 0},
          Case{"many steps", 80.27, 0.01, 0}, Case{"oxidation", 15.9949, 0.01, 0},
          Case{"no number", std::numeric_limits<double>::quiet_NaN(), 1.0, 0}}) {
        SCOPED_TRACE(c.reason);
        const auto hint = IsotopeHintOf(c.mass, c.tolerance);
        EXPECT_EQ(hint ? hint->number : 0, c.number);
        if (hint) {
            EXPECT_NEAR(hint->error, c.mass - c.number * 1.00335484, 1e-7);
        }
    }
}

TEST(IsotopeShift, TheNoteShowsBothErrorsAndWhichIsSmaller)
{
    EXPECT_EQ(NoteOf(*IsotopeHintOf(0.984, 0.01), "Deamidated (N)", 0.984 - 0.984016),
              "Note: near 1 x 13C isotope (1.003355 Da), which is -19.355 mDa off; Deamidated (N) "
              "is -0.016 mDa off: the modification fits better.\n");
    EXPECT_EQ(NoteOf(*IsotopeHintOf(1.003, 0.02), "Deamidated (N)", 1.003 - 0.984016),
              "Note: near 1 x 13C isotope (1.003355 Da), which is -0.355 mDa off; Deamidated (N) "
              "is +18.984 mDa off: the isotope fits better.\n");
    EXPECT_EQ(NoteOf(*IsotopeHintOf(2.0, 0.02), "", 0.0),
              "Note: near 2 x 13C isotope (2.006710 Da), which is -6.710 mDa off; no modification "
              "explains the mass.\n");
}

} // namespace
} // namespace pelgrin
