// What stands in files of modifications and of parameters: entries and their sorts.
#ifndef PELGRIN_ENTRYFACTS_H
#define PELGRIN_ENTRYFACTS_H

#include <cstdint>
#include <optional>
#include <string>

#include "files/FileKind.h"
#include "inspect/Facts.h"

namespace pelgrin {

struct EntryFacts {
    std::string engine; ///< of a search engine's parameters; empty: not told
    std::string version;
    std::uint64_t entries = 0;             ///< modifications, or parameters
    std::optional<std::uint64_t> declared; ///< how many entries the file says it has
    Tally sorts;                           ///< of entries, or of what they are made of
};

/// A file of the kinds Unimod, ModificationTable, PFind3Modifications,
/// MsgfModifications, ParameterFile and EngineParameters. Throws Failure when it
/// cannot be read.
EntryFacts EntryFactsOf(FileKind kind, const std::string& path);

void Tell(const EntryFacts& entries, Facts& facts);

} // namespace pelgrin

#endif // PELGRIN_ENTRYFACTS_H
