// What stands where: messages, log file, report, progress, exit status.
#include <sstream>

#include "HostProgram.h"
#include "ParameterFiles.h"
#include "help/ManualPage.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Vorlan::test::ReadFile;

/// A table with one record that is annotated and one whose spectrum is unknown.
const std::vector<Row> kOneLost = {Row(), [] {
                                       Row row;
                                       row.spectrum = "nowhere";
                                       return row;
                                   }()};

std::vector<std::string> LinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(Manners, VersionIsOneLine)
{
    for (const auto& arguments :
         std::vector<std::vector<std::string>>{{"--version"}, {"annotate", "--version"}}) {
        const Outcome outcome = RunPelgrin(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(LinesOf(outcome.out).size(), 1U);
        EXPECT_THAT(outcome.out, StartsWith("pelgrin " PELGRIN_VERSION " (with OpenMS "));
        EXPECT_EQ(outcome.err, "");
    }
}

TEST(Manners, HelpListsTheExitStatusesAndWhereOptionsOfEveryCommandStand)
{
    const std::string help = RunPelgrin({"--help"}).out;
    for (const char* const text : {"\n  0  all well\n", "\n  1  failure; ", "\n  2  ", "\n  3  "}) {
        EXPECT_THAT(help, HasSubstr(text));
    }
    EXPECT_THAT(RunPelgrin({"mods", "find", "--help"}).out, HasSubstr("--log-file, --progress"));
}

TEST(Manners, ThePageHasEveryOptionAndEveryStatusOfTheProgram)
{
    const std::string page = ReadFile(PELGRIN_DOCS "/pelgrin.md");
    int options = 0;
    for (const std::string& line : LinesOf(RunPelgrin({"--help"}).out)) {
        const std::size_t name = line.find("--");
        if (line.compare(0, 3, "  -") != 0 || line.find("--help") != std::string::npos
            || line.find("--version") != std::string::npos) {
            continue;
        }
        ++options;
        const std::string option = line.substr(name, line.find(' ', name) - name);
        const bool isThere = page.find("`" + option + "` |") != std::string::npos
                             || page.find("\n| `" + option + " ") != std::string::npos;
        EXPECT_TRUE(isThere) << option;
    }
    EXPECT_EQ(options, 4);
    for (const auto& [status, meaning] : ExitStatusTexts()) {
        EXPECT_THAT(page, HasSubstr("\n| " + std::to_string(status) + " | "));
    }
}

TEST(Manners, QuietLeavesOutReportAndWarningsButNoStatusAndNoError)
{
    const Workplace place;
    const Outcome loud = place.Annotate(kOneLost);
    EXPECT_EQ(loud.status, 3);
    EXPECT_THAT(loud.err, HasSubstr("pelgrin: warning: 1 of 2 records"));
    const std::string annotations = place.Output("annotations.tsv");
    for (const char* const option : {"-q", "--quiet"}) {
        const Outcome quiet = place.Annotate(kOneLost, {option});
        EXPECT_EQ(quiet.status, 3);
        EXPECT_EQ(quiet.out, "");
        EXPECT_EQ(quiet.err, "");
        EXPECT_EQ(place.Output("annotations.tsv"), annotations);
    }
    ExpectRefusal(place.Annotate(kOneLost, {"--quiet", "--mod", "Oxidation"}), 2, "--mod");
}

TEST(Manners, AnEmptyValueIsRefused)
{
    const Workplace place;
    Setting setting;
    setting.folder = place.PathOf("");
    for (const auto& [option, command] :
         std::vector<std::pair<std::string, std::vector<std::string>>>{
             {"--prepare-dir", {"run", "run.ini"}},
             {"--dataset", {"run", "run.ini"}},
             {"--out", {"prepare", "run.mgf"}},
             {"--ledger", {"convert", "--format", "MaxQuant", "--in", "a", "--out", "b"}},
             {"--second", {"convert", "--format", "MaxQuant", "--in", "a", "--out", "b"}},
             {"--format", {"lint", "run.mgf"}},
             {"--before", {"mods", "explain", "1", "--at", "M", "--database"}},
             {"--log-file", {"lint", "run.mgf"}}}) {
        std::vector<std::string> arguments = command;
        arguments.insert(arguments.end(), {option, ""});
        ExpectRefusal(RunPelgrin(arguments, setting), 2, option + ": the value is empty");
        arguments.pop_back();
        arguments.back() += "=";
        ExpectRefusal(RunPelgrin(arguments, setting), 2, option + ":");
    }
    ExpectRefusal(RunPelgrin({"inspect", ""}), 2, "files: the value is empty");
    ExpectRefusal(RunPelgrin({"lint", "run.mgf", "--examples", "-1"}, setting), 2, "--examples: ");
}

TEST(Manners, TheReportOfPrepareIsLeftOutAndTheAnswerOfJoinIsNot)
{
    const ParameterWorkplace place;
    Setting setting;
    setting.folder = place.PathOf("");
    const Outcome quiet = RunPelgrin({"-q", "prepare", "--out", "ready", "run.mgf"}, setting);
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.out + quiet.err, "");
    place.Write("psms.txt", TableOf({Row()}));
    EXPECT_THAT(place.Pelgrin({"-q", "join"}, Ini()).out, HasSubstr("of 1 matches"));
}

TEST(Manners, ObjectsThatNobodyReadsAreNoFailure)
{
    const Workplace place;
    Setting setting;
    setting.folder = place.PathOf("");
    place.Write("psms.txt", TableOf(kOneLost));
    const Outcome outcome =
        RunProgram({"/bin/sh", "-c", "exec \"$@\" 2>&-", "sh", PELGRIN_PROGRAM, "annotate",
                    "--spectra", "run.mgf", "--psms", "psms.txt", "--tolerance", "20ppm", "--out",
                    "out", "--progress", "json", "--log-file", "log"},
                   setting);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(ReadFile(place.PathOf("log")), HasSubstr("[warning] 1 of 2 records"));
}

TEST(Manners, QuietKeepsWhatWasAskedFor)
{
    EXPECT_THAT(RunPelgrin({"-q", "params", "template"}).out, HasSubstr("[Search]"));
    EXPECT_THAT(RunPelgrin({"params", "template", "-q"}).out, HasSubstr("[Search]"));
}

TEST(Manners, OptionsOfTheProgramStandBeforeOrBehindEveryCommand)
{
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"--log-file", "log", "mods", "find", "--mass", "1", "--unimod", "gone.xml"},
             {"mods", "--log-file", "log", "find", "--mass", "1", "--unimod", "gone.xml"},
             {"mods", "find", "--mass", "1", "--log-file", "log", "--unimod", "gone.xml"}}) {
        const Workplace place;
        Setting setting;
        setting.folder = place.PathOf("");
        const Outcome outcome = RunPelgrin(arguments, setting);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(ReadFile(place.PathOf("log")), HasSubstr("[error] gone.xml"));
    }
}

TEST(Manners, TheLogHasEverythingWithTimesAndIsAddedTo)
{
    const Workplace place;
    const std::string log = place.PathOf("run.log");
    place.Annotate(kOneLost, {"-q", "--log-file", log});
    const std::vector<std::string> lines = LinesOf(ReadFile(log));
    ASSERT_GE(lines.size(), 4U);
    EXPECT_THAT(lines.front(), HasSubstr("[debug] pelgrin " PELGRIN_VERSION));
    EXPECT_THAT(lines.front(), HasSubstr(" annotate --spectra "));
    EXPECT_THAT(lines.back(), HasSubstr("[debug] exit status 3"));
    EXPECT_THAT(ReadFile(log), HasSubstr("[warning] 1 of 2 records"));
    EXPECT_THAT(ReadFile(log), HasSubstr("[debug] the library: "));
    for (const std::string& line : lines) {
        // [2026-03-01T12:00:00.250Z] [4711] [debug] text
        EXPECT_EQ(line.find("T"), 11U) << line;
        EXPECT_EQ(line.find("Z] ["), 24U) << line;
    }
    const Outcome again = place.Annotate({Row()}, {"--log-file", log});
    EXPECT_EQ(again.status, 0);
    EXPECT_THAT(again.err, Not(HasSubstr("debug")));
    EXPECT_GT(LinesOf(ReadFile(log)).size(), lines.size());
    EXPECT_EQ(LinesOf(ReadFile(log)).front(), lines.front());
}

TEST(Manners, ALogIsNotAddedToSomethingElse)
{
    const Workplace place;
    ExpectRefusal(place.Annotate({Row()}, {"--log-file", place.PathOf("run.mgf")}), 1,
                  "holds something else than a log");
    EXPECT_EQ(ReadFile(place.PathOf("run.mgf")), kRunMgf);
    ExpectRefusal(place.Annotate({Row()}, {"--log-file", place.PathOf("gone/run.log")}), 1,
                  "gone/run.log: cannot be opened: No such file");
    EXPECT_EQ(place.Annotate({Row()}, {"--log-file", place.PathOf("")}).status, 1);
    EXPECT_EQ(place.Annotate({Row()}, {"--log-file", "/dev/null"}).status, 0);
}

TEST(Manners, VerboseTellsTheStepsOnStandardError)
{
    const Workplace place;
    const Outcome outcome = place.Annotate({Row()}, {"-v"});
    EXPECT_THAT(outcome.err, HasSubstr("pelgrin: debug: step: annotation\n"));
    EXPECT_THAT(outcome.out, StartsWith("Spectra "));
    ExpectRefusal(place.Annotate({Row()}, {"-v", "-q"}), 2, "--quiet excludes --verbose");
}

TEST(Manners, WhatTheLibraryPrintsAsProgressIsNoMessage)
{
    const Workplace place;
    EXPECT_EQ(place.Annotate({Row()}).err, "");
}

TEST(Manners, PlainProgressHasLinesAndNoneHasNone)
{
    const Workplace place;
    EXPECT_THAT(place.Annotate({Row()}, {"--progress", "plain"}).err,
                HasSubstr("pelgrin: progress: annotating: 1 to do\n"
                          "pelgrin: progress: annotating: 1 of 1 (100%)\n"));
    EXPECT_EQ(place.Annotate({Row()}, {"--progress", "none"}).err, "");
    ExpectRefusal(place.Annotate({Row()}, {"--progress", "much"}), 2, "--progress: much not in");
}

TEST(Manners, JsonProgressMakesEveryLineOnStandardErrorAnObject)
{
    const Workplace place;
    const Outcome outcome = place.Annotate(kOneLost, {"--progress", "json"});
    std::vector<std::string> ended;
    std::vector<std::string> warnings;
    for (const std::string& line : LinesOf(outcome.err)) {
        const auto object = nlohmann::json::parse(line);
        if (object["event"] == "message") {
            EXPECT_EQ(object["level"], "warning");
            warnings.push_back(object["text"]);
        } else if (object["state"] == "end") {
            ended.push_back(object["task"]);
        }
    }
    EXPECT_THAT(warnings, testing::ElementsAre(StartsWith("1 of 2 records")));
    EXPECT_THAT(ended, testing::Contains("annotating"));
}

} // namespace
} // namespace pelgrin::test
