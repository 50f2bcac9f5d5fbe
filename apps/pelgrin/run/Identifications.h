// Step 3 of a run: the matches of the result files.
#ifndef PELGRIN_IDENTIFICATIONS_H
#define PELGRIN_IDENTIFICATIONS_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "files/ResultAudit.h"
#include "run/Counts.h"
#include "run/Parameters.h"
#include "run/Rejects.h"

namespace pelgrin {

/// The matches of one result file, records begin to end - 1 of all.
struct ResultFile {
    ResultFiles files;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::vector<std::uint64_t> rejected; ///< records of the file that were not given
    ResultAudit audit;
    std::uint64_t held = 0; ///< see HeldIn

    /// "psms.txt:12" of one of all records.
    std::string PlaceOf(Vorlan::PepIdentType::EPepIdentType format, std::size_t record) const;
};

/// What was read, without the records themselves.
struct ResultsRead {
    Vorlan::PepIdentType::EPepIdentType format = Vorlan::PepIdentType::Unknown;
    std::vector<ResultFile> files; ///< good while all records are there
    Rejects rejects;
};

struct Identifications : ResultsRead {
    std::vector<Vorlan::PeptideIdentification> records;
};

/// A result file of a format with its second file: the one that was given, else
/// the one that the format has by default.
ResultFiles FilesOf(Vorlan::PepIdentType::EPepIdentType format, const std::string& path,
                    const std::string& second = {});

/// Gives some records after the other.
using TakeRecords = std::function<void(std::vector<Vorlan::PeptideIdentification>&&)>;

/// Reads all records, each file in a process of its own, and counts what is in the
/// files and gave none. Masses of termini that a reader found a name for stand among
/// the modifications of their records. A file or a record that cannot be read stands
/// among the rejects. Throws Failure when nothing at all could be read, with file,
/// line and what was expected of the first one.
ResultsRead ReadResults(const Parameters& parameters, Counts& counts, const TakeRecords& take);

/// The same with all records at once.
Identifications ReadIdentifications(const Parameters& parameters, Counts& counts);

} // namespace pelgrin

#endif // PELGRIN_IDENTIFICATIONS_H
