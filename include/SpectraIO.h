// Readers of MS/MS spectra, and the pool that serves several datasets as one.
//
// Contents
//   1. SpectraIO       the interface of every reader, in slot order
//   2. MulSpecIO       readers and writers of files that hold many spectra
//   3. MgfIO           Mascot generic format (docs/formats/mgf.md)
//   4. DtaIO           a folder of DTA files (docs/formats/dta.md)
//   5. MzXMLIO, MzMLIO opened, never parsed
//   6. SpecIOFactory   makes the reader for a DatasetType
//   7. DatasetIOPool   several datasets, by (dataset name, spectrum name)
//
// Calling order. Loading: InitLoad once; then any mix of bLoadNextSpectrum,
// bLoadOneSpectrum and tLoadAllSpectra; ResetIter to start over; EndLoad.
// Saving: InitSave, then bSaveOneSpec or tSaveSpectra any number of times,
// then EndSave. Both sides of one object may be used on different files.
//
// Every loading member appends to the caller's vector and never clears it.
// One reader belongs to one thread at a time.
//
// Problems are told on standard output, in the words given below; the only
// exception is that of DatasetIOPool::bLoadOneSpectrum.
#ifndef VORLAN_SPECTRAIO_H
#define VORLAN_SPECTRAIO_H

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "DataStructures.h"
#include "VorlanExport.h"

namespace Vorlan {

class LineReader;
class SpectrumIndex;

// ===== 1. SpectraIO ========================================================

/// The interface of every spectrum reader.
class VORLAN_API SpectraIO {
public:
    SpectraIO();
    SpectraIO(const SpectraIO&) = delete;
    SpectraIO& operator=(const SpectraIO&) = delete;

    /// Closes what is open.
    virtual ~SpectraIO() = 0;

    /// Opens the dataset at path and builds its index. See each reader for
    /// what it prints when path cannot be opened; it is empty then.
    virtual void InitLoad(const std::string& path) = 0;

    /// Appends the next spectrum of the iteration; false when none is left.
    virtual bool bLoadNextSpectrum(std::vector<Spectrum>& vSpectra) = 0;

    /// Appends all spectra that the iteration has left (DtaIO: all there are)
    /// and gives how many.
    virtual std::uint64_t tLoadAllSpectra(std::vector<Spectrum>& vSpectra) = 0;

    /// Closes the input. Names and iteration stay, but for DtaIO.
    virtual void EndLoad() = 0;

    /// Appends the spectrum of that name to vSpectra. An unknown name prints an empty
    /// line and one that tells it, and gives false. Fields that the record does not set keep the
    /// values of the spectrum loaded before (B-10).
    virtual bool bLoadOneSpectrum(const std::string& name, std::vector<Spectrum>& vSpectra) = 0;

    /// Restarts the iteration at the first spectrum.
    virtual void ResetIter() = 0;

    /// Number of entries in the index: names, not spectra.
    virtual std::uint64_t tGetInputSpecNumber() = 0;

protected:
    /// Clears the peaks of the current spectrum, makes room for 256 (a body
    /// that all readers share) and sets the extension. Every concrete constructor
    /// runs its own.
    virtual void InitMember() = 0;
    /// Opens the input; prints and gives false when that fails, as it does
    /// while another one is open.
    virtual bool bOpenInputFile(const std::string& path) = 0;
    /// Closes the input. Has a body that all readers share.
    virtual void CloseInputFile() = 0;
    /// Parses one spectrum from the current position into the current one.
    virtual bool bGetOneSpec() = 0;

    Spectrum cSpectrum_;                 ///< the current spectrum, reused
    Peak cPeak_;                         ///< scratch, filled per peak line
    std::string strExtension_;           ///< ".mgf" and the like; nothing asks for it
    std::unique_ptr<LineReader> pInput_; ///< bounded lines of the input; never null
};

// ===== 2. MulSpecIO ========================================================

/// A file that holds many spectra, indexed by name in one pass.
///
/// The index maps names, in byte-wise order, to positions in the file. One
/// spectrum may stand under several names; the iteration then gives it once
/// under each of them: it calls bLoadOneSpectrum for one name after the other.
class VORLAN_API MulSpecIO : public SpectraIO {
public:
    MulSpecIO();
    ~MulSpecIO() override;

    /// Opens path (closing what was open), indexes it and goes to the first
    /// name. A path that cannot be opened (a folder among them) prints an
    /// empty line and "MulSpecIO error: failed to open spectra file " + path
    /// on standard output and leaves the index empty.
    void InitLoad(const std::string& path) override;
    bool bLoadNextSpectrum(std::vector<Spectrum>& vSpectra) override;
    std::uint64_t tLoadAllSpectra(std::vector<Spectrum>& vSpectra) override;
    /// Closes the file; names stay known, and loading one then gives true and
    /// a spectrum without peaks (B-86).
    void EndLoad() override;
    /// Appends the spectrum to vSpectra. An unknown name prints an empty line and
    /// "Unable to load spectrum " + name on standard output and gives false. The
    /// spectrum's title is the name asked for, not the text in the file.
    bool bLoadOneSpectrum(const std::string& name, std::vector<Spectrum>& vSpectra) override;
    void ResetIter() override;
    std::uint64_t tGetInputSpecNumber() override;

    /// Opens path for writing, emptying it (closing what was open). A failure
    /// prints as InitLoad does; what is saved then is lost.
    void InitSave(const std::string& path);
    /// Closes the output.
    void EndSave();
    /// Writes one spectrum. True, even when the output has failed (B-15).
    bool bSaveOneSpec(Spectrum& spectrum);
    /// Writes vSpectra[first] to vSpectra[last], both included, stopping at
    /// the vector's end; gives how many. 0 when first > last.
    std::uint64_t tSaveSpectra(std::vector<Spectrum>& vSpectra, std::uint64_t first,
                               std::uint64_t last);

protected:
    bool bOpenInputFile(const std::string& path) override;
    void CloseInputFile() override;
    /// Opens path for writing. A failure, as while another output is open,
    /// prints as InitSave does and gives false; what is saved then is lost.
    bool bOpenOutputFile(const std::string& path);
    /// Closes it.
    void CloseOutputFile();

    /// Builds the index from the open input.
    virtual void SetMap() = 0;
    /// Writes one spectrum to the output.
    virtual bool bPutOneSpec(Spectrum& spectrum) = 0;

    std::ofstream ofsOutput_;               ///< what InitSave opened
    std::unique_ptr<SpectrumIndex> pIndex_; ///< never null
    std::size_t tIter_ = 0;                 ///< next index entry of the iteration

private:
    friend class DatasetIOPool;
    bool bHasName_(const std::string& name) const;
};

// ===== 3. MgfIO ============================================================

/// Reads and writes MGF. What counts as a record, the up to four names of a
/// spectrum and the sharp edges are told in docs/formats/mgf.md.
///
/// Saving writes "BEGIN IONS", "TITLE=", "PEPMASS=", "CHARGE=" (with "+"),
/// "RTINSECONDS=", the peaks in their order and "END IONS". Numbers have six
/// significant digits; the scan number is not written (B-14).
class VORLAN_API MgfIO : public MulSpecIO {
public:
    MgfIO();
    ~MgfIO() override;

protected:
    void InitMember() override;
    bool bGetOneSpec() override;
    void SetMap() override;
    bool bPutOneSpec(Spectrum& spectrum) override;
};

// ===== 4. DtaIO ============================================================

/// Reads a folder of DTA files: one spectrum a file, named by the file's name,
/// ".dta" included. What a file may hold is told in docs/formats/dta.md.
///
/// A file is opened when its spectrum is loaded and closed again; one that
/// cannot be opened prints an empty line and "DtaIO error: failed to open dta
/// file " + path on standard output.
///
/// Of a spectrum it sets strSource (the folder with one backslash behind it),
/// strTitle, nCharge, vPeaks and dPrecursorMz (Th), which is (MH - p) / z + p
/// with MH (Da) and z from the first line and p the mass of the proton (Da),
/// OpenMS::Constants::PROTON_MASS_U: infinite or not a number when z is 0 (B-70).
/// Scan number and retention time stay 0.
class VORLAN_API DtaIO : public SpectraIO {
public:
    DtaIO();
    ~DtaIO() override;

    /// Lists the files of folder whose names end in ".dta", in any letter case,
    /// without its subfolders, in byte-wise order of names. The folder may be
    /// written with any number of backslashes at its end. One that cannot be
    /// read prints nothing and has no spectra (B-71).
    void InitLoad(const std::string& folder) override;
    /// Appends the next spectrum whose file can be opened.
    bool bLoadNextSpectrum(std::vector<Spectrum>& vSpectra) override;
    /// Appends the spectra of all files, from the first, wherever the iteration
    /// stands (B-72); it ends at its end. Gives how many could be opened.
    std::uint64_t tLoadAllSpectra(std::vector<Spectrum>& vSpectra) override;
    /// Forgets folder and files.
    void EndLoad() override;
    /// Opens folder + name, listed or not, and appends to vSpectra. The title is what
    /// stands behind the last backslash of name. Before InitLoad and after EndLoad there
    /// is no folder: a file below the working folder is opened (B-91).
    bool bLoadOneSpectrum(const std::string& name, std::vector<Spectrum>& vSpectra) override;
    void ResetIter() override;
    /// Number of files listed.
    std::uint64_t tGetInputSpecNumber() override;

protected:
    void InitMember() override;
    bool bOpenInputFile(const std::string& path) override;
    void CloseInputFile() override;
    bool bGetOneSpec() override;
    /// Lists the folder's files anew.
    void SetFilenameList();

    std::string strFolder_;               ///< ends in one backslash after InitLoad
    std::vector<std::string> vFilenames_; ///< in byte-wise order
    std::uint64_t tIter_ = 0;             ///< next file of the iteration

private:
    friend class DatasetIOPool;
    bool bHasName_(const std::string& name) const;
};

// ===== 5. MzXMLIO and MzMLIO ===============================================

/// Opens an mzXML file as MulSpecIO does and parses nothing: the dataset has no
/// spectra (B-73). Saving writes nothing either, but InitSave empties the file
/// all the same, and bSaveOneSpec gives false.
class VORLAN_API MzXMLIO : public MulSpecIO {
public:
    MzXMLIO();
    ~MzXMLIO() override;

protected:
    void InitMember() override;
    bool bGetOneSpec() override;
    void SetMap() override;
    bool bPutOneSpec(Spectrum& spectrum) override;
};

/// The same for an mzML file.
class VORLAN_API MzMLIO : public MulSpecIO {
public:
    MzMLIO();
    ~MzMLIO() override;

protected:
    void InitMember() override;
    bool bGetOneSpec() override;
    void SetMap() override;
    bool bPutOneSpec(Spectrum& spectrum) override;
};

// ===== 6. SpecIOFactory ====================================================

/// Makes readers of spectra, and takes them back.
class VORLAN_API SpecIOFactory {
public:
    SpecIOFactory() = delete;

    /// A new reader that the caller owns and gives back to DesctroySpectraIO:
    /// DtaIO, MgfIO, MzXMLIO or MzMLIO; null for any other type.
    static SpectraIO* pGetSpectraIO(DatasetType::EDatasetType type);

    /// Deletes the reader, if there is one, and sets the pointer to null.
    static void DesctroySpectraIO(SpectraIO*& pReader); // sic
};

// ===== 7. DatasetIOPool ====================================================

/// Several datasets as one. Copies share the readers of the original: their
/// current records, iterations and files.
class VORLAN_API DatasetIOPool {
public:
    /// A pool without datasets.
    DatasetIOPool();
    /// Copies share the readers.
    DatasetIOPool(const DatasetIOPool&);
    DatasetIOPool& operator=(const DatasetIOPool&);

    ~DatasetIOPool();

    /// Opens every dataset: its path is strFirst, ending in exactly one
    /// backslash, followed by strSecond (see docs/architecture.md on paths).
    /// A dataset that cannot be opened is empty, one of an unknown type is
    /// passed over by every member.
    ///
    /// Prints on standard output, flushed at each step: "    Setting spectra
    /// index for each dataset: ", then per dataset "i/n" and as many
    /// backspaces, then "...Done." and a line end, then the part of the last
    /// "i/n" beyond 8 characters as blanks.
    void InitLoad(const std::vector<DatasetSource>& vSources);

    /// Appends the next spectrum of the current dataset, or of the next one
    /// that has any left; false at the end.
    bool bLoadNextSpectrum(std::vector<Spectrum>& vSpectra);

    /// Appends to vSpectra the spectrum spectrumName of the dataset datasetName (its
    /// DatasetSource::strSecond, exactly; the last of several equal ones, B-85).
    /// False when the reader does not know the name (it prints so), and after
    /// EndLoad.
    /// \throws OpenMS::Exception::FileNotFound with datasetName as the file,
    ///         line 626, label "DatasetIOPool::bLoadOneSpectrum", for an
    ///         unknown dataset name.
    bool bLoadOneSpectrum(const std::string& datasetName, const std::string& spectrumName,
                          std::vector<Spectrum>& vSpectra);

    /// Whether bLoadOneSpectrum would find spectrumName in datasetName. False for anything
    /// unknown; prints nothing and throws nothing.
    bool bHasSpectrum(const std::string& datasetName, const std::string& spectrumName) const;

    /// Appends all spectra that the iteration has left. Gives the size of
    /// vSpectra afterwards, not the number appended (B-09).
    std::uint64_t tLoadAllSpectra(std::vector<Spectrum>& vSpectra);

    /// Number of datasets given to InitLoad.
    std::uint64_t tGetDatasetNumber() const;

    /// Sum of the readers' tGetInputSpecNumber: names, not spectra.
    std::uint64_t tGetSpecNumber() const;

    /// Restarts the iteration at the first spectrum of the first dataset.
    void ResetIter();

    /// Closes every reader and lets go of it. Sources and names stay;
    /// InitLoad may be called again.
    void EndLoad();

protected:
    /// Enters the names of the datasets, the last of equal ones.
    void SetDatasetSourceIndex();
    /// Makes a reader for each dataset, and prints what InitLoad says.
    void InitSpecIO();

private:
    std::vector<DatasetSource> vSources_;
    std::map<std::string, std::uint64_t> mapDatasets_; ///< dataset name -> place in vSources_
    std::uint64_t tCurrent_ = 0;
    std::vector<std::shared_ptr<SpectraIO>> vReaders_; ///< in source order; null: no reader
};

} // namespace Vorlan

#endif // VORLAN_SPECTRAIO_H
