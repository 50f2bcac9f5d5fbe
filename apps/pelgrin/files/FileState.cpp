#include "files/FileState.h"

#include <algorithm>
#include <vector>

#include "files/DtaAudit.h"
#include "files/SpectraSource.h"

namespace pelgrin {

namespace fs = std::filesystem;

FileState StateOf(const std::string& path)
{
    std::error_code ignored;
    FileState state;
    if (!IsFolder(path)) {
        state.changed = fs::last_write_time(path, ignored);
        const auto size = fs::file_size(path, ignored);
        state.size = ignored ? 0 : size;
        return state;
    }
    // Of its files alone: copies may go into a folder within.
    state.changed = fs::file_time_type::min();
    const std::vector<std::string> names = DtaFileNames(path);
    state.files = names.size();
    for (const std::string& name : names) {
        const fs::path file = fs::path(path) / name;
        const auto size = fs::file_size(file, ignored);
        state.size += ignored ? 0 : size;
        state.changed = std::max(state.changed, fs::last_write_time(file, ignored));
    }
    return state;
}

} // namespace pelgrin
