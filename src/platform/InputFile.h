// A file that is read in blocks at given offsets.
#ifndef VORLAN_PLATFORM_INPUTFILE_H
#define VORLAN_PLATFORM_INPUTFILE_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace Vorlan::platform {

class InputFile {
public:
    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// Opens the file that path resolves to. False for what cannot be opened
    /// or cannot be read at an offset: folders, pipes, sockets; and for devices
    /// without an end, such as /dev/zero. Closes first.
    bool Open(const std::string& path);
    void Close();
    bool IsOpen() const { return descriptor_ >= 0; }

    /// An ordinary file.
    bool IsRegular() const;

    /// The size in bytes as the system tells it; 0 when it does not know, and
    /// when no file is open.
    std::uint64_t Size() const;

    /// Reads up to size bytes at offset into buffer and gives how many there
    /// were: fewer than size only at the end of the file or after an error. A
    /// read error counts as the end.
    std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size);

private:
    int descriptor_ = -1;
};

} // namespace Vorlan::platform

#endif // VORLAN_PLATFORM_INPUTFILE_H
