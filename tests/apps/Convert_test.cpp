// "pelgrin convert" as a child process.
#include <filesystem>

#include "ParameterFiles.h"
#include "ResultTexts.h"

namespace pelgrin::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Vorlan::test::ReadFile;

/// Converts "result" to "table.txt" in a folder of its own.
class ConvertPlace : public Workplace {
public:
    Outcome Convert(const std::string& format, const std::string& text,
                    std::vector<std::string> more = {}) const
    {
        std::vector<std::string> arguments = {
            "convert", "--format",         format, "--in", Write("result", text),
            "--out",   PathOf("table.txt")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunPelgrin(arguments);
    }
    std::string Table() const { return ReadFile(PathOf("table.txt")); }
};

TEST(PelgrinConvert, WritesEveryEnginesMatchAsTheLibraryDoes)
{
    struct Case {
        const char* format;
        std::string text;
        std::string row;
    };
    const ConvertPlace place;
    place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0"));
    for (const Case& c :
         {Case{"MSFragger (.pepXML)", PepXml(Query(Hit())),
               "/data/run.mgf\trun.00001.00001.2\tGASK\t2\t361.192723\t0.000000\t0.001000\t0\t\t\t"
               "P1\tK\tA\t-1\n"},
          Case{"Comet (.pep.xml)", PepXml(Query(Hit())),
               "/data/run.mgf\trun.00001.00001.2\tGASK\t2\t361.192723\t0.000000\t0.001000\t0\t\t\t"
               "P1\tK\tA\t-1\n"},
          Case{"MSGF (.tsv)", kMsgfHeader + MsgfRow(),
               "run.mgf\t1\tGASK\t2\t390.192724\t0.000000\t1.00000e-09\t0\t\t\tP1\tK\tA\t-1\n"},
          Case{"MaxQuant", kMsmsHeader + MsmsRow(),
               "run.mgf\t1\tGASK\t2\t390.192724\t0.000000\t90.000000\t1\t\t\tP1;P2\tK;K\tA;A\t-1;"
               "-1\n"},
          Case{"pFind 3 (.spectra)", kPFind3Header + PFind3Row(),
               "run.mgf\trun.1.1.2.0.dta\tGASK\t2\t390.200000\t0.000000\t0.001000\t0\t\t\tP1;P2\t"
               "K;R\tA;G\t7;2\n"},
          Case{"pFind 2.8 (.txt)", kPFind28Head + PFind28Section(),
               "run.mgf\trun.1.1.2\tGASK\t2\t390.200000\t0.000000\t0.001000\t0\t\t\tP1\tK\tA\t5\n"},
          Case{"Sequest (.txt)", kSequestHeader + SequestRow(),
               "run.mgf\t1\tGASK\t2\t390.200000\t0.000000\t2.500000\t1\t\t\tP1\tX\tX\t-1\n"},
          Case{"Calvex (.txt)", TableOf({Row()}), LineOf(Row())}}) {
        SCOPED_TRACE(c.format);
        const Outcome outcome = place.Convert(c.format, c.text);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        EXPECT_THAT(place.Table(), StartsWith(kTableHeader));
        if (std::string(c.format) != "Calvex (.txt)") {
            EXPECT_EQ(place.Table().substr(std::string(kTableHeader).size()), c.row);
        }
        EXPECT_THAT(outcome.out, StartsWith("Matches read         1\nWritten              1   "
                                            "records to "));
    }
}

TEST(PelgrinConvert, TheTableIsANativeResult)
{
    const ConvertPlace place;
    EXPECT_EQ(place.Convert("Comet (.pep.xml)", PepXml(Query(Hit()) + Query(Hit()))).status, 0);
    const Outcome outcome = place.AnnotateTable(place.Table());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(place.Summary()["records"]["annotated"], 2);
}

TEST(PelgrinConvert, SaysWhatTheTableDoesNotHold)
{
    const ConvertPlace place;
    place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0;1"));
    std::string decoy = MsmsRow("_GAM(ox)K_", "Oxidation (M)");
    decoy.replace(decoy.find("\t\t90"), 4, "\t+\t90");
    const Outcome outcome = place.Convert("MaxQuant", kMsmsHeader + MsmsRow() + decoy,
                                          {"--mod", "Oxidation (M)=15.994915"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out,
              "Matches read         2\n"
              "Written              2   records to "
                  + place.PathOf("table.txt")
                  + "\n"
                    "Not in table         1   records with masses of modifications; their names "
                    "are there\n"
                    "                     1   records with a decoy flag\n"
                    "                     2   records with the m/z of the precursor\n"
                    "                     2   records with a retention time\n"
                    "                     2   records with a mass error of the precursor\n"
                    "                     2   records with a scan number\n"
                    "\n"
                    "Ledger                     held      kept\n"
                    "  matches                     2         2   matches in the result files\n");
    EXPECT_THAT(place.Table(), HasSubstr("\tOxidation (M)\t3\tDECOY\t-\t-\t"));
}

TEST(PelgrinConvert, MatchesThatAreLostEndWithStatusThree)
{
    const ConvertPlace place;
    struct Case {
        const char* reason;
        const char* format;
        std::string text;
        const char* told;
    };
    std::string twoInOne = MsgfRow();
    twoInOne.replace(twoInOne.find("P1"), 2, "P1;P2");
    for (const Case& c :
         {Case{"short row", "MSGF (.tsv)", kMsgfHeader + "a\tb\n",
               "    lost           1  short_row: rows with too few cells ("},
          Case{"a name that does not read back", "MSGF (.tsv)", kMsgfHeader + twoInOne,
               "Not in table         1   records with a name that holds a tab, a line end or "
               "\";\": they do not read back\n"},
          Case{"a terminus that nothing explains", "Comet (.pep.xml)",
               PepXml(Query(Hit("<modification_info mod_nterm_mass=\"43.018390\"/>\n"))),
               "Not in table         1   records with a mass on a terminus that no given "
               "modification explains\n"},
          Case{"sections of another layout", "pFind 2.8 (.txt)",
               kPFind28Head + "[Spectrum1]\nInput=a\n",
               "    lost           1  other_layout: sections of another layout ("}}) {
        SCOPED_TRACE(c.reason);
        const Outcome outcome = place.Convert(c.format, c.text);
        EXPECT_EQ(outcome.status, 3) << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr(c.told));
    }
}

TEST(PelgrinConvert, ANamedTerminusStandsAmongTheModifications)
{
    const ConvertPlace place;
    const std::string inside = "<modification_info mod_nterm_mass=\"43.018390\">\n"
                               "<mod_aminoacid_mass position=\"3\" mass=\"147.0354\"/>\n"
                               "</modification_info>\n";
    const Outcome outcome =
        place.Convert("Comet (.pep.xml)", PepXml(Query(Hit(inside, "GAMK"))),
                      {"--mod", "Oxidation (M)=15.994915", "--mod", "Acetyl (N-term)=42.010565"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(place.Table(), HasSubstr("\tAcetyl;Oxidation\t0;3\tP1\t"));
}

TEST(PelgrinConvert, TakesModificationsOfAParameterFile)
{
    const ParameterWorkplace place;
    place.Write("run.ini", Ini().Text());
    place.Write("result", PepXml(Query(Hit(Modified("3", "147.0354"), "GAMK"))));
    Setting setting;
    setting.folder = place.PathOf("");
    std::vector<std::string> arguments = {"convert",   "--format",     "Comet (.pep.xml)",
                                          "--in",      "result",       "--out",
                                          "table.txt", "--parameters", "run.ini"};
    const Outcome outcome = RunPelgrin(arguments, setting);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(ReadFile(place.PathOf("table.txt")), HasSubstr("\tOxidation\t3\t"));
    arguments.insert(arguments.end(), {"--mod", "Oxidation (M)=16"});
    ExpectRefusal(RunPelgrin(arguments, setting), 2,
                  "--mod and --parameters: give modifications in one way only");
}

// ---- Failures -----------------------------------------------------------------

TEST(PelgrinConvert, NeverOverwritesItsInputs)
{
    const ConvertPlace place;
    const std::string peptides = place.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0"));
    const std::string msms = place.Write("msms.txt", kMsmsHeader + MsmsRow());
    for (const std::string& out : {peptides, msms, place.PathOf("./msms.txt")}) {
        ExpectRefusal(RunPelgrin({"convert", "--format", "MaxQuant", "--in", msms, "--out", out}),
                      1, "is an input and would be overwritten; choose another table for --out");
    }
    EXPECT_EQ(ReadFile(msms), kMsmsHeader + MsmsRow());
    EXPECT_EQ(ReadFile(peptides), kPeptidesHeader + PeptidesRow("0"));
}

// The first record that needs a mass is not the one to blame.
TEST(PelgrinConvert, FilesThatOpenMSLacksAreOneErrorWhateverTheRecords)
{
    const std::string elements = Vorlan::test::OpenMSFile("CHEMISTRY/Elements.xml");
    if (elements.empty()) {
        GTEST_SKIP() << "no real files: the data of OpenMS are not there";
    }
    const ConvertPlace place;
    std::filesystem::create_directories(place.PathOf("openms/CHEMISTRY"));
    std::filesystem::copy_file(elements, place.PathOf("openms/CHEMISTRY/Elements.xml"));
    const std::string hit = Query(Hit(Modified("3", "147.0354"), "GAMK"));
    place.Write("result", PepXml(Query(Hit()) + hit + hit));
    const auto convert = [&place] {
        return RunPelgrin({"convert", "--format", "Comet (.pep.xml)", "--in",
                           place.PathOf("result"), "--out", place.PathOf("table.txt"), "--mod",
                           "Oxidation (M)=15.994915"},
                          {"", {{"OPENMS_DATA_PATH", place.PathOf("openms")}}, ""});
    };
    const std::string front = "CHEMISTRY/Residues.xml of OpenMS cannot be read: ";
    ExpectRefusal(convert(), 1,
                  front
                      + "the file 'CHEMISTRY/Residues.xml' could not be found; it tells the masses "
                        "of residues, and lies in the folder that OPENMS_DATA_PATH names");
    place.Write("openms/CHEMISTRY/Residues.xml", "<PARAMETERS>");
    ExpectRefusal(convert(), 1, front + "While loading '" + place.PathOf("openms"));
}

TEST(PelgrinConvert, AFailureLeavesTheFormerTableAndNothingElse)
{
    const ConvertPlace place;
    place.Write("table.txt", "former");
    const std::string text = PepXml(Query(Hit(Modified("3", "999"))));
    EXPECT_EQ(place.Convert("Comet (.pep.xml)", text).status, 1);
    EXPECT_EQ(place.Convert("Comet (.pep.xml)", "<a>").status, 1);
    EXPECT_EQ(place.Convert("MSGF (.tsv)", "x\n").status, 1);
    EXPECT_EQ(place.Table(), "former");
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(place.PathOf(""))) {
        EXPECT_THAT(entry.path().filename().string(),
                    testing::AnyOf("run.mgf", "result", "table.txt"));
        ++files;
    }
    EXPECT_EQ(files, 3U);
}

TEST(PelgrinConvert, WrongUsageAndFilesThatAreNotThere)
{
    const ConvertPlace place;
    ExpectRefusal(RunPelgrin({"convert", "--in", "a", "--out", "b"}), 2, "--format is required");
    ExpectRefusal(RunPelgrin({"convert", "--format", "Mascot_dat", "--in", "a", "--out", "b"}), 2,
                  "--format: \"Mascot_dat\" is not a format that can be read");
    ExpectRefusal(RunPelgrin({"convert", "--format", "MaxQuant", "--in", "a", "--out", ""}), 2,
                  "--out");
    ExpectRefusal(RunPelgrin({"convert", "--format", "MaxQuant", "--in", "a", "--out", "b"}), 1,
                  "a: cannot be opened");
    ExpectRefusal(place.Convert("MSGF (.tsv)", kMsgfHeader, {"--mod", "x"}), 2, "--mod: \"x\"");
    ExpectRefusal(place.Convert("MSGF (.tsv)", kMsgfHeader, {"--parameters", "none.ini"}), 1,
                  "none.ini: cannot be opened");
    ExpectRefusal(RunPelgrin({"convert", "--format", "MSGF (.tsv)", "--in",
                              place.Write("result", kMsgfHeader), "--out", place.PathOf("")}),
                  1, "cannot be written: it is not an ordinary file");
    ExpectRefusal(RunPelgrin({"convert", "--format", "MSGF (.tsv)", "--in", place.PathOf("result"),
                              "--out", place.PathOf("no/table.txt")}),
                  1, "no/table.txt: cannot be written: No such file or directory");
}

TEST(PelgrinConvert, AFileOfLossesThatCannotBeMadeIsFoundBeforeAnyWork)
{
    const ConvertPlace place;
    for (const char* const option : {"--ledger", "--rejects"}) {
        place.Write("table.txt", "former");
        const std::string path = place.PathOf("no/losses");
        ExpectRefusal(place.Convert("MSGF (.tsv)", kMsgfHeader + "a\tb\n", {option, path}), 1,
                      path + ": cannot be written: No such file or directory");
        EXPECT_EQ(place.Table(), "former");
    }
}

TEST(PelgrinConvert, TheLogIsNoFileToBeWritten)
{
    const ConvertPlace place;
    for (const char* const option : {"--ledger", "--rejects"}) {
        const std::string log = place.PathOf("log");
        const Outcome outcome = place.Convert("MSGF (.tsv)", kMsgfHeader + MsgfRow(),
                                              {option, place.PathOf("./log"), "--log-file", log});
        ExpectRefusal(outcome, 1, "./log: is the log file and would be overwritten");
        EXPECT_THAT(ReadFile(log), HasSubstr("exit status 1"));
    }
    const std::string log = place.PathOf("table.txt");
    ExpectRefusal(place.Convert("MSGF (.tsv)", kMsgfHeader + MsgfRow(), {"--log-file", log}), 1,
                  "table.txt: is the log file");
    std::filesystem::create_directory(place.PathOf("out"));
    ExpectRefusal(place.Annotate({Row()}, {"--log-file", place.PathOf("out/ledger.json")}), 1,
                  "ledger.json: is the log file");
}

TEST(PelgrinConvert, HelpSaysWhatEachFormatNeeds)
{
    const Outcome help = RunPelgrin({"convert", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, StartsWith("Turn the result of a search engine into the native table\n"
                                     "Usage: pelgrin convert [OPTIONS]\n"));
    EXPECT_THAT(help.out, HasSubstr("What a format needs:\n  Calvex (.txt)        nothing more\n"));
    EXPECT_THAT(RunPelgrin({"annotate", "--help"}).out, HasSubstr("What a format needs:\n"));
}

} // namespace
} // namespace pelgrin::test
