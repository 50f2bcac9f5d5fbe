// The database as a whole: its members, their order, and what it prints.
#include <iostream>
#include <sstream>
#include <string>

#include <sys/stat.h>

#include "proteindb/FastaProbe.h"
#include "support/OpenFiles.h"
#include "support/Printed.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

const char* const kNoFile = "Can't find fasta file!\n";
const char* const kNotLoaded = "Can not open Fasta file!\n";
const char* const kFalseStart = "FASTA Format error!One Protein Entry must start with char '>'!\n"
                                "Error: Fasta file format is wrong!\n";

/// What a call prints on both streams, in the order in which it does.
template <typename Call>
std::string PrintedInOrderBy(Call call)
{
    std::ostringstream both;
    std::streambuf* const out = std::cout.rdbuf(both.rdbuf());
    std::streambuf* const err = std::cerr.rdbuf(both.rdbuf());
    call();
    std::cout.rdbuf(out);
    std::cerr.rdbuf(err);
    return both.str();
}

/// Everything that is left of a database without proteins.
void ExpectEmpty(const DatabaseProbe& database)
{
    EXPECT_EQ(database.GetEntryNum(), 0u);
    EXPECT_TRUE(database.cProteins().empty());
    EXPECT_EQ(database.GetProteinString(), "");
    EXPECT_EQ(database.cProteinString(), "");
    EXPECT_TRUE(database.Starts().empty());
    EXPECT_TRUE(database.Bins().empty());
    CProtein protein("a", "b", "C");
    std::uint64_t start = 77;
    EXPECT_FALSE(database.Query("K", 0, protein, start));
    EXPECT_EQ(Dump(protein), "a|b|C");
    EXPECT_EQ(start, 77u);
}

class FastaProteinDB : public testing::Test {
protected:
    /// Loads and compares what is printed on both streams.
    bool Load(const std::string& path, const std::string& out = "", const std::string& err = "")
    {
        database_.SetDBPath(path);
        bool isLoaded = false;
        const Printed printed = PrintedBy([&] { isLoaded = database_.ReadFromFile(); });
        EXPECT_EQ(printed.out, out);
        EXPECT_EQ(printed.err, err);
        EXPECT_FALSE(database_.IsOpen()) << "the file is closed again";
        return isLoaded;
    }

    std::string TwoProteins() const { return folder_.Write("two.fasta", ">P1 x\nAAA\n>P2\nCC\n"); }

    const TempFolder folder_;
    DatabaseProbe database_;
};

TEST_F(FastaProteinDB, IsEmptyAtFirst)
{
    EXPECT_EQ(database_.GetDBName(), "");
    EXPECT_EQ(database_.GetDBPath(), "");
    EXPECT_EQ(database_.BinWidth(), 2000u);
    EXPECT_FALSE(database_.IsOpen());
    ExpectEmpty(database_);
}

TEST_F(FastaProteinDB, NameAndPathAreKeptAsGiven)
{
    database_.SetDBName("my proteins");
    database_.SetDBPath("a\\b/c.fasta");
    EXPECT_EQ(database_.GetDBName(), "my proteins");
    EXPECT_EQ(database_.GetDBPath(), "a\\b/c.fasta");
    database_.SetDBName("");
    EXPECT_EQ(database_.GetDBName(), "");
    EXPECT_EQ(database_.GetDBPath(), "a\\b/c.fasta");
}

TEST_F(FastaProteinDB, LoadsProteinsAndLaysThemEndToEnd)
{
    ASSERT_TRUE(Load(TwoProteins()));
    EXPECT_EQ(database_.GetEntryNum(), 2u);
    EXPECT_THAT(Dump(database_.cProteins()), ElementsAre("P1|x|AAA", "P2||CC"));
    EXPECT_EQ(database_.cProteinString(), "AAA;CC;");
    EXPECT_EQ(database_.GetProteinString(), "AAA;CC;");
    EXPECT_THAT(database_.Starts(), ElementsAre(0, 4));
    EXPECT_THAT(database_.Bins(), ElementsAre(0));
    EXPECT_EQ(database_.GetDBPath(), folder_.PathOf("two.fasta"));
}

TEST_F(FastaProteinDB, TheConcatenationIsGivenAsACopyAndInPlace)
{
    ASSERT_TRUE(Load(TwoProteins()));
    std::string copy = database_.GetProteinString();
    copy[0] = 'x';
    EXPECT_EQ(database_.cProteinString(), "AAA;CC;");
    EXPECT_EQ(&database_.cProteinString(), &database_.cProteinString());
    EXPECT_EQ(&database_.cProteins(), &database_.cProteins());
}

TEST_F(FastaProteinDB, ThePathIsResolved)
{
    TwoProteins();
    EXPECT_TRUE(Load(folder_.Path() + "\\two.fasta"));
    EXPECT_EQ(database_.GetEntryNum(), 2u);
    EXPECT_EQ(database_.GetDBPath(), folder_.Path() + "\\two.fasta");
    std::filesystem::create_directories(folder_.PathOf("a/b"));
    folder_.Write("a/b/one.fasta", ">P\n");
    EXPECT_TRUE(Load(folder_.Path() + "\\a\\b\\one.fasta"));
    EXPECT_EQ(database_.GetEntryNum(), 1u);
}

TEST_F(FastaProteinDB, ALinkToAFileIsLoaded)
{
    std::filesystem::create_symlink(TwoProteins(), folder_.PathOf("link"));
    EXPECT_TRUE(Load(folder_.PathOf("link")));
    EXPECT_EQ(database_.GetEntryNum(), 2u);
}

// ---- What cannot be opened -------------------------------------------------

TEST_F(FastaProteinDB, WithoutAPathItSaysSo)
{
    EXPECT_FALSE(Load("", "DBPath empty!\n", kNotLoaded));
    ExpectEmpty(database_);
    const Printed printed = PrintedBy([&] { EXPECT_FALSE(database_.OpenFile()); });
    EXPECT_EQ(printed.out, "DBPath empty!\n");
    EXPECT_EQ(printed.err, "");
}

TEST_F(FastaProteinDB, WhatIsNoFileWithAnEndIsNotOpened)
{
    const std::string pipe = folder_.PathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_directory_symlink(folder_.Path(), folder_.PathOf("link"));
    std::filesystem::create_symlink("nowhere", folder_.PathOf("broken"));
    for (const std::string& path :
         {folder_.PathOf("missing"), folder_.Path(), folder_.Path() + "\\", folder_.PathOf("link"),
          folder_.PathOf("broken"), pipe, std::string("/dev/zero"), std::string("/dev/null"),
          TwoProteins() + '\0', TwoProteins() + "/x", folder_.PathOf(std::string(10000, 'x'))}) {
        EXPECT_FALSE(Load(path, kNoFile, kNotLoaded)) << path;
        ExpectEmpty(database_);
        const Printed printed = PrintedBy([&] { EXPECT_FALSE(database_.OpenFile()) << path; });
        EXPECT_EQ(printed.out, kNoFile) << path;
        EXPECT_EQ(printed.err, "") << path;
    }
}

TEST_F(FastaProteinDB, TheReasonIsToldBeforeTheFailure)
{
    const auto load = [this] { EXPECT_FALSE(database_.ReadFromFile()); };
    EXPECT_EQ(PrintedInOrderBy(load), std::string("DBPath empty!\n") + kNotLoaded);
    database_.SetDBPath(folder_.PathOf("missing"));
    EXPECT_EQ(PrintedInOrderBy(load), std::string(kNoFile) + kNotLoaded);
}

// ---- OpenFile and CloseFile ------------------------------------------------

TEST_F(FastaProteinDB, OpenFileOpensAndCloseFileCloses)
{
    database_.SetDBPath(TwoProteins());
    const auto before = OpenFileCount();
    const Printed printed = PrintedBy([&] { EXPECT_TRUE(database_.OpenFile()); });
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_TRUE(database_.IsOpen());
    EXPECT_TRUE(database_.OpenFile()) << "once more";
    EXPECT_TRUE(OpenFileCount() == before + 1 || before == 0) << "what was open is closed";
    ExpectEmpty(database_);
    database_.CloseFile();
    database_.CloseFile();
    EXPECT_FALSE(database_.IsOpen());
    EXPECT_EQ(OpenFileCount(), before);
    EXPECT_TRUE(database_.OpenFile()) << "and again";
    EXPECT_TRUE(database_.IsOpen());
}

TEST_F(FastaProteinDB, OpenFileThatFailsClosesWhatWasOpen)
{
    const std::string good = TwoProteins();
    for (const std::string& bad : {folder_.PathOf("missing"), std::string()}) {
        database_.SetDBPath(good);
        ASSERT_TRUE(database_.OpenFile());
        database_.SetDBPath(bad);
        OutputOf([&] { EXPECT_FALSE(database_.OpenFile()); });
        EXPECT_FALSE(database_.IsOpen()) << bad;
    }
}

TEST_F(FastaProteinDB, OpenFileKeepsWhatWasLoaded)
{
    ASSERT_TRUE(Load(TwoProteins()));
    EXPECT_TRUE(database_.OpenFile());
    EXPECT_EQ(database_.GetEntryNum(), 2u);
    database_.CloseFile();
    EXPECT_EQ(database_.cProteinString(), "AAA;CC;");
}

TEST_F(FastaProteinDB, ReadFromFileOpensTheFileItself)
{
    database_.SetDBPath(TwoProteins());
    ASSERT_TRUE(database_.OpenFile());
    EXPECT_TRUE(database_.ReadFromFile());
    EXPECT_EQ(database_.GetEntryNum(), 2u);
    EXPECT_FALSE(database_.IsOpen());
}

// ---- A second file ---------------------------------------------------------

TEST_F(FastaProteinDB, ASecondLoadForgetsTheFirst)
{
    ASSERT_TRUE(Load(folder_.Write("large.fasta", ">L\n" + std::string(9000, 'L') + "\n")));
    EXPECT_EQ(database_.Bins().size(), 5u);
    ASSERT_TRUE(Load(TwoProteins()));
    EXPECT_THAT(Dump(database_.cProteins()), ElementsAre("P1|x|AAA", "P2||CC"));
    EXPECT_EQ(database_.cProteinString(), "AAA;CC;");
    EXPECT_THAT(database_.Starts(), ElementsAre(0, 4));
    EXPECT_THAT(database_.Bins(), ElementsAre(0));
    ASSERT_TRUE(Load(folder_.Write("empty.fasta", "")));
    ExpectEmpty(database_);
}

TEST_F(FastaProteinDB, AFailingLoadChangesNothing)
{
    ASSERT_TRUE(Load(TwoProteins()));
    const auto expectTwoProteins = [this](const char* reason) {
        EXPECT_THAT(Dump(database_.cProteins()), ElementsAre("P1|x|AAA", "P2||CC")) << reason;
        EXPECT_EQ(database_.cProteinString(), "AAA;CC;") << reason;
        EXPECT_THAT(database_.Starts(), ElementsAre(0, 4)) << reason;
        EXPECT_THAT(database_.Bins(), ElementsAre(0)) << reason;
        CProtein protein;
        std::uint64_t start = 77;
        EXPECT_TRUE(database_.Query("CC", 5, protein, start)) << reason;
        EXPECT_EQ(Dump(protein), "P2||CC") << reason;
    };
    EXPECT_FALSE(Load("", "DBPath empty!\n", kNotLoaded));
    expectTwoProteins("no path");
    EXPECT_FALSE(Load(folder_.PathOf("missing"), kNoFile, kNotLoaded));
    expectTwoProteins("a missing file");
    EXPECT_FALSE(Load(folder_.Write("false.fasta", "AAA\n>P\nK\n"), kFalseStart));
    expectTwoProteins("a first line that is no header");
    ASSERT_TRUE(Load(folder_.Write("one.fasta", ">P3\nMK\n"))) << "and a good one behind it";
    EXPECT_EQ(database_.cProteinString(), "MK;");
}

TEST_F(FastaProteinDB, TheSameFileTwiceGivesTheSame)
{
    ASSERT_TRUE(Load(TwoProteins()));
    ASSERT_TRUE(Load(TwoProteins()));
    EXPECT_EQ(database_.GetEntryNum(), 2u);
    EXPECT_EQ(database_.cProteinString(), "AAA;CC;");
}

// ---- Files without a header first ------------------------------------------

TEST_F(FastaProteinDB, B78_AFileWithoutHeadersIsAnEmptyDatabase)
{
    for (const char* const text : {"", "AAA\nCCC\n", "AAA", "\n\n\n", "\r\n", " >P1\nAAA\n",
                                   "A>B\n", "\xEF\xBB\xBF", "BEGIN IONS\n1 2\nEND IONS\n"}) {
        EXPECT_TRUE(Load(folder_.Write("a.fasta", text))) << text;
        ExpectEmpty(database_);
    }
}

TEST_F(FastaProteinDB, AFirstLineThatIsNoHeaderFailsWhenALaterOneIs)
{
    for (const char* const text :
         {"AAA\n>P1\nK\n", "\n>P1\nK\n", "\r\n>P1\r\nK\r\n", " >P1\n>P2\n", "; comment\n>P1\nK\n",
          "\xEF\xBB\xBF\n>P1\n", "\xBB\xBF>P1\n>P2\n", "a\nb\nc\n>"}) {
        EXPECT_FALSE(Load(folder_.Write("a.fasta", text), kFalseStart)) << text;
        ExpectEmpty(database_);
    }
}

// ---- The table -------------------------------------------------------------

TEST_F(FastaProteinDB, TheTableHasABinForEvery2000Characters)
{
    const std::string text =
        ">A\n" + std::string(1999, 'A') + "\n>B\n" + std::string(4500, 'C') + "\n>C\nK\n>D\nM\n";
    ASSERT_TRUE(Load(folder_.Write("a.fasta", text)));
    EXPECT_THAT(database_.Starts(), ElementsAre(0, 2000, 6501, 6503));
    EXPECT_THAT(database_.Bins(), ElementsAre(0, 1, 2, 2));
}

TEST_F(FastaProteinDB, CreateHashTableMakesTheSameAgain)
{
    database_.CreateHashTable();
    EXPECT_TRUE(database_.Bins().empty()) << "nothing without proteins";
    ASSERT_TRUE(Load(TwoProteins()));
    database_.CreateHashTable();
    EXPECT_THAT(database_.Bins(), ElementsAre(0));
}

} // namespace
} // namespace Vorlan::test
