// "run.01405.01405.2": the form in which many programs name a spectrum.
#ifndef PELGRIN_DOTTEDNAME_H
#define PELGRIN_DOTTEDNAME_H

#include <optional>
#include <string>
#include <string_view>

namespace pelgrin {

struct DottedName {
    std::string front; ///< "run"; never empty
    // Numbers without zeros in front.
    std::string firstScan;
    std::string lastScan;
    std::string charge; ///< empty when the name has none

    /// The same text for names that differ in such zeros only.
    std::string Key() const;
};

/// Two scan numbers, or these and a charge, at the end of a name. Nothing for
/// other names.
std::optional<DottedName> ParseDottedName(std::string_view name);

/// Digits only, and at least one.
bool IsScanNumber(std::string_view name);

/// A scan number without the zeros in front of it.
std::string WithoutZeros(std::string_view number);

} // namespace pelgrin

#endif // PELGRIN_DOTTEDNAME_H
