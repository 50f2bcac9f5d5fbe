// "pelgrin" as a child process: help, wrong usage and failures, each with one
// clear line.
#include <algorithm>

#include <unistd.h>

#include "HostProgram.h"
#include "support/Sanitized.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Pelgrin, HelpIsForPeopleAndHasAnExample)
{
    const Outcome help = RunPelgrin({"annotate", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.err, "");
    EXPECT_THAT(help.out, HasSubstr("Usage: pelgrin annotate"));
    EXPECT_THAT(help.out, HasSubstr("Example:\n  pelgrin annotate --spectra demo.mgf"));
    EXPECT_THAT(help.out, HasSubstr("Exit status: 0 all well"));
    EXPECT_THAT(RunPelgrin({"--help"}).out, HasSubstr("annotate"));
}

TEST(Pelgrin, VersionIsOneLine)
{
    const Outcome version = RunPelgrin({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.out, StartsWith("pelgrin " PELGRIN_VERSION " "));
    EXPECT_EQ(std::count(version.out.begin(), version.out.end(), '\n'), 1);
}

TEST(Pelgrin, WrongUsageEndsWithStatusTwoAndNamesTheChoices)
{
    struct Case {
        const char* reason;
        std::vector<std::string> more;
        const char* text;
    };
    const Workplace workplace;
    for (const Case& c :
         {Case{"unknown ion", {"--ions", "b,w"}, "choose from a, b, c, x, y, z"},
          Case{"unknown option", {"--tolerence", "1Da"}, "--tolerence"},
          Case{"mass is no number", {"--mod", "Oxidation (M)=much"}, "\"Oxidation (M)=much\""},
          Case{"name twice", {"--mod", "a=1", "--mod", "a=2"}, "\"a\" is given twice"},
          Case{"negative", {"--min-shift", "-1"}, "--min-shift"},
          Case{"two files of one name",
               {"--spectra", workplace.PathOf("run.mgf")},
               "two files are named \"run.mgf\""}}) {
        SCOPED_TRACE(c.reason);
        ExpectRefusal(workplace.Annotate({Row()}, c.more), 2, c.text);
    }
    ExpectRefusal(RunPelgrin({}), 2,
                  "no command was given; there is: run, join, annotate, convert, map-proteins, "
                  "inspect, lint, prepare, params, mods, completion (see pelgrin --help)");
    ExpectRefusal(RunPelgrin({"anotate"}), 2, "\"anotate\" is not a command; there is: run");
    ExpectRefusal(RunPelgrin({"params"}), 2,
                  "no command was given; there is: check, template (see pelgrin params --help)");
    ExpectRefusal(RunPelgrin({"run"}), 2, "PARAMETERS.ini is required (see pelgrin run --help)");
    ExpectRefusal(RunPelgrin({"annotate"}), 2, "required");
    ExpectRefusal(RunPelgrin({"annotate", "--spectra", "a", "--psms", "b", "--out", "c",
                              "--tolerance", "20"}),
                  2, "--tolerance: \"20\" is not a positive number followed by ppm or Da");
    ExpectRefusal(RunPelgrin({"annotate", "--spectra", "a", "--psms", "b", "--out", "c",
                              "--tolerance", "20ppm", "--format", "Excel"}),
                  2,
                  "choose from \"pFind 2.8 (.txt)\", \"MSFragger (.pepXML)\", \"Sequest (.txt)\", "
                  "\"MaxQuant\", \"Calvex (.txt)\", \"pFind 3 (.spectra)\", \"MSGF (.tsv)\", "
                  "\"Comet (.pep.xml)\" (see");
    ExpectRefusal(RunPelgrin({"annotate", "--spectra", "a", "--psms", "b", "--out", "",
                              "--tolerance", "20ppm"}),
                  2, "--out");
}

TEST(PelgrinAnnotate, InputsThatCannotBeOpenedAreFoundBeforeAnyWork)
{
    const Workplace workplace;
    const auto run = [&](const std::string& spectra, const std::string& psms) {
        return RunPelgrin({"annotate", "--spectra", spectra, "--psms", psms, "--tolerance", "1Da",
                           "--out", workplace.PathOf("out")});
    };
    const std::string mgf = workplace.PathOf("run.mgf");
    const std::string table = workplace.Write("psms.txt", TableOf({Row()}));
    ExpectRefusal(run(workplace.PathOf("none.mgf"), table), 1,
                  "none.mgf: cannot be opened: No such file or directory");
    ExpectRefusal(run(mgf, workplace.PathOf("none.txt")), 1, "none.txt: cannot be opened");
    ExpectRefusal(run(workplace.PathOf(""), table), 1, "is a folder without DTA files");
    ExpectRefusal(run("/dev/null", table), 1, "but a pipe or device");
    ExpectRefusal(run(workplace.Write("a\\b.mgf", kRunMgf), table), 1, "backslash");
    EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("out")));
}

TEST(PelgrinAnnotate, AMissingColumnIsNamed)
{
    const Workplace workplace;
    std::string table = TableOf({Row()});
    table.replace(table.find("Mass Shift"), 10, "Mass shift");
    ExpectRefusal(workplace.AnnotateTable(table), 1,
                  "psms.txt:1: expected a column named \"Mass Shift\" in the header line");
    ExpectRefusal(workplace.AnnotateTable(""), 1,
                  "psms.txt:1: expected a column named \"Dataset Name\"");
}

TEST(PelgrinAnnotate, ACellThatIsNoNumberIsReportedWithItsLine)
{
    const Workplace workplace;
    Row bad;
    bad.charge = "two";
    ExpectReject(workplace.Annotate({Row(), Row(), bad, Row()}),
                 "psms.txt:4: spectrum \"run.00001.00001.2\": expected numbers");
    bad = Row();
    bad.massShift = "1,5";
    ExpectRefusal(workplace.Annotate({bad}), 1,
                  "psms.txt:2: spectrum \"run.00001.00001.2\": expected numbers");
    ExpectRefusal(workplace.AnnotateTable(kTableHeader + std::string("short row\n")), 1,
                  "psms.txt:2: expected numbers");
}

TEST(PelgrinAnnotate, AnOutputFolderThatCannotBeMadeIsAFailure)
{
    const Workplace workplace;
    workplace.Write("out", "a file");
    ExpectRefusal(workplace.Annotate({Row()}), 1, "out: is not a folder and cannot be made one");
    const std::string table = workplace.Write("t.txt", TableOf({Row()}));
    ExpectRefusal(RunPelgrin({"annotate", "--spectra", workplace.PathOf("run.mgf"), "--psms", table,
                              "--tolerance", "1Da", "--out", workplace.PathOf("out/below")}),
                  1, "out/below: is not a folder");
}

TEST(PelgrinAnnotate, AFolderThatCannotBeReachedIsRefusedBeforeAnyWork)
{
    const Workplace workplace;
    const std::string table = workplace.Write("t.txt", TableOf({Row()}));
    for (const auto& [out, told] : std::vector<std::pair<std::string, std::string>>{
             {std::string(300, 'x'),
              ": is not a folder and cannot be made one: File name too long"},
             {"a\\b", "a\\b: a path with a backslash cannot be written"}}) {
        ExpectRefusal(RunPelgrin({"annotate", "--spectra", workplace.PathOf("run.mgf"), "--psms",
                                  table, "--tolerance", "1Da", "--out", workplace.PathOf(out)}),
                      1, told);
        EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("a\\b")));
    }
}

/// Annotates a match in each of 40 files under a limit of 64 descriptors.
Outcome AnnotateManyFiles(const std::string& limit)
{
    const Workplace workplace;
    std::vector<std::string> command = {
        "/bin/sh",  "-c",       "ulimit " + limit + " 64; exec \"$@\"", "sh", PELGRIN_PROGRAM,
        "annotate", "--spectra"};
    std::vector<Row> rows;
    for (int i = 0; i < 40; ++i) {
        rows.emplace_back().dataset = "run" + std::to_string(i) + ".mgf";
        command.push_back(workplace.Write(rows.back().dataset, kRunMgf));
    }
    for (const std::string& word : {std::string("--psms"), workplace.Write("t.txt", TableOf(rows)),
                                    std::string("--tolerance"), std::string("1Da"),
                                    std::string("--out"), workplace.PathOf("out")}) {
        command.push_back(word);
    }
    return RunProgram(command);
}

TEST(PelgrinAnnotate, ManyFilesNeedMoreDescriptorsThanTheUsualLimit)
{
    if (Vorlan::test::kSanitized) {
        GTEST_SKIP() << "the sanitizers need descriptors of their own";
    }
    const Outcome outcome = AnnotateManyFiles("-S -n");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    ExpectRefusal(AnnotateManyFiles("-n"), 1, "Too many open files; the hard limit is reached");
}

TEST(PelgrinAnnotate, AnOutputFolderWithoutWritePermissionIsAFailure)
{
    if (::geteuid() == 0) {
        GTEST_SKIP() << "root may write everywhere";
    }
    const Workplace workplace;
    std::filesystem::create_directory(workplace.PathOf("out"));
    std::filesystem::permissions(workplace.PathOf("out"), std::filesystem::perms::owner_read);
    ExpectRefusal(workplace.Annotate({Row()}), 1, "cannot be written: Permission denied");
}

TEST(PelgrinAnnotate, AnOutputFileThatIsAFolderIsAFailure)
{
    for (const char* const name :
         {"annotations.tsv", "results.txt", "matched.mgf", "summary.json"}) {
        const Workplace workplace;
        std::filesystem::create_directories(workplace.PathOf("out/" + std::string(name)));
        ExpectRefusal(workplace.Annotate({Row()}), 1,
                      std::string(name) + ": cannot be written: it is not an ordinary file");
    }
}

TEST(PelgrinAnnotate, WritesNoFileInPlaceOfADevice)
{
    if (::access("/dev/full", W_OK) != 0) {
        GTEST_SKIP() << "no /dev/full";
    }
    for (const char* const name :
         {"annotations.tsv", "results.txt", "matched.mgf", "summary.json"}) {
        const Workplace workplace;
        std::filesystem::create_directory(workplace.PathOf("out"));
        std::filesystem::create_symlink("/dev/full", workplace.PathOf("out/" + std::string(name)));
        ExpectRefusal(workplace.Annotate({Row()}), 1,
                      std::string(name) + ": cannot be written: it is not an ordinary file");
    }
}

TEST(PelgrinAnnotate, AReportThatCannotBeWrittenIsAFailure)
{
    if (::access("/dev/full", W_OK) != 0) {
        GTEST_SKIP() << "no /dev/full";
    }
    const Workplace workplace;
    workplace.Write("psms.txt", TableOf({Row()}));
    Setting setting;
    setting.outPath = "/dev/full";
    ExpectRefusal(RunPelgrin({"annotate", "--spectra", workplace.PathOf("run.mgf"), "--psms",
                              workplace.PathOf("psms.txt"), "--tolerance", "1Da", "--out",
                              workplace.PathOf("out")},
                             setting),
                  1, "standard output");
}

TEST(PelgrinAnnotate, NeverOverwritesItsInputs)
{
    const Workplace workplace;
    EXPECT_EQ(workplace.Annotate({Row()}).status, 0);
    const std::string results = workplace.Output("results.txt");
    ExpectRefusal(RunPelgrin({"annotate", "--spectra", workplace.PathOf("run.mgf"), "--psms",
                              workplace.PathOf("out/results.txt"), "--tolerance", "1Da", "--out",
                              workplace.PathOf("out")}),
                  1, "results.txt: is an input and would be overwritten");
    EXPECT_EQ(workplace.Output("results.txt"), results);
}

TEST(PelgrinAnnotate, AFileNameWithALineFeedStillGivesOneLine)
{
    const Workplace workplace;
    ExpectRefusal(RunPelgrin({"annotate", "--spectra", "a\nb.mgf", "--psms", "c\td", "--tolerance",
                              "1Da", "--out", workplace.PathOf("out")}),
                  1, "c?d: cannot be opened");
}

TEST(PelgrinAnnotate, InputsThatAreNoTextAtAllEndOrderly)
{
    const Workplace workplace;
    std::string bytes;
    for (int i = 0; i < 70000; ++i) {
        bytes += static_cast<char>((i * 7919 + i / 251) % 256);
    }
    EXPECT_EQ(workplace.AnnotateTable(bytes).status, 1);
    EXPECT_THAT(workplace.AnnotateTable(kTableHeader + bytes).status, testing::AnyOf(0, 1, 3));
    workplace.Write("run.mgf", bytes);
    EXPECT_EQ(workplace.Annotate({Row()}).status, 3);
    workplace.Write("run.mgf", "BEGIN IONS\nTITLE=run.1.1.2 x\n1e308 1e308\n9e999 nan\n-1 -1\n");
    EXPECT_EQ(workplace.Annotate({Row()}).status, 0);
}

} // namespace
} // namespace pelgrin::test
