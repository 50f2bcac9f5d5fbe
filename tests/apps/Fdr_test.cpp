// FDR control against a plain twin that counts anew for every score.
#include "run/Fdr.h"

#include <algorithm>
#include <limits>

#include "support/Random.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using testing::ElementsAre;
using Vorlan::FdrEstimateType;
using Vorlan::PeptideEvidence;
using Vorlan::PeptideIdentification;
using Vorlan::TdFdrType;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// The lowest rate over all scores at which the match is taken.
double PlainQValue(const std::vector<ScoredMatch>& matches, double score, bool highIsBetter,
                   TdFdrType::ETdFdrType formula)
{
    const auto isTaken = [highIsBetter](double value, double limit) {
        return highIsBetter ? value >= limit : value <= limit;
    };
    double lowest = kInfinity;
    for (const ScoredMatch& limit : matches) {
        if (!isTaken(score, limit.score)) {
            continue;
        }
        double targets = 0;
        double decoys = formula == TdFdrType::DecoyPlusOneByTarget ? 1 : 0;
        for (const ScoredMatch& match : matches) {
            if (isTaken(match.score, limit.score)) {
                (match.isTarget ? targets : decoys) += 1;
            }
        }
        lowest = targets > 0 ? std::min(lowest, decoys / targets) : lowest;
    }
    return lowest;
}

TEST(QValuesOf, AgreesWithAPlainCountForRandomMatches)
{
    std::mt19937_64 chance(17);
    for (int round = 0; round < 3000; ++round) {
        std::vector<ScoredMatch> matches(chance() % 40);
        const std::uint64_t scores = 1 + chance() % 60; // few: many are equal
        const std::uint64_t decoyShare = chance() % 5;
        for (ScoredMatch& match : matches) {
            match.score = 0.25 * static_cast<double>(chance() % scores) - 3;
            match.isTarget = chance() % 4 >= decoyShare;
        }
        for (const bool highIsBetter : {true, false}) {
            for (const auto formula : {TdFdrType::DecoyByTarget, TdFdrType::DecoyPlusOneByTarget}) {
                const auto values = QValuesOf(matches, highIsBetter, formula);
                for (std::size_t i = 0; i < matches.size(); ++i) {
                    ASSERT_EQ(values[i],
                              PlainQValue(matches, matches[i].score, highIsBetter, formula))
                        << "round " << round << " match " << i;
                }
            }
        }
    }
}

TEST(QValuesOf, IsTheLowestRateOfThisAndAllWorseScores)
{
    const std::vector<ScoredMatch> matches = {{9, true}, {8, false}, {7, true},
                                              {6, true}, {5, true},  {4, false}};
    EXPECT_THAT(QValuesOf(matches, true, TdFdrType::DecoyByTarget),
                ElementsAre(0.0, 0.25, 0.25, 0.25, 0.25, 0.5));
    EXPECT_THAT(QValuesOf(matches, true, TdFdrType::DecoyPlusOneByTarget),
                ElementsAre(0.5, 0.5, 0.5, 0.5, 0.5, 0.75));
}

TEST(QValuesOf, EqualScoresShareOneValueInAnyOrder)
{
    EXPECT_THAT(QValuesOf({{5, true}, {5, false}, {5, true}}, true, TdFdrType::DecoyByTarget),
                ElementsAre(0.5, 0.5, 0.5));
    EXPECT_THAT(QValuesOf({{0.0, false}, {-0.0, true}}, false, TdFdrType::DecoyByTarget),
                ElementsAre(1.0, 1.0));
}

TEST(QValuesOf, WithoutTargetsEveryValueIsInfinite)
{
    EXPECT_THAT(QValuesOf({{5, false}, {4, false}}, true, TdFdrType::DecoyByTarget),
                ElementsAre(kInfinity, kInfinity));
    EXPECT_TRUE(QValuesOf({}, true, TdFdrType::DecoyByTarget).empty());
}

TEST(QValuesOf, TakesInfiniteScores)
{
    EXPECT_THAT(QValuesOf({{kInfinity, true}, {-kInfinity, false}, {0, true}}, true,
                          TdFdrType::DecoyByTarget),
                ElementsAre(0.0, 0.5, 0.0));
}

PeptideIdentification Match(double score, const std::string& protein, bool highIsBetter = true)
{
    PeptideIdentification match;
    match.dMainScore = score;
    match.bHighScoreBetter = highIsBetter;
    if (!protein.empty()) {
        match.vEvidences.emplace_back(protein, 1, 0, 'K', 'A');
    }
    return match;
}

FdrPlan Plan(double threshold)
{
    return {"D_", threshold, FdrEstimateType::Global, TdFdrType::DecoyByTarget};
}

TEST(ControlFdr, SaysOfEveryRecordWhatBecomesOfIt)
{
    PeptideIdentification known = Match(7, "");
    known.bDecoy = true;
    const std::vector<PeptideIdentification> records = {
        Match(9, "P1"), Match(8, "P2"),   known,           Match(6, "P3"),
        Match(5, ""),   Match(kNan, "P"), Match(4, "D_P"), Match(3, "P4")};
    const FdrOutcome outcome = ControlFdr(records, {0, records.size()}, Plan(0.4));
    EXPECT_THAT(outcome.verdicts,
                ElementsAre(Verdict::Stays, Verdict::Stays, Verdict::Decoy, Verdict::Stays,
                            Verdict::WithoutProteins, Verdict::ScoreNotANumber, Verdict::Decoy,
                            Verdict::AboveThreshold));
    EXPECT_EQ(outcome.CountOf(Verdict::Stays), 3U);
    EXPECT_EQ(outcome.Targets(), 4U);
    EXPECT_EQ(outcome.worstScore, 6.0);
}

TEST(ControlFdr, AValueOfExactlyTheThresholdStays)
{
    std::vector<PeptideIdentification> records(100, Match(2, "P"));
    records.push_back(Match(2, "D_P"));
    EXPECT_EQ(ControlFdr(records, {0, 101}, Plan(0.01)).CountOf(Verdict::Stays), 100U);
    EXPECT_EQ(ControlFdr(records, {0, 101}, Plan(0.00999)).CountOf(Verdict::Stays), 0U);
}

TEST(ControlFdr, LooksAtItsRangeOnly)
{
    const std::vector<PeptideIdentification> records = {Match(9, "D_"), Match(1, "P"),
                                                        Match(8, "D_")};
    const FdrOutcome outcome = ControlFdr(records, {1, 2}, Plan(0.0));
    EXPECT_THAT(outcome.verdicts, ElementsAre(Verdict::Stays));
}

TEST(ControlFdr, LowScoresMayBeTheGoodOnes)
{
    const std::vector<PeptideIdentification> records = {
        Match(1e-9, "P", false), Match(0.5, "D_", false), Match(1, "P", false)};
    const FdrOutcome outcome = ControlFdr(records, {0, 3}, Plan(0.1));
    EXPECT_THAT(outcome.verdicts,
                ElementsAre(Verdict::Stays, Verdict::Decoy, Verdict::AboveThreshold));
    EXPECT_EQ(outcome.worstScore, 1e-9);
}

TEST(FirstOtherDirection, IsTheFirstRecordUnlikeTheFirstOfTheRange)
{
    const std::vector<PeptideIdentification> records = {Match(1, "P", true), Match(1, "P", false),
                                                        Match(1, "P", false), Match(1, "P", true)};
    EXPECT_EQ(FirstOtherDirection(records, {0, 4}), 1U);
    EXPECT_EQ(FirstOtherDirection(records, {1, 4}), 3U);
    EXPECT_EQ(FirstOtherDirection(records, {1, 3}), std::nullopt);
    EXPECT_EQ(FirstOtherDirection(records, {0, 0}), std::nullopt);
}

} // namespace
} // namespace pelgrin
