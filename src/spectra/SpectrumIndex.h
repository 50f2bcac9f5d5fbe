// The index of a file of spectra: name -> position, in byte-wise order.
//
// A sorted array instead of a map with a node per name: the names lie one
// behind the other in blocks, an entry takes 24 bytes, and names that are a
// part of another one are not stored again. Held by
// SpectrumIndex.AgreesWithStdMap.
#ifndef VORLAN_SPECTRA_SPECTRUMINDEX_H
#define VORLAN_SPECTRA_SPECTRUMINDEX_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace Vorlan {

class SpectrumIndex {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    SpectrumIndex();
    ~SpectrumIndex();

    void Clear();

    /// Keeps a copy of text and gives it back. Names are added out of it.
    /// At most kMaxText characters, none of them NUL.
    std::string_view Keep(std::string_view text);
    static constexpr std::size_t kMaxText = std::size_t{128} * 1024;

    /// Adds a name, a part of a text that Keep gave. Positions never descend
    /// from one call to the next.
    void Add(std::string_view name, std::uint64_t position);

    /// Sorts what was added. Of equal names the one added last stays.
    void Finish();

    // After Finish. Entries are counted from 0, in the order of their names.
    std::size_t Size() const { return entries_.size(); }
    std::size_t Find(std::string_view name) const; ///< kNone for an unknown name
    std::string_view Name(std::size_t entry) const;
    std::uint64_t Position(std::size_t entry) const { return entries_[entry].position; }

private:
    struct Entry {
        std::uint64_t key; ///< eight characters of the name, for sorting
        const char* name;
        std::uint64_t position : 46; ///< files up to 64 TiB
        std::uint64_t length : 18;   ///< of the name
    };

    static std::uint64_t KeyAt(const Entry& entry, std::size_t depth);
    void SortByName();
    void DropRepeated();

    std::vector<std::unique_ptr<char[]>> blocks_;
    std::size_t blockFree_ = 0; ///< free bytes at the end of the last block
    std::vector<Entry> entries_;
};

} // namespace Vorlan

#endif // VORLAN_SPECTRA_SPECTRUMINDEX_H
