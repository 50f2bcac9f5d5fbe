#include <limits>

#include "DataStructures.h"
#include "support/Exceptions.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::Thrown;
using test::ThrownBy;

using Site = LocalizeResult::EModSite;
using Term = LocalizeResult::ETermSpecificity;

constexpr int kIntMax = std::numeric_limits<int>::max();
constexpr int kIntMin = std::numeric_limits<int>::min();

// ---- The record ------------------------------------------------------------

TEST(LocalizeResult, FreshOneHasNoSite)
{
    const LocalizeResult result;
    EXPECT_EQ(result.nIndex, 0U);
    EXPECT_EQ(result.eSite, 28);
    EXPECT_EQ(result.eSite, LocalizeResult::NUMBER_OF_MOD_SITE);
    EXPECT_EQ(result.ePos, 5);
    EXPECT_EQ(result.ePos, LocalizeResult::NUMBER_OF_TERM_SPECIFICITY);
    EXPECT_EQ(result.dProb, 0.0);
}

TEST(LocalizeResult, ConstructorTakesAllFields)
{
    const LocalizeResult result(7, LocalizeResult::MOD_S, LocalizeResult::N_TERM, 0.25);
    EXPECT_EQ(result.nIndex, 7U);
    EXPECT_EQ(result.eSite, LocalizeResult::MOD_S);
    EXPECT_EQ(result.ePos, LocalizeResult::N_TERM);
    EXPECT_EQ(result.dProb, 0.25);
    EXPECT_EQ(result.getPos(), LocalizeResult::N_TERM);
    EXPECT_EQ(result.getProb(), 0.25);
}

TEST(LocalizeResult, SettersSetTheirFieldOnly)
{
    LocalizeResult result(7, LocalizeResult::MOD_S, LocalizeResult::N_TERM, 0.25);
    result.setPos(LocalizeResult::PROTEIN_C_TERM);
    EXPECT_EQ(result.ePos, 3);
    result.setProb(0.5);
    EXPECT_EQ(result.dProb, 0.5);
    result.setSite(LocalizeResult::MOD_C_TERM);
    EXPECT_EQ(result.eSite, 27);
    EXPECT_EQ(result.nIndex, 7U);
    EXPECT_EQ(result.ePos, 3);
    EXPECT_EQ(result.dProb, 0.5);
}

TEST(LocalizeResult, LettersHaveTheirPlaceInTheAlphabet)
{
    EXPECT_EQ(LocalizeResult::MOD_N_TERM, 0);
    EXPECT_EQ(LocalizeResult::MOD_A, 1);
    EXPECT_EQ(LocalizeResult::MOD_K, 'K' - 64);
    EXPECT_EQ(LocalizeResult::MOD_Z, 26);
    EXPECT_EQ(LocalizeResult::MOD_C_TERM, 27);
}

// ---- Sites -----------------------------------------------------------------

TEST(LocalizeResult, EverySiteGoesThereAndBack)
{
    EXPECT_EQ(LocalizeResult::transEModSiteToString(LocalizeResult::MOD_N_TERM), "MOD_N_TERM");
    EXPECT_EQ(LocalizeResult::transEModSiteToString(LocalizeResult::MOD_C_TERM), "MOD_C_TERM");
    for (int site = 0; site <= 27; ++site) {
        const OpenMS::String text = LocalizeResult::transEModSiteToString(static_cast<Site>(site));
        EXPECT_EQ(LocalizeResult::transStringToEModSite(text), site) << text;
    }
    for (int letter = 'A'; letter <= 'Z'; ++letter) {
        EXPECT_EQ(LocalizeResult::transEModSiteToString(static_cast<Site>(letter - 64)),
                  std::string(1, static_cast<char>(letter)));
    }
}

struct SiteNumberCase {
    const char* reason;
    int site;
    unsigned char character;
};

const SiteNumberCase kSiteNumberCases[] = {
    {"no site is a backslash", 28, '\\'},
    {"the one behind it", 29, ']'},
    {"below 0", -1, '?'},
    {"a NUL", -64, 0},
    {"a blank", -32, ' '},
    {"the last byte", 191, 255},
    {"beyond a byte begins again", 192, 0},
    {"an A, 256 on", 257, 'A'},
    {"the largest number", kIntMax, 63},
    {"the smallest number", kIntMin, 64},
};

TEST(LocalizeResult, B04_SiteNumbersOutsideBecomeCharactersUnchecked)
{
    for (const SiteNumberCase& c : kSiteNumberCases) {
        EXPECT_EQ(LocalizeResult::transEModSiteToString(static_cast<Site>(c.site)),
                  std::string(1, static_cast<char>(c.character)))
            << c.reason;
    }
}

TEST(LocalizeResult, EverySiteNumberIsOneCharacterButTheTermini)
{
    for (int site = -1000; site <= 1000; ++site) {
        const OpenMS::String text = LocalizeResult::transEModSiteToString(static_cast<Site>(site));
        if (site == 0 || site == 27) {
            EXPECT_EQ(text.size(), 10U) << site;
            continue;
        }
        ASSERT_EQ(text.size(), 1U) << site;
        EXPECT_EQ(static_cast<unsigned char>(text[0]), static_cast<unsigned char>(site + 64));
    }
}

struct SiteTextCase {
    const char* reason;
    std::string text;
    int site;
};

const SiteTextCase kSiteTextCases[] = {
    {"a residue's three letters", "Ser", 19},
    {"a word", "Anywhere", 1},
    {"part of a terminus", "MOD_N_TER", 13},
    {"more than a terminus", "MOD_N_TERMX", 13},
    {"more than the other terminus", "MOD_C_TERM ", 13},
    {"a terminus in another case", "MOD_n_TERM", 13},
    {"a terminus of another kind", "N-term", 14},
    {"a letter and a NUL", "K\0"s, 11},
};

TEST(LocalizeResult, B05_SiteIsReadFromItsFirstCharacter)
{
    for (const SiteTextCase& c : kSiteTextCases) {
        EXPECT_EQ(LocalizeResult::transStringToEModSite(c.text), c.site) << c.reason;
    }
}

Thrown NoSuchSite(const std::string& code)
{
    return {"InvalidValue", "DataStructures", "LocalizeResult::transStringToEModSite",
            "the value '" + code
                + "' was used but is not valid; There is no such modification site"};
}

TEST(LocalizeResult, EveryOtherFirstCharacterIsNoSite)
{
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text =
            std::string(1, static_cast<char>(static_cast<unsigned char>(byte))) + "MOD_N_TERM";
        if (byte >= 'A' && byte <= 'Z') {
            EXPECT_EQ(LocalizeResult::transStringToEModSite(text), byte - 64);
            continue;
        }
        EXPECT_EQ(ThrownBy([&] { LocalizeResult::transStringToEModSite(text); }),
                  NoSuchSite(std::to_string(byte)));
    }
}

TEST(LocalizeResult, NoSuchSiteTellsTheCodeOfTheCharacter)
{
    EXPECT_EQ(ThrownBy([] { LocalizeResult::transStringToEModSite("s"); }), NoSuchSite("115"));
    EXPECT_EQ(ThrownBy([] { LocalizeResult::transStringToEModSite("\xE4"); }), NoSuchSite("228"));
    EXPECT_EQ(ThrownBy([] { LocalizeResult::transStringToEModSite(""); }), NoSuchSite("0"));
    EXPECT_THROW(LocalizeResult::transStringToEModSite("s"), OpenMS::Exception::InvalidValue);
}

// ---- Term specificities ----------------------------------------------------

const char* const kTerms[] = {"Anywhere", "C-term", "N-term", "Protein C-term", "Protein N-term"};

TEST(LocalizeResult, EveryTermSpecificityGoesThereAndBack)
{
    int value = 0;
    for (const char* const text : kTerms) {
        EXPECT_EQ(LocalizeResult::transETermSpecificityToString(static_cast<Term>(value)), text);
        EXPECT_EQ(LocalizeResult::transStringToETermSpecificity(text), value);
        ++value;
    }
    EXPECT_EQ(value, LocalizeResult::NUMBER_OF_TERM_SPECIFICITY);
}

TEST(LocalizeResult, OtherNumbersAreNoTermSpecificity)
{
    const Thrown expected = {"InvalidValue", "DataStructures",
                             "LocalizeResult::transETermSpecificityToString",
                             "the value 'NUMBER_OF_TERM_SPECIFICITY' was used but is not valid; "
                             "NUMBER_OF_TERM_SPECIFICITY is Invalid value"};
    for (const int value : {5, 6, -1, 256, kIntMax, kIntMin}) {
        EXPECT_EQ(ThrownBy([value] {
                      LocalizeResult::transETermSpecificityToString(static_cast<Term>(value));
                  }),
                  expected)
            << value;
    }
    EXPECT_THROW(LocalizeResult::transETermSpecificityToString(static_cast<Term>(5)),
                 OpenMS::Exception::InvalidValue);
}

struct TermTextCase {
    const char* reason;
    std::string text;
    int term;
};

const TermTextCase kTermTextCases[] = {
    {"in full", "C-terminal", 1},
    {"in full", "N-terminus", 2},
    {"a protein's", "Protein N-terminal", 4},
    {"text behind it", "Anywhere else", 0},
    {"no blank behind it", "N-termProtein C-term", 2},
    {"a NUL behind it", "C-term\0"s, 1},
};

TEST(LocalizeResult, B06_TermSpecificityIsComparedAsAPrefix)
{
    for (const TermTextCase& c : kTermTextCases) {
        EXPECT_EQ(LocalizeResult::transStringToETermSpecificity(c.text), c.term) << c.reason;
    }
}

TEST(LocalizeResult, OtherTextsAreNoTermSpecificity)
{
    for (const char* const text :
         {"", "Any N-term", "anywhere", "ANYWHERE", "C-TERM", "N-ter", "Any", " N-term", "N_term",
          "Protein", "Protein N-ter", "protein N-term", "Protein  N-term",
          "NUMBER_OF_TERM_SPECIFICITY"}) {
        const Thrown expected = {"InvalidParameter", "DataStructures",
                                 "LocalizeResult::transStringToETermSpecificity",
                                 "The Term Specificity of "s + text + " is unknown."};
        EXPECT_EQ(ThrownBy([text] { LocalizeResult::transStringToETermSpecificity(text); }),
                  expected);
    }
    EXPECT_THROW(LocalizeResult::transStringToETermSpecificity(""),
                 OpenMS::Exception::InvalidParameter);
}

} // namespace
} // namespace Vorlan
