// Step 2 of a run: MGF files and folders of DTA files, opened as one pool.
#ifndef PELGRIN_SPECTRA_H
#define PELGRIN_SPECTRA_H

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "SpectraIO.h"
#include "files/DtaAudit.h"
#include "files/MgfAudit.h"
#include "files/ScratchFolder.h"
#include "isolation/SpectrumServer.h"
#include "run/Counts.h"
#include "run/DtaNames.h"

namespace pelgrin {

/// One MGF file, or one folder of DTA files. Its dataset name is its own name.
struct SpectraFile {
    std::string path;
    std::string dataset;
    Vorlan::DatasetType::EDatasetType format = Vorlan::DatasetType::Mgf; ///< or Dta
    std::uint64_t spectra = 0; ///< that begin in the file; files of the folder
    /// Names that the library answers with something else than their spectrum.
    std::unordered_map<std::string, Reason> unusable;

    // Of an MGF file.
    MgfAudit mgf;
    /// Scan numbers behind "scan=" -> the title that holds them, empty when
    /// several do. The library knows a spectrum whose title ends so by a number
    /// without its last digit (B-13) ...
    std::unordered_map<std::string, std::string> scanTitles;
    /// ... one of these, which belong to other spectra or to none.
    std::unordered_set<std::string> cutScans;

    // Of a folder.
    DtaAudit dta;
    DtaNames dtaNames;
};

class SpectraPool {
public:
    /// Opens all files and folders. Throws Failure for one that cannot be read.
    SpectraPool(const std::vector<std::string>& paths, ScratchFolder& scratch);

    const std::vector<SpectraFile>& Files() const { return files_; }
    std::uint64_t Names() const { return pool_.tGetSpecNumber(); }

    /// The datasets, in the order of the files.
    std::vector<std::string> DatasetNames() const;

    /// The name under which the file has the spectrum of a record; nothing when
    /// it has none. A folder: see DtaNames. An MGF file: the record's spectrum
    /// name; else, for a bare scan number, the title that programs make of it:
    /// "run.10181.10181.2" or "run.10181.10181", the number perhaps padded to
    /// five digits, behind the file's name without its ending. The title that
    /// holds the scan, as its last word "scan=10181" or as FileConverter writes
    /// it, comes first for a bare number. For "run.10181.10181.2" it comes behind
    /// that name, and before "run.10181.10181.", a title without charge.
    std::optional<SpectrumName> NameOf(const SpectraFile& file,
                                       const Vorlan::PeptideIdentification& record) const;

    /// The spectrum, good until the next call; null when the library's reader ended
    /// twice when it was asked. Only for names that NameOf gave.
    Vorlan::Spectrum* Load(const SpectraFile& file, const std::string& spectrumName);
    /// "run.mgf: the reader ended by signal 9 (Killed)", for each time.
    std::vector<std::string> ReaderEnds() const;

private:
    bool Has(const SpectraFile& file, const std::string& spectrumName) const;
    std::optional<std::string> TitleOfScan(const SpectraFile& file, const std::string& scan) const;
    std::optional<SpectrumName> NameInMgf(const SpectraFile& file,
                                          const Vorlan::PeptideIdentification& record) const;

    std::vector<SpectraFile> files_;
    Vorlan::DatasetIOPool pool_;
    std::vector<SpectrumServer> servers_; ///< of the files
    Vorlan::Spectrum loaded_;
};

std::string FileNameOf(const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_SPECTRA_H
