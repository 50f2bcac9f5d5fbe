// Tables of MS-GF+, read from files.
#include <string>
#include <vector>

#include "param/ParameterText.h"
#include "pepident/EngineTableExamples.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

Reading Read(const EngineFiles& files)
{
    return ReadEngineText<MSGFTSVPepIdentIO>(files);
}

/// The first row of the example with one cell changed.
Table OneRow(const std::string& column, const std::string& cell)
{
    Table table = kMsgfTable.With(column, cell);
    table.rows.resize(1);
    return table;
}

std::string Match(const std::string& column, const std::string& cell)
{
    const Reading reading = Read({OneRow(column, cell).Text()});
    EXPECT_EQ(reading.thrown, Thrown()) << cell;
    return reading.matches.size() == 1 ? FullDump(reading.matches[0]) : "no match";
}

TEST(MsgfReading, WholeRows)
{
    EXPECT_THAT(
        FullDump(Read({kMsgfTable.Text()}).matches),
        ElementsAre("run01.mgf|1405|PEPMK|2+|603.192724|score 1e-12 low|mz 302.1|error 1.5 ppm|"
                    "scan 1405|K.P1.R@-1",
                    "run01.mgf|1406|SAMPLER|3+|803.185447|score 0.5 low|mz 268.4|error -2.25 ppm|"
                    "scan 1406|-.P1.A@-1|R.P2.-@-1",
                    "run01.mgf|1407|ACK|1+|335.200000|score 3 low|mz 335.2|error 0 ppm|scan 1407|"
                    "R.P3.G@-1"));
}

TEST(MsgfReading, AnErrorInDaltonIsKeptAsSuch)
{
    const Table table =
        OneRow("ScanNum", "1405").Renamed("PrecursorError(ppm)", "PrecursorError(Da)");
    const PeptideIdentification match = Read({table.Text()}).matches.at(0);
    EXPECT_EQ(match.dValue3, 1.5);
    EXPECT_EQ(match.nValue4, static_cast<std::uint64_t>(TolType::Da));
    Table both = table;
    both.columns.emplace_back("PrecursorError(ppm)");
    both.rows[0].emplace_back("9.5");
    const PeptideIdentification ppm = Read({both.Text()}).matches.at(0);
    EXPECT_EQ(ppm.dValue3, 9.5);
    EXPECT_EQ(ppm.nValue4, static_cast<std::uint64_t>(TolType::Ppm));
}

TEST(MsgfReading, NumbersAreReadAsFarAsTheyGo)
{
    EXPECT_THAT(Match("ScanNum", "-1"), testing::HasSubstr("|-1|PEPMK|2+|603.192724|"));
    EXPECT_THAT(Match("ScanNum", "-1"), testing::HasSubstr("|scan -1|"));
    EXPECT_THAT(Match("ScanNum", "12 of 3"), testing::HasSubstr("run01.mgf|12 of 3|PEPMK|"));
    EXPECT_THAT(Match("ScanNum", "12 of 3"), testing::HasSubstr("|scan 12|"));
    EXPECT_THAT(Match("ScanNum", "99999999999"), testing::HasSubstr("|scan 2147483647|"));
    EXPECT_THAT(Match("ScanNum", ""), testing::HasSubstr("run01.mgf||PEPMK|"));
    EXPECT_THAT(Match("Charge", "x"), testing::HasSubstr("|0+|0.000000|"));
    EXPECT_THAT(Match("Charge", "-1"), testing::HasSubstr("|18446744073709551615+|0.000000|"));
    EXPECT_THAT(Match("Precursor", "n/a"), testing::HasSubstr("|2+|-1.007276|"));
    EXPECT_THAT(Match("SpecEValue", "5.015813E-21"), testing::HasSubstr("|score 5.015813e-21 low"));
    EXPECT_THAT(Match("SpecEValue", ""), testing::HasSubstr("|score 0 low"));
}

TEST(MsgfReading, B59_TheDatasetIsAnMgf)
{
    EXPECT_EQ(Match("#SpecFile", "a.b.raw").substr(0, 13), "a.b.mgf|1405|");
    EXPECT_EQ(Match("#SpecFile", "run01").substr(0, 11), "run01|1405|");
}

TEST(MsgfReading, TheThreeFormsOfPeptideAndProtein)
{
    Table table = OneRow("Peptide", "K.PEPMK.R");
    EXPECT_THAT(FullDump(Read({table.With("Protein", "P1").Text()}).matches.at(0)),
                testing::HasSubstr("|PEPMK|2+|603.192724|score 1e-12 low|mz 302.1|error 1.5 ppm|"
                                   "scan 1405|K.P1.R@-1"));
    EXPECT_THAT(FullDump(Read({table.With("Protein", "[P.1]").Text()}).matches.at(0)),
                testing::EndsWith("|scan 1405|K.P.1.R@-1"));
    EXPECT_THAT(Match("Protein", "\"P1(pre=K,post=R);P2(pre=-,post=-)\""),
                testing::EndsWith("|scan 1405|K.P1.R@-1|-.P2.-@-1"));
}

TEST(MsgfReading, AShortRowGivesNothing)
{
    const std::string row = Table::Line(kMsgfTable.rows[0]);
    const std::string cut = row.substr(0, row.rfind('\t'));
    EXPECT_EQ(Read({kMsgfTable.Header() + cut + "\n" + row + "\n"}).matches.size(), 1u);
    EXPECT_EQ(Read({kMsgfTable.Header() + cut + "\t\n"}).matches.size(), 1u)
        << "an empty cell is one";
}

TEST(MsgfReading, CarriageReturnsAtTheEndOfARowAreDropped)
{
    const std::string row = Table::Line(kMsgfTable.rows[0]);
    const std::string plain = FullDump(Read({kMsgfTable.Header() + row}).matches.at(0));
    EXPECT_EQ(FullDump(Read({kMsgfTable.Header() + row + "\r"}).matches.at(0)), plain)
        << "without a line feed, too";
    EXPECT_EQ(FullDump(Read({kMsgfTable.Header() + row + "\r\r\n"}).matches.at(0)), plain);
}

// ---- Modifications --------------------------------------------------------

const std::string kList = "NumMods=2 # at most\n"
                          "# mass, residues, fix or opt, place, name\n"
                          "O1,M,opt,any,Oxidation # why\n"
                          "229.162932,*,fix,N-term,TMT6plex\n"
                          "229.162932,K,fix,any,TMT6plex\n";

TEST(MsgfReading, MassesOfTheListOfTheSearch)
{
    const Table table = OneRow("Peptide", "+229.163PEPM+15.995K+229.163");
    EXPECT_THAT(FullDump(Read({table.Text(), "mods.txt", kList}).matches),
                ElementsAre("run01.mgf|1405|PEPMK|2+|603.192724|score 1e-12 low|mz 302.1|"
                            "error 1.5 ppm|scan 1405|"
                            "TMT6plex@0 on N-term Any N-term +229.162932|"
                            "Oxidation@4 on M Anywhere +15.994915|"
                            "TMT6plex@5 on K Anywhere +229.162932|K.P1.R@-1"));
}

TEST(MsgfReading, AnUnknownMassEndsTheReading)
{
    const Table table = kMsgfTable.With("Peptide", "SAM+15.996PLER", 1);
    const Reading reading = Read({table.Text(), "mods.txt", kList});
    EXPECT_EQ(reading.thrown,
              (Thrown{"InvalidValue", "PeptideIdentificationIO", "MSGFTSVPepIdentIO::Load",
                      "the value '+15.996' was used but is not valid; Unexpected modification mass "
                      "in \"Peptide\" in .tsv file"}));
    EXPECT_EQ(reading.matches.size(), 1u) << "the rows before it";
}

TEST(MsgfReading, AListThatIsNotThere)
{
    const TempFolder folder;
    folder.Write("result", kMsgfTable.Text());
    PepIdentSource source(folder.Path(), "result", PepIdentType::MsgfTsv);
    source.strThird = folder.Path() + "\\\\";
    source.strFourth = "mods.txt";
    MSGFTSVPepIdentIO reader;
    std::vector<PeptideIdentification> matches;
    reader.InitLoad(source);
    EXPECT_EQ(ThrownBy([&] { reader.Load(matches); }),
              (Thrown{"FileNotReadable", "PeptideIdentificationIO", "MSGFTSVPepIdentIO::Load",
                      "the file '" + folder.Path()
                          + "\\mods.txt' is not readable for the current user"}));
    EXPECT_TRUE(matches.empty());
}

TEST(MsgfReading, AFolderWithoutANameIsNoList)
{
    const TempFolder folder;
    folder.Write("result", kMsgfTable.Text());
    PepIdentSource source(folder.Path(), "result", PepIdentType::MsgfTsv);
    source.strThird = "/no/folder";
    MSGFTSVPepIdentIO reader;
    std::vector<PeptideIdentification> matches;
    OutputOf([&] {
        reader.InitLoad(source);
        reader.Load(matches);
    });
    EXPECT_EQ(matches.size(), 3u);
}

TEST(MsgfReading, AListIsOfItsOwnReading)
{
    const Table table = OneRow("Peptide", "PEPK+229.163");
    MSGFTSVPepIdentIO reader;
    EXPECT_EQ(ReadEngineFiles(reader, {table.Text(), "mods.txt", kList}).matches.size(), 1u);
    EXPECT_EQ(ReadEngineFiles(reader, {table.Text()}).thrown.name, "InvalidValue");
}

class MsgfSpecified : public ParameterTest {};

TEST_F(MsgfSpecified, WithoutAListTheSpecifiedModificationsAreMeant)
{
    const EngineFiles files = {OneRow("Peptide", "+2.0PEPM+15.995C+57.021K").Text()};
    EXPECT_EQ(Read(FullParameters()), Thrown());
    const Reading reading = ReadEngineText<MSGFTSVPepIdentIO>(files);
    ASSERT_EQ(reading.thrown, Thrown());
    EXPECT_THAT(FullDump(reading.matches.at(0).vMods),
                ElementsAre("Cap@0 on N-term Protein N-term +2.000000",
                            "Oxidation@4 on M Anywhere +15.994915",
                            "Carbamidomethyl@5 on C Anywhere +57.021464"));
    EXPECT_EQ(ReadEngineText<MSGFTSVPepIdentIO>({files.text, "mods.txt", kList}).thrown.message,
              "the value '+2.0' was used but is not valid; Unexpected modification mass in "
              "\"Peptide\" in .tsv file")
        << "a list stands alone";
}

// ---- Progress -------------------------------------------------------------

std::string OutputOfRows(std::size_t rows, const std::string& more = "")
{
    return Read({kMsgfTable.Header() + Repeat(Table::Line(kMsgfTable.rows[0]) + "\n", rows) + more})
        .output;
}

TEST(MsgfReading, ProgressIsOverwrittenAndErased)
{
    EXPECT_EQ(OutputOfRows(0), "");
    EXPECT_EQ(OutputOfRows(1), "1/1 (100%)\b\b\b\b\b\b\b\b\b\b          \b\b\b\b\b\b\b\b\b\b");
    EXPECT_EQ(OutputOfRows(1001),
              Shown("1000/1001 (99%)") + Shown("1001/1001 (100%)") + Erased("1001/1001 (100%)"));
    EXPECT_EQ(OutputOfRows(2500), Shown("1000/2500 (40%)") + Shown("2000/2500 (80%)")
                                      + Shown("2500/2500 (100%)") + Erased("2500/2500 (100%)"));
}

TEST(MsgfReading, RowsThatGiveNothingCountForTheProgress)
{
    EXPECT_EQ(OutputOfRows(1, "\nshort\n"), Shown("3/3 (100%)") + Erased("3/3 (100%)"));
}

TEST(MsgfReading, ALastRowWithoutLineFeedIsNotCounted)
{
    EXPECT_EQ(OutputOfRows(2, "short"), Shown("2/2 (100%)") + Erased("2/2 (100%)"));
}

TEST(MsgfReadingAlone, NothingIsErasedBehindAnException)
{
    EXPECT_EQ(Read({OneRow("Peptide", "PEP+1K").Text()}).output, "1/1 (100%)");
}

TEST(MsgfReading, TheWrongCharactersOfAListAreToldFirst)
{
    const Table table = OneRow("ScanNum", "1");
    EXPECT_EQ(Read({table.Text(), "mods.txt", "C1?,K,opt,any,A\n"}).output,
              "Unexpected Charactor in modification composition\n" + Shown("1/1 (100%)")
                  + Erased("1/1 (100%)"));
}

} // namespace
} // namespace Vorlan::test
