#include "platform/Folder.h"

#include <algorithm>
#include <cstddef>
#include <memory>

#include <dirent.h>
#include <sys/stat.h>

#include "platform/Paths.h"

namespace Vorlan::platform {

namespace {

/// ASCII only: letters of names do not follow the host's locale.
char ToLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EndsIn(std::string_view name, std::string_view ending)
{
    return name.size() >= ending.size()
           && std::equal(ending.rbegin(), ending.rend(), name.rbegin(),
                         [](char a, char b) { return ToLower(a) == ToLower(b); });
}

/// Whether an entry is a folder, or a link to one. A link that leads nowhere is
/// none: whoever opens it will be told.
bool IsFolder(int folder, const dirent& entry)
{
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) {
        return entry.d_type == DT_DIR;
    }
    struct stat status = {};
    return ::fstatat(folder, entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

} // namespace

void ListFiles(const std::string& folder, std::string_view ending, std::vector<std::string>& names)
{
    if (!IsPathText(folder)) {
        return;
    }
    const std::unique_ptr<DIR, CloseFolder> opened(::opendir(Resolve(folder).c_str()));
    if (!opened) {
        return;
    }
    const auto first = static_cast<std::ptrdiff_t>(names.size());
    while (const dirent* const entry = ::readdir(opened.get())) {
        if (EndsIn(entry->d_name, ending) && !IsFolder(::dirfd(opened.get()), *entry)) {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin() + first, names.end());
}

} // namespace Vorlan::platform
