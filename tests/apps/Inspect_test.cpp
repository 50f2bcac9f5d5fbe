// "pelgrin inspect": tiny files, packed ones, damaged ones, and the command line.
#include "inspect/Inspect.h"

#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "HostProgram.h"
#include "ResultTexts.h"
#include "common/Failure.h"
#include "files/ResultColumns.h"
#include "inspect/FastaFacts.h"
#include "inspect/MgfTitles.h"
#include "inspect/TextFacts.h"
#include "support/Random.h"

namespace pelgrin::test {
namespace {

using nlohmann::ordered_json;
using testing::HasSubstr;
using Vorlan::test::TempFolder;

ordered_json JsonOfFile(const std::string& text, const std::string& name = "file")
{
    const TempFolder folder;
    return JsonOf(Inspect(folder.Write(name, text)));
}

TEST(Inspect, KnowsTheFormsOfTitles)
{
    struct Row {
        const char* reason;
        const char* title;
        const char* form;
    };
    for (const Row& row : std::vector<Row>{
             {"nothing", "", "empty"},
             {"blanks are nothing", "  \r", "empty"},
             {"TPP", "a.5.5.2 File:\"a.raw\", NativeID:\"scan=5\"", "tpp"},
             {"a charge that is not known", "a.5.5. File:\"a.raw\"", "tpp"},
             {"Thermo", "controllerType=0 controllerNumber=1 scan=5", "thermo_native_id"},
             {"with its precursor", "controllerType=0 scan=5 [PRECURSOR=x]", "thermo_native_id"},
             {"m/z and retention time", "617.3_5000.1_scan=5_run", "file_converter"},
             {"one number is no m/z and time", "617.3_run_scan=5", "other"},
             {"pParse", "a.b.5.5.2.0.dta", "pparse"},
             {"DTA without the number of pParse", "a.5.5.2.dta", "other"},
             {"run, scan, scan, charge", "a.b.5.5.2", "dotted_with_charge"},
             {"a charge that is not known", "a.5.5.", "dotted_with_charge"},
             {"run, scan, scan", "a.1405.1405", "dotted"},
             {"zeros in front", "Mo_f4.00277.00277.3", "dotted_with_charge"},
             {"Mascot Distiller", "1: Scan 73 (rt=10.7878, f=3, i=1) [a.raw]", "mascot_distiller"},
             {"of several scans", "2: Sum of 2 scans in range 5", "mascot_distiller"},
             {"Bruker with its blank", " Cmpd 636, +MSn(730.3981), 66.9 min", "cmpd"},
             {"ProteinPilot", "File: Test, Sample: S1 (sample number 1)", "protein_pilot"},
             {"its older form", "Locus:1.1.1.100.2 File:\"a.wiff\"", "protein_pilot"},
             {"a spectrum ID", "scan=5", "native_id"},
             {"of several words", "sample=1 period=1 cycle=3", "native_id"},
             {"words are no ID", "scan=5 of run", "other"},
             {"any text", "my best spectrum", "other"},
         }) {
        EXPECT_STREQ(KeyOf(FormOf(row.title)), row.form) << row.reason << ": " << row.title;
    }
}

TEST(Inspect, TellsEncodingAndLineEnds)
{
    struct Row {
        const char* reason;
        std::string text;
        const char* encoding;
        const char* lineEnds; ///< of the report
    };
    for (const Row& row : std::vector<Row>{
             {"nothing is ASCII", "", "ascii", "none"},
             {"one line without its end", "a", "ascii", "none"},
             {"line feeds", "a\nb\n", "ascii", "LF"},
             {"the last one is missing", "a\nb", "ascii", "LF, none behind the last line"},
             {"both characters", "a\r\nb\r\n", "ascii", "CRLF"},
             {"returns alone", "a\rb\r", "ascii", "CR"},
             {"all of them", "a\nb\r\nc\r", "ascii", "mixed: 1 LF, 1 CRLF, 1 CR"},
             {"a return too many", "a\r\r\n", "ascii", "mixed: 1 CRLF, 1 CR"},
             {"an umlaut", "\xC3\xA4\n", "utf_8", "LF"},
             {"the mark",
              "\xEF\xBB\xBF"
              "a\n",
              "utf_8_with_mark", "LF"},
             {"Latin 1", "\xE4\n", "other", "LF"},
             {"a character that is cut", "\xC3", "other", "none"},
             {"a longer form than needed", "\xC0\xAF\n", "other", "LF"},
             {"half of a pair", "\xED\xA0\x80\n", "other", "LF"},
             {"two bytes, low one first",
              std::string("\xFF\xFE"
                          "a\0\r\0\n\0",
                          8),
              "utf_16_le", "CRLF"},
             {"high one first", std::string("\xFE\xFF\0a\0\n", 6), "utf_16_be", "LF"},
             {"a line feed in another character", std::string("\xFF\xFE\x0A\x01", 4), "utf_16_le",
              "none"},
         }) {
        const TempFolder folder;
        Facts facts;
        Tell(TextFactsOf(folder.Write("file", row.text)), facts);
        EXPECT_EQ(JsonOf(facts)["encoding"], row.encoding) << row.reason;
        const std::string report = TextOf(facts);
        const std::string label = "  Line ends       ";
        const std::size_t begin = report.find(label) + label.size();
        EXPECT_EQ(report.substr(begin, report.find('\n', begin) - begin), row.lineEnds)
            << row.reason;
    }
}

TEST(Inspect, KnowsDecoysAndHeadersByTheirFronts)
{
    const std::map<std::string, std::vector<std::string>> fronts = {
        {"DECOY_sp|P1|A", {"DECOY_", "UniProt"}},
        {"REV__P1", {"REV__", "other"}},
        {"rev_gi|12|", {"rev_", "NCBI (gi)"}},
        {"XXX_tr|A|B", {"XXX_", "UniProt"}},
        {"##NP_1.1", {"##", "NCBI (RefSeq)"}},
        {"sp|P1|DECOY_A", {"", "UniProt"}},
        {"revision", {"", "other"}},
        {"", {"", "other"}}};
    for (const auto& [accession, expected] : fronts) {
        EXPECT_EQ(DecoyFrontOf(accession), expected[0]) << accession;
        EXPECT_EQ(HeaderStyleOf(accession), expected[1]) << accession;
    }
}

TEST(Inspect, TalliesNoMoreTextsThanItHasRoomFor)
{
    Tally tally;
    for (std::size_t i = 0; i < Tally::kMost + 10; ++i) {
        tally.Add("text" + std::to_string(i));
        tally.Add("text0");
    }
    ASSERT_EQ(tally.Counts().size(), Tally::kMost + 1);
    EXPECT_EQ(tally.Counts().front().count, Tally::kMost + 11);
    EXPECT_EQ(tally.Counts().back().text, "others");
    EXPECT_EQ(tally.Counts().back().count, 10U);
    EXPECT_EQ(tally.Total(), 2 * (Tally::kMost + 10));
}

TEST(Inspect, CountsTheNamesOfAnMgfFile)
{
    const ordered_json json = JsonOfFile("COM=made\n"
                                         "BEGIN IONS\nTITLE=a.5.5.2 x scan=5\nPEPMASS=1\n"
                                         "1 2\n3 4\nEND IONS\n"
                                         "BEGIN IONS\nTITLE=a.5.5.2 x scan=50\n1 2\nEND IONS\n");
    EXPECT_EQ(json["kind"], "mgf");
    EXPECT_EQ(json["records"], 2);
    EXPECT_EQ(json["peak_lines"], 3);
    EXPECT_EQ(json["file_keys"], (ordered_json{{"COM", 1}}));
    EXPECT_EQ(json["record_keys"], (ordered_json{{"TITLE", 2}, {"PEPMASS", 1}}));
    EXPECT_EQ(json["names"],
              (ordered_json{{"title", 2}, {"first_word", 2}, {"dotted", 2}, {"scan", 2}}));
    // two titles, "a.5.5.2" and "a.00005.00005.2" of both, "" and "5" of "scan=5" and "scan=50"
    EXPECT_EQ(json["different_names"], 6);
    EXPECT_EQ(json["shared_names"], 2);
    EXPECT_EQ(json["cut_scan_names"], 2);
    EXPECT_EQ(json["spectra_read"], 2);
}

TEST(Inspect, TellsTheSharesOfMixedTitles)
{
    const TempFolder folder;
    const std::string text =
        TextOf(Inspect(folder.Write("a.mgf", "BEGIN IONS\nTITLE=mine\n1 2\nEND IONS\n"
                                             "BEGIN IONS\nTITLE=a.5.5.2\n1 2\nEND IONS\n"
                                             "BEGIN IONS\nTITLE=a.6.6.2\n1 2\nEND IONS\n")));
    EXPECT_THAT(text, HasSubstr("  Titles          2  run.5.5.2 (66.7 %)\n"
                                "                  1  other forms (33.3 %)\n"));
}

TEST(Inspect, TellsWhatOfAnMgfFileIsLost)
{
    const ordered_json json = JsonOfFile("\xEF\xBB\xBF"
                                         "BEGIN IONS\nTITLE=a\n1 2\nEND IONS\n"
                                         "BEGIN IONS\nTITLE=b\nEND IONS\n"
                                         "BEGIN IONS\n1 2\nEND IONS\n"
                                         "BEGIN IONS\nTITLE=d\n1 2\nEND IONS\n");
    EXPECT_EQ(json["records"], 4);
    EXPECT_EQ(json["lost"]["without_peaks"], (ordered_json{{"count", 1}, {"first_line", 5}}));
    EXPECT_EQ(json["lost"]["with_foreign_title"], (ordered_json{{"count", 1}, {"first_line", 8}}));
    EXPECT_EQ(json["lost"]["behind_byte_order_mark"]["count"], 1);
    EXPECT_EQ(json["spectra_read"], 1);
}

TEST(Inspect, SeesTheColumnsBehindAThousandOthers)
{
    std::string cells;
    for (int i = 0; i < 2000; ++i) {
        cells += "\tRatio H/L normalized of experiment " + std::to_string(i);
    }
    const ordered_json json = JsonOfFile("#SpecFile\tScanNum\tPeptide\tCharge\tPrecursor\t"
                                         "PrecursorError(Da)\tSpecEValue"
                                         + cells + "\tProtein\n");
    EXPECT_EQ(json["kind"], "msgf");
    EXPECT_EQ(json["columns"].size(), 2008U);
    EXPECT_EQ(json["missing_columns"], ordered_json::array());
}

TEST(Inspect, ComparesColumnsWithThoseThatAreNeeded)
{
    const ordered_json json =
        JsonOfFile("#SpecFile\tscannum\tPeptide\tCharge\tPrecursor\tPrecursorError(Da)\tProtein\n"
                   "a.mzML\t5\tK.GASK.R\t2\t500\t0.1\tXXX_P1\n"
                   "\n"
                   "a.mzML\t6\tK.GASK.R\t2\t500\t0.1\tP1(pre=K,post=R)\n");
    EXPECT_EQ(json["kind"], "msgf");
    EXPECT_EQ(json["engine"], "MS-GF+");
    EXPECT_EQ(json["rows"], 2);
    EXPECT_EQ(json["missing_columns"], (ordered_json{"\"SpecEValue\""}));
    EXPECT_EQ(json["columns_in_other_case"], (ordered_json{"\"ScanNum\", here \"scannum\""}));
    EXPECT_EQ(json["decoy_fronts"], (ordered_json{{"XXX_", 1}}));
    EXPECT_THAT(std::string(json["refusal"]), HasSubstr("expected a column named \"ScanNum\""));
    EXPECT_FALSE(json.contains("records_read"));
}

TEST(Inspect, TellsWhatAReaderReadsAndWhatNot)
{
    const ordered_json json =
        JsonOfFile(std::string(kMsgfHeader) + "a.mzML\t5\n\n" + "a.mzML\n", "a.tsv");
    EXPECT_EQ(json["records_read"], 0);
    EXPECT_EQ(json["lost"]["short_row"], (ordered_json{{"count", 2}, {"first_line", 2}}));
    EXPECT_EQ(json["passed_over"]["blank_row"]["count"], 1);
}

TEST(Inspect, LooksForPeptidesBesideTheMatchesOfMaxQuant)
{
    const TempFolder folder;
    const std::string path = folder.Write("msms.txt", kMsmsHeader);
    EXPECT_THAT(std::string(JsonOf(Inspect(path))["refusal"]), HasSubstr("peptides.txt"));
    folder.Write("peptides.txt", kPeptidesHeader);
    const ordered_json json = JsonOf(Inspect(path));
    EXPECT_EQ(json["second_file"], folder.PathOf("peptides.txt"));
    EXPECT_EQ(json["records_read"], 0);
    EXPECT_FALSE(json.contains("refusal"));
    folder.Write("peptides.txt", kPeptidesHeader + PeptidesRow("1"));
    folder.Write("msms.txt", kMsmsHeader + MsmsRow());
    ASSERT_EQ(RunProgram({"/bin/sh", "-c", "gzip " + folder.PathOf("*.txt")}).status, 0);
    const ordered_json packed = JsonOf(Inspect(path + ".gz"));
    EXPECT_EQ(std::string(packed["refusal"]).rfind(folder.PathOf("peptides.txt.gz") + ":2: ", 0),
              0U)
        << packed["refusal"];
}

TEST(Inspect, TellsTheRunsOfAPepXmlFile)
{
    const ordered_json json = JsonOfFile(
        "<msms_pipeline_analysis><msms_run_summary base_name=\"a/run\"><sample_enzyme "
        "name=\"Trypsin\"><search_summary search_engine=\"Comet\" search_engine_version=\"2019\">"
        "<search_database local_path=\"p.fasta\"/>"
        "<aminoacid_modification aminoacid=\"M\" massdiff=\"15.9949\" variable=\"Y\"/>"
        "<terminal_modification terminus=\"N\" massdiff=\"-1\" protein_terminus=\"Y\"/>"
        "<spectrum_query><search_result><search_hit protein=\"DECOY_P1\"/></spectrum_query>"
        "<spectrum_query></spectrum_query></msms_run_summary>"
        "<msms_run_summary base_name=\"b\"><spectrum_query><search_result><search_hit/>"
        "</spectrum_query></msms_run_summary></msms_pipeline_analysis>\n");
    EXPECT_EQ(json["engine"], "Comet");
    EXPECT_EQ(json["version"], "2019");
    EXPECT_EQ(json["run_count"], 2);
    EXPECT_EQ(
        json["runs"][0],
        (ordered_json{{"base_name", "a/run"},
                      {"engine", "Comet"},
                      {"version", "2019"},
                      {"enzyme", "Trypsin"},
                      {"database", "p.fasta"},
                      {"queries", 2},
                      {"hits", 1},
                      {"modifications", {"M +15.9949 variable", "protein N-terminus -1 fixed"}}}));
    EXPECT_EQ(json["runs"][1]["base_name"], "b");
    EXPECT_EQ(json["hits"], 2);
    EXPECT_EQ(json["decoy_fronts"], (ordered_json{{"DECOY_", 1}}));
    EXPECT_EQ(json["records_read"], 1);
    EXPECT_EQ(json["lost"]["further_run"]["count"], 1);
    EXPECT_EQ(json["passed_over"]["query_without_hit"]["count"], 1);
}

TEST(Inspect, LooksPastAnEmptyRun)
{
    const ordered_json json = JsonOfFile(
        "<msms_pipeline_analysis><msms_run_summary base_name=\"a\"/><msms_run_summary "
        "base_name=\"b\"><search_summary search_engine=\"Comet\" search_engine_version=\"2019\">"
        "</search_summary></msms_run_summary></msms_pipeline_analysis>\n");
    EXPECT_EQ(json["engine"], "Comet");
    EXPECT_EQ(json["version"], "2019");
}

TEST(Inspect, CountsEntriesOfModificationsAndParameters)
{
    struct Row {
        const char* reason;
        std::string text;
        const char* kind;
        int entries;
        ordered_json sorts;
    };
    for (const Row& row : std::vector<Row>{
             {"a list of pFind 3",
              "@NUMBER_MODIFICATION=1\nname1=Ox[M] 0\nOx[M]=M NORMAL 1 1 0 O\n",
              "pfind3_modifications", 1, ordered_json::object()},
             {"a list of MS-GF+",
              "# x\nNumMods=3\nO1,M,opt,any,Ox # y\n57,C,fix,any,Cam\n",
              "msgf_modifications",
              2,
              {{"variable", 1}, {"fixed", 1}}},
             {"parameters of a run",
              "[Search]\ndataset_number=1\nvar_mod_number=0\n[Fdr]\na=1\n",
              "parameter_file",
              3,
              {{"[Search]", 2}, {"[Fdr]", 1}}},
             {"parameters of Comet",
              "# comet_version 2019.01 rev. 5\ndatabase_name = a\nnum_threads = 0\n",
              "engine_parameters", 2, ordered_json::object()},
             {"Unimod",
              "<umod:unimod><umod:mod a=\"b\"><umod:specificity/></umod:mod></umod:unimod>",
              "unimod",
              1,
              {{"specificities", 1}}},
         }) {
        const ordered_json json = JsonOfFile(row.text);
        EXPECT_EQ(json["kind"], row.kind) << row.reason;
        EXPECT_EQ(json["entries"], row.entries) << row.reason;
        EXPECT_EQ(json["entry_sorts"], row.sorts) << row.reason;
    }
    EXPECT_EQ(
        JsonOfFile(
            "# comet_version 2019.01 rev. 5\ndatabase_name = a\nnum_threads = 0\n")["version"],
        "2019.01 rev. 5");
}

TEST(Inspect, RefusesWhatIsNotRead)
{
    const std::map<std::string, std::string> refusals = {
        {"1148.77 2\n191.29 7976.0\n", "expected the folder that holds it"},
        {"<mzML version=\"1.1.0\"><spectrum>", "convert it to MGF: FileConverter"},
        {std::string("\xFF\xFE>\0a\0\n\0", 8), "found UTF-16"},
        {">a\nGA\rSK\n", ":2: a carriage return stands inside a line"},
        {"<msms_run_summary><search_summary search_engine=\"Mascot\"/>",
         "pepXML of MSFragger and Comet only"}};
    for (const auto& [text, refusal] : refusals) {
        EXPECT_THAT(std::string(JsonOfFile(text, "a.mzML").value("refusal", "")),
                    HasSubstr(refusal));
    }
}

TEST(Inspect, TakesAFolderOfDtaFiles)
{
    const TempFolder folder;
    EXPECT_THROW(Inspect(folder.Path()), Failure);
    folder.Write("a.5.5.2.dta", "1148.77 2\n191.29 7976.0\n");
    folder.Write("a.6.6.2.dta", "1148.77 2\n");
    folder.Write("b.dta", "");
    const ordered_json json = JsonOf(Inspect(folder.Path()));
    EXPECT_EQ(json["kind"], "dta_folder");
    EXPECT_EQ(json["files"], 3);
    EXPECT_EQ(json["charges_in_names"], (ordered_json{{"2", 2}, {"not told", 1}}));
    EXPECT_EQ(json["spectra_read"], 1);
    EXPECT_EQ(json["lost"], (ordered_json{{"without_precursor", 1}, {"without_peaks", 1}}));
}

TEST(Inspect, LooksIntoPackedFilesAndNamesThemAsGiven)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.tsv", "#SpecFile\tScanNum\tSpecEValue\n");
    ASSERT_EQ(RunProgram({"/bin/sh", "-c", "gzip -n " + path}).status, 0);
    const ordered_json json = JsonOf(Inspect(path + ".gz"));
    EXPECT_EQ(json["packing"], "gz");
    EXPECT_EQ(json["bytes"], 29);
    EXPECT_EQ(json["kind"], "msgf");
    EXPECT_EQ(json["refusal"],
              path + ".gz:1: expected a column named \"Peptide\" in the header line");
    folder.Write("cut.gz", std::string("\x1f\x8b\x08", 3));
    EXPECT_THROW(Inspect(folder.PathOf("cut.gz")), Failure);
}

TEST(Inspect, OfRandomAndCutBytesIsJsonThatCanBeRead)
{
    const std::vector<std::string> texts = {
        "BEGIN IONS\nTITLE=a.5.5.2 scan=5\n1 2\nEND IONS\n",
        "<msms_pipeline_analysis><msms_run_summary><search_summary a=\"b\"/><spectrum_query>"
        "<search_hit protein=\"x\"/></spectrum_query></msms_run_summary>",
        std::string(kMsgfHeader) + "a\tb\tc\n",
        std::string(kMsmsHeader) + "a\tb\tc\n",
        std::string(kSequestHeader) + "\"1\"\t\"b\"\n",
        std::string(kPFind3Header) + "a\t/\tc\n",
        "[Search]\nInputPath=a\n[Spectrum1]\nNO1_Proteins=1,a\n",
        ">P1 a\nGASK\n>rev_P1\nKSAG\n",
        "<umod:unimod><umod:mod><umod:specificity/></umod:mod>",
        "@NUMBER_MODIFICATION=1\nname1=Ox[M] 0\nOx[M]=M NORMAL 1 1 0 O\n",
        "<mzML version=\"1\"><spectrum>"};
    Vorlan::test::Random random(12);
    int inspected = 0;
    for (const std::string& text : texts) {
        for (int i = 0; i < 30; ++i) {
            std::string bytes = text.substr(0, random.Below(text.size()) + 1);
            bytes[random.Below(bytes.size())] = static_cast<char>(random.Below(256));
            const TempFolder folder;
            try {
                const std::string json =
                    JsonOf(Inspect(folder.Write("file", bytes)))
                        .dump(-1, ' ', false, ordered_json::error_handler_t::replace);
                EXPECT_TRUE(ordered_json::accept(json)) << json;
                ++inspected;
            } catch (const Failure&) { // of bytes that look packed
            }
        }
    }
    EXPECT_GT(inspected, 300);
}

TEST(InspectCommand, TellsTheOtherFilesWhenOneCannotBeRead)
{
    const TempFolder folder;
    const std::string one = folder.Write("one.fasta", ">P1\nGASK\n");
    const std::string two = folder.Write("two", "\n");
    const Outcome outcome = RunPelgrin({"inspect", one, folder.PathOf("none"), two});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("error: " + folder.PathOf("none") + ": cannot be opened"));
    EXPECT_EQ(outcome.out, one
                               + "\n  Kind            proteins (FASTA)\n"
                                 "  Bytes           9\n"
                                 "  Encoding        ASCII\n"
                                 "  Line ends       LF\n"
                                 "  Entries         1\n"
                                 "  Headers         1  other (100.0 %)\n"
                                 "  Decoys          no known front of an accession\n"
                                 "  Is read         1 protein\n"
                                 "  Residues        4\n\n"
                               + two
                               + "\n  Kind            unknown\n  Bytes           1\n"
                                 "  Encoding        ASCII\n  Line ends       LF\n");
}

TEST(InspectCommand, GivesOneJsonDocumentForAllFiles)
{
    const TempFolder folder;
    const std::string one = folder.Write("one\xE4.fasta", ">P1\nGASK\n");
    const Outcome outcome = RunPelgrin({"inspect", "--json", one, folder.PathOf("none")});
    EXPECT_EQ(outcome.status, 1);
    const ordered_json json = ordered_json::parse(outcome.out);
    ASSERT_EQ(json["files"].size(), 2U);
    EXPECT_EQ(json["files"][0]["kind"], "fasta");
    EXPECT_EQ(json["files"][0].begin().key(), "path");
    EXPECT_THAT(std::string(json["files"][1]["error"]), HasSubstr("cannot be opened"));
}

TEST(InspectCommand, WithoutFilesIsWrongUsage)
{
    EXPECT_EQ(RunPelgrin({"inspect"}).status, 2);
}

} // namespace
} // namespace pelgrin::test
