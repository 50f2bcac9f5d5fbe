// Finding modifications by mass.
#ifndef VORLAN_MODDB_MODIFICATIONMASSES_H
#define VORLAN_MODDB_MODIFICATIONMASSES_H

#include <cstddef>
#include <vector>

namespace Vorlan {

/// The masses of a list of records, sorted.
///
/// A difference of doubles grows with the minuend, rounding included. So the
/// masses m for which |m - mass| <= maxError holds as computed are neighbours in
/// the sorted list, and two binary searches with that very comparison find
/// exactly those that a walk over all of them would.
class ModificationMasses {
public:
    explicit ModificationMasses(const std::vector<double>& masses);

    /// The numbers (from 0, ascending) of the masses with
    /// |m - mass| <= maxError.
    std::vector<std::size_t> Within(double mass, double maxError) const;

private:
    struct Entry {
        double mass;
        std::size_t number;
    };
    std::vector<Entry> sorted_; ///< without those that are not a number
};

} // namespace Vorlan

#endif // VORLAN_MODDB_MODIFICATIONMASSES_H
