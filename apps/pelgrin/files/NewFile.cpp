#include "files/NewFile.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

#include <fmt/format.h>

#include "common/EndBySignal.h"
#include "common/Failure.h"
#include "common/Messages.h"

namespace pelgrin {

namespace fs = std::filesystem;

namespace {

/// Where the entry of target is made.
fs::path FolderOf(const std::string& target)
{
    const fs::path path(target);
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

} // namespace

void RefuseBackslash(const std::string& path)
{
    if (path.find('\\') != std::string::npos) {
        throw Failure(fmt::format("{}: a path with a backslash cannot be written", path));
    }
}

void CheckTarget(const std::string& target)
{
    RefuseBackslash(target);
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        throw Failure(fmt::format("{}: cannot be written: it is not an ordinary file", target));
    }
    if (::access(FolderOf(target).c_str(), W_OK | X_OK) != 0) {
        throw Failure(fmt::format("{}: cannot be written: {}", target, std::strerror(errno)));
    }
    if (!LogFile().empty() && fs::equivalent(target, LogFile(), error)) {
        throw Failure(fmt::format("{}: is the log file and would be overwritten; choose another "
                                  "file for --log-file",
                                  target));
    }
}

namespace {

/// Behind the name of the target, with the number of the process behind it: a name
/// that nobody else gives his files.
constexpr char kEnding[] = ".pelgrin.part";

/// Removes what programs that were killed have left beside target: files
/// "target.pelgrin.part1234" of processes that are no more.
void RemoveLeftovers(const std::string& target)
{
    const fs::path whole(target);
    const std::string front = whole.filename().string() + kEnding;
    std::error_code error;
    for (fs::directory_iterator entry(FolderOf(target), error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.rfind(front, 0) != 0 || name.size() == front.size()
            || name.find_first_not_of("0123456789", front.size()) != std::string::npos) {
            continue;
        }
        const long process = std::strtol(name.c_str() + front.size(), nullptr, 10);
        const auto number = static_cast<pid_t>(process);
        if (process == ::getpid()
            || (number == process && ::kill(number, 0) != 0 && errno == ESRCH)) {
            std::error_code ignored;
            fs::remove(entry->path(), ignored);
        }
    }
}

/// What a power failure may not undo once the file has its name.
bool IsOnDisk(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool isWell = file >= 0 && (::fsync(file) == 0 || errno == EINVAL || errno == EROFS);
    const int reason = errno;
    if (file >= 0) {
        ::close(file);
    }
    errno = reason;
    return isWell;
}

} // namespace

NewFile::NewFile(const std::string& target)
    : target_(target), path_(fmt::format("{}{}{}", target, kEnding, ::getpid()))
{
    RemoveLeftovers(target);
    const SignalsWait wait; // a file that is there is known
    std::FILE* const file = std::fopen(path_.c_str(), "wbx");
    if (file == nullptr) {
        throw Failure(fmt::format("{}: cannot be written: {}", target_, std::strerror(errno)));
    }
    std::fclose(file);
    RemoveOnSignal(path_);
}

NewFile::~NewFile()
{
    std::remove(path_.c_str());
    KeepOnSignal(path_);
}

void NewFile::MoveToTarget()
{
    if (!IsOnDisk(path_) || std::rename(path_.c_str(), target_.c_str()) != 0) {
        throw Failure(fmt::format("{}: cannot be written: {}", target_, std::strerror(errno)));
    }
}

} // namespace pelgrin
