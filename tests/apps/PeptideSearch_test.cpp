// The search against a plain std::string::find for every peptide.
#include "proteins/PeptideSearch.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "support/Support.h"

namespace pelgrin::test {
namespace {

using Letters = PeptideSearch::LeucineIsoleucine;
using Strings = std::vector<std::string>;
/// Peptide, and position of its last letter.
using Hits = std::multiset<std::pair<std::string, std::size_t>>;

std::string Folded(std::string text, Letters letters)
{
    if (letters == Letters::Equal) {
        std::replace(text.begin(), text.end(), 'I', 'L');
    }
    return text;
}

/// Every different peptide with each of its places, as the search gives them.
Hits Found(const Strings& peptides, const std::string& text, Letters letters = Letters::Different)
{
    const PeptideSearch search(peptides, letters);
    std::map<std::uint32_t, std::set<std::string>> peptidesOf;
    for (std::size_t i = 0; i < peptides.size(); ++i) {
        peptidesOf[search.PatternOf(i)].insert(peptides[i]);
    }
    Hits hits;
    search.FindAll(text, [&](std::uint32_t pattern, std::size_t position) {
        for (const std::string& peptide : peptidesOf.at(pattern)) {
            EXPECT_EQ(search.LengthOf(pattern), peptide.size());
            hits.emplace(peptide, position);
        }
    });
    return hits;
}

/// The same by looking for one peptide after the other.
Hits PlainlyFound(const Strings& peptides, const std::string& text,
                  Letters letters = Letters::Different)
{
    Hits hits;
    const std::string folded = Folded(text, letters);
    for (const std::string& peptide : std::set<std::string>(peptides.begin(), peptides.end())) {
        const bool isSearched = !peptide.empty()
                                && std::all_of(peptide.begin(), peptide.end(),
                                               [](char c) { return c >= 'A' && c <= 'Z'; });
        const std::string wanted = Folded(peptide, letters);
        for (std::size_t at = isSearched ? folded.find(wanted) : std::string::npos;
             at != std::string::npos; at = folded.find(wanted, at + 1)) {
            hits.emplace(peptide, at + peptide.size() - 1);
        }
    }
    return hits;
}

std::string RandomText(std::mt19937& random, std::string_view alphabet, std::size_t length)
{
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        text += alphabet[random() % alphabet.size()];
    }
    return text;
}

TEST(PeptideSearch, FindsOverlapsSuffixesAndRepeats)
{
    EXPECT_EQ(Found({"AA", "A", "AAA"}, "AAA;AA"), (Hits{{"A", 0},
                                                         {"A", 1},
                                                         {"A", 2},
                                                         {"A", 4},
                                                         {"A", 5},
                                                         {"AA", 1},
                                                         {"AA", 2},
                                                         {"AA", 5},
                                                         {"AAA", 2}}));
    EXPECT_EQ(Found({"HERS", "HE", "SHE", "HIS"}, "USHERSHIS"),
              (Hits{{"SHE", 3}, {"HE", 3}, {"HERS", 5}, {"HIS", 8}}));
    EXPECT_EQ(Found({"GASK", "GASK"}, "GASKGASK"), (Hits{{"GASK", 3}, {"GASK", 7}}));
    EXPECT_EQ(Found({"AC"}, "A;C"), Hits());
    EXPECT_EQ(Found({}, "GASK"), Hits());
    EXPECT_EQ(Found({"A"}, ""), Hits());
}

TEST(PeptideSearch, LeucineAndIsoleucineAreTwoLettersOrOne)
{
    const Strings peptides = {"AI", "AL", "AJ"};
    EXPECT_EQ(Found(peptides, "AIAL"), (Hits{{"AI", 1}, {"AL", 3}}));
    EXPECT_EQ(Found(peptides, "AIAL", Letters::Equal),
              (Hits{{"AI", 1}, {"AI", 3}, {"AL", 1}, {"AL", 3}}));
    const PeptideSearch equal(peptides, Letters::Equal);
    EXPECT_EQ(equal.Patterns(), 2U);
    EXPECT_EQ(equal.PatternOf(0), equal.PatternOf(1));
}

TEST(PeptideSearch, WhatIsNotAllOfLettersIsNeverFound)
{
    const Strings peptides = {"", "gask", "GA;K", "G-K", "GASK ", "\xC4", "A;", "GA"};
    const PeptideSearch search(peptides);
    EXPECT_EQ(search.Patterns(), 1U);
    for (std::size_t i = 0; i + 1 < peptides.size(); ++i) {
        EXPECT_EQ(search.PatternOf(i), PeptideSearch::kNoPattern) << peptides[i];
    }
    EXPECT_EQ(Found(peptides, "gask;GA;K;G-K;GASK \xC4"), (Hits{{"GA", 6}, {"GA", 15}}));
}

// The text is searched in pieces of some thousand letters, several at a time.
TEST(PeptideSearch, LongTextsHaveNoGapsBetweenTheirPieces)
{
    std::mt19937 random(21);
    for (const std::string_view alphabet : {"AC;", "AACCCA", "ACDEFGHIKLMNPQRSTVWY;"}) {
        for (const std::size_t length :
             std::initializer_list<std::size_t>{16383, 16384, 16385, 131072, 400000}) {
            const std::string text = RandomText(random, alphabet, length);
            Strings peptides = {"ACA", "CAAC", text.substr(0, 5), text.substr(length - 6)};
            for (std::size_t at = 16380; at + 9 < length; at += 16384) {
                peptides.push_back(text.substr(at, 9)); // across a usual end
            }
            EXPECT_EQ(Found(peptides, text), PlainlyFound(peptides, text))
                << alphabet << " " << length;
        }
    }
}

TEST(PeptideSearch, PlacesComeByPositionLongerOnesFirst)
{
    std::mt19937 random(22);
    const std::string text = RandomText(random, "AAC;", 300000);
    const PeptideSearch search({"A", "AA", "CAA", "CA"});
    std::pair<std::size_t, std::size_t> former = {0, SIZE_MAX};
    std::size_t places = 0;
    search.FindAll(text, [&](std::uint32_t pattern, std::size_t position) {
        const std::size_t length = search.LengthOf(pattern);
        ASSERT_TRUE(position > former.first
                    || (position == former.first && length < former.second));
        former = {position, length};
        ++places;
    });
    EXPECT_GT(places, 100000U);
}

TEST(PeptideSearch, AgreesWithFindOnRandomTexts)
{
    std::mt19937 random(20);
    for (int round = 0; round < 400; ++round) {
        const std::string_view alphabet = round % 2 == 0 ? "AB;" : "ILKAI;";
        const std::string text = RandomText(random, alphabet, random() % 300);
        Strings peptides(random() % 30);
        for (std::string& peptide : peptides) {
            peptide = RandomText(random, alphabet.substr(0, alphabet.size() - (random() % 8 > 0)),
                                 random() % 7);
        }
        for (const Letters letters : {Letters::Different, Letters::Equal}) {
            ASSERT_EQ(Found(peptides, text, letters), PlainlyFound(peptides, text, letters))
                << round << " " << text;
        }
    }
}

TEST(PeptideSearch, AgreesWithFindBehindTheNodesWithATable)
{
    std::mt19937 random(21);
    const std::string_view alphabet = "ACDEFGHIKLMNPQRSTVWY";
    const std::string text = RandomText(random, alphabet, 20000);
    Strings peptides;
    for (int i = 0; i < 3000; ++i) { // more than 16384 nodes
        const std::size_t length = 8 + random() % 20;
        peptides.push_back(text.substr(random() % (text.size() - length), length));
        peptides.push_back(peptides.back().substr(3, 4) + RandomText(random, alphabet, 6));
    }
    // Long peptides that share beginnings and ends.
    for (int i = 0; i < 200; ++i) {
        peptides.push_back(text.substr(0, 20 + static_cast<std::size_t>(i)));
        peptides.push_back(text.substr(static_cast<std::size_t>(i), 200));
    }
    EXPECT_EQ(Found(peptides, text), PlainlyFound(peptides, text));
    EXPECT_EQ(Found(peptides, text, Letters::Equal), PlainlyFound(peptides, text, Letters::Equal));
}

TEST(PeptideSearch, ALongRunOfOneLetterGivesEveryPlace)
{
    const std::string run(3000, 'A');
    Strings peptides;
    for (std::size_t length = 1; length <= 20; ++length) {
        peptides.emplace_back(length, 'A');
    }
    peptides.emplace_back(2999, 'A');
    peptides.push_back(std::string(500, 'A') + "B");
    std::uint64_t hits = 0;
    const PeptideSearch search(peptides);
    search.FindAll(run, [&](std::uint32_t, std::size_t) { ++hits; });
    EXPECT_EQ(hits, 20U * 3000 - 190 + 2);
}

} // namespace
} // namespace pelgrin::test
