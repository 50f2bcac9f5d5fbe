// "pelgrin annotate" as a child process: joining, files, counts.
#include <clocale>

#include "HostProgram.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kHeader =
    "Dataset Name\tSpectrum Name\tSequence\tCharge\tIon\tIon Index\tIon Charge\tStatus\t"
    "Theoretical m/z\tPeak m/z\tIntensity\tError (ppm)\n";

TEST(PelgrinAnnotate, WritesEveryIonThatHasAPeak)
{
    const Workplace workplace;
    const Outcome outcome = workplace.Annotate({Row()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(workplace.Output("annotations.tsv"), kHeader + kGaskLines);
}

TEST(PelgrinAnnotate, WritesTheRecordsAndTheJoinedSpectrumAsTheLibraryDoes)
{
    const Workplace workplace;
    EXPECT_EQ(workplace.Annotate({Row(), Row()}).status, 0);
    const std::string row = "run.mgf\trun.00001.00001.2\tGASK\t2\t361.192724\t0.000000\t1.500000\t1"
                            "\t\t\tP1\tK\tA\t7\n";
    EXPECT_EQ(workplace.Output("results.txt"), kTableHeader + row + row);
    EXPECT_EQ(workplace.Output("matched.mgf"),
              "BEGIN IONS\nTITLE=run.00001.00001.2\nPEPMASS=181.1\nCHARGE=2+\nRTINSECONDS=60\n"
              "300 5\n58.0287 10.5\n129.066 20\n147.113 30\nEND IONS\n");
}

TEST(PelgrinAnnotate, CountsEverythingInTheSummary)
{
    const Workplace workplace;
    EXPECT_EQ(workplace.Annotate({Row()}).status, 0);
    const nlohmann::json summary = workplace.Summary();
    EXPECT_EQ(summary["version"], PELGRIN_VERSION);
    EXPECT_EQ(summary["parameters"]["tolerance"], "20 ppm");
    EXPECT_EQ(summary["parameters"]["ions"], nlohmann::json({"b", "y"}));
    EXPECT_EQ(summary["spectra"]["total"], 1);
    EXPECT_EQ(summary["spectra"]["names_in_index"], 4);
    EXPECT_EQ(summary["spectra"]["joined"], 1);
    EXPECT_EQ(summary["records"]["annotated"], 1);
    EXPECT_EQ(summary["ions"]["asked"], 6);
    EXPECT_EQ(summary["ions"]["matched"], 3);
    EXPECT_EQ(summary["ions"]["share"], 0.5);
    EXPECT_EQ(summary["ions"]["series"]["b"]["unshift"]["matched"], 2);
    EXPECT_EQ(summary["ions"]["series"]["y"]["unshift"]["matched"], 1);
    EXPECT_EQ(summary["peaks"]["in_annotated_spectra"], 4);
    EXPECT_EQ(summary["peaks"]["annotated"], 3);
    ExpectCountsAddUp(summary);
}

TEST(PelgrinAnnotate, AnIonOfAGreatChargeFitsIntoTheReport)
{
    const Workplace workplace;
    workplace.Write("run.mgf", "BEGIN IONS\nTITLE=c\nPEPMASS=181.1\n1.796578 5\nEND IONS\n");
    Row row;
    row.spectrum = "c";
    row.sequence = "AG";
    row.charge = "100";
    const Outcome outcome = workplace.Annotate({row});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("AG 100+\n"));
    EXPECT_THAT(outcome.out, HasSubstr("+++ ...\n"));
}

TEST(PelgrinAnnotate, JoinsByFileNameWithAndWithoutItsEnding)
{
    const Workplace workplace;
    Row without;
    without.dataset = "run";
    Row unlike;
    unlike.dataset = "RUN";
    EXPECT_EQ(workplace.Annotate({Row(), without, without, unlike}).status, 3);
    const nlohmann::json records = workplace.Summary()["records"];
    EXPECT_EQ(records["joined"]["by_file_name"], 1);
    EXPECT_EQ(records["joined"]["by_file_name_without_ending"], 2);
    EXPECT_EQ(records["not_joined"]["dataset_not_given"], 1);
    EXPECT_EQ(records["details"]["dataset_not_given"]["RUN"], 1);
    EXPECT_EQ(workplace.Summary()["spectra"]["joined"], 1);
}

TEST(PelgrinAnnotate, AFileOfExactlyTheDatasetsNameComesFirst)
{
    const Workplace workplace;
    workplace.Write("run", "BEGIN IONS\nTITLE=only.here\n1 1\nEND IONS\n");
    Row row;
    row.dataset = "run";
    row.spectrum = "only.here";
    EXPECT_EQ(workplace.Annotate({row}, {"--spectra", workplace.PathOf("run")}).status, 0);
    EXPECT_EQ(workplace.Summary()["records"]["joined"]["by_file_name"], 1);
}

TEST(PelgrinAnnotate, FindsSpectraUnderAllTheirNamesAndSaysNothingOfUnknownOnes)
{
    const Workplace workplace;
    Row first;
    first.spectrum = "run.1.1.2";
    Row scan;
    scan.spectrum = "1";
    Row unknown;
    unknown.spectrum = "run.00002.00002.2";
    const Outcome outcome = workplace.Annotate({first, scan, unknown});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, Not(HasSubstr("Unable to load")));
    const nlohmann::json summary = workplace.Summary();
    EXPECT_EQ(summary["records"]["joined"]["total"], 2);
    EXPECT_EQ(summary["records"]["not_joined"]["spectrum_name_unknown"], 1);
    ExpectCountsAddUp(summary);
}

TEST(PelgrinAnnotate, AMassShiftAddsTheShiftedSeries)
{
    const Workplace workplace;
    workplace.Write("run.mgf", "BEGIN IONS\nTITLE=t\nCHARGE=2+\n"
                               "147.1128 30\n209.065855 20\nEND IONS\n");
    Row row;
    row.spectrum = "t";
    row.massShift = "80";
    EXPECT_EQ(workplace.Annotate({row}).status, 0);
    EXPECT_EQ(workplace.Output("annotations.tsv"),
              kHeader
                  + "run.mgf\tt\tGASK\t2\tb\t2\t1\tshift\t209.065855\t209.065855\t20\t0.001\n"
                    "run.mgf\tt\tGASK\t2\ty\t1\t1\tunshift\t147.112805\t147.112800\t30\t-0.033\n");
    EXPECT_EQ(workplace.Summary()["ions"]["series"]["b"]["shift"]["asked"], 3);
    // The same shift below --min-shift is an error of measurement.
    EXPECT_EQ(workplace.Annotate({row}, {"--min-shift", "81"}).status, 0);
    EXPECT_EQ(workplace.Summary()["ions"]["series"]["b"]["shift"]["asked"], 0);
    EXPECT_EQ(workplace.Summary()["ions"]["matched"], 1);
}

TEST(PelgrinAnnotate, IonChargesGoUpToOneLessThanThePrecursor)
{
    const Workplace workplace;
    Row row;
    row.charge = "4";
    EXPECT_EQ(workplace.Annotate({row}, {"--ions", "y"}).status, 0);
    EXPECT_EQ(workplace.Summary()["ions"]["asked"], 9);
}

TEST(PelgrinAnnotate, ModificationsAreFoundByEitherSpellingOfATerminus)
{
    const Workplace workplace;
    workplace.Write("run.mgf",
                    "BEGIN IONS\nTITLE=t\nCHARGE=2+\n100.028741 1\n149.112805 1\nEND IONS\n");
    Row row;
    row.spectrum = "t";
    row.modNames = "Acetyl (N-term);Odd (C-term)";
    row.modPositions = "0;5";
    for (const char* const any : {"", "Any "}) {
        const std::string spelled = any;
        EXPECT_EQ(workplace
                      .Annotate({row}, {"--mod", "Acetyl (" + spelled + "N-term)=42", "--mod",
                                        "Odd (" + spelled + "C-term)=2"})
                      .status,
                  0);
        EXPECT_THAT(workplace.Output("annotations.tsv"),
                    testing::AllOf(HasSubstr("\tb\t1\t1\tunshift\t100.028741\t"),
                                   HasSubstr("\ty\t1\t1\tunshift\t149.112805\t")));
    }
}

TEST(PelgrinAnnotate, ModificationsAreToldAsTheyWereGiven)
{
    const Workplace workplace;
    EXPECT_EQ(
        workplace.Annotate({Row()}, {"--mod", "Oxidation (MW)=16", "--mod", "Acetyl (N-term)=42"})
            .status,
        0);
    const nlohmann::json masses = {{"Oxidation (MW)", 16.0}, {"Acetyl (Any N-term)", 42.0}};
    EXPECT_EQ(workplace.Summary()["parameters"]["modifications"], masses);
}

TEST(PelgrinAnnotate, EveryUnusableRecordIsCountedUnderItsReason)
{
    const Workplace workplace;
    std::vector<Row> rows(10);
    rows[1].dataset = "other.mgf";
    rows[2].spectrum = "none";
    rows[3].charge = "0";
    rows[4].sequence = "";
    rows[5].sequence = "GAXK";
    rows[6].modNames = "Strange (K)";
    rows[6].modPositions = "4";
    rows[7].modNames = "Known";
    rows[7].modPositions = "6";
    rows[8].charge = "-3";
    rows[9].charge = "101";
    const Outcome outcome = workplace.Annotate(rows, {"--mod", "Known=1"});
    EXPECT_EQ(outcome.status, 3);
    const nlohmann::json summary = workplace.Summary();
    const nlohmann::json& records = summary["records"];
    EXPECT_EQ(records["read"], 10);
    EXPECT_EQ(records["annotated"], 1);
    EXPECT_EQ(records["not_joined"]["dataset_not_given"], 1);
    EXPECT_EQ(records["not_joined"]["spectrum_name_unknown"], 1);
    EXPECT_EQ(records["skipped"]["charge_unusable"], 3);
    EXPECT_EQ(records["skipped"]["empty_sequence"], 1);
    EXPECT_EQ(records["skipped"]["residue_without_mass"], 1);
    EXPECT_EQ(records["skipped"]["modification_without_mass"], 1);
    EXPECT_EQ(records["skipped"]["modification_position_outside_sequence"], 1);
    EXPECT_EQ(records["details"]["residue_without_mass"]["X"], 1);
    EXPECT_EQ(records["details"]["modification_without_mass"]["Strange (K)"], 1);
    ExpectCountsAddUp(summary);
    // The report names them, too.
    EXPECT_THAT(outcome.out, HasSubstr("1   a modification has no mass (--mod) (Strange (K))"));
}

TEST(PelgrinAnnotate, SpectraThatTheLibraryMixesUpAreNotAnnotated)
{
    const Workplace workplace;
    workplace.Write("run.mgf", "BEGIN IONS\nTITLE=run.1.1.2 x\nEND IONS\n" // no peaks
                               "BEGIN IONS\nTITLE=run.2.2.2 x\n147.1128 1\nEND IONS\n"
                               "BEGIN IONS\n58.0287 1\nEND IONS\n" // no title
                               "BEGIN IONS\nTITLE=run.4.4.2 x\n147.1128 1\nEND IONS\n"
                               "BEGIN IONS\nTITLE=run.5.5.2 x\nEND IONS\n"); // no peaks, last
    std::vector<Row> rows;
    for (const char* const name : {"run.00001.00001.2", "run.1.1.2", "run.00002.00002.2",
                                   "run.00004.00004.2", "run.4.4.2 x", "run.00005.00005.2"}) {
        rows.emplace_back();
        rows.back().spectrum = name;
    }
    const Outcome outcome = workplace.Annotate(rows);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("run.mgf:1: a spectrum without peaks; 2 such"));
    EXPECT_THAT(outcome.err, HasSubstr("run.mgf:8: a spectrum without title; 1 titles"));
    const nlohmann::json summary = workplace.Summary();
    EXPECT_EQ(summary["records"]["annotated"], 1);
    EXPECT_EQ(summary["records"]["skipped"]["spectrum_without_peaks"], 3);
    EXPECT_EQ(summary["records"]["skipped"]["spectrum_with_foreign_title"], 2);
    EXPECT_EQ(summary["spectra"]["files"][0]["without_peaks"], 2);
    ExpectCountsAddUp(summary);
}

TEST(PelgrinAnnotate, RowsBehindAnEmptyLineAreReportedAndCounted)
{
    const Workplace workplace;
    const std::string row = LineOf(Row());
    const Outcome outcome = workplace.AnnotateTable(kTableHeader + row + "\n" + row + row);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(
        outcome.err,
        HasSubstr("psms.txt:3: an empty line ends the table; 2 rows behind it are not read"));
    EXPECT_EQ(workplace.Summary()["rows_not_read"]["behind_empty_line"], 2);
    EXPECT_EQ(workplace.Summary()["records"]["read"], 1);
    // Nothing is lost when the empty line is the last one.
    EXPECT_EQ(workplace.AnnotateTable(kTableHeader + row + "\r\n").status, 0);
}

TEST(PelgrinAnnotate, ALineThatIsTooLongIsReportedAndCounted)
{
    const Workplace workplace;
    const std::string row = LineOf(Row());
    std::string longRow = row;
    longRow.insert(longRow.size() - 1, Vorlan::test::Repeat("x", 81919));
    const Outcome outcome = workplace.AnnotateTable(kTableHeader + row + longRow + row);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("psms.txt:3: a line of more than 81919 characters"));
    EXPECT_EQ(workplace.Summary()["rows_not_read"]["behind_long_line"], 1);
    EXPECT_EQ(workplace.Summary()["rows_cut"], 1);
    EXPECT_EQ(workplace.Summary()["records"]["read"], 2);
}

TEST(PelgrinAnnotate, ATableWithoutRowsIsNoFailure)
{
    const Workplace workplace;
    EXPECT_EQ(workplace.Annotate({}).status, 0);
    EXPECT_EQ(workplace.Output("annotations.tsv"), kHeader);
    EXPECT_EQ(workplace.Output("results.txt"), kTableHeader);
    EXPECT_EQ(workplace.Output("matched.mgf"), "");
    EXPECT_EQ(workplace.Summary()["records"]["read"], 0);
}

TEST(PelgrinAnnotate, PathsMayBeRelativeAndHoldBlanksAndAnyLetter)
{
    const Vorlan::test::TempFolder folder;
    const std::string inner = "Ordner mit Blank/\xC3\xA4\xE2\x82\xAC (1)";
    std::filesystem::create_directories(folder.PathOf(inner));
    folder.Write(inner + "/run \xC3\xBC.mgf", kRunMgf);
    Row row;
    row.dataset = "run \xC3\xBC";
    folder.Write(inner + "/t a.txt", TableOf({row}));
    Setting setting;
    setting.folder = folder.Path();
    for (const std::string& prefix : {std::string(), std::string("./"), folder.Path() + "/"}) {
        const std::string base = prefix + inner;
        const Outcome outcome = RunPelgrin({"annotate", "--spectra", base + "/run \xC3\xBC.mgf",
                                            "--psms", base + "/t a.txt", "--tolerance", "20ppm",
                                            "--out", base + "/new/out \xC3\xB6"},
                                           setting);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const std::string written =
            Vorlan::test::ReadFile(folder.PathOf(inner + "/new/out \xC3\xB6/annotations.tsv"));
        EXPECT_THAT(written, HasSubstr("run \xC3\xBC\trun.00001.00001.2\tGASK\t2\tb\t1"));
    }
}

TEST(PelgrinAnnotate, NamesThatAreNoUtf8StillGiveASummary)
{
    const Workplace workplace;
    Row row;
    row.dataset = "\xFF\xFE";
    EXPECT_EQ(workplace.Annotate({row}).status, 3);
    EXPECT_EQ(workplace.Summary()["records"]["not_joined"]["dataset_not_given"], 1);
}

TEST(PelgrinAnnotate, ReplacesTheFilesOfAnEarlierRun)
{
    const Workplace workplace;
    EXPECT_EQ(workplace.Annotate({Row(), Row(), Row()}).status, 0);
    EXPECT_EQ(workplace.Annotate({Row()}).status, 0);
    EXPECT_EQ(workplace.Output("annotations.tsv"), kHeader + kGaskLines);
    EXPECT_EQ(workplace.Summary()["records"]["read"], 1);
}

TEST(PelgrinAnnotate, StandardOutputHoldsOnlyTheReport)
{
    const Workplace workplace;
    const Outcome outcome = workplace.Annotate({Row()});
    EXPECT_THAT(outcome.out, testing::StartsWith("Spectra              1   in 1 file\n"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("Setting spectra index")));
    EXPECT_THAT(outcome.out, Not(HasSubstr("\b")));
    EXPECT_THAT(outcome.out, HasSubstr("GASK 2+\n           b1 b2 y1\n"));
}

TEST(PelgrinAnnotate, NumbersDoNotFollowTheLocaleOfTheEnvironment)
{
    const char* const former = std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    std::setlocale(LC_NUMERIC, "C");
    if (former == nullptr) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    const Workplace workplace;
    workplace.Write("psms.txt", TableOf({Row()}));
    Setting setting;
    setting.variables["LC_ALL"] = "de_DE.UTF-8";
    const Outcome outcome = RunPelgrin({"annotate", "--spectra", workplace.PathOf("run.mgf"),
                                        "--psms", workplace.PathOf("psms.txt"), "--tolerance",
                                        "20.5ppm", "--out", workplace.PathOf("out")},
                                       setting);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(workplace.Output("annotations.tsv"), kHeader + kGaskLines);
    EXPECT_EQ(workplace.Summary()["parameters"]["tolerance"], "20.5 ppm");
}

} // namespace
} // namespace pelgrin::test
