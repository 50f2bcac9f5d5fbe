// One result file, read by the library in this very process.
#ifndef PELGRIN_LIBRARYREADING_H
#define PELGRIN_LIBRARYREADING_H

#include <stdexcept>
#include <string>
#include <vector>

#include "files/ResultAudit.h"

namespace pelgrin {

/// Why a reader came to no end. The text names no file and no line: the reader may
/// have had a piece of the file.
class ReadingFault : public std::runtime_error {
public:
    /// Whole: nothing is known of the records given so far. AtRecord: all records
    /// before the faulty one were given.
    enum class Kind { Whole, AtRecord };

    ReadingFault(Kind kind, const std::string& text) : std::runtime_error(text), kind_(kind) {}
    Kind What() const { return kind_; }

private:
    Kind kind_;
};

/// Appends the records of a file. Throws ReadingFault; the records that were given
/// before stay. Throws Failure when OpenMS lacks its own files, so that no record
/// can be read. May end the process where the library does.
void LoadRecords(Vorlan::PepIdentType::EPepIdentType format, const ResultFiles& files,
                 std::vector<Vorlan::PeptideIdentification>& records);

} // namespace pelgrin

#endif // PELGRIN_LIBRARYREADING_H
