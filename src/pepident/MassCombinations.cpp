#include "pepident/MassCombinations.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace Vorlan {

namespace {

/// Above this number of masses the sums of pairs are not worth their room.
constexpr std::size_t kMostWithPairs = 500;

} // namespace

MassCombinations::MassCombinations(const std::vector<double>& masses)
{
    // A mass that is no finite number takes part in no sum near another mass,
    // and the first of equal masses always comes before the others.
    std::set<double> known;
    for (std::size_t i = 0; i < masses.size(); ++i) {
        if (std::isfinite(masses[i]) && known.insert(masses[i]).second) {
            masses_.push_back({masses[i], i});
            largestMagnitude_ = std::max(largestMagnitude_, std::abs(masses[i]));
        }
    }
    sorted_ = masses_;
    std::sort(sorted_.begin(), sorted_.end(),
              [](const Mass& a, const Mass& b) { return a.value < b.value; });
}

std::vector<std::size_t> MassCombinations::Find(double delta)
{
    found_.clear();
    if (masses_.empty() || !std::isfinite(delta)) {
        return {};
    }
    delta_ = delta;
    slack_ = 64 * std::numeric_limits<double>::epsilon()
             * (std::abs(delta) + static_cast<double>(kMost) * largestMagnitude_);
    for (std::size_t count = 1; count <= kMost; ++count) {
        if (FindOf(count)) {
            break; // Deliberate: B-53. Fewest masses win over a closer sum.
        }
    }
    return found_;
}

bool MassCombinations::FindOf(std::size_t count)
{
    best_ = kTolerance;
    Walk(0.0, 0, count);
    return !found_.empty();
}

/// path_ holds depth places whose masses make sum.
void MassCombinations::Walk(double sum, std::size_t depth, std::size_t count)
{
    if (depth + 1 >= std::min(count, kMost)) { // count is never more; g++ cannot see it
        TakeLast(sum, depth);
        return;
    }
    for (const Mass& mass : masses_) {
        const double next = depth == 0 ? mass.value : sum + mass.value;
        if (MayReach(next, count - depth - 1)) {
            path_[depth] = mass.place;
            Walk(next, depth + 1, count);
        }
    }
}

/// Of the masses that complete the combination: the best, when it is better
/// than what was found before.
void MassCombinations::TakeLast(double sum, std::size_t depth)
{
    const double wanted = delta_ - sum;
    const double reach = best_ + slack_;
    auto mass = std::lower_bound(sorted_.begin(), sorted_.end(), wanted - reach,
                                 [](const Mass& m, double value) { return m.value < value; });
    std::size_t place = 0;
    double least = best_;
    bool isFound = false;
    for (; mass != sorted_.end() && !(mass->value > wanted + reach); ++mass) {
        const double total = depth == 0 ? mass->value : sum + mass->value;
        const double difference = std::abs(delta_ - total);
        if (difference < least || (isFound && difference == least && mass->place < place)) {
            least = difference;
            place = mass->place;
            isFound = true;
        }
    }
    if (isFound) {
        best_ = least;
        path_[depth] = place;
        found_.assign(path_, path_ + depth + 1);
    }
}

/// rest more masses may bring sum nearer to the wanted mass than the best yet.
bool MassCombinations::MayReach(double sum, std::size_t rest)
{
    const double wanted = delta_ - sum;
    const double reach = best_ + slack_;
    const auto times = static_cast<double>(rest);
    if (times * sorted_.front().value > wanted + reach
        || times * sorted_.back().value < wanted - reach) {
        return false;
    }
    return best_ > 0.0 && (rest != 2 || PairMayReach(sum));
}

bool MassCombinations::PairMayReach(double sum)
{
    if (masses_.size() > kMostWithPairs) {
        return true;
    }
    if (pairSums_.empty()) {
        pairSums_.reserve(masses_.size() * masses_.size());
        for (const Mass& first : sorted_) {
            for (const Mass& second : sorted_) {
                pairSums_.push_back(first.value + second.value);
            }
        }
        std::sort(pairSums_.begin(), pairSums_.end());
    }
    const double wanted = delta_ - sum;
    const double reach = best_ + slack_;
    const auto pair = std::lower_bound(pairSums_.begin(), pairSums_.end(), wanted - reach);
    return pair != pairSums_.end() && !(*pair > wanted + reach);
}

} // namespace Vorlan
