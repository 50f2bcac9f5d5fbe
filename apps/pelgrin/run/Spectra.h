// Step 2 of a run: the spectra files, opened as one pool.
#ifndef PELGRIN_SPECTRA_H
#define PELGRIN_SPECTRA_H

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "SpectraIO.h"
#include "files/MgfAudit.h"
#include "files/ScratchFolder.h"
#include "run/Counts.h"

namespace pelgrin {

/// One spectra file. Its dataset name is its file name.
struct SpectraFile {
    std::string path;
    std::string dataset;
    MgfAudit audit;
    /// Names that the library answers with something else than their spectrum.
    std::unordered_map<std::string, Reason> unusable;
    /// Scan numbers that end a title -> that title. The library knows such a
    /// spectrum by a number without its last digit (B-13) ...
    std::unordered_map<std::string, std::string> scanTitles;
    /// ... one of these, which belong to other spectra or to none.
    std::unordered_set<std::string> cutScans;
};

class SpectraPool {
public:
    /// Opens all files. Throws Failure for a file that cannot be read.
    SpectraPool(const std::vector<std::string>& paths, ScratchFolder& scratch);

    const std::vector<SpectraFile>& Files() const { return files_; }
    std::uint64_t Names() const { return pool_.tGetSpecNumber(); }

    /// The datasets, in the order of the files.
    std::vector<std::string> DatasetNames() const;

    bool Has(const SpectraFile& file, const std::string& spectrumName) const;

    /// The name under which the file has the spectrum of a record: its spectrum
    /// name, or, for a bare scan number, the title that ends in it, else the
    /// title that programs make of it:
    /// "run.10181.10181.2" or "run.10181.10181", the number perhaps padded to
    /// five digits, behind the file's name without its ending. Empty when there
    /// is none.
    std::string NameOf(const SpectraFile& file, const Vorlan::PeptideIdentification& record) const;

    /// The spectrum, good until the next call. Only for names that Has knows.
    Vorlan::Spectrum& Load(const SpectraFile& file, const std::string& spectrumName);

private:
    std::vector<SpectraFile> files_;
    Vorlan::DatasetIOPool pool_;
    std::vector<Vorlan::Spectrum> loaded_; ///< at most one
};

std::string FileNameOf(const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_SPECTRA_H
