// The native table as a file: paths, opening, counting, lines, order of calls.
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "pepident/MatchText.h"
#include "support/FailingMemory.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

constexpr std::size_t kLongest = 81919;

std::string Row(const std::string& spectrum)
{
    return "d\t" + spectrum + "\tSEQ\t2\t1\t0\t7\t1\t\t\t\t\t\t\n";
}

std::string DumpOf(const std::string& spectrum)
{
    return "d|" + spectrum + "|SEQ|2+|1|0|7 high||";
}

/// A row of the given length without its line end, filled up in a last,
/// surplus cell.
std::string RowOfLength(const std::string& spectrum, std::size_t length)
{
    std::string row = Row(spectrum);
    row.back() = '\t';
    return row + std::string(length - row.size(), 'x');
}

Thrown NotReadable(const std::string& path)
{
    return {"FileNotReadable", "PeptideIdentificationIO", kNativeLoad,
            "the file '" + path + "' is not readable for the current user"};
}

/// Shows what it counted and the path.
class NativeProbe : public TulkTXTPepIdentIO {
public:
    std::uint64_t Count() const { return tResultCount_; }
    const OpenMS::String& FilePath() const { return strFilePath_; }
};

PepIdentSource SourceIn(const std::string& folder, const std::string& name = "t.txt")
{
    return {folder, name, PepIdentType::CalvexTxt};
}

TEST(NativeTableFiles, B21_RowsAreLineFeedsLessOne)
{
    const std::vector<std::pair<std::string, std::uint64_t>> texts = {
        {kNativeHeader + Row("a") + Row("b") + Row("c"), 3},
        {kNativeHeader + Row("a") + Row("b") + Row("c").substr(0, 20), 2},
        {kNativeHeader, 0},
        {"header without line feed", std::numeric_limits<std::uint64_t>::max()},
        {"", std::numeric_limits<std::uint64_t>::max()},
        {"\n\n\n\n", 3},
        {Repeat("x\r\n", 300000), 299999},
    };
    for (const auto& [text, count] : texts) {
        const TempFolder folder;
        folder.Write("t.txt", text);
        NativeProbe reader;
        reader.InitLoad(SourceIn(folder.Path()));
        EXPECT_EQ(reader.Count(), count);
    }
}

TEST(NativeTableFiles, LinesThatAreNoRowsGetLittleRoom)
{
    constexpr std::size_t kBlank = 200000;
    const TempFolder folder;
    for (const std::size_t rows : {0u, 3u}) {
        folder.Write("t.txt", kNativeHeader + Repeat(Row("a"), rows) + Repeat("\n", kBlank));
        NativeProbe reader;
        reader.InitLoad(SourceIn(folder.Path()));
        std::vector<PeptideIdentification> matches;
        OutputOf([&] { reader.Load(matches); });
        EXPECT_EQ(matches.size(), rows);
        EXPECT_LE(matches.capacity(), rows * kBlank / 30);
    }
}

TEST(NativeTableFiles, RoomForAllRowsIsAWish)
{
    PELGRIN_NEEDS_FAILING_MEMORY();
    const TempFolder folder;
    folder.Write("t.txt", kNativeHeader + Repeat(Row("a"), 3) + Repeat("\n", 1000000));
    NativeProbe reader;
    reader.InitLoad(SourceIn(folder.Path()));
    std::vector<PeptideIdentification> matches;
    OutputOf([&] {
        const SmallMemory memory(std::size_t{1} << 20);
        reader.Load(matches);
    });
    EXPECT_EQ(matches.size(), 3u);
}

TEST(NativeTableFiles, B20_WhatCannotBeCountedIsReportedWithTheLabelOfLoad)
{
    const TempFolder folder;
    ASSERT_EQ(::mkfifo(folder.PathOf("pipe").c_str(), 0600), 0);
    ASSERT_EQ(::mkdir(folder.PathOf("folder").c_str(), 0700), 0);
    for (const char* const name : {"missing.txt", "pipe", "folder"}) {
        TulkTXTPepIdentIO reader;
        EXPECT_EQ(ThrownBy([&] { reader.InitLoad(SourceIn(folder.Path(), name)); }),
                  NotReadable(folder.Path() + "\\" + name));
        std::vector<PeptideIdentification> matches;
        EXPECT_EQ(ThrownBy([&] { reader.Load(matches); }),
                  NotReadable(folder.Path() + "\\" + name));
        EXPECT_TRUE(matches.empty());
    }
}

TEST(NativeTableFiles, ThePathIsFolderOneBackslashName)
{
    const std::vector<std::pair<std::string, std::string>> folders = {
        {"C:\\data", "C:\\data\\t.txt"},
        {"C:\\data\\", "C:\\data\\t.txt"},
        {"C:\\data\\\\\\", "C:\\data\\t.txt"},
        {"\\\\\\", "\\t.txt"},
        {"", "\\t.txt"},
        {"data/", "data/\\t.txt"},
    };
    for (const auto& [folder, path] : folders) {
        NativeProbe reader;
        const PepIdentSource source = SourceIn(folder);
        EXPECT_EQ(ThrownBy([&] { reader.InitLoad(source); }), NotReadable(path));
        EXPECT_EQ(reader.FilePath(), path);
    }
}

TEST(NativeTableFiles, BackslashesAtTheEndOfTheFolderDoNotMatter)
{
    const TempFolder folder;
    folder.Write("t.txt", kNativeHeader + Row("a"));
    for (const char* const end : {"", "\\", "\\\\\\"}) {
        TulkTXTPepIdentIO reader;
        std::vector<PeptideIdentification> matches;
        reader.InitLoad(SourceIn(folder.Path() + end));
        OutputOf([&] { reader.Load(matches); });
        EXPECT_THAT(Dump(matches), ElementsAre(DumpOf("a")));
    }
}

TEST(NativeTableFiles, LoadWithoutInitLoadIsNotReadable)
{
    TulkTXTPepIdentIO reader;
    std::vector<PeptideIdentification> matches(1);
    EXPECT_EQ(ThrownBy([&] { reader.Load(matches); }), NotReadable(""));
    EXPECT_EQ(matches.size(), 1u);
}

TEST(NativeTableFiles, LoadAppendsAndNeverClears)
{
    const TempFolder folder;
    folder.Write("t.txt", kNativeHeader + Row("a"));
    std::vector<PeptideIdentification> matches(2);
    TulkTXTPepIdentIO reader;
    reader.InitLoad(SourceIn(folder.Path()));
    OutputOf([&] { reader.Load(matches); });
    ASSERT_EQ(matches.size(), 3u);
    EXPECT_EQ(Dump(matches[2]), DumpOf("a"));
}

TEST(NativeTableFiles, ASecondLoadHasNothingLeftToRead)
{
    const TempFolder folder;
    const std::string path = folder.Path() + "\\t.txt";
    folder.Write("t.txt", kNativeHeader + Row("a"));
    std::vector<PeptideIdentification> matches;
    TulkTXTPepIdentIO reader;
    reader.InitLoad(SourceIn(folder.Path()));
    OutputOf([&] { reader.Load(matches); });
    EXPECT_EQ(ThrownBy([&] { reader.Load(matches); }), NotReadable(path));
    EXPECT_EQ(matches.size(), 1u);
}

TEST(NativeTableFiles, B11_EndLoadLeavesTheInputOpenAndASecondInitLoadFails)
{
    const TempFolder folder;
    folder.Write("t.txt", kNativeHeader + Row("a"));
    folder.Write("u.txt", kNativeHeader + Row("b"));
    std::vector<PeptideIdentification> matches;
    TulkTXTPepIdentIO reader;
    reader.InitLoad(SourceIn(folder.Path()));
    reader.EndLoad();
    OutputOf([&] { reader.Load(matches); });
    EXPECT_THAT(Dump(matches), ElementsAre(DumpOf("a"))) << "the input was still open";
    EXPECT_EQ(ThrownBy([&] { reader.InitLoad(SourceIn(folder.Path(), "u.txt")); }), Thrown());
    EXPECT_EQ(ThrownBy([&] { reader.Load(matches); }), NotReadable(folder.Path() + "\\u.txt"));
    EXPECT_EQ(matches.size(), 1u);
}

TEST(NativeTableFiles, B11_EndLoadClosesTheOutput)
{
    const TempFolder folder;
    TulkTXTPepIdentIO both;
    both.InitSave(folder.PathOf("out.txt"));
    both.EndLoad();
    EXPECT_EQ(ThrownBy([&] { both.Save({}); }).name, "FileNotWritable");
}

TEST(NativeTableFiles, B92_FailuresNameThePathThatWasSetLast)
{
    const TempFolder folder;
    folder.Write("t.txt", kNativeHeader);
    const std::string missing = folder.PathOf("missing") + "/out.txt";
    std::vector<PeptideIdentification> matches;
    TulkTXTPepIdentIO both;
    both.InitLoad(SourceIn(folder.Path()));
    OutputOf([&] { both.Load(matches); });
    both.InitSave(missing);
    EXPECT_EQ(ThrownBy([&] { both.Load(matches); }), NotReadable(missing));
    EXPECT_EQ(ThrownBy([&] { both.InitLoad(SourceIn(folder.Path())); }), Thrown());
    EXPECT_THAT(ThrownBy([&] { both.Save({}); }).message,
                testing::HasSubstr("'" + folder.Path() + "\\t.txt'"));
}

TEST(NativeTableFiles, B12_AnEmptyLineEndsTheTable)
{
    const std::vector<std::string> texts = {
        kNativeHeader + Row("a") + "\n" + Row("b"),
        kNativeHeader + Row("a") + "\r\n" + Row("b"),
        kNativeHeader + Row("a") + "\n",
        kNativeHeader + Row("a"),
        kNativeHeader + Row("a") + "\n\n\n",
    };
    for (const std::string& text : texts) {
        const Reading reading = ReadNativeText(text);
        EXPECT_EQ(reading.thrown, Thrown());
        EXPECT_THAT(Dump(reading.matches), ElementsAre(DumpOf("a"))) << text;
    }
    EXPECT_TRUE(ReadNativeText(kNativeHeader + "\n" + Row("a")).matches.empty());
}

TEST(NativeTableFiles, B12_ASecondLoadTakesTheLineBehindTheEmptyOneForAHeader)
{
    const TempFolder folder;
    folder.Write("t.txt", kNativeHeader + Row("a") + "\n" + kNativeHeader + Row("b") + "\n"
                              + Row("c") + Row("d"));
    std::vector<PeptideIdentification> matches;
    TulkTXTPepIdentIO reader;
    reader.InitLoad(SourceIn(folder.Path()));
    OutputOf([&] {
        reader.Load(matches);
        reader.Load(matches);
    });
    EXPECT_THAT(Dump(matches), ElementsAre(DumpOf("a"), DumpOf("b")));
    EXPECT_EQ(ThrownBy([&] { reader.Load(matches); }),
              (Thrown{"ElementNotFound", "PeptideIdentificationIO", kNativeLoad,
                      "the element 'Dataset Name' could not be found"}))
        << "a row is no header";
    EXPECT_EQ(matches.size(), 2u);
}

TEST(NativeTableFiles, TheLastRowNeedsNoLineFeed)
{
    std::string text = kNativeHeader + Row("a") + Row("b");
    text.pop_back();
    EXPECT_THAT(Dump(ReadNativeText(text).matches), ElementsAre(DumpOf("a"), DumpOf("b")));
}

TEST(NativeTableFiles, CarriageReturns)
{
    std::string text = kNativeHeader + Row("a") + Row("b");
    for (std::size_t feed = text.find('\n'); feed != std::string::npos;
         feed = text.find('\n', feed + 2)) {
        text.insert(feed, "\r");
    }
    EXPECT_THAT(Dump(ReadNativeText(text).matches), ElementsAre(DumpOf("a"), DumpOf("b")));
}

TEST(NativeTableFiles, LongestRow)
{
    for (const char* const end : {"\n", "\r\n"}) {
        const Reading reading =
            ReadNativeText(kNativeHeader + RowOfLength("a", kLongest) + end + Row("b"));
        EXPECT_EQ(reading.thrown, Thrown());
        EXPECT_THAT(Dump(reading.matches), ElementsAre(DumpOf("a"), DumpOf("b")));
    }
}

TEST(NativeTableFiles, AnOverlongRowIsTheLast)
{
    for (const std::size_t length : {kLongest + 1, kLongest + 2, std::size_t{400000}}) {
        const Reading reading =
            ReadNativeText(kNativeHeader + Row("a") + RowOfLength("b", length) + "\n" + Row("c"));
        EXPECT_EQ(reading.thrown, Thrown());
        EXPECT_THAT(Dump(reading.matches), ElementsAre(DumpOf("a"), DumpOf("b"))) << length;
    }
}

TEST(NativeTableFiles, OfAnOverlongRowTheFirst81919CharactersAreRead)
{
    std::string row = "d\t" + std::string(100000, 's');
    const Reading cut = ReadNativeText(kNativeHeader + row + "\n");
    EXPECT_EQ(cut.thrown.name, "ConversionError") << "its later cells are missing";
    row = Row("s");
    row.pop_back();
    row += "\t" + std::string(kLongest - row.size() - 1, 'x') + "y";
    const Reading last = ReadNativeText(kNativeHeader + row + "\n");
    EXPECT_THAT(Dump(last.matches), ElementsAre(DumpOf("s")));
    const std::string head = "d\ts\tSEQ\t2\t1\t0\t7\t1\t\t\t";
    const std::string accession(kLongest - head.size(), 'P');
    const Reading accessions = ReadNativeText(kNativeHeader + head + accession + "QQQ\tK\tA\t1\n");
    ASSERT_EQ(accessions.matches.size(), 1u);
    ASSERT_EQ(accessions.matches[0].vEvidences.size(), 1u);
    EXPECT_EQ(accessions.matches[0].vEvidences[0].strProteinAccession, accession);
}

TEST(NativeTableFiles, AHeaderIsReadWholeWhateverItsLengthAndItsBytes)
{
    for (const std::string& name :
         {std::string(90000, 'x'), std::string(700000, 'x'), std::string("A\0B", 3)}) {
        std::string behind = kNativeHeader;
        behind.insert(behind.size() - 1, "\t" + name);
        const std::string inFront = name + "\t" + kNativeHeader;
        for (const std::string& text :
             {behind + Row("a") + Row("b"), inFront + "more\t" + Row("a") + "more\t" + Row("b")}) {
            const Reading reading = ReadNativeText(text);
            EXPECT_EQ(reading.thrown, Thrown()) << name.size();
            EXPECT_THAT(Dump(reading.matches), ElementsAre(DumpOf("a"), DumpOf("b")))
                << name.size();
        }
    }
}

TEST(NativeTableFiles, EndLoadAndEndSaveWithoutAnythingOpenAreHarmless)
{
    const TempFolder folder;
    folder.Write("t.txt", kNativeHeader + Row("a"));
    TulkTXTPepIdentIO both;
    both.EndLoad();
    both.EndSave();
    both.EndSave();
    std::vector<PeptideIdentification> matches;
    both.InitLoad(SourceIn(folder.Path()));
    OutputOf([&] { both.Load(matches); });
    both.InitSave(folder.PathOf("out.txt"));
    OutputOf([&] { both.Save(matches); });
    both.EndSave();
    EXPECT_EQ(ReadFile(folder.PathOf("out.txt")).substr(0, kNativeHeader.size()), kNativeHeader);
}

} // namespace
} // namespace Vorlan::test
