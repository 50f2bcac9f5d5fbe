// The quick reader of a whole FASTA file, in one pass over blocks of it.
//
// Tells the same as CFastaParser::GetEntryNum and as many ReadOnePrteinEntry
// after it; tests/proteindb compares both on random files.
#ifndef VORLAN_PROTEINDB_FASTASCANNER_H
#define VORLAN_PROTEINDB_FASTASCANNER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "DataStructures.h"
#include "platform/Memory.h"

namespace Vorlan {

/// Takes the text of a file, without a byte order mark, in parts cut anywhere,
/// and appends its entries to the lists of a database.
class FastaScanner {
public:
    FastaScanner(std::vector<CProtein>& proteins, std::vector<std::uint64_t>& starts,
                 std::string& concatenation);

    /// Makes room for a file of so many bytes. Only saves time.
    void Expect(std::uint64_t fileSize);

    void Take(std::string_view part);
    /// Behind the last part.
    void Finish();

    /// The first line is no header, but a later one is: what was appended is void.
    bool HasFalseStart() const { return falseStart_ && !starts_.empty(); }

private:
    CProtein& AddProtein();
    void BeginLine(char first);
    // Both give how much of text they took: a line of a header, or the lines of a
    // sequence up to the next header, as far as text goes.
    std::size_t TakeHeader(std::string_view text);
    std::size_t TakeSequence(std::string_view text);
    void EndEntry();

    std::vector<CProtein>& proteins_;
    std::vector<std::uint64_t>& starts_; ///< one ahead of proteins_ within an entry
    std::string& concatenation_;
    std::uint64_t expected_ = 0; ///< bytes of the file
    std::uint64_t taken_ = 0;    ///< of them
    platform::PagesAhead proteinPages_, concatenationPages_;
    std::string header_;      ///< of the entry
    std::string residues_;    ///< of a part, before they are appended
    bool inHeader_ = false;   ///< the line is a header
    bool atLineStart_ = true; ///< the next character begins a line
    bool falseStart_ = false; ///< the first line is no header
};

} // namespace Vorlan

#endif // VORLAN_PROTEINDB_FASTASCANNER_H
