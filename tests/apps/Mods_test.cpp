// "pelgrin mods" as a child process, on the real Unimod.
#include <algorithm>
#include <sstream>

#include "HostProgram.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

constexpr const char kParameters[] = "[Search]\n"
                                     "search_result_format = Calvex (.txt)\n"
                                     "precursor_tol = 0.01\n"
                                     "precursor_tol_type = 0\n"
                                     "fragment_tol = 20\n"
                                     "fragment_tol_type = 1\n"
                                     "fixed_mod_number = 3\n"
                                     "fixed_mod_1 = Carbamidomethyl (C)\n"
                                     "fixed_mod_2 = TMT6plex (K)\n"
                                     "fixed_mod_3 = TMT6plex (Any N-term)\n"
                                     "var_mod_number = 9\n"
                                     "var_mod_1 = Oxidation (M)\n"
                                     "var_mod_2 = Phospho (S)\n"
                                     "var_mod_3 = Phospho (T)\n"
                                     "var_mod_4 = Phospho (Y)\n"
                                     "var_mod_5 = Acetyl (Protein N-term)\n"
                                     "var_mod_6 = Gln->pyro-Glu (Any N-term Q)\n"
                                     "var_mod_7 = GG (K)\n"
                                     "var_mod_8 = Deamidated (N)\n"
                                     "var_mod_9 = Oxidation (Y)\n"
                                     "dataset_format = mgf\n"
                                     "dataset_number = 1\n"
                                     "dataset_filename_1 = ./run.mgf\n"
                                     "pep_ident_format = Calvex (.txt)\n"
                                     "pep_ident_number = 1\n"
                                     "pep_ident_filename_1 = ./psms.txt\n"
                                     "[Fdr]\nis_fdr_control = 0\n"
                                     "[Localization]\nis_localized = 0\n"
                                     "[Annotation]\nis_annotated = 0\n"
                                     "[Output]\noutput = out\n";

/// A working folder with unimod.txt, made by the program, and run.ini.
class PelgrinMods : public testing::Test {
protected:
    void SetUp() override
    {
        const Outcome made = Mods({"import", "--out", "unimod.txt"});
        if (made.status == 1 && made.err.find("was not found in any of") != std::string::npos) {
            GTEST_SKIP() << "Unimod XML is not on this machine (package openms-common)";
        }
        ASSERT_EQ(made.status, 0) << made.err;
        made_ = made.out;
        folder_.Write("run.ini", kParameters);
    }

    /// Runs "pelgrin mods" in the working folder.
    Outcome Mods(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), "mods");
        Setting setting;
        setting.folder = folder_.Path();
        return RunPelgrin(arguments, setting);
    }

    Outcome Explain(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), {"explain", "--params", "run.ini"});
        return Mods(std::move(arguments));
    }

    TempFolder folder_;
    std::string made_; ///< what import said
};

/// The first line of the output that holds text, blanks as one.
std::string LineWith(const std::string& output, const std::string& text)
{
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (line.find(text) != std::string::npos) {
            std::istringstream words(line);
            std::string joined;
            for (std::string word; words >> word;) {
                joined += (joined.empty() ? "" : " ") + word;
            }
            return joined;
        }
    }
    return {};
}

std::string Line(const std::string& output, std::size_t number)
{
    std::istringstream lines(output);
    std::string line;
    for (std::size_t i = 0; i <= number; ++i) {
        line.clear();
        std::getline(lines, line);
    }
    return line;
}

// ---- import --------------------------------------------------------------

TEST_F(PelgrinMods, ImportWritesEveryRecordAndNothingElse)
{
    const std::string table = ReadFile(folder_.PathOf("unimod.txt"));
    const auto lines = std::count(table.begin(), table.end(), '\n');
    EXPECT_EQ(made_, std::to_string(lines - 1) + " records were written to unimod.txt.\n");
    EXPECT_GE(lines, 2000);
    EXPECT_THAT(table, StartsWith("id\tfull_id\t"));
    const std::filesystem::directory_iterator entries(folder_.Path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2) << "the table and run.ini";
}

TEST_F(PelgrinMods, ImportOverwritesOnlyWhenForced)
{
    const std::string table = ReadFile(folder_.PathOf("unimod.txt"));
    folder_.Write("unimod.txt", "mine");
    const Outcome refused = Mods({"import", "--out", "unimod.txt"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr("unimod.txt: exists; --force lets it be overwritten"));
    EXPECT_EQ(ReadFile(folder_.PathOf("unimod.txt")), "mine");
    EXPECT_EQ(Mods({"import", "--out", "unimod.txt", "--force"}).status, 0);
    EXPECT_EQ(ReadFile(folder_.PathOf("unimod.txt")), table);
}

// ---- find: ten well-known cases ------------------------------------------

TEST_F(PelgrinMods, FindKnowsTheWellKnownOnes)
{
    struct Case {
        const char* reason;
        std::vector<std::string> question;
        const char* first; ///< the nearest one, blanks as one
    };
    const Case cases[] = {
        {"phospho S",
         {"--mass", "79.9663", "--residue", "S"},
         "Phospho (S) 79.966331 -0.031 Post-translational UniMod:21"},
        {"phospho T",
         {"--mass", "79.9663", "--residue", "T"},
         "Phospho (T) 79.966331 -0.031 Post-translational UniMod:21"},
        {"phospho Y",
         {"--mass", "79.9663", "--residue", "Y"},
         "Phospho (Y) 79.966331 -0.031 Post-translational UniMod:21"},
        {"oxidation M",
         {"--mass", "15.9949", "--residue", "M"},
         "Oxidation (M) 15.994915 -0.015 Artefact UniMod:35"},
        {"carbamidomethyl C",
         {"--mass", "57.0215", "--residue", "C"},
         "Carbamidomethyl (C) 57.021464 +0.036 Chemical derivative UniMod:4"},
        {"acetyl at the start of the protein",
         {"--mass", "42.0106", "--term", "protein n-term"},
         "Acetyl (Protein N-term) 42.010565 +0.035 Post-translational UniMod:1"},
        {"pyro-Glu from Q",
         {"--mass", "-17.0265", "--residue", "Q", "--term", "Any N-term"},
         "Gln->pyro-Glu (Any N-term Q) -17.026549 +0.049 Artefact UniMod:28"},
        {"GG on K",
         {"--mass", "114.0429", "--residue", "K"},
         "GG (K) 114.042927 -0.027 Other UniMod:121"},
        {"two oxidations",
         {"--mass", "31.99", "--residue", "M"},
         "Dioxidation (M) 31.989829 +0.171 Post-translational UniMod:425"},
        {"deamidation",
         {"--mass", "0.984", "--residue", "N"},
         "Deamidated (N) 0.984016 -0.016 Artefact UniMod:7"},
        {"TMT",
         {"--mass", "229.1629", "--residue", "K"},
         "TMT6plex (K) 229.162932 -0.032 Isotopic label UniMod:737"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        std::vector<std::string> arguments = c.question;
        arguments.insert(arguments.begin(), "find");
        const Outcome found = Mods(arguments);
        EXPECT_EQ(found.status, 0);
        EXPECT_EQ(LineWith(Line(found.out, 1), "("), c.first) << found.out;
        EXPECT_THAT(found.err, StartsWith("pelgrin: info: the database is unimod.txt, "));
    }
}

TEST_F(PelgrinMods, FindDoesNotKnowSumsOfTwo)
{
    const Outcome found = Mods({"find", "--mass", "95.9612", "--residue", "Y"});
    EXPECT_EQ(found.status, 3);
    EXPECT_EQ(found.out, "");
    EXPECT_THAT(found.err,
                HasSubstr("warning: no modification lies within 0.01 Da of 95.9612 Da on Y"));
}

TEST_F(PelgrinMods, FindSortsByErrorAndTakesUnits)
{
    const Outcome found =
        Mods({"find", "--mass", "79.96", "--tolerance", "0.01 Da", "--residue", "s"});
    EXPECT_EQ(found.out, "Modification  Mass (Da)  Error (mDa)  Classification      Accession\n"
                         "Sulfo (S)     79.956815       +3.185  Post-translational  UniMod:40\n"
                         "Phospho (S)   79.966331       -6.331  Post-translational  UniMod:21\n");
}

TEST_F(PelgrinMods, FindTellsTheIsotopeFromTheDeamidation)
{
    const Outcome near =
        Mods({"find", "--mass", "0.994", "--tolerance", "0.012", "--residue", "N"});
    EXPECT_THAT(near.out, HasSubstr("which is -9.355 mDa off; Deamidated (N) is +9.984 mDa off: "
                                    "the isotope fits better.\n"));
    const Outcome none =
        Mods({"find", "--mass", "1.003", "--tolerance", "0.003", "--residue", "N"});
    EXPECT_EQ(none.status, 3);
    EXPECT_THAT(none.out, HasSubstr("no modification explains the mass"));
}

TEST_F(PelgrinMods, FindAsksTheDatabaseThatIsNamed)
{
    folder_.Write("fragger.params", "variable_mod_01 = 79.966331 STY 3\nadd_C_cysteine = 57.02\n");
    const Outcome engine = Mods({"find", "--mass", "79.9663", "--engine-file", "fragger.params",
                                 "--engine", "msfragger", "--residue", "T"});
    EXPECT_EQ(LineWith(engine.out, "(T)"), "79.966331 (T) 79.966331 -0.031");
    EXPECT_THAT(engine.err, HasSubstr("the database is fragger.params, 4 records"));

    folder_.Write("pfind.ini", "@NUMBER_MODIFICATION=1\nname1=Phospho[STY] 0\n"
                               "Phospho[STY]=STY NORMAL 79.966331 79.9799 0 H(1)O(3)P(1)\n");
    const Outcome pfind = Mods({"find", "--mass", "79.9663", "--engine-file", "pfind.ini",
                                "--engine", "pFind 3 (.spectra)", "--residue", "T"});
    EXPECT_EQ(LineWith(pfind.out, "STY"), "Phospho[STY] 79.966331 -0.031") << pfind.err;

    EXPECT_THAT(pfind.err, Not(HasSubstr("warning")));

    folder_.Write("comma.params", "variable_mod_01 = 79,966331 STY 3\n");
    const Outcome comma = Mods({"find", "--mass", "79.0", "--engine-file", "comma.params",
                                "--engine", "msfragger", "--residue", "T"});
    EXPECT_EQ(comma.status, 0);
    EXPECT_THAT(comma.err, HasSubstr("warning: comma.params:1: variable_mod_01: \"79,966331\" is "
                                     "read as 79; expected a mass with a decimal point\n"));

    const Outcome params = Mods({"find", "--mass", "79.9663", "--params", "run.ini"});
    EXPECT_EQ(params.status, 0);
    EXPECT_THAT(params.err, HasSubstr("the database is unimod.txt"));
    std::filesystem::remove(folder_.PathOf("unimod.txt"));
    EXPECT_THAT(Mods({"find", "--mass", "79.9663"}).err, HasSubstr("unimod.xml, "));
}

// ---- show ----------------------------------------------------------------

TEST_F(PelgrinMods, ShowGivesEveryFieldUnderEveryName)
{
    const std::string phosphoS = "Phospho (S)\n"
                                 "  id              Phospho\n"
                                 "  full name       Phosphorylation\n"
                                 "  accession       UniMod:21\n"
                                 "  site            S, Anywhere\n"
                                 "  classification  Post-translational\n"
                                 "  mass            79.966331 Da mono, 79.979900 Da average\n"
                                 "  neutral loss    97.976896 Da mono, 97.995200 Da average\n";
    EXPECT_EQ(Mods({"show", "Phospho (S)"}).out, phosphoS);
    for (const char* const name : {"Phospho", "Phosphorylation", "UniMod:21"}) {
        const Outcome shown = Mods({"show", name});
        EXPECT_EQ(shown.status, 0);
        EXPECT_THAT(shown.out, HasSubstr(phosphoS)) << name;
        EXPECT_THAT(shown.out, HasSubstr("\n\nPhospho (T)\n")) << name;
    }
}

TEST_F(PelgrinMods, ShowSuggestsSimilarNames)
{
    Outcome shown = Mods({"show", "phospho"});
    EXPECT_EQ(shown.status, 3);
    EXPECT_EQ(shown.out, "");
    EXPECT_THAT(shown.err, HasSubstr("no modification is named \"phospho\"; similar names: "
                                     "\"Phospho\""));
    EXPECT_THAT(Mods({"show", "Oxydation (M)"}).err, HasSubstr("\"Oxidation (M)\""));
    shown = Mods({"show", std::string(100000, 'x')});
    EXPECT_EQ(shown.status, 3);
    EXPECT_LT(shown.err.size(), 300U);
}

// ---- explain: ten well-known cases ---------------------------------------

TEST_F(PelgrinMods, ExplainKnowsTheWellKnownOnes)
{
    struct Case {
        const char* reason;
        std::vector<std::string> question;
        const char* best; ///< the line of rank 1, blanks as one
    };
    const Case cases[] = {
        {"phospho S", {"79.9663", "--at", "S"}, "1 -0.031 1 Phospho (S)"},
        {"phospho T", {"79.9663", "--at", "T"}, "1 -0.031 1 Phospho (T)"},
        {"phospho Y", {"79.9663", "--at", "Y"}, "1 -0.031 1 Phospho (Y)"},
        {"oxidation", {"15.9949", "--at", "M"}, "1 -0.015 1 Oxidation (M)"},
        {"carbamidomethyl", {"57.0215", "--at", "C"}, "1 +0.036 1 Carbamidomethyl (C)"},
        {"acetyl at the start of the protein",
         {"42.0106", "--at", "n-term", "--before", "-", "--after", "K"},
         "1 +0.035 1 Acetyl (Protein N-term)"},
        {"pyro-Glu from Q",
         {"-17.0265", "--at", "n-term", "--residue", "Q"},
         "1 +0.049 1 Gln->pyro-Glu (Any N-term Q)"},
        {"GG on K", {"114.0429", "--at", "K"}, "1 -0.027 1 GG (K)"},
        {"GG and TMT on one K", {"343.2059", "--at", "K"}, "1 +0.041 2 TMT6plex (K) + GG (K)"},
        {"two oxidations", {"31.99", "--at", "M"}, "1 +0.170 2 2 x Oxidation (M)"},
        {"phospho and oxidation",
         {"95.9612", "--at", "Y"},
         "1 -0.046 2 Phospho (Y) + Oxidation (Y)"},
        {"deamidation", {"0.984", "--at", "N"}, "1 -0.016 1 Deamidated (N)"},
        {"TMT", {"229.1629", "--at", "n-term"}, "1 -0.032 1 TMT6plex (Any N-term)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        const Outcome explained = Explain(c.question);
        EXPECT_EQ(explained.status, 0) << explained.err;
        EXPECT_EQ(LineWith(Line(explained.out, 4), "("), c.best) << explained.out;
        EXPECT_THAT(explained.out, HasSubstr("(precursor_tol)"));
    }
}

TEST_F(PelgrinMods, ExplainSaysWhyTheOthersWereRejected)
{
    const std::string out =
        Explain({"79.9663", "--at", "n-term", "--residue", "S", "--before", "R"}).out;
    EXPECT_EQ(LineWith(out, "Oxidation (M)"),
              "Oxidation (M) variable wrong residue: sits on M, not on S");
    EXPECT_EQ(LineWith(out, "Acetyl"), "Acetyl (Protein N-term) variable needs the protein "
                                       "N-terminus, but the residue before is R");
    EXPECT_EQ(LineWith(out, "TMT6plex (Any N-term)"),
              "TMT6plex (Any N-term) fixed mass too far: 229.162932 Da leaves -149.196632 Da");
    EXPECT_EQ(LineWith(out, "Gln->pyro-Glu"),
              "Gln->pyro-Glu (Any N-term Q) variable wrong residue: sits on Q, not on S");
    EXPECT_EQ(LineWith(Explain({"79.9663", "--at", "S"}).out, "TMT6plex (Any"),
              "TMT6plex (Any N-term) fixed wrong terminus: sits on the N-terminus only");
}

TEST_F(PelgrinMods, ExplainSearchesOneSizeMoreAndTellsTheBound)
{
    EXPECT_THAT(Explain({"15.9949", "--at", "M"}).out,
                HasSubstr("The smallest combination that explains the mass has size 1; sizes 0 to "
                          "2 were searched.\n"));
    const Outcome bounded = Explain({"159.9492", "--at", "M"});
    EXPECT_EQ(bounded.status, 3);
    EXPECT_THAT(bounded.out,
                HasSubstr("No combination explains the mass; sizes 0 to 4 were searched.\n"
                          "The bound ended the search: sizes above 4 are not searched"));
    EXPECT_EQ(LineWith(Explain({"79.9746", "--at", "M", "--max-size", "6"}).out, "5 x"),
              "1 +0.025 5 5 x Oxidation (M)");
    EXPECT_EQ(LineWith(Explain({"0", "--at", "M"}).out, "no modification"),
              "1 +0.000 0 no modification");
}

TEST_F(PelgrinMods, ExplainTriesTheWholeDatabase)
{
    const Outcome all = Explain({"79.9663", "--at", "S", "--database"});
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(LineWith(all.out, "Sulfo (S)"), "2 +9.485 1 Sulfo (S)");
    EXPECT_EQ(LineWith(all.out, "Phospho (K)"),
              "Phospho (K) database wrong residue: sits on K, not on S");
    const Outcome without = Mods({"explain", "15.9949", "--at", "M", "--database"});
    EXPECT_EQ(LineWith(without.out, "Oxidation (M)"), "1 -0.015 1 Oxidation (M)");
    EXPECT_THAT(without.out, HasSubstr("within 0.010000 Da (the default)"));
    const Outcome few = Explain({"1234.5678", "--at", "K", "--database", "--lines", "3"});
    EXPECT_THAT(few.out, HasSubstr("more (--lines shows more).\n"));
}

TEST_F(PelgrinMods, ExplainTellsTheIsotopeFromTheDeamidation)
{
    EXPECT_THAT(Explain({"0.984", "--at", "N"}).out,
                HasSubstr("Note: near 1 x 13C isotope (1.003355 Da), which is -19.355 mDa off; "
                          "Deamidated (N) is -0.016 mDa off: the modification fits better.\n"));
    EXPECT_THAT(Explain({"1.0031", "--at", "N", "--tolerance", "0.02"}).out,
                HasSubstr("Deamidated (N) is +19.084 mDa off: the isotope fits better.\n"));
}

TEST_F(PelgrinMods, APpmToleranceNeedsTheMassOfThePeptide)
{
    const Outcome refused = Explain({"15.9949", "--at", "M", "--tolerance", "20ppm"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, HasSubstr("--tolerance is 20 ppm, of the mass of the peptide"));
    EXPECT_THAT(Explain({"15.9949", "--at", "M", "--tolerance", "20ppm", "--mh", "1000"}).out,
                HasSubstr("within 0.020000 Da (--tolerance, 20 ppm of MH 1000)"));
    std::string ppm = kParameters;
    ppm.replace(ppm.find("precursor_tol_type = 0"), 22, "precursor_tol_type = 1");
    folder_.Write("run.ini", ppm);
    EXPECT_THAT(Explain({"15.9949", "--at", "M"}).err, HasSubstr("precursor_tol is 0.01 ppm"));
}

} // namespace
} // namespace pelgrin::test
