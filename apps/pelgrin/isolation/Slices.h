// Pieces of a result file that its reader takes for a whole one.
//
// A piece has the head of the file, some of its records and what closes the file.
// Every record is read as in the whole file: readers of tables take each row by
// itself, those of pepXML each query, that of pFind 2.8 each section. The pair of
// MaxQuant gets its "MS/MS IDs" counted anew.
#ifndef PELGRIN_SLICES_H
#define PELGRIN_SLICES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "files/ResultAudit.h"

namespace pelgrin {

class Slices {
public:
    /// Pieces of files will stand in folder, which exists, under the names of files.
    /// Throws Failure when a file cannot be read.
    Slices(Vorlan::PepIdentType::EPepIdentType format, const ResultFiles& files,
           const std::string& folder);

    /// Writes the records begin to end - 1 of places, over the piece before.
    /// Throws Failure when that cannot be done: the disk is full.
    ResultFiles Write(const std::vector<RecordPlace>& places, std::size_t begin,
                      std::size_t end) const;

    /// What a record calls its spectrum; empty when that cannot be seen.
    std::string SpectrumAt(const RecordPlace& place) const;

private:
    void FindHead();
    void WriteRecords(const std::string& path, const std::vector<RecordPlace>& places,
                      std::size_t begin, std::size_t end) const;
    void WritePeptides(const std::string& path, const std::vector<RecordPlace>& places,
                       std::size_t begin, std::size_t end) const;

    Vorlan::PepIdentType::EPepIdentType format_;
    ResultFiles files_;
    ResultFiles pieces_;
    std::uint64_t headEnd_ = 0;       ///< of the bytes in front of all records
    std::uint64_t secondHeadEnd_ = 0; ///< the same of peptides.txt
    std::size_t ids_ = 0;             ///< the column "MS/MS IDs" of it
};

} // namespace pelgrin

#endif // PELGRIN_SLICES_H
