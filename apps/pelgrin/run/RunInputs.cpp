#include "run/RunInputs.h"

#include <algorithm>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Progress.h"
#include "common/Terminal.h"
#include "files/DtaAudit.h"
#include "files/Sha256.h"
#include "files/SpectraSource.h"
#include "run/Identifications.h"

namespace pelgrin {

namespace fs = std::filesystem;

namespace {

std::string PathIn(const std::string& folder, const std::string& name)
{
    return (fs::path(folder) / name).string();
}

std::string Sha256Of(const std::string& path, const OnBytes& onBytes)
{
    if (!IsFolder(path)) {
        return Sha256OfFile(path, onBytes);
    }
    Sha256 sum;
    for (const std::string& name : DtaFileNames(path)) {
        sum.Add(fmt::format("{}  {}\n", Sha256OfFile(PathIn(path, name), onBytes), name));
    }
    return sum.Hex();
}

} // namespace

InputStamps::InputStamps(const Parameters& parameters)
{
    for (const PreparedInput& input : parameters.prepared) {
        Add(input.path, "prepared input");
    }
    for (const std::string& path : parameters.spectra) {
        Add(path, "spectra");
    }
    for (const std::string& path : parameters.psms) {
        Add(path, "matches");
    }
    for (const std::string& path : parameters.psms) {
        Add(FilesOf(parameters.format, path, parameters.second).second, "second file of matches");
    }
    Add(parameters.parameterFile, "parameters");
    if (parameters.proteins) {
        Add(parameters.proteins->database, "proteins");
    }
    for (const std::string& path : parameters.fileInputs) {
        Add(path, "modifications"); // the others have a role already
    }
}

void InputStamps::Add(const std::string& path, const char* role)
{
    const auto isKnown = [&path](const Stamp& stamp) { return stamp.input.path == path; };
    if (path.empty() || std::any_of(stamps_.begin(), stamps_.end(), isKnown)) {
        return;
    }
    Stamp stamp;
    stamp.state = StateOf(path);
    stamp.input.path = path;
    stamp.input.role = role;
    stamp.input.size = stamp.state.size;
    stamp.input.files = stamp.state.files;
    stamps_.push_back(std::move(stamp));
}

std::vector<RunInput> InputStamps::Inputs() const
{
    std::uint64_t total = 0;
    for (const Stamp& stamp : stamps_) {
        total += stamp.input.size;
    }
    Progress progress("SHA-256 of the inputs", total);
    std::vector<RunInput> inputs;
    for (const Stamp& stamp : stamps_) {
        RunInput input = stamp.input;
        try {
            input.sha256 = Sha256Of(input.path, [&progress](std::uint64_t bytes) {
                progress.MoveTo(progress.Done() + bytes);
            });
            const FileState state = StateOf(input.path);
            input.hasChanged = state != stamp.state;
            input.size = state.size;
            input.files = state.files;
        } catch (const Failure&) {
            input.hasChanged = true;
        }
        if (input.hasChanged) {
            spdlog::warn("{}: has changed while the run was going on; expected inputs to stay as "
                         "they are",
                         OneLine(input.path));
        }
        inputs.push_back(std::move(input));
    }
    return inputs;
}

} // namespace pelgrin
