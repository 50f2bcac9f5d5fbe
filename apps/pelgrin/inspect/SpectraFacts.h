// What stands in a folder of DTA files, and in files of spectra that are not read.
#ifndef PELGRIN_SPECTRAFACTS_H
#define PELGRIN_SPECTRAFACTS_H

#include <cstdint>
#include <string>

#include "files/FileKind.h"
#include "inspect/Facts.h"

namespace pelgrin {

struct DtaFacts {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
    /// Charges in the names "run.5.5.2.dta".
    Tally charges;
};

/// Throws Failure when the folder cannot be read.
DtaFacts DtaFactsOf(const std::string& folder);
void Tell(const DtaFacts& dta, Facts& facts);

struct XmlSpectraFacts {
    std::string version; ///< of the format; empty: not told
    std::uint64_t spectra = 0;
};

/// Of mzML and mzXML. Throws Failure when the file cannot be read.
XmlSpectraFacts XmlSpectraFactsOf(FileKind kind, const std::string& path);
void Tell(const XmlSpectraFacts& spectra, Facts& facts);

} // namespace pelgrin

#endif // PELGRIN_SPECTRAFACTS_H
