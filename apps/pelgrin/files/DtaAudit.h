// The host's own look at a folder of DTA files: what the library reads in silence.
//
// The library lists the files when it opens the folder and reads each one when its
// spectrum is asked for. A file that cannot be opened, a first line without mass
// and charge (B-70), what stands behind an empty line (B-74) and numbers that
// cannot be read (B-17) make no difference to it.
#ifndef PELGRIN_DTAAUDIT_H
#define PELGRIN_DTAAUDIT_H

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace pelgrin {

struct DtaAudit {
    /// What a spectrum is read in spite of.
    struct Flaw {
        std::uint64_t count = 0;
        std::string firstFile;       ///< name of the first file that has it
        std::uint64_t firstLine = 0; ///< the line in that file, from 1
    };

    std::vector<std::string> names; ///< of all files, in byte-wise order
    // Names of files of no use, each under the first reason that holds.
    std::vector<std::string> notReadable;
    std::vector<std::string> withoutPrecursor;
    std::vector<std::string> withoutPeaks; ///< none, or none that can be read

    /// Name -> m/z of the precursor, Th, of files that are none of these.
    std::unordered_map<std::string, double> precursorMz;

    Flaw behindEmptyLine;   ///< files with lines behind an empty one
    Flaw longLine;          ///< files that end at a line too long
    Flaw unreadableNumbers; ///< lines that are no m/z and intensity
};

/// The names of the folder's DTA files, as the library lists them: entries that
/// end in ".dta", in any letter case, without subfolders, in byte-wise order.
/// Throws Failure when the folder cannot be read.
std::vector<std::string> DtaFileNames(const std::string& folder);

/// One pass over every file. Throws as DtaFileNames.
DtaAudit AuditDta(const std::string& folder);

} // namespace pelgrin

#endif // PELGRIN_DTAAUDIT_H
