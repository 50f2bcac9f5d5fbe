// "pelgrin run" as a child process: the five steps from one parameter file.
#include <filesystem>

#include "ParameterFiles.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string kHeader =
    "Dataset Name\tSpectrum Name\tSequence\tCharge\tIon\tIon Index\tIon Charge\tStatus\t"
    "Theoretical m/z\tPeak m/z\tIntensity\tError (ppm)\n";

Row Scored(const std::string& score, const std::string& protein)
{
    Row row;
    row.score = score;
    row.protein = protein;
    return row;
}

Row Modified(const std::string& sequence, const std::string& name, const std::string& position)
{
    Row row;
    row.sequence = sequence;
    row.modNames = name;
    row.modPositions = position;
    return row;
}

TEST(PelgrinRun, DoesTheFiveStepsOfOneFile)
{
    const ParameterWorkplace workplace;
    const Outcome outcome = workplace.Run(Ini());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, StartsWith("Spectra              1   in 1 file\n"));
    EXPECT_EQ(workplace.Output("annotations.tsv"), kHeader + kGaskLines);
    const nlohmann::json summary = workplace.Summary();
    ExpectCountsAddUp(summary);
    EXPECT_EQ(summary["program"], "pelgrin run");
    EXPECT_EQ(summary["parameters"]["parameter_file"], "run.ini");
    EXPECT_EQ(summary["parameters"]["tolerance"], "20 ppm");
    EXPECT_EQ(summary["parameters"]["psms"], nlohmann::json({"./psms.txt"}));
    EXPECT_EQ(summary["parameters"]["fdr"], nullptr);
    EXPECT_EQ(summary["not_offered"], nlohmann::json::array());
    EXPECT_EQ(summary["records"]["fdr_control"]["total"], 0);
}

TEST(PelgrinRun, WritesWhatAnnotateWrites)
{
    const ParameterWorkplace workplace;
    const std::vector<Row> rows = {Row(), Modified("GAMK", "Oxidation (M)", "3")};
    EXPECT_EQ(workplace.Run(Ini(), rows).status, 0);
    const std::string files[] = {"annotations.tsv", "results.txt", "matched.mgf"};
    std::vector<std::string> written;
    for (const std::string& name : files) {
        written.push_back(workplace.Output(name));
    }
    EXPECT_EQ(workplace.Annotate(rows, {"--mod", "Oxidation (M)=15.994915"}).status, 0);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(workplace.Output(files[i]), written[i]) << files[i];
    }
}

TEST(PelgrinRun, TakesToleranceUnitAndSeriesFromTheFile)
{
    const ParameterWorkplace workplace;
    const Ini ini = Ini()
                        .With("Search", "fragment_tol", "0.02")
                        .With("Search", "fragment_tol_type", "0")
                        .With("Search", "fragmentation_method", "1");
    EXPECT_EQ(workplace.Run(ini).status, 0);
    EXPECT_EQ(workplace.Summary()["parameters"]["tolerance"], "0.02 Da");
    EXPECT_EQ(workplace.Summary()["parameters"]["ions"], nlohmann::json({"c", "z"}));
}

TEST(PelgrinRun, AsksShiftedIonsForAnOpenSearchOnly)
{
    const ParameterWorkplace workplace;
    Row row;
    row.massShift = "79.966331";
    EXPECT_EQ(workplace.Run(Ini(), {row}).status, 0);
    EXPECT_EQ(workplace.Summary()["ions"]["asked"], 6);
    EXPECT_EQ(workplace.Summary()["parameters"]["shifted_ions"], false);
    const Ini open = Ini()
                         .With("Search", "open_search", "1")
                         .With("Search", "precursor_matching_tolerance", "500")
                         .With("Search", "precursor_matching_tolerance_type", "0");
    EXPECT_EQ(workplace.Run(open, {row}).status, 0);
    EXPECT_EQ(workplace.Summary()["ions"]["asked"], 12);
}

TEST(PelgrinRun, FindsMassesInTheFileThenInTheDatabase)
{
    const ParameterWorkplace workplace;
    const std::vector<Row> rows = {Modified("GAMK", "Oxidation (M)", "3"),
                                   Modified("GASK", "Phospho (S)", "3"),
                                   Modified("GASK", "Acetyl (N-term)", "0"),
                                   Modified("QASK", "Gln->pyro-Glu (Any N-term Q)", "0"),
                                   Modified("GATK", "Phospho (T)", "3"),
                                   Modified("GATK", "Strange", "3")};
    const Outcome outcome = workplace.Run(Ini(), rows);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.out,
                HasSubstr("2   a modification has no mass (not in the database) (Phospho (T), 1 "
                          "more)"));
    const nlohmann::json summary = workplace.Summary();
    ExpectCountsAddUp(summary);
    const nlohmann::json masses = {{"Oxidation (M)", 15.994915},
                                   {"Phospho (S)", 79.966331},
                                   {"Acetyl (Any N-term)", 42.010565},
                                   {"Gln->pyro-Glu (Any N-term Q)", -17.026549}};
    EXPECT_EQ(summary["parameters"]["modifications"], masses);
    EXPECT_EQ(summary["parameters"]["modification_sources"]["Oxidation (M)"], "parameter file");
    EXPECT_EQ(summary["parameters"]["modification_sources"]["Phospho (S)"], "mods.txt");
    EXPECT_EQ(summary["records"]["details"]["modification_without_mass"]["Phospho (T)"], 1);
}

TEST(PelgrinRun, NoFixedModificationIsAddedThatTheTableDoesNotList)
{
    const ParameterWorkplace workplace;
    Row row;
    row.sequence = "GACK";
    EXPECT_EQ(workplace.Run(Ini(), {row}).status, 0);
    EXPECT_EQ(workplace.Summary()["parameters"]["modifications"], nlohmann::json::object());
}

TEST(PelgrinRun, ReadsTheModificationFilesOfEngines)
{
    const ParameterWorkplace workplace;
    workplace.Write("fragger.params",
                    "variable_mod_01 = 79.9663 STY 3\nadd_C_cysteine = 57.0215\n");
    const Ini fragger = Ini()
                            .With("Search", "search_result_format", "MSFragger (.pepXML)")
                            .With("Search", "modification_database", "fragger.params")
                            .With("Search", "fixed_mod_1", "57.0215 (C)")
                            .With("Search", "var_mod_1", "79.9663 (S)");
    EXPECT_EQ(workplace.Run(fragger, {Modified("GATK", "79.9663 (T)", "3")}).status, 0);
    EXPECT_EQ(workplace.Summary()["parameters"]["modifications"]["79.9663 (T)"], 79.9663);

    workplace.Write("modification.ini", "@NUMBER_MODIFICATION=1\nname1=Phospho[STY] 0\n"
                                        "Phospho[STY]=STY NORMAL 79.966331 79.98 0 H(1)O(3)P(1)\n");
    const Ini pfind = Ini()
                          .With("Search", "search_result_format", "pFind 3 (.spectra)")
                          .With("Search", "modification_database", "modification.ini")
                          .With("Search", "fixed_mod_number", "0")
                          .With("Search", "var_mod_1", "Phospho (STY)");
    const Outcome outcome = workplace.Run(pfind, {Modified("GATK", "Phospho (T)", "3")});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(workplace.Summary()["parameters"]["modifications"]["Phospho (T)"], 79.966331);
}

TEST(PelgrinRun, ReadsSeveralFilesOfSpectraAndMatches)
{
    const ParameterWorkplace workplace;
    workplace.Write("b.mgf", "BEGIN IONS\nTITLE=t\n147.1128 30\nEND IONS\n");
    Row other;
    other.dataset = "b";
    other.spectrum = "t";
    workplace.Write("b.txt", TableOf({other, other}));
    const Ini ini = Ini()
                        .With("Search", "dataset_number", "2")
                        .With("Search", "dataset_filename_2", "./b.mgf")
                        .With("Search", "pep_ident_number", "2")
                        .With("Search", "pep_ident_filename_2", "./b.txt");
    const Outcome outcome = workplace.Run(ini);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Matches read         3   in 2 files\n"));
    EXPECT_EQ(workplace.Summary()["records"]["annotated"], 3);
    EXPECT_EQ(workplace.Summary()["spectra"]["files"].size(), 2U);

    workplace.Write("b.txt", TableOf({other}) + "bad\trow\n");
    ExpectReject(workplace.Run(ini),
                 "./b.txt:3: spectrum \"row\": expected numbers in the columns");
    EXPECT_EQ(workplace.Summary()["records"]["annotated"], 2);
}

TEST(PelgrinRun, AnOxidationThatMSFraggerFindsAtTheProteinStartHasItsMass)
{
    // The engine's file has no "Oxidation": its modifications have no names.
    const ParameterWorkplace workplace;
    const Ini ini = Ini()
                        .With("Search", "search_result_format", "MSFragger (.pepXML)")
                        .With("Search", "modification_database", "")
                        .With("Search", "fixed_mod_number", "0");
    workplace.Write("unimod.txt", ModificationTable());
    EXPECT_EQ(workplace.Run(ini, {Modified("MASK", "Oxidation (Protein N-term)", "0")}).status, 0);
    EXPECT_EQ(
        workplace.Summary()["parameters"]["modification_sources"]["Oxidation (Protein N-term)"],
        "parameter file");
}

// ---- FDR control --------------------------------------------------------------

const std::vector<Row> kMixed = {Scored("9", "P1"),   Scored("8", "P2"), Scored("7", "D_P3"),
                                 Scored("6", "P4"),   Scored("5", ""),   Scored("nan", "P5"),
                                 Scored("4", "D_P6"), Scored("3", "P7")};

TEST(PelgrinRun, CountsEveryRecordThatLeavesByFdrControl)
{
    const ParameterWorkplace workplace;
    const Outcome outcome = workplace.Run(Ini().WithFdr("0.4"), kMixed);
    EXPECT_EQ(outcome.status, 3); // two records could not be judged
    EXPECT_THAT(outcome.err, HasSubstr("2 of 8 records were not annotated"));
    EXPECT_THAT(outcome.out,
                HasSubstr("  FDR control        5   matches leave the run\n"
                          "                     2   decoys\n"
                          "                     1   with a q-value above 0.4\n"
                          "                     1   without proteins\n"
                          "                     1   with a score that is no number\n"));
    const nlohmann::json summary = workplace.Summary();
    ExpectCountsAddUp(summary);
    EXPECT_EQ(summary["records"]["annotated"], 3);
    const nlohmann::json left = {{"total", 5},
                                 {"above_threshold", 1},
                                 {"decoys", 2},
                                 {"without_proteins", 1},
                                 {"score_not_a_number", 1}};
    EXPECT_EQ(summary["records"]["fdr_control"], left);
    EXPECT_EQ(summary["fdr"][0]["targets"], 4);
    EXPECT_EQ(summary["fdr"][0]["passing"], 3);
    EXPECT_EQ(summary["fdr"][0]["worst_score"], 6.0);
    EXPECT_EQ(summary["parameters"]["fdr"]["method"], "global");
    EXPECT_EQ(summary["parameters"]["fdr"]["formula"], "decoy/target");
    EXPECT_EQ(workplace.Output("results.txt"),
              std::string(kTableHeader)
                  + "run.mgf\trun.00001.00001.2\tGASK\t2\t361.192724\t0.000000\t9."
                    "000000\t1\t\t\tP1\tK\tA\t7\n"
                  + "run.mgf\trun.00001.00001.2\tGASK\t2\t361.192724\t0.000000\t8."
                    "000000\t1\t\t\tP2\tK\tA\t7\n"
                  + "run.mgf\trun.00001.00001.2\tGASK\t2\t361.192724\t0.000000\t6."
                    "000000\t1\t\t\tP4\tK\tA\t7\n");
}

TEST(PelgrinRun, DecoysAndMatchesAboveTheThresholdAreNoLosses)
{
    const ParameterWorkplace workplace;
    const Outcome outcome = workplace.Run(
        Ini().WithFdr("0.1"), {Scored("9", "P1"), Scored("8", "D_P2"), Scored("7", "P3")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(workplace.Summary()["records"]["annotated"], 1);
}

TEST(PelgrinRun, TheSecondFormulaCountsOneDecoyMore)
{
    const ParameterWorkplace workplace;
    const std::vector<Row> rows = {Scored("9", "P1"), Scored("8", "P2"), Scored("7", "D_")};
    EXPECT_EQ(workplace.Run(Ini().WithFdr("0.4", "1", "2"), rows).status, 0);
    EXPECT_EQ(workplace.Summary()["records"]["annotated"], 0);
    EXPECT_EQ(workplace.Run(Ini().WithFdr("0.5", "1", "2"), rows).status, 0);
    EXPECT_EQ(workplace.Summary()["records"]["annotated"], 2);
}

Ini TwoTables(const Ini& ini)
{
    return ini.With("Search", "pep_ident_number", "2")
        .With("Search", "pep_ident_filename_2", "./b.txt");
}

TEST(PelgrinRun, GlobalJudgesAllFilesTogetherAndSeparateEachAlone)
{
    const ParameterWorkplace workplace;
    workplace.Write("b.txt", TableOf({Scored("2", "D_"), Scored("1", "P3")}));
    const std::vector<Row> rows = {Scored("9", "P1"), Scored("8", "P2"), Scored("0.5", "D_")};
    EXPECT_EQ(workplace.Run(TwoTables(Ini().WithFdr("0.34", "1")), rows).status, 0);
    nlohmann::json summary = workplace.Summary();
    ExpectCountsAddUp(summary);
    EXPECT_EQ(summary["records"]["annotated"], 3);
    ASSERT_EQ(summary["fdr"].size(), 1U);
    EXPECT_EQ(summary["fdr"][0]["files"], nlohmann::json({"./psms.txt", "./b.txt"}));

    EXPECT_EQ(workplace.Run(TwoTables(Ini().WithFdr("0.34", "2")), rows).status, 0);
    summary = workplace.Summary();
    ExpectCountsAddUp(summary);
    EXPECT_EQ(summary["records"]["annotated"], 2);
    ASSERT_EQ(summary["fdr"].size(), 2U);
    EXPECT_EQ(summary["fdr"][1]["files"], nlohmann::json({"./b.txt"}));
    EXPECT_EQ(summary["fdr"][1]["passing"], 0);
    EXPECT_EQ(summary["fdr"][1]["worst_score"], nullptr);
}

TEST(PelgrinRun, ScoresOfBothDirectionsCannotBeJudgedTogether)
{
    const ParameterWorkplace workplace;
    Row low;
    low.highBetter = "0";
    ExpectRefusal(workplace.Run(Ini().WithFdr("0.01"), {Row(), Row(), low}), 1,
                  "./psms.txt:4: expected \"High Score Better\" as in ./psms.txt:2, 1: FDR control "
                  "cannot compare their scores");
    workplace.Write("b.txt", TableOf({low}));
    ExpectRefusal(workplace.Run(TwoTables(Ini().WithFdr("0.01")), {Row()}), 1,
                  "./b.txt:2: expected \"High Score Better\" as in ./psms.txt:2, 1");
    EXPECT_EQ(workplace.Run(TwoTables(Ini().WithFdr("0.01", "2")), {Row()}).status, 0);
}

TEST(PelgrinRun, SaysWhenThereIsNoDecoyOrNoTarget)
{
    const ParameterWorkplace workplace;
    Outcome outcome = workplace.Run(Ini().WithFdr("0.01"), {Row()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.err,
        "pelgrin: warning: ./psms.txt: no accession begins with the decoy tag \"D_\"; without "
        "decoys the false discovery rate cannot be estimated, and every match stays\n");
    outcome = workplace.Run(Ini().WithFdr("1"), {Scored("1", "D_")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("every match is a decoy, so none stays"));
    EXPECT_EQ(workplace.Summary()["records"]["annotated"], 0);
    EXPECT_EQ(workplace.Run(Ini().WithFdr("1"), {}).status, 0); // no records at all
}

// ---- What is not offered ------------------------------------------------------

TEST(PelgrinRun, SaysThatLocalizationIsNotOfferedYet)
{
    const ParameterWorkplace workplace;
    const Ini ini = Ini()
                        .WithLocalization()
                        .With("Localization", "target_mod_number", "1")
                        .With("Localization", "target_mod_1", "Phospho (S)");
    const Outcome outcome = workplace.Run(ini);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err, "pelgrin: warning: run.ini:" + std::to_string(ini.LineOf("is_localized"))
                               + ": is_localized = 1: localization is not offered yet; the run "
                                 "goes on without it\n");
    EXPECT_EQ(workplace.Summary()["not_offered"], nlohmann::json({"localization"}));
}

TEST(PelgrinRun, RefusesWhatItCannotReadBeforeAnyWork)
{
    struct Case {
        const char* reason;
        Ini ini;
        const char* key;
        const char* text;
    };
    const ParameterWorkplace workplace;
    for (const Case& c :
         {Case{"spectra", Ini().With("Search", "dataset_format", "mzML"), "dataset_format",
               " = \"mzML\": such files are not read, convert each one to MGF: "},
          Case{"matches", Ini().With("Search", "pep_ident_format", "X!Tandem"), "pep_ident_format",
               " = \"X!Tandem\": this format is not read yet; expected \"pFind 2.8 (.txt)\", "},
          Case{"transferred", Ini().WithFdr("0.01", "3"), "fdr_method",
               " = \"3\": \"transferred\" is not offered yet; expected 1 (global) or 2 "
               "(separate)\n"}}) {
        SCOPED_TRACE(c.reason);
        ExpectRefusal(workplace.Run(c.ini), 1,
                      "run.ini:" + std::to_string(c.ini.LineOf(c.key)) + ": " + c.key + c.text);
        EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("out")));
    }
}

// ---- Files --------------------------------------------------------------------

TEST(PelgrinRun, PathsWithBackslashesMeanWhatTheyMeanToTheLibrary)
{
    const ParameterWorkplace workplace;
    std::filesystem::create_directory(workplace.PathOf("data"));
    workplace.Write("data/run.mgf", kRunMgf);
    workplace.Write("data/psms.txt", TableOf({Row()}));
    workplace.Write("data/mods.txt", ModificationTable());
    const Ini ini = Ini()
                        .With("Search", "dataset_filename_1", "data\\run.mgf")
                        .With("Search", "pep_ident_filename_1", ".\\data\\psms.txt")
                        .With("Search", "modification_database", "data\\mods.txt")
                        .With("Output", "output", "new\\out");
    const Outcome outcome = workplace.Run(ini);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(Vorlan::test::ReadFile(workplace.PathOf("new/out/annotations.tsv")),
              kHeader + kGaskLines);
    workplace.Write("a\\b.mgf", kRunMgf);
    ExpectRefusal(workplace.Run(Ini().With("Search", "dataset_filename_1", "./a\\b.mgf")), 1,
                  "dataset_filename_1: ./a\\b.mgf: a path with a backslash cannot be read");
}

TEST(PelgrinRun, FilesThatAreMissingEndItWithTheFirstOne)
{
    const ParameterWorkplace workplace;
    const Ini one = Ini().With("Search", "dataset_filename_1", "./none.mgf");
    ExpectRefusal(workplace.Run(one), 1,
                  "run.ini:16: dataset_filename_1: ./none.mgf: cannot be opened: No such file or "
                  "directory\n");
    ExpectRefusal(workplace.Run(one.With("Search", "pep_ident_filename_1", "./none.txt")), 1,
                  "No such file or directory (and 1 more: see pelgrin params check)\n");
    EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("out")));
}

TEST(PelgrinRun, FilesThatCannotBeToldApartAreRefused)
{
    const ParameterWorkplace workplace;
    std::filesystem::create_directory(workplace.PathOf("b"));
    workplace.Write("b/run.mgf", kRunMgf);
    ExpectRefusal(workplace.Run(Ini()
                                    .With("Search", "dataset_number", "2")
                                    .With("Search", "dataset_filename_2", "b/run.mgf")),
                  1,
                  "dataset_filename_2: b/run.mgf: dataset_filename_1 has the same file name, and "
                  "records could not tell them apart");
    ExpectRefusal(workplace.Run(Ini()
                                    .With("Search", "pep_ident_number", "2")
                                    .With("Search", "pep_ident_filename_2", "b/../psms.txt")),
                  1,
                  "pep_ident_filename_2: b/../psms.txt: pep_ident_filename_1 is the same file, and "
                  "its matches would count twice");
}

TEST(PelgrinRun, NeverOverwritesItsInputs)
{
    const ParameterWorkplace workplace;
    EXPECT_EQ(workplace.Run(Ini()).status, 0);
    const std::string results = workplace.Output("results.txt");
    ExpectRefusal(workplace.Run(Ini().With("Search", "pep_ident_filename_1", "out/results.txt")), 1,
                  "output: out/results.txt: is an input and would be overwritten; choose another "
                  "folder for \"output\" in run.ini");
    EXPECT_EQ(workplace.Output("results.txt"), results);
    workplace.Write("matched.mgf", ModificationTable());
    ExpectRefusal(workplace.Run(Ini()
                                    .With("Search", "modification_database", "matched.mgf")
                                    .With("Output", "output", ".")),
                  1, "matched.mgf: is an input and would be overwritten");
}

TEST(PelgrinRun, AnOutputThatIsAFileIsRefused)
{
    const ParameterWorkplace workplace;
    workplace.Write("out", "a file");
    ExpectRefusal(workplace.Run(Ini()), 1,
                  "run.ini:27: output: out: expected a folder, but it is a file\n");
}

} // namespace
} // namespace pelgrin::test
