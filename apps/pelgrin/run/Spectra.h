// Step 2 of a run: the spectra files, opened as one pool.
#ifndef PELGRIN_SPECTRA_H
#define PELGRIN_SPECTRA_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "SpectraIO.h"
#include "files/MgfAudit.h"
#include "run/Counts.h"

namespace pelgrin {

/// One spectra file. Its dataset name is its file name.
struct SpectraFile {
    std::string path;
    std::string dataset;
    MgfAudit audit;
    /// Names that the library answers with something else than their spectrum.
    std::unordered_map<std::string, Reason> unusable;
};

class SpectraPool {
public:
    /// Opens all files. scratchPath is a file that may be written and is left
    /// empty. Throws Failure for a file that cannot be read.
    SpectraPool(const std::vector<std::string>& paths, const std::string& scratchPath);

    const std::vector<SpectraFile>& Files() const { return files_; }
    std::uint64_t Names() const { return pool_.tGetSpecNumber(); }

    struct Dataset {
        const SpectraFile* file = nullptr;
        bool isExact = true; ///< else the name lacks the file's ".mgf"
    };

    /// The file that a dataset name of a record means: the one of exactly that
    /// name, else the first one whose name without ".mgf" it is.
    std::optional<Dataset> Find(const std::string& datasetName) const;

    bool Has(const SpectraFile& file, const std::string& spectrumName) const;

    /// The spectrum, good until the next call. Only for names that Has knows.
    Vorlan::Spectrum& Load(const SpectraFile& file, const std::string& spectrumName);

private:
    std::vector<SpectraFile> files_;
    std::map<std::string, Dataset> datasets_; ///< both kinds of names
    Vorlan::DatasetIOPool pool_;
    std::vector<Vorlan::Spectrum> loaded_; ///< at most one
};

/// The file name of a path, and the same without ".mgf" in any case.
std::string FileNameOf(const std::string& path);
std::optional<std::string> WithoutMgfEnding(const std::string& fileName);

} // namespace pelgrin

#endif // PELGRIN_SPECTRA_H
