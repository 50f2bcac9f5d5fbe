#include "util/TabTable.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Vorlan {

namespace {

constexpr std::size_t kBlock = 32;

/// Where character stands in the block that begins at text: a bit for each place.
std::uint64_t PlacesOf(char character, const char* text)
{
    std::uint64_t places = 0;
#ifdef __SSE2__
    for (std::size_t i = 0; i < kBlock; i += sizeof(__m128i)) {
        __m128i some;
        std::memcpy(&some, text + i, sizeof some);
        const __m128i equal = _mm_cmpeq_epi8(some, _mm_set1_epi8(character));
        places |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(equal))} << i;
    }
#else
    for (std::size_t i = 0; i < kBlock; ++i) {
        places |= std::uint64_t{text[i] == character} << i;
    }
#endif
    return places;
}

/// The number of the lowest bit that is set; any number without one.
std::size_t LowestOf(std::uint64_t bits)
{
    return static_cast<std::size_t>(__builtin_ctzll(bits | std::uint64_t{1} << 63));
}

} // namespace

// As CStringProcess::GetAttributesFromFirstRow has it, without memory for each cell.
int TabHeader::Find(std::string_view name) const
{
    if (row_.empty()) {
        return kMissing;
    }
    std::string_view rest = row_;
    for (int place = 0; place < std::numeric_limits<int>::max(); ++place) {
        const std::size_t tab = rest.find('\t');
        if (rest.substr(0, tab) == name) {
            return place;
        }
        if (tab == std::string_view::npos) {
            break;
        }
        rest.remove_prefix(tab + 1);
    }
    return kMissing;
}

void TabRow::Split(std::string_view row, char separator)
{
    row_ = row;
    size_ = 0;
    if (row.empty()) {
        return;
    }
    ends_.resize(std::max(ends_.size(), row.size() + 1));
    // Nothing here branches on where a cell ends, which cannot be foreseen: places are
    // written down, and each next one over that before unless a separator stands there.
    std::size_t* end = ends_.data();
    std::size_t place = 0;
    for (; place + kBlock <= row.size(); place += kBlock) {
        std::uint64_t separators = PlacesOf(separator, row.data() + place);
        do {
            for (int i = 0; i < 4; ++i) {
                *end = place + LowestOf(separators);
                end += separators != 0 ? 1 : 0;
                separators &= separators - 1;
            }
        } while (separators != 0);
    }
    for (; place < row.size(); ++place) {
        *end = place;
        end += row[place] == separator ? 1 : 0;
    }
    *end = row.size();
    size_ = static_cast<std::size_t>(end - ends_.data()) + 1;
}

} // namespace Vorlan
