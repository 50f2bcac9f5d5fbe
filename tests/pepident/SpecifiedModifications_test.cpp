// The modifications of the parameters, and what getMod explains by them.
#include "pepident/SpecifiedModifications.h"

#include <cmath>

#include "PeptideIdentificationIO.h"
#include "param/ParameterText.h"
#include "support/Random.h"

namespace Vorlan {
namespace {

using test::FullParameters;
using test::Thrown;
using test::ThrownBy;

const Thrown kUnexplained = {"ElementNotFound", "PeptideIdentificationIO",
                             "MSFraggerPepXMLPepIdentIO::getMod",
                             "the element 'the mass shift is a combination of modifications' "
                             "could not be found"};

class SpecifiedModificationsTest : public test::ParameterTest {
protected:
    void Specify(const std::vector<std::string>& fixed, const std::vector<std::string>& variable)
    {
        ASSERT_EQ(Read(FullParameters().SetMods("fixed_mod", fixed).SetMods("var_mod", variable)),
                  Thrown{});
    }

    /// Leaves the parameters unread.
    static void SpecifyNothing()
    {
        ThrownBy([] { CTulkParam::readFromFile("missing.ini"); });
        ASSERT_EQ(CTulkParam::getInstance()->getSearchParam(), nullptr);
    }

    /// What getMod gives, as "name/position type"; thrown for nothing.
    static std::vector<std::string> Explained(double delta, int place, char residue,
                                              char before = 'K', char after = 'R')
    {
        MSFraggerPepXMLPepIdentIO reader;
        std::vector<IdentModification> found(3);
        std::vector<std::string> names;
        const Thrown thrown =
            ThrownBy([&] { reader.getMod(found, delta, place, residue, before, after); });
        if (!(thrown == Thrown{})) {
            EXPECT_EQ(thrown, kUnexplained);
            EXPECT_TRUE(found.empty());
            return {"unexplained"};
        }
        for (const IdentModification& mod : found) {
            EXPECT_EQ(mod.nPos, 0);
            names.push_back(mod.strName + "/" + mod.strPosition);
        }
        return names;
    }
};

using Names = std::vector<std::string>;

TEST_F(SpecifiedModificationsTest, AreTheFixedThenTheVariableOnes)
{
    Specify({"Carbamidomethyl (C)"}, {"Oxidation (M)", "Phospho (S)"});
    const std::vector<IdentModification> mods = SpecifiedModifications();
    ASSERT_EQ(mods.size(), 3U);
    EXPECT_EQ(mods[0], IdentModification("Carbamidomethyl", 57.021464, "C", "Anywhere", 0));
    EXPECT_EQ(mods[1], IdentModification("Oxidation", 15.994915, "M", "Anywhere", 0));
    EXPECT_EQ(mods[2], IdentModification("Phospho", 79.966331, "S", "Anywhere", 0));
}

TEST_F(SpecifiedModificationsTest, AreNoneWithoutParameters)
{
    SpecifyNothing();
    EXPECT_TRUE(SpecifiedModifications().empty());
    EXPECT_EQ(Explained(57.021464, 3, 'C'), (Names{"unexplained"}));
}

TEST_F(SpecifiedModificationsTest, ExplainAMass)
{
    Specify({"Carbamidomethyl (C)"}, {"Oxidation (M)", "Phospho (S)"});
    EXPECT_EQ(Explained(57.0215, 3, 'C'), (Names{"Carbamidomethyl/Anywhere"}));
    EXPECT_EQ(Explained(15.9949, 3, 'M'), (Names{"Oxidation/Anywhere"}));
    EXPECT_EQ(Explained(31.99, 3, 'M'), (Names{"Oxidation/Anywhere", "Oxidation/Anywhere"}));
    EXPECT_EQ(Explained(15.9949, 3, 'S'), (Names{"unexplained"}));
    EXPECT_EQ(Explained(0.0, 3, 'S'), (Names{"unexplained"}));
    EXPECT_EQ(Explained(std::nan(""), 3, 'S'), (Names{"unexplained"}));
    EXPECT_EQ(Explained(HUGE_VAL, 3, 'S'), (Names{"unexplained"}));
}

TEST_F(SpecifiedModificationsTest, AreAskedForAtEachCall)
{
    MSFraggerPepXMLPepIdentIO reader;
    std::vector<IdentModification> found;
    Specify({}, {"Oxidation (M)"});
    reader.getMod(found, 15.994915, 3, 'M', 'K', 'R');
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].strName, "Oxidation");
    Specify({}, {"Ring (K)"});
    reader.getMod(found, 7.0, 3, 'K', 'K', 'R');
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].strName, "Ring");
    EXPECT_EQ(ThrownBy([&] { reader.getMod(found, 15.994915, 3, 'M', 'K', 'R'); }), kUnexplained);
}

// Of two with one mass the first in the list; those that do not fit are no
// candidates, however near.
TEST_F(SpecifiedModificationsTest, OnlyThoseThatFitTakePart)
{
    Specify({}, {"Cap (Any N-term)", "Cap (Protein N-term)", "Ring (K)", "Ring (Any C-term K)"});
    EXPECT_EQ(Explained(1, 1, 'S'), (Names{"Cap/Any N-term"}));
    EXPECT_EQ(Explained(2, 1, 'S'), (Names{"Cap/Any N-term", "Cap/Any N-term"}));
    EXPECT_EQ(Explained(2, 1, 'S', '-'), (Names{"Cap/Protein N-term"}));
    EXPECT_EQ(Explained(1, 2, 'S', '-'), (Names{"unexplained"}));
    EXPECT_EQ(Explained(10, 5, 'K'), (Names{"unexplained"}));
    EXPECT_EQ(Explained(10, 6, 'K'), (Names{"Ring/Any C-term"}));
    EXPECT_EQ(Explained(17, 6, 'K'), (Names{"Ring/Anywhere", "Ring/Any C-term"}));
    EXPECT_EQ(Explained(8, 1, 'K'), (Names{"Cap/Any N-term", "Ring/Anywhere"}));
}

TEST_F(SpecifiedModificationsTest, B53_OneWinsOverTwoThatAreNearer)
{
    Specify({}, {"Phospho (S)", "Cap (Any N-term)"});
    EXPECT_EQ(Explained(79.966331 + 0.0499, 1, 'S'), (Names{"Phospho/Anywhere"}));
    EXPECT_EQ(Explained(79.966331 + 0.9501, 1, 'S'), (Names{"Phospho/Anywhere", "Cap/Any N-term"}));
}

// The sum of 0.05 and 1.0 differs from 1 by more than 0.05, as a double.
TEST_F(SpecifiedModificationsTest, B54_AMassJustOutsideIsUnexplained)
{
    Specify({}, {"Ring (K)"});
    EXPECT_EQ(Explained(7.0 + 0.0499, 3, 'K'), (Names{"Ring/Anywhere"}));
    EXPECT_EQ(Explained(7.0 - 0.0499, 3, 'K'), (Names{"Ring/Anywhere"}));
    EXPECT_EQ(Explained(7.0 + 0.0501, 3, 'K'), (Names{"unexplained"}));
    EXPECT_EQ(Explained(7.0 - 0.0501, 3, 'K'), (Names{"unexplained"}));
}

TEST_F(SpecifiedModificationsTest, B54_TwentyOfWhichNoneExplain)
{
    std::vector<std::string> names;
    for (int i = 0; i < 20; ++i) {
        names.push_back(i % 2 == 0 ? "Ring (K)" : "Ring (Any C-term K)");
    }
    Specify({}, names);
    EXPECT_EQ(Explained(300.5, 8, 'K'), (Names{"unexplained"}));
}

TEST_F(SpecifiedModificationsTest, CometExplainsTheSame)
{
    Specify({}, {"Ring (K)"});
    CometPepXMLPepIdentIO reader;
    std::vector<IdentModification> found;
    reader.getMod(found, 14.0, 3, 'K', 'R', 'A');
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0], IdentModification("Ring", 7.0, "K", "Anywhere", 0));
    EXPECT_EQ(found[1], found[0]);
}

// ---- Against a plain twin --------------------------------------------------

/// getMod as it is described: candidates, all combinations of them, the nearest.
std::vector<IdentModification> PlainlyFound(double delta, int place, char residue, char before,
                                            char after)
{
    MSFraggerPepXMLPepIdentIO reader;
    std::vector<IdentModification> candidates;
    for (const IdentModification& mod : SpecifiedModifications()) {
        if (reader.SatisfySpecificity(mod, place, residue, before, after)) {
            candidates.push_back(mod);
        }
    }
    for (int k = 1; k <= 5; ++k) {
        std::vector<MSFraggerPepXMLPepIdentIO::Combination> all;
        reader.getModComb(all, candidates, k);
        double least = 0.05;
        std::vector<IdentModification> best;
        for (const auto& [sum, mods] : all) {
            if (std::abs(delta - sum) < least) {
                least = std::abs(delta - sum);
                best = mods;
            }
        }
        if (!best.empty()) {
            return best;
        }
    }
    return {};
}

TEST_F(SpecifiedModificationsTest, AgreeWithThePlainTwinAtAnyPlace)
{
    Specify({"Ring (K)"},
            {"Cap (Any N-term)", "Cap (Protein N-term)", "Oxidation (M)", "Cap (Any C-term)",
             "Cap (Protein C-term)", "Gln->pyro-Glu (Any N-term Q)", "Ring (Protein N-term K)",
             "Phospho (S)"});
    test::Random random(1);
    MSFraggerPepXMLPepIdentIO reader;
    int explained = 0;
    for (int i = 0; i < 2000; ++i) {
        const double delta = static_cast<double>(random.Below(40))
                             + (random.OneIn(3)   ? 15.994915
                                : random.OneIn(4) ? 0.0499
                                                  : 0.0);
        const int place = 1 + static_cast<int>(random.Below(9));
        const char residue = random.OneOf("KMQSA");
        const char before = random.OneOf("-K");
        const char after = random.OneOf("-R");
        std::vector<IdentModification> found;
        const Thrown thrown =
            ThrownBy([&] { reader.getMod(found, delta, place, residue, before, after); });
        const auto expected = PlainlyFound(delta, place, residue, before, after);
        ASSERT_EQ(found, expected) << delta << residue << place << before << after;
        ASSERT_EQ(thrown, expected.empty() ? kUnexplained : Thrown{});
        explained += expected.empty() ? 0 : 1;
    }
    EXPECT_GE(explained, 300);
    EXPECT_LE(explained, 1700);
}

// Answers are remembered by what they depend on, and only by that.
TEST_F(SpecifiedModificationsTest, RememberedAnswersAreThoseOfTheSamePlace)
{
    Specify({"Ring (K)"}, {"Cap (Any N-term)", "Cap (Protein N-term)", "Cap (Any C-term)",
                           "Cap (Protein C-term)", "Oxidation (M)"});
    test::Random random(2);
    MassExplainer remembering(SpecifiedModifications());
    for (int i = 0; i < 3000; ++i) {
        const auto delta = static_cast<double>(1 + random.Below(8));
        const ResiduePlace place = {1 + static_cast<int>(random.Below(9)), random.OneOf("KMS"),
                                    random.OneOf("-KX"), random.OneOf("-RX")};
        std::vector<IdentModification> seen;
        std::vector<IdentModification> fresh;
        const Thrown thrown = ThrownBy([&] { seen = remembering.Explain(delta, place); });
        const Thrown expected = ThrownBy(
            [&] { fresh = MassExplainer(SpecifiedModifications()).Explain(delta, place); });
        ASSERT_EQ(seen, fresh) << delta << place.residue << place.position;
        ASSERT_EQ(thrown, expected);
    }
}

// ---- getModComb -------------------------------------------------------------

using Combinations = std::vector<MSFraggerPepXMLPepIdentIO::Combination>;

/// "3:ab"
Names Texts(const Combinations& combinations)
{
    Names texts;
    for (const auto& [sum, mods] : combinations) {
        std::string text = std::to_string(static_cast<int>(sum)) + ":";
        for (const IdentModification& mod : mods) {
            text += mod.strName;
        }
        texts.push_back(text);
    }
    return texts;
}

const std::vector<IdentModification> kThree = {{"a", 1, "S", "Anywhere", 7},
                                               {"b", 10, "T", "Anywhere", 0},
                                               {"c", 100, "C-term", "Any C-term", 0}};

Names Combined(const std::vector<IdentModification>& mods, int k)
{
    MSFraggerPepXMLPepIdentIO reader;
    Combinations combinations(2); // which go
    reader.getModComb(combinations, mods, k);
    return Texts(combinations);
}

TEST(ModCombinations, B58_AreOrderedAndRepeat)
{
    EXPECT_EQ(Combined(kThree, 1), (Names{"1:a", "10:b", "100:c"}));
    EXPECT_EQ(Combined(kThree, 2), (Names{"2:aa", "11:ab", "101:ac", "11:ba", "20:bb", "110:bc",
                                          "101:ca", "110:cb", "200:cc"}));
    EXPECT_EQ(Combined(kThree, 3).size(), 27U);
    EXPECT_EQ(Combined(kThree, 5).size(), 243U);
    EXPECT_EQ(Combined(kThree, 5).front(), "5:aaaaa");
    EXPECT_EQ(Combined(kThree, 5)[1], "14:aaaab");
    EXPECT_EQ(Combined(kThree, 5).back(), "500:ccccc");
    EXPECT_EQ(Combined(kThree, 6).size(), 729U);
}

TEST(ModCombinations, ThereAreNoneOfNothing)
{
    EXPECT_EQ(Combined(kThree, 0), Names());
    EXPECT_EQ(Combined(kThree, -1), Names());
    EXPECT_EQ(Combined({}, 3), Names());
    EXPECT_EQ(Combined({kThree[0]}, 4), (Names{"4:aaaa"}));
}

TEST(ModCombinations, CandidatesMayBeThoseOfAFormerCombination)
{
    MSFraggerPepXMLPepIdentIO reader;
    Combinations combinations;
    reader.getModComb(combinations, kThree, 2);
    reader.getModComb(combinations, combinations[1].second, 2);
    EXPECT_EQ(Texts(combinations), (Names{"2:aa", "11:ab", "11:ba", "20:bb"}));
}

TEST(ModCombinations, AreSummedFromTheFirstMassOn)
{
    MSFraggerPepXMLPepIdentIO reader;
    const std::vector<IdentModification> mods = {{"a", 0.1, "S", "Anywhere", 0},
                                                 {"b", 0.7, "S", "Anywhere", 0},
                                                 {"c", 1e16, "S", "Anywhere", 0}};
    Combinations combinations;
    reader.getModComb(combinations, mods, 3);
    for (const auto& [sum, parts] : combinations) {
        ASSERT_EQ(parts.size(), 3U);
        EXPECT_EQ(sum, (parts[0].dMass + parts[1].dMass) + parts[2].dMass);
    }
}

TEST(ModCombinations, KeepTheModificationsAsTheyAre)
{
    MSFraggerPepXMLPepIdentIO reader;
    Combinations combinations;
    reader.getModComb(combinations, kThree, 2);
    EXPECT_EQ(combinations[5].second, (std::vector<IdentModification>{kThree[1], kThree[2]}));
}

// ---- Names -------------------------------------------------------------------

TEST(NameWithSite, IsThatOfAParameterFile)
{
    struct {
        const char* text;
        IdentModification mod;
    } const cases[] = {
        {"Oxidation (M)", {"Oxidation", 16, "M", "Anywhere", 0}},
        {"Acetyl (Protein N-term)", {"Acetyl", 42, "N-term", "Protein N-term", 0}},
        {"Gln->pyro-Glu (Any N-term Q)", {"Gln->pyro-Glu", -17, "Q", "Any N-term", 0}},
        {"Amidated (Any C-term)", {"Amidated", -1, "C-term", "Any C-term", 0}},
        {"Cap (N-term)", {"Cap", 5, "N-term", "Anywhere", 0}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(NameWithSite(c.mod), c.text);
    }
}

TEST(MassExplainer, AModificationOfATerminusMayNameTheResidueThere)
{
    const MassExplainer explainer({{"of Q", -17.0, "Q", "Any N-term", 0},
                                   {"of all", -18.0, "N-term", "Any N-term", 0},
                                   {"of none", -17.0, "", "Any N-term", 0}});
    const ResiduePlace first = {1, 'Q', 'K', 'A'};
    ASSERT_NE(explainer.OfTerminus(-17.0, "N-term", first), nullptr);
    EXPECT_EQ(explainer.OfTerminus(-17.0, "N-term", first)->strName, "of Q");
    EXPECT_EQ(explainer.OfTerminus(-17.0, "C-term", first), nullptr);
    const ResiduePlace other = {1, 'E', 'K', 'A'};
    EXPECT_EQ(explainer.OfTerminus(-17.0, "N-term", other), nullptr);
    ASSERT_NE(explainer.OfTerminus(-18.0, "N-term", other), nullptr);
    EXPECT_EQ(explainer.OfTerminus(-18.0, "N-term", other)->strName, "of all");
}

} // namespace
} // namespace Vorlan
