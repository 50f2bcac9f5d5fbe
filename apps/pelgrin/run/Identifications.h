// Step 3 of a run: the matches of the result files.
#ifndef PELGRIN_IDENTIFICATIONS_H
#define PELGRIN_IDENTIFICATIONS_H

#include <cstddef>
#include <string>
#include <vector>

#include "files/ResultAudit.h"
#include "run/Counts.h"
#include "run/Parameters.h"

namespace pelgrin {

/// The matches of one result file, records begin to end - 1 of all.
struct ResultFile {
    ResultFiles files;
    std::size_t begin = 0;
    std::size_t end = 0;
};

struct Identifications {
    Vorlan::PepIdentType::EPepIdentType format = Vorlan::PepIdentType::Unknown;
    std::vector<Vorlan::PeptideIdentification> records;
    std::vector<ResultFile> files; ///< good while all records are there
};

/// A result file of a format with its second file: the one that was given, else
/// the one that the format has by default.
ResultFiles FilesOf(Vorlan::PepIdentType::EPepIdentType format, const std::string& path,
                    const std::string& second = {});

/// Reads all records, and counts what is in the files and gave none. Masses of
/// termini that a reader found a name for stand among the modifications of
/// their records. Throws Failure with file, line and what was expected.
Identifications ReadIdentifications(const Parameters& parameters, Counts& counts);

} // namespace pelgrin

#endif // PELGRIN_IDENTIFICATIONS_H
