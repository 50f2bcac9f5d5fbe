// Finding modifications by mass.
#ifndef VORLAN_MODDB_MODIFICATIONMASSES_H
#define VORLAN_MODDB_MODIFICATIONMASSES_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>
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

    /// Calls take(number) for the masses with |m - mass| <= maxError; numbers
    /// count from 0 and ascend.
    template <typename Take>
    void ForEachWithin(double mass, double maxError, Take take) const
    {
        const auto [begin, end] = Window(mass, maxError);
        const auto count = static_cast<std::size_t>(end - begin);
        // Most questions find few: no allocation, and nothing that is filled twice.
        std::array<std::size_t, 64> few; // NOLINT(cppcoreguidelines-pro-type-member-init)
        std::vector<std::size_t> many(count > few.size() ? count : 0);
        std::size_t* const numbers = many.empty() ? few.data() : many.data();
        std::size_t* last = numbers;
        for (const Entry* entry = begin; entry != end; ++entry) {
            // False for what is not a number, and for infinity less infinity.
            if (std::abs(entry->mass - mass) <= maxError) {
                *last++ = entry->number;
            }
        }
        std::sort(numbers, last);
        std::for_each(numbers, last, take);
    }

private:
    struct Entry {
        double mass;
        std::size_t number;
    };

    /// Holds all entries that can be meant, in neighbouring places.
    std::pair<const Entry*, const Entry*> Window(double mass, double maxError) const;

    std::vector<Entry> sorted_; ///< without those that are not a number
};

} // namespace Vorlan

#endif // VORLAN_MODDB_MODIFICATIONMASSES_H
