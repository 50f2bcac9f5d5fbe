// What tells whether an input is still what it was.
#ifndef PELGRIN_FILESTATE_H
#define PELGRIN_FILESTATE_H

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace pelgrin {

/// Of a file, or of a folder of DTA files.
struct FileState {
    std::uint64_t size = 0;                  ///< bytes; of a folder those of its DTA files
    std::optional<std::uint64_t> files;      ///< of a folder: how many
    std::filesystem::file_time_type changed; ///< last; of a folder one of these files

    bool operator==(const FileState& other) const
    {
        return size == other.size && files == other.files && changed == other.changed;
    }
    bool operator!=(const FileState& other) const { return !(*this == other); }
};

/// As it is now. What cannot be read counts as empty.
FileState StateOf(const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_FILESTATE_H
