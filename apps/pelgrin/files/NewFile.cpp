#include "files/NewFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include <unistd.h>

#include <fmt/format.h>

#include "common/Failure.h"

namespace pelgrin {

namespace fs = std::filesystem;

void CheckTarget(const std::string& target)
{
    if (target.find('\\') != std::string::npos) {
        throw Failure(fmt::format("{}: a path with a backslash cannot be written", target));
    }
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        throw Failure(fmt::format("{}: cannot be written: it is not an ordinary file", target));
    }
}

NewFile::NewFile(const std::string& target)
    : target_(target), path_(fmt::format("{}.part{}", target, ::getpid()))
{
    std::FILE* const file = std::fopen(path_.c_str(), "wbx");
    if (file == nullptr) {
        throw Failure(fmt::format("{}: cannot be written: {}", target_, std::strerror(errno)));
    }
    std::fclose(file);
}

NewFile::~NewFile()
{
    std::remove(path_.c_str());
}

void NewFile::MoveToTarget()
{
    if (std::rename(path_.c_str(), target_.c_str()) != 0) {
        throw Failure(fmt::format("{}: cannot be written: {}", target_, std::strerror(errno)));
    }
}

} // namespace pelgrin
