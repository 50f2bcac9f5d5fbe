// Which sums of modification masses give a mass: pure, without files.
//
// A combination is a multiset: the same modification may count several times.
// The combination of size 0 is no modification at all, with the mass 0.
#ifndef PELGRIN_COMBINATIONS_H
#define PELGRIN_COMBINATIONS_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pelgrin {

struct CombinationQuestion {
    double mass = 0.0;        ///< to be explained, Da
    double tolerance = 0.0;   ///< either side, end included, Da
    std::size_t maxSize = 4;  ///< no larger combination is looked for
    std::size_t maxKept = 50; ///< the best so many are given, the others only counted
    /// Bound on the steps of all sizes together; a size that may need more is
    /// not begun.
    std::uint64_t maxSteps = 2'000'000'000;
    std::uint64_t maxFound = 20'000'000; ///< the search ends when it has found so many
};

struct Combination {
    std::vector<std::size_t> parts; ///< places in the masses, ascending
    double error = 0.0;             ///< mass - sum of the parts in their order, Da

    bool operator==(const Combination& other) const
    {
        return parts == other.parts && error == other.error;
    }
};

/// By |error|, then fewer parts, then the order of the parts. Errors count in
/// steps of 1e-9 Da: what is less is rounding.
bool IsBetter(const Combination& a, const Combination& b);

struct CombinationAnswer {
    std::vector<Combination> best; ///< best first
    std::uint64_t found = 0;       ///< all that explain the mass, kept or not
    bool isExplained = false;
    std::size_t size = 0;        ///< the smallest size that explains the mass, when it is explained
    std::size_t searched = 0;    ///< the largest size that was searched
    bool maxSizeReached = false; ///< a larger size was wanted, but maxSize forbids it
    bool maxStepsReached = false; ///< likewise, maxSteps or maxFound ended it
    std::vector<bool> isUsed;     ///< for each mass: it takes part in a combination found
};

/// Every combination of the smallest size that explains the mass, and of one
/// size more. Masses that are not finite numbers take no part.
CombinationAnswer FindCombinations(const std::vector<double>& masses,
                                   const CombinationQuestion& question);

} // namespace pelgrin

#endif // PELGRIN_COMBINATIONS_H
