#include "files/ScratchFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <fmt/format.h>

#include "common/EndBySignal.h"
#include "common/Failure.h"

namespace pelgrin {

ScratchFolder::~ScratchFolder()
{
    if (!path_.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
        KeepOnSignal(path_);
    }
}

std::string ScratchFolder::PathOf(const std::string& name)
{
    if (path_.empty()) {
        std::error_code error;
        const std::filesystem::path temporary = std::filesystem::temp_directory_path(error);
        std::string path = ((error ? "/tmp" : temporary) / "pelgrin-XXXXXX").string();
        const SignalsWait wait; // a folder that is there is known
        if (::mkdtemp(path.data()) == nullptr) {
            throw Failure(fmt::format("{}: no folder for temporary files can be made: {}", path,
                                      std::strerror(errno)));
        }
        path_ = path;
        RemoveOnSignal(path_);
    }
    return path_ + "/" + name;
}

std::string ScratchFolder::Write(const std::string& name, const std::string& text)
{
    std::string path = PathOf(name);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file) {
        throw Failure(fmt::format("{}: cannot be written", path));
    }
    return path;
}

} // namespace pelgrin
