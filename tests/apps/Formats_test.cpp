// "pelgrin annotate" and "pelgrin run" with the results of every engine.
#include <filesystem>

#include "ParameterFiles.h"
#include "ResultTexts.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kOxidation = "Oxidation (M)=15.994915";

/// A Workplace with run.mgf, whose spectrum has the names of every engine.
class EnginePlace : public ParameterWorkplace {
public:
    EnginePlace() { Write("run.mgf", kRunMgf); }

    Outcome Annotate(const std::string& format, const std::string& text,
                     std::vector<std::string> more = {}) const
    {
        std::vector<std::string> arguments = {"annotate", "--spectra",           PathOf("run.mgf"),
                                              "--psms",   Write("result", text), "--format",
                                              format,     "--tolerance",         "20ppm",
                                              "--out",    PathOf("out")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunPelgrin(arguments);
    }
};

/// One result of a format that holds one GASK of run.mgf.
struct Engine {
    const char* format;
    std::string text;
    const char* rule; ///< by which run.mgf is found
};

/// The spectrum is known as run.1.1.2, run.00001.00001.2 and 1.
std::vector<Engine> Engines()
{
    const auto pFindName = [](std::string text) {
        const std::size_t hit = text.find("run.1.1.2.0.dta");
        return text.replace(hit, 15, "run.1.1.2");
    };
    return {{"MSFragger (.pepXML)", PepXml(Query(Hit())), "by_file_name_behind_separator"},
            {"Comet (.pep.xml)", PepXml(Query(Hit())), "by_file_name_behind_separator"},
            {"MSGF (.tsv)", kMsgfHeader + MsgfRow(), "by_file_name"},
            {"pFind 3 (.spectra)", kPFind3Header + pFindName(PFind3Row()), nullptr},
            {"pFind 2.8 (.txt)", kPFind28Head + PFind28Section(), "by_file_name"},
            {"Sequest (.txt)", kSequestHeader + SequestRow(), "by_file_name"},
            {"MaxQuant", kMsmsHeader + MsmsRow(), "by_file_name"}};
}

TEST(PelgrinFormats, AnnotateFindsTheIonsOfEveryEnginesMatch)
{
    const EnginePlace place;
    place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0"));
    for (const Engine& engine : Engines()) {
        SCOPED_TRACE(engine.format);
        // pFind 3 names the dataset after the spectrum: nothing is left here.
        std::vector<std::string> more;
        if (engine.rule == nullptr) {
            more = {"--dataset", "run.1.1.2.mgf=run.mgf"};
        }
        const Outcome outcome = place.Annotate(engine.format, engine.text, more);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const nlohmann::json summary = place.Summary();
        ExpectCountsAddUp(summary);
        EXPECT_EQ(summary["parameters"]["format"], engine.format);
        EXPECT_EQ(summary["records"]["annotated"], 1);
        EXPECT_EQ(summary["ions"]["matched"], 3);
        EXPECT_EQ(summary["records"]["joined"][engine.rule == nullptr ? "by_user" : engine.rule],
                  1);
    }
}

TEST(PelgrinFormats, RunFindsTheIonsOfEveryEnginesMatch)
{
    const EnginePlace place;
    place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0"));
    for (const Engine& engine : Engines()) {
        SCOPED_TRACE(engine.format);
        place.Write("result", engine.text);
        std::vector<std::string> arguments = {"run"};
        if (engine.rule == nullptr) {
            arguments.insert(arguments.end(), {"--dataset", "run.1.1.2.mgf=./run.mgf"});
        }
        const Outcome outcome =
            place.Pelgrin(arguments, Ini()
                                         .With("Search", "pep_ident_format", engine.format)
                                         .With("Search", "pep_ident_filename_1", "./result"));
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const nlohmann::json summary = place.Summary();
        ExpectCountsAddUp(summary);
        EXPECT_EQ(summary["records"]["annotated"], 1);
        EXPECT_EQ(summary["ions"]["matched"], 3);
    }
}

// ---- Modifications ------------------------------------------------------------

TEST(PelgrinFormats, MassesAreExplainedByTheModificationsOfTheCommandLine)
{
    const EnginePlace place;
    place.Write("run.mgf", "BEGIN IONS\nTITLE=run.1.1.2 x\nCHARGE=2+\n147.1128 1\n"
                           "294.148203 1\nEND IONS\n"); // y1 and y2 of GAM(ox)K
    const std::string text = PepXml(Query(Hit(Modified("3", "147.035400"), "GAMK")));
    for (const std::vector<std::string>& mods :
         {std::vector<std::string>{"--mod", kOxidation},
          std::vector<std::string>{"--mod", "Oxidation (MW)=15.9949"}}) {
        const Outcome outcome = place.Annotate("Comet (.pep.xml)", text, mods);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(place.Summary()["ions"]["series"]["y"]["unshift"]["matched"], 2);
        EXPECT_THAT(place.Output("results.txt"), HasSubstr("\tOxidation\t3\t"));
    }
}

TEST(PelgrinFormats, MassesAreExplainedByTheModificationsOfAParameterFile)
{
    const EnginePlace place;
    place.Write("run.ini", Ini().Text());
    place.Write("result", PepXml(Query(Hit(Modified("3", "147.035400"), "GAMK"))));
    Setting setting;
    setting.folder = place.PathOf("");
    const Outcome outcome = RunPelgrin({"annotate", "--spectra", "run.mgf", "--psms", "result",
                                        "--format", "Comet (.pep.xml)", "--tolerance", "20ppm",
                                        "--out", "out", "--parameters", "run.ini"},
                                       setting);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const nlohmann::json parameters = place.Summary()["parameters"];
    EXPECT_EQ(parameters["parameter_file"], "run.ini");
    EXPECT_EQ(parameters["modification_sources"]["Oxidation (M)"], "parameter file");
}

TEST(PelgrinFormats, AParameterFileGivesMassesToTheNativeTable)
{
    const EnginePlace place;
    place.Write("run.ini", Ini().Text());
    Row row;
    row.sequence = "GAMK";
    row.modNames = "Oxidation (M)";
    row.modPositions = "3";
    place.Write("result", TableOf({row}));
    Setting setting;
    setting.folder = place.PathOf("");
    const std::vector<std::string> arguments = {"annotate", "--spectra",    "run.mgf", "--psms",
                                                "result",   "--tolerance",  "20ppm",   "--out",
                                                "out",      "--parameters", "run.ini"};
    EXPECT_EQ(RunPelgrin(arguments, setting).status, 0);
    EXPECT_EQ(place.Summary()["records"]["annotated"], 1);
    EXPECT_EQ(place.Summary()["parameters"]["psms"], "result");
}

TEST(PelgrinFormats, AMassThatNothingExplainsIsNamedWithItsQuery)
{
    const EnginePlace place;
    const std::string text =
        PepXml(Query("") + Query(Hit()) + Query(Hit(Modified("3", "147.0354"), "GAMK")));
    const Outcome outcome =
        place.Annotate("Comet (.pep.xml)", text, {"--mod", "Phospho (STY)=79.966331"});
    ExpectReject(
        outcome,
        "result:17: spectrum \"run.00001.00001.2\": peptide \"GAMK\", modified residues M3 "
        "(147.0354): no sum of up to five of the given modifications is the mass of one "
        "of them; name the missing modification with its mass (--mod) or in the "
        "parameter file, fixed ones such as Carbamidomethyl (C) included");
    EXPECT_THAT(place.Output("rejects.tsv"), HasSubstr("\t17\trun.00001.00001.2\t1\tpeptide"));
    EXPECT_EQ(place.Summary()["records"]["annotated"], 1);
    EXPECT_EQ(place.Summary()["records_rejected"], 1);
}

TEST(PelgrinFormats, AMassOfMsgfThatIsNotInItsListIsNamedWithItsRow)
{
    const EnginePlace place;
    const std::string text = kMsgfHeader + MsgfRow() + "\n" + MsgfRow("GAM+15.995K");
    ExpectReject(
        place.Annotate("MSGF (.tsv)", text),
        "result:4: spectrum \"1\": the value '+15.995' was used but is not valid; Unexpected "
        "modification mass in \"Peptide\" in .tsv file; name the modification with its "
        "mass (--mod) or in the parameter file");
    const std::string list = place.Write("mods.lst", "57.021464,C,fix,any,Carbamidomethyl\n");
    ExpectReject(place.Annotate("MSGF (.tsv)", text, {"--second", list}),
                 "add the modification to " + list);
    EXPECT_EQ(place.Annotate("MSGF (.tsv)", text, {"--mod", kOxidation}).status, 0);
    place.Write("mods.lst", "15.994915,M,opt,any,Oxidation\n");
    EXPECT_EQ(place.Annotate("MSGF (.tsv)", text, {"--second", list}).status, 0);
    EXPECT_EQ(place.Summary()["parameters"]["second"], list);
}

TEST(PelgrinFormats, AnAbbreviationOfMaxQuantThatIsNotKnownIsNamedWithItsRow)
{
    const EnginePlace place;
    place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0;1"));
    const std::string text = kMsmsHeader + MsmsRow() + MsmsRow("_GAM(ox)K_", "Strange (K)");
    ExpectReject(place.Annotate("MaxQuant", text),
                 "result:3: spectrum \"1\": the value 'ox' was used");
    EXPECT_EQ(place.Annotate("MaxQuant", text, {"--mod", kOxidation}).status, 0);
    EXPECT_EQ(place.Summary()["records"]["annotated"], 2);
}

TEST(PelgrinFormats, AModificationWithoutASiteExplainsNothingAndAWarningSaysSo)
{
    const EnginePlace place;
    const Outcome outcome =
        place.Annotate("Comet (.pep.xml)", PepXml(Query(Hit())), {"--mod", "Known=1"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("warning: --mod: \"Known\" has no site in parentheses"));
    ExpectRefusal(
        place.Annotate("Comet (.pep.xml)", PepXml(Query(Hit())), {"--mod", "a#b (M)=1"}), 2,
        "--mod: \"a#b (M)\": a name with \"=\", \"#\" or a tab cannot be told to a reader");
}

TEST(PelgrinFormats, WhatNoReaderCanBeToldIsRefused)
{
    const EnginePlace place;
    ExpectRefusal(place.Annotate("Comet (.pep.xml)", PepXml(Query(Hit())),
                                 {"--mod", std::string(45000, 'a') + " (M)=1"}),
                  2, "aaa...\": a name of more than 1000 characters cannot be told to a reader");
    for (const char* const name : {"a#b", "a=b"}) {
        std::filesystem::create_directory(place.PathOf(name));
        Setting setting;
        setting.variables = {{"TMPDIR", place.PathOf(name)}};
        const Outcome outcome = RunPelgrin(
            {"convert", "--in", place.Write("result", PepXml(Query(Hit()))), "--format",
             "Comet (.pep.xml)", "--mod", "Oxidation (M)=16", "--out", place.PathOf("table.txt")},
            setting);
        ExpectRefusal(outcome, 1, "cannot be told to a reader; choose another folder for TMPDIR");
    }
}

TEST(PelgrinFormats, EachResidueOfAModificationHasItsMassInTheAnnotation)
{
    const Workplace place;
    Row row;
    row.modNames = "Oxidation (K)";
    row.modPositions = "4";
    const Outcome outcome = place.Annotate({row}, {"--mod", "Oxidation (MK)=15.994915"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(place.Summary()["records"]["annotated"], 1);
}

TEST(PelgrinFormats, AMassOnATerminusCountsWithAndWithoutAName)
{
    const EnginePlace place;
    place.Write("run.mgf", "BEGIN IONS\nTITLE=run.1.1.2 x\nCHARGE=2+\n100.039306 1\nEND IONS\n");
    const std::string text =
        PepXml(Query(Hit("<modification_info mod_nterm_mass=\"43.018390\"/>\n"))); // b1 + 42.01
    for (const std::vector<std::string>& mods :
         {std::vector<std::string>{},
          std::vector<std::string>{"--mod", "Acetyl (N-term)=42.010565"}}) {
        const Outcome outcome = place.Annotate("Comet (.pep.xml)", text, mods);
        EXPECT_EQ(outcome.status, mods.empty() ? 3 : 0) << outcome.err; // lost in results.txt
        EXPECT_EQ(place.Summary()["ions"]["series"]["b"]["unshift"]["matched"], 1);
        EXPECT_THAT(place.Output("results.txt"),
                    mods.empty() ? HasSubstr("\t0\t\t\tP1") : HasSubstr("\tAcetyl\t0\tP1"));
    }
}

TEST(PelgrinFormats, NamesWithoutASiteFindTheirMassesBySite)
{
    const EnginePlace place;
    std::string row = SequestRow("1", "M3(Oxidation)");
    row.replace(row.find("GASK"), 4, "GAMK");
    const Outcome outcome =
        place.Annotate("Sequest (.txt)", kSequestHeader + row, {"--mod", kOxidation});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(place.Summary()["records"]["annotated"], 1);
    place.Write("result", kSequestHeader + row);
    const Outcome run = place.Run(Ini()
                                      .With("Search", "pep_ident_format", "Sequest (.txt)")
                                      .With("Search", "pep_ident_filename_1", "./result"));
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(place.Summary()["parameters"]["modification_sources"]["Oxidation (M)"],
              "parameter file");
}

TEST(PelgrinFormats, MassesOfPFindComeFromTheCommandLineOrTheDefaultTable)
{
    const EnginePlace place;
    std::string row = PFind3Row("3,Oxidation[M];");
    row.replace(row.find("GASK"), 4, "GAMK");
    place.Write("result", kPFind3Header + row);
    const std::vector<std::string> arguments = {
        "annotate", "--spectra",          "run.mgf",        "--psms", "result",
        "--format", "pFind 3 (.spectra)", "--out",          "out",    "--tolerance",
        "20ppm",    "--dataset",          "run.mgf=run.mgf"};
    Setting setting;
    setting.folder = place.PathOf("");
    EXPECT_EQ(RunPelgrin(arguments, setting).status, 3);
    EXPECT_EQ(place.Summary()["records"]["read"], 1);
    place.Write("unimod.txt", ModificationTable());
    place.Write("run.mgf", "BEGIN IONS\nTITLE=run.1.1.2.0.dta\nCHARGE=2+\n294.148203 1\n"
                           "END IONS\n");
    EXPECT_EQ(RunPelgrin(arguments, setting).status, 0);
    EXPECT_EQ(place.Summary()["ions"]["matched"], 1);
    // The library would end the process for a table like this one.
    place.Write("unimod.txt", "id\tname\n");
    ExpectRefusal(RunPelgrin(arguments, setting), 1,
                  "unimod.txt:1: expected a column named \"full_id\" in the header line");
}

TEST(PelgrinFormats, AMassOfTheReaderCountsBeforeThatOfTheDatabase)
{
    const EnginePlace place;
    std::string row = PFind3Row("3,Phospho[S];4,Acetyl[K];");
    place.Write("result", kPFind3Header + row);
    place.Write("run.mgf", "BEGIN IONS\nTITLE=run.1.1.2.0.dta\nCHARGE=2+\n1 1\nEND IONS\n");
    const Outcome outcome = place.Run(Ini()
                                          .With("Search", "pep_ident_format", "pFind 3 (.spectra)")
                                          .With("Search", "pep_ident_filename_1", "./result"));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(place.Summary()["records"]["annotated"], 1);
    // Both masses came with the record.
    EXPECT_EQ(place.Summary()["parameters"]["modification_sources"], nlohmann::json::object());
}

TEST(PelgrinFormats, CheckNamesThePeptidesOfMaxQuant)
{
    const EnginePlace place;
    place.Write("result", kMsmsHeader + MsmsRow());
    place.Write("peptides.txt", kPeptidesHeader);
    const Outcome outcome = place.Check(Ini()
                                            .With("Search", "pep_ident_format", "MaxQuant")
                                            .With("Search", "pep_ident_filename_1", "./result"));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Peptides      peptides.txt\n  ./peptides.txt   "
                                       + std::to_string(kPeptidesHeader.size()) + " bytes\n"));
}

// ---- Datasets -----------------------------------------------------------------

TEST(PelgrinFormats, ADatasetThatIsMetOnlyByAWeakRuleIsToldOnce)
{
    const EnginePlace place;
    const Outcome outcome =
        place.Annotate("Comet (.pep.xml)", PepXml(Query(Hit()) + Query(Hit()), "/data/search/run"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "pelgrin: info: the dataset \"/data/search/run.mgf\" is taken for "
                           "\"run.mgf\": by the name behind its last separator\n");
    const nlohmann::json expected = {
        {"/data/search/run.mgf", {{"file", "run.mgf"}, {"rule", "by_file_name_behind_separator"}}}};
    EXPECT_EQ(place.Summary()["datasets"], expected);
}

TEST(PelgrinFormats, AnAmbiguousDatasetIsRefusedBeforeAnyOutput)
{
    const Workplace place;
    EXPECT_EQ(place.Annotate({Row()}).status, 0);
    const std::string before = place.Output("annotations.tsv");
    Row row;
    row.dataset = "run";
    const std::vector<std::string> more = {"--spectra", place.Write("run.MGF", kRunMgf)};
    ExpectRefusal(place.Annotate({Row(), row}, more), 1,
                  "the dataset \"run\" may be \"run.mgf\" or \"run.MGF\"; say which with "
                  "--dataset \"run=FILE\"");
    EXPECT_EQ(place.Output("annotations.tsv"), before);
    std::vector<std::string> said = more;
    said.insert(said.end(), {"--dataset", "run=run.MGF"});
    EXPECT_EQ(place.Annotate({Row(), row}, said).status, 0);
    EXPECT_EQ(place.Summary()["records"]["joined"]["by_user"], 1);
    EXPECT_EQ(place.Summary()["parameters"]["datasets"]["run"], place.PathOf("run.MGF"));
}

TEST(PelgrinFormats, AScanNumberFindsItsSpectrumByTheTitle)
{
    const EnginePlace place;
    const std::string peaks = "\nCHARGE=2+\n147.1128 1\nEND IONS\n";
    for (const char* const title :
         {"run.1.1.2", "run.00001.00001.2", "run.1.1", "run.00001.00001"}) {
        SCOPED_TRACE(title);
        place.Write("run.mgf",
                    "BEGIN IONS\nTITLE=run.2.2.2" + peaks + "BEGIN IONS\nTITLE=" + title + peaks);
        const Outcome outcome = place.Annotate("MSGF (.tsv)", kMsgfHeader + MsgfRow());
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "pelgrin: info: 1 records name a scan; their spectra were found by "
                               "the scan number in the title\n");
        EXPECT_EQ(place.Summary()["records"]["joined_by_scan_in_title"], 1);
        EXPECT_THAT(place.Output("matched.mgf"), HasSubstr(std::string("TITLE=") + title + "\n"));
    }
    for (const char* const title : {"run.1.1.3", "run.11.11.2", "other.1.1.2", "run.1.2.2"}) {
        SCOPED_TRACE(title);
        place.Write("run.mgf", "BEGIN IONS\nTITLE=" + std::string(title) + peaks);
        EXPECT_EQ(place.Annotate("MSGF (.tsv)", kMsgfHeader + MsgfRow()).status, 3);
    }
}

TEST(PelgrinFormats, AScanNumberThatEndsATitleIsTheWholeNumber)
{
    // The library knows the spectrum of scan 12 as "1" (B-13).
    const EnginePlace place;
    const std::string peaks = "\nCHARGE=2+\n147.1128 1\nEND IONS\n";
    const std::string twelve = "BEGIN IONS\nTITLE=raw controllerNumber=1 scan=12 " + peaks;
    const std::string one = "BEGIN IONS\nTITLE=raw controllerNumber=1 scan=1" + peaks;
    const std::string msgf = kMsgfHeader + MsgfRow();

    place.Write("run.mgf", one + twelve);
    EXPECT_EQ(place.Annotate("MSGF (.tsv)", msgf).status, 0);
    EXPECT_EQ(place.Summary()["records"]["joined_by_scan_in_title"], 1);
    EXPECT_THAT(place.Output("matched.mgf"), HasSubstr("TITLE=raw controllerNumber=1 scan=1\n"));

    place.Write("run.mgf", twelve);
    const Outcome outcome = place.Annotate("MSGF (.tsv)", msgf);
    EXPECT_EQ(outcome.status, 3) << "scan 12 is not scan 1";
    EXPECT_EQ(place.Summary()["records"]["joined"]["total"], 0);
}

TEST(PelgrinFormats, WhatDatasetSaysMustMakeSense)
{
    const Workplace place;
    const auto annotate = [&](const std::string& text) {
        return place.Annotate({Row()}, {"--dataset", text});
    };
    ExpectRefusal(annotate("run.mgf"), 2, "is not the name of a dataset, \"=\" and a file");
    ExpectRefusal(annotate("a=b.mgf"), 2, "--dataset: \"b.mgf\" is no file of spectra of this run");
    ExpectRefusal(place.Annotate({Row()}, {"--dataset", "a=run.mgf", "--dataset", "a=run.mgf"}), 2,
                  "--dataset: \"a\" is given twice");
    const Outcome unused = annotate("a=run.mgf");
    EXPECT_EQ(unused.status, 0);
    EXPECT_THAT(unused.err, HasSubstr("warning: --dataset: no record has the dataset \"a\"\n"));
}

// ---- What gives no record -----------------------------------------------------

TEST(PelgrinFormats, WhatIsPassedOverIsToldAndNoLoss)
{
    const EnginePlace place;
    const Outcome outcome =
        place.Annotate("Comet (.pep.xml)", PepXml(Query("") + Query(Hit()) + Query("")));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("    no loss        2  query_without_hit: queries without "
                                       "a hit ("));
    EXPECT_THAT(outcome.out, Not(HasSubstr("    lost ")));
    EXPECT_EQ(place.Summary()["passed_over"]["query_without_hit"], 2);
    EXPECT_EQ(place.Summary()["rows_not_read"]["further_run"], 0);
}

TEST(PelgrinFormats, WhatIsLostIsToldWithItsPlaceAndEndsWithStatusThree)
{
    const EnginePlace place;
    const Outcome outcome = place.Annotate("MSGF (.tsv)", kMsgfHeader + MsgfRow() + "x\ty\nz\n");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("result:3: the first of 2 rows with too few cells; they are "
                                       "not read\n"));
    EXPECT_THAT(outcome.out,
                HasSubstr("    lost           2  short_row: rows with too few cells ("));
    EXPECT_EQ(place.Summary()["rows_not_read"]["short_row"], 2);
}

TEST(PelgrinFormats, XmlThatCannotBeReadIsAFailure)
{
    const EnginePlace place;
    const std::string text = PepXml(Query(Hit()));
    for (const std::size_t length : {text.size() - 20, text.find("</search_result>")}) {
        const Outcome outcome = place.Annotate("Comet (.pep.xml)", text.substr(0, length));
        ExpectRefusal(outcome, 1,
                      "result:4: spectrum \"run.00001.00001.2\": cannot be read as XML: ");
    }
    ExpectRefusal(place.Annotate("Comet (.pep.xml)", ""), 1,
                  "result: expected pepXML with an element msms_run_summary");
}

TEST(PelgrinFormats, ACellThatIsNoNumberIsReportedWithItsLine)
{
    const EnginePlace place;
    std::string row = SequestRow();
    row.replace(row.find("2.5"), 3, "n/a");
    ExpectReject(
        place.Annotate("Sequest (.txt)", kSequestHeader + SequestRow("2") + SequestRow() + row),
        "result:4: spectrum \"1\": expected numbers in the columns Rank, First Scan, XCorr, "
        "Deltam/z [Da], MH+ "
        "[Da], Charge and Modifications: ");
}

TEST(PelgrinFormats, TheLibraryIsNotAskedForWhatEndsTheProcess)
{
    const EnginePlace place;
    place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("1"));
    ExpectRefusal(place.Annotate("MaxQuant", kMsmsHeader + MsmsRow()), 1,
                  "peptides.txt:2: \"MS/MS IDs\": expected 0, found \"1\"");
    for (const char* const format : {"MSGF (.tsv)", "pFind 3 (.spectra)", "MaxQuant"}) {
        ExpectRefusal(place.Annotate(format, "a\tb\n1\t2\n"), 1,
                      "result:1: expected a column named");
    }
}

// ---- Second files -------------------------------------------------------------

TEST(PelgrinFormats, TheSecondFileMustBeThere)
{
    const EnginePlace place;
    const std::string text = kMsmsHeader + MsmsRow();
    ExpectRefusal(place.Annotate("MaxQuant", text), 1, "/peptides.txt: cannot be opened");
    ExpectRefusal(place.Annotate("MaxQuant", text, {"--second", "none"}), 1,
                  "none: cannot be opened");
    ExpectRefusal(place.Annotate("Comet (.pep.xml)", text, {"--second", "none"}), 2,
                  "--second: a result of \"Comet (.pep.xml)\" is one file");
    place.Write("result", text);
    const Ini ini = Ini()
                        .With("Search", "pep_ident_format", "MaxQuant")
                        .With("Search", "pep_ident_filename_1", "./result");
    ExpectRefusal(place.Run(ini), 1,
                  "run.ini:" + std::to_string(ini.LineOf("pep_ident_filename_1"))
                      + ": pep_ident_filename_1: ./peptides.txt: cannot be opened");
    const std::string other = place.Write("other.txt", kPeptidesHeader + PeptidesRow("0"));
    EXPECT_EQ(place.Annotate("MaxQuant", text, {"--second", other}).status, 0);
}

} // namespace
} // namespace pelgrin::test
