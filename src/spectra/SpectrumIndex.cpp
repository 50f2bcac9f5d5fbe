#include "spectra/SpectrumIndex.h"

#include <algorithm>
#include <cstring>

namespace Vorlan {

namespace {

constexpr std::size_t kBlockSize = std::size_t{1024} * 1024;

// The widths of the two bit fields of an entry.
constexpr std::uint64_t kPositionMask = (std::uint64_t{1} << 46) - 1;
constexpr std::uint64_t kLengthMask = (std::uint64_t{1} << 18) - 1;
static_assert(SpectrumIndex::kMaxText <= kLengthMask);

} // namespace

SpectrumIndex::SpectrumIndex() = default;
SpectrumIndex::~SpectrumIndex() = default;

void SpectrumIndex::Clear()
{
    blocks_.clear();
    blockFree_ = 0;
    std::vector<Entry>().swap(entries_);
}

std::string_view SpectrumIndex::Keep(std::string_view text)
{
    static_assert(kMaxText <= kBlockSize);
    if (blocks_.empty() || text.size() > blockFree_) {
        // Owned before the list grows. Not filled with zeros first.
        blocks_.push_back(std::unique_ptr<char[]>(new char[kBlockSize]));
        blockFree_ = kBlockSize;
    }
    char* const place = blocks_.back().get() + (kBlockSize - blockFree_);
    std::memcpy(place, text.data(), text.size());
    blockFree_ -= text.size();
    return {place, text.size()};
}

void SpectrumIndex::Add(std::string_view name, std::uint64_t position)
{
    entries_.push_back({0, name.data(), position & kPositionMask, name.size() & kLengthMask});
}

void SpectrumIndex::Finish()
{
    SortByName();
    DropRepeated();
    entries_.shrink_to_fit();
}

std::size_t SpectrumIndex::Find(std::string_view name) const
{
    const auto entry =
        std::lower_bound(entries_.begin(), entries_.end(), name,
                         [](const Entry& candidate, std::string_view wanted) {
                             return std::string_view(candidate.name, candidate.length) < wanted;
                         });
    const auto place = static_cast<std::size_t>(entry - entries_.begin());
    return entry != entries_.end() && Name(place) == name ? place : kNone;
}

std::string_view SpectrumIndex::Name(std::size_t entry) const
{
    return {entries_[entry].name, entries_[entry].length};
}

/// The eight characters of a name from depth on as one number that sorts as
/// they do. A name that ends sooner is filled up with NULs, which no name has.
std::uint64_t SpectrumIndex::KeyAt(const Entry& entry, std::size_t depth)
{
    unsigned char bytes[8] = {};
    const std::size_t left = entry.length > depth ? entry.length - depth : 0;
    if (left > 0) {
        std::memcpy(bytes, entry.name + depth, std::min<std::size_t>(left, sizeof bytes));
    }
    std::uint64_t key = 0;
    for (const unsigned char byte : bytes) {
        key = key << 8 | byte;
    }
    return key;
}

/// Sorts by eight characters at a time: ranges of equal keys are sorted again
/// by the next eight. The ranges still to do lie on a stack of our own, since
/// long names that share long beginnings would nest deeply.
void SpectrumIndex::SortByName()
{
    struct Range {
        std::size_t begin;
        std::size_t end;
        std::size_t depth;
    };
    std::vector<Range> todo = {{0, entries_.size(), 0}};
    const auto byKey = [](const Entry& a, const Entry& b) { return a.key < b.key; };
    while (!todo.empty()) {
        const Range range = todo.back();
        todo.pop_back();
        const auto begin = entries_.begin() + static_cast<std::ptrdiff_t>(range.begin);
        const auto end = entries_.begin() + static_cast<std::ptrdiff_t>(range.end);
        for (auto entry = begin; entry != end; ++entry) {
            entry->key = KeyAt(*entry, range.depth);
        }
        if (!std::is_sorted(begin, end, byKey)) {
            std::sort(begin, end, byKey);
        }
        for (std::size_t i = range.begin; i < range.end;) {
            std::size_t next = i + 1;
            while (next < range.end && entries_[next].key == entries_[i].key) {
                ++next;
            }
            const bool goesOn = (entries_[i].key & 0xFF) != 0;
            if (next - i > 1 && goesOn) {
                todo.push_back({i, next, range.depth + 8});
            }
            i = next;
        }
    }
}

void SpectrumIndex::DropRepeated()
{
    std::size_t kept = 0;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (kept == 0 || Name(kept - 1) != Name(i)) {
            entries_[kept++] = entries_[i];
        } else if (entries_[kept - 1].position < entries_[i].position) {
            entries_[kept - 1] = entries_[i]; // Deliberate: B-85
        }
    }
    entries_.resize(kept);
}

} // namespace Vorlan
