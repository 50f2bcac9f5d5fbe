// Modifications of residues and termini, and the databases that hold them.
//
//     CModificationsDB& database = *CModificationsDBUnimod::getInstance(path);
//     const CResidueModification& phospho = database.getModification(
//         "Phospho", "S", CResidueModification::NUMBER_OF_TERM_SPECIFICITY);
//     phospho.getDiffMonoMass(); // 79.966331 Da
//
// Contents
//   1. CResidueModification         one modification of one residue or terminus
//   2. CModificationsDB             questions by name and by mass, the dump
//   3. CModificationsDBUnimod       from Unimod XML
//   4. CModificationsDBCalvexDefault  from the table "unimod.txt"
//   5. CModificationsDBEngine       from the modification file of a search engine:
//                                   ...EngineCalvex (the library's own table),
//                                   ...EnginePFind3, ...EngineMSFragger
//
// Three databases of a process. Sections 3 to 5 each have one instance, made
// when it is first asked for and never freed. Later calls give that instance,
// whatever path they name (B-45): a process has one engine database.
//
// Masses are in daltons (Da).
//
// Exceptions are those of OpenMS, thrown by value, with the unit name
// "ModificationDB", a line number, the label Class::member and the message;
// docs/errors.md lists them all. std::bad_alloc may come from any member that
// allocates. Malformed tables end the process (B-44).
#ifndef VORLAN_MODIFICATIONDB_H
#define VORLAN_MODIFICATIONDB_H

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <OpenMS/DATASTRUCTURES/String.h>

#include "DataStructures.h"
#include "VorlanExport.h"

namespace Vorlan {

// ===== 1. CResidueModification =============================================

/// A modification of one residue (or of a list of them, see getOrigin) or of
/// one terminus. A plain value: copies copy everything.
class VORLAN_API CResidueModification {
public:
    /// Where the modification may sit.
    enum TermSpecificity : int {
        ANYWHERE = 0,                  ///< "Anywhere"
        C_TERM = 1,                    ///< "Any C-term"
        N_TERM = 2,                    ///< "Any N-term"
        PROTEIN_C_TERM = 3,            ///< "Protein C-term"
        PROTEIN_N_TERM = 4,            ///< "Protein N-term"
        NUMBER_OF_TERM_SPECIFICITY = 5 ///< in questions: any; in names: the record's own
    };

    /// Where the modification comes from. The comments give the display name
    /// and the text of the dump (B-38).
    enum SourceClassification : int {
        ARTIFACT = 0,                         ///< "Artefact", "artifact"
        HYPOTHETICAL = 1,                     ///< "Hypothetical", "hypothetical"
        NATURAL = 2,                          ///< "Natural", "natural"
        POSTTRANSLATIONAL = 3,                ///< "Post-translational", "post-translational"
        MULTIPLE = 4,                         ///< "Multiple", "multiple"
        CHEMICAL_DERIVATIVE = 5,              ///< "Chemical derivative", "chemical derivative"
        ISOTOPIC_LABEL = 6,                   ///< "Isotopic label", "isotopic label"
        PRETRANSLATIONAL = 7,                 ///< "Pre-translational", "pre-translational"
        OTHER_GLYCOSYLATION = 8,              ///< "Other glycosylation", "other glycosylation"
        NLINKED_GLYCOSYLATION = 9,            ///< "N-linked glycosylation", lower case
        AA_SUBSTITUTION = 10,                 ///< "AA substitution", "aa substitution"
        OTHER = 11,                           ///< "Other", "other"
        NONSTANDARD_RESIDUE = 12,             ///< "Non-standard residue", lower case
        COTRANSLATIONAL = 13,                 ///< "Co-translational", "co-translational"
        OLINKED_GLYCOSYLATION = 14,           ///< "O-linked glycosylation", lower case
        UNKNOWN = 15,                         ///< "", "-"
        NUMBER_OF_SOURCE_CLASSIFICATIONS = 16 ///< in names: the record's own
    };

    /// An empty record: ANYWHERE, ARTIFACT, masses of 0.
    CResidueModification() = default;
    /// Copies copy everything.
    CResidueModification(const CResidueModification&) = default;
    CResidueModification(CResidueModification&&) = default;
    CResidueModification& operator=(const CResidueModification&) = default;
    CResidueModification& operator=(CResidueModification&&) = default;

    virtual ~CResidueModification();

    /// All eleven fields are equal; masses exactly.
    bool operator==(const CResidueModification& other) const;
    bool operator!=(const CResidueModification& other) const;

    /// Short name, such as a Unimod title: "Phospho".
    const std::string& getId() const { return strId_; }
    void setId(const std::string& id) { strId_ = id; }

    /// Name with the site: "Phospho (S)".
    const std::string& getFullId() const { return strFullId_; }
    void setFullId(const std::string& fullId) { strFullId_ = fullId; }

    /// "UniMod:21", or empty.
    const std::string& getUniModAccession() const { return strUniModAccession_; }
    void setUniModAccession(const std::string& accession) { strUniModAccession_ = accession; }

    /// Descriptive name: "Phosphorylation".
    const std::string& getFullName() const { return strFullName_; }
    void setFullName(const std::string& fullName) { strFullName_ = fullName; }

    /// Where the modification may sit; nothing is checked.
    TermSpecificity getTermSpecificity() const { return eTermSpecificity_; }
    void setTermSpecificity(TermSpecificity specificity) { eTermSpecificity_ = specificity; }
    /// By its display name, exactly as written above.
    /// \throws OpenMS::Exception::InvalidValue "Invalid term specificity" with
    ///         the text as value, line 148.
    void setTermSpecificity(const std::string& name);

    /// The display name of a term specificity; NUMBER_OF_TERM_SPECIFICITY means
    /// that of this record.
    /// \throws OpenMS::Exception::InvalidValue "Invalid term specificity" with
    ///         an empty value, line 177, for anything else than 0 to 4, the
    ///         record's own value included.
    std::string getTermSpecificityName(TermSpecificity specificity) const;

    /// One-letter code of the residue, "N-term" or "C-term". Records from a
    /// pFind 3 file may hold several letters (B-47).
    const std::string& getOrigin() const { return strOrigin_; }
    void setOrigin(const std::string& origin) { strOrigin_ = origin; }

    /// Where the modification comes from.
    SourceClassification getSourceClassification() const { return eSourceClassification_; }
    void setSourceClassification(SourceClassification classification)
    {
        eSourceClassification_ = classification;
    }
    /// By the text of the dump, in any letter case; "artefact" is taken, too.
    /// Any other text is UNKNOWN. Never fails.
    void setSourceClassification(const OpenMS::String& text);

    /// The display name; NUMBER_OF_SOURCE_CLASSIFICATIONS means that of this
    /// record. "Unknown" for a value outside 0 to 15, the record's included.
    std::string getSourceClassificationName(SourceClassification classification) const;

    /// Mass shifts, Da.
    double getDiffAverageMass() const { return dDiffAverageMass_; }
    void setDiffAverageMass(double mass) { dDiffAverageMass_ = mass; }
    double getDiffMonoMass() const { return dDiffMonoMass_; }
    void setDiffMonoMass(double mass) { dDiffMonoMass_ = mass; }

    /// Masses that are lost on fragmentation, Da; 0 for none.
    double getNeutralLossMonoMass() const { return dNeutralLossMonoMass_; }
    void setNeutralLossMonoMass(double mass) { dNeutralLossMonoMass_ = mass; }
    double getNeutralLossAverageMass() const { return dNeutralLossAverageMass_; }
    void setNeutralLossAverageMass(double mass) { dNeutralLossAverageMass_ = mass; }

private:
    std::string strId_;
    std::string strFullId_;
    std::string strUniModAccession_;
    std::string strFullName_;
    TermSpecificity eTermSpecificity_ = ANYWHERE;
    std::string strOrigin_;
    SourceClassification eSourceClassification_ = ARTIFACT;
    double dDiffAverageMass_ = 0.0;
    double dDiffMonoMass_ = 0.0;
    double dNeutralLossMonoMass_ = 0.0;
    double dNeutralLossAverageMass_ = 0.0;
};

// ===== 2. CModificationsDB =================================================

class ModificationAccess;
class ModificationMasses;
class ModificationNames;

/// A database of modifications: filled by its loader, then only asked. Records
/// stay where they are as long as the database; asking, for the one instance as
/// well, is safe from several threads as long as nothing throws: exceptions of
/// OpenMS are not.
class VORLAN_API CModificationsDB {
public:
    CModificationsDB(const CModificationsDB&) = delete;
    CModificationsDB& operator=(const CModificationsDB&) = delete;
    virtual ~CModificationsDB();

    /// The number of records.
    std::size_t getNumberOfModifications() const;

    /// Replaces result by the records that are registered under name (exactly,
    /// case-sensitive), whose origin is residue (any for an empty text), and
    /// whose term specificity is specificity (NUMBER_OF_TERM_SPECIFICITY: any).
    /// Under which names a record is registered depends on the loader. The
    /// addresses of the records of one load ascend in their order.
    /// A record with the full id "Oxidation (Protein N-term", which lacks its
    /// parenthesis, is never given (B-37).
    /// \throws OpenMS::Exception::ElementNotFound with name, line 407, when the
    ///         name is not there; result is empty then.
    void searchModifications(std::set<const CResidueModification*>& result, const std::string& name,
                             const std::string& residue,
                             CResidueModification::TermSpecificity specificity) const;

    /// The first record, in the order of the database, that searchModifications
    /// gives: the same one on every run. Good as long as the database.
    /// \throws OpenMS::Exception::ElementNotFound as searchModifications.
    /// \throws OpenMS::Exception::InvalidValue "Retrieving the modification
    ///         failed. It is not available for the residue and term
    ///         specificity." with name as value, line 395.
    const CResidueModification&
    getModification(const std::string& name, const std::string& residue,
                    CResidueModification::TermSpecificity specificity) const;

    /// Replaces fullIds by the full ids of the records whose monoisotopic mass
    /// shift lies within maxError of mass (Da, both ends included), with residue
    /// and specificity as in searchModifications; in the order of the database,
    /// equal ones as often as they occur. A mass or error that is not a number
    /// finds nothing.
    void searchModificationsByDiffMonoMass(std::vector<std::string>& fullIds, double mass,
                                           double maxError, const std::string& residue,
                                           CResidueModification::TermSpecificity specificity) const;

    /// Writes the records as a tab-separated table with a header, in the order
    /// of the database; masses with six decimals. docs/formats/modifications.md
    /// describes it. CModificationsDBCalvexDefault reads it back.
    /// \throws OpenMS::Exception::FileNotReadable with the path, line 459, when
    ///         the file cannot be opened or written (B-39).
    /// A record whose term specificity is not 0 to 4 ends the process with exit
    /// status 1 (B-40): "CModificationsDB::writeToFile calls" and
    /// "Error:<tab>Unexpected term specificity" are printed on standard error;
    /// the rows before it are in the file.
    void writeToFile(std::string path) const;

protected:
    CModificationsDB();

    /// wanted is empty or equals residue.
    bool residuesMatch_(const std::string& wanted, const std::string& residue) const;

    /// The fields of a record under whose values it can be found by name.
    enum NameField : unsigned {
        BY_ID = 1,
        BY_FULL_ID = 2,
        BY_FULL_NAME = 4,
        BY_ACCESSION = 8,
        BY_EVERY_NAME = 15
    };

    using Records = std::vector<CResidueModification>; ///< what a loader makes

    /// Appends records to the database and registers each under the values of
    /// nameFields, any of NameField joined by "|". Records that were there
    /// before stand in front of the new ones and stay where they are. Without a
    /// name field they wait, and the next call with one registers them, too.
    void addModifications_(Records records, unsigned nameFields);

    /// All records, in their order.
    const std::vector<const CResidueModification*>& modifications_() const { return vRecords_; }
    /// Those of them that wait to be registered.
    std::vector<CResidueModification*> waitingModifications_();

private:
    friend class ModificationAccess;

    template <typename Take>
    bool ForEachNamed_(const std::string& name, const std::string& residue,
                       CResidueModification::TermSpecificity specificity, Take take) const;
    bool Matches_(const CResidueModification& record, const std::string& residue,
                  CResidueModification::TermSpecificity specificity) const;

    std::vector<std::unique_ptr<Records>> vBlocks_;     ///< one for each load
    std::vector<const CResidueModification*> vRecords_; ///< all, in their order
    std::unique_ptr<ModificationNames> pNames_;
    std::unique_ptr<const ModificationMasses> pMasses_;
};

// ===== 3. CModificationsDBUnimod ===========================================

/// Unimod, from the XML file that unimod.org publishes.
///
/// Every specificity of every modification becomes a record, registered under
/// full id, id (title), full name and accession ("UniMod:" and the number).
class VORLAN_API CModificationsDBUnimod : public CModificationsDB {
public:
    ~CModificationsDBUnimod() override;

    /// The instance; the first call reads "CHEMISTRY\unimod.xml" below the
    /// working folder.
    static CModificationsDBUnimod* getInstance();
    /// The instance; the first call of either reads path, later ones ignore it
    /// (B-45). Throws what readFromUnimodXMLFile throws; then there is none.
    static CModificationsDBUnimod* getInstance(const std::string& path);

    /// Reads the file and appends its records.
    /// - In title and full name the first "-&gt;" becomes "->" (B-41).
    /// - The neutral loss is the first one with a positive monoisotopic mass.
    /// - The origins of all records that are bound to a terminus, those of
    ///   earlier calls first, are printed on standard output, without anything
    ///   between them (B-42).
    /// - A file that cannot be opened or parsed is told on standard error only,
    ///   by its CXmlException text and a line end; nothing is added (B-43).
    ///   A document without "umod:modifications" adds nothing and is no error;
    ///   origins of earlier calls are printed all the same.
    /// \throws OpenMS::Exception::InvalidValue "Invalid term specificity" for
    ///         a position that is not a display name of TermSpecificity; the
    ///         records before it stay, without full ids and under no name until
    ///         a later call reads its file to the end.
    void readFromUnimodXMLFile(const std::string& path);

protected:
    /// Reads path as readFromUnimodXMLFile does.
    explicit CModificationsDBUnimod(const std::string& path);

private:
    static CModificationsDBUnimod* dbum_;
};

// ===== 4. CModificationsDBCalvexDefault ====================================

/// The library's default database: the table "unimod.txt" in the working
/// folder, as CModificationsDB::writeToFile writes it.
class VORLAN_API CModificationsDBCalvexDefault : public CModificationsDB {
public:
    ~CModificationsDBCalvexDefault() override;

    /// The instance; the first call reads "unimod.txt". Throws what
    /// readFromUnimodTXTFile throws; then there is none.
    static CModificationsDBCalvexDefault* getInstance();

    /// Reads the table and appends its records, registered under full id, id,
    /// full name and accession. Columns are found by their names in the first
    /// line; empty lines are passed over.
    /// \throws OpenMS::Exception::FileNotReadable with the path.
    /// \throws OpenMS::Exception::InvalidValue "Invalid term specificity"; the
    ///         records of the lines before it stay.
    /// A missing column, a line without exactly eleven fields and a line that
    /// lacks a named column end the process with exit status 1, after two lines
    /// on standard error (B-44; docs/errors.md has them).
    void readFromUnimodTXTFile(const std::string& path);

protected:
    /// Reads path as readFromUnimodTXTFile does.
    explicit CModificationsDBCalvexDefault(const std::string& path);

private:
    static CModificationsDBCalvexDefault* dbpd_;
};

// ===== 5. CModificationsDBEngine ===========================================

/// The modifications of a search engine, from the engine's own file.
class VORLAN_API CModificationsDBEngine : public CModificationsDB {
public:
    ~CModificationsDBEngine() override;

    /// Reads the file and appends its records.
    virtual void readFromSearchEngineFile(const std::string& path) = 0;

    /// The instance; the first call makes it: pFind 3 (type 2), MSFragger
    /// (type 3) or the library's own table (type 8). Later calls ignore path
    /// and type (B-45). Throws what the reader throws; then there is none.
    /// \throws OpenMS::Exception::InvalidParameter "Modification database
    ///         loading from <display name> is not supported for now.", line 913,
    ///         for any other type.
    static CModificationsDBEngine* getInstance(const std::string& path,
                                               const SearchEngineType::ESearchEngineType& type);

private:
    static CModificationsDBEngine* dbse_;
};

/// The library's own table, read as CModificationsDBCalvexDefault does.
class VORLAN_API CModificationsDBEngineCalvex : public CModificationsDBEngine {
public:
    /// Reads path as readFromSearchEngineFile does.
    explicit CModificationsDBEngineCalvex(const std::string& path);
    ~CModificationsDBEngineCalvex() override;

    /// As CModificationsDBCalvexDefault::readFromUnimodTXTFile.
    void readFromSearchEngineFile(const std::string& path) override;
};

/// A modification list of pFind 3, "modification.ini".
///
/// Every pair of lines "name<n>=..." and "<key>=<sites> <where> <mass> ..."
/// makes a record, registered under its id only. The id of the key "Phospho[S]"
/// is "Phospho", the full id the whole key. All letters of the sites make one
/// origin, such as "STY" (B-47).
class VORLAN_API CModificationsDBEnginePFind3 : public CModificationsDBEngine {
public:
    /// Reads path as readFromSearchEngineFile does.
    explicit CModificationsDBEnginePFind3(const std::string& path);
    ~CModificationsDBEnginePFind3() override;

    /// \throws OpenMS::Exception::FileNotReadable with the path, line 1141.
    /// \throws OpenMS::Exception::InvalidParameter for a definition that cannot
    ///         be read, lines 1176 to 1228; docs/errors.md has the messages. The
    ///         line they name is 2k+2, where k counts the lines that are not
    ///         definitions, from 0, without a first line that gives the number
    ///         of modifications (B-46). The records before it stay.
    void readFromSearchEngineFile(const std::string& path) override;
};

/// A parameter file of MSFragger, "fragger.params".
///
/// The file gives no names: the id of a record is the text of its mass, the
/// full id that text and the site, "15.9949 (M)" or "42.0106 (Protein N-term)".
/// Records are registered under both. Lines "variable_mod_<n> = <mass> <sites>"
/// and "add_<residue or terminus> = <mass>" are read, all others passed over,
/// and so are masses of zero, those that are not a number, and texts of more than
/// 256 characters. What stands behind "#" is not read.
class VORLAN_API CModificationsDBEngineMSFragger : public CModificationsDBEngine {
public:
    /// Reads path as readFromSearchEngineFile does.
    explicit CModificationsDBEngineMSFragger(const std::string& path);
    ~CModificationsDBEngineMSFragger() override;

    /// \throws OpenMS::Exception::FileNotReadable with the path, line 1276.
    void readFromSearchEngineFile(const std::string& path) override;
};

} // namespace Vorlan

#endif // VORLAN_MODIFICATIONDB_H
