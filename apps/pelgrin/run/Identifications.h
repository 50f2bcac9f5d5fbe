// Step 3 of a run: the matches of the tables.
#ifndef PELGRIN_IDENTIFICATIONS_H
#define PELGRIN_IDENTIFICATIONS_H

#include <cstddef>
#include <string>
#include <vector>

#include "run/Counts.h"
#include "run/Parameters.h"

namespace pelgrin {

/// The matches of one table, records begin to end - 1 of all. The row of the
/// first one is line 2.
struct ResultFile {
    std::string path;
    std::size_t begin = 0;
    std::size_t end = 0;
};

struct Identifications {
    std::vector<Vorlan::PeptideIdentification> records;
    std::vector<ResultFile> files; ///< good while all records are there
};

/// Reads all records and counts the rows that were lost. Throws Failure with
/// file, line and what was expected.
Identifications ReadIdentifications(const Parameters& parameters, Counts& counts);

} // namespace pelgrin

#endif // PELGRIN_IDENTIFICATIONS_H
