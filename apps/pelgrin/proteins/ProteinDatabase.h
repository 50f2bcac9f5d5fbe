// The proteins of a FASTA file, and how evidences name them.
#ifndef PELGRIN_PROTEINDATABASE_H
#define PELGRIN_PROTEINDATABASE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "FastaProteinDB.h"
#include "files/FastaAudit.h"

namespace pelgrin {

class ProteinDatabase {
public:
    /// Reads the file. Throws Failure, with file and line, for one that AuditFasta
    /// refuses.
    explicit ProteinDatabase(const std::string& path);
    ProteinDatabase(const ProteinDatabase&) = delete;
    ProteinDatabase& operator=(const ProteinDatabase&) = delete;

    const std::string& Path() const { return path_; }
    const FastaAudit& Audit() const { return audit_; }
    const Vorlan::CFastaProteinDB& Library() const { return library_; }
    const std::vector<Vorlan::CProtein>& Proteins() const { return library_.cProteins(); }

    /// The accession of a protein up to its first tab: for the library only a
    /// blank ends it, for engines both do.
    std::string_view NameOf(std::size_t protein) const;
    /// An earlier header has the same name: that one counts.
    bool IsRepeat(std::size_t protein) const { return isRepeat_[protein]; }

    /// The protein that an accession names, without the blanks around it; else
    /// what its text up to the first blank names.
    std::optional<std::size_t> Find(std::string_view accession) const;

    std::uint64_t Residues() const { return residues_; }
    std::uint64_t WithoutResidues() const { return withoutResidues_; }
    std::uint64_t Repeats() const { return repeats_; }
    /// A few of the names that Repeats counts, each once.
    const std::vector<std::string>& RepeatedNames() const { return repeatedNames_; }

private:
    void Load();
    void NameProteins();

    std::string path_;
    FastaAudit audit_;
    Vorlan::CFastaProteinDB library_;
    std::unordered_map<std::string_view, std::size_t> proteins_; ///< by name
    std::vector<bool> isRepeat_;
    std::vector<std::string> repeatedNames_;
    std::uint64_t residues_ = 0;
    std::uint64_t withoutResidues_ = 0;
    std::uint64_t repeats_ = 0;
};

} // namespace pelgrin

#endif // PELGRIN_PROTEINDATABASE_H
