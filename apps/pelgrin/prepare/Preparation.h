// Canonical copies of inputs, which the library reads right.
#ifndef PELGRIN_PREPARATION_H
#define PELGRIN_PREPARATION_H

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "files/FileState.h"
#include "files/ScratchFolder.h"
#include "prepare/Copy.h"
#include "prepare/KeptInputs.h"
#include "prepare/MgfCopy.h"
#include "prepare/ResultCopies.h"
#include "run/DatasetResolver.h"

namespace pelgrin {

/// Makes the copies of one call: spectra first, since results name them.
class Preparation {
public:
    /// Copies go below the folder out, which is made when it is missing. They never
    /// take the place of an input, nor of others, which are read elsewhere.
    explicit Preparation(std::string out, std::vector<std::string> others = {})
        : out_(std::move(out)), others_(std::move(others))
    {
    }

    /// Adds a file or a folder of DTA files. Its kind is looked for when it is not
    /// given. Throws Failure for one that cannot be read, or is of no kind.
    void Add(const std::string& input, std::optional<FileKind> kind = std::nullopt);

    /// Results call the spectra of this input so, whatever its name is.
    void NameDataset(const std::string& name, const std::string& input);

    /// Makes all copies. Throws Failure for what cannot be read, for an input that has
    /// changed since it was added, for an output that is an input, and for two of one
    /// name. No copy is left of an input that has changed.
    void Run();

    /// Writes prepared.json, and titles.tsv when there are MGF files.
    void WriteReports() const;

    /// In the order of Add.
    const std::vector<Copy>& Copies() const { return copies_; }
    /// Inputs that nobody named: a peptides.txt beside its msms.txt, which may be packed.
    const std::vector<std::string>& Beside() const { return beside_; }
    /// The paths of a copy, in out.
    std::vector<std::string> PathsOf(const Copy& copy) const;

private:
    /// An input, and its plain text in scratch or itself.
    struct Input {
        std::string plain;
        std::string name; ///< of the copy
        FileState state;
        std::filesystem::path folder; ///< of a file, whatever links lead to it
    };

    void CopyOne(std::size_t i);
    void CopyPlain(std::size_t i);
    void CopyMatches(std::size_t i);
    void CopyMaxQuantPair(std::size_t i);
    std::optional<std::size_t> PeptidesOf(std::size_t i) const;
    std::string FolderOfPair(std::size_t i) const;
    void CheckPeptides(std::size_t i) const;
    void CheckUnchanged(std::size_t i, const std::string& path, const FileState& state) const;
    /// The path of an output. Throws Failure for one that is taken, or an input.
    std::string Claim(std::size_t i, const std::string& relative);
    std::optional<std::string> NewNameOf(const std::string& dataset,
                                         const std::string& spectrum) const;

    void ListInputs();
    void KeepFoldersOfMatches() const;

    std::string out_;
    std::vector<std::string> others_;
    KeptInputs kept_;
    ScratchFolder scratch_;
    std::vector<Copy> copies_;
    std::vector<Input> inputs_;
    std::vector<std::string> beside_;
    std::map<std::string, std::string> claimed_; ///< relative path -> input
    std::map<std::string, std::string> given_;   ///< dataset name -> input
    std::vector<std::string> datasets_;          ///< names of the copies of spectra
    std::vector<TitleChanges> titles_;           ///< of these
    std::optional<DatasetResolver> resolver_;
};

/// Records are missing in a copy, or a file was cut off.
bool HasLosses(const std::vector<Copy>& copies);

/// A warning for every reason with records left out, by input.
void WarnOfLosses(const std::vector<Copy>& copies);

} // namespace pelgrin

#endif // PELGRIN_PREPARATION_H
