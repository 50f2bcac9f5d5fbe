// What is left when a program is killed, its reader is, or the disk is full: files
// that are whole, or none.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "HostProgram.h"
#include "ResultTexts.h"
#include "support/Random.h"
#include "support/Sanitized.h"

namespace pelgrin::test {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;
using Vorlan::test::kSanitized;
using Vorlan::test::Random;
using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

using Strings = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

/// The program while it runs. Its temporary files are in a folder of the test.
class Running {
public:
    Running(Strings arguments, const TempFolder& folder, rlim_t largestFile = RLIM_INFINITY)
        : err_(folder.PathOf("err"))
    {
        arguments.insert(arguments.begin(), PELGRIN_PROGRAM);
        std::vector<char*> pointers;
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        fs::create_directories(folder.PathOf("tmp"));
        process_ = ::fork();
        if (process_ == 0) {
            const int err = ::open(err_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            ::dup2(err, STDERR_FILENO);
            ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
            ::setenv("TMPDIR", folder.PathOf("tmp").c_str(), 1);
            const rlimit limit{largestFile, largestFile};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            ::execv(pointers[0], pointers.data());
            ::_exit(127);
        }
    }
    ~Running()
    {
        if (process_ > 0) {
            Kill();
        }
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    pid_t Process() const { return process_; }

    int Kill(int signal = SIGKILL)
    {
        ::kill(process_, signal);
        return Wait();
    }

    /// Exit status, or 128 + the signal.
    int Wait()
    {
        int status = 0;
        ::wait4(process_, &status, 0, &usage_);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    std::string Messages() const { return ReadFile(err_); }
    /// Of the program or of a child of it, what was larger. After Wait.
    long MemoryMiB() const { return usage_.ru_maxrss / 1024; }

private:
    std::string err_;
    pid_t process_ = -1;
    rusage usage_{};
};

/// Rows without a spectrum file go fast; every tenth has one.
std::string LargeTable(std::size_t rows)
{
    Row row;
    Row other;
    other.dataset = "other.mgf";
    std::string table = kTableHeader;
    for (std::size_t i = 0; i < rows; ++i) {
        table += LineOf(i % 10 == 0 ? row : other);
    }
    return table;
}

Strings AnnotateArguments(const TempFolder& folder, const std::string& out)
{
    return {"annotate",
            "--spectra",
            folder.PathOf("run.mgf"),
            "--psms",
            folder.PathOf("psms.txt"),
            "--format",
            "Calvex (.txt)",
            "--tolerance",
            "20ppm",
            "--out",
            out,
            "--allow",
            "dataset_not_given"};
}

bool IsPart(const fs::path& path)
{
    return path.filename().string().find(".part") != std::string::npos;
}

using Contents = std::map<std::string, std::string>;

/// The files with a final name. One that tells of the run itself is not compared.
Contents ContentsOf(const std::string& folder)
{
    Contents files;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder, ignored)) {
        const std::string name = entry.path().filename().string();
        if (name == "run.json") {
            EXPECT_TRUE(nlohmann::json::accept(ReadFile(entry.path().string())));
        } else if (!IsPart(entry.path())) {
            files[name] = ReadFile(entry.path().string());
        }
    }
    return files;
}

/// Every file is one of the finished run, or is not there.
void ExpectWholeOrNone(const std::string& folder, const Contents& finished)
{
    for (const auto& [name, text] : ContentsOf(folder)) {
        ASSERT_EQ(finished.count(name), 1U) << name;
        EXPECT_TRUE(text == finished.at(name)) << name << " has " << text.size() << " bytes";
    }
}

std::size_t PartsIn(const std::string& folder)
{
    std::size_t parts = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        parts += IsPart(entry.path()) ? 1 : 0;
    }
    return parts;
}

TEST(PelgrinKilled, LeavesNoFileThatIsHalfWritten)
{
    const TempFolder folder;
    folder.Write("run.mgf", kRunMgf);
    folder.Write("psms.txt", LargeTable(8000));
    const std::string out = folder.PathOf("out");
    const auto begin = Clock::now();
    ASSERT_EQ(Running(AnnotateArguments(folder, out), folder).Wait(), 0);
    const auto duration = Clock::now() - begin;
    const Contents finished = ContentsOf(out);
    ASSERT_GE(finished.size(), 6U);
    Random random(20);
    for (int round = 0; round < 20; ++round) {
        SCOPED_TRACE(round);
        if (round % 2 != 0) {
            fs::remove_all(out);
        }
        Running program(AnnotateArguments(folder, out), folder);
        std::this_thread::sleep_for(duration * random.Between(0.0, 1.0));
        program.Kill();
        ExpectWholeOrNone(out, finished);
    }
    ASSERT_EQ(Running(AnnotateArguments(folder, out), folder).Wait(), 0);
    EXPECT_EQ(PartsIn(out), 0U);
    EXPECT_TRUE(ContentsOf(out) == finished);
}

TEST(PelgrinKilled, WhileItConvertsLeavesTheFormerTable)
{
    const TempFolder folder;
    folder.Write("psms.txt", LargeTable(20000));
    const std::string table = folder.PathOf("table.txt");
    const Strings arguments = {
        "convert", "--format", "Calvex (.txt)", "--in", folder.PathOf("psms.txt"), "--out", table};
    const auto begin = Clock::now();
    ASSERT_EQ(Running(arguments, folder).Wait(), 0);
    const auto duration = Clock::now() - begin;
    const std::string finished = ReadFile(table);
    Random random(21);
    for (int round = 0; round < 10; ++round) {
        Running program(arguments, folder);
        std::this_thread::sleep_for(duration * random.Between(0.0, 1.0));
        program.Kill();
        EXPECT_TRUE(ReadFile(table) == finished) << round;
    }
    ASSERT_EQ(Running(arguments, folder).Wait(), 0);
    EXPECT_EQ(PartsIn(folder.Path()), 0U);
}

// ---- A signal that can be caught ------------------------------------------------

/// Waits until the program has a scratch folder: then it reads results.
void WaitForScratch(const TempFolder& folder)
{
    for (const auto end = Clock::now() + std::chrono::seconds(60);
         fs::is_empty(folder.PathOf("tmp")) && Clock::now() < end;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ASSERT_FALSE(fs::is_empty(folder.PathOf("tmp")));
}

TEST(PelgrinInterrupted, LeavesNoScratchFolderAndNoUnfinishedFile)
{
    const TempFolder folder;
    folder.Write("run.mgf", kRunMgf);
    folder.Write("psms.txt", LargeTable(20000));
    const std::string out = folder.PathOf("out");
    Random random(22);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXCPU, SIGINT, SIGTERM}) {
        SCOPED_TRACE(signal);
        Running program(AnnotateArguments(folder, out), folder);
        WaitForScratch(folder);
        std::this_thread::sleep_for(std::chrono::milliseconds(static_cast<int>(random.Below(40))));
        const int status = program.Kill(signal);
        EXPECT_EQ(status, 128 + signal) << program.Messages();
        EXPECT_TRUE(fs::is_empty(folder.PathOf("tmp")));
        EXPECT_TRUE(fs::is_empty(out));
    }
}

TEST(PelgrinInterrupted, GoesOnWhenTheSignalIsIgnoredByWhoeverStartedIt)
{
    const TempFolder folder;
    folder.Write("run.mgf", kRunMgf);
    folder.Write("psms.txt", LargeTable(2000));
    ::signal(SIGHUP, SIG_IGN); // as nohup does
    Running program(AnnotateArguments(folder, folder.PathOf("out")), folder);
    WaitForScratch(folder);
    EXPECT_EQ(program.Kill(SIGHUP), 0);
    EXPECT_TRUE(fs::exists(folder.PathOf("out/run.json")));
}

// ---- A reader is killed -------------------------------------------------------

/// The second number behind the name: the parent.
pid_t ParentOf(const std::string& process)
{
    std::ifstream file("/proc/" + process + "/stat");
    std::string text;
    std::getline(file, text);
    const std::size_t end = text.rfind(')');
    return end == std::string::npos || end + 4 >= text.size()
               ? -1
               : static_cast<pid_t>(std::strtol(text.c_str() + end + 4, nullptr, 10));
}

/// A child of a process; -1 when there is none.
pid_t ChildOf(pid_t parent)
{
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos && ParentOf(name) == parent) {
            return static_cast<pid_t>(std::strtol(name.c_str(), nullptr, 10));
        }
    }
    return -1;
}

TEST(PelgrinKilled, AReaderIsStartedAgainAndNothingIsLost)
{
    const TempFolder folder;
    folder.Write("run.mgf", kRunMgf);
    folder.Write("psms.txt", LargeTable(20000));
    const std::string out = folder.PathOf("out");
    const std::string former = folder.PathOf("former");
    ASSERT_EQ(Running(AnnotateArguments(folder, former), folder).Wait(), 0);
    Running program(AnnotateArguments(folder, out), folder);
    pid_t reader = -1;
    for (const auto end = Clock::now() + std::chrono::seconds(60);
         reader < 0 && Clock::now() < end;) {
        reader = ChildOf(program.Process());
    }
    ASSERT_GT(reader, 0);
    ASSERT_EQ(::kill(reader, SIGKILL), 0);
    EXPECT_EQ(program.Wait(), 0);
    const nlohmann::json summary = nlohmann::json::parse(ReadFile(out + "/summary.json"));
    EXPECT_EQ(summary["readers_restarted"], 1);
    EXPECT_EQ(summary["records_rejected"], 0);
    EXPECT_THAT(program.Messages(), HasSubstr("psms.txt: the reader ended by signal 9 (Killed); "
                                              "it was started again\n"));
    for (const char* const name : {"results.txt", "annotations.tsv", "ledger.json"}) {
        EXPECT_TRUE(ReadFile(out + "/" + name) == ReadFile(former + "/" + name)) << name;
    }
}

// ---- The disk is full ---------------------------------------------------------

void ExpectFull(const Running& program, int status, const std::string& reason)
{
    EXPECT_EQ(status, 1);
    EXPECT_THAT(program.Messages(), HasSubstr("pelgrin: error: "));
    EXPECT_THAT(program.Messages(), AnyOf(HasSubstr(": cannot be written: " + reason),
                                          HasSubstr(": cannot be written to its end")));
}

TEST(PelgrinFullDisk, OfALimitedSizeIsAFailureThatLeavesTheFormerFiles)
{
    const TempFolder folder;
    folder.Write("run.mgf", kRunMgf);
    folder.Write("psms.txt", LargeTable(3000));
    const std::string out = folder.PathOf("out");
    ASSERT_EQ(Running(AnnotateArguments(folder, out), folder).Wait(), 0);
    const Contents finished = ContentsOf(out);
    const std::size_t largest =
        std::max(finished.at("results.txt").size(), finished.at("annotations.tsv").size());
    folder.Write("psms.txt", LargeTable(2990)); // other files would come
    for (const rlim_t limit : {rlim_t{0}, rlim_t{5000}, rlim_t{50000}, rlim_t{largest / 2}}) {
        SCOPED_TRACE(limit);
        Running program(AnnotateArguments(folder, out), folder, limit);
        const int status = program.Wait();
        if (limit == 0) { // the message has no room either
            EXPECT_EQ(status, 1);
        } else {
            ExpectFull(program, status, "File too large");
        }
        EXPECT_TRUE(ContentsOf(out) == finished);
        EXPECT_EQ(PartsIn(out), 0U);
        const std::string fresh = folder.PathOf("fresh");
        EXPECT_EQ(Running(AnnotateArguments(folder, fresh), folder, limit).Wait(), 1);
        EXPECT_TRUE(ContentsOf(fresh).empty());
    }
}

TEST(PelgrinFullDisk, OfAConversionIsAFailureThatLeavesTheFormerTable)
{
    const TempFolder folder;
    folder.Write("psms.txt", LargeTable(3000));
    const std::string table = folder.Write("table.txt", "former\n");
    for (const rlim_t limit : std::initializer_list<rlim_t>{2000, 5000, 100000}) {
        SCOPED_TRACE(limit);
        Running program({"convert", "--format", "Calvex (.txt)", "--in", folder.PathOf("psms.txt"),
                         "--out", table},
                        folder, limit);
        const int status = program.Wait();
        ExpectFull(program, status, "File too large");
        EXPECT_EQ(ReadFile(table), "former\n");
        EXPECT_EQ(PartsIn(folder.Path()), 0U);
    }
}

/// A disk of some KiB at a folder, as long as it lives.
class TinyDisk {
public:
    explicit TinyDisk(std::string path) : path_(std::move(path))
    {
        fs::create_directories(path_);
        isThere_ = ::mount("tmpfs", path_.c_str(), "tmpfs", 0, "size=200k") == 0;
    }
    ~TinyDisk()
    {
        if (isThere_) {
            ::umount2(path_.c_str(), MNT_DETACH);
        }
    }
    TinyDisk(const TinyDisk&) = delete;
    TinyDisk& operator=(const TinyDisk&) = delete;

    bool IsThere() const { return isThere_; }

private:
    std::string path_;
    bool isThere_ = false;
};

TEST(PelgrinFullDisk, IsAFailureThatLeavesNothing)
{
    const TempFolder folder;
    const std::string out = folder.PathOf("disk");
    const TinyDisk disk(out);
    if (!disk.IsThere()) {
        GTEST_SKIP() << "no small disk can be mounted here";
    }
    folder.Write("run.mgf", kRunMgf);
    folder.Write("psms.txt", LargeTable(5000));
    Running program(AnnotateArguments(folder, out), folder);
    const int status = program.Wait();
    ExpectFull(program, status, "No space left on device");
    EXPECT_TRUE(fs::is_empty(out));
}

// ---- Large files --------------------------------------------------------------

TEST(PelgrinConvert, ReadsALargePepXmlInWindows)
{
    constexpr std::size_t kQueries = 110000;
    const TempFolder folder;
    const std::string document = PepXml("");
    const std::size_t middle = document.find("</msms_run_summary>");
    const std::string query = Query(Hit());
    const std::string name = "run.00001.00001.2";
    const std::size_t place = query.find(name);
    {
        std::ofstream file(folder.PathOf("big.pep.xml"), std::ios::binary);
        file << document.substr(0, middle);
        for (std::size_t i = 0; i < kQueries; ++i) {
            file << query.substr(0, place) << "s" << std::to_string(i)
                 << query.substr(place + name.size());
        }
        file << document.substr(middle);
    }
    ASSERT_GT(fs::file_size(folder.PathOf("big.pep.xml")), 34U * 1024 * 1024);
    const std::string table = folder.PathOf("table.txt");
    Running program({"convert", "--format", "Comet (.pep.xml)", "--in",
                     folder.PathOf("big.pep.xml"), "--out", table},
                    folder);
    EXPECT_EQ(program.Wait(), 0);
    if (!kSanitized) {
        EXPECT_LT(program.MemoryMiB(), 300);
    }
    std::ifstream file(table);
    std::string line;
    std::getline(file, line);
    std::string first;
    for (std::size_t i = 0; i < kQueries; ++i) {
        ASSERT_TRUE(std::getline(file, line)) << i;
        const std::string spectrum = "\ts" + std::to_string(i) + "\t";
        const std::size_t hit = line.find(spectrum);
        ASSERT_NE(hit, std::string::npos) << line;
        line.erase(hit, spectrum.size());
        first = i == 0 ? line : first;
        ASSERT_EQ(line, first);
    }
    EXPECT_FALSE(std::getline(file, line));
}

} // namespace
} // namespace pelgrin::test
