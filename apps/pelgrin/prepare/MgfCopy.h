// A copy of an MGF file in which every record has its own names and values.
#ifndef PELGRIN_MGFCOPY_H
#define PELGRIN_MGFCOPY_H

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "prepare/Copy.h"

namespace pelgrin {

/// What became of the titles of a file.
struct TitleChanges {
    std::vector<std::pair<std::string, std::string>> rewritten; ///< old and new title, in order
    /// Names that are not the same record's any more -> its name in the copy; empty:
    /// nobody can tell whose it is.
    std::unordered_map<std::string, std::string> renamed;
};

/// Copies the plain text file at source to target. stem is the name of the dataset
/// without its ending. Counts in copy; held are the records. Throws Failure.
TitleChanges CopyMgf(const std::string& source, const std::string& target, const std::string& stem,
                     Copy& copy);

} // namespace pelgrin

#endif // PELGRIN_MGFCOPY_H
