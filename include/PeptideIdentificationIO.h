// Readers of peptide-spectrum matches, and the writer of the library's own
// result table.
//
// Contents
//   1. PeptideIdentificationIO   the interface of every reader, in slot order
//   2. TulkTXTPepIdentIO         the native result table, read and written
//                                (docs/formats/native-table.md)
//   3. PepIdentIOFactory         makes the reader for a PepIdentType
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
// Exceptions are those of OpenMS, with the unit name "PeptideIdentificationIO";
// docs/errors.md lists them all.
#ifndef VORLAN_PEPTIDEIDENTIFICATIONIO_H
#define VORLAN_PEPTIDEIDENTIFICATIONIO_H

#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <OpenMS/DATASTRUCTURES/String.h>

#include "DataStructures.h"
#include "VorlanExport.h"

namespace Vorlan {

class LineReader;

// ===== 1. PeptideIdentificationIO ==========================================

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

    virtual void EndLoad() = 0;

    /// Opens path for writing, emptying it. A failure is reported by Save.
    virtual void InitSave(const std::string& path) = 0;

    virtual void Save(const std::vector<PeptideIdentification>& vMatches) = 0;

    virtual void EndSave() = 0;

    /// Counts the result rows of the file, for the progress display.
    virtual void GetResultNumberOfFile() = 0;

    PepIdentType::EPepIdentType eGetType() const;

protected:
    explicit PeptideIdentificationIO(PepIdentType::EPepIdentType type);

    OpenMS::String strFilePath_;                ///< as composed, backslashes included
    std::vector<OpenMS::String> vAuxFilePaths_; ///< for readers of more than one file
    PepIdentType::EPepIdentType eType_;
    std::unique_ptr<LineReader> pInput_; ///< bounded lines of the input; never null
    std::ofstream ofsOutput_;
    std::uint64_t tResultCount_ = 0; ///< rows counted, for progress only
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

// ===== 3. PepIdentIOFactory ================================================

class VORLAN_API PepIdentIOFactory {
public:
    PepIdentIOFactory() = delete;

    /// A new reader that the caller owns and gives back to
    /// DesctroyPepIdentIO: TulkTXTPepIdentIO for PepIdentType::CalvexTxt, null
    /// for a type without a reader.
    static PeptideIdentificationIO* pGetPepIdentIO(PepIdentType::EPepIdentType type);

    /// Deletes the reader, if there is one, and sets the pointer to null.
    static void DesctroyPepIdentIO(PeptideIdentificationIO*& pReader); // sic
};

} // namespace Vorlan

#endif // VORLAN_PEPTIDEIDENTIFICATIONIO_H
