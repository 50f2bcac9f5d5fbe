// Result files in child processes: a reader that throws, ends or crashes costs the
// record that is to blame, and no other one.
#include "isolation/ResultReader.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <new>
#include <set>

#include <pthread.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "HostProgram.h"
#include "RandomResults.h"
#include "ResultTexts.h"
#include "common/Failure.h"
#include "isolation/LibraryReading.h"
#include "isolation/RecordBytes.h"
#include "support/Sanitized.h"

namespace pelgrin::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using Vorlan::PepIdentType;
using Vorlan::test::Random;
using Vorlan::test::TempFolder;
using Format = PepIdentType::EPepIdentType;
using Record = ResultReader::Record;
using Numbers = std::vector<std::size_t>;

constexpr Format kNative = PepIdentType::CalvexTxt;

/// A native table whose spectra are called "s0", "s1" and so on.
std::string NumberedTable(std::size_t count)
{
    std::string table = kTableHeader;
    for (std::size_t i = 0; i < count; ++i) {
        Row row;
        row.spectrum = "s" + std::to_string(i);
        table += LineOf(row);
    }
    return table;
}

std::size_t NumberOf(const Record& record)
{
    return std::stoul(record.strSpectrumName.substr(1));
}

/// Numbers from 0 to count - 1 without some.
Numbers AllBut(std::size_t count, const std::set<std::size_t>& without)
{
    Numbers numbers;
    for (std::size_t i = 0; i < count; ++i) {
        if (without.count(i) == 0) {
            numbers.push_back(i);
        }
    }
    return numbers;
}

/// What happens in the reader at a record.
using Fault = std::function<void(std::vector<Record>& given)>;

/// Reads a native table and fails at the records that are bad: those before were
/// given then.
ResultReader::Load FailingAt(const std::set<std::size_t>& bad, const Fault& fault)
{
    return [bad, fault](Format, const ResultFiles& files, std::vector<Record>& records) {
        std::vector<Record> all;
        LoadRecords(kNative, files, all);
        for (Record& record : all) {
            if (bad.count(NumberOf(record)) > 0) {
                fault(records);
            }
            records.push_back(std::move(record));
        }
    };
}

struct Read {
    Numbers given;
    ResultReading reading;
};

Read ReadNumbered(std::size_t count, const ResultReader::Load& load,
                  ResultReader::Window window = {})
{
    const TempFolder folder;
    ScratchFolder scratch;
    ResultReader reader(scratch, load, window);
    Read read;
    read.reading = reader.Read(kNative, {folder.Write("psms.txt", NumberedTable(count)), ""},
                               [&read](std::vector<Record>&& records) {
                                   for (const Record& record : records) {
                                       read.given.push_back(NumberOf(record));
                                   }
                               });
    EXPECT_EQ(read.reading.records, read.given.size());
    return read;
}

void ExpectRejects(const Read& read, std::size_t count, const std::set<std::size_t>& bad,
                   const std::string& reason)
{
    EXPECT_EQ(read.given, AllBut(count, bad));
    ASSERT_EQ(read.reading.rejects.size(), bad.size());
    std::size_t i = 0;
    for (const std::size_t number : bad) {
        const Reject& reject = read.reading.rejects[i++];
        EXPECT_EQ(reject.record, number);
        EXPECT_EQ(reject.line, number + 2);
        EXPECT_EQ(reject.spectrum, "s" + std::to_string(number));
        EXPECT_EQ(reject.reason, reason);
    }
}

// ---- What may happen at a record ----------------------------------------------

struct Case {
    const char* what;
    Fault fault;
    std::string reason;
};

std::vector<Case> Cases()
{
    return {
        {"it throws, and gave what stood before",
         [](std::vector<Record>&) { throw ReadingFault(ReadingFault::Kind::AtRecord, "bad cell"); },
         "bad cell"},
        {"it throws, and what it gave says nothing",
         [](std::vector<Record>& given) {
             given.resize(given.size() / 2);
             throw ReadingFault(ReadingFault::Kind::Whole, "bad file");
         },
         "bad file"},
        {"it throws, and gave more than there is",
         [](std::vector<Record>& given) {
             given.resize(given.size() + 5000);
             throw ReadingFault(ReadingFault::Kind::AtRecord, "bad cell");
         },
         "bad cell"},
        {"memory ends", [](std::vector<Record>&) { throw std::bad_alloc(); }, "out of memory"},
        {"another exception", [](std::vector<Record>&) { throw std::logic_error("a slip"); },
         "the reader ended with status 1: a slip"},
        {"no exception at all", [](std::vector<Record>&) { throw 7; },
         "the reader ended with status 1: an unknown failure"},
        {"it prints and ends the process",
         [](std::vector<Record>&) {
             std::cout << "1/9 (11%)\b\b\b\b\b\b\b\b\b2/9 (22%)\nno such element\n";
             ::_exit(1);
         },
         "the reader ended with status 1: no such element"},
        {"it ends the process as if all were well", [](std::vector<Record>&) { ::_exit(0); },
         "the reader ended"},
        {"it is killed", [](std::vector<Record>&) { ::raise(SIGKILL); },
         "the reader ended by signal 9 (Killed)"}};
}

TEST(ResultReader, LosesTheRecordsToBlameAndNoOther)
{
    for (const Case& c : Cases()) {
        for (const std::set<std::size_t>& bad :
             {std::set<std::size_t>{0}, {4}, {19}, {3, 4}, {0, 7, 18, 19}}) {
            SCOPED_TRACE(c.what + std::to_string(*bad.begin()));
            ExpectRejects(ReadNumbered(20, FailingAt(bad, c.fault)), 20, bad, c.reason);
        }
    }
}

TEST(ResultReader, LosesAllRecordsWhenAllAreToBlame)
{
    for (const Case& c : Cases()) {
        SCOPED_TRACE(c.what);
        ExpectRejects(ReadNumbered(5, FailingAt({0, 1, 2, 3, 4}, c.fault)), 5, {0, 1, 2, 3, 4},
                      c.reason);
    }
}

TEST(ResultReader, WindowsMakeNoDifference)
{
    const std::set<std::size_t> bad = {0, 1, 11, 24, 39};
    const std::vector<Case> cases = Cases();
    for (const ResultReader::Window window :
         {ResultReader::Window{1, 100}, {300, 100}, {1000000, 7}, {1000000, 1}}) {
        for (const Case& c : {cases.front(), cases[1], cases.back()}) {
            SCOPED_TRACE(c.what + std::to_string(window.bytes));
            ExpectRejects(ReadNumbered(40, FailingAt(bad, c.fault), window), 40, bad, c.reason);
        }
    }
}

std::set<std::size_t> SomeBelow(std::size_t limit, std::size_t count)
{
    std::set<std::size_t> numbers;
    for (Random random(11); numbers.size() < count;) {
        numbers.insert(random.Below(limit));
    }
    return numbers;
}

TEST(ResultReader, ManyBadRecordsAmongMany)
{
    const std::set<std::size_t> bad = SomeBelow(3000, 100);
    ExpectRejects(ReadNumbered(3000, FailingAt(bad, Cases()[0].fault)), 3000, bad, "bad cell");
}

// More ends of a reader than one record can cost.
TEST(ResultReader, ManyCrashesAmongManyRecords)
{
    const std::set<std::size_t> bad = SomeBelow(2000, 12);
    const Case killed = Cases().back();
    ExpectRejects(ReadNumbered(2000, FailingAt(bad, killed.fault)), 2000, bad, killed.reason);
}

TEST(ResultReader, AnExitOfTheLibraryCostsTheRecord)
{
    // exit() runs what is registered for it, in the child only.
    const auto fault = [](std::vector<Record>&) {
        std::cerr << "the program ends\n";
        std::exit(1);
    };
    ExpectRejects(ReadNumbered(6, FailingAt({2}, fault)), 6, {2},
                  "the reader ended with status 1: the program ends");
}

TEST(ResultReader, AnAbortOfTheLibraryCostsTheRecord)
{
    const auto fault = [](std::vector<Record>&) {
        ::signal(SIGABRT, SIG_DFL);
        std::abort();
    };
    ExpectRejects(ReadNumbered(6, FailingAt({2}, fault)), 6, {2},
                  "the reader ended by signal 6 (Aborted)");
}

TEST(ResultReader, ARecordThatIsMissingIsRejected)
{
    const ResultReader::Load load = [](Format, const ResultFiles& files,
                                       std::vector<Record>& records) {
        LoadRecords(kNative, files, records);
        records.erase(std::remove_if(records.begin(), records.end(),
                                     [](const Record& record) { return NumberOf(record) == 5; }),
                      records.end());
    };
    ExpectRejects(ReadNumbered(9, load), 9, {5},
                  "expected 1 records, as counted before, but 0 were read: the file was changed, "
                  "or cannot be read to its end");
}

// ---- What is no record's fault ------------------------------------------------

TEST(ResultReader, AReaderThatIsKilledOnceIsStartedAgain)
{
    const TempFolder folder;
    const std::string mark = folder.PathOf("killed");
    for (const std::size_t count : std::initializer_list<std::size_t>{1, 20}) {
        std::filesystem::remove(mark);
        const auto fault = [&](std::vector<Record>&) {
            if (!std::filesystem::exists(mark)) {
                folder.Write("killed", "");
                ::raise(SIGKILL);
            }
        };
        const Read read = ReadNumbered(count, FailingAt({0}, fault));
        EXPECT_EQ(read.given, AllBut(count, {}));
        EXPECT_THAT(read.reading.rejects, IsEmpty());
        EXPECT_THAT(read.reading.restarts, ElementsAre("the reader ended by signal 9 (Killed)"));
    }
}

// The two together, the first alone, the first, the second alone, the second.
TEST(ResultReader, EachRecordThatStandsAloneHasASecondTry)
{
    const TempFolder folder;
    folder.Write("calls", "");
    const auto fault = [&](std::vector<Record>&) {
        const std::string calls = Vorlan::test::ReadFile(folder.PathOf("calls")) + "x";
        folder.Write("calls", calls);
        if (calls.size() == 1 || calls.size() == 2 || calls.size() == 4) {
            ::raise(SIGKILL);
        }
    };
    const Read read = ReadNumbered(2, FailingAt({0, 1}, fault));
    EXPECT_EQ(read.given, AllBut(2, {}));
    EXPECT_THAT(read.reading.rejects, IsEmpty());
    EXPECT_EQ(read.reading.restarts.size(), 3U);
}

TEST(ResultReader, AFileThatIsReadInPiecesOnlyIsTold)
{
    const ResultReader::Load load = [](Format, const ResultFiles& files,
                                       std::vector<Record>& records) {
        LoadRecords(kNative, files, records);
        if (records.size() > 3) {
            throw ReadingFault(ReadingFault::Kind::Whole, "too many");
        }
    };
    const Read read = ReadNumbered(10, load);
    EXPECT_EQ(read.given, AllBut(10, {}));
    EXPECT_EQ(read.reading.inPieces, "too many");
    EXPECT_EQ(ReadNumbered(3, load).reading.inPieces, "");
    EXPECT_EQ(ReadNumbered(10, FailingAt({4}, Cases()[0].fault)).reading.inPieces, "");
}

TEST(ResultReader, AFileThatIsWellIsReadAsItStands)
{
    std::set<std::string> names;
    const TempFolder folder;
    const std::string path = folder.Write("psms.txt", NumberedTable(2000));
    const ResultReader::Load load = [&](Format, const ResultFiles& files,
                                        std::vector<Record>& records) {
        if (files.path != path) {
            throw ReadingFault(ReadingFault::Kind::Whole, files.path);
        }
        LoadRecords(kNative, files, records);
    };
    ScratchFolder scratch;
    ResultReader reader(scratch, load, {});
    std::size_t given = 0;
    const ResultReading reading =
        reader.Read(kNative, {path, ""}, [&](std::vector<Record>&& some) { given += some.size(); });
    EXPECT_EQ(given, 2000U);
    EXPECT_THAT(reading.rejects, IsEmpty());
    EXPECT_THAT(reading.restarts, IsEmpty());
    EXPECT_EQ(reading.inPieces, "");
}

TEST(ResultReader, ATableWithoutRowsStartsNoReader)
{
    const Read read = ReadNumbered(0, [](Format, const ResultFiles&, std::vector<Record>&) {
        throw ReadingFault(ReadingFault::Kind::Whole, "read");
    });
    EXPECT_THAT(read.given, IsEmpty());
    EXPECT_THAT(read.reading.rejects, IsEmpty());
    EXPECT_EQ(read.reading.inPieces, "");
}

TEST(ResultReader, WhatTheHostThrowsWhileItTakesRecordsComesOut)
{
    const TempFolder folder;
    ScratchFolder scratch;
    ResultReader reader(scratch);
    EXPECT_THROW(reader.Read(kNative, {folder.Write("psms.txt", NumberedTable(5)), ""},
                             [](std::vector<Record>&&) { throw Failure("the disk is full"); }),
                 Failure);
}

/// Runs in a child: what it sets for the process holds there only. Gives the
/// text of the Failure.
std::string FailureIn(const std::function<void()>& work)
{
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe(ends.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        std::string text = "no failure";
        try {
            work();
        } catch (const Failure& failure) {
            text = failure.what();
        }
        ::_exit(::write(ends[1], text.data(), text.size()) > 0 ? 0 : 1);
    }
    ::close(ends[1]);
    std::string text(1000, '\0');
    const ssize_t size = ::read(ends[0], text.data(), text.size());
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return text;
}

TEST(ResultReader, ReadersThatEndBeforeTheyBeginAreAFailure)
{
    const TempFolder folder;
    const std::string path = folder.Write("psms.txt", NumberedTable(3));
    EXPECT_EQ(FailureIn([&path] {
                  ::pthread_atfork(nullptr, nullptr, [] { ::_exit(3); });
                  ScratchFolder scratch;
                  ResultReader reader(scratch);
                  reader.Read(kNative, {path, ""}, [](std::vector<Record>&&) {});
              }),
              "no process for reading stays alive: the reader ended with status 3");
}

TEST(ResultReader, NoRoomForAReaderIsAFailure)
{
    if (Vorlan::test::kSanitized) {
        GTEST_SKIP() << "the sanitizers need descriptors of their own";
    }
    const TempFolder folder;
    const std::string path = folder.Write("psms.txt", NumberedTable(3));
    EXPECT_EQ(FailureIn([&path] {
                  ScratchFolder scratch;
                  ResultReader reader(scratch);
                  const int next = ::dup(STDIN_FILENO);
                  const rlimit few{static_cast<rlim_t>(next) + 2, static_cast<rlim_t>(next) + 2};
                  ::setrlimit(RLIMIT_NOFILE, &few);
                  reader.Read(kNative, {path, ""}, [](std::vector<Record>&&) {});
              }),
              "no process for reading can be started: a socket: Too many open files; the hard "
              "limit is reached (ulimit -Hn): give fewer files at a time");
}

TEST(ResultReader, AFullDiskIsAFailureAndNoReject)
{
    const TempFolder folder;
    const std::string path = folder.Write("psms.txt", NumberedTable(200));
    const std::string text = FailureIn([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit little{1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &little);
        ScratchFolder scratch;
        ResultReader reader(scratch, FailingAt({50}, Cases()[1].fault), {});
        reader.Read(kNative, {path, ""}, [](std::vector<Record>&&) {});
    });
    EXPECT_THAT(text, HasSubstr("psms.txt: cannot be written: File too large"));
}

TEST(ResultReader, AFileThatGoesWhileItIsReadIsAFailure)
{
    const TempFolder folder;
    const std::string path = folder.Write("psms.txt", NumberedTable(40));
    ScratchFolder scratch;
    ResultReader reader(scratch, LoadRecords, {1000, 5});
    EXPECT_THROW(reader.Read(kNative, {path, ""},
                             [&](std::vector<Record>&&) { std::filesystem::remove(path); }),
                 Failure);
}

// ---- The library's own readers ------------------------------------------------

TEST(ResultReader, GivesWhatTheLibraryGivesInWindowsOfAnySize)
{
    TellUsualModifications();
    for (const ResultKind& kind : ResultKinds()) {
        SCOPED_TRACE(kind.head.substr(0, 40));
        Random random(40);
        for (int round = 0; round < 4; ++round) {
            const TempFolder folder;
            const ResultFiles files = RandomResult(random, kind, false, folder);
            std::vector<Record> whole;
            Vorlan::test::OutputOf([&] { LoadRecords(kind.format, files, whole); });
            for (const ResultReader::Window window :
                 {ResultReader::Window{}, {100, 100}, {100000, 2}}) {
                ScratchFolder scratch;
                ResultReader reader(scratch, LoadRecords, window);
                std::vector<Record> given;
                const ResultReading reading =
                    reader.Read(kind.format, files, [&given](std::vector<Record>&& some) {
                        given.insert(given.end(), some.begin(), some.end());
                    });
                EXPECT_THAT(reading.rejects, IsEmpty());
                EXPECT_THAT(reading.restarts, IsEmpty());
                ASSERT_EQ(given.size(), whole.size());
                EXPECT_TRUE(BytesOf(given, 0, given.size()) == BytesOf(whole, 0, whole.size()));
            }
        }
    }
}

} // namespace
} // namespace pelgrin::test
