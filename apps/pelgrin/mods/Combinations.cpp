// The masses are sorted once. All parts but the last two are walked through in
// ascending order; the last two are found by two pointers that move towards
// each other, so that size 3 of n masses takes about n*n steps and not n*n*n.
// The test "AgreesWithTheWalkThroughAllCombinations" holds it.
#include "mods/Combinations.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <queue>

namespace pelgrin {

bool IsBetter(const Combination& a, const Combination& b)
{
    const double left = std::round(1e9 * std::abs(a.error));
    const double right = std::round(1e9 * std::abs(b.error));
    if (left != right) {
        return left < right;
    }
    return a.parts.size() != b.parts.size() ? a.parts.size() < b.parts.size() : a.parts < b.parts;
}

namespace {

struct Entry {
    double mass;
    std::size_t place;
};

/// The best so many of those that were added; the worst of them on top.
class Best {
public:
    explicit Best(std::size_t maxKept) : maxKept_(maxKept) {}

    void Add(Combination combination)
    {
        if (heap_.size() < maxKept_) {
            heap_.push(std::move(combination));
        } else if (maxKept_ > 0 && IsBetter(combination, heap_.top())) {
            heap_.pop();
            heap_.push(std::move(combination));
        }
    }

    std::vector<Combination> Take()
    {
        std::vector<Combination> sorted;
        for (; !heap_.empty(); heap_.pop()) {
            sorted.push_back(heap_.top());
        }
        std::reverse(sorted.begin(), sorted.end());
        return sorted;
    }

private:
    struct Worse {
        bool operator()(const Combination& a, const Combination& b) const { return IsBetter(a, b); }
    };
    std::size_t maxKept_;
    std::priority_queue<Combination, std::vector<Combination>, Worse> heap_;
};

class Search {
public:
    Search(const std::vector<double>& masses, const CombinationQuestion& question)
        : masses_(masses), question_(question), best_(question.maxKept)
    {
        answer_.isUsed.assign(masses.size(), false);
        double largest = std::abs(question.mass);
        for (std::size_t place = 0; place < masses.size(); ++place) {
            if (std::isfinite(masses[place])) {
                sorted_.push_back({masses[place], place});
                largest = std::max(largest, std::abs(masses[place]));
            }
        }
        std::stable_sort(sorted_.begin(), sorted_.end(),
                         [](const Entry& a, const Entry& b) { return a.mass < b.mass; });
        // Sums in another order differ by rounding: look a little further and
        // let Take decide.
        reach_ = question.tolerance
                 + 64 * std::numeric_limits<double>::epsilon() * (largest + question.tolerance);
    }

    CombinationAnswer Run()
    {
        for (std::size_t size = 0;; ++size) {
            if (size > question_.maxSize) {
                answer_.maxSizeReached = true;
                break;
            }
            if (!MayTake(size)) {
                answer_.maxStepsReached = true;
                break;
            }
            chosen_.assign(size, 0);
            Choose(0, 0, question_.mass);
            answer_.searched = size;
            answer_.maxStepsReached = isFull_;
            if (!answer_.isExplained && answer_.found > 0) {
                answer_.isExplained = true;
                answer_.size = size;
            } else if (answer_.isExplained || sorted_.empty()) {
                break;
            }
            if (isFull_) {
                break;
            }
        }
        answer_.best = best_.Take();
        return std::move(answer_);
    }

private:
    /// The steps that a size needs, without those for what is found, stay
    /// within the bound.
    bool MayTake(std::size_t size)
    {
        const auto n = static_cast<double>(sorted_.size());
        double steps = n; // of the two pointers, for every choice of the others
        for (double other = 1.0; other + 2.0 <= static_cast<double>(size); ++other) {
            steps *= (n + other - 1.0) / other;
        }
        steps_ += steps;
        return steps_ <= static_cast<double>(question_.maxSteps);
    }

    /// Fills chosen_ from part on with entries from first on whose sum is rest.
    void Choose(std::size_t part, std::size_t first, double rest)
    {
        const std::size_t open = chosen_.size() - part;
        if (open == 0) {
            Take();
        } else if (open == 1) {
            ChooseLast(part, first, rest);
        } else if (open == 2) {
            ChooseLastTwo(part, first, rest);
        } else {
            for (std::size_t i = first; i < sorted_.size() && !isFull_; ++i) {
                chosen_[part] = i;
                Choose(part + 1, i, rest - sorted_[i].mass);
            }
        }
    }

    void ChooseLast(std::size_t part, std::size_t first, double rest)
    {
        for (std::size_t i = LowerPlace(first, rest - reach_);
             i < sorted_.size() && sorted_[i].mass <= rest + reach_; ++i) {
            chosen_[part] = i;
            Take();
        }
    }

    /// As the first of the two grows, the smallest fitting second one falls.
    void ChooseLastTwo(std::size_t part, std::size_t first, double rest)
    {
        std::size_t low = sorted_.size();
        for (std::size_t i = first; i < sorted_.size() && !isFull_; ++i) {
            const double wanted = rest - sorted_[i].mass;
            while (low > 0 && sorted_[low - 1].mass >= wanted - reach_) {
                --low;
            }
            chosen_[part] = i;
            for (std::size_t k = std::max(low, i);
                 k < sorted_.size() && sorted_[k].mass <= wanted + reach_ && !isFull_; ++k) {
                chosen_[part + 1] = k;
                Take();
            }
        }
    }

    std::size_t LowerPlace(std::size_t first, double mass) const
    {
        const auto begin = sorted_.begin();
        const auto place =
            std::partition_point(begin + static_cast<std::ptrdiff_t>(first), sorted_.end(),
                                 [mass](const Entry& entry) { return entry.mass < mass; });
        return static_cast<std::size_t>(place - begin);
    }

    /// Counts and keeps the chosen entries when they really explain the mass.
    void Take()
    {
        Combination combination;
        for (const std::size_t i : chosen_) {
            combination.parts.push_back(sorted_[i].place);
        }
        std::sort(combination.parts.begin(), combination.parts.end());
        double sum = 0.0;
        for (const std::size_t place : combination.parts) {
            sum += masses_[place];
        }
        combination.error = question_.mass - sum;
        if (!(std::abs(combination.error) <= question_.tolerance)) {
            return;
        }
        isFull_ = ++answer_.found >= question_.maxFound;
        for (const std::size_t place : combination.parts) {
            answer_.isUsed[place] = true;
        }
        best_.Add(std::move(combination));
    }

    const std::vector<double>& masses_;
    CombinationQuestion question_;
    std::vector<Entry> sorted_; ///< by mass
    double reach_ = 0.0;
    double steps_ = 0.0;
    bool isFull_ = false;             ///< enough were found
    std::vector<std::size_t> chosen_; ///< places in sorted_, ascending
    Best best_;
    CombinationAnswer answer_;
};

} // namespace

CombinationAnswer FindCombinations(const std::vector<double>& masses,
                                   const CombinationQuestion& question)
{
    return Search(masses, question).Run();
}

} // namespace pelgrin
