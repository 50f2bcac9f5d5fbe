// What the library would read of a file, and what not.
#ifndef PELGRIN_READING_H
#define PELGRIN_READING_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "files/FileKind.h"
#include "inspect/Facts.h"

namespace pelgrin {

struct Reading {
    std::string unit; ///< what is counted: "spectra", "records"; empty: nothing is read
    std::uint64_t units = 0;
    std::optional<std::uint64_t> residues; ///< of proteins
    std::vector<Counted> lost;             ///< what may be missing, by reason
    std::vector<Counted> passedOver;       ///< what is rightly not read
    std::string second;                    ///< the file that is read with this one; or empty
    std::string refusal;                   ///< why nothing is read; else empty
};

/// path is the unpacked file, given the one that the user named: files beside it
/// count. What cannot be read is a refusal.
Reading ReadingOf(FileKind kind, const std::string& path, const std::string& given);

void Tell(const Reading& reading, Facts& facts);

} // namespace pelgrin

#endif // PELGRIN_READING_H
