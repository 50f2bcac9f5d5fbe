// Which of many proteins, laid end to end, holds a position.
#ifndef VORLAN_PROTEINDB_PROTEINSTARTS_H
#define VORLAN_PROTEINDB_PROTEINSTARTS_H

#include <cstdint>
#include <vector>

namespace Vorlan {

/// A table with one entry for each binWidth characters of the concatenation and
/// one for what is left: the first protein that begins in that bin or behind it,
/// the last protein where there is none.
/// \param starts  positions at which the proteins begin, ascending, below length;
///                at least one
std::vector<std::uint64_t> MakeBins(const std::vector<std::uint64_t>& starts, std::uint64_t length,
                                    std::uint64_t binWidth);

/// The protein that is said to hold endPos, the end of a match, walking from
/// protein first (from a bin) on: the last one that begins BEFORE endPos (B-79), but
/// first itself when it begins at endPos.
std::uint64_t ProteinAt(const std::vector<std::uint64_t>& starts, std::uint64_t first,
                        std::uint64_t endPos);

} // namespace Vorlan

#endif // VORLAN_PROTEINDB_PROTEINSTARTS_H
