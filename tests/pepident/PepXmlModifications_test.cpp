// Masses of residues and termini in pepXML.
#include "PepXmlText.h"
#include "pepident/PepXmlMatches.h"
#include "util/XmlReading.h"

namespace Vorlan::test {
namespace {

const Thrown kUnexplained = {"ElementNotFound", "PeptideIdentificationIO",
                             "MSFraggerPepXMLPepIdentIO::getMod",
                             "the element 'the mass shift is a combination of modifications' "
                             "could not be found"};

class PepXmlModifications : public PepXmlTest {
protected:
    /// The document with this peptide and inside of modification_info.
    static std::string With(const std::string& peptide, const std::string& before,
                            const std::string& info)
    {
        std::string text = Changed(kPepXml, "peptide=\"PEPMIDEK\"", "peptide=\"" + peptide + "\"");
        text = Changed(text, "prev_aa=\"K\"", "prev_aa=\"" + before + "\"");
        return Changed(text, Piece(text, "<modification_info", "</modification_info>"), info);
    }

    static std::string Residue(int position, const std::string& mass)
    {
        return "<modification_info><mod_aminoacid_mass position=\"" + std::to_string(position)
               + "\" mass=\"" + mass + "\"/></modification_info>";
    }

    /// "Oxidation@4;..." of the one match.
    std::string ModsOf(const std::string& text) const
    {
        const Reading reading = ReadText(text);
        EXPECT_EQ(reading.thrown, Thrown{});
        EXPECT_EQ(reading.matches.size(), 1U);
        std::string mods;
        for (const IdentModification& mod : reading.matches.at(0).vMods) {
            mods += mod.strName + "/" + mod.strPosition + "@" + std::to_string(mod.nPos) + ";";
        }
        return mods;
    }
};

struct Explained {
    const char* reason;
    const char* peptide;
    const char* before;
    int position;
    const char* mass; ///< of the residue as modified
    const char* mods;
};

const Explained kExplained[] = {
    {"a residue", "PEPMIDEK", "K", 4, "147.0354", "Oxidation/Anywhere@4;"},
    {"a fixed modification is a mass, too", "PEPCIDEK", "K", 4, "160.030649",
     "Carbamidomethyl/Anywhere@4;"},
    {"two of them", "PEPMIDEK", "K", 4, "163.0303", "Oxidation/Anywhere@4;Oxidation/Anywhere@4;"},
    {"at a peptide's start", "SEPMIDEK", "K", 1, "88.032", "Cap/Any N-term@0;"},
    {"at a protein's start", "SEPMIDEK", "-", 1, "89.032", "Cap/Protein N-term@0;"},
    {"with a residue's own", "MEPMIDEK", "K", 1, "148.0354",
     "Oxidation/Anywhere@1;Cap/Any N-term@0;"},
    {"at a peptide's end", "PEPMIDES", "K", 8, "90.032", "Cap/Any C-term@9;"},
    {"B-55: before it", "PEPMISER", "K", 6, "90.032", "Cap/Any C-term@7;"},
    {"B-56: a methionine that was cut off", "SEPMIDEK", "-", 1, "103.027", "Oxidation/Anywhere@0;"},
    {"B-56: one that is still there", "MEPMIDEK", "-", 1, "147.0354", "Oxidation/Anywhere@1;"},
    {"a residue that OpenMS does not know weighs nothing", "PEPM*DEK", "K", 1, "98.0528",
     "Cap/Any N-term@0;"},
    {"the last residue", "PEPMIDEK", "K", 8, "135.095", "Ring/Anywhere@8;"},
};

TEST_F(PepXmlModifications, AreExplainedAndPlaced)
{
    for (const Explained& row : kExplained) {
        SCOPED_TRACE(row.reason);
        EXPECT_EQ(ModsOf(With(row.peptide, row.before, Residue(row.position, row.mass))), row.mods);
    }
}

TEST_F(PepXmlModifications, AnUnknownResidueHasTheWholeMass)
{
    EXPECT_EQ(ReadText(With("PEP*IDEK", "K", Residue(4, "15.9949"))).thrown, kUnexplained);
    EXPECT_EQ(ReadText(With("zEPIDEK", "K", Residue(1, "1.0"))).matches.at(0).vMods.at(0).strName,
              "Cap");
}

// ---- Termini ------------------------------------------------------------------

std::string Terminus(const std::string& attributes)
{
    return "<modification_info " + attributes + "/>";
}

TEST_F(PepXmlModifications, MassesOfTerminiAreKeptBeside)
{
    // The numbers are masses of a terminus with what sits on it.
    const std::string text = With("PEPSIDEK", "-",
                                  Terminus("mod_nterm_mass=\"3.007825\" "
                                           "mod_cterm_mass=\"20.00274\""));
    const Reading reading = ReadText(text);
    ASSERT_EQ(reading.matches.size(), 1U);
    EXPECT_TRUE(reading.matches[0].vMods.empty());
    const std::vector<IdentModification>& mods = reading.matches[0].vAltMods;
    ASSERT_EQ(mods.size(), 2U);
    EXPECT_EQ(mods[0],
              IdentModification("Cap", 3.007825 - 1.007825, "N-term", "Protein N-term", 0));
    EXPECT_EQ(mods[1], IdentModification("Cap", 20.00274 - 17.002740, "C-term", "Any C-term", 9));
}

struct End {
    const char* reason;
    const char* attributes;
    std::vector<IdentModification> mods;
};

const End kEnds[] = {
    {"none", "modified_peptide=\"x\"", {}},
    {"empty ones", "mod_nterm_mass=\"\" mod_cterm_mass=\"\"", {}},
    {"the nearest one",
     "mod_nterm_mass=\"2.03\"",
     {{"Cap", 2.03 - 1.007825, "N-term", "Any N-term", 0}}},
    {"no nearer than 0.05 has no name",
     "mod_nterm_mass=\"2.0579\"",
     {{"", 2.0579 - 1.007825, "N-term", "", 0}}},
    {"one that nobody specified",
     "mod_nterm_mass=\"43.01839\"",
     {{"", 43.01839 - 1.007825, "N-term", "", 0}}},
    {"a residue's modification is none of a terminus",
     "mod_nterm_mass=\"17.00274\"",
     {{"", 17.00274 - 1.007825, "N-term", "", 0}}},
    {"the other terminus' is none",
     "mod_cterm_mass=\"18.00274\"",
     {{"", 18.00274 - 17.002740, "C-term", "", 9}}},
    {"no number", "mod_nterm_mass=\"x\"", {{"", 0.0 - 1.007825, "N-term", "", 0}}},
};

TEST_F(PepXmlModifications, TerminiHaveTheNameOfTheNearestSpecifiedOne)
{
    for (const End& row : kEnds) {
        SCOPED_TRACE(row.reason);
        const Reading reading = ReadText(With("PEPSIDEK", "K", Terminus(row.attributes)));
        EXPECT_EQ(reading.thrown, Thrown{});
        ASSERT_EQ(reading.matches.size(), 1U);
        EXPECT_EQ(FullText(reading.matches[0].vAltMods), FullText(row.mods));
        EXPECT_TRUE(reading.matches[0].vMods.empty());
    }
}

TEST_F(PepXmlModifications, ATerminusOfNoPeptide)
{
    const Reading reading = ReadText(With("", "K", Terminus("mod_cterm_mass=\"20.00274\"")));
    ASSERT_EQ(reading.matches.size(), 1U);
    ASSERT_EQ(reading.matches[0].vAltMods.size(), 1U);
    EXPECT_EQ(reading.matches[0].vAltMods[0].nPos, 1);
}

// ---- What nothing explains ----------------------------------------------------

const std::string kQuery = Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n");

/// A query named name whose residue has a mass that nothing explains.
std::string Unexplained(const std::string& name)
{
    return Changed(Changed(kQuery, "run01.00007.00007.2", name), "mass=\"147.0354\"",
                   "mass=\"999.5\"");
}

TEST_F(PepXmlModifications, B54_MatchesInFrontOfAnUnexplainedResidueAreKept)
{
    const std::string all = kQuery + kQuery + Unexplained("bad") + kQuery + kQuery;
    const Reading reading = ReadText(Changed(kPepXml, kQuery, all));
    EXPECT_EQ(reading.thrown, kUnexplained);
    EXPECT_EQ(reading.output, "");
    EXPECT_EQ(FullTexts(reading.matches),
              (std::vector<std::string>{FullText(PepXmlMatch()), FullText(PepXmlMatch())}));
}

TEST_F(PepXmlModifications, B54_TheFirstOneIsThrown)
{
    const std::string noMass = Changed(kQuery, " mass=\"147.0354\"", "");
    const Reading reading =
        ReadText(Changed(kPepXml, kQuery, noMass + Unexplained("bad") + kQuery));
    EXPECT_EQ(reading.thrown, kUnexplained);
    EXPECT_TRUE(reading.matches.empty());
}

TEST_F(PepXmlModifications, B54_CometThrowsTheSame)
{
    const Reading reading =
        ReadText<CometPepXMLPepIdentIO>(Changed(kPepXml, kQuery, kQuery + Unexplained("bad")));
    EXPECT_EQ(reading.thrown, kUnexplained);
    EXPECT_EQ(reading.matches.size(), 1U);
}

TEST_F(PepXmlModifications, B54_MasslessNumbersAreUnexplained)
{
    for (const std::string mass : {"nan", "inf", "-inf", "x", "", "1e308", "131.040485"}) {
        const Reading reading = ReadText(
            Changed(kPepXml, "mass=\"147.0354\"/>\n</mod", "mass=\"" + mass + "\"/>\n</mod"));
        EXPECT_EQ(reading.thrown, kUnexplained) << mass;
        EXPECT_TRUE(reading.matches.empty()) << mass;
    }
}

TEST_F(PepXmlModifications, B54_ThrownOnlyWhenTheDocumentIsWellFormed)
{
    std::string text = Changed(kPepXml, kQuery, kQuery + Unexplained("bad") + kQuery);
    text = Changed(text, "</msms_run_summary>", "<cut</msms_run_summary>");
    const Reading reading = ReadText(text);
    EXPECT_EQ(reading.thrown, Thrown{});
    EXPECT_NE(reading.output, "");
    EXPECT_TRUE(reading.matches.empty());
}

// Only the careful way reads this one, from the start again.
TEST_F(PepXmlModifications, B54_TheCarefulWayThrowsTheSame)
{
    std::string text = Changed(kPepXml, kQuery, kQuery + Unexplained("bad") + kQuery);
    text = Changed(text, "</msms_run_summary>", "<!-- </x> --></msms_run_summary>");
    const Reading reading = ReadText(text);
    EXPECT_EQ(reading.thrown, kUnexplained);
    EXPECT_EQ(reading.matches.size(), 1U);
}

TEST_F(PepXmlModifications, B54_AppendsToWhatIsThere)
{
    std::vector<PeptideIdentification> former(2);
    former[1].strSequence = "FORMER";
    const Reading reading = ReadText(Changed(kPepXml, kQuery, kQuery + Unexplained("bad")), former);
    EXPECT_EQ(reading.thrown, kUnexplained);
    ASSERT_EQ(reading.matches.size(), 3U);
    EXPECT_EQ(reading.matches[1].strSequence, "FORMER");
    EXPECT_EQ(FullText(reading.matches[2]), FullText(PepXmlMatch()));
}

// The parameters hold no such type; a host may.
TEST_F(PepXmlModifications, AnUnknownPositionTypeEndsTheReadingLikewise)
{
    results_.Write("r.pepXML", Changed(kPepXml, kQuery, kQuery + kQuery));
    PepXmlMatches matches(
        PepXmlScore::Third, "mgf",
        {{"Oxidation", 15.994915, "M", "Anywhere", 0}, {"Other", 1.0, "M", "Nowhere", 0}});
    ReadXmlFile(results_.PathOf("r.pepXML"), matches);
    std::vector<PeptideIdentification> all(1);
    const Thrown thrown = ThrownBy([&] { matches.MoveTo(all); });
    EXPECT_EQ(thrown.name, "InvalidValue");
    EXPECT_EQ(thrown.function, "MSFraggerPepXMLPepIdentIO::SatisfySpecificity");
    EXPECT_EQ(all.size(), 1U);
}

// With 20 modifications there are 3.4 million combinations.
TEST_F(PepXmlModifications, B54_TwentyModificationsOfWhichNoneExplain)
{
    ASSERT_EQ(Read(FullParameters()
                       .SetMods("fixed_mod", {})
                       .SetMods("var_mod", std::vector<std::string>(20, "Oxidation (M)"))),
              Thrown{});
    EXPECT_EQ(ReadText(Changed(kPepXml, kQuery, Unexplained("bad"))).thrown, kUnexplained);
}

} // namespace
} // namespace Vorlan::test
