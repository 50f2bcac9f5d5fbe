// pelgrin join, and what a run tells of the joining.
#include <algorithm>

#include "ParameterFiles.h"
#include "run/JoinAudit.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using Vorlan::test::ReadFile;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;

/// Writes rows as psms.txt and runs "pelgrin join" on them.
Outcome Join(const ParameterWorkplace& place, const std::vector<Row>& rows,
             const std::vector<std::string>& more = {})
{
    place.Write("psms.txt", TableOf(rows));
    std::vector<std::string> arguments = {"join"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return place.Pelgrin(arguments, Ini());
}

Row Named(const std::string& name)
{
    Row row;
    row.spectrum = name;
    return row;
}

TEST(PelgrinJoin, SaysHowEveryRecordMetItsSpectrumAndWritesNoFile)
{
    const ParameterWorkplace place;
    const Outcome outcome = Join(place, {Row(), Named("1")});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "Met                  2   of 2 matches, 100.0 %\n"
                           "\n"
                           "run.mgf\n"
                           "  matches            2   of the results\n"
                           "  met                1   by the dotted name\n"
                           "                     1   by the scan name\n"
                           "  precursor          2   within 1 ppm\n"
                           "  median          0.00   ppm, of those within 100 ppm\n"
                           "\n"
                           "Ledger                     held      kept\n"
                           "  matches                     2         2   matches in the result "
                           "files\n");
    EXPECT_FALSE(std::filesystem::exists(place.PathOf("out")));
}

TEST(PelgrinJoin, WhatDidNotMeetIsStatus3)
{
    const ParameterWorkplace place;
    Row other;
    other.dataset = "other.mgf";
    const Outcome outcome = Join(place, {Row(), Named("run.00002.00002.2"), other});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.out, HasSubstr("Met                  1   of 3 matches, 33.3 %\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\"run.00002.00002.2\" met nothing; near it are "
                                       "\"run.00001.00001.2\", "));
    EXPECT_THAT(outcome.out, HasSubstr("\nno spectra file of that name was given\n"
                                       "                     1   \"other.mgf\"\n"));
}

TEST(PelgrinJoin, WithMinMatchTheShareDecides)
{
    const ParameterWorkplace place;
    const std::vector<Row> rows = {Row(), Row(), Row(), Named("x")};
    EXPECT_EQ(Join(place, rows).status, 3);
    EXPECT_EQ(Join(place, rows, {"--min-match", "0.75"}).status, 0);
    const Outcome outcome = Join(place, rows, {"--min-match", "0.76"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err,
                HasSubstr("pelgrin: warning: run.mgf: 3 of 4 records met their spectrum, 75.0 %; "
                          "expected at least 0.76 (--min-match)\n"));
    EXPECT_EQ(Join(place, {}, {"--min-match", "1"}).status, 0) << "nothing that did not meet";
}

TEST(PelgrinJoin, MinMatchIsAShare)
{
    const ParameterWorkplace place;
    for (const char* const share : {"x", "1.5", "-0.1", "90", "nan", "90%"}) {
        SCOPED_TRACE(share);
        ExpectRefusal(Join(place, {Row()}, {"--min-match=" + std::string(share)}), 2,
                      "is not a share from 0 to 1");
    }
    ExpectRefusal(place.Annotate({Row()}, {"--min-match", "2"}), 2, "is not a share from 0 to 1");
}

TEST(PelgrinJoin, AnotherSpectrumUnderTheRightNameIsTold)
{
    const ParameterWorkplace place;
    Row wrong;
    wrong.observedMh = "500.5";
    const Outcome outcome = Join(place, {wrong});
    EXPECT_EQ(outcome.status, 0) << "it met by its name";
    EXPECT_EQ(outcome.err,
              "pelgrin: warning: run.mgf: names met, but the spectra may be others: of 1 "
              "records 1 have an m/z that lies more than 3 Th from their spectrum's\n");
    EXPECT_THAT(outcome.out, HasSubstr("  precursor          1   beyond 3 Th\n"));
}

TEST(PelgrinJoin, JsonIsThatOfTheSummary)
{
    const ParameterWorkplace place;
    const std::vector<Row> rows = {Row(), Named("1"), Named("x")};
    const Outcome outcome = Join(place, rows, {"--json"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(place.Run(Ini(), rows).status, 3);
    EXPECT_EQ(nlohmann::json::parse(outcome.out), place.Summary()["join"]);
}

TEST(PelgrinJoin, RowsThatWereNotReadAreStatus3)
{
    const ParameterWorkplace place;
    place.Write("psms.txt", TableOf({Row()}) + "\n" + LineOf(Row()));
    const Outcome outcome = place.Pelgrin({"join", "--min-match", "0"}, Ini());
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.out, HasSubstr("    lost           1  behind_empty_line: "));
}

TEST(PelgrinJoin, DatasetSaysWhichFileIsMeant)
{
    const ParameterWorkplace place;
    Row other;
    other.dataset = "other";
    EXPECT_EQ(Join(place, {other}).status, 3);
    EXPECT_EQ(Join(place, {other}, {"--dataset", "other=run.mgf"}).status, 0);
    ExpectRefusal(Join(place, {other}, {"--dataset", "other=x.mgf"}), 2, "x.mgf");
}

TEST(PelgrinJoin, AMissingFileIsAFailure)
{
    const ParameterWorkplace place;
    ExpectRefusal(place.Pelgrin({"join"}, Ini().With("Search", "dataset_filename_1", "gone.mgf")),
                  1, "gone.mgf");
}

TEST(PelgrinJoin, FilesThatItDoesNotUseAreNotAsked)
{
    const ParameterWorkplace place;
    place.Write("psms.txt", TableOf({Row()}));
    place.Write("out", "a file");
    const Ini ini = Ini()
                        .WithLocalization()
                        .With("Annotation", "is_annotated", "1")
                        .With("Annotation", "protein_database", "./none.fasta");
    EXPECT_EQ(place.Check(ini).status, 1);
    const Outcome outcome = place.Pelgrin({"join"}, ini);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST(PelgrinJoin, FdrControlMakesNoDifference)
{
    const ParameterWorkplace place;
    Row decoy;
    decoy.protein = "D_1";
    place.Write("psms.txt", TableOf({Row(), decoy}));
    EXPECT_THAT(place.Pelgrin({"join"}, Ini().WithFdr("0.01")).out, HasSubstr("of 2 matches"));
}

// ---- Inside a run ---------------------------------------------------------------

TEST(PelgrinRunJoin, RecordsOfAnAmbiguousNameAreNotJoined)
{
    const Workplace place;
    std::string mgf;
    for (const char* const rest : {"x", "y"}) {
        mgf += std::string("BEGIN IONS\nTITLE=t ") + rest
               + "\nPEPMASS=181.1\nCHARGE=2+\n147.1128 30\nEND IONS\n";
    }
    place.Write("run.mgf", mgf);
    const Outcome outcome = place.Annotate({Named("t"), Named("t x"), Named("t y")});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err,
                HasSubstr("pelgrin: warning: run.mgf: 1 records were not joined, since several "
                          "spectra of the file have that name; the first one is \"t\" (lines 1, "
                          "7)\n"));
    EXPECT_THAT(outcome.out, HasSubstr("1   several spectra of the file have that name\n"));
    const nlohmann::json summary = place.Summary();
    ExpectCountsAddUp(summary);
    EXPECT_EQ(summary["records"]["not_joined"]["spectrum_name_ambiguous"], 1);
    EXPECT_EQ(summary["records"]["annotated"], 2);
    EXPECT_EQ(summary["join"]["files"][0]["met"]["title"], 2);
}

TEST(PelgrinRunJoin, MinMatchIsWarnedOf)
{
    const Workplace place;
    const Outcome outcome = place.Annotate({Row(), Named("x")}, {"--min-match", "0.9"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("run.mgf: 1 of 2 records met their spectrum, 50.0 %; "
                                       "expected at least 0.9 (--min-match)\n"));
    EXPECT_EQ(place.Summary()["join"]["min_match"], 0.9);
    const ParameterWorkplace run;
    run.Write("psms.txt", TableOf({Row()}));
    EXPECT_EQ(run.Pelgrin({"run", "--min-match", "1"}, Ini()).status, 0);
    EXPECT_EQ(run.Summary()["join"]["min_match"], 1.0);
}

TEST(PelgrinRunJoin, AFolderOfDtaFilesIsAuditedToo)
{
    const Workplace place;
    std::filesystem::create_directory(place.PathOf("run01"));
    const std::string dta = "999.0 2\n147.1128 30\n";
    place.Write("run01/run01.7.7.2.dta", dta);
    place.Write("run01/a.8.8.2.dta", dta);
    place.Write("run01/b.8.8.2.dta", dta);
    std::vector<Row> rows;
    for (const char* const name : {"run01.7.7.2", "7", "8", "run01.7.7.3"}) {
        rows.push_back(Named(name));
        rows.back().dataset = "run01";
        rows.back().observedMh = "999.0";
    }
    EXPECT_EQ(place.Annotate(rows, {"--spectra", place.PathOf("run01")}).status, 3);
    const nlohmann::json summary = place.Summary();
    ExpectCountsAddUp(summary);
    const nlohmann::json& file = summary["join"]["files"][1];
    EXPECT_EQ(file["met"]["dta_name"], 1);
    EXPECT_EQ(file["met"]["scan_in_title"], 1);
    EXPECT_EQ(file["not_met"]["spectrum_name_ambiguous"], 1);
    EXPECT_EQ(file["not_met"]["spectrum_name_unknown"], 1);
    EXPECT_EQ(file["precursor_mz"]["within_1_ppm"], 2);
    EXPECT_EQ(file["examples"]["spectrum_name_unknown"][0]["nearest"][0], "run01.7.7.2.dta");
}

// ---- Real files -------------------------------------------------------------------

/// "join" of the summary of annotating a result with files of spectra.
nlohmann::json RealJoin(const std::string& format, const std::string& result,
                        const std::vector<std::string>& spectra,
                        const std::vector<std::string>& more, int status)
{
    const TempFolder folder;
    std::vector<std::string> arguments = {"annotate",
                                          "--format",
                                          format,
                                          "--psms",
                                          result,
                                          "--tolerance",
                                          "0.02Da",
                                          "--out",
                                          folder.PathOf("out"),
                                          "--mod",
                                          "Carbamidomethyl (C)=57.021464",
                                          "--mod",
                                          "Oxidation (M)=15.994915",
                                          "--mod",
                                          "Acetyl (Protein N-term)=42.010565"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    arguments.insert(arguments.end(), {"--allow", "further_hit,further_protein", "--spectra"});
    arguments.insert(arguments.end(), spectra.begin(), spectra.end());
    const Outcome outcome = RunPelgrin(arguments);
    EXPECT_EQ(outcome.status, status) << outcome.err;
    const auto summary = nlohmann::json::parse(ReadFile(folder.PathOf("out/summary.json")));
    ExpectCountsAddUp(summary);
    return summary["join"];
}

TEST(RealJoins, OfCometMeetByTheDottedNameWithTheirOwnPrecursors)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::string f13 = RealDataFolder() + "/comet/F13_set/";
    const std::string jurkat = RealDataFolder() + "/comet/Jurkat_set/";
    const std::string run = "PV_Jurk_Promega50_IAP_minwash";
    struct Set {
        std::string mgf;
        std::string result;
        std::vector<std::string> more;
        std::size_t matches;
    };
    for (const Set& set : {Set{f13 + "F13.mgf", f13 + "closed/F13.pep.xml", {}, 589},
                           Set{f13 + "F13.mgf", f13 + "open/F13.pep.xml", {}, 1384},
                           Set{jurkat + run + ".mgf",
                               jurkat + "closed/" + run + ".pep.xml",
                               {"--mod", "Phospho (STY)=79.966331"},
                               1999}}) {
        SCOPED_TRACE(set.result);
        const auto join = RealJoin("Comet (.pep.xml)", set.result, {set.mgf}, set.more, 0);
        const auto& file = join["files"][0];
        EXPECT_EQ(join["met"], set.matches);
        EXPECT_EQ(file["met"]["dotted"], set.matches);
        EXPECT_EQ(file["precursor_mz"]["within_1_ppm"], set.matches);
        EXPECT_EQ(file["ambiguous_names"], 0);
    }
}

TEST(RealJoins, OfTitlesThatEndInTheScanMeetByTheWholeNumber)
{
    PELGRIN_NEEDS_REAL_DATA();
    const TempFolder folder;
    const std::string path = RealDataFolder() + "/mgf/ThermoRaw_withEmptySpectra_BOM.mgf";
    std::vector<Row> rows;
    for (const char* const name :
         {"25501", "2550", "25499", "2549", "controllerType=0 controllerNumber=1 scan=25501"}) {
        rows.push_back(Named(name));
        rows.back().dataset = "ThermoRaw_withEmptySpectra_BOM.mgf";
        rows.back().sequence = "GASK";
    }
    const auto join =
        RealJoin("Calvex (.txt)", folder.Write("psms.txt", TableOf(rows)), {path}, {}, 3);
    const auto& file = join["files"][0];
    EXPECT_EQ(file["met"]["scan_in_title"], 1);
    EXPECT_EQ(file["met"]["title"], 1);
    EXPECT_EQ(file["met"]["scan"], 0) << "2550 is no scan of the file";
    EXPECT_EQ(file["not_met"]["spectrum_name_unknown"], 3) << "25499 stands behind the mark";
}

TEST(RealJoins, AWordThatAllTitlesShareIsNoName)
{
    PELGRIN_NEEDS_REAL_DATA();
    const TempFolder folder;
    const std::string path = RealDataFolder() + "/mgf/ThermoRawFileParser_really_small.mgf";
    Row row = Named("controllerType=0");
    row.dataset = "ThermoRawFileParser_really_small";
    const auto join =
        RealJoin("Calvex (.txt)", folder.Write("psms.txt", TableOf({row})), {path}, {}, 3);
    const auto& file = join["files"][0];
    EXPECT_EQ(file["not_met"]["spectrum_name_ambiguous"], 1);
    EXPECT_EQ(file["examples"]["spectrum_name_ambiguous"][0]["spectra"], 34);
    EXPECT_EQ(file["ambiguous_names"], 1);
}

TEST(RealJoins, OfMaxQuantMeetByTitlesMadeOfRunAndScan)
{
    PELGRIN_NEEDS_REAL_DATA();
    const TempFolder folder;
    const std::string set = RealDataFolder() + "/maxquant/HCT116_set/";
    const std::string msms = ReadFile(set + "msms_sample.txt");
    std::string peptides = "Amino acid before\tAmino acid after\tProteins\tMS/MS IDs\n";
    for (std::ptrdiff_t row = 0; row + 1 < std::count(msms.begin(), msms.end(), '\n'); ++row) {
        peptides += "K\tA\tP1\t" + std::to_string(row) + "\n";
    }
    std::vector<std::string> spectra;
    for (const auto& entry : std::filesystem::directory_iterator(set)) {
        if (entry.path().extension() == ".mgf") {
            spectra.push_back(entry.path().string());
        }
    }
    const auto join = RealJoin("MaxQuant", set + "msms_sample.txt", spectra,
                               {"--second", folder.Write("peptides.txt", peptides)}, 0);
    std::uint64_t composed = 0;
    std::uint64_t beyond = 0;
    std::uint64_t notKnown = 0;
    for (const auto& file : join["files"]) {
        composed += file["met"]["composed"].get<std::uint64_t>();
        beyond += file["precursor_mz"]["beyond_3_th"].get<std::uint64_t>();
        notKnown += file["precursor_mz"]["not_known"].get<std::uint64_t>();
    }
    EXPECT_EQ(composed, 400U);
    EXPECT_EQ(beyond, 215U) << "second peptides of a spectrum (MULTI-SECPEP), and no others";
    EXPECT_EQ(notKnown, 10U) << "of spectra without PEPMASS";
}

TEST(RealJoins, OfAFolderOfDtaFilesHaveTheirOwnPrecursors)
{
    PELGRIN_NEEDS_REAL_DATA();
    const TempFolder folder;
    const std::string run = RealDataFolder() + "/dta/20030428_4_29L_15";
    std::vector<Row> rows;
    for (const auto& entry : std::filesystem::directory_iterator(run)) {
        const std::string text = ReadFile(entry.path().string());
        Row row = Named(entry.path().stem().string());
        row.dataset = "20030428_4_29L_15";
        row.observedMh = text.substr(0, text.find(' '));
        row.charge = row.spectrum.substr(row.spectrum.rfind('.') + 1);
        rows.push_back(row);
    }
    const auto join =
        RealJoin("Calvex (.txt)", folder.Write("psms.txt", TableOf(rows)), {run}, {}, 0);
    EXPECT_EQ(join["files"][0]["met"]["dta_name"], 480);
    EXPECT_EQ(join["files"][0]["precursor_mz"]["within_1_ppm"], 480);
}

// ---- Docs -------------------------------------------------------------------------

TEST(PelgrinJoinDocs, ShowWhatJoinPrintsForTheDemoData)
{
    const std::string page = ReadFile(PELGRIN_DOCS "/pelgrin.md");
    Setting setting;
    setting.folder = PELGRIN_EXAMPLES "/..";
    const Outcome outcome = RunPelgrin({"join", "examples/data/demo.ini"}, setting);
    EXPECT_EQ(outcome.status, 3);
    std::string expected = "    pelgrin join examples/data/demo.ini\n\n";
    for (std::size_t begin = 0, end = 0; begin < outcome.out.size(); begin = end + 1) {
        end = outcome.out.find('\n', begin);
        const std::string line = outcome.out.substr(begin, end - begin);
        expected += (line.empty() ? "" : "    ") + line + "\n";
    }
    EXPECT_THAT(page, HasSubstr(expected));
}

TEST(PelgrinJoinDocs, NameEveryKindAndDeviation)
{
    const std::string page = ReadFile(PELGRIN_DOCS "/pelgrin.md");
    for (std::size_t i = 0; i < kMeetKinds; ++i) {
        EXPECT_THAT(page, HasSubstr(std::string("| `") + KeyOf(static_cast<MeetKind>(i)) + "` |"));
    }
    for (std::size_t i = 0; i < kDeviations; ++i) {
        EXPECT_THAT(page, HasSubstr(std::string("`") + KeyOf(static_cast<Deviation>(i)) + "`"));
    }
    const std::string help = RunPelgrin({"join", "--help"}).out;
    for (const char* const option :
         {"--json", "--min-match", "--dataset", "--allow", "--make-table"}) {
        EXPECT_THAT(help, HasSubstr(option));
        EXPECT_THAT(page, HasSubstr("`" + std::string(option)));
    }
}

} // namespace
} // namespace pelgrin::test
