#include "mods/IsotopeShift.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace pelgrin {

namespace {

constexpr double kNear = 0.025;
constexpr int kMostSteps = 4;

} // namespace

std::optional<IsotopeHint> IsotopeHintOf(double mass, double tolerance)
{
    const double steps = std::round(mass / kIsotopeShift);
    if (!(std::abs(steps) >= 1.0 && std::abs(steps) <= kMostSteps)) {
        return std::nullopt;
    }
    const double error = mass - steps * kIsotopeShift;
    // Beyond a tenth of a step "near" would say nothing.
    if (!(std::abs(error) <= std::clamp(tolerance, kNear, 0.1))) {
        return std::nullopt;
    }
    return IsotopeHint{static_cast<int>(steps), error};
}

std::string NoteOf(const IsotopeHint& hint, const std::string& bestName, double bestError)
{
    std::string text =
        fmt::format("Note: near {} x 13C isotope ({:.6f} Da), which is {:+.3f} mDa off",
                    hint.number, hint.number * kIsotopeShift, 1000.0 * hint.error);
    if (bestName.empty()) {
        return text + "; no modification explains the mass.\n";
    }
    const char* const verdict = std::abs(hint.error) < std::abs(bestError)
                                    ? "the isotope fits better"
                                    : "the modification fits better";
    return text
           + fmt::format("; {} is {:+.3f} mDa off: {}.\n", bestName, 1000.0 * bestError, verdict);
}

} // namespace pelgrin
