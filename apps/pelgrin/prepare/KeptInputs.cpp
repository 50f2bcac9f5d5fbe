#include "prepare/KeptInputs.h"

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/DtaAudit.h"
#include "files/SpectraSource.h"

namespace pelgrin {

namespace fs = std::filesystem;

void KeptInputs::Add(const std::string& input)
{
    AddPath(input);
    if (IsFolder(input)) {
        for (const std::string& name : DtaFileNames(input)) {
            AddPath((fs::path(input) / name).string());
        }
    }
}

void KeptInputs::Check(const fs::path& output, const char* what) const
{
    std::error_code error;
    const auto input = inputs_.find(fs::canonical(output, error).string());
    if (!error && input != inputs_.end()) {
        throw Failure(fmt::format("{}: is an input, and {} would take its place; choose another "
                                  "folder",
                                  input->second, what));
    }
}

void KeptInputs::AddPath(const std::string& path)
{
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    if (!error) {
        inputs_.emplace(real.string(), path);
    }
}

} // namespace pelgrin
