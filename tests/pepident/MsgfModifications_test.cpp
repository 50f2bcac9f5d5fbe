// The modification list of MS-GF+, and what a mass in a peptide means.
#include "pepident/MsgfModifications.h"

#include <string>
#include <vector>

#include "pepident/EngineTableText.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using Place = MsgfModifications::Place;

/// At a residue inside of a peptide.
const Place kInside = {3, 'K', 'R'};

/// What the mass stands for by a list of this text; empty: for nothing.
std::string Found(const std::string& list, const std::string& mass, const Place& place = kInside)
{
    const TempFolder folder;
    const MsgfModifications mods =
        MsgfModifications::FromList(folder.Write("mods.txt", list), "label");
    const IdentModification* const mod = mods.Find(mass, place);
    return mod == nullptr ? "" : FullDump(*mod);
}

struct LineCase {
    std::string reason;
    std::string line;
    std::string mass;
    std::string mod;
};

TEST(MsgfModifications, LinesOfAList)
{
    const std::vector<LineCase> cases = {
        {"a mass", "15.994915,M,opt,any,Oxidation", "+15.995",
         "Oxidation@0 on M Anywhere +15.994915"},
        {"a composition", "C2H3N1O1,C,fix,any,Carbamidomethyl", "+57.021",
         "Carbamidomethyl@0 on C Anywhere +57.021464"},
        {"a negative mass", "-17.026549,Q,opt,N-term,Gln->pyro-Glu", "-17.027",
         "Gln->pyro-Glu@0 on Q Any N-term -17.026549"},
        {"any residue", "1.5,*,opt,any,A", "+1.5", "A@0 on * Anywhere +1.500000"},
        {"a terminus", "1.5,*,fix,N-term,A", "+1.5", "A@0 on N-term Any N-term +1.500000"},
        {"the other terminus", "1.5,*,fix,C-term,A", "+1.5", "A@0 on C-term Any C-term +1.500000"},
        {"of the protein", "1.5,*,opt,Prot-N-term,A", "+1.5",
         "A@0 on N-term Protein N-term +1.500000"},
        {"its end", "1.5,K,opt,Prot-C-term,A", "+1.5", "A@0 on K Protein C-term +1.500000"},
        {"places in any case, hyphens dropped", "1.5,*,opt,protNTERM,A", "+1.5",
         "A@0 on N-term Protein N-term +1.500000"},
        {"an unknown place", "1.5,K,opt,somewhere,A", "+1.5", "A@0 on K Anywhere +1.500000"},
        {"blanks around the fields", " 1.5 ,\tK , opt , any , A b ", "+1.5",
         "A b@0 on K Anywhere +1.500000"},
        {"a comment behind", "1.5,K,opt,any,A # why", "+1.5", "A@0 on K Anywhere +1.500000"},
        {"further fields", "1.5,K,opt,any,A,more", "+1.5", "A@0 on K Anywhere +1.500000"},
        {"an empty name", "1.5,K,opt,any,", "+1.5", "@0 on K Anywhere +1.500000"},
        {"a comment", "#1.5,K,opt,any,A", "+1.5", ""},
        {"a comment from inside", "1.5,K,opt#,any,A", "+1.5", ""},
        {"a setting", "NumMods=1.5,K,opt,any,A", "+1.5", ""},
        {"an equals sign in a comment", "1.5,K,opt,any,A #=", "+1.5",
         "A@0 on K Anywhere +1.500000"},
        {"a residue of its own", "1.5,K,custom,any,A", "+1.5", ""},
        {"in any case", "1.5,K,Custom,any,A", "+1.5", ""},
        {"four fields", "1.5,K,opt,any", "+1.5", ""},
        {"no residue", "1.5,,opt,any,A", "+1.5", ""},
        {"a mass that is none", "mass,K,opt,any,A", "+0", "A@0 on K Anywhere +0.000000"},
        {"an empty line", "", "+1.5", ""},
    };
    for (const LineCase& row : cases) {
        EXPECT_EQ(Found(row.line + "\n", row.mass), row.mod) << row.reason;
        EXPECT_EQ(Found("\r\n" + row.line, row.mass), row.mod) << row.reason;
    }
}

TEST(MsgfModifications, EachResidueMakesAModification)
{
    const std::string list = "79.966331,STY,opt,any,Phospho\n";
    EXPECT_EQ(Found(list, "+79.966", {1, 'S', 'A'}), "Phospho@0 on S Anywhere +79.966331");
    EXPECT_EQ(Found(list, "+79.966", {2, 'Y', 'A'}), "Phospho@0 on Y Anywhere +79.966331");
    EXPECT_EQ(Found(list, "+79.966", {2, 'A', 'T'}), "Phospho@0 on S Anywhere +79.966331")
        << "the first one where none fits";
    EXPECT_EQ(Found("1.5,K*,opt,N-term,A\n", "+1.5", {0, '\0', 'M'}),
              "A@0 on N-term Any N-term +1.500000");
}

TEST(MsgfModifications, ACompositionTellsItsWrongCharacters)
{
    EXPECT_EQ(OutputOf([] {
                  EXPECT_EQ(Found("C1?,K,opt,any,A\n", "+12"), "A@0 on K Anywhere +12.000000");
                  Found("1e-3,K,opt,any,A\n", "+12");
              }),
              Repeat("Unexpected Charactor in modification composition\n", 5));
}

TEST(MsgfModifications, AListThatCannotBeRead)
{
    EXPECT_EQ(ThrownBy([] { MsgfModifications::FromList("/no/mods.txt", "label"); }),
              (Thrown{"FileNotReadable", "PeptideIdentificationIO", "label",
                      "the file '/no/mods.txt' is not readable for the current user"}));
}

struct MassCase {
    std::string text;
    bool isFound;
};

TEST(MsgfModifications, AMassIsComparedInItsDecimals)
{
    const MsgfModifications mods({{"A", 15.994915, "M", "Anywhere", 0}});
    const std::vector<MassCase> cases = {
        {"+15.994915", true}, {"+15.99492", true}, {"+15.9949", true},    {"+15.995", true},
        {"+15.99", true},     {"+16.0", true},     {"+16", true},         {"+16.", true},
        {"15.995", true},     {"+15.996", false},  {"+15.994", false},    {"+15.9950", false},
        {"+15.98", false},    {"+15", false},      {"+17", false},        {"-15.995", false},
        {"+", false},         {"", false},         {"+15.995000", false},
    };
    for (const MassCase& row : cases) {
        EXPECT_EQ(mods.Find(row.text, kInside) != nullptr, row.isFound) << row.text;
    }
}

TEST(MsgfModifications, RoundedHalfwayEitherWay)
{
    const MsgfModifications mods({{"A", 1.0005, "M", "Anywhere", 0}});
    EXPECT_NE(mods.Find("+1.000", kInside), nullptr);
    EXPECT_NE(mods.Find("+1.001", kInside), nullptr);
    EXPECT_EQ(mods.Find("+1.002", kInside), nullptr);
}

TEST(MsgfModifications, OfOneMassTheFirstThatFitsThePlace)
{
    const MsgfModifications mods({{"tail", 1.5, "C-term", "Any C-term", 0},
                                  {"head", 1.5, "N-term", "Any N-term", 0},
                                  {"head of Q", 1.5, "Q", "Protein N-term", 0},
                                  {"inside", 1.5, "K", "Anywhere", 0},
                                  {"any", 1.5, "*", "Anywhere", 0},
                                  {"later", 1.5, "K", "Anywhere", 0}});
    const auto nameAt = [&mods](const Place& place) { return mods.Find("+1.5", place)->strName; };
    EXPECT_EQ(nameAt({0, '\0', 'Q'}), "head");
    EXPECT_EQ(nameAt({1, 'K', 'R'}), "inside");
    EXPECT_EQ(nameAt({1, 'M', 'R'}), "any");
    EXPECT_EQ(nameAt({7, 'K', '\0'}), "tail");
    EXPECT_EQ(nameAt({0, '\0', '\0'}), "tail") << "masses without a residue";
}

TEST(MsgfModifications, ResiduesOfTermini)
{
    const MsgfModifications mods({{"first", 1.5, "A", "Anywhere", 0},
                                  {"Q first", 1.5, "Q", "Any N-term", 0},
                                  {"K last", 1.5, "K", "Protein C-term", 0}});
    const auto nameAt = [&mods](const Place& place) { return mods.Find("+1.5", place)->strName; };
    EXPECT_EQ(nameAt({0, '\0', 'Q'}), "Q first");
    EXPECT_EQ(nameAt({0, '\0', 'E'}), "first") << "none fits";
    EXPECT_EQ(nameAt({4, 'K', '\0'}), "K last");
    EXPECT_EQ(nameAt({4, 'K', 'P'}), "first");
}

TEST(MsgfModifications, NumbersThatAreNone)
{
    const MsgfModifications mods(
        {{"A", std::numeric_limits<double>::quiet_NaN(), "K", "Anywhere", 0},
         {"B", std::numeric_limits<double>::infinity(), "K", "Anywhere", 0}});
    EXPECT_EQ(mods.Find("+1.5", kInside), nullptr);
    EXPECT_EQ(mods.Find("+" + Repeat("9", 400), kInside), nullptr);
    EXPECT_EQ(mods.Find("+1." + Repeat("0", 5000), kInside), nullptr);
}

} // namespace
} // namespace Vorlan::test
