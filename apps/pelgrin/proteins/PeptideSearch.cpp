#include "proteins/PeptideSearch.h"

#include <algorithm>
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

} // namespace pelgrin
