// The parameters of a run: four groups, read from one parameter file.
//
//     const CTulkParam* parameters = CTulkParam::readFromFile("run.ini");
//     parameters->getSearchParam()->dFragmentTol;
//
// Contents
//   1. CSearchParam       search, modifications, spectra, results
//   2. CFdrControlParam   false discovery rate
//   3. CLocalizeParam     localisation of modifications
//   4. CAnnotateParam     annotation of proteins
//   5. CTulkParam         the one instance that reads and holds them
//
// docs/formats/parameters.md lists every key with its values; the header
// InitFile.h tells how the file is written.
#ifndef VORLAN_TULKPARAM_H
#define VORLAN_TULKPARAM_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <OpenMS/DATASTRUCTURES/String.h>

#include "DataStructures.h"
#include "InitFile.h"
#include "VorlanExport.h"

namespace Vorlan {

// The groups are plain values.

// ===== 1. CSearchParam =====================================================

/// Search, modifications, spectra and results: section [Search].
class VORLAN_API CSearchParam {
public:
    SearchEngineType::ESearchEngineType eSearchEngine =
        SearchEngineType::Unknown;      ///< never Unknown once read
    bool bOpenSearch = false;           ///< the matches come from an open search
    double dPrecursorMatchingTol = 0.0; ///< window of an open search, Da
    TolType::ETolType ePrecursorMatchingTolType =
        TolType::Unknown; ///< Da for an open search (B-48)
    FragMethodType::EFragType eFragMethod = FragMethodType::Unknown; ///< CidHcd or Etd once read
    double dPrecursorTol = 0.0;                             ///< in the unit of ePrecursorTolType
    TolType::ETolType ePrecursorTolType = TolType::Unknown; ///< Da or Ppm once read
    double dFragmentTol = 0.0;                              ///< in the unit of eFragmentTolType
    TolType::ETolType eFragmentTolType = TolType::Unknown;  ///< Da or Ppm once read
    std::string strModificationDatabase;                    ///< empty: the default table
    std::vector<IdentModification> vFixedMods;              ///< in the order of the file
    /// In the order of the file; one that MSFragger's reader needs beside them comes
    /// last (B-50).
    std::vector<IdentModification> vVarMods;
    DatasetType::EDatasetType eDatasetFormat = DatasetType::Unknown; ///< that of every dataset
    std::int32_t nDatasetNumber = 0;      ///< as the file says; once read, that of vDatasets
    std::vector<DatasetSource> vDatasets; ///< in the order of the file
    PepIdentType::EPepIdentType ePepIdentFormat = PepIdentType::Unknown; ///< that of every result
    std::int32_t nPepIdentNumber = 0;             ///< as the file says; once read, that of the next
    std::vector<PepIdentSource> vPepIdentSources; ///< in the order of the file

    /// vFixedMods followed by vVarMods.
    std::vector<IdentModification> getSpecifiedMod() const;
};

// ===== 2. CFdrControlParam =================================================

/// Control of the false discovery rate: section [Fdr].
class VORLAN_API CFdrControlParam {
public:
    bool bFdrControl = false;   ///< the rest is read only when it is on
    std::string strDecoyTag;    ///< how the accession of a decoy begins
    double dFdrThreshold = 0.0; ///< 0 to 1
    FdrEstimateType::EFdrEstimateType eFdrMethod =
        FdrEstimateType::Unknown;                          ///< over several results
    TdFdrType::ETdFdrType eTdFdrType = TdFdrType::Unknown; ///< the formula
};

// ===== 3. CLocalizeParam ===================================================

/// Localisation of modifications: section [Localization].
class VORLAN_API CLocalizeParam {
public:
    bool bLocalize = false;                     ///< the rest is read only when it is on
    std::uint64_t nMinModNumber = 0;            ///< at least 5 once read (B-49)
    bool bUsePrior = false;                     ///< carried for the host
    std::string strFilterMethod;                ///< "probability" or "flr"
    std::vector<IdentModification> vTargetMods; ///< in the order of the file
    double dFilterThreshold = 0.0;              ///< 0 to 1
};

// ===== 4. CAnnotateParam ===================================================

/// Annotation of proteins: section [Annotation].
class VORLAN_API CAnnotateParam {
public:
    bool bAnnotate = false;         ///< the rest is read only when it is on
    std::string strProteinDatabase; ///< path of a FASTA file
};

// ===== 5. CTulkParam =======================================================

/// The parameters of the process: one instance, made on first use and never
/// freed. Modifications named in the file are looked up in the modification
/// database of the search engine, when the file names one, else in the default
/// table; these databases are those of the first call (see ModificationDB.h),
/// also when a later file names another.
class VORLAN_API CTulkParam {
public:
    CTulkParam(const CTulkParam&) = delete;
    CTulkParam& operator=(const CTulkParam&) = delete;
    ~CTulkParam();

    /// The instance; its groups are null before the first reading.
    static const CTulkParam* getInstance();

    /// Reads the file into the instance, in place of what it held, and gives
    /// the instance. After a failure it holds the groups as far as they were
    /// read, up to and including the one with the bad value.
    /// \throws OpenMS::Exception::InvalidParameter, unit "TulkParam", label
    ///         "CTulkParam::readFromFile_", for the first value that is missing
    ///         or bad, in the order of docs/formats/parameters.md:
    ///         Missing parameter "<key>" in section "<section>"
    ///         Invalid parameter "<key>" in section "<section>"
    ///         There is no such FDR estimation method.
    ///         Must DO localization before doing annotation.
    /// Lets pass what InitFile::Load and the modification databases throw; a
    /// malformed modification table ends the process.
    static const CTulkParam* readFromFile(const OpenMS::String& path);

    /// The groups; null until they are read. They go with the next reading.
    const CSearchParam* getSearchParam() const { return pSearchParam_.get(); }
    const CFdrControlParam* getFdrControlParam() const { return pFdrControlParam_.get(); }
    const CLocalizeParam* getLocalizeParam() const { return pLocalizeParam_.get(); }
    const CAnnotateParam* getAnnotateParam() const { return pAnnotateParam_.get(); }

    /// A copy of the output path.
    OpenMS::String getOutputPath() const { return strOutputPath_; }

protected:
    CTulkParam();

    /// What readFromFile does with the instance.
    void readFromFile_(const OpenMS::String& path);

    /// Deletes the groups and empties the output path.
    void clear_();

    /// "<key>" in section "<section>", double quotes included: what the messages
    /// about one parameter end in.
    static OpenMS::String ParamError(OpenMS::String key, OpenMS::String section);

private:
    static CTulkParam& instance_();

    std::unique_ptr<CSearchParam> pSearchParam_;
    std::unique_ptr<CFdrControlParam> pFdrControlParam_;
    std::unique_ptr<CLocalizeParam> pLocalizeParam_;
    std::unique_ptr<CAnnotateParam> pAnnotateParam_;
    OpenMS::String strOutputPath_;
    InitFile cInitFile_;
};

} // namespace Vorlan

#endif // VORLAN_TULKPARAM_H
