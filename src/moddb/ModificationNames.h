// Finding modifications by name.
#ifndef VORLAN_MODDB_MODIFICATIONNAMES_H
#define VORLAN_MODDB_MODIFICATIONNAMES_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "ModificationDB.h"

namespace Vorlan {

/// The names of a list of records: a hash table of chains. A chain has its
/// entries in the order of the list. The names stay in the records; the caller
/// hands in the list with every question.
class ModificationNames {
public:
    using Records = std::vector<const CResidueModification*>;

    /// Adds the records behind those that were added before, under the values of the
    /// fields. Without fields they wait for the next call.
    void Add(const Records& records, unsigned fields);

    /// How many records were added with fields.
    std::size_t Added() const { return added_; }

    /// The numbers of the records under name, ascending, each once.
    std::vector<std::size_t> Find(const Records& records, std::string_view name) const;

private:
    struct Entry {
        std::uint32_t record;
        std::uint32_t field;
        std::uint32_t next; ///< in the chain
    };

    std::size_t ChainOf(std::string_view name) const;

    std::size_t added_ = 0; ///< records
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> heads_; ///< a power of two
};

} // namespace Vorlan

#endif // VORLAN_MODDB_MODIFICATIONNAMES_H
