// Steps that the identification readers share.
#ifndef VORLAN_PEPIDENT_READERSTEPS_H
#define VORLAN_PEPIDENT_READERSTEPS_H

#include <cstdint>
#include <fstream>
#include <string>

#include "DataStructures.h"

namespace Vorlan {

/// Folder without its trailing backslashes, one backslash, file name.
OpenMS::String ResultPathOf(const PepIdentSource& source);

/// The line feeds of a file less one, modulo 2^64. Throws NotReadable with
/// label and path when the file cannot be opened.
std::uint64_t CountResultRows(const std::string& path, const char* label);

/// Opens output on path, emptying the file; the stream fails when it cannot,
/// or when it is open already.
void OpenOutput(std::ofstream& output, const std::string& path);

/// Closes output; it fails when that fails.
void CloseOutput(std::ofstream& output);

} // namespace Vorlan

#endif // VORLAN_PEPIDENT_READERSTEPS_H
