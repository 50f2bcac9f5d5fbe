#include "platform/OutputFile.h"

#include "platform/Paths.h"

namespace Vorlan::platform {

void OpenOutput(std::ofstream& output, const std::string& path)
{
    if (IsPathText(path)) {
        output.open(Resolve(path), std::ios::out | std::ios::trunc);
    } else {
        output.setstate(std::ios::failbit);
    }
}

} // namespace Vorlan::platform
