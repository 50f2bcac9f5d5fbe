// Proteins of a FASTA file, and which of them holds a peptide.
//
// Contents
//   1. AC::Node          node of a trie, for a search over the proteins
//   2. CFastaParser      reads entries from a stream, one at a time
//   3. CFastaProteinDB   all proteins of a file, and Query
//
// A host loads a file, searches the concatenation of all sequences with an
// algorithm of its own, and asks Query which protein a match lies in:
//
//     CFastaProteinDB database;
//     database.SetDBPath("proteins.fasta");
//     if (database.ReadFromFile()) {
//         const std::size_t found = database.cProteinString().find(peptide);
//         CProtein protein;
//         std::uint64_t start = 0; // of the peptide in the protein, from 0
//         const bool isKnown = found != std::string::npos
//             && database.Query(peptide, found + peptide.size() - 1, protein, start);
//     }
//
// What a file may hold is told in docs/formats/fasta.md. Problems are printed,
// each with a line end, in the words given below; nothing is thrown except
// std::bad_alloc. One object belongs to one thread at a time; the const members
// of a loaded database may be called from several.
#ifndef VORLAN_FASTAPROTEINDB_H
#define VORLAN_FASTAPROTEINDB_H

#include <cstdint>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "DataStructures.h"
#include "VorlanExport.h"

// ===== 1. AC::Node =========================================================

namespace AC {

/// A node of a trie in which a node knows its first child and its next sibling
/// ("brother"), with the failure link of Aho and Corasick (Commun. ACM 18, 1975).
///
/// Nodes know each other by their index in the host's list. A new node has index
/// 0 and character NUL everywhere: with the root at 0, an index of 0 means that
/// there is no child, or no brother.
class VORLAN_API Node {
public:
    /// Sets index and character ch of the first child.
    void SetChild(std::uint64_t index, char ch);
    /// Index and character of the first child.
    std::pair<std::uint64_t, char> GetChild() const;

    /// Sets index and character ch of the next sibling.
    void SetBrother(std::uint64_t index, char ch);
    /// Index and character of the next sibling.
    std::pair<std::uint64_t, char> GetBrother() const;

    /// Sets the failure link.
    void SetF(std::uint64_t index);
    /// The failure link: the node of the longest proper suffix in the trie.
    std::uint64_t GetF() const;

private:
    std::uint64_t tChild_ = 0;
    std::uint64_t tBrother_ = 0;
    char cChild_ = '\0';
    char cBrother_ = '\0';
    std::uint64_t tF_ = 0;
};

} // namespace AC

namespace Vorlan {

// ===== 2. CFastaParser =====================================================

/// Reads FASTA entries from an open stream. Holds no state.
///
/// Lines may have any length. A UTF-8 byte order mark at the start of the stream
/// is passed over.
class VORLAN_API CFastaParser {
public:
    /// Number of lines of the whole stream that begin with ">". The stream stands
    /// at its start then, in a good state. One that is not open prints "Can not
    /// open file!" on standard error and gives 0.
    static std::uint64_t GetEntryNum(std::ifstream& stream);

    /// Reads the entry at which stream stands into protein, up to the next line that begins
    /// with ">". False, with three empty texts, when the stream is not open or at
    /// its end, and for a line that does not begin with ">"; that one is read and
    /// prints "FASTA Format error!One Protein Entry must start with char '>'!" on
    /// standard output.
    static bool ReadOnePrteinEntry(CProtein& protein, std::ifstream& stream); // sic

    // The steps of ReadOnePrteinEntry.

    /// Gives protein its accession: what stands in header, the line with its ">" and
    /// without carriage returns at its end, between ">" and the first blank (B-75). All of
    /// it when there is no blank.
    static void ReadEntryAC(CProtein& protein, const std::string& header);
    /// Gives protein its description: what stands behind the first blank of header,
    /// as ChangeInvalidChar leaves it.
    static void ReadEntryDE(CProtein& protein, const std::string& header);
    /// Appends the letters A to Z of the lines of stream, up to the next header, to
    /// the sequence of protein; everything else is dropped, lower-case letters too (B-76).
    static void ReadEntrySQ(CProtein& protein, std::ifstream& stream);
    /// The same for a text, sequence, instead of a protein; from stream, too.
    static void _ReadEntrySQ(std::string& sequence, std::ifstream& stream);

    /// Makes a blank of each character of code 1, "<" and "&" (B-77).
    static void ChangeInvalidChar(std::string& text);
    /// Makes a blank of each ch in text.
    static void _ChangeChar(std::string& text, char ch);
};

// ===== 3. CFastaProteinDB ==================================================

/// The proteins of one FASTA file, and their concatenation.
///
/// In the concatenation every sequence is followed by one ";", so protein i + 1
/// begins one character behind the end of protein i. Positions count from 0.
class VORLAN_API CFastaProteinDB {
public:
    /// An empty database without name and path.
    CFastaProteinDB();
    ~CFastaProteinDB();
    CFastaProteinDB(const CFastaProteinDB&) = delete;
    CFastaProteinDB& operator=(const CFastaProteinDB&) = delete;

    /// A name for the host's use.
    void SetDBName(const std::string& name);
    std::string GetDBName() const;
    /// The file that the next OpenFile or ReadFromFile opens.
    void SetDBPath(const std::string& path);
    std::string GetDBPath() const;

    /// Opens the file, closing what was open. False, with a message on standard
    /// output: "DBPath empty!" without a path, "Can't find fasta file!" for one
    /// that cannot be opened, a folder among them.
    bool OpenFile();
    /// Closes the file, if one is open.
    void CloseFile();

    /// Loads the whole file in place of what was loaded before, which needs its
    /// memory until then. A file without any header line gives true and no
    /// proteins (B-78).
    ///
    /// False when the file cannot be opened: the message of OpenFile, then "Can
    /// not open Fasta file!" on standard error. False when the first line is no
    /// header but a later one is: the message of ReadOnePrteinEntry, then "Error:
    /// Fasta file format is wrong!", both on standard output. What was loaded
    /// before stays then.
    bool ReadFromFile();

    /// Number of proteins loaded.
    std::uint64_t GetEntryNum() const;

    /// A copy of the concatenation.
    std::string GetProteinString() const;

    /// Finds the protein in which a match of peptide lies.
    /// \param peptide         only its length is used
    /// \param endPos          position of its last residue in the concatenation
    /// \param protein         gets a copy of the protein
    /// \param startInProtein  gets endPos less the protein's start less the length
    ///                        of peptide plus 1: where its first residue stands in
    ///                        the protein, from 0
    ///
    /// False, and nothing is changed, for an empty peptide, for an empty database,
    /// and for an endPos so far behind the end of the concatenation that its bin of
    /// 2000 characters does not exist. Elsewhere nothing is checked: a peptide that
    /// is too long begins below 0, modulo 2^64. A match of ONE residue at the start
    /// of a protein is mostly told to lie in the protein before (B-79).
    bool Query(std::string peptide, std::uint64_t endPos, CProtein& protein,
               std::uint64_t& startInProtein) const;

    /// The proteins in file order, and the concatenation itself. Good until the
    /// next ReadFromFile that gives true.
    const std::vector<CProtein>& cProteins() const;
    const std::string& cProteinString() const;

protected:
    /// Makes the bin table from starts and concatenation.
    void CreateHashTable();

    std::string strDBName_;              ///< see SetDBName
    std::string strDBPath_;              ///< see SetDBPath
    std::vector<CProtein> vProteins_;    ///< in file order
    std::vector<std::uint64_t> vStarts_; ///< of each protein in the concatenation
    std::string strProteins_;            ///< the concatenation
    std::vector<std::uint64_t> vBins_;   ///< of each bin the protein to begin with
    std::uint64_t tBinWidth_;            ///< 2000
    std::ifstream ifsFasta_;             ///< what OpenFile opened
};

} // namespace Vorlan

#endif // VORLAN_FASTAPROTEINDB_H
