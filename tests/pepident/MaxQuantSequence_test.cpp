// Tags in the "Modified sequence" of MaxQuant.
#include "pepident/MaxQuantSequence.h"

#include <string>
#include <vector>

#include "pepident/EngineTableText.h"

namespace Vorlan::test {
namespace {

using maxquant::ModificationsIn;
using maxquant::NamesIn;
using testing::ElementsAre;

TEST(MaxQuantSequence, NamesWithoutTheirCounts)
{
    EXPECT_THAT(NamesIn("Oxidation (M)"), ElementsAre("Oxidation (M)"));
    EXPECT_THAT(NamesIn("2 Oxidation (M)"), ElementsAre("Oxidation (M)"));
    EXPECT_THAT(NamesIn("12 Phospho (STY),Acetyl (Protein N-term)"),
                ElementsAre("Phospho (STY)", "Acetyl (Protein N-term)"));
    EXPECT_THAT(NamesIn(" Oxidation (M) , 3 Phospho (STY) "),
                ElementsAre("Oxidation (M)", "Phospho (STY)"));
    EXPECT_THAT(NamesIn("2-oxo (K)"), ElementsAre("2-oxo (K)")) << "no blank, no count";
    EXPECT_THAT(NamesIn("15"), ElementsAre("15"));
    EXPECT_THAT(NamesIn(","), ElementsAre("", ""));
    EXPECT_THAT(NamesIn(""), ElementsAre());
}

struct TagCase {
    std::string reason;
    std::string sequence;
    std::vector<std::string> names;
    std::vector<std::string> mods;
};

void Check(const std::vector<TagCase>& cases, const std::vector<IdentModification>& specified = {})
{
    for (const TagCase& row : cases) {
        EXPECT_EQ(FullDump(ModificationsIn(row.sequence, row.names, specified)), row.mods)
            << row.reason;
    }
}

TEST(MaxQuantSequence, TagsOfOlderReleases)
{
    Check({
        {"none", "_PEPMK_", {"Oxidation (M)"}, {}},
        {"inside", "_PEPM(ox)K_", {"Oxidation (M)"}, {"Oxidation (M)@4 on M Anywhere +0.000000"}},
        {"two of one",
         "_M(ox)PEPM(ox)_",
         {"Oxidation (M)"},
         {"Oxidation (M)@1 on M Anywhere +0.000000", "Oxidation (M)@5 on M Anywhere +0.000000"}},
        {"in front",
         "_(ac)AMK_",
         {"Acetyl (Protein N-term)"},
         {"Acetyl (Protein N-term)@0 on N-term Protein N-term +0.000000"}},
        {"a terminus of any peptide",
         "_(ac)AMK_",
         {"Acetyl (N-term)"},
         {"Acetyl (N-term)@0 on N-term Any N-term +0.000000"}},
        {"behind the last residue",
         "_AMK(am)_",
         {"Amidated (C-term)"},
         {"Amidated (C-term)@4 on C-term Any C-term +0.000000"}},
        {"behind the closing underscore",
         "_AMK_(am)",
         {"Amidated (Protein C-term)"},
         {"Amidated (Protein C-term)@4 on C-term Protein C-term +0.000000"}},
        {"in any case",
         "_AM(OX)K_",
         {"oxidation (M)"},
         {"oxidation (M)@2 on M Anywhere +0.000000"}},
        {"without underscores",
         "AM(ox)K",
         {"Oxidation (M)"},
         {"Oxidation (M)@2 on M Anywhere +0.000000"}},
        {"a name without a site",
         "_AM(ox)K_",
         {"Oxidation"},
         {"Oxidation@2 on M Anywhere +0.000000"}},
    });
}

TEST(MaxQuantSequence, TagsOfNewerReleases)
{
    Check({
        {"with the whole name",
         "_(Acetyl (Protein N-term))AM(Oxidation (M))K_",
         {"Acetyl (Protein N-term)", "Oxidation (M)"},
         {"Acetyl (Protein N-term)@0 on N-term Protein N-term +0.000000",
          "Oxidation (M)@2 on M Anywhere +0.000000"}},
        {"of several residues",
         "_AS(Phospho (STY))K_",
         {"Phospho (STY)"},
         {"Phospho (STY)@2 on S Anywhere +0.000000"}},
        {"deeper parentheses",
         "_AK(a (b (c)))_",
         {"a (b (c))"},
         {"a (b (c))@2 on K Anywhere +0.000000"}},
    });
}

TEST(MaxQuantSequence, TheSiteDecidesBetweenTwoNames)
{
    const std::vector<std::string> names = {"Acetyl (Protein N-term)", "Acetyl (K)"};
    Check({
        {"the terminus",
         "_(ac)AK_",
         names,
         {"Acetyl (Protein N-term)@0 on N-term Protein N-term +0.000000"}},
        {"the residue", "_AK(ac)R_", names, {"Acetyl (K)@2 on K Anywhere +0.000000"}},
        {"both",
         "_(ac)AK(ac)R_",
         names,
         {"Acetyl (Protein N-term)@0 on N-term Protein N-term +0.000000",
          "Acetyl (K)@2 on K Anywhere +0.000000"}},
        {"neither: the first one, at its terminus",
         "_AR(ac)K_",
         names,
         {"Acetyl (Protein N-term)@0 on N-term Protein N-term +0.000000"}},
        {"two residues",
         "_AS(ph)Y(ph)_",
         {"Phospho (Y)", "Phospho (ST)"},
         {"Phospho (ST)@2 on S Anywhere +0.000000", "Phospho (Y)@3 on Y Anywhere +0.000000"}},
        {"the last residue or the end",
         "_AK(am)_",
         {"Amide (C-term)", "Amide (K)"},
         {"Amide (C-term)@3 on C-term Any C-term +0.000000"}},
    });
}

TEST(MaxQuantSequence, MassesAreThoseOfTheSpecifiedModifications)
{
    const std::vector<IdentModification> specified = {
        {"Oxidation", 15.994915, "M", "Anywhere", 0},    {"Phospho", 79.9, "S", "Anywhere", 0},
        {"Phospho", 79.8, "T", "Anywhere", 0},           {"Acetyl", 42.1, "K", "Anywhere", 0},
        {"Acetyl", 42.2, "N-term", "Protein N-term", 0},
    };
    Check(
        {
            {"by its whole name",
             "_M(ox)K_",
             {"Oxidation (M)"},
             {"Oxidation (M)@1 on M Anywhere +15.994915"}},
            {"by name and residue",
             "_AS(ph)T(ph)_",
             {"Phospho (STY)"},
             {"Phospho (STY)@2 on S Anywhere +79.900000",
              "Phospho (STY)@3 on T Anywhere +79.800000"}},
            {"a residue that is not specified",
             "_AY(ph)_",
             {"Phospho (STY)"},
             {"Phospho (STY)@2 on Y Anywhere +0.000000"}},
            {"a terminus by its whole name",
             "_(ac)AK_",
             {"Acetyl (Protein N-term)"},
             {"Acetyl (Protein N-term)@0 on N-term Protein N-term +42.200000"}},
        },
        specified);
}

TEST(MaxQuantSequence, TagsThatOnlyTheSpecifiedModificationsKnow)
{
    const std::vector<IdentModification> specified = {
        {"Oxidation", 15.994915, "M", "Anywhere", 0},
        {"Pyro", -17.0, "Q", "Any N-term", 0},
    };
    Check(
        {
            {"with no names", "_AM(ox)K_", {}, {"Oxidation (M)@2 on M Anywhere +15.994915"}},
            {"names come first", "_AM(ox)K_", {"Oxo (M)"}, {"Oxo (M)@2 on M Anywhere +0.000000"}},
            {"even where their site does not fit",
             "_AM(ox)K_",
             {"Oxo (K)"},
             {"Oxo (K)@2 on M Anywhere +0.000000"}},
            {"the whole name",
             "_(Pyro (Any N-term Q))QK_",
             {},
             {"Pyro (Any N-term Q)@0 on N-term Any N-term -17.000000"}},
        },
        specified);
}

TEST(MaxQuantSequence, AnUnknownTagIsTold)
{
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"_AM(ox)K_", "ox"}, {"_AM(Oxidation (M))K_", "Oxidation (M)"},
        {"_AM()K_", ""},     {"_AM(phos)K_", "phos"},
        {"_AM(ph", "ph"},    {"_AM((ac))K_", "(ac)"},
        {"_(", ""},
    };
    for (const auto& [text, tag] : texts) {
        try {
            ModificationsIn(text, {"Acetyl (K)"}, {});
            ADD_FAILURE() << text;
        } catch (const OpenMS::Exception::InvalidValue& error) {
            EXPECT_STREQ(error.getFile(), "PeptideIdentificationIO");
            EXPECT_STREQ(error.getFunction(), "MaxQuantTXTPepIdentIO::Load");
            EXPECT_EQ(error.getLine(), 1011);
            EXPECT_STREQ(error.what(),
                         ("the value '" + tag
                          + "' was used but is not valid; Unexpected Modification Abbreviation in "
                            "\"Modified sequence\" in msms.txt")
                             .c_str());
        }
    }
}

TEST(MaxQuantSequence, TagsThatAreNotClosedReachToTheEnd)
{
    Check({
        {"two letters", "_AM(ox", {"Oxidation (M)"}, {"Oxidation (M)@2 on M Anywhere +0.000000"}},
        {"closing ones alone", "_A)M)K_", {"Oxidation (M)"}, {}},
        {"nothing", "", {}, {}},
    });
}

TEST(MaxQuantSequence, LongTextsTakeNoLongTime)
{
    const std::string sequence = Repeat("M(ox)", 16000);
    const auto mods = ModificationsIn(sequence, {"Oxidation (M)"}, {});
    ASSERT_EQ(mods.size(), 16000u);
    EXPECT_EQ(mods.back().nPos, 16000);
    EXPECT_EQ(ThrownBy([] { ModificationsIn(Repeat("(", 80000), {"Oxidation (M)"}, {}); }).name,
              "InvalidValue");
}

TEST(MaxQuantSequence, ManyNamesForManyTagsTakeNoLongTime)
{
    // Every name begins with the tag, and none but the last fits the residue.
    std::vector<std::string> names(13000, "Oxidation (W)");
    names.emplace_back("Oxidation (M)");
    const auto mods = ModificationsIn(Repeat("M(ox)", 8000), names, {});
    ASSERT_EQ(mods.size(), 8000u);
    EXPECT_EQ(mods.front().strName, "Oxidation (M)");
    EXPECT_EQ(mods.back().strName, "Oxidation (M)");
}

} // namespace
} // namespace Vorlan::test
