// Records as a native table that takes its place when it is whole.
#ifndef PELGRIN_NATIVETABLE_H
#define PELGRIN_NATIVETABLE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "files/NewFile.h"
#include "files/ScratchFolder.h"
#include "run/Parameters.h"

namespace pelgrin {

/// Checks the files that a command writes: the table, the one of proteins, rejects
/// and ledger, as far as they are asked for. Throws Failure for one that is an input
/// or cannot be written, and for two that are one file.
void CheckNewFiles(const Parameters& parameters, const std::string& proteinTable = {});

/// What of the records a native table has no place for, counted record by record.
class NotHeldCounts {
public:
    void Add(const std::vector<Vorlan::PeptideIdentification>& records);
    /// A kind of what belongs into the table.
    struct Loss {
        const char* key = ""; ///< "table_separator"
        const char* text = "";
        std::uint64_t count = 0;
        std::uint64_t firstLine = 0;
    };
    std::vector<Loss> Losses() const;
    /// The records that were counted.
    std::uint64_t Records() const { return records_; }
    /// Warns of that, with the line in the table at path where it is first.
    void Warn(const std::string& path) const;
    /// Lines of a report.
    std::string Text() const;

private:
    struct Kind {
        std::uint64_t count = 0;
        std::uint64_t firstLine = 0;
    };

    static constexpr std::size_t kKinds = 10;
    std::array<Kind, kKinds> kinds_{};
    std::uint64_t nextLine_ = 2; ///< behind the header
    std::uint64_t records_ = 0;
};

/// The keys of all kinds of NotHeldCounts::Loss.
std::vector<std::string> TableLossClasses();

/// Lets the library write all records, and warns of what belongs into the table at
/// path and does not read back. Throws Failure when it cannot write.
NotHeldCounts WriteNativeTable(const std::vector<Vorlan::PeptideIdentification>& records,
                               const NewFile& table, const std::string& path);

/// A native table that is written some records after the other.
class NativeTableParts {
public:
    /// The library writes every part into scratch first: it heads each with the
    /// names of the columns.
    NativeTableParts(const NewFile& table, std::string path, ScratchFolder& scratch);
    ~NativeTableParts();
    NativeTableParts(const NativeTableParts&) = delete;
    NativeTableParts& operator=(const NativeTableParts&) = delete;

    /// Every member throws Failure when the table cannot be written.
    void Add(const std::vector<Vorlan::PeptideIdentification>& records);
    /// Warns as WriteNativeTable.
    NotHeldCounts Close();

private:
    [[noreturn]] void NotWritable() const;

    std::string path_;
    std::string part_;
    std::ofstream table_;
    bool hasHeader_ = false;
    NotHeldCounts notHeld_;
};

} // namespace pelgrin

#endif // PELGRIN_NATIVETABLE_H
