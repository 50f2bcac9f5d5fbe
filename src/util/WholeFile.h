// A whole file in memory.
#ifndef VORLAN_UTIL_WHOLEFILE_H
#define VORLAN_UTIL_WHOLEFILE_H

#include <cstddef>
#include <memory>
#include <string>

namespace Vorlan {

/// The characters of a file, read in text mode: one carriage return before a
/// line feed and a UTF-8 byte order mark at the start are dropped.
struct WholeFile {
    std::unique_ptr<char[]> text; ///< with room for one more character behind size
    std::size_t size = 0;

    /// False when the file cannot be opened or is no ordinary file: a device may
    /// have no end. A read error counts as the end.
    bool Read(const std::string& path);
};

} // namespace Vorlan

#endif // VORLAN_UTIL_WHOLEFILE_H
