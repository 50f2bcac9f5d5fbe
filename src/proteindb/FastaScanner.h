// The quick reader of a whole FASTA file, in one pass over blocks of it.
//
// Tells the same as CFastaParser::GetEntryNum and as many ReadOnePrteinEntry
// after it; tests/proteindb compares both on random files.
#ifndef VORLAN_PROTEINDB_FASTASCANNER_H
#define VORLAN_PROTEINDB_FASTASCANNER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "DataStructures.h"

namespace Vorlan {

/// Takes the text of a file, without a byte order mark, in parts cut anywhere,
/// and appends its entries to the lists of a database.
class FastaScanner {
public:
    FastaScanner(std::vector<CProtein>& proteins, std::vector<std::uint64_t>& starts,
                 std::string& concatenation);

    void Take(std::string_view part);
    /// Behind the last part.
    void Finish();

    /// The first line is no header, but a later one is: what was appended is void.
    bool HasFalseStart() const { return falseStart_ && !starts_.empty(); }

private:
    void TakeLineStart(char first);
    void TakePiece(std::string_view piece);
    void EndEntry();

    std::vector<CProtein>& proteins_;
    std::vector<std::uint64_t>& starts_; ///< one ahead of proteins_ within an entry
    std::string& concatenation_;
    std::string header_;      ///< of the entry
    bool inHeader_ = false;   ///< the line is a header
    bool atLineStart_ = true; ///< the next character begins a line
    bool falseStart_ = false; ///< the first line is no header
};

} // namespace Vorlan

#endif // VORLAN_PROTEINDB_FASTASCANNER_H
