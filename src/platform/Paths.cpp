#include "platform/Paths.h"

#include <algorithm>

#include <sys/stat.h>

namespace Vorlan::platform {

bool IsPathText(const std::string& path)
{
    return !path.empty() && path.find('\0') == std::string::npos;
}

bool Exists(const std::string& path)
{
    struct stat entry = {};
    return ::stat(path.c_str(), &entry) == 0;
}

std::string FirstReading(const std::string& path,
                         const std::function<bool(const std::string&)>& isIt)
{
    const std::size_t last = path.rfind('\\');
    if (isIt(path) || last == std::string::npos) {
        return path;
    }
    std::string all = path;
    std::replace(all.begin(), all.end(), '\\', '/');
    if (isIt(all)) {
        return all;
    }
    std::string onlyLast = path;
    onlyLast[last] = '/';
    return isIt(onlyLast) ? onlyLast : all;
}

std::string Resolve(const std::string& path)
{
    // A lambda, since the type of a function would be exported with std::function.
    return FirstReading(path, [](const std::string& reading) { return Exists(reading); });
}

} // namespace Vorlan::platform
