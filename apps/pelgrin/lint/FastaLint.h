// What of a FASTA file the library reads otherwise than it is meant.
#ifndef PELGRIN_FASTALINT_H
#define PELGRIN_FASTALINT_H

#include <string>

#include "lint/Findings.h"

namespace pelgrin {

/// Holds a number for each accession. Throws Failure when it cannot be read.
void LintFasta(const std::string& path, Findings& findings);

} // namespace pelgrin

#endif // PELGRIN_FASTALINT_H
