// msms.txt and peptides.txt of MaxQuant, read from files.
#include <string>
#include <utility>
#include <vector>

#include "param/ParameterText.h"
#include "pepident/EngineTableExamples.h"
#include "pepident/MaxQuantRow.h"
#include "support/ProcessEnd.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

EngineFiles Files(const Table& matches, const Table& peptides = kPeptidesTable)
{
    return {matches.Text(), "peptides.txt", peptides.Text()};
}

Reading Read(const Table& matches, const Table& peptides = kPeptidesTable)
{
    return ReadEngineText<MaxQuantTXTPepIdentIO>(Files(matches, peptides));
}

/// A peptides.txt with a row for each list of "MS/MS IDs".
Table Peptides(const std::vector<std::string>& lists)
{
    Table table = kPeptidesTable;
    table.rows.clear();
    for (const std::string& list : lists) {
        table.rows.push_back({"K", "A", "P" + std::to_string(table.rows.size() + 1), list});
    }
    return table;
}

std::vector<std::string> ScansOf(const Reading& reading)
{
    std::vector<std::string> scans;
    for (const PeptideIdentification& match : reading.matches) {
        scans.push_back(match.strSpectrumName);
    }
    return scans;
}

TEST(MaxQuantReadingAlone, WholeRows)
{
    const Reading reading = Read(kMatchTable);
    EXPECT_EQ(reading.thrown, Thrown());
    EXPECT_THAT(
        FullDump(reading.matches),
        ElementsAre(
            "run01.mgf|1405|PEPMK|2+|603.192724|score 80.5 high|mz 302.1|rt 750|"
            "error 1.5 ppm|scan 1405|Oxidation (M)@4 on M Anywhere +0.000000|"
            "K.P1.A@-1|K.P2.A@-1",
            "run01.mgf|1406|PEPMK|3+|603.085447|score 10 high|mz 201.7|rt 780|"
            "error -2.25 ppm|scan 1406|K.P1.A@-1|K.P2.A@-1",
            "run02.mgf|7|SAMPLER|2+|803.392724|score 1 high|mz 402.2|rt 30|error 0 ppm|scan 7|"
            "decoy|-.DECOY.-@-1"));
}

TEST(MaxQuantReading, B69_TheDatasetNameEndsAtTheFirstDot)
{
    const std::vector<std::pair<std::string, std::string>> cells = {
        {"run01", "run01.mgf"},  {"run01.raw", "run01.mgf"}, {"a.b.raw", "a.mgf"},
        {"run01.", "run01.mgf"}, {".raw", ".mgf"},           {"", ".mgf"},
    };
    for (const auto& [cell, file] : cells) {
        EXPECT_EQ(maxquant::SpectrumFile(cell), file) << cell;
        EXPECT_EQ(Read(kMatchTable.With("Raw file", cell)).matches.at(0).strDatasetName, file);
    }
}

TEST(MaxQuantReading, B61_ADecoyHasOneProtein)
{
    for (const char* const cell : {"+", "-", " ", "no"}) {
        const PeptideIdentification match = Read(kMatchTable.With("Reverse", cell)).matches.at(0);
        EXPECT_TRUE(match.bDecoy) << cell;
        ASSERT_EQ(match.vEvidences.size(), 1u) << cell;
        EXPECT_EQ(Dump(match.vEvidences[0]), "-.DECOY.-@-1") << cell;
    }
    EXPECT_FALSE(Read(kMatchTable).matches.at(0).bDecoy);
}

TEST(MaxQuantReading, ProteinsAreThoseOfThePeptide)
{
    const auto evidences = [](const std::string& column, const std::string& cell) {
        return FullDump(Read(kMatchTable, kPeptidesTable.With(column, cell)).matches.at(1));
    };
    EXPECT_THAT(evidences("Proteins", "P9"), testing::EndsWith("|scan 1406|K.P9.A@-1"));
    EXPECT_THAT(evidences("Proteins", ""), testing::EndsWith("|scan 1406")) << "none";
    EXPECT_THAT(evidences("Proteins", "P9;"), testing::EndsWith("|scan 1406|K.P9.A@-1|K..A@-1"));
    EXPECT_THAT(evidences("Amino acid before", ""),
                testing::EndsWith("|scan 1406|X.P1.A@-1|X.P2.A@-1"));
    EXPECT_THAT(evidences("Amino acid after", "_R"),
                testing::EndsWith("|scan 1406|K.P1._@-1|K.P2._@-1"));
}

TEST(MaxQuantReading, BothSpellingsOfTheMassError)
{
    const Table newer = kMatchTable.Renamed("Mass Error [ppm]", "Mass error [ppm]");
    EXPECT_EQ(FullDump(Read(newer).matches), FullDump(Read(kMatchTable).matches));
    Table both = newer;
    both.columns.emplace_back("Mass Error [ppm]");
    for (std::vector<std::string>& row : both.rows) {
        row.emplace_back("4.5");
    }
    EXPECT_EQ(Read(both).matches.at(0).dValue3, 4.5);
}

TEST(MaxQuantReading, NumbersAreReadAsFarAsTheyGo)
{
    const auto match = [](const std::string& column, const std::string& cell) {
        return FullDump(Read(kMatchTable.With(column, cell)).matches.at(0));
    };
    EXPECT_THAT(match("Mass Error [ppm]", "NaN"), testing::HasSubstr("|error nan ppm|"));
    EXPECT_THAT(match("Score", "x"), testing::HasSubstr("|score 0 high|"));
    EXPECT_THAT(match("Scan number", "5 x"), testing::HasSubstr("|scan 5|"));
    EXPECT_THAT(match("Charge", ""), testing::HasSubstr("|0+|0.000000|"));
    EXPECT_THAT(match("Retention time", "0.091825"), testing::HasSubstr("|rt 5.5095|"));
}

/// Reading the files ends the process.
void ExpectEnd(const EngineFiles& files, const std::string& output)
{
    const EngineFolder folder(files);
    const auto load = [&folder] {
        MaxQuantTXTPepIdentIO reader;
        std::vector<PeptideIdentification> matches;
        reader.InitLoad(folder.Source());
        reader.Load(matches);
    };
    ExpectEndOnOutput(load, output);
}

TEST(MaxQuantReading, B66_ColumnsOfTheMatchesAreLookedAtBeforeThoseOfThePeptides)
{
    ExpectEnd(Files(kMatchTable.Without("Modified sequence"),
                    kPeptidesTable.Without("Amino acid before")),
              "Error:\tCannot find the column \"Modified sequence\" in the msms.txt\n");
}

// ---- The order of the rows ------------------------------------------------

TEST(MaxQuantReading, B62_RowsAreListedInTheirOrder)
{
    EXPECT_THAT(ScansOf(Read(kMatchTable, Peptides({"0", "1", "2"}))),
                ElementsAre("1405", "1406", "7"));
    EXPECT_THAT(ScansOf(Read(kMatchTable, Peptides({"0;1;2"}))), ElementsAre("1405", "1406", "7"));
    EXPECT_THAT(ScansOf(Read(kMatchTable, Peptides({"", "0;1", "", "2"}))),
                ElementsAre("1405", "1406", "7"))
        << "peptides without rows";
    EXPECT_THAT(ScansOf(Read(kMatchTable, Peptides({" 0x;01", "+2"}))),
                ElementsAre("1405", "1406", "7"))
        << "numbers are read as far as they go";
}

TEST(MaxQuantReading, B62_AnyOtherOrderEndsTheProcess)
{
    const std::vector<std::pair<std::string, std::vector<std::string>>> lists = {
        {"starting at 1", {"1;2;3"}},
        {"a gap", {"0;2"}},
        {"a gap between rows", {"0", "2"}},
        {"turned round", {"1;0"}},
        {"rows out of order", {"1;2", "0"}},
        {"twice", {"0;0"}},
        {"an empty ID is 0", {"0;"}},
        {"no number is 0", {"0;x"}},
        {"negative", {"-1"}},
    };
    for (const auto& [reason, rows] : lists) {
        SCOPED_TRACE(reason);
        ExpectEnd(Files(kMatchTable, Peptides(rows)),
                  "Error:\t\"MS/MS IDs\" in the peptides.txt arranged in unexpected way.\n");
    }
}

TEST(MaxQuantReading, IdsWithoutRowsAreNotLookedAt)
{
    const Reading reading = Read(kMatchTable, Peptides({"0;1;2;3;9;x", "4", "0"}));
    EXPECT_EQ(reading.thrown, Thrown());
    EXPECT_THAT(ScansOf(reading), ElementsAre("1405", "1406", "7"));
    EXPECT_EQ(reading.matches[2].vEvidences.size(), 1u);
}

TEST(MaxQuantReading, RowsThatNoPeptideListsAreNotRead)
{
    EXPECT_THAT(ScansOf(Read(kMatchTable, Peptides({"0;1"}))), ElementsAre("1405", "1406"));
    EXPECT_THAT(ScansOf(Read(kMatchTable, Peptides({}))), ElementsAre());
    EXPECT_THAT(ScansOf(Read(kMatchTable, Peptides({"", ""}))), ElementsAre());
}

TEST(MaxQuantReading, ShortRowsCountAndGiveNothing)
{
    std::string text = kMatchTable.Header() + "run01\tSHORT\n";
    for (const std::vector<std::string>& row : kMatchTable.rows) {
        text += Table::Line(row) + "\n";
    }
    EXPECT_THAT(ScansOf(ReadEngineText<MaxQuantTXTPepIdentIO>(
                    {text, "peptides.txt", Peptides({"0;1", "2;3"}).Text()})),
                ElementsAre("1405", "1406", "7"));
}

TEST(MaxQuantReading, BlankLinesDoNotCount)
{
    const std::string row = Table::Line(kMatchTable.rows[1]) + "\n";
    EXPECT_THAT(ScansOf(ReadEngineText<MaxQuantTXTPepIdentIO>(
                    {kMatchTable.Header() + "\n" + row + "\n\n" + row, "peptides.txt",
                     Peptides({"0", "1"}).Text()})),
                ElementsAre("1406", "1406"));
}

TEST(MaxQuantReading, ShortRowsOfPeptidesAreNotRead)
{
    EXPECT_THAT(ScansOf(ReadEngineText<MaxQuantTXTPepIdentIO>(
                    {kMatchTable.Text(), "peptides.txt",
                     kPeptidesTable.Header() + "K\tA\tP1\nK\n\nK\tA\tP1\t0;1\n"})),
                ElementsAre("1405", "1406"));
}

// ---- The second file ------------------------------------------------------

class MaxQuantFiles : public testing::Test {
protected:
    /// Reads msms.txt of folder a; the second file by its folder and name.
    Thrown Load(const std::string& folder, const std::string& name)
    {
        PepIdentSource source(folder_.Path() + "/a\\", "msms.txt", PepIdentType::MaxQuant);
        source.strThird = folder;
        source.strFourth = name;
        MaxQuantTXTPepIdentIO reader;
        std::vector<PeptideIdentification> matches;
        Thrown thrown;
        OutputOf([&] {
            thrown = ThrownBy([&] {
                reader.InitLoad(source);
                reader.Load(matches);
            });
        });
        EXPECT_EQ(matches.size(), thrown == Thrown() ? 3u : 0u);
        return thrown;
    }

    MaxQuantFiles()
    {
        std::filesystem::create_directory(folder_.PathOf("a"));
        std::filesystem::create_directory(folder_.PathOf("b"));
        folder_.Write("a/msms.txt", kMatchTable.Text());
    }

    static Thrown NotReadable(const std::string& path)
    {
        return {"FileNotReadable", "PeptideIdentificationIO", "MaxQuantTXTPepIdentIO::Load",
                "the file '" + path + "' is not readable for the current user"};
    }

    TempFolder folder_;
};

TEST_F(MaxQuantFiles, PeptidesStandBesideTheMatchesUnlessTheSourceTellsOtherwise)
{
    EXPECT_EQ(Load("", ""), NotReadable(folder_.Path() + "/a\\peptides.txt"));
    EXPECT_EQ(Load("", "other.txt"), NotReadable(folder_.Path() + "/a\\other.txt"));
    EXPECT_EQ(Load(folder_.PathOf("b") + "\\", ""),
              NotReadable(folder_.Path() + "/b\\peptides.txt"));
    folder_.Write("a/peptides.txt", kPeptidesTable.Text());
    folder_.Write("a/other.txt", kPeptidesTable.Text());
    folder_.Write("b/peptides.txt", kPeptidesTable.Text());
    EXPECT_EQ(Load("", ""), Thrown());
    EXPECT_EQ(Load("", "other.txt"), Thrown());
    EXPECT_EQ(Load(folder_.PathOf("b"), ""), Thrown());
}

TEST_F(MaxQuantFiles, OfTwoMissingFilesTheMatchesAreTold)
{
    std::filesystem::remove(folder_.PathOf("a/msms.txt"));
    EXPECT_EQ(Load("", ""), NotReadable(folder_.Path() + "/a\\msms.txt"));
}

// ---- Modifications --------------------------------------------------------

std::string ModsOf(const std::string& names, const std::string& sequence)
{
    const Reading reading =
        Read(kMatchTable.With("Modifications", names).With("Modified sequence", sequence));
    std::string text = reading.thrown.message;
    for (const IdentModification& mod :
         reading.matches.empty() ? std::vector<IdentModification>() : reading.matches[0].vMods) {
        text += (text.empty() ? "" : ";") + mod.strName + "@" + std::to_string(mod.nPos);
    }
    return text;
}

TEST(MaxQuantReading, ModificationsOfOlderAndNewerReleases)
{
    EXPECT_EQ(ModsOf("Oxidation (M)", "_PEPM(ox)K_"), "Oxidation (M)@4");
    EXPECT_EQ(ModsOf("Acetyl (Protein N-term),2 Oxidation (M)",
                     "_(Acetyl (Protein N-term))M(Oxidation (M))PM(Oxidation (M))K_"),
              "Acetyl (Protein N-term)@0;Oxidation (M)@1;Oxidation (M)@3");
}

TEST(MaxQuantReading, UnmodifiedIsTakenAtItsWord)
{
    EXPECT_EQ(ModsOf("Unmodified", "_PEPM(no such tag)K_"), "");
    EXPECT_EQ(ModsOf("", "_PEPMK_"), "");
    EXPECT_EQ(ModsOf("unmodified", "_PEPMK_"), "");
}

TEST(MaxQuantReading, AnUnknownTagEndsTheReading)
{
    const Reading reading = Read(kMatchTable.With("Modifications", "Oxidation (M)", 1)
                                     .With("Modified sequence", "_PEPM(de)K_", 1));
    EXPECT_EQ(reading.thrown,
              (Thrown{"InvalidValue", "PeptideIdentificationIO", "MaxQuantTXTPepIdentIO::Load",
                      "the value 'de' was used but is not valid; Unexpected Modification "
                      "Abbreviation in \"Modified sequence\" in msms.txt"}));
    EXPECT_EQ(reading.matches.size(), 1u) << "the rows before it";
}

class MaxQuantSpecified : public ParameterTest {};

TEST_F(MaxQuantSpecified, TagsAndMassesOfTheSpecifiedModifications)
{
    const EngineFiles files = Files(kMatchTable.With("Modifications", "Phospho (STY)")
                                        .With("Modified sequence", "_(ca)PES(ph)M(ox)K_"));
    ASSERT_EQ(Read(FullParameters().SetMods(
                  "var_mod", {"Oxidation (M)", "Phospho (S)", "Cap (Protein N-term)"})),
              Thrown());
    const Reading reading = ReadEngineText<MaxQuantTXTPepIdentIO>(files);
    ASSERT_EQ(reading.thrown, Thrown());
    EXPECT_THAT(FullDump(reading.matches.at(0).vMods),
                ElementsAre("Cap (Protein N-term)@0 on N-term Protein N-term +2.000000",
                            "Phospho (STY)@3 on S Anywhere +79.966331",
                            "Oxidation (M)@4 on M Anywhere +15.994915"));
}

// ---- Progress -------------------------------------------------------------

/// What is printed for rows of which the peptides list the first ones.
std::string OutputOfRows(std::size_t rows, std::size_t listed)
{
    Table peptides = Peptides({});
    for (std::size_t i = 0; i < listed; ++i) {
        peptides.rows.push_back({"K", "A", "P1", std::to_string(i)});
    }
    const std::string row = Table::Line(kMatchTable.rows[1]) + "\n";
    return ReadEngineText<MaxQuantTXTPepIdentIO>(
               {kMatchTable.Header() + Repeat(row, rows), "peptides.txt", peptides.Text()})
        .output;
}

TEST(MaxQuantReading, ProgressIsOverwrittenAndErased)
{
    EXPECT_EQ(OutputOfRows(0, 0), "");
    EXPECT_EQ(OutputOfRows(1, 1), "1/1 (100%)\b\b\b\b\b\b\b\b\b\b          \b\b\b\b\b\b\b\b\b\b");
    EXPECT_EQ(OutputOfRows(2500, 2500), Shown("1000/2500 (40%)") + Shown("2000/2500 (80%)")
                                            + Shown("2500/2500 (100%)")
                                            + Erased("2500/2500 (100%)"));
}

TEST(MaxQuantReading, ProgressCountsTheRowsThatAreReached)
{
    EXPECT_EQ(OutputOfRows(3, 2), "");
    EXPECT_EQ(OutputOfRows(1500, 1200), Shown("1000/1500 (66%)") + Erased("1000/1500 (66%)"));
    EXPECT_EQ(OutputOfRows(2, 3), Shown("2/2 (100%)") + Erased("2/2 (100%)"));
}

TEST(MaxQuantReadingAlone, NothingIsErasedBehindAnException)
{
    const Table table =
        kMatchTable.With("Modifications", "x", 2).With("Modified sequence", "_SAM(ox)PLER_", 2);
    EXPECT_EQ(Read(table).output, "3/3 (100%)");
}

} // namespace
} // namespace Vorlan::test
