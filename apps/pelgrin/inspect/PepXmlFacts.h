// What stands in a pepXML file: its runs with their searches.
#ifndef PELGRIN_PEPXMLFACTS_H
#define PELGRIN_PEPXMLFACTS_H

#include <cstdint>
#include <string>
#include <vector>

#include "inspect/Decoys.h"
#include "inspect/Facts.h"

namespace pelgrin {

/// One msms_run_summary. Texts stand as they are written.
struct PepXmlRun {
    std::string baseName;
    std::string engine; ///< as EngineOf tells it
    std::string version;
    std::string enzyme;
    std::string database;
    std::uint64_t queries = 0;
    std::uint64_t hits = 0;
    /// "C +57.021464 fixed", at most kMostModifications.
    std::vector<std::string> modifications;

    static constexpr std::size_t kMostModifications = 100;
};

struct PepXmlFacts {
    std::vector<PepXmlRun> runs; ///< the first kMostRuns
    std::uint64_t runCount = 0;
    std::uint64_t queries = 0;
    std::uint64_t hits = 0;
    Decoys decoys; ///< of the first protein of each hit

    static constexpr std::size_t kMostRuns = 100;
};

/// One pass over the tags. Throws Failure when the file cannot be read.
PepXmlFacts PepXmlFactsOf(const std::string& path);

void Tell(const PepXmlFacts& pepXml, Facts& facts);

} // namespace pelgrin

#endif // PELGRIN_PEPXMLFACTS_H
