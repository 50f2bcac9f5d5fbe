// What stands in a tab-separated table: its columns against those that a reader needs.
#ifndef PELGRIN_TABLEFACTS_H
#define PELGRIN_TABLEFACTS_H

#include <cstdint>
#include <string>
#include <vector>

#include "files/FileKind.h"
#include "inspect/Decoys.h"
#include "inspect/Facts.h"

namespace pelgrin {

struct TableFacts {
    FileKind kind = FileKind::OtherTable;
    std::vector<std::string> columns; ///< of the header line
    std::size_t needed = 0;           ///< columns that the library's reader needs
    std::vector<std::string> missing; ///< of these, as '"A" or "B"'
    /// Missing ones that are there in another letter case: '"A", here "a"'.
    std::vector<std::string> otherCase;
    std::uint64_t rows = 0;   ///< lines below the header that are not empty
    Decoys decoys;            ///< of the first accession of each row
    std::string decoyColumn;  ///< a column that marks decoys; empty: none
    std::uint64_t marked = 0; ///< rows that it marks
};

/// One pass. Throws Failure when the file cannot be read.
TableFacts TableFactsOf(FileKind kind, const std::string& path);

void Tell(const TableFacts& table, Facts& facts);

/// The program that writes such a table; empty when many do.
std::string EngineOfTable(FileKind kind);

/// The results of pFind 2.8, which are sections of lines.
struct PFind28Facts {
    std::uint64_t sections = 0;
    std::uint64_t candidates = 0; ///< sections with a first candidate
    Decoys decoys;                ///< of the first accession of these
};

/// Throws Failure when the file cannot be read.
PFind28Facts PFind28FactsOf(const std::string& path);

void Tell(const PFind28Facts& sections, Facts& facts);

} // namespace pelgrin

#endif // PELGRIN_TABLEFACTS_H
