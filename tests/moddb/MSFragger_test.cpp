// Parameter files of MSFragger: one line after the other, whole files.
#include "moddb/MSFraggerModifications.h"

#include <string>
#include <vector>

#include "moddb/ModificationText.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char kReader[] = "CModificationsDBEngineMSFragger::readFromSearchEngineFile";

/// "full id @ term specificity @ origin" for each record of a line.
std::vector<std::string> Sites(const std::string& line)
{
    Records records;
    AppendMSFraggerModifications(line, records);
    std::vector<std::string> sites;
    for (const CResidueModification& record : records) {
        sites.push_back(record.getFullId() + "@" + std::to_string(record.getTermSpecificity()) + "@"
                        + record.getOrigin());
    }
    return sites;
}

std::vector<std::string> SitesOf(const std::string& sites)
{
    return Sites("variable_mod_01 = 1.5 " + sites + " 3");
}

Records ReadParameters(const std::string& text)
{
    const TempFolder folder;
    return ReadMSFraggerModifications(folder.Write("fragger.params", text));
}

struct Row {
    const char* reason;
    std::string text;
    std::vector<std::string> sites;
};

TEST(MSFragger, EveryFieldOfARecord)
{
    Records records;
    AppendMSFraggerModifications("variable_mod_01 = 15.9949 M 3", records);
    AppendMSFraggerModifications("add_C_cysteine = 57.02146", records);
    EXPECT_THAT(Dump(records, "%.9g"),
                ElementsAre("15.9949|15.9949 (M)|||0|M|15|0|15.9949|0|0",
                            "57.02146|57.02146 (C)|||0|C|15|0|57.02146|0|0"));
}

TEST(MSFragger, TheRecordsAreAppended)
{
    Records records(2);
    AppendMSFraggerModifications("variable_mod_01 = 15.9949 MW", records);
    ASSERT_EQ(records.size(), 4u);
    EXPECT_EQ(records[3].getFullId(), "15.9949 (W)");
}

TEST(MSFragger, SitesOfVariableModifications)
{
    const std::vector<Row> rows = {
        {"a residue", "M", {"1.5 (M)@0@M"}},
        {"residues", "STY", {"1.5 (S)@0@S", "1.5 (T)@0@T", "1.5 (Y)@0@Y"}},
        {"the same residue twice", "SS", {"1.5 (S)@0@S", "1.5 (S)@0@S"}},
        {"any residue at a terminus", "n^", {"1.5 (Any N-term)@2@N-term"}},
        {"a star does not name a residue either", "c*", {"1.5 (Any C-term)@1@C-term"}},
        {"nothing behind a terminus", "[", {"1.5 (Protein N-term)@4@N-term"}},
        {"the other end of the protein", "]^", {"1.5 (Protein C-term)@3@C-term"}},
        {"a residue at a terminus", "nQ", {"1.5 (Any N-term Q)@2@Q"}},
        {"at each of them",
         "cK[M]R",
         {"1.5 (Any C-term K)@1@K", "1.5 (Protein N-term M)@4@M", "1.5 (Protein C-term R)@3@R"}},
        {"further letters are residues of their own",
         "nQC",
         {"1.5 (Any N-term Q)@2@Q", "1.5 (C)@0@C"}},
        {"a residue is used up by its terminus",
         "nQnC",
         {"1.5 (Any N-term Q)@2@Q", "1.5 (Any N-term C)@2@C"}},
        {"a terminus behind a terminus",
         "n[",
         {"1.5 (Any N-term)@2@N-term", "1.5 (Protein N-term)@4@N-term"}},
        {"the residue behind \"^\" is one of its own",
         "n^Q",
         {"1.5 (Any N-term)@2@N-term", "1.5 (Q)@0@Q"}},
        {"N and C are residues", "NC", {"1.5 (N)@0@N", "1.5 (C)@0@C"}},
        {"other characters are passed over", "^*m-1,S.", {"1.5 (S)@0@S"}},
        {"other characters behind a terminus", "n,Q", {"1.5 (Any N-term)@2@N-term", "1.5 (Q)@0@Q"}},
        {"every capital letter",
         "BJOUXZ",
         {"1.5 (B)@0@B", "1.5 (J)@0@J", "1.5 (O)@0@O", "1.5 (U)@0@U", "1.5 (X)@0@X",
          "1.5 (Z)@0@Z"}},
        {"neighbours of the letters", "@`", {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(SitesOf(row.text), row.sites) << row.reason;
    }
}

TEST(MSFragger, LinesOfVariableModifications)
{
    const std::vector<std::string> found = {"1.5 (M)@0@M"};
    const std::vector<Row> rows = {
        {"no blanks at the equals sign", "variable_mod_1=1.5 M 3", found},
        {"nothing behind the sites", "variable_mod_01 = 1.5 M", found},
        {"many fields behind them", "variable_mod_01 = 1.5 M 3 4 5", found},
        {"any number", "variable_mod_16 = 1.5 M 3", found},
        {"no number", "variable_mod_ = 1.5 M 3", found},
        {"text in front", "  my variable_mod_01 = 1.5 M 3", found},
        {"a carriage return at the end", "variable_mod_01 = 1.5 M\r", found},
        {"a second equals sign ends the value", "variable_mod_01 = 1.5 M = 2 S", found},
        {"\"add_\" in front of it names no residue", "add_variable_mod_01 = 1.5 M", found},
        {"a line of both kinds is read as both",
         "add_C_cysteine = 1.5 M variable_mod_",
         {"1.5 (M)@0@M", "1.5 M variable_mod_ (C)@0@C"}},
        {"anywhere in the line", "x = 1.5 M variable_mod_", found},
        {"a comment behind it", "variable_mod_01 = 1.5 M # 3 S", found},
        {"a comment close to it", "variable_mod_01 = 1.5 M#S", found},
        {"a comment as a whole", "# variable_mod_01 = 1.5 M 3", {}},
        {"a comment before the sites", "variable_mod_01 = 1.5 # M", {}},
        {"no equals sign", "variable_mod_01 1.5 M 3", {}},
        {"nothing behind it", "variable_mod_01 =", {}},
        {"the name in a comment", "x = 1.5 M # variable_mod_01", {}},
        {"no sites", "variable_mod_01 = 1.5", {}},
        {"two blanks: the second field is empty", "variable_mod_01 = 1.5  M 3", {}},
        {"a tab does not separate", "variable_mod_01 = 1.5\tM", {}},
        {"upper case", "Variable_Mod_01 = 1.5 M 3", {}},
        {"another parameter", "max_variable_mods_per_peptide = 3 M", {}},
        {"nothing", "", {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Sites(row.text), row.sites) << row.reason;
    }
}

TEST(MSFragger, TheMassTextIsTheIdAsItStands)
{
    for (const std::string text : {"15.9949", "+15.99490", "1.5x", "1e2", "-17.0", "0x10"}) {
        Records records;
        AppendMSFraggerModifications("variable_mod_01 = " + text + " M 3", records);
        ASSERT_EQ(records.size(), 1u) << text;
        EXPECT_EQ(records[0].getId(), text);
        EXPECT_EQ(records[0].getFullId(), text + " (M)");
        const CLocale plain;
        EXPECT_EQ(records[0].getDiffMonoMass(), std::atof(text.c_str()));
    }
}

TEST(MSFragger, MassesOfZeroMakeNoRecord)
{
    for (const std::string mass : {"0", "0.0", "-0.0", "0.000000", "abc", "M", "1e-400", "nan"}) {
        EXPECT_THAT(Sites("variable_mod_01 = " + mass + " nQM 3"), IsEmpty()) << mass;
        EXPECT_THAT(Sites("add_C_cysteine = " + mass), IsEmpty()) << mass;
        EXPECT_THAT(Sites("add_Nterm_peptide = " + mass), IsEmpty()) << mass;
    }
}

// Every site repeats the text of its mass: one line could ask for gigabytes.
TEST(MSFragger, MassesOfMoreThan256CharactersMakeNoRecord)
{
    const std::string mass(256, '1');
    std::vector<CResidueModification> records;
    AppendMSFraggerModifications("variable_mod_01 = " + mass + "1 M", records);
    EXPECT_TRUE(records.empty());
    AppendMSFraggerModifications("variable_mod_01 = " + mass + " M", records);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].getFullId(), mass + " (M)");
}

TEST(MSFragger, FixedModificationsOfTermini)
{
    EXPECT_THAT(Sites("add_Cterm_peptide = 1.5"), ElementsAre("1.5 (Any C-term)@1@C-term"));
    EXPECT_THAT(Sites("add_Nterm_peptide = 1.5"), ElementsAre("1.5 (Any N-term)@2@N-term"));
    EXPECT_THAT(Sites("add_Cterm_protein = 1.5"), ElementsAre("1.5 (Protein C-term)@3@C-term"));
    EXPECT_THAT(Sites("add_Nterm_protein = 1.5"), ElementsAre("1.5 (Protein N-term)@4@N-term"));
}

TEST(MSFragger, FixedModificationsOfTheTwentyResidues)
{
    for (const std::string key : {"add_G_glycine",    "add_A_alanine",       "add_S_serine",
                                  "add_P_proline",    "add_V_valine",        "add_T_threonine",
                                  "add_C_cysteine",   "add_L_leucine",       "add_I_isoleucine",
                                  "add_N_asparagine", "add_D_aspartic_acid", "add_Q_glutamine",
                                  "add_K_lysine",     "add_E_glutamic_acid", "add_M_methionine",
                                  "add_H_histidine",  "add_F_phenylalanine", "add_R_arginine",
                                  "add_Y_tyrosine",   "add_W_tryptophan"}) {
        const std::string letter = key.substr(4, 1);
        EXPECT_THAT(Sites(key + " = 1.5"), ElementsAre("1.5 (" + letter + ")@0@" + letter));
    }
}

TEST(MSFragger, LinesOfFixedModifications)
{
    const std::vector<std::string> found = {"1.5 (C)@0@C"};
    const std::vector<Row> rows = {
        {"no blanks", "add_C_cysteine=1.5", found},
        {"blanks and tabs around both", "\t add_C_cysteine \t=\t 1.5 \r", found},
        {"a comment", "add_C_cysteine = 1.5 # 2", found},
        {"a second equals sign", "add_C_cysteine = 1.5 = 2", found},
        {"a second word stays in the id", "add_C_cysteine = 1.5 x", {"1.5 x (C)@0@C"}},
        {"a user residue", "add_B_user_amino_acid = 1.5", {}},
        {"a key that only begins so", "add_C_cysteines = 1.5", {}},
        {"a key that is cut", "add_C_cystein = 1.5", {}},
        {"text before the key", "x add_C_cysteine = 1.5", {}},
        {"the key behind the equals sign", "x = add_C_cysteine", {}},
        {"the wrong letter", "add_G_cysteine = 1.5", {}},
        {"lower case", "add_c_cysteine = 1.5", {}},
        {"an empty key", "=add_C_cysteine", {}},
        {"no equals sign", "add_C_cysteine 1.5", {}},
        {"no mass", "add_C_cysteine =", {}},
        {"blanks only", "add_C_cysteine =  ", {}},
        {"in a comment", "#add_C_cysteine = 1.5", {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Sites(row.text), row.sites) << row.reason;
    }
}

// ---- Whole files ----------------------------------------------------------

const std::string kParameters = "# MSFragger\r\n"
                                "num_threads = 4\r\n"
                                "variable_mod_01 = 15.9949 M 3\r\n"
                                "variable_mod_02 = 42.0106 [^ 1\r\n"
                                "# variable_mod_03 = 79.96633 STY 3\r\n"
                                "add_Cterm_peptide = 0.0\r\n"
                                "add_C_cysteine = 57.021464\t# fixed\r\n"
                                "add_K_lysine = 15.9949";

TEST(MSFragger, RecordsInTheOrderOfTheFile)
{
    EXPECT_THAT(
        FullIds(ReadParameters(kParameters)),
        ElementsAre("15.9949 (M)", "42.0106 (Protein N-term)", "57.021464 (C)", "15.9949 (K)"));
}

TEST(MSFragger, NothingToRead)
{
    for (const char* const text : {"", "\n\n", "a = b\n", "#add_K_lysine = 1\n"}) {
        EXPECT_THAT(ReadParameters(text), IsEmpty()) << text;
    }
}

TEST(MSFragger, AByteOrderMarkHidesNothingOfTheFirstLine)
{
    EXPECT_THAT(FullIds(ReadParameters("\xEF\xBB\xBF"
                                       "add_C_cysteine = 57.021464\n")),
                ElementsAre("57.021464 (C)"));
}

TEST(MSFragger, AnOverlongLineIsTheLast)
{
    const std::string line = "add_K_lysine = 1.5 # " + std::string(90000, 'x') + "\n";
    EXPECT_THAT(FullIds(ReadParameters(line + "add_C_cysteine = 2.5\n")), ElementsAre("1.5 (K)"));
}

TEST(MSFragger, RecordsAreThereUnderIdAndFullId)
{
    const TempFolder folder;
    const CModificationsDBEngineMSFragger database(folder.Write("p", kParameters));
    EXPECT_EQ(database.getNumberOfModifications(), 4u);
    EXPECT_THAT(FullIds(Named(database, "15.9949")), ElementsAre("15.9949 (M)", "15.9949 (K)"));
    EXPECT_THAT(FullIds(Named(database, "15.9949 (K)")), ElementsAre("15.9949 (K)"));
    EXPECT_THAT(FullIds(Named(database, "42.0106", "N-term")),
                ElementsAre("42.0106 (Protein N-term)"));
    EXPECT_EQ(ThrownBy([&] { Named(database, "15.99490"); }).name, "ElementNotFound");
    EXPECT_EQ(ThrownBy([&] { Named(database, ""); }).name, "ElementNotFound");
    EXPECT_THAT(WithMass(database, 15.9949, 0.0), ElementsAre("15.9949 (M)", "15.9949 (K)"));
}

TEST(MSFragger, WhatCannotBeReadIsToldWithThePath)
{
    const TempFolder folder;
    for (const std::string& path : {folder.PathOf("missing"), folder.Path(), std::string()}) {
        const std::string error = Error("FileNotReadable", 1276, kReader, NotReadableText(path));
        EXPECT_EQ(ErrorOf([&] { ReadMSFraggerModifications(path); }), error);
        EXPECT_EQ(ErrorOf([&] { CModificationsDBEngineMSFragger{path}; }), error);
    }
}

TEST(MSFragger, NothingIsPrinted)
{
    const TempFolder folder;
    const std::string path = folder.Write("p", kParameters);
    const Printed printed = PrintedBy([&] { CModificationsDBEngineMSFragger{path}; });
    EXPECT_EQ(printed.out + printed.err, "");
}

} // namespace
} // namespace Vorlan::test
