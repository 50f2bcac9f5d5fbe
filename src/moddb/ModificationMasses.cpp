#include "moddb/ModificationMasses.h"

#include <algorithm>
#include <cmath>

namespace Vorlan {

ModificationMasses::ModificationMasses(const std::vector<double>& masses)
{
    sorted_.reserve(masses.size());
    for (std::size_t number = 0; number < masses.size(); ++number) {
        if (!std::isnan(masses[number])) {
            sorted_.push_back({masses[number], number});
        }
    }
    std::stable_sort(sorted_.begin(), sorted_.end(),
                     [](const Entry& a, const Entry& b) { return a.mass < b.mass; });
}

std::vector<std::size_t> ModificationMasses::Within(double mass, double maxError) const
{
    auto begin = sorted_.begin();
    auto end = sorted_.end();
    if (std::isfinite(mass)) {
        begin = std::partition_point(begin, end, [mass, maxError](const Entry& entry) {
            return entry.mass - mass < -maxError;
        });
        end = std::partition_point(begin, end, [mass, maxError](const Entry& entry) {
            return entry.mass - mass <= maxError;
        });
    }
    std::vector<std::size_t> numbers;
    numbers.reserve(static_cast<std::size_t>(end - begin));
    for (auto entry = begin; entry != end; ++entry) {
        // False for what is not a number, and for infinity less infinity.
        if (std::abs(entry->mass - mass) <= maxError) {
            numbers.push_back(entry->number);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

} // namespace Vorlan
