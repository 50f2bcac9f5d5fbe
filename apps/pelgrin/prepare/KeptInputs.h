// Inputs of a preparation, which no output may replace.
#ifndef PELGRIN_PREPARE_KEPTINPUTS_H
#define PELGRIN_PREPARE_KEPTINPUTS_H

#include <filesystem>
#include <map>
#include <string>

namespace pelgrin {

class KeptInputs {
public:
    /// Adds a file, or a folder of DTA files with its files, whatever links lead to
    /// them. One that is not there is none.
    void Add(const std::string& input);

    /// Throws Failure when an input lies at output; what would take its place.
    void Check(const std::filesystem::path& output, const char* what) const;

private:
    void AddPath(const std::string& path);

    std::map<std::string, std::string> inputs_; ///< real path -> as it was given
};

} // namespace pelgrin

#endif // PELGRIN_PREPARE_KEPTINPUTS_H
