#include <cmath>

#include "DataStructures.h"
#include "support/Exceptions.h"
#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Thrown;
using test::ThrownBy;
using Mods = std::vector<IdentModification>;

const IdentModification kOxidation("Oxidation", 15.994915, "M", "Anywhere", 3);
const IdentModification kAcetyl("Acetyl", 42.010565, "N-term", "Protein N-term", 0);

void ExpectDefaults(const PeptideIdentification& match)
{
    EXPECT_EQ(match.strDatasetName, "");
    EXPECT_EQ(match.strSpectrumName, "");
    EXPECT_EQ(match.strSequence, "");
    EXPECT_EQ(match.dValue1, 0.0);
    EXPECT_EQ(match.nCharge, 0U);
    EXPECT_EQ(match.dValue2, 0.0);
    EXPECT_EQ(match.dValue3, 0.0);
    EXPECT_EQ(match.dMassShift, 0.0);
    EXPECT_EQ(match.nValue4, 0U);
    EXPECT_EQ(match.dMainScore, 0.0);
    EXPECT_FALSE(match.bHighScoreBetter);
    EXPECT_EQ(match.dObsMH, 0.0);
    EXPECT_EQ(match.nValue5, 0);
    EXPECT_FALSE(match.bDecoy);
    EXPECT_TRUE(match.vEvidences.empty());
    EXPECT_TRUE(match.vMods.empty());
    EXPECT_TRUE(match.vAltMods.empty());
}

/// Every field set to a value of its own.
PeptideIdentification Filled()
{
    PeptideIdentification match;
    match.strDatasetName = "run01.mgf";
    match.strSpectrumName = "run01.00005.00005.2";
    match.strSequence = "PEMTIDE";
    match.dValue1 = 1.5;
    match.nCharge = 2;
    match.dValue2 = 3.5;
    match.dValue3 = 4.5;
    match.dMassShift = 5.5;
    match.nValue4 = 6;
    match.dMainScore = 7.5;
    match.bHighScoreBetter = true;
    match.dObsMH = 8.5;
    match.nValue5 = -9;
    match.bDecoy = true;
    match.vEvidences = {PeptideEvidence("P12345", 10, 25, 'K', 'A')};
    match.vMods = {kOxidation};
    match.vAltMods = {kAcetyl, kOxidation};
    return match;
}

void ExpectFilled(const PeptideIdentification& match)
{
    EXPECT_EQ(match.strDatasetName, "run01.mgf");
    EXPECT_EQ(match.strSpectrumName, "run01.00005.00005.2");
    EXPECT_EQ(match.strSequence, "PEMTIDE");
    EXPECT_EQ(match.dValue1, 1.5);
    EXPECT_EQ(match.nCharge, 2U);
    EXPECT_EQ(match.dValue2, 3.5);
    EXPECT_EQ(match.dValue3, 4.5);
    EXPECT_EQ(match.dMassShift, 5.5);
    EXPECT_EQ(match.nValue4, 6U);
    EXPECT_EQ(match.dMainScore, 7.5);
    EXPECT_TRUE(match.bHighScoreBetter);
    EXPECT_EQ(match.dObsMH, 8.5);
    EXPECT_EQ(match.nValue5, -9);
    EXPECT_TRUE(match.bDecoy);
    ASSERT_EQ(match.vEvidences.size(), 1U);
    EXPECT_EQ(match.vEvidences[0].strProteinAccession, "P12345");
    EXPECT_EQ(match.vMods, Mods{kOxidation});
    EXPECT_EQ(match.vAltMods, (Mods{kAcetyl, kOxidation}));
}

TEST(PeptideIdentification, FreshOneIsEmpty)
{
    ExpectDefaults(PeptideIdentification());
}

TEST(PeptideIdentification, ClearSetsEveryFieldBack)
{
    PeptideIdentification match = Filled();
    match.Clear();
    ExpectDefaults(match);
    match.Clear();
    ExpectDefaults(match);
}

TEST(PeptideIdentification, CopyAndMoveCarryEveryField)
{
    PeptideIdentification match = Filled();
    const PeptideIdentification copied = match;
    ExpectFilled(copied);
    PeptideIdentification assigned;
    assigned = match;
    ExpectFilled(assigned);
    assigned.vMods.clear();
    assigned.strSequence = "X";
    ExpectFilled(match);
    const PeptideIdentification moved = std::move(match);
    ExpectFilled(moved);
    PeptideIdentification moveAssigned = copied;
    moveAssigned.Clear();
    moveAssigned = PeptideIdentification(copied);
    ExpectFilled(moveAssigned);
}

// ---- Modifications ---------------------------------------------------------

IdentModification At(std::int32_t pos, const std::string& name)
{
    return {name, 1.0, "K", "Anywhere", pos};
}

std::string NamesOf(const Mods& mods)
{
    std::string names;
    for (const IdentModification& mod : mods) {
        names += mod.strName;
    }
    return names;
}

struct SortCase {
    const char* reason;
    Mods mods;
    const char* names;
};

const SortCase kSortCases[] = {
    {"none", {}, ""},
    {"one", {At(1, "a")}, "a"},
    {"two", {At(2, "b"), At(1, "a")}, "ab"},
    {"termini are the first and the last", {At(8, "c"), At(3, "b"), At(0, "a")}, "abc"},
    {"below 0 comes first", {At(0, "b"), At(-1, "a")}, "ab"},
    {"the ends of 32 bits", {At(2147483647, "b"), At(-2147483647 - 1, "a")}, "ab"},
    {"equal places keep their order", {At(2, "b"), At(1, "a"), At(2, "c"), At(2, "d")}, "abcd"},
};

TEST(PeptideIdentification, SortModSortsByPlace)
{
    for (const SortCase& c : kSortCases) {
        PeptideIdentification match;
        match.vMods = c.mods;
        match.vAltMods = {At(2, "y"), At(1, "x")};
        match.SortMod();
        EXPECT_EQ(NamesOf(match.vMods), c.names) << c.reason;
        EXPECT_EQ(NamesOf(match.vAltMods), "yx") << c.reason;
    }
}

TEST(PeptideIdentification, SortModIsStableOnLongLists)
{
    test::Random random(41);
    PeptideIdentification match;
    for (int i = 0; i < 5000; ++i) {
        match.vMods.push_back(At(static_cast<std::int32_t>(random.Below(20)), ""));
        match.vMods.back().dMass = i;
    }
    match.SortMod();
    for (std::size_t i = 1; i < match.vMods.size(); ++i) {
        const IdentModification& a = match.vMods[i - 1];
        const IdentModification& b = match.vMods[i];
        ASSERT_TRUE(a.nPos < b.nPos || (a.nPos == b.nPos && a.dMass < b.dMass)) << i;
    }
}

TEST(PeptideIdentification, PosLessLooksAtThePlaceOnly)
{
    EXPECT_TRUE(PeptideIdentification::bPosLess(At(1, "b"), At(2, "a")));
    EXPECT_FALSE(PeptideIdentification::bPosLess(At(2, "a"), At(1, "b")));
    EXPECT_FALSE(PeptideIdentification::bPosLess(At(1, "a"), At(1, "b")));
}

struct SameCase {
    const char* reason;
    Mods mods;
    Mods other;
    bool isSame;
};

const SameCase kSameCases[] = {
    {"two empty lists", {}, {}, true},
    {"equal lists", {kAcetyl, kOxidation}, {kAcetyl, kOxidation}, true},
    {"another order", {kAcetyl, kOxidation}, {kOxidation, kAcetyl}, false},
    {"one more", {kAcetyl}, {kAcetyl, kOxidation}, false},
    {"one less", {kAcetyl, kOxidation}, {kAcetyl}, false},
    {"nothing beside something", {}, {kAcetyl}, false},
    {"another name", {At(1, "a")}, {At(1, "A")}, false},
    {"another place", {At(1, "a")}, {At(2, "a")}, false},
    {"another site", {{"a", 1.0, "K", "Anywhere", 1}}, {{"a", 1.0, "R", "Anywhere", 1}}, false},
    {"another position of the site",
     {{"a", 1.0, "K", "Anywhere", 1}},
     {{"a", 1.0, "K", "Any N-term", 1}},
     false},
    {"another mass in the last bit",
     {{"a", 0.3, "K", "Anywhere", 1}},
     {{"a", 0.1 + 0.2, "K", "Anywhere", 1}},
     false},
    {"no mass is as good as minus no mass",
     {{"a", 0.0, "K", "Anywhere", 1}},
     {{"a", -0.0, "K", "Anywhere", 1}},
     true},
    {"not a number is like nothing",
     {{"a", std::nan(""), "K", "Anywhere", 1}},
     {{"a", std::nan(""), "K", "Anywhere", 1}},
     false},
};

TEST(PeptideIdentification, ModsAreSameInTheSameOrderOnly)
{
    for (const SameCase& c : kSameCases) {
        PeptideIdentification match;
        match.vMods = c.mods;
        match.vAltMods = {kAcetyl};
        EXPECT_EQ(match.isModSame(c.other), c.isSame) << c.reason;
    }
}

// ---- Target or decoy -------------------------------------------------------

struct TargetCase {
    const char* reason;
    std::vector<std::string> accessions;
    const char* tag;
    bool isTarget;
};

const TargetCase kTargetCases[] = {
    {"a target only", {"P12345"}, "REV_", true},
    {"a decoy only", {"REV_P12345"}, "REV_", false},
    {"a target and a decoy", {"P12345", "REV_P12345"}, "REV_", false},
    {"a decoy and a target", {"REV_P12345", "P12345"}, "REV_", false},
    {"two targets", {"P12345", "Q9"}, "REV_", true},
    {"case matters", {"rev_P12345"}, "REV_", true},
    {"the tag further on", {"xREV_P12345"}, "REV_", true},
    {"the tag itself", {"REV_"}, "REV_", false},
    {"shorter than the tag", {"REV"}, "REV_", true},
    {"an empty accession", {""}, "REV_", true},
    {"an empty tag is a prefix of all", {"P12345"}, "", false},
    {"an empty tag is a prefix of nothing, too", {""}, "", false},
    {"bytes above 127", {"\xC3\xA4P"}, "\xC3\xA4", false},
};

PeptideIdentification MatchOf(const std::vector<std::string>& accessions)
{
    PeptideIdentification match;
    for (const std::string& accession : accessions) {
        match.vEvidences.emplace_back(accession, 1, 2, 'K', 'A');
    }
    return match;
}

TEST(PeptideIdentification, TargetHasNoDecoyProtein)
{
    for (const TargetCase& c : kTargetCases) {
        PeptideIdentification match = MatchOf(c.accessions);
        EXPECT_EQ(match.isTarget(c.tag), c.isTarget) << c.reason;
        match.bDecoy = true;
        EXPECT_FALSE(match.isTarget(c.tag)) << c.reason;
    }
}

TEST(PeptideIdentification, KnownDecoyNeedsNoProteins)
{
    PeptideIdentification match;
    match.bDecoy = true;
    EXPECT_FALSE(match.isTarget("REV_"));
}

TEST(PeptideIdentification, TargetWithoutProteinsThrows)
{
    const PeptideIdentification match;
    const Thrown expected = {
        "InvalidValue", "DataStructures", "PeptideIdentification::isTarget",
        "the value '' was used but is not valid; There is no protein information"};
    EXPECT_EQ(ThrownBy([&match] { match.isTarget("REV_"); }), expected);
    EXPECT_EQ(ThrownBy([&match] { match.isTarget(""); }), expected);
    EXPECT_THROW(match.isTarget("REV_"), OpenMS::Exception::InvalidValue);
}

} // namespace
} // namespace Vorlan
