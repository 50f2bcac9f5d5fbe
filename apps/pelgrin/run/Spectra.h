// Step 2 of a run: MGF files and folders of DTA files, opened as one pool.
#ifndef PELGRIN_SPECTRA_H
#define PELGRIN_SPECTRA_H

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "SpectraIO.h"
#include "files/DtaAudit.h"
#include "files/MgfAudit.h"
#include "files/MgfIndex.h"
#include "isolation/SpectrumServer.h"
#include "run/Counts.h"
#include "run/DtaNames.h"
#include "run/SpectrumName.h"

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
    MgfIndex index;
    /// Scan numbers behind "scan=" -> the title that holds them, empty when
    /// several do. The library knows a spectrum whose title ends so by a number
    /// without its last digit (B-13), which belongs to another one or to none.
    std::unordered_map<std::string, std::string> scanTitles;

    // Of a folder.
    DtaAudit dta;
    DtaNames dtaNames;
};

class SpectraPool {
public:
    /// Opens all files and folders. Throws Failure for one that cannot be read.
    explicit SpectraPool(const std::vector<std::string>& paths);

    const std::vector<SpectraFile>& Files() const { return files_; }
    /// The names under which the library knows spectra, of all files.
    std::uint64_t Names() const;

    /// The datasets, in the order of the files.
    std::vector<std::string> DatasetNames() const;

    /// The name under which the file has the spectrum of a record; nothing when
    /// it has none, and an ambiguous one when several have it. A folder: see
    /// DtaNames. An MGF file: the record's spectrum name; else, for a bare scan
    /// number, the title that programs make of it: "run.10181.10181.2" or
    /// "run.10181.10181", the number perhaps padded to five digits, behind the
    /// file's name without its ending. The title that holds the scan, as its last
    /// word "scan=10181" or as FileConverter writes it, comes first for a bare
    /// number. For "run.10181.10181.2" it comes behind that name, and before
    /// "run.10181.10181.", a title without charge.
    ///
    /// The first of these that the file has decides, but for a number that several
    /// spectra have: the title with run, number and charge may tell which one.
    std::optional<SpectrumName> NameOf(const SpectraFile& file,
                                       const Vorlan::PeptideIdentification& record) const;

    /// The spectrum, good until the next call; null when the library's reader ended
    /// twice when it was asked. Only for names that NameOf gave, and that are not
    /// ambiguous.
    Vorlan::Spectrum* Load(const SpectraFile& file, const std::string& spectrumName);
    /// "run.mgf: the reader ended by signal 9 (Killed)", for each time.
    std::vector<std::string> ReaderEnds() const;

private:
    std::vector<SpectraFile> files_;
    std::vector<SpectrumServer> servers_; ///< of the files
    Vorlan::Spectrum loaded_;
};

/// The m/z of the precursor, Th, of a spectrum by its name; nothing when it is not
/// known, or another spectrum's.
std::optional<double> PrecursorMzOf(const SpectraFile& file, const std::string& spectrumName);

std::string FileNameOf(const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_SPECTRA_H
