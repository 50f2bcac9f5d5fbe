#include "proteins/PeptideSearch.h"

#include <algorithm>
#include <bitset>
#include <iterator>
#include <stdexcept>
#include <tuple>

namespace pelgrin {

PeptideSearch::PeptideSearch(const std::vector<std::string>& peptides, LeucineIsoleucine letters)
{
    letters_.fill(kNoLetter);
    for (char c = 'A'; c <= 'Z'; ++c) {
        letters_[static_cast<unsigned char>(c)] = static_cast<std::uint8_t>(c - 'A');
    }
    if (letters == LeucineIsoleucine::Equal) {
        letters_['I'] = letters_['L'];
    }
    const Patterns_ patterns = TakePatterns(peptides);
    std::transform(patterns.begin(), patterns.end(), std::back_inserter(lengths_),
                   [](const std::string& pattern) { return pattern.size(); });
    MakeTrie(patterns);
    Link();
}

/// The distinct patterns, sorted, as the search reads them.
PeptideSearch::Patterns_ PeptideSearch::TakePatterns(const std::vector<std::string>& peptides)
{
    std::vector<std::string> read(peptides.size()); // empty: no pattern
    std::vector<std::uint32_t> order;
    for (std::size_t i = 0; i < peptides.size(); ++i) {
        for (const char c : peptides[i]) {
            const std::uint8_t letter = letters_[static_cast<unsigned char>(c)];
            if (letter == kNoLetter) {
                read[i].clear();
                break;
            }
            read[i] += static_cast<char>('A' + letter);
        }
        if (!read[i].empty()) {
            order.push_back(static_cast<std::uint32_t>(i));
        }
    }
    std::sort(order.begin(), order.end(),
              [&read](std::uint32_t a, std::uint32_t b) { return read[a] < read[b]; });
    Patterns_ patterns;
    patternOf_.assign(peptides.size(), kNoPattern);
    for (const std::uint32_t i : order) {
        if (patterns.empty() || patterns.back() != read[i]) {
            patterns.push_back(read[i]);
        }
        patternOf_[i] = static_cast<std::uint32_t>(patterns.size() - 1);
    }
    return patterns;
}

void PeptideSearch::MakeTrie(const Patterns_& patterns)
{
    AddNode();
    std::vector<Range> ranges = {{0, static_cast<std::uint32_t>(patterns.size()), 0}};
    for (std::size_t node = 0; node < ranges.size(); ++node) { // ranges grows with nodes_
        AddChildren(patterns, node, ranges);
    }
}

void PeptideSearch::AddNode()
{
    nodes_.emplace_back();
    children_.push_back(0);
    ending_.push_back(kNoPattern);
}

void PeptideSearch::AddChildren(const Patterns_& patterns, std::size_t node,
                                std::vector<Range>& ranges)
{
    Range rest = ranges[node];
    if (rest.begin < rest.end && patterns[rest.begin].size() == rest.depth) {
        ending_[node] = rest.begin++;
    }
    for (bool isFirst = true; rest.begin < rest.end; isFirst = false) {
        const char letter = patterns[rest.begin][rest.depth];
        Range child = {rest.begin, rest.begin, rest.depth + 1};
        while (child.end < rest.end && patterns[child.end][rest.depth] == letter) {
            ++child.end;
        }
        if (nodes_.size() >= kNoPattern) {
            throw std::length_error("the peptides have too many letters");
        }
        if (isFirst) {
            nodes_[node].SetChild(nodes_.size(), letter);
        } else {
            nodes_.back().SetBrother(nodes_.size(), letter);
        }
        children_[node] |= std::uint32_t{1} << (letter - 'A');
        AddNode();
        ranges.push_back(child);
        rest.begin = child.end;
    }
}

/// Sets failure links, rows and suffixes. What a node needs of its suffix is
/// known: the suffix is shorter, so it stands before the node.
void PeptideSearch::Link()
{
    accepting_.assign(nodes_.size(), 0);
    table_.reserve(std::min(nodes_.size(), kRows) * kLetters);
    for (std::size_t node = 0; node < nodes_.size(); ++node) {
        const auto suffix = static_cast<std::size_t>(nodes_[node].GetF());
        accepting_[node] =
            ending_[node] != kNoPattern ? static_cast<std::uint32_t>(node) : accepting_[suffix];
        children_[node] |= accepting_[node] != 0 ? kAccepts : 0;
        for (auto [child, letter] = nodes_[node].GetChild(); child != 0;
             std::tie(child, letter) = nodes_[static_cast<std::size_t>(child)].GetBrother()) {
            const auto index = static_cast<std::uint8_t>(letter - 'A');
            nodes_[static_cast<std::size_t>(child)].SetF(node == 0 ? 0 : Next(suffix, index));
        }
        if (node < kRows) {
            FillRow(node);
        }
    }
}

void PeptideSearch::FillRow(std::size_t node)
{
    const std::size_t row = table_.size();
    const auto suffix = static_cast<std::size_t>(nodes_[node].GetF());
    for (std::size_t letter = 0; letter < kLetters; ++letter) {
        table_.push_back(node == 0 ? 0 : table_[suffix * kLetters + letter]);
    }
    for (auto [child, letter] = nodes_[node].GetChild(); child != 0;
         std::tie(child, letter) = nodes_[static_cast<std::size_t>(child)].GetBrother()) {
        table_[row + static_cast<std::size_t>(letter - 'A')] = static_cast<std::uint32_t>(child);
    }
}

// ---- Search -----------------------------------------------------------------

std::size_t PeptideSearch::ChildOf(std::size_t node, std::uint8_t letter) const
{
    const std::uint32_t bit = std::uint32_t{1} << letter;
    const std::uint32_t children = children_[node];
    return (children & bit) == 0 ? 0
                                 : static_cast<std::size_t>(nodes_[node].GetChild().first)
                                       + std::bitset<32>(children & (bit - 1)).count();
}

std::size_t PeptideSearch::Next(std::size_t node, std::uint8_t letter) const
{
    while (node * kLetters >= table_.size()) {
        const std::size_t child = ChildOf(node, letter);
        if (child != 0) {
            return child;
        }
        node = static_cast<std::size_t>(nodes_[node].GetF());
    }
    return table_[node * kLetters + letter];
}

inline void PeptideSearch::Step(std::string_view text, Lane& lane) const
{
    const std::size_t position = lane.position++;
    const std::uint8_t letter = letters_[static_cast<unsigned char>(text[position])];
    lane.node = letter == kNoLetter ? 0 : Next(lane.node, letter);
    if ((children_[lane.node] & kAccepts) == 0) {
        return;
    }
    for (std::size_t hit = accepting_[lane.node]; hit != 0;
         hit = accepting_[static_cast<std::size_t>(nodes_[hit].GetF())]) {
        lane.hits.push_back({ending_[hit], position});
    }
}

/// Behind the first character that is no letter, from a usual length on.
std::size_t PeptideSearch::EndOfPiece(std::string_view text, std::size_t begin) const
{
    constexpr std::size_t kUsualLength = std::size_t{16} * 1024;
    std::size_t end = std::min(text.size(), begin + kUsualLength);
    while (end > begin && end < text.size()
           && letters_[static_cast<unsigned char>(text[end - 1])] != kNoLetter) {
        ++end;
    }
    return end;
}

std::size_t PeptideSearch::FindInPieces(std::string_view text, std::size_t begin,
                                        Lanes& lanes) const
{
    std::size_t shortest = text.size();
    for (Lane& lane : lanes) {
        lane.position = begin;
        lane.end = begin = EndOfPiece(text, begin);
        lane.node = 0;
        shortest = std::min(shortest, lane.end - lane.position);
    }
    for (; shortest > 0; --shortest) {
        for (Lane& lane : lanes) {
            Step(text, lane);
        }
    }
    for (Lane& lane : lanes) {
        while (lane.position < lane.end) {
            Step(text, lane);
        }
    }
    return begin;
}

} // namespace pelgrin
