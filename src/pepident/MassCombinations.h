// Which modifications add up to a mass.
//
// All ordered combinations of one to five masses are meant, a mass as often as
// one likes, each summed from its first mass on. They are not stored but walked
// in their order, and what cannot come near the wanted mass is left out: sums
// of one more mass are looked up among the sorted masses, sums of two more among
// the sorted sums of pairs, and sums of more are bounded by the smallest and the
// largest mass. The bounds are wider than the errors of rounding, so exactly the
// sums that the plain walk would compare are compared.
//
// Held by tests/pepident/MassCombinations_test.cpp, which compares with a plain
// twin that stores every combination.
#ifndef VORLAN_PEPIDENT_MASSCOMBINATIONS_H
#define VORLAN_PEPIDENT_MASSCOMBINATIONS_H

#include <cstddef>
#include <vector>

namespace Vorlan {

class MassCombinations {
public:
    static constexpr std::size_t kMost = 5;
    static constexpr double kTolerance = 0.05; ///< Da

    explicit MassCombinations(const std::vector<double>& masses);

    /// The places (in masses) of the fewest masses whose sum differs from delta
    /// by less than kTolerance; of those the sum with the smallest difference,
    /// of equal ones the first in order. Empty when there is none.
    std::vector<std::size_t> Find(double delta);

private:
    struct Mass {
        double value;
        std::size_t place; ///< in the masses given
    };

    bool FindOf(std::size_t count);
    void Walk(double sum, std::size_t depth, std::size_t count);
    void TakeLast(double sum, std::size_t depth);
    bool MayReach(double sum, std::size_t rest);
    bool PairMayReach(double sum);

    std::vector<Mass> masses_;      ///< finite, each value once, in the order given
    std::vector<Mass> sorted_;      ///< by value
    std::vector<double> pairSums_;  ///< sorted; made when first needed
    double largestMagnitude_ = 0.0; ///< of a mass

    double delta_ = 0.0;
    double slack_ = 0.0;           ///< more than rounding can err
    double best_ = kTolerance;     ///< smallest difference yet
    std::size_t path_[kMost] = {}; ///< places of the combination at hand
    std::vector<std::size_t> found_;
};

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_MASSCOMBINATIONS_H
