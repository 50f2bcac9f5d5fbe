// "pelgrin prepare" and "pelgrin run --prepare" as child processes.
#include <filesystem>

#include <zlib.h>

#include "ParameterFiles.h"
#include "ResultTexts.h"
#include "prepare/Copy.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using Vorlan::test::ReadFile;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;

nlohmann::json ReportIn(const TempFolder& folder, const std::string& out = "out")
{
    return nlohmann::json::parse(ReadFile(folder.PathOf(out + "/prepared.json")));
}

Outcome Prepare(const TempFolder& folder, std::vector<std::string> inputs,
                const std::string& out = "out")
{
    std::vector<std::string> arguments = {"prepare", "--out", folder.PathOf(out)};
    arguments.insert(arguments.end(), inputs.begin(), inputs.end());
    return RunPelgrin(arguments);
}

/// The one spectrum of kRunMgf under another title.
std::string RunMgfTitled(const std::string& title)
{
    std::string text = kRunMgf;
    const std::size_t begin = text.find("TITLE=") + 6;
    return text.replace(begin, text.find('\n', begin) - begin, title);
}

TEST(PelgrinPrepare, ReportsEveryChangeAndWhatIsLeftOut)
{
    const TempFolder folder;
    const std::string mgf =
        folder.Write("run.mgf", "BEGIN IONS\r\nTITLE=a scan=5\r\nCHARGE=2+\r\n100 1\r\nEND IONS\r\n"
                                "BEGIN IONS\r\nTITLE=b\r\nEND IONS\r\n");
    const Outcome outcome = Prepare(folder, {mgf});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err, "pelgrin: warning: " + mgf + ":6: records without peaks: 1 left out\n");
    EXPECT_THAT(outcome.out, HasSubstr("left out: records without peaks"));
    const nlohmann::json input = ReportIn(folder)["inputs"][0];
    EXPECT_EQ(input["input"], mgf);
    EXPECT_EQ(input["kind"], "mgf");
    EXPECT_EQ(input["outputs"], nlohmann::json({"run.mgf"}));
    EXPECT_EQ(input["changes"]["title_rewritten"],
              nlohmann::json({{"count", 1}, {"first_line", 1}}));
    EXPECT_EQ(input["changes"]["line_ends"]["count"], 8);
    EXPECT_EQ(input["records"], nlohmann::json::parse(R"({"held": 2, "written": 1,
        "left_out": {"without_peaks": {"count": 1, "first_line": 6}}})"));
    EXPECT_EQ(ReadFile(folder.PathOf("out/titles.tsv")),
              "Dataset\tOld Title\tNew Title\nrun.mgf\ta scan=5\t"
              "run.5.5.2 File:\"run\", Title:\"a scan:5\", NativeID:\"scan=5\"\n");
}

TEST(PelgrinPrepare, RefusesWhatItCannotCopy)
{
    const TempFolder folder;
    const std::string mgf = folder.Write("run.mgf", kRunMgf);
    const std::string other = folder.Write("notes.txt", "nothing of interest\n");
    std::filesystem::create_directory(folder.PathOf("b"));
    const std::string twin = folder.Write("b/run.mgf", kRunMgf);
    ExpectRefusal(Prepare(folder, {other}), 1, "notes.txt: expected spectra");
    ExpectRefusal(Prepare(folder, {mgf, twin}), 1, "its copy would be run.mgf, as that of");
    ExpectRefusal(Prepare(folder, {mgf}, "."), 1, "run.mgf: is an input");
    EXPECT_EQ(ReadFile(mgf), kRunMgf);
    ExpectRefusal(Prepare(folder, {folder.PathOf("none.mgf")}), 1, "none.mgf: cannot be opened");
    const std::string cut = folder.Write("cut.mgf.gz", "\x1f\x8b\x08");
    ExpectRefusal(Prepare(folder, {cut}), 1, "cut.mgf.gz: cannot be unpacked: ");
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("out/prepared.json")));
}

/// Records annotated by a run with these arguments, of all records.
std::pair<int, int> AnnotatedOf(const ParameterWorkplace& place,
                                const std::vector<std::string>& arguments, const Ini& ini,
                                int status)
{
    const Outcome outcome = place.Pelgrin(arguments, ini);
    EXPECT_EQ(outcome.status, status) << outcome.err;
    const nlohmann::json summary = place.Summary();
    ExpectCountsAddUp(summary);
    return {summary["records"]["annotated"], summary["records"]["read"]};
}

TEST(PelgrinRunPrepare, MatchesMeetSpectraThatTheyMissedBefore)
{
    struct Case {
        const char* reason;
        std::string title;
        std::string name; ///< of the spectrum, as the engine tells it
        int before;       ///< annotated, of one
    };
    for (const Case& one : std::vector<Case>{
             {"the old title is a name of the copy", "controllerType=0 controllerNumber=1 scan=1",
              "controllerType=0 controllerNumber=1 "
              "scan=1",
              1},
             {"a title without scan met by scan", "Cmpd 1, +MSn(195.6), 1 min", "run.00001.00001.2",
              0},
             {"the old title of such a one", "Cmpd 1, +MSn(195.6), 1 min",
              "Cmpd 1, +MSn(195.6), 1 min", 1},
             {"a bare number", "Cmpd 1, +MSn(195.6), 1 min", "1", 0},
             {"a good title", "run.1.1.2 File:\"run\", NativeID:\"scan=1\"", "run.1.1.2", 1},
         }) {
        SCOPED_TRACE(one.reason);
        const ParameterWorkplace place;
        place.Write("run.mgf", RunMgfTitled(one.title));
        Row row;
        row.spectrum = one.name;
        place.Write("psms.txt", TableOf({row}));
        EXPECT_EQ(AnnotatedOf(place, {"run"}, Ini(), one.before == 1 ? 0 : 3),
                  std::pair(one.before, 1));
        EXPECT_EQ(AnnotatedOf(place, {"run", "--prepare"}, Ini(), 0), std::pair(1, 1));
    }
}

TEST(PelgrinRunPrepare, MaxQuantNeedsNoPeptides)
{
    const ParameterWorkplace place;
    place.Write("run.mgf", kRunMgf);
    place.Write("msms.txt", kMsmsHeader + MsmsRow() + "\n" + MsmsRow());
    const Ini ini = Ini()
                        .With("Search", "pep_ident_format", "MaxQuant")
                        .With("Search", "pep_ident_filename_1", "./msms.txt");
    ExpectRefusal(place.Run(ini), 1, "peptides.txt");
    const std::string peptides =
        place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0;1;2"));
    EXPECT_THAT(place.Run(ini).err,
                HasSubstr("peptides.txt:2: the first of 1 rows that a peptide names"));
    EXPECT_THAT(ReadFile(place.PathOf("out/ledger.json")), HasSubstr("peptides.txt:2\""));
    std::filesystem::remove(peptides);
    EXPECT_EQ(AnnotatedOf(place, {"run", "--prepare-dir", "copies"}, ini, 0), std::pair(2, 2));
    EXPECT_EQ(ReadFile(place.PathOf("copies/peptides.txt")),
              "Sequence\tAmino acid before\tAmino acid after\tProteins\tMS/MS IDs\n"
              "GASK\t\t\tP1\t0;1\n");
    EXPECT_TRUE(std::filesystem::exists(place.PathOf("copies/prepared.json")));
}

void WriteGzip(const std::string& path, const std::string& text)
{
    const gzFile file = gzopen(path.c_str(), "wb");
    EXPECT_EQ(gzwrite(file, text.data(), static_cast<unsigned>(text.size())),
              static_cast<int>(text.size()));
    gzclose(file);
}

TEST(PelgrinRunPrepare, PackedFilesAndFurtherRunsAreRead)
{
    const ParameterWorkplace place;
    WriteGzip(place.PathOf("run.mgf.gz"), kRunMgf);
    const std::string one = PepXml(Query(Hit()));
    const std::size_t begin = one.find("<msms_run_summary");
    const std::size_t end = one.find("</msms_pipeline_analysis>");
    const std::string two = one.substr(0, end) + one.substr(begin);
    WriteGzip(place.PathOf("run.pep.xml.gz"), two);
    const Ini ini = Ini()
                        .With("Search", "dataset_filename_1", "./run.mgf.gz")
                        .With("Search", "pep_ident_format", "Comet (.pep.xml)")
                        .With("Search", "pep_ident_filename_1", "./run.pep.xml.gz");
    const Outcome check = place.Pelgrin({"params", "check"}, ini);
    EXPECT_EQ(check.status, 1);
    for (const char* const file : {"run.mgf.gz", "run.pep.xml.gz"}) {
        EXPECT_THAT(check.err, HasSubstr(std::string(file)
                                         + ": is packed (gz); expected a plain "
                                           "file, which pelgrin prepare makes of it"));
    }
    EXPECT_EQ(AnnotatedOf(place, {"run", "--prepare"}, ini, 0), std::pair(2, 2));
}

/// What run.json lists of files named so.
std::vector<std::string> RolesOf(const ParameterWorkplace& place, const std::string& name)
{
    std::vector<std::string> roles;
    const nlohmann::json record = nlohmann::json::parse(place.Output("run.json"));
    for (const nlohmann::json& input : record["inputs"]) {
        if (std::filesystem::path(input["path"].get<std::string>()).filename() == name) {
            roles.push_back(input["role"]);
            EXPECT_FALSE(input["has_changed"]) << input;
        }
    }
    return roles;
}

TEST(PelgrinRunPrepare, TheInputsAreThoseThatWereThere)
{
    const ParameterWorkplace place;
    place.Write("run.mgf", kRunMgf);
    place.Write("msms.txt", kMsmsHeader + MsmsRow());
    const Ini ini = Ini()
                        .With("Search", "pep_ident_format", "MaxQuant")
                        .With("Search", "pep_ident_filename_1", "./msms.txt");
    const auto errors = [&] { return place.Pelgrin({"run", "--prepare"}, ini).err; };
    EXPECT_THAT(errors(), testing::Not(HasSubstr("has changed")));
    EXPECT_THAT(RolesOf(place, "peptides.txt"), testing::ElementsAre("second file of matches"))
        << "that of the copy";
    WriteGzip(place.PathOf("peptides.txt.gz"), kPeptidesHeader + PeptidesRow("0"));
    EXPECT_THAT(errors(), testing::Not(HasSubstr("has changed")));
    EXPECT_THAT(RolesOf(place, "peptides.txt.gz"), testing::ElementsAre("prepared input"));
    place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0"));
    EXPECT_THAT(errors(), testing::Not(HasSubstr("has changed")));
    EXPECT_THAT(RolesOf(place, "peptides.txt"),
                testing::ElementsAre("prepared input", "second file of matches"));
}

TEST(PelgrinRunPrepare, NoInputOfTheRunIsOverwritten)
{
    const ParameterWorkplace place;
    WriteGzip(place.PathOf("run.mgf.gz"), kRunMgf);
    std::filesystem::create_directory(place.PathOf("v"));
    const Ini ini = Ini().With("Search", "dataset_filename_1", "./run.mgf.gz");
    for (const std::string name : {"run.mgf", "prepared.json", "titles.tsv"}) {
        SCOPED_TRACE(name);
        place.Write("psms.txt", TableOf({Row()}));
        const std::string fasta = place.Write("v/" + name, ">P1\nGASK\n");
        ExpectRefusal(place.Pelgrin({"run", "--prepare-dir", "v", "--fasta", fasta}, ini), 1,
                      fasta + ": is an input, and ");
        EXPECT_EQ(ReadFile(fasta), ">P1\nGASK\n");
        const std::string database = place.Write("v/" + name, ReadFile(place.PathOf("mods.txt")));
        const Ini other = ini.With("Search", "modification_database", "./v/" + name);
        ExpectRefusal(place.Pelgrin({"run", "--prepare-dir", "v"}, other), 1,
                      name + ": is an input, and ");
        EXPECT_EQ(ReadFile(database), ReadFile(place.PathOf("mods.txt")));
        std::filesystem::remove(fasta);
    }
}

TEST(PelgrinRunPrepare, PairsOfOneFolderHaveFoldersOfTheirOwn)
{
    const ParameterWorkplace place;
    place.Write("run.mgf", kRunMgf);
    place.Write("msms.txt", kMsmsHeader + MsmsRow());
    place.Write("msms2.txt", kMsmsHeader + MsmsRow());
    place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0"));
    const Ini ini = Ini()
                        .With("Search", "pep_ident_format", "MaxQuant")
                        .With("Search", "pep_ident_number", "2")
                        .With("Search", "pep_ident_filename_1", "./msms.txt")
                        .With("Search", "pep_ident_filename_2", "./msms2.txt");
    EXPECT_EQ(AnnotatedOf(place, {"run"}, ini, 0), std::pair(2, 2));
    EXPECT_EQ(AnnotatedOf(place, {"run", "--prepare"}, ini, 0), std::pair(2, 2));
}

TEST(PelgrinRunPrepare, NoPeptidesAreMadeWhereTheyWouldBeTakenForInputs)
{
    const ParameterWorkplace place;
    place.Write("run.mgf", kRunMgf);
    std::filesystem::create_directory(place.PathOf("z"));
    WriteGzip(place.PathOf("z/msms.txt.gz"), kMsmsHeader + MsmsRow());
    const Ini ini = Ini()
                        .With("Search", "pep_ident_format", "MaxQuant")
                        .With("Search", "pep_ident_filename_1", "./z/msms.txt.gz");
    ExpectRefusal(place.Pelgrin({"run", "--prepare-dir", "z"}, ini), 1,
                  "peptides.txt: would be taken for that of ");
    EXPECT_FALSE(std::filesystem::exists(place.PathOf("z/peptides.txt")));
    EXPECT_EQ(AnnotatedOf(place, {"run", "--prepare-dir", "y"}, ini, 0), std::pair(1, 1));
    EXPECT_EQ(AnnotatedOf(place, {"run", "--prepare-dir", "y"}, ini, 0), std::pair(1, 1));
}

TEST(PelgrinRunPrepare, PackedParametersAndModificationsAreRefused)
{
    const ParameterWorkplace place;
    const std::string packed = place.PathOf("packed.txt");
    WriteGzip(packed, "variable_mod_01 = 15.9949 M 3\n");
    const std::string text = packed + ": is packed (gz)";
    for (const char* const engine :
         {"MSFragger (.pepXML)", "pFind 3 (.spectra)", "Calvex (.txt)"}) {
        ExpectRefusal(RunPelgrin({"mods", "find", "--mass", "16", "--engine", engine,
                                  "--engine-file", packed}),
                      1, text);
        const Outcome check = place.Pelgrin(
            {"params", "check"}, Ini()
                                     .With("Search", "search_result_format", engine)
                                     .With("Search", "modification_database", "./packed.txt"));
        EXPECT_EQ(check.status, 1);
        EXPECT_THAT(check.err, HasSubstr("packed.txt: is packed (gz)"));
    }
    ExpectRefusal(RunPelgrin({"mods", "find", "--mass", "16", "--unimod", packed}), 1, text);
    ExpectRefusal(RunPelgrin({"params", "check", packed}), 1, text);
}

TEST(PelgrinRunPrepare, OtherCommandsRefusePackedFiles)
{
    const ParameterWorkplace place;
    place.Write("run.mgf", kRunMgf);
    const std::string plain = place.Write("psms.txt", TableOf({Row()}));
    const std::string spectra = place.PathOf("packed.mgf");
    const std::string table = place.PathOf("packed.txt");
    const std::string proteins = place.PathOf("packed.fasta");
    WriteGzip(spectra, kRunMgf);
    WriteGzip(table, TableOf({Row()}));
    WriteGzip(proteins, ">P1\nGASK\n");
    const std::string out = place.PathOf("out");
    ExpectRefusal(RunPelgrin({"annotate", "--spectra", spectra, "--psms", plain, "--tolerance",
                              "20ppm", "--out", out}),
                  1, "packed.mgf: is packed (gz)");
    ExpectRefusal(RunPelgrin({"annotate", "--spectra", place.PathOf("run.mgf"), "--psms", table,
                              "--tolerance", "20ppm", "--out", out}),
                  1, "packed.txt: is packed (gz)");
    ExpectRefusal(RunPelgrin({"map-proteins", "--psms", plain, "--fasta", proteins, "--out", out}),
                  1, "packed.fasta: is packed (gz)");
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST(PelgrinRunPrepare, WhatIsLeftOutEndsTheRunWithStatus3)
{
    const ParameterWorkplace place;
    place.Write("run.mgf", std::string(kRunMgf) + "BEGIN IONS\nTITLE=b\nEND IONS\n");
    place.Write("psms.txt", TableOf({Row()}));
    const Outcome outcome = place.Pelgrin({"run", "--prepare"}, Ini());
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("records without peaks: 1 left out"));
    EXPECT_EQ(place.Summary()["records"]["annotated"], 1);
}

TEST(PelgrinRunPrepare, DatasetsOfTheCommandLineAreThoseOfTheCopies)
{
    const ParameterWorkplace place;
    place.Write("run.mgf", kRunMgf);
    Row row;
    row.dataset = "elsewhere.raw";
    place.Write("psms.txt", TableOf({row}));
    EXPECT_EQ(
        AnnotatedOf(place, {"run", "--prepare", "--dataset", "elsewhere.raw=run.mgf"}, Ini(), 0),
        std::pair(1, 1));
    place.Write("run.mgf", RunMgfTitled("Cmpd 1, +MSn(195.6), 1 min"));
    row.spectrum = "Cmpd 1, +MSn(195.6), 1 min";
    place.Write("psms.txt", TableOf({row}));
    EXPECT_EQ(
        AnnotatedOf(place, {"run", "--prepare", "--dataset", "elsewhere.raw=run.mgf"}, Ini(), 0),
        std::pair(1, 1))
        << "matches of a dataset that is named get the new names of its spectra, too";
}

TEST(PelgrinPrepareDocs, ListEveryClassAndTheReportToTheLetter)
{
    const std::string page = ReadFile(PELGRIN_DOCS "/pelgrin-prepare.md");
    for (const std::string& key : ClassKeys()) {
        EXPECT_THAT(page, HasSubstr("`" + key + "`"));
    }
    const TempFolder folder;
    folder.Write("run.mgf", "BEGIN IONS\nTITLE=a scan=5\n100 1\nEND IONS\n"
                            "BEGIN IONS\nTITLE=b\nEND IONS\n");
    const Outcome outcome =
        RunPelgrin({"prepare", "--out", "out", "run.mgf"}, {folder.Path(), {}, {}});
    std::string indented = "    " + outcome.out;
    for (std::size_t feed = indented.find('\n'); feed + 1 < indented.size();
         feed = indented.find('\n', feed + 1)) {
        indented.insert(feed + 1, indented[feed + 1] == '\n' ? "" : "    ");
    }
    EXPECT_THAT(page, HasSubstr("\n\n" + indented + "\n"));
    const std::string help = RunPelgrin({"run", "--help"}).out;
    for (const char* const option : {"--prepare", "--prepare-dir DIR"}) {
        EXPECT_THAT(help, HasSubstr(std::string("\n  ") + option));
        EXPECT_THAT(page, HasSubstr(option));
    }
}

/// Annotates real files, as they are or prepared.
nlohmann::json AnnotatedReal(const TempFolder& folder, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), "annotate");
    arguments.insert(arguments.end(), {"--tolerance", "0.02Da", "--out", folder.PathOf("out")});
    const Outcome outcome = RunPelgrin(arguments);
    EXPECT_TRUE(outcome.status == 0 || outcome.status == 3) << outcome.err;
    return nlohmann::json::parse(ReadFile(folder.PathOf("out/summary.json")));
}

TEST(PelgrinPrepareReal, EveryMatchOfCometStillMeetsItsSpectrum)
{
    PELGRIN_NEEDS_REAL_DATA();
    const TempFolder folder;
    const std::string set = RealDataFolder() + "/comet/F13_set/";
    const Outcome outcome =
        Prepare(folder, {set + "F13.mgf", set + "closed/F13.pep.xml"}, "copies");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(ReadFile(folder.PathOf("copies/F13.mgf")), ReadFile(set + "F13.mgf"));
    const auto annotated = [&](const std::string& mgf, const std::string& result) {
        const nlohmann::json summary = AnnotatedReal(
            folder, {"--spectra", mgf, "--psms", result, "--format", "Comet (.pep.xml)", "--mod",
                     "Oxidation (M)=15.9949", "--mod", "Carbamidomethyl (C)=57.021464", "--mod",
                     "Acetyl (Protein N-term)=42.010565"});
        return std::pair(summary["records"], summary["ions"]);
    };
    const auto before = annotated(set + "F13.mgf", set + "closed/F13.pep.xml");
    EXPECT_EQ(before.first["annotated"], 589);
    EXPECT_EQ(annotated(folder.PathOf("copies/F13.mgf"), folder.PathOf("copies/F13.pep.xml")),
              before);
}

TEST(PelgrinPrepareReal, MatchesOfMaxQuantWithoutPeptidesMeetTheirSpectra)
{
    PELGRIN_NEEDS_REAL_DATA();
    const TempFolder folder;
    const std::string set = RealDataFolder() + "/maxquant/HCT116_set/";
    std::vector<std::string> spectra;
    for (const auto& entry : std::filesystem::directory_iterator(set)) {
        if (entry.path().extension() == ".mgf") {
            spectra.push_back(entry.path().string());
        }
    }
    std::vector<std::string> inputs = spectra;
    inputs.push_back(set + "msms_sample.txt");
    EXPECT_EQ(Prepare(folder, inputs, "copies").status, 0);
    std::vector<std::string> arguments = {"--format", "MaxQuant", "--psms",
                                          folder.PathOf("copies/msms_sample.txt"), "--spectra"};
    for (const std::string& path : spectra) {
        arguments.push_back(
            folder.PathOf("copies/" + std::filesystem::path(path).filename().string()));
    }
    const nlohmann::json records = AnnotatedReal(folder, arguments)["records"];
    EXPECT_EQ(records["read"], 400);
    EXPECT_EQ(records["joined"]["total"], 400);
}

TEST(PelgrinPrepareReal, CopiesOfCopiesAreTheSame)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::string data = RealDataFolder() + "/";
    for (const char* const name :
         {"mgf/ThermoRawFileParser_really_small.mgf", "mgf/Bruker_Cmpd_crlf.mgf",
          "mgf/ThermoRaw_withEmptySpectra_BOM.mgf", "mgf/tab_separated_peaks.mgf",
          "mgf/MascotDistiller_1.mgf", "mgf/OpenMS_Ecoli_MS2_small.mgf",
          "msgfplus/QC_Mam_19_01_msgfplus_excerpt.tsv", "sequest/TMT_PSMs_Rfriendly.txt",
          "maxquant/HeLa_1000rows/msms.txt", "msfragger/open/q02261_open.part1.pep.xml",
          "fasta/small-yeast_SGD.fasta", "pfind3/pFind-Filtered.spectra"}) {
        SCOPED_TRACE(name);
        const TempFolder folder;
        const std::string file = std::filesystem::path(name).filename().string();
        EXPECT_LE(Prepare(folder, {data + name}).status % 3, 0);
        EXPECT_EQ(Prepare(folder, {folder.PathOf("out/" + file)}, "again").status, 0);
        EXPECT_EQ(ReadFile(folder.PathOf("again/" + file)), ReadFile(folder.PathOf("out/" + file)));
    }
}

} // namespace
} // namespace pelgrin::test
