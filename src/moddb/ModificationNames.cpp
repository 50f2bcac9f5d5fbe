#include "moddb/ModificationNames.h"

#include <functional>
#include <limits>
#include <new>

namespace Vorlan {

namespace {

constexpr std::uint32_t kEnd = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint32_t kFields = 4;

std::string_view NameIn(const CResidueModification& record, std::uint32_t field)
{
    switch (field) {
    case 0: return record.getId();
    case 1: return record.getFullId();
    case 2: return record.getFullName();
    default: return record.getUniModAccession();
    }
}

} // namespace

void ModificationNames::Add(const Records& records, unsigned fields)
{
    if (records.size() >= kEnd / kFields) {
        throw std::bad_alloc();
    }
    entries_.reserve(entries_.size() + kFields * (records.size() - added_));
    for (std::size_t number = added_; fields != 0 && number < records.size(); ++number) {
        for (std::uint32_t field = 0; field < kFields; ++field) {
            if ((fields >> field & 1U) != 0) {
                entries_.push_back({static_cast<std::uint32_t>(number), field, kEnd});
            }
        }
    }
    added_ = fields != 0 ? records.size() : added_;
    std::size_t size = 1;
    while (size < 2 * entries_.size()) {
        size *= 2;
    }
    heads_.assign(size, kEnd);
    // From the last one on: each goes to the front of its chain.
    for (std::size_t i = entries_.size(); i-- > 0;) {
        Entry& entry = entries_[i];
        std::uint32_t& head = heads_[ChainOf(NameIn(*records[entry.record], entry.field))];
        entry.next = head;
        head = static_cast<std::uint32_t>(i);
    }
}

std::vector<std::size_t> ModificationNames::Find(const Records& records,
                                                 std::string_view name) const
{
    std::vector<std::size_t> numbers;
    for (std::uint32_t i = heads_[ChainOf(name)]; i != kEnd; i = entries_[i].next) {
        const Entry& entry = entries_[i];
        // A record may have the name in several fields.
        if (NameIn(*records[entry.record], entry.field) == name
            && (numbers.empty() || numbers.back() != entry.record)) {
            numbers.push_back(entry.record);
        }
    }
    return numbers;
}

std::size_t ModificationNames::ChainOf(std::string_view name) const
{
    return std::hash<std::string_view>()(name) & (heads_.size() - 1);
}

} // namespace Vorlan
