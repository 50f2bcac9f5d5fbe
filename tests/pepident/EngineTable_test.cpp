// What the readers of tab-separated tables have in common: columns are found by
// their names, and texts that end too early do no harm.
#include "pepident/EngineTable.h"

#include <algorithm>
#include <string>
#include <vector>

#include "pepident/EngineTableExamples.h"
#include "support/ProcessEnd.h"
#include "util/LineReader.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

class EngineTables : public testing::TestWithParam<EngineTableExample> {
protected:
    static const Table& Columns() { return GetParam().table; }

    static std::vector<std::string> MatchesOf(const std::string& text)
    {
        const Reading reading = GetParam().Read(text);
        EXPECT_EQ(reading.thrown, Thrown());
        return FullDump(reading.matches);
    }

    /// The reader tells that the table has no such column, and reads nothing.
    static void ExpectMissing(const std::string& text, const std::string& column)
    {
        SCOPED_TRACE(column);
        if (GetParam().tellsOf.empty()) {
            const Reading reading = GetParam().Read(text);
            EXPECT_EQ(reading.thrown, (Thrown{"ElementNotFound", "PeptideIdentificationIO",
                                              "SequestTXTPepIdentIO::Load",
                                              "the element '" + column + "' could not be found"}));
            EXPECT_TRUE(reading.matches.empty());
            return;
        }
        const EngineFolder folder(GetParam().Files(text));
        const auto load = [&folder] {
            PeptideIdentificationIO* pReader = PepIdentIOFactory::pGetPepIdentIO(GetParam().type);
            std::vector<PeptideIdentification> matches;
            pReader->InitLoad(folder.Source());
            pReader->Load(matches);
        };
        ExpectEndOnOutput(load, "Error:\tCannot find the column \"" + column + "\" in the "
                                    + GetParam().tellsOf + "\n");
    }

    /// How a message names the column.
    static std::string Told(const std::string& column)
    {
        return column == "PrecursorError(ppm)" ? "PrecursorError" : column;
    }
};

TEST_P(EngineTables, EveryRowIsRead)
{
    EXPECT_EQ(MatchesOf(Columns().Text()).size(), 3u);
}

TEST_P(EngineTables, ColumnsMayStandInAnyOrder)
{
    const std::vector<std::string> plain = MatchesOf(Columns().Text());
    Table table = Columns();
    for (std::size_t turn = 0; turn < Columns().columns.size(); ++turn) {
        std::rotate(table.columns.begin(), table.columns.begin() + 1, table.columns.end());
        for (std::vector<std::string>& row : table.rows) {
            std::rotate(row.begin(), row.begin() + 1, row.end());
        }
        EXPECT_EQ(MatchesOf(table.Text()), plain) << table.columns[0];
    }
    std::reverse(table.columns.begin(), table.columns.end());
    for (std::vector<std::string>& row : table.rows) {
        std::reverse(row.begin(), row.end());
    }
    EXPECT_EQ(MatchesOf(table.Text()), plain);
}

TEST_P(EngineTables, FurtherColumnsAreNotRead)
{
    const std::vector<std::string> plain = MatchesOf(Columns().Text());
    Table table = Columns();
    table.columns.insert(table.columns.begin() + 2, "More");
    table.columns.emplace_back("");
    for (std::vector<std::string>& row : table.rows) {
        row.insert(row.begin() + 2, "x;y/z");
        row.emplace_back("7");
        row.emplace_back("a cell without a column");
    }
    EXPECT_EQ(MatchesOf(table.Text()), plain);
}

TEST_P(EngineTables, OfTwoColumnsWithOneNameTheFirstIsRead)
{
    const std::vector<std::string> plain = MatchesOf(Columns().Text());
    Table table = Columns();
    table.columns.insert(table.columns.end(), Columns().columns.begin(), Columns().columns.end());
    for (std::vector<std::string>& row : table.rows) {
        row.insert(row.end(), Columns().columns.size(), "1");
    }
    EXPECT_EQ(MatchesOf(table.Text()), plain);
}

TEST_P(EngineTables, B66_AMissingColumnIsTold)
{
    for (const std::string& column : Columns().columns) {
        ExpectMissing(Columns().Without(column).Text(), Told(column));
    }
}

TEST_P(EngineTables, OfTwoMissingColumnsTheFirstInTheOrderOfTheFormatIsTold)
{
    const std::vector<std::string>& names = Columns().columns;
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
        ExpectMissing(Columns().Without(names[i]).Without(names[i + 1]).Text(), Told(names[i]));
    }
}

TEST_P(EngineTables, NamesOfColumnsAreComparedByteByByte)
{
    const std::string last = Columns().columns.back();
    for (const std::string& name : {" " + last, last + " ", last + "x", std::string()}) {
        ExpectMissing(Columns().Renamed(last, name).Text(), Told(last));
    }
}

TEST_P(EngineTables, AnEmptyFileHasNoColumns)
{
    const std::string first = Told(Columns().columns[0]);
    ExpectMissing("", first);
    ExpectMissing("\n" + Columns().Text(), first);
    ExpectMissing(std::string(1, '\0') + Columns().Text(), first);
}

TEST_P(EngineTables, AHeaderAloneGivesNothing)
{
    std::string header = Columns().Header();
    EXPECT_THAT(MatchesOf(header), ElementsAre());
    header.pop_back();
    EXPECT_THAT(MatchesOf(header), ElementsAre()) << "without a line feed";
}

TEST_P(EngineTables, CarriageReturnsBeforeLineFeedsAreDropped)
{
    EXPECT_EQ(MatchesOf(Columns().Text("\r\n")), MatchesOf(Columns().Text()));
}

TEST_P(EngineTables, TheLastLineNeedsNoLineFeed)
{
    std::string text = Columns().Text();
    const std::vector<std::string> plain = MatchesOf(text);
    text.pop_back();
    EXPECT_EQ(MatchesOf(text), plain);
    text = Columns().Text("\r\n");
    text.pop_back();
    EXPECT_EQ(MatchesOf(text), plain) << "a return alone belongs to the last cell";
}

TEST_P(EngineTables, BlankLinesArePassedOver)
{
    const std::vector<std::string> plain = MatchesOf(Columns().Text());
    std::string text = Columns().Header();
    for (const std::vector<std::string>& row : Columns().rows) {
        text += "\n\n" + Table::Line(row) + "\n";
    }
    EXPECT_EQ(MatchesOf(text + "\n\n"), plain);
}

TEST_P(EngineTables, ATextCutBehindTheHeaderGivesFewerMatches)
{
    const std::string text = Columns().Text();
    const std::vector<std::string> plain = MatchesOf(text);
    for (std::size_t size = Columns().Header().size(); size < text.size(); ++size) {
        if (GetParam().isSecond && text[size - 1] == ';') {
            continue; // ends the process: an empty ID is 0 (B-62)
        }
        const Reading reading = GetParam().Read(text.substr(0, size));
        EXPECT_LE(reading.matches.size(), plain.size()) << size;
        const std::size_t rows = static_cast<std::size_t>(
            std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(size), '\n'));
        if (GetParam().isSecond || rows < 2) { // a row of peptides.txt may hold several matches
            continue;
        }
        const std::vector<std::string> whole = FullDump(reading.matches);
        ASSERT_GE(whole.size(), rows - 1) << size;
        EXPECT_TRUE(std::equal(plain.begin(), plain.begin() + static_cast<std::ptrdiff_t>(rows - 1),
                               whole.begin()))
            << "whole rows are read, cut at " << size;
    }
}

TEST_P(EngineTables, AHeaderThatIsCutLacksItsLastColumn)
{
    const std::string header = Columns().Header();
    const std::string last = Columns().columns.back();
    ExpectMissing(header.substr(0, 1), Told(Columns().columns[0]));
    ExpectMissing(header.substr(0, header.size() - last.size() - 2), Told(last));
    ExpectMissing(header.substr(0, header.size() - 2), Told(last));
}

TEST_P(EngineTables, ALineThatIsTooLongIsCutAndEndsTheReading)
{
    Table table = Columns();
    const std::size_t longRow = table.rows.size() - 2;
    const std::size_t length = Table::Line(table.rows[longRow]).size();
    table.columns.emplace_back("More");
    const auto read = [&](std::size_t characters) {
        table.rows[longRow].resize(Columns().columns.size());
        table.rows[longRow].emplace_back(characters - length - 1, 'x');
        return MatchesOf(table.Text());
    };
    const std::vector<std::string> plain = MatchesOf(Columns().Text());
    EXPECT_EQ(read(LineReader::kMaxLineLength), plain);
    const std::vector<std::string> cut = read(LineReader::kMaxLineLength + 1);
    ASSERT_EQ(cut.size(), 2u);
    EXPECT_TRUE(std::equal(cut.begin(), cut.end(), plain.begin())) << "the row itself is read";
}

TEST_P(EngineTables, AHeaderIsReadWholeWhateverItsLength)
{
    const std::vector<std::string> plain = MatchesOf(Columns().Text());
    for (const std::size_t length :
         {LineReader::kMaxLineLength, std::size_t{90000}, std::size_t{700000}}) {
        const std::string name(length, 'x');
        const Table inFront = Columns().WithInFront(name);
        Table behind = Columns();
        behind.columns.push_back(name);
        if (GetParam().BoundsItsHeader()) {
            EXPECT_THAT(MatchesOf(behind.Text()), ElementsAre()) << "the reading has ended";
            ExpectMissing(inFront.Text(), Told(Columns().columns[0]));
            continue;
        }
        EXPECT_EQ(MatchesOf(inFront.Text()), plain) << length;
        EXPECT_EQ(MatchesOf(behind.Text()), plain) << length;
        EXPECT_EQ(MatchesOf(inFront.Text("\r\n")), plain) << length;
    }
}

TEST_P(EngineTables, AHeaderDoesNotEndAtANul)
{
    const std::string text = Columns().WithInFront(std::string("A\0B", 3)).Text();
    if (GetParam().BoundsItsHeader()) {
        ExpectMissing(text, Told(Columns().columns[0]));
    } else {
        EXPECT_EQ(MatchesOf(text), MatchesOf(Columns().Text()));
    }
}

TEST_P(EngineTables, OneObjectReadsSeveralFilesBehindEndLoad)
{
    PeptideIdentificationIO* pReader = PepIdentIOFactory::pGetPepIdentIO(GetParam().type);
    Table table = Columns();
    const auto read = [&] {
        return FullDump(ReadEngineFiles(*pReader, GetParam().Files(table.Text())).matches);
    };
    const std::vector<std::string> plain = read();
    EXPECT_EQ(read(), plain);
    table.rows.pop_back();
    EXPECT_EQ(read().size(), 2u);
    PepIdentIOFactory::DesctroyPepIdentIO(pReader);
}

TEST_P(EngineTables, LoadingTwiceWithoutEndLoadIsNotReadable)
{
    const EngineFolder folder(GetParam().Files(Columns().Text()));
    PeptideIdentificationIO* pReader = PepIdentIOFactory::pGetPepIdentIO(GetParam().type);
    std::vector<PeptideIdentification> matches;
    Thrown thrown;
    OutputOf([&] {
        pReader->InitLoad(folder.Source());
        pReader->Load(matches);
        pReader->InitLoad(folder.Source());
        thrown = ThrownBy([&] { pReader->Load(matches); });
    });
    EXPECT_EQ(thrown.name, "FileNotReadable");
    EXPECT_EQ(matches.size(), 3u);
    PepIdentIOFactory::DesctroyPepIdentIO(pReader);
}

INSTANTIATE_TEST_SUITE_P(All, EngineTables, testing::ValuesIn(EngineTableExamples()),
                         [](const auto& example) { return example.param.testName; });

// ---- EngineTable ----------------------------------------------------------

const std::vector<EngineColumn> kColumns = {{"a"}, {"b", "other b", "told b"}};

TEST(EngineTable, CellsAreKnownByTheNumbersOfTheirColumns)
{
    EngineTable table("x\tb\ta", kColumns, "file");
    EXPECT_FALSE(table.HasOtherName(1));
    ASSERT_TRUE(table.Take("1\t2\t3"));
    EXPECT_EQ(table.Cell(0), "3");
    EXPECT_EQ(table.Cell(1), "2");
    ASSERT_TRUE(table.Take("1\t\t"));
    EXPECT_EQ(table.Cell(0), "");
}

TEST(EngineTable, ARowMustReachTheLastOfTheColumns)
{
    EngineTable table("x\tb\ta\ty", kColumns, "file");
    EXPECT_FALSE(table.Take(""));
    EXPECT_FALSE(table.Take("1\t2"));
    EXPECT_TRUE(table.Take("1\t2\t3"));
    EXPECT_TRUE(table.Take("1\t2\t3\t4\t5"));
}

TEST(EngineTable, TheOtherNameIsTakenWhereTheFirstIsMissing)
{
    EngineTable table("other b\ta", kColumns, "file");
    EXPECT_TRUE(table.HasOtherName(1));
    EXPECT_FALSE(table.HasOtherName(0));
    ASSERT_TRUE(table.Take("1\t2"));
    EXPECT_EQ(table.Cell(1), "1");
    EngineTable both("other b\ta\tb", kColumns, "file");
    EXPECT_FALSE(both.HasOtherName(1));
    ASSERT_TRUE(both.Take("1\t2\t3"));
    EXPECT_EQ(both.Cell(1), "3");
}

TEST(EngineTable, B66_TheToldNameStandsInTheMessage)
{
    ExpectEndOnOutput([] { EngineTable("a", kColumns, "file"); },
                      "Error:\tCannot find the column \"told b\" in the file\n");
    ExpectEndOnOutput([] { EngineTable("b", kColumns, "file"); },
                      "Error:\tCannot find the column \"a\" in the file\n");
}

} // namespace
} // namespace Vorlan::test
