// Which database the modifications come from, and what it throws. A process
// keeps the databases that it read first, so every case here runs in a child
// process; as death tests they come before all that read the default table.
#include <cstdlib>

#include "ModificationDB.h"
#include "ParameterText.h"

namespace Vorlan {
namespace {

using test::FullParameters;
using test::InvalidParameter;
using test::ParameterText;
using test::Thrown;
using testing::ExitedWithCode;

using TulkParamDatabasesDeathTest = test::ParameterTest;

/// Ends the process: with 0 when no expectation failed.
[[noreturn]] void End()
{
    std::exit(testing::Test::HasFailure() ? 2 : 0);
}

/// Runs the statements in a process that has read no database yet.
#define IN_ITS_OWN_PROCESS(...)                                                                    \
    EXPECT_EXIT(                                                                                   \
        {                                                                                          \
            __VA_ARGS__;                                                                           \
            End();                                                                                 \
        },                                                                                         \
        ExitedWithCode(0), "")

ParameterText WithDatabase(const std::string& engine, const std::string& path)
{
    return FullParameters()
        .Set("Search", "search_result_format", engine)
        .Set("Search", "modification_database", path)
        .SetMods("fixed_mod", {})
        .SetMods("var_mod", {})
        .SetMods("target_mod", {});
}

const char* const kCalvex = "Calvex (.txt)";
const char* const kPFind3 = "pFind 3 (.spectra)";
const char* const kMSFragger = "MSFragger (.pepXML)";

const char* const kPFind3File = "@NUMBER_MODIFICATION=2\n"
                                "name1=Phospho[S] 0\n"
                                "Phospho[STY]=STY NORMAL 79.966331 79.9799 0 0\n"
                                "name2=Acetyl[ProteinN-term] 0\n"
                                "Acetyl[ProteinN-term]=ABCDEFGHIJKLMNOPQRSTUVWXYZ PRO_N 42.010565 "
                                "42.0367 0 0\n";

TEST_F(TulkParamDatabasesDeathTest, BeforeAnyReadingThereAreNoGroups)
{
    IN_ITS_OWN_PROCESS({
        const CTulkParam* const param = CTulkParam::getInstance();
        EXPECT_EQ(param->getSearchParam(), nullptr);
        EXPECT_EQ(param->getFdrControlParam(), nullptr);
        EXPECT_EQ(param->getLocalizeParam(), nullptr);
        EXPECT_EQ(param->getAnnotateParam(), nullptr);
        EXPECT_EQ(param->getOutputPath(), "");
    });
}

// ---- The default table ---------------------------------------------------

TEST_F(TulkParamDatabasesDeathTest, AMissingDefaultTablePassesThrough)
{
    std::filesystem::remove("unimod.txt");
    IN_ITS_OWN_PROCESS({
        const Thrown thrown = Read(FullParameters());
        EXPECT_EQ(thrown.name, "FileNotReadable");
        EXPECT_EQ(thrown.file, "ModificationDB");
        EXPECT_EQ(thrown.message, "the file 'unimod.txt' is not readable for the current user");
        EXPECT_EQ(Search().dFragmentTol, 0.02) << "read before";
        EXPECT_EQ(CTulkParam::getInstance()->getFdrControlParam(), nullptr);
    });
}

TEST_F(TulkParamDatabasesDeathTest, AfterAMissingTableItIsLookedForAgain)
{
    std::filesystem::remove("unimod.txt");
    IN_ITS_OWN_PROCESS({
        EXPECT_EQ(Read(FullParameters()).name, "FileNotReadable");
        Write("unimod.txt", test::DefaultTable());
        EXPECT_EQ(Read(FullParameters()), Thrown{});
    });
}

TEST_F(TulkParamDatabasesDeathTest, TheDefaultTableIsNeededEvenWithoutModifications)
{
    std::filesystem::remove("unimod.txt");
    IN_ITS_OWN_PROCESS(
        EXPECT_EQ(Read(WithDatabase("Comet (.pep.xml)", "")).name, "FileNotReadable"));
}

TEST_F(TulkParamDatabasesDeathTest, AnUnknownTermInTheTablePassesThrough)
{
    Write("unimod.txt",
          test::kModificationHeader + test::ModificationRow("Oxidation", "Somewhere", "M", "16"));
    IN_ITS_OWN_PROCESS({
        const Thrown thrown = Read(FullParameters());
        EXPECT_EQ(thrown.name, "InvalidValue");
        EXPECT_EQ(thrown.function, "CResidueModification::setTermSpecificity");
    });
}

TEST_F(TulkParamDatabasesDeathTest, B44_AMalformedDefaultTableEndsTheProcess)
{
    Write("unimod.txt", std::string(test::kModificationHeader) + "too\tfew\n");
    EXPECT_EXIT(Read(FullParameters()), ExitedWithCode(1), "Unexpected number of terms in line 2");
}

TEST_F(TulkParamDatabasesDeathTest, TheDefaultTableOfTheFirstReadingStays)
{
    IN_ITS_OWN_PROCESS({
        EXPECT_EQ(Read(FullParameters()), Thrown{});
        Write("unimod.txt", test::kModificationHeader);
        EXPECT_EQ(Read(FullParameters()), Thrown{});
        EXPECT_EQ(Search().vVarMods.size(), 2U);
    });
}

// ---- The database of the engine ------------------------------------------

TEST_F(TulkParamDatabasesDeathTest, TheLibrarysOwnTableIsReadForItsEngine)
{
    Write("mods.txt", test::kModificationHeader
                          + test::ModificationRow("Odd", "Protein C-term", "C-term", "-3.5"));
    std::filesystem::remove("unimod.txt"); // not needed
    IN_ITS_OWN_PROCESS({
        EXPECT_EQ(Read(WithDatabase(kCalvex, "mods.txt")
                           .SetMods("var_mod", {"Odd (protein c-term)"})
                           .SetMods("target_mod", {"Odd (C-term)"})),
                  Thrown{});
        EXPECT_EQ(Search().strModificationDatabase, "mods.txt");
        EXPECT_EQ(Search().vVarMods.at(0),
                  IdentModification("Odd", -3.5, "C-term", "Protein C-term", 0));
        EXPECT_EQ(Localize().vTargetMods.at(0),
                  IdentModification("Odd", -3.5, "C-term", "Anywhere", 0));
    });
}

TEST_F(TulkParamDatabasesDeathTest, PFind3NamesItsListOfSites)
{
    Write("modification.ini", kPFind3File);
    IN_ITS_OWN_PROCESS({
        EXPECT_EQ(Read(WithDatabase(kPFind3, "modification.ini")
                           .SetMods("var_mod", {"Phospho (STY)", "Acetyl (Protein N-term)"})),
                  Thrown{});
        EXPECT_EQ(Search().vVarMods.at(0),
                  IdentModification("Phospho", 79.966331, "STY", "Anywhere", 0));
        EXPECT_EQ(Search().vVarMods.at(1),
                  IdentModification("Acetyl", 42.010565, "N-term", "Protein N-term", 0));
        EXPECT_EQ(
            Read(WithDatabase(kPFind3, "modification.ini").SetMods("var_mod", {"Phospho (S)"})),
            InvalidParameter("Search", "var_mod_1"));
        EXPECT_EQ(Read(WithDatabase(kPFind3, "modification.ini")
                           .SetMods("fixed_mod", {"Phospho[STY] (STY)"})),
                  InvalidParameter("Search", "fixed_mod_1"))
            << "registered under the id only";
    });
}

TEST_F(TulkParamDatabasesDeathTest, MSFraggerNamesMassesByTheirText)
{
    Write("fragger.params", "variable_mod_01 = 15.9949 M 3\n"
                            "variable_mod_02 = 42.0106 [^ 1\n"
                            "add_C_cysteine = 57.021464\n");
    IN_ITS_OWN_PROCESS({
        EXPECT_EQ(Read(WithDatabase(kMSFragger, "fragger.params")
                           .SetMods("fixed_mod", {"57.021464 (C)"})
                           .SetMods("var_mod", {"15.9949 (M)", "42.0106 (Protein N-term)"})),
                  Thrown{});
        EXPECT_EQ(Search().vFixedMods.at(0),
                  IdentModification("57.021464", 57.021464, "C", "Anywhere", 0));
        EXPECT_EQ(Search().vVarMods.size(), 2U) << "no Oxidation by name";
        EXPECT_EQ(Search().vVarMods.at(1),
                  IdentModification("42.0106", 42.0106, "N-term", "Protein N-term", 0));
        EXPECT_EQ(
            Read(WithDatabase(kMSFragger, "fragger.params").SetMods("var_mod", {"15.994900 (M)"})),
            InvalidParameter("Search", "var_mod_1"));
    });
}

TEST_F(TulkParamDatabasesDeathTest, AnEngineWithoutModificationFilesPassesThrough)
{
    IN_ITS_OWN_PROCESS({
        for (const std::string engine : {"pFind 2.8 (.txt)", "Mascot", "Sequest (.txt)", "Maxquant",
                                         "X!Tandem", "MSGF (.tsv)", "Comet (.pep.xml)"}) {
            EXPECT_EQ(
                Read(WithDatabase(engine, "mods.txt")),
                (Thrown{"InvalidParameter", "ModificationDB", "CModificationsDBEngine::getInstance",
                        "Modification database loading from " + engine
                            + " is not supported for now."}));
        }
        EXPECT_EQ(Search().strModificationDatabase, "mods.txt");
    });
}

TEST_F(TulkParamDatabasesDeathTest, AMissingEngineFilePassesThrough)
{
    IN_ITS_OWN_PROCESS({
        for (const std::string engine : {kCalvex, kPFind3, kMSFragger}) {
            const Thrown thrown = Read(WithDatabase(engine, "no/mods"));
            EXPECT_EQ(thrown.name, "FileNotReadable");
            EXPECT_EQ(thrown.file, "ModificationDB");
            EXPECT_EQ(thrown.message, "the file 'no/mods' is not readable for the current user");
        }
    });
}

TEST_F(TulkParamDatabasesDeathTest, AMalformedPFind3FilePassesThrough)
{
    Write("modification.ini", "name1=Phospho[S] 0\nPhospho[S]\n");
    IN_ITS_OWN_PROCESS({
        const Thrown thrown = Read(WithDatabase(kPFind3, "modification.ini"));
        EXPECT_EQ(thrown.function, "CModificationsDBEnginePFind3::readFromSearchEngineFile");
        EXPECT_EQ(thrown.message, "There was expected to be (and only be) one \"=\" in line2");
    });
}

TEST_F(TulkParamDatabasesDeathTest, B44_AMalformedEngineTableEndsTheProcess)
{
    Write("mods.txt", "id\tfull_id\n");
    EXPECT_EXIT(Read(WithDatabase(kCalvex, "mods.txt")), ExitedWithCode(1),
                "Cannot find the column \"unimod_accession\"");
}

TEST_F(TulkParamDatabasesDeathTest, B45_TheEngineDatabaseOfTheFirstReadingStays)
{
    Write("modification.ini", kPFind3File);
    IN_ITS_OWN_PROCESS({
        const auto read = [this](const std::string& engine, const std::string& path) {
            return Read(WithDatabase(engine, path).SetMods("var_mod", {"Acetyl (Protein N-term)"}));
        };
        EXPECT_EQ(read(kPFind3, "modification.ini"), Thrown{});
        EXPECT_EQ(read(kMSFragger, "no/such file"), Thrown{});
        EXPECT_EQ(Search().strModificationDatabase, "no/such file") << "as the file says";
        EXPECT_EQ(read("Mascot", "x"), Thrown{});
        EXPECT_EQ(Search().vVarMods.at(0).dMass, 42.010565);
    });
}

TEST_F(TulkParamDatabasesDeathTest, BothDatabasesAreThereSideBySide)
{
    Write("modification.ini", kPFind3File);
    IN_ITS_OWN_PROCESS({
        EXPECT_EQ(
            Read(WithDatabase(kPFind3, "modification.ini").SetMods("var_mod", {"Phospho (STY)"})),
            Thrown{});
        EXPECT_EQ(Read(WithDatabase(kPFind3, "").SetMods("var_mod", {"Phospho (STY)"})),
                  InvalidParameter("Search", "var_mod_1"));
        EXPECT_EQ(Read(WithDatabase(kPFind3, "").SetMods("var_mod", {"Phospho (S)"})), Thrown{});
    });
}

// ---- The file itself -----------------------------------------------------

TEST_F(TulkParamDatabasesDeathTest, AMissingParameterFilePassesThrough)
{
    testing::internal::CaptureStdout();
    const Thrown thrown = test::ThrownBy([] { CTulkParam::readFromFile("no.ini"); });
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Error when reading \"no.ini\".\n");
    EXPECT_EQ(thrown, (Thrown{"FileNotFound", "InitFile", "InitFile::Load",
                              "the file 'no.ini' could not be found"}));
}

TEST_F(TulkParamDatabasesDeathTest, AMalformedParameterFilePassesThrough)
{
    Write("run.ini", "[Search]\nprecursor_tol 20 # ppm\n");
    EXPECT_EQ(test::ThrownBy([] { CTulkParam::readFromFile("run.ini"); }),
              (Thrown{"InvalidParameter", "InitFile", "InitFile::Load",
                      "2 \"precursor_tol 20 # ppm\" Invalid parameter format"}));
}

} // namespace
} // namespace Vorlan
