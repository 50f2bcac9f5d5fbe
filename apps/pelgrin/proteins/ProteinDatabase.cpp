#include "proteins/ProteinDatabase.h"

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "proteins/Examples.h"

namespace pelgrin {

ProteinDatabase::ProteinDatabase(const std::string& path) : path_(path), audit_(AuditFasta(path))
{
    Load();
    NameProteins();
}

void ProteinDatabase::Load()
{
    library_.SetDBPath(path_);
    if (!library_.ReadFromFile() || library_.GetEntryNum() != audit_.headers) {
        throw Failure(fmt::format("{}: expected {} proteins, as counted before, but {} were read: "
                                  "the file was changed, or cannot be read to its end",
                                  path_, audit_.headers, library_.GetEntryNum()));
    }
}

void ProteinDatabase::NameProteins()
{
    const std::size_t count = Proteins().size();
    proteins_.reserve(count);
    isRepeat_.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t residues = Proteins()[i].strSequence.size();
        residues_ += residues;
        withoutResidues_ += residues == 0 ? 1 : 0;
        isRepeat_[i] = !proteins_.emplace(NameOf(i), i).second;
        if (isRepeat_[i]) {
            ++repeats_;
            AddExample(std::string(NameOf(i)), repeatedNames_);
        }
    }
}

std::string_view ProteinDatabase::NameOf(std::size_t protein) const
{
    const std::string_view accession = Proteins()[protein].strAccession;
    return accession.substr(0, accession.find('\t'));
}

std::optional<std::size_t> ProteinDatabase::Find(std::string_view accession) const
{
    const std::string_view whole = WithoutBlanks(accession);
    for (const std::string_view name : {whole, whole.substr(0, whole.find(' '))}) {
        const auto hit = proteins_.find(name);
        if (hit != proteins_.end()) {
            return hit->second;
        }
    }
    return std::nullopt;
}

} // namespace pelgrin
