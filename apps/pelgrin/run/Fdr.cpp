#include "run/Fdr.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include <OpenMS/CONCEPT/Exception.h>

namespace pelgrin {

using Vorlan::PeptideIdentification;
using Vorlan::TdFdrType;

namespace {

double RateOf(std::uint64_t decoys, std::uint64_t targets, TdFdrType::ETdFdrType formula)
{
    if (targets == 0) {
        return std::numeric_limits<double>::infinity();
    }
    const std::uint64_t wrong = formula == TdFdrType::DecoyPlusOneByTarget ? decoys + 1 : decoys;
    return static_cast<double>(wrong) / static_cast<double>(targets);
}

/// What can be said of a record without its q-value; Stays when all depends on
/// that.
Verdict FirstVerdict(const PeptideIdentification& record, const std::string& decoyTag)
{
    if (!record.bDecoy && record.vEvidences.empty()) {
        return Verdict::WithoutProteins; // isTarget would throw
    }
    if (std::isnan(record.dMainScore)) {
        return Verdict::ScoreNotANumber;
    }
    return record.isTarget(decoyTag) ? Verdict::Stays : Verdict::Decoy;
}

bool HasQValue(Verdict verdict)
{
    return verdict == Verdict::Stays || verdict == Verdict::Decoy;
}

} // namespace

std::vector<double> QValuesOf(const std::vector<ScoredMatch>& matches, bool highIsBetter,
                              TdFdrType::ETdFdrType formula)
{
    std::vector<std::size_t> order(matches.size()); // best first
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return highIsBetter ? matches[a].score > matches[b].score
                            : matches[a].score < matches[b].score;
    });
    std::vector<double> values(matches.size());
    std::uint64_t targets = 0;
    std::uint64_t decoys = 0;
    for (std::size_t begin = 0, end = 0; begin < order.size(); begin = end) {
        // Equal scores stand or fall together.
        for (; end < order.size() && matches[order[end]].score == matches[order[begin]].score;
             ++end) {
            ++(matches[order[end]].isTarget ? targets : decoys);
        }
        for (std::size_t i = begin; i < end; ++i) {
            values[order[i]] = RateOf(decoys, targets, formula);
        }
    }
    double lowest = std::numeric_limits<double>::infinity();
    for (auto place = order.rbegin(); place != order.rend(); ++place) {
        lowest = std::min(lowest, values[*place]);
        values[*place] = lowest;
    }
    return values;
}

std::uint64_t FdrOutcome::CountOf(Verdict verdict) const
{
    return counts[static_cast<std::size_t>(verdict)];
}

std::uint64_t FdrOutcome::Targets() const
{
    return CountOf(Verdict::Stays) + CountOf(Verdict::AboveThreshold);
}

FdrOutcome ControlFdr(const std::vector<PeptideIdentification>& records, RecordRange range,
                      const FdrPlan& plan)
{
    FdrOutcome outcome;
    std::vector<ScoredMatch> matches;
    for (std::size_t i = range.begin; i < range.end; ++i) {
        const Verdict verdict = FirstVerdict(records[i], plan.decoyTag);
        outcome.verdicts.push_back(verdict);
        outcome.highIsBetter = records[i].bHighScoreBetter;
        if (HasQValue(verdict)) {
            matches.push_back({records[i].dMainScore, verdict == Verdict::Stays});
        }
    }
    const std::vector<double> values = QValuesOf(matches, outcome.highIsBetter, plan.formula);
    auto value = values.begin();
    for (std::size_t i = 0; i < outcome.verdicts.size(); ++i) {
        Verdict& verdict = outcome.verdicts[i];
        const double q = HasQValue(verdict) ? *value++ : 0.0;
        if (verdict == Verdict::Stays && !(q <= plan.threshold)) {
            verdict = Verdict::AboveThreshold;
        }
        if (verdict == Verdict::Stays) {
            const double score = records[range.begin + i].dMainScore;
            const double worst = outcome.worstScore.value_or(score);
            outcome.worstScore =
                outcome.highIsBetter ? std::min(worst, score) : std::max(worst, score);
        }
        ++outcome.counts[static_cast<std::size_t>(verdict)];
    }
    return outcome;
}

std::optional<std::size_t> FirstOtherDirection(const std::vector<PeptideIdentification>& records,
                                               RecordRange range)
{
    for (std::size_t i = range.begin; i < range.end; ++i) {
        if (records[i].bHighScoreBetter != records[range.begin].bHighScoreBetter) {
            return i;
        }
    }
    return std::nullopt;
}

} // namespace pelgrin
