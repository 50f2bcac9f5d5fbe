// Devices that take nothing, and standard streams that are closed.
#include <filesystem>

#include "HostProgram.h"

namespace pelgrin::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using Vorlan::test::ReadFile;

using Strings = std::vector<std::string>;

constexpr const char kFull[] = "/dev/full";

/// Commands that print something, with inputs of a workplace.
std::vector<Strings> CommandsThatPrint(const Workplace& place)
{
    const std::string psms = place.Write("psms.txt", TableOf({Row()}));
    const std::string fasta = place.Write("proteins.fasta", ">P1\nMKGASKA\n");
    const std::string table = place.PathOf("table.txt");
    const std::string format = "Calvex (.txt)";
    const std::string mgf = place.PathOf("run.mgf");
    return {{"--version"},
            {"--help"},
            {"annotate", "--spectra", mgf, "--psms", psms, "--format", format, "--tolerance",
             "20ppm", "--out", place.PathOf("out")},
            {"convert", "--format", format, "--in", psms, "--out", table},
            {"map-proteins", "--psms", psms, "--fasta", fasta, "--out", table},
            {"inspect", mgf, psms, fasta},
            {"inspect", "--json", mgf},
            {"lint", mgf, psms, fasta},
            {"prepare", mgf, "--out", place.PathOf("prepared")},
            {"params", "template"},
            {"mods", "find", "--mass", "15.9949"},
            {"completion", "bash"}};
}

TEST(PelgrinFullDevice, AsStandardOutputIsAFailureOfEveryCommand)
{
    const Workplace place;
    Setting setting;
    setting.outPath = kFull;
    for (const Strings& arguments : CommandsThatPrint(place)) {
        SCOPED_TRACE(arguments.front());
        const Outcome outcome = RunPelgrin(arguments, setting);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, HasSubstr("pelgrin: error: standard output: cannot be written\n"));
    }
}

TEST(PelgrinFullDevice, AsLogIsAFailureBeforeAnythingIsDone)
{
    const Workplace place;
    const Outcome outcome = place.Annotate({Row()}, {"--log-file", kFull});
    ExpectRefusal(outcome, 1, "--log-file: /dev/full: cannot be written: No space left on device");
    EXPECT_FALSE(fs::exists(place.PathOf("out")));
}

TEST(PelgrinFullDevice, AsOutputIsRefusedByName)
{
    const Workplace place;
    const std::string psms = place.Write("psms.txt", TableOf({Row()}));
    for (const Strings& more :
         std::vector<Strings>{{"--out", kFull},
                              {"--out", place.PathOf("table.txt"), "--rejects", kFull},
                              {"--out", place.PathOf("table.txt"), "--ledger", kFull}}) {
        Strings arguments = {"convert", "--format", "Calvex (.txt)", "--in", psms};
        arguments.insert(arguments.end(), more.begin(), more.end());
        ExpectRefusal(RunPelgrin(arguments), 1,
                      "/dev/full: cannot be written: it is not an ordinary file");
        EXPECT_FALSE(fs::exists(place.PathOf("table.txt")));
    }
    ExpectRefusal(RunPelgrin({"prepare", place.PathOf("run.mgf"), "--out", kFull}), 1,
                  "/dev/full/run.mgf: its folder cannot be made");
}

/// The program behind a shell that closes streams.
Outcome RunClosed(const std::string& closed, const Strings& arguments)
{
    Strings command = {"/bin/sh", "-c", "exec \"$@\" " + closed, "sh", PELGRIN_PROGRAM};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return RunProgram(command);
}

TEST(PelgrinClosedStreams, GetNoMessagesIntoFilesThatAreWritten)
{
    const Workplace place;
    Row lost;
    lost.spectrum = "nowhere";
    const std::string table = TableOf({Row(), lost});
    EXPECT_EQ(place.AnnotateTable(table).status, 3);
    const std::string annotations = place.Output("annotations.tsv");
    const std::string results = place.Output("results.txt");
    const Strings arguments = {"annotate",
                               "--spectra",
                               place.PathOf("run.mgf"),
                               "--psms",
                               place.PathOf("psms.txt"),
                               "--format",
                               "Calvex (.txt)",
                               "--tolerance",
                               "20ppm",
                               "--out",
                               place.PathOf("closed")};
    EXPECT_EQ(RunClosed("<&- 2>&-", arguments).status, 3);
    EXPECT_EQ(ReadFile(place.PathOf("closed/annotations.tsv")), annotations);
    EXPECT_EQ(ReadFile(place.PathOf("closed/results.txt")), results);
    const Strings conversion = {"convert",
                                "--format",
                                "Calvex (.txt)",
                                "--in",
                                place.PathOf("psms.txt"),
                                "--out",
                                place.PathOf("table.txt")};
    EXPECT_EQ(RunPelgrin(conversion).status, 0);
    const std::string converted = ReadFile(place.PathOf("table.txt"));
    EXPECT_EQ(RunClosed("<&- >&- 2>&-", conversion).status, 1); // the report
    EXPECT_EQ(ReadFile(place.PathOf("table.txt")), converted);
    const Outcome outcome = RunClosed(">&-", {"--version"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("standard output: cannot be written"));
}

} // namespace
} // namespace pelgrin::test
