#include "moddb/ModificationMasses.h"

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

std::pair<const ModificationMasses::Entry*, const ModificationMasses::Entry*>
ModificationMasses::Window(double mass, double maxError) const
{
    const Entry* begin = sorted_.data();
    const Entry* end = begin + sorted_.size();
    if (std::isfinite(mass)) {
        begin = std::partition_point(begin, end, [mass, maxError](const Entry& entry) {
            return entry.mass - mass < -maxError;
        });
        end = std::partition_point(begin, end, [mass, maxError](const Entry& entry) {
            return entry.mass - mass <= maxError;
        });
    }
    return {begin, end};
}

} // namespace Vorlan
