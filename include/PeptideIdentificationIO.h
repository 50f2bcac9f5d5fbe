// Readers of peptide-spectrum matches, and the writer of the library's own
// result table.
//
// Contents
//   1. PeptideIdentificationIO   the interface of every reader, in slot order
//   2. TulkTXTPepIdentIO         the native result table, read and written
//   3. MSFraggerPepXMLPepIdentIO pepXML of MSFragger
//      CometPepXMLPepIdentIO     pepXML of Comet
//   4. MSGFTSVPepIdentIO         the table of MS-GF+
//   5. MaxQuantTXTPepIdentIO     msms.txt and peptides.txt of MaxQuant
//   6. Pfind3PepIdentIO          pFind-Filtered.spectra of pFind 3
//      PfindTXTPepIdentIO        the text result of pFind 2.8
//   7. SequestTXTPepIdentIO      a table of Sequest, as Proteome Discoverer exports it
//   8. PepIdentIOFactory         makes the reader for a PepIdentType
//
// docs/formats/ has a page for each format: what is read, ignored and lost.
//
// Calling order. Reading: InitLoad, Load, EndLoad. Writing: InitSave, Save,
// EndSave. One reader belongs to one thread at a time.
//
//     PeptideIdentificationIO* pReader =
//         PepIdentIOFactory::pGetPepIdentIO(PepIdentType::CalvexTxt);
//     std::vector<PeptideIdentification> matches;
//     pReader->InitLoad(PepIdentSource("results", "psms.txt", PepIdentType::CalvexTxt));
//     pReader->Load(matches);
//     pReader->EndLoad();
//     PepIdentIOFactory::DesctroyPepIdentIO(pReader);
//
// What every reader of sections 3 to 7 shares:
// - Load appends a match for each row, query or section of the file that the
//   page of the format names. Lines hold at most 81,919 characters; a longer one
//   is cut there and ends the reading. Lines of pepXML, and the header lines of
//   all tables but Sequest's, are of any length.
// - dValue1 is the precursor m/z (Th), dValue2 the retention time (s), dValue3
//   the mass error with its TolType in nValue4, nValue5 the scan number, as far
//   as the format has them.
// - Save writes nothing; only the native table is written. InitSave opens a file
//   all the same, except for pepXML.
// - A column that is missing in the table of MS-GF+, MaxQuant or pFind 3 is told
//   on standard output and ends the process with exit status 1 (B-66).
//
// Exceptions are those of OpenMS, with the unit name "PeptideIdentificationIO";
// docs/errors.md lists them all.
#ifndef VORLAN_PEPTIDEIDENTIFICATIONIO_H
#define VORLAN_PEPTIDEIDENTIFICATIONIO_H

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <OpenMS/DATASTRUCTURES/String.h>

#include "DataStructures.h"
#include "VorlanExport.h"

namespace Vorlan {

class LineReader;

// ===== 1. PeptideIdentificationIO ==========================================

/// The interface of every reader of peptide-spectrum matches.
class VORLAN_API PeptideIdentificationIO {
public:
    PeptideIdentificationIO(const PeptideIdentificationIO&) = delete;
    PeptideIdentificationIO& operator=(const PeptideIdentificationIO&) = delete;

    /// Closes what is open.
    virtual ~PeptideIdentificationIO() = 0;

    /// Remembers the result file, source.strFirst without its trailing
    /// backslashes + "\" + source.strSecond, and opens it where the format is
    /// a table. A file that cannot be opened is reported by Load, or earlier
    /// by GetResultNumberOfFile where InitLoad calls it.
    virtual void InitLoad(const PepIdentSource& source) = 0;

    /// Appends every match of the file; never clears vMatches.
    virtual void Load(std::vector<PeptideIdentification>& vMatches) = 0;

    /// Closes the input. The native table keeps it open (B-11).
    virtual void EndLoad() = 0;

    /// Opens path for writing, emptying it. A failure is reported by Save.
    virtual void InitSave(const std::string& path) = 0;

    /// Writes vMatches; of all readers only that of the native table does.
    virtual void Save(const std::vector<PeptideIdentification>& vMatches) = 0;

    /// Closes the output.
    virtual void EndSave() = 0;

    /// Counts the result rows of the file, for the progress display.
    virtual void GetResultNumberOfFile() = 0;

    /// The format that the reader reads.
    PepIdentType::EPepIdentType eGetType() const;

protected:
    /// A reader of the format type.
    explicit PeptideIdentificationIO(PepIdentType::EPepIdentType type);

    /// What InitLoad or InitSave set last, which exceptions name (B-92); as composed,
    /// backslashes included.
    OpenMS::String strFilePath_;
    std::vector<OpenMS::String> vAuxFilePaths_; ///< for readers of more than one file
    PepIdentType::EPepIdentType eType_;         ///< what eGetType gives
    std::unique_ptr<LineReader> pInput_;        ///< bounded lines of the input; never null
    std::ofstream ofsOutput_;                   ///< what InitSave opened
    std::uint64_t tResultCount_ = 0;            ///< rows counted, for progress and for room
};

// ===== 2. TulkTXTPepIdentIO ================================================

/// The library's own tab-separated table, display name "Calvex (.txt)".
class VORLAN_API TulkTXTPepIdentIO : public PeptideIdentificationIO {
public:
    TulkTXTPepIdentIO();
    ~TulkTXTPepIdentIO() override;

    /// Counts the rows and opens the table. On an object that has loaded
    /// before, the opening fails and Load reports it (B-11).
    /// \throws OpenMS::Exception::FileNotReadable as GetResultNumberOfFile.
    void InitLoad(const PepIdentSource& source) override;

    /// Appends one match per row, its modifications sorted by position, up to
    /// the end of the file, the first empty line (B-12) or the first line of
    /// more than 81,919 characters, of which that many are read.
    ///
    /// Prints progress on standard output at every 1000th row and the last:
    /// "row/total (percent%)", overwritten with backspaces, erased at the end.
    ///
    /// \throws OpenMS::Exception::FileNotReadable with the path, label
    ///         "TulkTXTPepIdentIO::Load": the input is not open or has failed.
    /// \throws OpenMS::Exception::ElementNotFound with the column's name, same
    ///         label: a required column is missing; nothing is appended.
    /// \throws OpenMS::Exception::ConversionError from OpenMS' toInt and
    ///         toDouble: a cell is not a number; the rows before it are
    ///         appended.
    void Load(std::vector<PeptideIdentification>& vMatches) override;

    /// Closes the output; the input stays open until the object goes (B-11).
    void EndLoad() override;

    void InitSave(const std::string& path) override;

    /// Writes the header and one line per match, flushing after each line
    /// that has proteins and at the end. Prints progress as Load does.
    /// \throws OpenMS::Exception::FileNotWritable with the path, label
    ///         "TulkTXTPepIdentIO::Save": the output is not open, has failed
    ///         before or failed while writing.
    void Save(const std::vector<PeptideIdentification>& vMatches) override;

    void EndSave() override;

    /// The number of line feeds in the file less one for the header; 2^64 - 1
    /// for a file without any.
    /// \throws OpenMS::Exception::FileNotReadable with the path, label
    ///         "TulkTXTPepIdentIO::Load", when the file cannot be read.
    void GetResultNumberOfFile() override;
};

// ===== 3. pepXML ===========================================================

/// pepXML of MSFragger, display name "MSFragger (.pepXML)".
///
/// The masses of modified residues are explained anew, by the modifications
/// that the parameters of the run specify (CTulkParam); what the engine calls
/// them is not read.
class VORLAN_API MSFraggerPepXMLPepIdentIO : public PeptideIdentificationIO {
public:
    /// A summed mass, Da, and the modifications that make it up.
    using Combination = std::pair<double, std::vector<IdentModification>>;

    MSFraggerPepXMLPepIdentIO();
    ~MSFraggerPepXMLPepIdentIO() override;

    /// Remembers the file; opens nothing.
    void InitLoad(const PepIdentSource& source) override;

    /// Appends one match for each "spectrum_query" of the first run that has a
    /// "search_hit"; only its first hit and that hit's first protein are read
    /// (B-52). The dataset name is the attribute base_name, a dot and the
    /// display name of the dataset type of the parameters; the main score is
    /// the third "search_score" (B-57), for Comet the one named "expect". What
    /// sits on a terminus of the peptide goes into vAltMods.
    ///
    /// A file that cannot be opened, is not well-formed or has no element gives no
    /// matches: the text of its CXmlException and a line end are printed on standard
    /// output.
    ///
    /// \throws OpenMS::Exception::ElementNotFound and InvalidValue as getMod,
    ///         for the first residue that it throws for; the matches in front
    ///         of it are appended (B-54).
    /// \throws OpenMS::Exception::FileNotFound and ParseError, with OpenMS' own
    ///         unit and label: OpenMS cannot read its table of residues, whose
    ///         masses are needed; the matches in front of the first modified
    ///         residue are appended.
    void Load(std::vector<PeptideIdentification>& vMatches) override;

    void EndLoad() override;
    void InitSave(const std::string& path) override;
    void Save(const std::vector<PeptideIdentification>& vMatches) override;
    void EndSave() override;
    void GetResultNumberOfFile() override;

    /// Replaces vResult by the specified modifications that explain a mass.
    ///
    /// Those that may sit at the place, one to five of them and each as often as
    /// one likes, are summed in every order; of the fewest whose sum differs by
    /// less than 0.05 Da from dDelta (B-53) the nearest sum wins, of equal ones
    /// the first in the order of getModComb.
    ///
    /// \param vResult  the modifications that explain it, in their order of sum
    /// \param dDelta   mass of the modified residue less that of the residue, Da
    /// \param nPos     place of the residue in the peptide, from 1
    /// \param cResidue the residue, one letter
    /// \param cBefore  residue before the peptide, "-" at the start of a protein
    /// \param cAfter   residue after the peptide, "-" at the end of a protein
    ///
    /// \throws OpenMS::Exception::ElementNotFound "the mass shift is a
    ///         combination of modifications", label
    ///         "MSFraggerPepXMLPepIdentIO::getMod", when nothing explains it
    ///         (B-54); vResult is empty then.
    /// \throws OpenMS::Exception::InvalidValue as SatisfySpecificity.
    void getMod(std::vector<IdentModification>& vResult, double dDelta, int nPos, char cResidue,
                char cBefore, char cAfter);

    /// Replaces vCombinations by all combinations of k of vCandidates, ordered and
    /// with repetition (B-58): as many as candidates to the power k. The last
    /// one varies fastest. None for k below 1.
    void getModComb(std::vector<Combination>& vCombinations,
                    const std::vector<IdentModification>& vCandidates, int k);

    /// mod may sit at the place; nPos, cResidue, cBefore and cAfter as in getMod.
    /// - The first character of its site is the residue, or the site names the
    ///   terminus of its position type.
    /// - N-terminal ones need nPos 1, C-terminal ones nPos above 5 (B-55).
    /// - Protein termini need "-" on their side of the peptide.
    /// - At nPos 1 with cBefore "-" a site that begins with "M" fits every residue
    ///   (B-56), but for C-terminal types.
    /// \throws OpenMS::Exception::InvalidValue "The specified modifications
    ///         format was wrong" with the position type as value, label
    ///         "MSFraggerPepXMLPepIdentIO::SatisfySpecificity", when that is none
    ///         of the five of IdentModification.
    bool SatisfySpecificity(IdentModification mod, int nPos, char cResidue, char cBefore,
                            char cAfter);

protected:
    /// For a reader that shares the reading of pepXML.
    explicit MSFraggerPepXMLPepIdentIO(PepIdentType::EPepIdentType type);
};

/// pepXML of Comet, display name "Comet (.pep.xml)". As that of MSFragger, but
/// for the main score.
class VORLAN_API CometPepXMLPepIdentIO : public MSFraggerPepXMLPepIdentIO {
public:
    CometPepXMLPepIdentIO();
    ~CometPepXMLPepIdentIO() override;

    void Load(std::vector<PeptideIdentification>& vMatches) override;
};

// ===== 4. MSGFTSVPepIdentIO ================================================

/// The tab-separated table of MS-GF+, display name "MSGF (.tsv)".
class VORLAN_API MSGFTSVPepIdentIO : public PeptideIdentificationIO {
public:
    MSGFTSVPepIdentIO();
    ~MSGFTSVPepIdentIO() override;

    /// Counts the rows and opens the table. strThird and strFourth of the
    /// source, unless strFourth is empty, are folder and name of the
    /// modification list of the search.
    /// \throws OpenMS::Exception::FileNotReadable as GetResultNumberOfFile.
    void InitLoad(const PepIdentSource& source) override;

    /// Appends one match per row; blank and short rows are passed over. Masses
    /// written into the peptide are looked up in the modification list, or among
    /// the specified modifications when the source names none; a mass in front
    /// of the first residue gets position 0, and one right behind another mass
    /// stays in the sequence (B-89). The dataset name is the spectrum file with the
    /// ending ".mgf" (B-59), the main score the spectral E-value.
    /// Prints progress as TulkTXTPepIdentIO::Load, and "Unexpected Charactor in
    /// modification composition" with a line end on standard output for each
    /// character of a composition in the list that is none.
    ///
    /// \throws OpenMS::Exception::FileNotReadable with the path, label
    ///         "MSGFTSVPepIdentIO::Load": table or list cannot be read.
    /// \throws OpenMS::Exception::InvalidValue "Unexpected modification mass in
    ///         "Peptide" in .tsv file" with the mass as written, line 534, same
    ///         label; the rows before it are appended.
    void Load(std::vector<PeptideIdentification>& vMatches) override;

    void EndLoad() override;
    void InitSave(const std::string& path) override;
    void Save(const std::vector<PeptideIdentification>& vMatches) override;
    void EndSave() override;

    /// As TulkTXTPepIdentIO, label "MSGFTSVPepIdentIO::Load".
    void GetResultNumberOfFile() override;
};

// ===== 5. MaxQuantTXTPepIdentIO ============================================

/// msms.txt and peptides.txt of one search of MaxQuant, display name "MaxQuant".
class VORLAN_API MaxQuantTXTPepIdentIO : public PeptideIdentificationIO {
public:
    MaxQuantTXTPepIdentIO();
    ~MaxQuantTXTPepIdentIO() override;

    /// Counts the rows of msms.txt, the file of the source, and opens both
    /// files. strThird and strFourth are folder and name of peptides.txt; an
    /// empty strFourth means "peptides.txt", an empty strThird the folder of
    /// msms.txt.
    /// \throws OpenMS::Exception::FileNotReadable as GetResultNumberOfFile.
    void InitLoad(const PepIdentSource& source) override;

    /// Appends one match for each row of msms.txt that a row of peptides.txt
    /// lists in its "MS/MS IDs". These count the rows from 0, in order and
    /// without a gap; else "Error:<tab>"MS/MS IDs" in the peptides.txt arranged
    /// in unexpected way." is printed on standard output and the process ends
    /// with exit status 1 (B-62). A row with a "Reverse" cell is a decoy and has
    /// one protein, "DECOY" (B-61). Prints progress as TulkTXTPepIdentIO::Load.
    ///
    /// \throws OpenMS::Exception::FileNotReadable with the path, label
    ///         "MaxQuantTXTPepIdentIO::Load": one of the files cannot be read.
    /// \throws OpenMS::Exception::InvalidValue "Unexpected Modification
    ///         Abbreviation in "Modified sequence" in msms.txt" with what stands
    ///         in the parentheses, line 1011, same label; the rows before it are
    ///         appended.
    void Load(std::vector<PeptideIdentification>& vMatches) override;

    void EndLoad() override;
    void InitSave(const std::string& path) override;
    void Save(const std::vector<PeptideIdentification>& vMatches) override;
    void EndSave() override;

    /// The rows of msms.txt, as TulkTXTPepIdentIO, label
    /// "MaxQuantTXTPepIdentIO::Load".
    void GetResultNumberOfFile() override;

private:
    std::unique_ptr<LineReader> pPeptides_; ///< lines of peptides.txt; never null
};

// ===== 6. pFind ============================================================

/// pFind-Filtered.spectra of pFind 3, display name "pFind 3 (.spectra)".
class VORLAN_API Pfind3PepIdentIO : public PeptideIdentificationIO {
public:
    Pfind3PepIdentIO();
    ~Pfind3PepIdentIO() override;

    void InitLoad(const PepIdentSource& source) override;

    /// Appends one match per row; rows with too few cells and rows without a
    /// protein are passed over. Of the lists in a cell, whose entries each end
    /// with a separator, what stands behind the last one is not read (B-63).
    /// Masses of modifications are looked up by name in the modification
    /// database of the parameters, else in the default table; an unknown one has
    /// mass 0. Prints nothing, unless that table is malformed, which ends the
    /// process (B-44).
    ///
    /// \throws OpenMS::Exception::FileNotReadable with the path, label
    ///         "Pfind3PepIdentIO::Load".
    /// Lets pass what CModificationsDBEngine::getInstance throws for a database
    /// that the parameters name and that was not read with them.
    void Load(std::vector<PeptideIdentification>& vMatches) override;

    void EndLoad() override;
    void InitSave(const std::string& path) override;
    void Save(const std::vector<PeptideIdentification>& vMatches) override;
    void EndSave() override;
    void GetResultNumberOfFile() override;
};

/// The text result of pFind 2.8, display name "pFind 2.8 (.txt)".
class VORLAN_API PfindTXTPepIdentIO : public PeptideIdentificationIO {
public:
    PfindTXTPepIdentIO();
    ~PfindTXTPepIdentIO() override;

    void InitLoad(const PepIdentSource& source) override;

    /// Appends one match, the first candidate, for each section "[Spectrum...]"
    /// that has one. The lines of a section are known by their places, not by
    /// their keys (B-64), and values but the names of modifications end at their
    /// first blank (B-90). A list is read when a comma stands directly behind its
    /// number; only that of positions stands behind the first comma of its line.
    /// Masses of modifications, and what is printed, as Pfind3PepIdentIO::Load.
    ///
    /// \throws OpenMS::Exception::FileNotReadable with the path, label
    ///         "PfindTXTPepIdentIO::Load".
    void Load(std::vector<PeptideIdentification>& vMatches) override;

    void EndLoad() override;
    void InitSave(const std::string& path) override;
    void Save(const std::vector<PeptideIdentification>& vMatches) override;
    void EndSave() override;
    void GetResultNumberOfFile() override;
};

// ===== 7. SequestTXTPepIdentIO =============================================

/// A tab-separated export of a Sequest search, display name "Sequest (.txt)".
class VORLAN_API SequestTXTPepIdentIO : public PeptideIdentificationIO {
public:
    SequestTXTPepIdentIO();
    ~SequestTXTPepIdentIO() override;

    void InitLoad(const PepIdentSource& source) override;

    /// Appends one match for each row whose "Rank" is not above 1; empty lines
    /// are passed over, double quotes dropped. Modifications keep the order of
    /// the row, accessions the blanks around them (B-65). Prints nothing.
    ///
    /// \throws OpenMS::Exception::FileNotReadable with the path, label
    ///         "SequestTXTPepIdentIO::Load".
    /// \throws OpenMS::Exception::ElementNotFound with the column's name, same
    ///         label: a column is missing; nothing is appended.
    /// \throws OpenMS::Exception::ConversionError from OpenMS' toInt and
    ///         toDouble: a cell is not a number; the rows before it are
    ///         appended.
    void Load(std::vector<PeptideIdentification>& vMatches) override;

    void EndLoad() override;
    void InitSave(const std::string& path) override;
    void Save(const std::vector<PeptideIdentification>& vMatches) override;
    void EndSave() override;
    void GetResultNumberOfFile() override;
};

// ===== 8. PepIdentIOFactory ================================================

/// Makes readers of matches, and takes them back.
class VORLAN_API PepIdentIOFactory {
public:
    PepIdentIOFactory() = delete;

    /// A new reader that the caller owns and gives back to
    /// DesctroyPepIdentIO: that of sections 2 to 7 with the display name of the
    /// type, null for a type without a reader.
    static PeptideIdentificationIO* pGetPepIdentIO(PepIdentType::EPepIdentType type);

    /// Deletes the reader, if there is one, and sets the pointer to null.
    static void DesctroyPepIdentIO(PeptideIdentificationIO*& pReader); // sic
};

} // namespace Vorlan

#endif // VORLAN_PEPTIDEIDENTIFICATIONIO_H
