// Which spectra file a record means by its dataset name.
//
// Engines write paths, other endings and shortened names where the library
// looks for the name of an MGF file, or of a folder of DTA files. The rules below are tried one after the
// other, each for all files; the first one that finds a file decides. One that
// finds two files decides nothing: the name is ambiguous.
#ifndef PELGRIN_DATASETRESOLVER_H
#define PELGRIN_DATASETRESOLVER_H

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pelgrin {

enum class NameRule : std::size_t {
    UserGiven,       ///< --dataset NAME=FILE
    Exact,           ///< the name of the file
    BehindSeparator, ///< the same behind the last "/" or "\" of the name
    WithoutEnding,   ///< the same without known endings of both
    CutAtDot,        ///< what is left has no dot, and the file's name begins so before its first
};
constexpr std::size_t kNameRules = 5;

/// The key in summary.json, such as "by_file_name".
const char* KeyOf(NameRule rule);
/// The words of a message, such as "without its ending".
const char* TextOf(NameRule rule);

/// "/data/run01.mgf.unknown" is "run01": the text behind the last separator,
/// without known endings in any case.
std::string WithoutKnownEndings(std::string_view name);

class DatasetResolver {
public:
    struct Hit {
        std::size_t file = 0; ///< place among the file names
        NameRule rule = NameRule::Exact;
    };
    /// What the user says: dataset name -> place among the file names.
    using Given = std::map<std::string, std::size_t>;

    DatasetResolver(std::vector<std::string> fileNames, Given given);

    /// Nothing when no file meets the name. Throws Failure for a name that is
    /// ambiguous, with the two files.
    std::optional<Hit> Find(const std::string& datasetName) const;

private:
    std::optional<std::size_t> FindBy(NameRule rule, const std::string& datasetName) const;

    std::vector<std::string> fileNames_;
    Given given_;
    /// For each rule: key of a file -> files of that key, in order.
    std::array<std::map<std::string, std::vector<std::size_t>>, kNameRules> files_;
};

/// Dataset name of records -> its file, or nothing.
using Datasets = std::map<std::string, std::optional<DatasetResolver::Hit>>;

} // namespace pelgrin

#endif // PELGRIN_DATASETRESOLVER_H
