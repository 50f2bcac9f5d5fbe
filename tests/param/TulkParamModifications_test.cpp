// Which record of the database a modification of the file becomes.
#include "ParameterText.h"

namespace Vorlan {
namespace {

using test::FullParameters;
using test::InvalidParameter;
using test::ParameterText;
using test::Thrown;

class TulkParamModifications : public test::ParameterTest {
protected:
    /// The variable modifications that a file with these is read as.
    std::vector<IdentModification> Variable(const std::vector<std::string>& texts,
                                            const std::string& engine = "Comet (.pep.xml)")
    {
        EXPECT_EQ(Read(FullParameters()
                           .Set("Search", "search_result_format", engine)
                           .SetMods("var_mod", texts)),
                  Thrown{});
        return Search().vVarMods;
    }
};

struct Found {
    const char* reason;
    const char* text;
    IdentModification mod;
};

const Found kFound[] = {
    {"a residue", "Oxidation (M)", {"Oxidation", 15.994915, "M", "Anywhere", 0}},
    {"each terminus has its record", "Cap (Any N-term)", {"Cap", 1.0, "N-term", "Any N-term", 0}},
    {"the protein's start", "Cap (Protein N-term)", {"Cap", 2.0, "N-term", "Protein N-term", 0}},
    {"any end", "Cap (Any C-term)", {"Cap", 3.0, "C-term", "Any C-term", 0}},
    {"the protein's end", "Cap (Protein C-term)", {"Cap", 4.0, "C-term", "Protein C-term", 0}},
    {"in any case", "Cap (pROTEIN n-TERM)", {"Cap", 2.0, "N-term", "Protein N-term", 0}},
    {"a bare terminus is a site", "Cap (N-term)", {"Cap", 5.0, "N-term", "Anywhere", 0}},
    {"a residue anywhere", "Ring (K)", {"Ring", 7.0, "K", "Anywhere", 0}},
    {"at any start", "Ring (Any N-term K)", {"Ring", 8.0, "K", "Any N-term", 0}},
    {"at the protein's start", "Ring (Protein N-term K)", {"Ring", 9.0, "K", "Protein N-term", 0}},
    {"at any end", "Ring (Any C-term K)", {"Ring", 10.0, "K", "Any C-term", 0}},
    {"at the protein's end", "Ring (Protein C-term K)", {"Ring", 11.0, "K", "Protein C-term", 0}},
    {"a small residue behind it", "Ring (any c-term k)", {"Ring", 10.0, "K", "Any C-term", 0}},

    {"else a record of any place",
     "Tail (Protein C-term)",
     {"Tail", 12.0, "C-term", "Protein C-term", 0}},
    {"a place that the file does not name",
     "Gln->pyro-Glu (Q)",
     {"Gln->pyro-Glu", 6.0, "Q", "Anywhere", 0}},
    {"the other place", "Oxidation (Any N-term M)", {"Oxidation", 15.994915, "M", "Any N-term", 0}},
    {"then the first of the database", "Cap (C-term)", {"Cap", 3.0, "C-term", "Anywhere", 0}},

    {"by the full id", "Oxidation (M) (M)", {"Oxidation (M)", 15.994915, "M", "Anywhere", 0}},
    {"by the full name", "the Oxidation (M)", {"the Oxidation", 15.994915, "M", "Anywhere", 0}},
    {"by the accession", "UniMod:Ring (K)", {"UniMod:Ring", 7.0, "K", "Anywhere", 0}},
};

TEST_F(TulkParamModifications, TheRecordOfTheNamedPlaceComesFirstThenAnyOther)
{
    for (const Found& row : kFound) {
        SCOPED_TRACE(row.reason);
        EXPECT_THAT(Variable({row.text}), testing::ElementsAre(row.mod));
    }
}

TEST_F(TulkParamModifications, TheThreeListsAreReadAlike)
{
    const std::vector<std::string> texts = {"Phospho (T)", "Cap (Any C-term)"};
    const auto expected =
        testing::ElementsAre(IdentModification("Phospho", 79.966331, "T", "Anywhere", 0),
                             IdentModification("Cap", 3.0, "C-term", "Any C-term", 0));
    ASSERT_EQ(Read(FullParameters()
                       .SetMods("fixed_mod", texts)
                       .SetMods("var_mod", texts)
                       .SetMods("target_mod", texts)),
              Thrown{});
    EXPECT_THAT(Search().vFixedMods, expected);
    EXPECT_THAT(Search().vVarMods, expected);
    EXPECT_THAT(Localize().vTargetMods, expected);
}

TEST_F(TulkParamModifications, OneMayBeNamedTwice)
{
    EXPECT_EQ(Variable({"Oxidation (M)", "Oxidation (M)"}).size(), 2U);
}

TEST_F(TulkParamModifications, SpecifiedOnesAreTheFixedThenTheVariableOnes)
{
    ASSERT_EQ(Read(FullParameters()), Thrown{});
    std::vector<std::string> names;
    for (const IdentModification& mod : Search().getSpecifiedMod()) {
        names.push_back(mod.strName + " " + mod.strSite);
    }
    EXPECT_THAT(names, testing::ElementsAre("Carbamidomethyl C", "Oxidation M", "Cap N-term"));
}

// ---- MSFragger -----------------------------------------------------------

const IdentModification kProteinStart("Oxidation", 15.994915, "N-term", "Protein N-term", 0);

TEST_F(TulkParamModifications, B50_MSFraggerOxidizesTheProteinStartToo)
{
    const auto mods = Variable({"Oxidation (M)", "Phospho (S)"}, "MSFragger (.pepXML)");
    ASSERT_EQ(mods.size(), 3U);
    EXPECT_EQ(mods[2], kProteinStart);
}

TEST_F(TulkParamModifications, B50_ItIsAddedOnce)
{
    const auto mods =
        Variable({"Oxidation (M)", "Oxidation (Any N-term M)"}, "msfragger (.PEPXML)");
    ASSERT_EQ(mods.size(), 3U);
    EXPECT_EQ(mods[2], kProteinStart);
}

TEST_F(TulkParamModifications, B50_OtherEnginesDoNot)
{
    EXPECT_EQ(Variable({"Oxidation (M)"}, "pFind 3 (.spectra)").size(), 1U);
}

TEST_F(TulkParamModifications, B50_OtherModificationsDoNot)
{
    EXPECT_EQ(Variable({"Phospho (S)"}, "MSFragger (.pepXML)").size(), 1U);
    EXPECT_EQ(Variable({"Oxidation (W)"}, "MSFragger (.pepXML)").size(), 1U);
    EXPECT_EQ(Variable({"UniMod:Oxidation (M)"}, "MSFragger (.pepXML)").size(), 1U);
    EXPECT_EQ(Variable({}, "MSFragger (.pepXML)").size(), 0U);
}

TEST_F(TulkParamModifications, B50_AFixedOneDoesNot)
{
    ASSERT_EQ(Read(FullParameters()
                       .Set("Search", "search_result_format", "MSFragger (.pepXML)")
                       .SetMods("fixed_mod", {"Oxidation (M)"})
                       .SetMods("var_mod", {"Phospho (S)"})),
              Thrown{});
    EXPECT_EQ(Search().vFixedMods.size(), 1U);
    EXPECT_EQ(Search().vVarMods.size(), 1U);
}

TEST_F(TulkParamModifications, B50_ItIsThereBeforeTheDatasetsAreRead)
{
    EXPECT_EQ(Read(FullParameters()
                       .Set("Search", "search_result_format", "MSFragger (.pepXML)")
                       .Set("Search", "dataset_format", "bad")),
              InvalidParameter("Search", "dataset_format"));
    EXPECT_EQ(Search().vVarMods.back(), kProteinStart);
}

} // namespace
} // namespace Vorlan
