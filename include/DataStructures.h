// The values that every reader fills and every caller uses: names of types,
// peptide-spectrum matches, proteins, peaks and spectra.
//
// Contents
//   1. Registries       DatasetType, FdrEstimateType, FragMethodType,
//                       PepIdentType, SearchEngineType, TdFdrType, TolType
//   2. Identifications  IdentModification, PeptideEvidence,
//                       PeptideIdentification
//   3. Sources          PepIdentSource, DatasetSource
//   4. Localisation     LocalizeResult, DeltaMass, AnnoResult
//   5. Proteins         CProtein, InferProtein
//   6. Spectra          Peak, Spectrum
//
// Records are plain values: public fields, copied and moved member by member,
// owning their texts and lists. Units: masses in daltons (Da), m/z in thomson
// (Th), retention times in seconds (s). "MH" is the singly protonated mass.
//
// Exceptions are those of OpenMS, thrown by value. Each carries the unit name
// "DataStructures", a line number, the label Class::member and its message;
// docs/errors.md lists them all.
#ifndef VORLAN_DATASTRUCTURES_H
#define VORLAN_DATASTRUCTURES_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <OpenMS/DATASTRUCTURES/String.h>

#include "VorlanExport.h"

namespace Vorlan {

// ===== 1. Registries =======================================================
//
// Seven enumerations with display names. The names are part of the parameter
// file format and the numbers are stored by callers: neither ever changes.
//
// The comments beside the values are their names. Nothing here throws. The maps are
// built during static initialisation.

/// Spectrum file formats.
class VORLAN_API DatasetType {
public:
    /// The values, each with its display name.
    enum EDatasetType : int {
        Unknown = 0, ///< "unknown"
        Dta = 1,     ///< "dta"
        Mgf = 2,     ///< "mgf"
        MzXml = 3,   ///< "mzXML"
        MzMl = 4     ///< "mzML"
    };
    /// The display name of value; "" for a value without a name.
    static OpenMS::String typeToName(EDatasetType value);
    /// The lowest value with this display name, the case of ASCII letters aside;
    /// nothing is trimmed, and any other text gives 0, "unknown".
    static EDatasetType nameToType(const OpenMS::String& name);

private:
    static std::map<EDatasetType, OpenMS::String> initializeMap_();
    static const std::map<EDatasetType, OpenMS::String> mapNames_;
};

/// How the false discovery rate is estimated over several result sets.
class VORLAN_API FdrEstimateType {
public:
    /// The values, each with its display name.
    enum EFdrEstimateType : int {
        Unknown = 0,    ///< "unknown"
        Global = 1,     ///< "global"
        Separate = 2,   ///< "separate"
        Transferred = 3 ///< "transferred"
    };
    /// The display name of value; "" for a value without a name.
    static OpenMS::String typeToName(EFdrEstimateType value);
    /// The lowest value with this display name, the case of ASCII letters aside;
    /// nothing is trimmed, and any other text gives 0, "unknown".
    static EFdrEstimateType nameToType(const OpenMS::String& name);

private:
    static std::map<EFdrEstimateType, OpenMS::String> initializeMap_();
    static const std::map<EFdrEstimateType, OpenMS::String> mapNames_;
};

/// Fragmentation methods.
class VORLAN_API FragMethodType {
public:
    /// The values, each with its display name.
    enum EFragType : int {
        Unknown = 0, ///< "unknown"
        CidHcd = 1,  ///< "CID/HCD"
        Etd = 2      ///< "ETD"
    };
    /// The display name of value; "" for a value without a name.
    static OpenMS::String typeToName(EFragType value);
    /// The lowest value with this display name, the case of ASCII letters aside;
    /// nothing is trimmed, and any other text gives 0, "unknown".
    static EFragType nameToType(const OpenMS::String& name);

private:
    static std::map<EFragType, OpenMS::String> initializeMap_();
    static const std::map<EFragType, OpenMS::String> mapNames_;
};

/// Identification result file formats.
class VORLAN_API PepIdentType {
public:
    /// The values, each with its display name.
    enum EPepIdentType : int {
        Unknown = 0,         ///< "unknown"
        Pfind28Txt = 1,      ///< "pFind 2.8 (.txt)"
        PBuildCsv = 2,       ///< "pBuild_CSV"
        MsFraggerPepXml = 3, ///< "MSFragger (.pepXML)"
        SequestTxt = 4,      ///< "Sequest (.txt)"
        MascotDat = 5,       ///< "Mascot_dat"
        MascotPepXml = 6,    ///< "Mascot_PepXML"
        MaxQuant = 7,        ///< "MaxQuant"
        XTandem = 8,         ///< "X!Tandem"
        CalvexTxt = 9,       ///< "Calvex (.txt)", the library's own table
        Pfind3Spectra = 10,  ///< "pFind 3 (.spectra)"
        MsgfTsv = 11,        ///< "MSGF (.tsv)"
        CometPepXml = 12     ///< "Comet (.pep.xml)"
    };
    /// The display name of value; "" for a value without a name.
    static OpenMS::String typeToName(EPepIdentType value);
    /// The lowest value with this display name, the case of ASCII letters aside;
    /// nothing is trimmed, and any other text gives 0, "unknown".
    static EPepIdentType nameToType(const OpenMS::String& name);

private:
    static std::map<EPepIdentType, OpenMS::String> initializeMap_();
    static const std::map<EPepIdentType, OpenMS::String> mapNames_;
};

/// Search engines. Numbered unlike PepIdentType, and spells "Maxquant" with a
/// small q (B-02).
class VORLAN_API SearchEngineType {
public:
    /// The values, each with its display name.
    enum ESearchEngineType : int {
        Unknown = 0,         ///< "unknown"
        Pfind28Txt = 1,      ///< "pFind 2.8 (.txt)"
        Pfind3Spectra = 2,   ///< "pFind 3 (.spectra)"
        MsFraggerPepXml = 3, ///< "MSFragger (.pepXML)"
        Mascot = 4,          ///< "Mascot"
        SequestTxt = 5,      ///< "Sequest (.txt)"
        MaxQuant = 6,        ///< "Maxquant"
        XTandem = 7,         ///< "X!Tandem"
        CalvexTxt = 8,       ///< "Calvex (.txt)"
        MsgfTsv = 9,         ///< "MSGF (.tsv)"
        CometPepXml = 10     ///< "Comet (.pep.xml)"
    };
    /// The display name of value; "" for a value without a name.
    static OpenMS::String typeToName(ESearchEngineType value);
    /// The lowest value with this display name, the case of ASCII letters aside;
    /// nothing is trimmed, and any other text gives 0, "unknown".
    static ESearchEngineType nameToType(const OpenMS::String& name);

private:
    static std::map<ESearchEngineType, OpenMS::String> initializeMap_();
    static const std::map<ESearchEngineType, OpenMS::String> mapNames_;
};

/// Formulas of the target-decoy false discovery rate.
class VORLAN_API TdFdrType {
public:
    /// The values, each with its display name.
    enum ETdFdrType : int {
        Unknown = 0,             ///< "unknown"
        DecoyByTarget = 1,       ///< "decoy/target"
        DecoyPlusOneByTarget = 2 ///< "(decoy+1)/target"
    };
    /// The display name of value; "" for a value without a name.
    static OpenMS::String typeToName(ETdFdrType value);
    /// The lowest value with this display name, the case of ASCII letters aside;
    /// nothing is trimmed, and any other text gives 0, "unknown".
    static ETdFdrType nameToType(const OpenMS::String& name);

private:
    static std::map<ETdFdrType, OpenMS::String> initializeMap_();
    static const std::map<ETdFdrType, OpenMS::String> mapNames_;
};

/// Units of a tolerance. Wherever a tolerance is applied, Da means an absolute
/// window and every other value, Unknown included, parts per million (B-87).
class VORLAN_API TolType {
public:
    /// The values, each with its display name.
    enum ETolType : int {
        Unknown = 0, ///< "unknown"
        Da = 1,      ///< "Da"
        Ppm = 2      ///< "ppm"
    };
    /// The display name of value; "" for a value without a name.
    static OpenMS::String typeToName(ETolType value);
    /// The lowest value with this display name, the case of ASCII letters aside;
    /// nothing is trimmed, and any other text gives 0, "unknown".
    static ETolType nameToType(const OpenMS::String& name);

private:
    static std::map<ETolType, OpenMS::String> initializeMap_();
    static const std::map<ETolType, OpenMS::String> mapNames_;
};

// ===== 2. Identifications ==================================================

/// One modification found on an identified peptide.
class VORLAN_API IdentModification {
public:
    std::string strName;                  ///< name as the engine or database spells it
    double dMass = 0.0;                   ///< mass shift, Da
    std::string strSite;                  ///< modified residue letter, or terminus as text
    std::string strPosition = "Anywhere"; ///< term specificity as text, never checked here
    std::int32_t nPos = 0;                ///< 1-based residue; 0 N-terminus; length + 1 C-terminus

    IdentModification() = default;
    /// The five fields in their order; mass in Da.
    IdentModification(const std::string& name, double mass, const std::string& site,
                      const std::string& position, std::int32_t pos);

    /// Sets every field back to its default.
    void Clear();

    /// All five fields are equal: texts byte by byte, masses exactly.
    bool operator==(const IdentModification& other) const;
    bool operator!=(const IdentModification& other) const;
};

/// One protein that an identified peptide maps to.
class VORLAN_API PeptideEvidence {
public:
    std::string strProteinAccession; ///< as the engine or the database writes it
    std::int32_t nStart = -1;        ///< start in the protein as the engine counts; -1 unknown
    char cBefore = 'X';              ///< residue before the peptide
    char cAfter = 'X';               ///< residue after the peptide

    PeptideEvidence() = default;
    /// The end position is accepted and dropped (B-03).
    PeptideEvidence(const std::string& accession, std::int32_t start, std::int32_t end, char before,
                    char after);
};

/// One peptide-spectrum match (PSM).
class VORLAN_API PeptideIdentification {
public:
    std::string strDatasetName;    ///< dataset (spectrum file) name
    std::string strSpectrumName;   ///< spectrum name under which a dataset indexes it
    std::string strSequence;       ///< bare peptide sequence
    double dValue1 = 0.0;          ///< reader-filled: precursor m/z, Th
    std::uint64_t nCharge = 0;     ///< precursor charge
    double dValue2 = 0.0;          ///< reader-filled: retention time, s
    double dValue3 = 0.0;          ///< reader-filled: precursor mass error, unit in nValue4
    double dMassShift = 0.0;       ///< observed minus calculated mass, Da
    std::uint64_t nValue4 = 0;     ///< reader-filled: TolType of dValue3, 0 not reported
    double dMainScore = 0.0;       ///< the engine's main score
    bool bHighScoreBetter = false; ///< a higher main score is better
    double dObsMH = 0.0;           ///< observed singly protonated precursor mass, Da
    std::int32_t nValue5 = 0;      ///< reader-filled: scan number
    bool bDecoy = false;           ///< already known to be a decoy
    std::vector<PeptideEvidence> vEvidences; ///< proteins of the peptide
    std::vector<IdentModification> vMods;    ///< modifications of the peptide
    std::vector<IdentModification> vAltMods; ///< of its termini, from pepXML; else empty

    /// Sets every field back to its default and empties the three lists.
    void Clear();

    /// Sorts vMods by nPos, ascending. Modifications at one position keep
    /// their order.
    void SortMod();

    /// The order of SortMod: a.nPos < b.nPos.
    static bool bPosLess(const IdentModification& a, const IdentModification& b);

    /// vMods and other hold equal modifications in the same order.
    bool isModSame(const std::vector<IdentModification>& other) const;

    /// False when bDecoy is set, or when any protein accession begins with
    /// decoyTag (bytes, case-sensitive); else true. An empty tag is a prefix
    /// of every accession.
    /// \throws OpenMS::Exception::InvalidValue "There is no protein information",
    ///         label "PeptideIdentification::isTarget", when bDecoy is not set
    ///         and vEvidences is empty.
    bool isTarget(const std::string& decoyTag) const;
};

// ===== 3. Sources ==========================================================

/// Where a set of identification results comes from.
class VORLAN_API PepIdentSource {
public:
    OpenMS::String strFirst;                 ///< folder of the result file
    OpenMS::String strThird;                 ///< folder of a second file, for readers that need one
    std::vector<OpenMS::String> vFirstList;  ///< carried for the host; no reader looks at it
    OpenMS::String strSecond;                ///< name of the result file
    OpenMS::String strFourth;                ///< name of the second file
    std::vector<OpenMS::String> vSecondList; ///< carried for the host, like vFirstList
    PepIdentType::EPepIdentType eType = PepIdentType::Unknown; ///< the format of the file

    PepIdentSource() = default;
    /// Folder first and name second of the result, and what follows in the order of
    /// the names of the fields; fields that are not given stay empty.
    PepIdentSource(const OpenMS::String& first, const OpenMS::String& second,
                   const OpenMS::String& third, const OpenMS::String& fourth,
                   PepIdentType::EPepIdentType type);
    PepIdentSource(const OpenMS::String& first, const OpenMS::String& second,
                   PepIdentType::EPepIdentType type);
    PepIdentSource(const OpenMS::String& first, const OpenMS::String& second,
                   const std::vector<OpenMS::String>& firstList,
                   const std::vector<OpenMS::String>& secondList, PepIdentType::EPepIdentType type);
};

/// One dataset of spectra.
class VORLAN_API DatasetSource {
public:
    std::string strFirst;                                   ///< folder
    std::string strSecond;                                  ///< file name; also the dataset's name
    DatasetType::EDatasetType eType = DatasetType::Unknown; ///< its format

    DatasetSource() = default;
    /// Folder, file name and format.
    DatasetSource(const std::string& first, const std::string& second,
                  DatasetType::EDatasetType type);
};

// ===== 4. Localisation and annotation ======================================

/// The localisation of one modification.
class VORLAN_API LocalizeResult {
public:
    /// The modified site. Letters have the value of their place in the
    /// alphabet, A = 1 to Z = 26.
    enum EModSite : int {
        MOD_N_TERM = 0,
        // clang-format off
        MOD_A, MOD_B, MOD_C, MOD_D, MOD_E, MOD_F, MOD_G, MOD_H, MOD_I, MOD_J,
        MOD_K, MOD_L, MOD_M, MOD_N, MOD_O, MOD_P, MOD_Q, MOD_R, MOD_S, MOD_T,
        MOD_U, MOD_V, MOD_W, MOD_X, MOD_Y, MOD_Z,
        // clang-format on
        MOD_C_TERM = 27,
        NUMBER_OF_MOD_SITE = 28 ///< no site; the default
    };

    /// Where a modification may sit, with the texts of transETermSpecificityToString.
    enum ETermSpecificity : int {
        ANYWHERE = 0,                  ///< "Anywhere"
        C_TERM = 1,                    ///< "C-term"
        N_TERM = 2,                    ///< "N-term"
        PROTEIN_C_TERM = 3,            ///< "Protein C-term"
        PROTEIN_N_TERM = 4,            ///< "Protein N-term"
        NUMBER_OF_TERM_SPECIFICITY = 5 ///< count, not a value; the default
    };

    std::uint64_t nIndex = 0;                           ///< carried for the host
    EModSite eSite = NUMBER_OF_MOD_SITE;                ///< the modified site
    ETermSpecificity ePos = NUMBER_OF_TERM_SPECIFICITY; ///< where it lies
    double dProb = 0.0;                                 ///< probability of the site, 0 to 1

    LocalizeResult() = default;
    /// The four fields in their order; nothing is checked.
    LocalizeResult(std::uint64_t index, EModSite site, ETermSpecificity pos, double prob);

    /// The fields, unchecked in both directions.
    ETermSpecificity getPos() const;
    void setPos(ETermSpecificity pos);
    double getProb() const;
    void setProb(double prob);
    void setSite(EModSite site);

    /// "MOD_N_TERM" for 0, "MOD_C_TERM" for 27, else the one character with
    /// code value + 64, unchecked (B-04): 1 gives "A", 28 gives "\".
    static OpenMS::String transEModSiteToString(EModSite site);

    /// "MOD_N_TERM" gives 0 and "MOD_C_TERM" 27 (whole texts). Otherwise only
    /// the first character is read (B-05): 'A' to 'Z' give 1 to 26.
    /// \throws OpenMS::Exception::InvalidValue "There is no such modification
    ///         site" with the decimal code (0 to 255) of the first character
    ///         as its value (0 for an empty text), label
    ///         "LocalizeResult::transStringToEModSite".
    static EModSite transStringToEModSite(const OpenMS::String& site);

    /// The texts beside the enumerators.
    /// \throws OpenMS::Exception::InvalidValue "NUMBER_OF_TERM_SPECIFICITY is
    ///         Invalid value" with the value "NUMBER_OF_TERM_SPECIFICITY" for
    ///         any other value, label
    ///         "LocalizeResult::transETermSpecificityToString".
    static OpenMS::String transETermSpecificityToString(ETermSpecificity pos);

    /// Compares only as many characters as each name has (B-06), in the order
    /// of the values: "C-terminal" gives C_TERM. Case matters.
    /// \throws OpenMS::Exception::InvalidParameter "The Term Specificity of " +
    ///         pos + " is unknown.", label
    ///         "LocalizeResult::transStringToETermSpecificity".
    static ETermSpecificity transStringToETermSpecificity(const OpenMS::String& pos);
};

/// A mass-shift entry. Only the mass shift has a meaning inside the library;
/// the other fields are carried for the host.
class VORLAN_API DeltaMass {
public:
    std::vector<double> vValues;             ///< carried for the host
    double dDeltaMass = 0.0;                 ///< mass shift, Da
    double dValue1 = 0.0;                    ///< carried for the host
    double dValue2 = 0.0;                    ///< carried for the host
    double dValue3 = 0.0;                    ///< carried for the host
    double dValue4 = 0.0;                    ///< carried for the host
    std::string strName;                     ///< carried for the host
    std::map<std::string, double> mapValues; ///< carried for the host

    /// Sets dDeltaMass, Da.
    void setDeltaMass(double mass);
};

/// An annotation result, carried for the host.
class VORLAN_API AnnoResult {
public:
    double dValue1 = 0.0;        ///< carried for the host
    std::vector<double> vFirst;  ///< carried for the host
    std::vector<double> vSecond; ///< carried for the host
    std::vector<double> vThird;  ///< carried for the host
    double dValue2 = 0.0;        ///< carried for the host
};

// ===== 5. Proteins =========================================================

/// One FASTA entry.
class VORLAN_API CProtein {
public:
    std::string strAccession;   ///< what stands between ">" and the first blank
    std::string strDescription; ///< what stands behind that blank
    std::string strSequence;    ///< the residues, one capital letter each

    CProtein() = default;
    /// The three fields in their order.
    CProtein(const std::string& accession, const std::string& description,
             const std::string& sequence);
};

/// A protein that protein inference produced.
class VORLAN_API InferProtein : public CProtein {
public:
    double dValue = 0.0; ///< carried for the host

    /// As those of CProtein (accession, description, sequence); dValue is 0.
    using CProtein::CProtein;
};

// ===== 6. Spectra ==========================================================

/// One experimental or theoretical peak, with the theoretical ions it matched.
class VORLAN_API Peak {
public:
    /// Fragment ion series, with the names of getHitStatusStringOf.
    enum EIonType : int {
        A_ION = 1,    ///< "a-ion"
        B_ION = 2,    ///< "b-ion"
        C_ION = 3,    ///< "c-ion"
        X_ION = 4,    ///< "x-ion"
        Y_ION = 5,    ///< "y-ion"
        Z_ION = 6,    ///< "z-ion"
        Z_DOT_ION = 7 ///< "z(dot)-ion"; has no printable name (B-08)
    };

    /// Whether the modification's mass shift was part of the ion's mass.
    enum EPeakHitStatus : int {
        UNSHIFT = 1, ///< "unshift": matched without the shift
        SHIFT = 2    ///< "shift": matched with it
    };

    /// One theoretical ion matched to a peak.
    struct MatchRes {
        EIonType eIonType = static_cast<EIonType>(0); ///< the ion's series
        std::uint64_t nIonIndex = 0;                  ///< the ion's number in its series, from 1
        std::int32_t nCharge = 0;                     ///< the ion's charge
        EPeakHitStatus eHitStatus = static_cast<EPeakHitStatus>(0); ///< shifted or not
    };

    double dMz = 0.0;                ///< m/z, Th
    double dIntensity = 0.0;         ///< in the unit of the source
    std::vector<MatchRes> vMatchRes; ///< in the order added

    Peak() = default;
    /// Keeps m/z, intensity and a copy of matchRes; the four arguments in
    /// between are ignored (B-07). One match goes into the list.
    Peak(double mz, double intensity, EIonType ionType, std::uint64_t ionIndex, std::int32_t charge,
         EPeakHitStatus hitStatus, const std::vector<MatchRes>& matchRes);

    /// The fields: m/z in Th, intensity in the unit of the source.
    double getMz() const;
    void setMz(double mz);
    double getIntensity() const;
    void setIntensity(double intensity);

    /// Appends a copy of matchRes.
    void addMatchRes(MatchRes& matchRes);
    /// Empties vMatchRes.
    void clearMatchRes();
    /// The length of vMatchRes.
    std::uint64_t getNumberOfMatchRes() const;

    /// Field of match i, counted from 0; ionType, ionIndex, charge and hitStatus are
    /// its new values.
    /// \throws OpenMS::Exception::IndexOverflow with the index and the length
    ///         of vMatchRes and the label "Peak::" + the member's name, when i is
    ///         not less than that length. The peak is unchanged then.
    EIonType getIonTypeOf(std::uint64_t i) const;
    void setIonTypeOf(EIonType ionType, std::uint64_t i);
    std::uint64_t getIonIndexOf(std::uint64_t i) const;
    void setIonIndexOf(std::uint64_t ionIndex, std::uint64_t i);
    std::int32_t getChargeOf(std::uint64_t i) const;
    void setChargeOf(std::int32_t charge, std::uint64_t i);
    EPeakHitStatus getHitStatusOf(std::uint64_t i) const;
    void setHitStatusOf(EPeakHitStatus hitStatus, std::uint64_t i);
    MatchRes getMatchResOf(std::uint64_t i) const;

    /// The name of match i: ion, "_", status, "_", charge, as in
    /// "b-ion_unshift_2".
    /// \throws OpenMS::Exception::IndexOverflow as above.
    /// \throws OpenMS::Exception::InvalidValue "unknown ion type" for an ion
    ///         type outside 1 to 6, Z_DOT_ION included (B-08), or "unknown hit
    ///         status" for a status other than 1 and 2; the value is the number
    ///         met, the label "Peak::getMatchResName".
    OpenMS::String getHitStatusStringOf(std::uint64_t i) const;

private:
    static OpenMS::String getMatchResName(const MatchRes& matchRes);
};

/// One MS/MS spectrum, with a table that finds the peak at an m/z.
///
///     spectrum.CreateHashTable();             // once per spectrum
///     const std::int32_t hit = spectrum.GetHitPeak(theo, 20.0, TolType::Ppm, true);
///     if (hit >= 0) { use(spectrum.vPeaks[hit]); }
///     spectrum.ReleaseHashTable();
class VORLAN_API Spectrum {
public:
    std::int32_t nSpecFlag = 1;           ///< carried for readers; none sets it
    OpenMS::String strSource;             ///< carried for readers that know their source
    OpenMS::String strTitle;              ///< the name under which it was loaded
    double dPrecursorMz = 0.0;            ///< precursor m/z, Th
    std::uint64_t nCharge = 0;            ///< precursor charge, 0 unknown
    std::int32_t nScan = 0;               ///< scan number
    double dRetentionTime = 0.0;          ///< retention time, s
    std::vector<Peak> vPeaks;             ///< in the order of the file until they are sorted
    std::vector<std::int32_t> vHashTable; ///< see CreateHashTable; empty until then

    /// Number of peaks.
    std::uint64_t Size() const;

    /// Sorts vPeaks by m/z, ascending. Peaks whose m/z is not a number go
    /// behind all others. Not stable.
    void sortByMz();
    /// Sorts vPeaks by intensity, descending. Peaks whose intensity is not a
    /// number go behind all others. Not stable.
    void sortByIntensity();
    /// The orders of the two sorts: a stands before b. Not to be used as they stand on peaks
    /// that hold a NaN.
    static bool bMzLesser(const Peak& a, const Peak& b);
    static bool bIntensityGreater(const Peak& a, const Peak& b);

    /// Sorts vPeaks by m/z and builds vHashTable over bins of 1 Th: entry b is
    /// the index of the first peak whose truncated m/z is at least b, up to
    /// the bin of the largest m/z. Without peaks the table is empty.
    /// Peaks with an m/z that is NaN, infinite, at or below -1 Th or at or
    /// above 2^28 Th stay in vPeaks, have no entry and are never found.
    /// Costs 4 bytes per Th up to the largest m/z.
    void CreateHashTable();

    /// Empties vHashTable and frees its storage.
    void ReleaseHashTable();

    /// The index in vPeaks of the most intense peak in the closed window
    /// theo.dMz - tolerance to theo.dMz + tolerance, or -1.
    ///
    /// \param theo     the theoretical peak; it may be a peak of this spectrum.
    ///                 Its first match, if it has one, is appended to the
    ///                 matches of the peak found.
    /// \param tol      tolerance, in Da when tolType is TolType::Da, else in
    ///                 ppm of theo.dMz.
    /// \param tolType  unit of tol
    /// \param bReuseMatched  false passes over peaks that already have a match.
    ///
    /// Of equally intense peaks the one with the lower m/z is taken; peaks
    /// with an intensity at or below -1 or NaN never are. A window that begins
    /// at or below -1 Th finds nothing. Needs CreateHashTable
    /// after the last change of vPeaks: without a table the answer is -1, with
    /// a stale one it is some peak inside the window or -1. Never throws but
    /// std::bad_alloc.
    std::int32_t GetHitPeak(Peak& theo, const double& tol, const TolType::ETolType& tolType,
                            bool bReuseMatched);

    /// Empties the match list of every peak; peaks and table stay.
    void ResetMatchRes();
};

} // namespace Vorlan

#endif // VORLAN_DATASTRUCTURES_H
