// Which DTA file of a folder a record means by its spectrum name.
//
// The files are known by their names; the disk is never asked. So a name with a
// separator in it finds nothing.
#ifndef PELGRIN_DTANAMES_H
#define PELGRIN_DTANAMES_H

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "run/SpectrumName.h"

namespace pelgrin {

class DtaNames {
public:
    DtaNames() = default;
    explicit DtaNames(const std::vector<std::string>& fileNames);

    /// The file of a spectrum name and a charge: one of this name; else one of
    /// this name but for ".dta", in any letter case, at the end of either; else
    /// one whose scan numbers and charge have other zeros in front of them; for
    /// a bare number the file of this scan and charge, or of this scan when it
    /// has no charge in its name. Nothing when there is none; when several are, it
    /// is ambiguous, and its name the one that was looked for.
    std::optional<SpectrumName> Find(const std::string& name, std::uint64_t charge) const;

private:
    /// Keys of one file -> its name; of several -> empty.
    using Unique = std::unordered_map<std::string, std::string>;

    std::unordered_set<std::string> names_;
    Unique stems_;
    Unique dotted_;
    Unique scans_; ///< "1405.2", or "1405" without a charge
};

} // namespace pelgrin

#endif // PELGRIN_DTANAMES_H
