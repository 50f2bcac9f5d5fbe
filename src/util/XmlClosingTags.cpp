#include "util/XmlClosingTags.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <numeric>

#include "util/XmlNames.h"

namespace Vorlan {

namespace {

constexpr std::uint32_t kPassed = std::numeric_limits<std::uint32_t>::max();

/// Plain searches may read the text this many times over.
constexpr std::size_t kReadings = 8;

} // namespace

XmlClosingTags::XmlClosingTags(std::string_view text)
    : text_(text), mayRead_(kReadings * text.size())
{
}

std::size_t XmlClosingTags::Find(std::size_t from, std::size_t end, std::string_view name)
{
    if (!hasIndex_) {
        if (mayRead_ > 0) {
            return Search(from, end, name);
        }
        MakeIndex(from);
    }
    Pass(from);
    const auto first = std::lower_bound(
        sorted_.begin(), sorted_.end(), name,
        [this](std::uint32_t number, std::string_view n) { return words_[number] < n; });
    const auto last = std::upper_bound(first, sorted_.end(), name,
                                       [this](std::string_view n, std::uint32_t number) {
                                           return n < words_[number].substr(0, n.size());
                                       });
    const std::size_t number = FirstIn(static_cast<std::size_t>(first - sorted_.begin()),
                                       static_cast<std::size_t>(last - sorted_.begin()));
    if (number == kPassed) {
        return kNone;
    }
    const std::size_t place = PlaceOf(words_[number]);
    return place + 2 + name.size() <= end ? place : kNone;
}

std::size_t XmlClosingTags::Search(std::size_t from, std::size_t end, std::string_view name)
{
    const std::size_t length = 2 + name.size();
    std::size_t found = kNone;
    std::size_t place = from;
    while (found == kNone && place + length <= end) {
        const void* const hit = std::memchr(text_.data() + place, '<', end - place);
        if (hit == nullptr) {
            place = end;
            break;
        }
        place = static_cast<std::size_t>(static_cast<const char*>(hit) - text_.data());
        if (place + length <= end && text_[place + 1] == '/'
            && text_.compare(place + 2, name.size(), name) == 0) {
            found = place;
        }
        ++place;
    }
    mayRead_ -= std::min(mayRead_, place - from);
    return found;
}

/// Where the "</" in front of a word stands.
std::size_t XmlClosingTags::PlaceOf(std::string_view word) const
{
    return static_cast<std::size_t>(word.data() - text_.data()) - 2;
}

void XmlClosingTags::MakeIndex(std::size_t from)
{
    for (std::size_t place = text_.find("</", from); place != kNone;
         place = text_.find("</", place + 1)) {
        const char* const word = text_.data() + place + 2;
        const char* const end = EndOfXmlName(word, text_.data() + text_.size());
        words_.emplace_back(word, static_cast<std::size_t>(end - word));
    }
    if (words_.size() >= kPassed) {
        throw std::bad_alloc(); // more than four thousand million closing tags
    }
    hasIndex_ = true;
    const std::size_t count = words_.size();
    sorted_.resize(count);
    std::iota(sorted_.begin(), sorted_.end(), std::uint32_t{0});
    // By merging: a comparison costs no more than the word that it places, and
    // words do not overlap.
    std::stable_sort(sorted_.begin(), sorted_.end(),
                     [this](std::uint32_t a, std::uint32_t b) { return words_[a] < words_[b]; });
    ranks_.resize(count);
    tree_.resize(2 * count);
    for (std::size_t rank = 0; rank < count; ++rank) {
        ranks_[sorted_[rank]] = static_cast<std::uint32_t>(rank);
        tree_[count + rank] = sorted_[rank];
    }
    for (std::size_t node = count; node-- > 1;) {
        tree_[node] = std::min(tree_[2 * node], tree_[2 * node + 1]);
    }
}

/// Takes the places before from out of the tree.
void XmlClosingTags::Pass(std::size_t from)
{
    const std::size_t count = words_.size();
    for (; passed_ < count && PlaceOf(words_[passed_]) < from; ++passed_) {
        std::size_t node = count + ranks_[passed_];
        tree_[node] = kPassed;
        for (node /= 2; node >= 1; node /= 2) {
            tree_[node] = std::min(tree_[2 * node], tree_[2 * node + 1]);
        }
    }
}

/// The smallest number in sorted_[begin, end) that was not passed, or kPassed.
std::size_t XmlClosingTags::FirstIn(std::size_t begin, std::size_t end) const
{
    std::uint32_t smallest = kPassed;
    begin += words_.size();
    end += words_.size();
    for (; begin < end; begin /= 2, end /= 2) {
        if (begin % 2 == 1) {
            smallest = std::min(smallest, tree_[begin++]);
        }
        if (end % 2 == 1) {
            smallest = std::min(smallest, tree_[--end]);
        }
    }
    return smallest;
}

} // namespace Vorlan
