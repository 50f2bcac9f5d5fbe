#include "HostProgram.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pelgrin::test {

namespace {

using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

void Redirect(int descriptor, const std::string& path)
{
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0 || ::dup2(file, descriptor) < 0) {
        ::_exit(126);
    }
}

[[noreturn]] void BecomeProgram(const std::vector<std::string>& command, const Setting& setting,
                                const std::string& out, const std::string& err)
{
    Redirect(STDOUT_FILENO, out);
    Redirect(STDERR_FILENO, err);
    if (!setting.folder.empty() && ::chdir(setting.folder.c_str()) != 0) {
        ::_exit(126);
    }
    for (const auto& [name, value] : setting.variables) {
        ::setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<char*> arguments;
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
}

} // namespace

Outcome RunProgram(const std::vector<std::string>& command, const Setting& setting)
{
    const TempFolder folder;
    const std::string out = setting.outPath.empty() ? folder.PathOf("out") : setting.outPath;
    const std::string err = folder.PathOf("err");
    const pid_t child = ::fork();
    if (child < 0) {
        throw std::runtime_error("cannot fork");
    }
    if (child == 0) {
        BecomeProgram(command, setting, out, err);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    Outcome outcome;
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    outcome.out = setting.outPath.empty() ? ReadFile(out) : "";
    outcome.err = ReadFile(err);
    return outcome;
}

Outcome RunPelgrin(std::vector<std::string> arguments, const Setting& setting)
{
    arguments.insert(arguments.begin(), PELGRIN_PROGRAM);
    return RunProgram(arguments, setting);
}

const char* const kTableHeader =
    "Dataset Name\tSpectrum Name\tSequence\tCharge\tObsMH\tMass Shift\tMain Score\t"
    "High Score Better\tIdentified Mod Name\tIdentified Mod Position\tProtein Access\t"
    "Before AA\tAfter AA\tProtein Start Position\n";

std::string LineOf(const Row& row)
{
    return row.dataset + "\t" + row.spectrum + "\t" + row.sequence + "\t" + row.charge + "\t"
           + row.observedMh + "\t" + row.massShift + "\t" + row.score + "\t" + row.highBetter + "\t"
           + row.modNames + "\t" + row.modPositions + "\t"
           + (row.protein.empty() ? "\t\t\n" : row.protein + "\tK\tA\t7\n");
}

std::string TableOf(const std::vector<Row>& rows)
{
    std::string table = kTableHeader;
    for (const Row& row : rows) {
        table += LineOf(row);
    }
    return table;
}

const char* const kRunMgf = "BEGIN IONS\n"
                            "TITLE=run.1.1.2 File:\"run.raw\", NativeID:\"scan=1\"\n"
                            "PEPMASS=181.1\n"
                            "CHARGE=2+\n"
                            "RTINSECONDS=60\n"
                            "SCANS=1\n"
                            "300 5\n"
                            "58.0287 10.5\n"
                            "129.0659 20\n"
                            "147.1128 30\n"
                            "END IONS\n";

const char* const kGaskLines =
    "run.mgf\trun.00001.00001.2\tGASK\t2\tb\t1\t1\tunshift\t58.028741\t58.028700\t10.5\t-0.699\n"
    "run.mgf\trun.00001.00001.2\tGASK\t2\tb\t2\t1\tunshift\t129.065855\t129.065900\t20\t0.351\n"
    "run.mgf\trun.00001.00001.2\tGASK\t2\ty\t1\t1\tunshift\t147.112805\t147.112800\t30\t-0.033\n";

Workplace::Workplace()
{
    folder_.Write("run.mgf", kRunMgf);
}

Outcome Workplace::Annotate(const std::vector<Row>& rows, std::vector<std::string> more) const
{
    return AnnotateTable(TableOf(rows), std::move(more));
}

Outcome Workplace::AnnotateTable(const std::string& table, std::vector<std::string> more) const
{
    std::vector<std::string> arguments = {"annotate",
                                          "--spectra",
                                          PathOf("run.mgf"),
                                          "--psms",
                                          folder_.Write("psms.txt", table),
                                          "--format",
                                          "Calvex (.txt)",
                                          "--tolerance",
                                          "20ppm",
                                          "--out",
                                          PathOf("out")};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunPelgrin(arguments);
}

std::string Workplace::Output(const std::string& name) const
{
    return ReadFile(PathOf("out/" + name));
}

nlohmann::json Workplace::Summary() const
{
    return nlohmann::json::parse(Output("summary.json"));
}

void ExpectRefusal(const Outcome& outcome, int status, const std::string& text)
{
    EXPECT_EQ(outcome.status, status);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, testing::StartsWith("pelgrin: error: "));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_THAT(outcome.err, testing::HasSubstr(text));
}

void ExpectReject(const Outcome& outcome, const std::string& text)
{
    EXPECT_EQ(outcome.status, 3);
    const std::size_t begin = outcome.err.find(text);
    EXPECT_NE(begin, std::string::npos) << outcome.err;
    const std::size_t end = outcome.err.find('\n', std::min(begin, outcome.err.size()));
    EXPECT_NE(outcome.err.substr(0, end).find("; the record is left out"), std::string::npos)
        << outcome.err;
}

void ExpectCountsAddUp(const nlohmann::json& summary)
{
    const auto sumOf = [](const nlohmann::json& reasons) {
        std::uint64_t sum = 0;
        for (const auto& [key, value] : reasons.items()) {
            sum += key == "total" ? 0 : value.get<std::uint64_t>();
        }
        EXPECT_EQ(sum, reasons["total"].get<std::uint64_t>()) << reasons;
        return sum;
    };
    const nlohmann::json& records = summary["records"];
    const std::uint64_t left = records.contains("fdr_control") ? sumOf(records["fdr_control"]) : 0;
    EXPECT_EQ(records["read"].get<std::uint64_t>(), left + records["annotated"].get<std::uint64_t>()
                                                        + sumOf(records["not_joined"])
                                                        + sumOf(records["skipped"]));
    EXPECT_EQ(records["read"].get<std::uint64_t>(),
              left + sumOf(records["joined"]) + sumOf(records["not_joined"]));
}

} // namespace pelgrin::test
