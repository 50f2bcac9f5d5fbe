// The input files of a run, and whether they are still what was read.
#ifndef PELGRIN_RUNINPUTS_H
#define PELGRIN_RUNINPUTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "files/FileState.h"
#include "run/Parameters.h"

namespace pelgrin {

/// A file, or a folder of DTA files.
struct RunInput {
    std::string path;
    /// "prepared input" (the copies have the others), "spectra", "matches", "second file of matches", "parameters", "proteins" or
    /// "modifications".
    std::string role;
    std::uint64_t size = 0;             ///< bytes; of a folder those of its DTA files
    std::optional<std::uint64_t> files; ///< of a folder: how many
    /// Of a folder: of the lines that sha256sum writes for its DTA files, in byte-wise
    /// order of their names. Empty when the file is gone.
    std::string sha256;
    bool hasChanged = false; ///< since the run began
};

/// Size and time of the last change, when a run begins.
class InputStamps {
public:
    /// Of all inputs that parameters name, each path once.
    explicit InputStamps(const Parameters& parameters);

    /// Reads every input once more; shows how far it is. One that has changed, or
    /// cannot be read any more, is told by a warning.
    std::vector<RunInput> Inputs() const;

private:
    struct Stamp {
        RunInput input;
        FileState state;
    };

    void Add(const std::string& path, const char* role);

    std::vector<Stamp> stamps_;
};

} // namespace pelgrin

#endif // PELGRIN_RUNINPUTS_H
