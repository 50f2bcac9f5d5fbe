// Every place of many peptides in a text, in one pass.
//
// Aho and Corasick, Commun. ACM 18 (1975): the peptides are a trie, and each
// node knows the node of its longest proper suffix, where the search goes on
// when no child fits. A node stands behind all nodes of lesser depth, so the
// usual character ends in one of the first ones: these know the next node for
// every letter. The others know for which letters they have a child; children of
// one node stand side by side.
//
// With many peptides a step mostly waits for memory. So several pieces of the text
// are searched in turn, a letter each, and their waits overlap: a piece begins
// where no match can go on, behind a character that is no letter.
//
// PeptideSearch_test compares with std::string::find.
#ifndef PELGRIN_PEPTIDESEARCH_H
#define PELGRIN_PEPTIDESEARCH_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "FastaProteinDB.h"

namespace pelgrin {

class PeptideSearch {
public:
    /// Whether leucine and isoleucine are one letter, in peptides and text.
    enum class LeucineIsoleucine { Different, Equal };

    /// Peptides that would be found at the same places share a pattern.
    explicit PeptideSearch(const std::vector<std::string>& peptides,
                           LeucineIsoleucine letters = LeucineIsoleucine::Different);

    /// PatternOf a peptide that is empty or not all of A to Z: never found.
    static constexpr std::uint32_t kNoPattern = UINT32_MAX;

    std::size_t Patterns() const { return lengths_.size(); }
    std::size_t LengthOf(std::uint32_t pattern) const { return lengths_[pattern]; }
    std::uint32_t PatternOf(std::size_t peptide) const { return patternOf_[peptide]; }

    /// Calls handler(pattern, position of its last letter) for every place of
    /// every pattern, by ascending position, longer patterns first. Takes time
    /// in proportion to the letters of text and the places.
    template <typename Handler>
    void FindAll(std::string_view text, Handler handler) const;

private:
    /// A trie in breadth-first order is made from sorted patterns: each node is
    /// a range of them with a common beginning.
    struct Range {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
        std::uint32_t depth = 0;
    };
    using Patterns_ = std::vector<std::string>;

    static constexpr std::uint8_t kNoLetter = 255;
    static constexpr std::size_t kLetters = 26;
    static constexpr std::uint32_t kAccepts = std::uint32_t{1} << 31; ///< see children_
    static constexpr std::size_t kRows = 65536; ///< nodes with a row of the table
    static constexpr std::size_t kLanes = 8;    ///< pieces that are searched in turn

    struct Hit {
        std::uint32_t pattern = 0;
        std::size_t position = 0;
    };
    /// The search in one piece of the text.
    struct Lane {
        std::size_t position = 0;
        std::size_t end = 0;
        std::size_t node = 0;
        std::vector<Hit> hits;
    };
    using Lanes = std::array<Lane, kLanes>;

    Patterns_ TakePatterns(const std::vector<std::string>& peptides);
    void MakeTrie(const Patterns_& patterns);
    void AddNode();
    void AddChildren(const Patterns_& patterns, std::size_t node, std::vector<Range>& ranges);
    void Link();
    void FillRow(std::size_t node);

    /// Searches the next pieces of text, from begin on, and gives where they end.
    std::size_t FindInPieces(std::string_view text, std::size_t begin, Lanes& lanes) const;
    void Step(std::string_view text, Lane& lane) const;
    std::size_t EndOfPiece(std::string_view text, std::size_t begin) const;

    /// The child of a node for a letter, or 0.
    std::size_t ChildOf(std::size_t node, std::uint8_t letter) const;
    /// The node behind node and a letter, 0 for A.
    std::size_t Next(std::size_t node, std::uint8_t letter) const;

    std::array<std::uint8_t, 256> letters_{}; ///< 0 to 25, or kNoLetter
    std::vector<std::uint32_t> patternOf_;    ///< of each peptide
    std::vector<std::size_t> lengths_;        ///< of each pattern

    std::vector<AC::Node> nodes_; ///< by ascending depth, siblings together; 0 is the root
    // Of each node:
    std::vector<std::uint32_t> children_;  ///< a bit for each letter that has a child, and
                                           ///< kAccepts when accepting_ is not 0: most
                                           ///< letters of a text touch nothing else
    std::vector<std::uint32_t> ending_;    ///< the pattern that ends there, or kNoPattern
    std::vector<std::uint32_t> accepting_; ///< the longest suffix, itself included, that is a
                                           ///< pattern; 0 none
    std::vector<std::uint32_t> table_;     ///< the next node, for the first kRows nodes
};

template <typename Handler>
void PeptideSearch::FindAll(std::string_view text, Handler handler) const
{
    Lanes lanes;
    for (std::size_t begin = 0; begin < text.size();) {
        begin = FindInPieces(text, begin, lanes);
        for (Lane& lane : lanes) {
            for (const Hit& hit : lane.hits) {
                handler(hit.pattern, hit.position);
            }
            lane.hits.clear();
        }
    }
}

} // namespace pelgrin

#endif // PELGRIN_PEPTIDESEARCH_H
