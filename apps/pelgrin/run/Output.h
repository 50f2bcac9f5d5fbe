// Step 5 of a run: the files in the output folder.
#ifndef PELGRIN_OUTPUT_H
#define PELGRIN_OUTPUT_H

#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "files/NewFile.h"
#include "run/Annotation.h"
#include "run/MappedProteins.h"
#include "run/NativeTable.h"
#include "run/Parameters.h"

namespace pelgrin {

/// A text file that tells when writing fails.
class TextFile {
public:
    /// Empties or creates the file. Every member throws Failure with the path
    /// when the file cannot be written.
    explicit TextFile(std::string path);
    void Write(std::string_view text);
    void Close();

private:
    void Check(bool ok) const;

    std::string path_;
    std::ofstream file_;
};

class MatchedSpectra;

/// Throws Failure when the output folder or a file in it cannot be written, as
/// far as that is known before. Changes nothing.
void CheckOutput(const Parameters& parameters);

/// The same, and makes the folder.
void MakeOutputFolder(const Parameters& parameters);

/// The files of a run, written under other names and renamed when all are whole.
/// Every member throws Failure with the path of the file that cannot be written.
class OutputFolder {
public:
    /// Makes the folder. Throws before touching anything when MakeOutputFolder throws.
    explicit OutputFolder(const Parameters& parameters);
    /// Removes what has not got its name.
    ~OutputFolder();

    /// Adds a spectrum to matched.mgf unless its file and name are there.
    void WriteSpectrum(const std::string& dataset, Vorlan::Spectrum& spectrum);
    void WriteAnnotation(const Vorlan::PeptideIdentification& record, const Annotation& annotation);
    /// Writes proteins.tsv, for a run with a protein database.
    void WriteProteins(MappedProteins& proteins,
                       const std::vector<Vorlan::PeptideIdentification>& records);
    /// Writes results.txt and closes the files of spectra and annotations. Gives what
    /// of the records is not in results.txt.
    NotHeldCounts Finish(const std::vector<Vorlan::PeptideIdentification>& records);
    /// Writes a whole file of the folder, such as "summary.json".
    void WriteText(const char* name, const std::string& text);
    /// Gives all files their names; that of the last one of FileNamesOf comes last.
    void TakePlaces();

    std::uint64_t SpectraWritten() const { return written_.size(); }

private:
    NewFile& FileOf(const char* name);

    std::string folder_;
    std::vector<std::pair<std::string, std::unique_ptr<NewFile>>> files_; ///< by name
    std::optional<TextFile> annotations_;
    std::unique_ptr<MatchedSpectra> matched_;
    std::unordered_set<std::string> written_; ///< dataset, line feed, spectrum name
};

/// The lines of one record in annotations.tsv.
std::string AnnotationLines(const Vorlan::PeptideIdentification& record,
                            const Annotation& annotation);

/// The header line of annotations.tsv.
extern const std::string_view kAnnotationHeader;

} // namespace pelgrin

#endif // PELGRIN_OUTPUT_H
