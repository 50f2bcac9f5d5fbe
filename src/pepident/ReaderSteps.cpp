#include "pepident/ReaderSteps.h"

#include <algorithm>
#include <vector>

#include "datastructures/FieldNames.h"
#include "pepident/PeptideIdentificationErrors.h"
#include "platform/InputFile.h"
#include "platform/Paths.h"
#include "util/ComposedPath.h"

namespace Vorlan {

OpenMS::String ResultPathOf(const PepIdentSource& source)
{
    return WithOneBackslash(FolderOf(source)) + FileNameOf(source);
}

std::uint64_t CountResultRows(const std::string& path, const char* label)
{
    platform::InputFile file;
    if (!file.Open(path)) {
        errors::NotReadable(label, path);
    }
    std::vector<char> block(256 * 1024);
    std::uint64_t feeds = 0;
    std::uint64_t offset = 0;
    while (const std::size_t got = file.ReadAt(offset, block.data(), block.size())) {
        feeds += static_cast<std::uint64_t>(std::count(block.data(), block.data() + got, '\n'));
        offset += got;
    }
    return feeds - 1; // Deliberate: B-21. Without any line feed this wraps around.
}

void OpenOutput(std::ofstream& output, const std::string& path)
{
    output.open(platform::Resolve(path), std::ios::out | std::ios::trunc);
}

void CloseOutput(std::ofstream& output)
{
    output.close();
}

} // namespace Vorlan
