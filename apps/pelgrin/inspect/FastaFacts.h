// What stands in a FASTA file.
#ifndef PELGRIN_FASTAFACTS_H
#define PELGRIN_FASTAFACTS_H

#include <cstdint>
#include <string>
#include <string_view>

#include "inspect/Decoys.h"
#include "inspect/Facts.h"

namespace pelgrin {

/// "UniProt" of "sp|P12345|NAME", behind a decoy front or not; else "NCBI (gi)",
/// "NCBI (RefSeq)", "Ensembl", or "other".
std::string HeaderStyleOf(std::string_view accession);

struct FastaFacts {
    std::uint64_t entries = 0; ///< lines that begin with ">"
    Tally styles;              ///< of their headers
    Decoys decoys;
};

/// One pass. Throws Failure when the file cannot be read.
FastaFacts FastaFactsOf(const std::string& path);

void Tell(const FastaFacts& fasta, Facts& facts);

} // namespace pelgrin

#endif // PELGRIN_FASTAFACTS_H
