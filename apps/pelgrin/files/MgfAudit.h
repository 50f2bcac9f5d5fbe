// The host's own look at an MGF file: what the library's index will not show.
//
// The library reads a spectrum from the line after "BEGIN IONS" to the end of
// the first peaks that follow. A spectrum without peaks is therefore given the
// peaks of the next one, a spectrum without title the title of the next one,
// behind a line that is too long nothing is indexed, and a scan number that ends
// a title loses a digit. None of these may be annotated as if it were right.
#ifndef PELGRIN_MGFAUDIT_H
#define PELGRIN_MGFAUDIT_H

#include <cstdint>
#include <string>
#include <vector>

#include "files/MgfIndex.h"

namespace pelgrin {

struct MgfAudit {
    std::uint64_t spectra = 0;  ///< lines that begin a spectrum
    bool hidesFirst = false;    ///< a byte order mark hides the first one, which is not counted
    std::uint64_t longLine = 0; ///< number of the first line too long; 0 none
    std::uint64_t spectraBehindLongLine = 0;     ///< of those spectra
    std::uint64_t firstWithoutPeaks = 0;         ///< line of its beginning; 0 none
    std::uint64_t firstWithoutTitle = 0;         ///< line of its beginning; 0 none
    std::vector<std::string> titlesWithoutPeaks; ///< whole title lines
    std::vector<std::string> foreignTitles; ///< title lines that the spectra before stand under
    /// Trimmed title lines whose "scan=" and number end them (the library cuts the
    /// number, B-13) or stand before "_" and one more word, as FileConverter writes.
    std::vector<std::string> titlesWithScan;
};

/// Fills index, too, when there is one: both are made in one walk over the file.
/// Throws Failure when the file cannot be read.
MgfAudit AuditMgf(const std::string& path, MgfIndex* index = nullptr);

} // namespace pelgrin

#endif // PELGRIN_MGFAUDIT_H
