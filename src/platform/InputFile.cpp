#include "platform/InputFile.h"

#include <cerrno>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Paths.h"

namespace Vorlan::platform {

static_assert(sizeof(off_t) == 8, "files beyond 2 GB need 64-bit offsets");

namespace {

/// Where a device that has an end has nothing.
constexpr off_t kBehindAnyEnd = std::numeric_limits<off_t>::max() - 1;

bool HasEnd(int descriptor)
{
    char byte = 0;
    return ::pread(descriptor, &byte, 1, kBehindAnyEnd) <= 0;
}

bool IsReadableAtOffsets(int descriptor)
{
    struct stat entry = {};
    return ::fstat(descriptor, &entry) == 0
           && (S_ISREG(entry.st_mode)
               || (!S_ISDIR(entry.st_mode) && ::lseek(descriptor, 0, SEEK_CUR) != -1
                   && HasEnd(descriptor)));
}

} // namespace

InputFile::~InputFile()
{
    Close();
}

bool InputFile::Open(const std::string& path)
{
    Close();
    if (!IsPathText(path)) {
        return false;
    }
    // What Resolve(path) names, without asking for it before: one call of the system
    // less for each reading, which counts in a folder of small files.
    InputFile opened; // closes itself where its path finds no memory
    FirstReading(path, [&opened](const std::string& reading) {
        // O_NONBLOCK: a pipe without a writer must not hold the caller up.
        opened.descriptor_ = ::open(reading.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        return opened.IsOpen() || (errno != ENOENT && Exists(reading));
    });
    if (opened.IsOpen() && IsReadableAtOffsets(opened.descriptor_)) {
        std::swap(descriptor_, opened.descriptor_);
    }
    return IsOpen();
}

void InputFile::Close()
{
    if (descriptor_ >= 0) {
        ::close(descriptor_);
        descriptor_ = -1;
    }
}

bool InputFile::IsRegular() const
{
    struct stat entry = {};
    return ::fstat(descriptor_, &entry) == 0 && S_ISREG(entry.st_mode);
}

std::uint64_t InputFile::Size() const
{
    struct stat entry = {};
    return ::fstat(descriptor_, &entry) == 0 ? static_cast<std::uint64_t>(entry.st_size) : 0;
}

std::size_t InputFile::ReadAt(std::uint64_t offset, char* buffer, std::size_t size)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t got =
            ::pread(descriptor_, buffer + done, size - done, static_cast<off_t>(offset + done));
        if (got > 0) {
            done += static_cast<std::size_t>(got);
        } else if (got == 0 || errno != EINTR) {
            break;
        }
    }
    return done;
}

} // namespace Vorlan::platform
