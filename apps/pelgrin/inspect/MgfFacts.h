// What stands in an MGF file, and the names under which its records can be found.
#ifndef PELGRIN_MGFFACTS_H
#define PELGRIN_MGFFACTS_H

#include <array>
#include <cstdint>
#include <string>

#include "files/MgfNames.h"
#include "inspect/Facts.h"
#include "inspect/MgfTitles.h"

namespace pelgrin {

struct MgfFacts {
    std::uint64_t records = 0;   ///< lines "BEGIN IONS"
    std::uint64_t peakLines = 0; ///< lines of records that begin with a digit
    std::array<std::uint64_t, kTitleForms> titles{};
    Tally fileKeys;   ///< keys in front of the first record: none of them is read
    Tally recordKeys; ///< keys within records
    /// Records that the library indexes under a name of each kind.
    std::array<std::uint64_t, kNameKinds> names{};
    std::uint64_t differentNames = 0;
    std::uint64_t sharedNames = 0; ///< of these, names of more than one record
    std::uint64_t cutScanNames = 0;
};

/// One pass; 16 bytes of memory for each name. Throws Failure when the file cannot
/// be read.
MgfFacts MgfFactsOf(const std::string& path);

void Tell(const MgfFacts& mgf, Facts& facts);

} // namespace pelgrin

#endif // PELGRIN_MGFFACTS_H
