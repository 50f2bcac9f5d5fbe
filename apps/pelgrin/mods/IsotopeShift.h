// A mass shift may be no modification at all but a wrong isotope peak.
#ifndef PELGRIN_ISOTOPESHIFT_H
#define PELGRIN_ISOTOPESHIFT_H

#include <optional>
#include <string>

namespace pelgrin {

/// 13C - 12C, Da.
constexpr double kIsotopeShift = 1.0033548378;

/// So many heavy carbons, and how far mass is from them.
struct IsotopeHint {
    int number = 0;     ///< 1 to 4, or negative
    double error = 0.0; ///< mass - number * kIsotopeShift, Da
};

/// The number of isotope steps that mass is near to: within tolerance and at
/// least 0.025 Da, since a deamidation is 0.0193 Da from one step.
std::optional<IsotopeHint> IsotopeHintOf(double mass, double tolerance);

/// One line that compares the isotope with the best explanation; bestName is
/// empty when there is none.
std::string NoteOf(const IsotopeHint& hint, const std::string& bestName, double bestError);

} // namespace pelgrin

#endif // PELGRIN_ISOTOPESHIFT_H
