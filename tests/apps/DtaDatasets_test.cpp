// "pelgrin" on folders of DTA files, and on formats that are to be converted.
#include "ParameterFiles.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using Vorlan::test::ReadFile;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;

const std::string kGaskDta = "361.192724 2\n300 5\n58.0287 10.5\n129.0659 20\n147.1128 30\n";

/// A workplace with the folder "run01" of DTA files.
class DtaWorkplace : public ParameterWorkplace {
public:
    DtaWorkplace()
    {
        std::filesystem::create_directory(PathOf("run01"));
        Write("run01/run01.2002.2002.2.dta", kGaskDta);
    }

    /// Runs "pelgrin annotate" in the workplace, into "out".
    Outcome AnnotateFolder(const std::vector<Row>& rows,
                           const std::vector<std::string>& spectra = {"run01"},
                           const std::vector<std::string>& more = {}) const
    {
        Write("psms.txt", TableOf(rows));
        std::vector<std::string> arguments = {"annotate", "--psms",      "psms.txt", "--out",
                                              "out",      "--tolerance", "20ppm",    "--spectra"};
        arguments.insert(arguments.end(), spectra.begin(), spectra.end());
        arguments.insert(arguments.end(), more.begin(), more.end());
        Setting setting;
        setting.folder = PathOf("");
        return RunPelgrin(arguments, setting);
    }
};

Row RowOf(const std::string& spectrum, const std::string& dataset = "run01")
{
    Row row;
    row.dataset = dataset;
    row.spectrum = spectrum;
    return row;
}

/// A parameter file that takes the folder "run01".
Ini DtaIni()
{
    return Ini()
        .With("Search", "dataset_format", "dta")
        .With("Search", "dataset_filename_1", "./run01");
}

// ---- Reading ------------------------------------------------------------------

TEST(PelgrinDta, AFolderIsAnnotatedAsAnMgfFileIs)
{
    const DtaWorkplace workplace;
    const Outcome outcome = workplace.AnnotateFolder({RowOf("run01.2002.2002.2")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, testing::StartsWith("Spectra              1   in 1 folder\n"));
    const std::string front = "run01\trun01.2002.2002.2\tGASK\t2\t";
    EXPECT_THAT(workplace.Output("annotations.tsv"),
                testing::EndsWith("\n" + front
                                  + "b\t1\t1\tunshift\t58.028741\t58.028700\t10.5\t-0.699\n" + front
                                  + "b\t2\t1\tunshift\t129.065855\t129.065900\t20\t0.351\n" + front
                                  + "y\t1\t1\tunshift\t147.112805\t147.112800\t30\t-0.033\n"));
    EXPECT_EQ(workplace.Output("matched.mgf"),
              "BEGIN IONS\nTITLE=run01.2002.2002.2.dta\nPEPMASS=181.1\nCHARGE=2+\nRTINSECONDS=0\n"
              "300 5\n58.0287 10.5\n129.066 20\n147.113 30\nEND IONS\n");
    const nlohmann::json file = workplace.Summary()["spectra"]["files"][0];
    EXPECT_EQ(file["format"], "dta");
    EXPECT_EQ(file["dataset"], "run01");
    EXPECT_EQ(file["spectra"], 1);
    ExpectCountsAddUp(workplace.Summary());
}

TEST(PelgrinDta, ARunFromAParameterFileFindsTheSame)
{
    const DtaWorkplace workplace;
    const std::vector<Row> rows = {RowOf("run01.2002.2002.2")};
    EXPECT_EQ(workplace.AnnotateFolder(rows).status, 0);
    const std::string annotations = workplace.Output("annotations.tsv");
    for (const char* const path : {"./run01", "./run01/", "./run01//", ".\\run01\\"}) {
        const Outcome outcome =
            workplace.Run(DtaIni().With("Search", "dataset_filename_1", path), rows);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(workplace.Output("annotations.tsv"), annotations) << path;
        EXPECT_EQ(workplace.Summary()["spectra"]["files"][0]["path"], "./run01") << path;
    }
}

TEST(PelgrinDta, CheckTellsTheNumberOfFiles)
{
    const DtaWorkplace workplace;
    workplace.Write("run01/x.DTA", "");
    workplace.Write("run01/notes.txt", "");
    const Outcome outcome = workplace.Check(DtaIni());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Spectra       dta\n  ./run01   2 DTA files\n"));
}

TEST(PelgrinDta, CarriageReturnsAndAMissingLineEndMakeNoDifference)
{
    const DtaWorkplace workplace;
    std::string text = kGaskDta.substr(0, kGaskDta.size() - 1);
    for (std::size_t feed = text.find('\n'); feed != std::string::npos;
         feed = text.find('\n', feed + 2)) {
        text.insert(feed, "\r");
    }
    workplace.Write("run01/run01.2002.2002.2.dta", text);
    const Outcome outcome = workplace.AnnotateFolder({RowOf("run01.2002.2002.2")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(workplace.Summary()["ions"]["matched"], 3);
    EXPECT_EQ(workplace.Summary()["peaks"]["in_annotated_spectra"], 4);
}

// ---- Names --------------------------------------------------------------------

TEST(PelgrinDta, EnginesMayNameASpectrumInTheirOwnWay)
{
    const DtaWorkplace workplace;
    workplace.Write("run01/run01.2004.2004.3.DTA", kGaskDta);
    Row scan = RowOf("2004");
    scan.charge = "3";
    const std::vector<Row> rows = {RowOf("run01.2002.2002.2"),
                                   RowOf("run01.2002.2002.2.dta"),
                                   RowOf("run01.02002.02002.2"),
                                   RowOf("2002"),
                                   RowOf("run01.02004.02004.3"),
                                   RowOf("run01.2004.2004.3.dta"),
                                   RowOf("..\\run01.2002.2002.2"),
                                   RowOf("../run01/run01.2004.2004.3"),
                                   RowOf("2004"),
                                   scan};
    EXPECT_EQ(workplace.AnnotateFolder(rows).status, 3);
    const nlohmann::json summary = workplace.Summary();
    EXPECT_EQ(summary["records"]["annotated"], 7);
    EXPECT_EQ(summary["records"]["joined_by_scan_in_title"], 2);
    EXPECT_EQ(summary["records"]["not_joined"]["spectrum_name_unknown"], 3);
    EXPECT_EQ(summary["spectra"]["joined"], 2);
    EXPECT_THAT(workplace.Output("matched.mgf"), HasSubstr("TITLE=run01.2004.2004.3.DTA\n"));
    ExpectCountsAddUp(summary);
}

TEST(PelgrinDta, AFolderIsMetByTheRulesForFileNames)
{
    const DtaWorkplace workplace;
    std::vector<Row> rows;
    for (const char* const dataset : {"run01", "C:\\data\\run01", "run01.raw", "/data/run01.dta",
                                      "run01.dta.unknown", "run02"}) {
        rows.push_back(RowOf("run01.2002.2002.2", dataset));
    }
    EXPECT_EQ(workplace.AnnotateFolder(rows, {"run01/"}).status, 3);
    const nlohmann::json joined = workplace.Summary()["records"]["joined"];
    EXPECT_EQ(joined["by_file_name"], 1);
    EXPECT_EQ(joined["by_file_name_behind_separator"], 1);
    EXPECT_EQ(joined["by_file_name_without_ending"], 3);
    EXPECT_EQ(workplace.Summary()["records"]["details"]["dataset_not_given"]["run02"], 1);
    // The user's word for it, by name and by path.
    for (const char* const file : {"run01", "run01/", "./run01"}) {
        const Outcome outcome = workplace.AnnotateFolder(
            {RowOf("run01.2002.2002.2", "x")}, {"run01/"}, {"--dataset", std::string("x=") + file});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
    }
}

TEST(PelgrinDta, TheFolderMayBeTheWorkingFolder)
{
    const DtaWorkplace workplace;
    workplace.Write("run01/psms.txt", TableOf({RowOf("run01.2002.2002.2")}));
    Setting setting;
    setting.folder = workplace.PathOf("run01");
    const Outcome outcome = RunPelgrin({"annotate", "--spectra", ".", "--psms", "psms.txt",
                                        "--tolerance", "20ppm", "--out", "../out"},
                                       setting);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(workplace.Summary()["spectra"]["files"][0]["dataset"], "run01");
}

TEST(PelgrinDta, FilesAndFoldersMayBeMixedOnTheCommandLine)
{
    const DtaWorkplace workplace;
    const Outcome outcome = workplace.AnnotateFolder({Row(), RowOf("run01.2002.2002.2", "run01")},
                                                     {"run.mgf", "run01"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("  2   in 1 file and 1 folder\n"));
    EXPECT_EQ(workplace.Summary()["records"]["annotated"], 2);
    // "run" fits both by its ending; "run01" is the folder alone.
    std::filesystem::rename(workplace.PathOf("run01"), workplace.PathOf("run"));
    ExpectRefusal(workplace.AnnotateFolder({RowOf("x", "run.raw")}, {"run.mgf", "run"}), 1,
                  "the dataset \"run.raw\" may be \"run.mgf\" or \"run\"");
}

// ---- Spectra of no use --------------------------------------------------------

TEST(PelgrinDta, SpectraOfNoUseAreNamedAndCounted)
{
    const DtaWorkplace workplace;
    workplace.Write("run01/a.dta", "500.5\n147.1128 1\n");
    workplace.Write("run01/b.dta", "500.5 0\n147.1128 1\n");
    workplace.Write("run01/c.dta", "500.5 2\n");
    workplace.Write("run01/d.dta", "500.5 2\nx\n");
    workplace.Write("run01/e.dta", "500.5 2\n147.1128 1\n\n600.5 2\n1 1\n");
    workplace.Write("run01/f.dta",
                    "500.5 2\n147.1128 1\n200 1" + Vorlan::test::Repeat(" ", 81919) + "\n300 1\n");
    std::filesystem::create_symlink("nowhere", workplace.PathOf("run01/g.dta"));
    std::vector<Row> rows;
    for (const char* const name : {"a", "b", "c", "d", "e", "f", "g"}) {
        rows.push_back(RowOf(name));
    }
    const Outcome outcome = workplace.AnnotateFolder(rows);
    EXPECT_EQ(outcome.status, 3);
    for (const char* const text :
         {"run01/g.dta: cannot be opened; 1 such files cannot be annotated\n",
          "run01/a.dta:1: no mass and charge of a precursor; 2 such files cannot be annotated\n",
          "run01/c.dta: a spectrum without peaks; 2 such files cannot be annotated\n",
          "run01/e.dta:3: an empty line ends the spectrum; 1 such files hold more, which is not "
          "read\n",
          "run01/f.dta:3: a line of more than 81919 characters ends the spectrum; 1 such files are "
          "not read to their end\n",
          "run01/d.dta:2: expected m/z and intensity; 1 such lines are read with the numbers of "
          "the line before\n"}) {
        EXPECT_THAT(outcome.err, HasSubstr("pelgrin: warning: " + std::string(text)));
    }
    EXPECT_THAT(outcome.err, testing::Not(HasSubstr("DtaIO error")));
    const nlohmann::json summary = workplace.Summary();
    EXPECT_EQ(summary["records"]["annotated"], 2);
    EXPECT_EQ(summary["records"]["skipped"]["spectrum_without_precursor"], 2);
    EXPECT_EQ(summary["records"]["skipped"]["spectrum_without_peaks"], 2);
    EXPECT_EQ(summary["records"]["skipped"]["spectrum_not_readable"], 1);
    EXPECT_EQ(summary["records"]["details"]["spectrum_without_precursor"],
              nlohmann::json({{"a.dta", 1}, {"b.dta", 1}}));
    EXPECT_EQ(summary["records"]["details"]["spectrum_not_readable"]["g.dta"], 1);
    const nlohmann::json file = summary["spectra"]["files"][0];
    EXPECT_EQ(file["spectra"], 8);
    EXPECT_EQ(file["not_readable"], 1);
    EXPECT_EQ(file["without_precursor"], 2);
    EXPECT_EQ(file["without_peaks"], 2);
    EXPECT_EQ(file["with_lines_behind_empty_line"], 1);
    EXPECT_EQ(file["cut_at_long_line"], 1);
    EXPECT_EQ(file["lines_without_numbers"], 1);
    ExpectCountsAddUp(summary);
}

// ---- Refusals -----------------------------------------------------------------

TEST(PelgrinDta, FoldersOfNoUseAreToldBeforeTheRunBegins)
{
    const DtaWorkplace workplace;
    std::filesystem::create_directory(workplace.PathOf("empty"));
    workplace.Write("a.dta", kGaskDta);
    for (const auto& [path, text] : std::map<std::string, std::string>{
             {"./none", "./none: cannot be read: No such file or directory\n"},
             {"./none/", "./none/: cannot be read: No such file or directory\n"},
             {"./empty", "./empty: is a folder without DTA files\n"},
             {"./a.dta", "./a.dta: expected a folder of DTA files, but it is a file\n"}}) {
        const Ini ini = DtaIni().With("Search", "dataset_filename_1", path);
        const std::string place = "run.ini:" + std::to_string(ini.LineOf("dataset_filename_1"))
                                  + ": dataset_filename_1: ";
        ExpectRefusal(workplace.Run(ini), 1, place + text);
        const Outcome check = workplace.Check(ini);
        EXPECT_EQ(check.status, 1);
        EXPECT_THAT(check.err, HasSubstr(place + text));
    }
    ExpectRefusal(workplace.Run(Ini().With("Search", "dataset_filename_1", "./run01")), 1,
                  "dataset_filename_1: ./run01: is not a file that can be read at any place, but a "
                  "folder\n");
    for (const auto& [path, text] : std::map<std::string, std::string>{
             {"none/", "none/: cannot be opened: No such file or directory\n"},
             {"empty", "empty: is a folder without DTA files\n"},
             {"a.dta", "a.dta: is one DTA file; expected the folder that holds it\n"}}) {
        ExpectRefusal(workplace.AnnotateFolder({Row()}, {path}), 1, text);
    }
    EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("out")));
}

TEST(PelgrinDta, TwoFoldersOfOneNameAreRefused)
{
    const DtaWorkplace workplace;
    std::filesystem::create_directories(workplace.PathOf("b/run01"));
    workplace.Write("b/run01/a.dta", kGaskDta);
    ExpectRefusal(workplace.AnnotateFolder({Row()}, {"run01", "b/run01/"}), 2,
                  "--spectra: two files are named \"run01\"; records could not tell them apart");
    ExpectRefusal(workplace.Run(DtaIni()
                                    .With("Search", "dataset_number", "2")
                                    .With("Search", "dataset_filename_2", "b/run01/")),
                  1, "dataset_filename_2: b/run01: dataset_filename_1 has the same file name");
}

TEST(PelgrinMzML, IsRefusedWithTheCommandThatConvertsIt)
{
    const ParameterWorkplace workplace;
    workplace.Write("my run.mzML", "<?xml version=\"1.0\"?>\n<mzML>\n");
    workplace.Write("run.xml", "<?xml version=\"1.0\"?>\n<mzXML>\n");
    workplace.Write("psms.txt", TableOf({Row()}));
    Setting setting;
    setting.folder = workplace.PathOf("");
    const auto annotate = [&](const std::string& spectra) {
        return RunPelgrin({"annotate", "--spectra", spectra, "--psms", "psms.txt", "--tolerance",
                           "20ppm", "--out", "out"},
                          setting);
    };
    ExpectRefusal(annotate("my run.mzML"), 1,
                  "pelgrin: error: my run.mzML: is mzML, which is not read; convert it to MGF: "
                  "FileConverter -in 'my run.mzML' -out 'my run.mgf' (Debian package topp)\n");
    ExpectRefusal(annotate("run.xml"), 1,
                  "pelgrin: error: run.xml: is mzXML, which is not read; convert it to MGF: mv "
                  "run.xml run.xml.mzXML && FileConverter -in run.xml.mzXML -out run.xml.mgf "
                  "(Debian package topp)\n");
    for (const char* const format : {"mzML", "mzXML"}) {
        const std::string name = std::string("run01.") + format;
        const Ini ini = Ini()
                            .With("Search", "dataset_format", format)
                            .With("Search", "dataset_filename_1", ".\\" + name);
        ExpectRefusal(workplace.Run(ini), 1,
                      "run.ini:" + std::to_string(ini.LineOf("dataset_format"))
                          + ": dataset_format = \"" + format
                          + "\": such files are not read, convert each one to MGF: FileConverter "
                            "-in ./"
                          + name + " -out ./run01.mgf (Debian package topp); expected \"mgf\" or "
                          + "\"dta\"\n");
    }
    ExpectRefusal(workplace.Run(Ini().With("Search", "dataset_filename_1", "./my run.mzML")), 1,
                  "dataset_filename_1: ./my run.mzML: is mzML, which is not read");
    EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("out")));
}

TEST(PelgrinMzML, ATitleWithoutChargeIsMetByEveryCharge)
{
    const Workplace workplace;
    workplace.Write("run.mgf", "BEGIN IONS\nTITLE=run.7.7.\n147.1128 1\nEND IONS\n");
    std::vector<Row> rows(3);
    rows[0].spectrum = "run.00007.00007.2";
    rows[1].spectrum = "run.7.7.3";
    rows[2].spectrum = "run.00008.00008.2";
    EXPECT_EQ(workplace.Annotate(rows).status, 3);
    EXPECT_EQ(workplace.Summary()["records"]["annotated"], 2);
    EXPECT_EQ(workplace.Summary()["records"]["joined_by_scan_in_title"], 0);
}

TEST(PelgrinMzML, WhatFileConverterMakesOfItIsMetByScan)
{
    const Workplace workplace;
    const std::string peaks = "\nCHARGE=2+\n147.1128 1\nEND IONS\n";
    workplace.Write("run.mgf",
                    "BEGIN IONS\nTITLE=617.31_5000.09_controllerType=0 controllerNumber=1 "
                    "scan=11461_run"
                        + peaks
                        + "BEGIN IONS\nTITLE=488.92_5000.38_controllerType=0 controllerNumber=1 "
                          "scan=1146_run"
                        + peaks + "BEGIN IONS\nTITLE=506.74_614.3_sample=1 period=1 cycle=1181_run"
                        + peaks);
    std::vector<Row> rows;
    for (const char* const name : {"11461", "run.11461.11461.2", "run.01146.01146.2", "1146",
                                   "1181", "run.01181.01181.2", "114", "5", "6"}) {
        rows.emplace_back();
        rows.back().spectrum = name;
    }
    EXPECT_EQ(workplace.Annotate(rows).status, 3);
    const nlohmann::json records = workplace.Summary()["records"];
    EXPECT_EQ(records["annotated"], 4);
    EXPECT_EQ(records["joined_by_scan_in_title"], 4);
    EXPECT_EQ(records["not_joined"]["spectrum_name_unknown"], 5);
    EXPECT_EQ(workplace.Summary()["spectra"]["joined"], 2);
}

// ---- Real files ---------------------------------------------------------------

/// The peaks in an MGF text.
std::size_t PeaksIn(const std::string& mgf)
{
    std::size_t peaks = 0;
    for (std::size_t begin = 0; begin < mgf.size(); begin = mgf.find('\n', begin) + 1) {
        peaks += mgf[begin] >= '0' && mgf[begin] <= '9' ? 1 : 0;
    }
    return peaks;
}

TEST(RealDtaFolder, EverySpectrumIsMetByEveryFormOfItsName)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::string run = RealDataFolder() + "/dta/20030428_4_29L_15";
    std::map<std::string, std::vector<Row>> forms;
    for (const auto& entry : std::filesystem::directory_iterator(run)) {
        const std::string stem = entry.path().stem().string(); // "run.2002.2004.2"
        const std::size_t first = stem.find('.') + 1;
        const std::size_t last = stem.find('.', first) + 1;
        const std::size_t charge = stem.find('.', last) + 1;
        const std::string scan = stem.substr(first, last - 1 - first);
        Row row = RowOf("", "20030428_4_29L_15.raw");
        row.charge = stem.substr(charge);
        for (const auto& [form, name] : std::map<std::string, std::string>{
                 {"whole", stem + ".dta"},
                 {"without ending", stem},
                 {"padded", stem.substr(0, first) + "0" + scan + ".0" + stem.substr(last)},
                 {"scan", scan}}) {
            row.spectrum = name;
            forms[form].push_back(row);
        }
    }
    ASSERT_EQ(forms.size(), 4U);
    for (const auto& [form, rows] : forms) {
        SCOPED_TRACE(form);
        const DtaWorkplace workplace;
        const Outcome outcome = workplace.AnnotateFolder(rows, {run + "/"});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        const nlohmann::json summary = workplace.Summary();
        EXPECT_EQ(summary["records"]["joined"]["by_file_name_without_ending"], 480);
        EXPECT_EQ(summary["records"]["annotated"], 480);
        EXPECT_EQ(summary["spectra"]["joined"], 480);
        EXPECT_EQ(summary["peaks"]["in_annotated_spectra"], 76228);
        EXPECT_EQ(summary["spectra"]["files"][0]["without_precursor"], 0);
        EXPECT_EQ(summary["spectra"]["files"][0]["lines_without_numbers"], 0);
        EXPECT_EQ(PeaksIn(workplace.Output("matched.mgf")), 76228U);
    }
}

TEST(RealMzML, IsRefusedByItsContent)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const auto& [name, format] :
         std::map<std::string, std::string>{{"mzml/Ecoli_MS2_small.mzML", "mzML"},
                                            {"mzml/tiny.pwiz.1.1.mzML", "mzML"},
                                            {"comet/PRG2012_set/201208-378803.mzML", "mzML"},
                                            {"mzxml/pyteomics_test.mzXML", "mzXML"},
                                            {"mzxml/DDA-10-scans-no-index.mzXML", "mzXML"}}) {
        const Workplace workplace;
        std::filesystem::create_symlink(std::filesystem::absolute(RealDataFolder() + "/" + name),
                                        workplace.PathOf("spectra"));
        ExpectRefusal(workplace.Annotate({Row()}, {"--spectra", workplace.PathOf("spectra")}), 1,
                      "/spectra: is " + format + ", which is not read; convert it to MGF: mv ");
    }
}

} // namespace
} // namespace pelgrin::test
