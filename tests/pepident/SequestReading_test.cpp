// Tables of Sequest, read from files.
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "CStringProcess.h"
#include "pepident/EngineTableExamples.h"
#include "pepident/SequestRow.h"

namespace Vorlan::test {
namespace {

using sequest::ParseModification;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

Reading Read(const std::string& text)
{
    const Reading reading = ReadEngineText<SequestTXTPepIdentIO>({text});
    EXPECT_EQ(reading.output, "") << "this reader tells nothing";
    return reading;
}

/// The match of the first row with one cell changed.
std::string Match(const std::string& column, const std::string& cell)
{
    Table table = kSequestTable.With(column, cell);
    table.rows.resize(1);
    const Reading reading = Read(table.Text());
    return reading.matches.size() == 1 ? FullDump(reading.matches[0])
                                       : "no match" + reading.thrown.name;
}

const std::string kFirst = "sample.mgf|1405|PEPMK|2+|603.280000|shift 0.00125|score 2.5 high|"
                           "mz 302.143638|scan 1405|Oxidation@4 on  Anywhere +0.000000|"
                           "X.P1.X@-1|X.P2.X@-1";

TEST(SequestReading, WholeRows)
{
    EXPECT_THAT(FullDump(Read(kSequestTable.Text()).matches),
                ElementsAre(kFirst,
                            "sample.mgf|1406|SAMPLER|3+|803.400000|shift -0.25|score 1.5 high|"
                            "mz 268.471518|scan 1406|X.P3.X@-1",
                            "sample.mgf|1407|ACK|1+|335.200000|score 0.5 high|mz 335.2|scan 1407|"
                            "X.P3.X@-1"));
}

TEST(SequestReading, OnlyTheFirstRankIsRead)
{
    for (const char* const rank : {"1", "0", "-1", " 1 "}) {
        EXPECT_EQ(Match("Rank", rank), kFirst) << rank;
    }
    for (const char* const rank : {"2", "3", "2147483647"}) {
        EXPECT_EQ(Match("Rank", rank), "no match") << rank;
    }
    const Table table = kSequestTable.With("Rank", "2", 1).With("Charge", "no number", 1);
    EXPECT_EQ(Read(table.Text()).matches.size(), 2u) << "nothing else of the row is read";
}

TEST(SequestReading, QuotesAreDropped)
{
    Table table = kSequestTable;
    for (std::string& column : table.columns) {
        column = "\"" + column + "\"";
    }
    for (std::vector<std::string>& row : table.rows) {
        for (std::string& cell : row) {
            cell = "\"" + cell + "\"";
        }
    }
    const std::vector<std::string> plain = FullDump(Read(kSequestTable.Text()).matches);
    EXPECT_EQ(FullDump(Read(table.Text()).matches), plain);
    EXPECT_EQ(FullDump(Read(table.Text("\r\n")).matches), plain);
    EXPECT_THAT(Match("Sequence", "P\"EP\"\"MK"), HasSubstr("|PEPMK|"));
    EXPECT_EQ(Read(kSequestTable.Header() + "\"\"\n\"\r\n").matches.size(), 0u)
        << "a line of quotes is empty";
}

TEST(SequestReading, ACarriageReturnOfALastCellIsDropped)
{
    Table table = kSequestTable;
    std::swap(table.columns[0], table.columns[11]); // "Rank" is the last one
    for (std::vector<std::string>& row : table.rows) {
        std::swap(row[0], row[11]);
    }
    EXPECT_EQ(FullDump(Read(table.Text("\r\n")).matches),
              FullDump(Read(kSequestTable.Text()).matches));
}

TEST(SequestReading, AByteOrderMarkBelongsToTheFirstColumn)
{
    EXPECT_EQ(Read("\xEF\xBB\xBF" + kSequestTable.Text()).thrown.message,
              "the element 'Rank' could not be found");
}

TEST(SequestReading, B69_TheDatasetNameEndsAtTheFirstDot)
{
    const std::vector<std::pair<std::string, std::string>> cells = {
        {"sample.raw", "sample.mgf|"},
        {"a.b.raw", "a.mgf|"},
        {"sample", "sample.mgf|"},
        {".raw", ".mgf|"},
        {"", ".mgf|"},
    };
    for (const auto& [cell, file] : cells) {
        EXPECT_EQ(Match("Spectrum File", cell).substr(0, file.size()), file) << cell;
    }
}

TEST(SequestReading, B65_TextsStayAsTheyAre)
{
    EXPECT_THAT(Match("Protein Accessions", "P1; P2 ;P3"),
                EndsWith("|X.P1.X@-1|X. P2 .X@-1|X.P3.X@-1"));
    EXPECT_THAT(Match("Protein Accessions", "P1;"), EndsWith("|X.P1.X@-1|X..X@-1"));
    EXPECT_THAT(Match("Protein Accessions", ""), EndsWith("+0.000000"));
    EXPECT_THAT(Match("Modifications", "K5(b); M4(a);N-Term(c)"),
                HasSubstr("|b@5 on  Anywhere +0.000000|a@4 on  Anywhere +0.000000|"
                          "c@0 on  Anywhere +0.000000|"))
        << "in the order of the row";
}

TEST(SequestReading, EmptyLinesArePassedOver)
{
    EXPECT_EQ(Read(kSequestTable.Header() + "\n\r\n" + Table::Line(kSequestTable.rows[0]) + "\n\n")
                  .matches.size(),
              1u);
}

TEST(SequestReading, ACellThatIsNoNumberEndsTheReading)
{
    for (const char* const column :
         {"Rank", "First Scan", "XCorr", "Deltam/z [Da]", "MH+ [Da]", "Charge"}) {
        for (const char* const cell : {"", "x", "1,5"}) {
            const Reading reading = Read(kSequestTable.With(column, cell, 1).Text());
            EXPECT_EQ(reading.thrown.name, "ConversionError") << column << " " << cell;
            EXPECT_THAT(FullDump(reading.matches), ElementsAre(kFirst)) << "the rows before it";
        }
    }
    EXPECT_EQ(Read(kSequestTable.Header() + "1\tsample.raw\n").thrown.name, "ConversionError")
        << "a row that is too short";
}

TEST(SequestReading, ColumnsThatMustBeThereAreNotAllRead)
{
    EXPECT_EQ(Match("DeltaCn", "x"), kFirst);
    EXPECT_EQ(Match("Theo. MH+ [Da]", ""), kFirst);
}

// ---- Modifications --------------------------------------------------------

TEST(SequestReading, ModificationsOfTheCell)
{
    const std::vector<std::pair<std::string, std::string>> entries = {
        {"M5(Oxidation)", "Oxidation@5"},
        {" M5(Oxidation) ", "Oxidation@5"},
        {"N-Term(Acetyl)", "Acetyl@0"},
        {"N-Term(Prot)(Acetyl)", "Acetyl@0"},
        {"[N-Term](Acetyl)", "Acetyl@0"},
        {"K5(x N-Term)", "x N-Term@0"},
        {"K22(TMT6plex)", "TMT6plex@22"},
        {"M5(a", "@5"},
        {"M5(ab", "a@5"},
        {"M5()", "@5"},
        {"M 5 (a)", "a@5"},
        {"N-Term", "N-Ter@0"},
        {"M5", "M@5"},
    };
    for (const auto& [entry, mod] : entries) {
        EXPECT_EQ(FullDump(ParseModification(entry)), mod + " on  Anywhere +0.000000") << entry;
    }
}

TEST(SequestReading, B67_OnlyTheNTermHasNoNumber)
{
    for (const char* const entry : {"C-Term(Amidated)", "(a)", "M(Oxidation)", "MM5(a)", "M5(a)(b)",
                                    "M5 M6(a)", "n-term(Acetyl)", "", " "}) {
        EXPECT_EQ(ThrownBy([entry] { ParseModification(entry); }).name, "ConversionError") << entry;
    }
    const Reading reading = Read(kSequestTable.With("Modifications", "C-Term(Amidated)", 1).Text());
    EXPECT_EQ(reading.thrown.name, "ConversionError");
    EXPECT_EQ(reading.matches.size(), 1u);
    EXPECT_EQ(Match("Modifications", "M4(Oxidation);"), "no matchConversionError")
        << "an empty entry has none";
}

class SequestProbe : public SequestTXTPepIdentIO {
public:
    const std::ofstream& Output() const { return ofsOutput_; }
};

TEST(SequestReading, EndSaveForgetsAFailure)
{
    const TempFolder folder;
    SequestProbe writer;
    writer.InitSave(folder.PathOf("a"));
    writer.InitSave(folder.PathOf("b")); // the first one is open
    EXPECT_TRUE(writer.Output().fail());
    writer.EndSave();
    EXPECT_TRUE(writer.Output().good());
    EXPECT_FALSE(writer.Output().is_open());
}

} // namespace
} // namespace Vorlan::test
