#include "platform/Paths.h"

#include <algorithm>

#include <sys/stat.h>

namespace Vorlan::platform {

namespace {

bool Exists(const std::string& path)
{
    struct stat entry = {};
    return ::stat(path.c_str(), &entry) == 0;
}

} // namespace

bool IsPathText(const std::string& path)
{
    return !path.empty() && path.find('\0') == std::string::npos;
}

std::string Resolve(const std::string& path)
{
    const std::size_t last = path.rfind('\\');
    if (last == std::string::npos || Exists(path)) {
        return path;
    }
    std::string all = path;
    std::replace(all.begin(), all.end(), '\\', '/');
    if (Exists(all)) {
        return all;
    }
    std::string onlyLast = path;
    onlyLast[last] = '/';
    return Exists(onlyLast) ? onlyLast : all;
}

} // namespace Vorlan::platform
