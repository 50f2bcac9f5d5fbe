// pFind-Filtered.spectra of pFind 3, read from files.
#include <string>
#include <utility>
#include <vector>

#include "param/ParameterText.h"
#include "pepident/EngineTableExamples.h"
#include "pepident/PFind3Row.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

Reading Read(const std::string& text)
{
    const Reading reading = ReadEngineText<Pfind3PepIdentIO>({text});
    EXPECT_EQ(reading.thrown, Thrown());
    EXPECT_EQ(reading.output, "") << "this reader tells nothing";
    return reading;
}

/// The match of the first row with one cell changed.
std::string Match(const std::string& column, const std::string& cell)
{
    Table table = kPFind3Table.With(column, cell);
    table.rows.resize(1);
    const Reading reading = Read(table.Text());
    return reading.matches.size() == 1 ? FullDump(reading.matches[0]) : "no match";
}

/// Its proteins and modifications alone.
std::string Rest(const std::string& column, const std::string& cell)
{
    const std::string match = Match(column, cell);
    const std::size_t scan = match.find("|scan 1405");
    return scan == std::string::npos ? match : match.substr(scan + 10);
}

TEST(PFind3Reading, WholeRows)
{
    EXPECT_THAT(
        FullDump(Read(kPFind3Table.Text()).matches),
        ElementsAre("run01.mgf|run01.1405.1405.2.0.dta|PEPMK|2+|603.280000|shift 0.0125|"
                    "score 1e-09 low|mz 302.143638|scan 1405|Mark@4 on M Anywhere +0.000000|"
                    "K.P1.A@8|-.P2.A@1",
                    "run01.mgf|run01.1406.1406.3.1.dta|SAMPLER|3+|803.400000|shift -0.01|"
                    "score 0.5 low|mz 268.471518|scan 1406|decoy|R.REV_P1.-@10",
                    "run01.mgf|run01.1407.1407.1.0.dta|ACK|1+|335.200000|score 3 low|mz 335.2|"
                    "scan 1407|R.P3.G@100"));
}

TEST(PFind3Reading, TheDatasetIsTheNameWithoutItsLastFivePieces)
{
    const std::vector<std::pair<std::string, std::string>> names = {
        {"run01.30507.30507.2.0.dta", "run01.mgf"},
        {"run.01.x.30507.30507.2.0.dta", "run.01.x.mgf"},
        {".1.1.2.0.dta", ".mgf"},
        {"run01.1.2.0.dta", "run01.1.2.0.dta.mgf"},
        {"run01", "run01.mgf"},
        {".....", ".mgf"},
        {"....", ".....mgf"},
        {"", ".mgf"},
    };
    for (const auto& [name, file] : names) {
        EXPECT_EQ(pfind::SpectrumFile(name), file) << name;
    }
}

TEST(PFind3Reading, DecoysInAnyCase)
{
    for (const char* const cell : {"decoy", "Decoy", "DECOY"}) {
        EXPECT_THAT(Match("Target/Decoy", cell), HasSubstr("|decoy|")) << cell;
    }
    for (const char* const cell : {"target", "", "decoys", " decoy", "1"}) {
        EXPECT_THAT(Match("Target/Decoy", cell), testing::Not(HasSubstr("|decoy"))) << cell;
    }
}

TEST(PFind3Reading, NumbersAreReadAsFarAsTheyGo)
{
    EXPECT_THAT(Match("Scan_No", "x"), HasSubstr("|scan 0|"));
    EXPECT_THAT(Match("Charge", "0"),
                HasSubstr("|0+|603.280000|shift 0.0125|score 1e-09 low|scan"));
    EXPECT_THAT(Match("Final_Score", "5.15726e-013"), HasSubstr("|score 5.15726e-13 low|"));
    EXPECT_THAT(Match("Exp.MH+", ""), HasSubstr("|2+|0.000000|"));
    EXPECT_THAT(Match("Mass_Shift(Exp.-Calc.)", "1 Da"), HasSubstr("|shift 1|"));
}

TEST(PFind3Reading, B63_WhatStandsBehindTheLastSeparatorIsNotRead)
{
    const std::string mods = "|Mark@4 on M Anywhere +0.000000";
    const std::string proteins = "|K.P1.A@8|-.P2.A@1";
    EXPECT_EQ(Rest("Proteins", "P1/P2/"), mods + proteins);
    EXPECT_EQ(Rest("Proteins", "P1/P2"), mods + "|K.P1.A@8");
    EXPECT_EQ(Rest("Proteins", "P1/"), mods + "|K.P1.A@8");
    EXPECT_EQ(Rest("Modification", "4,a[M];5,b[K]"), "|a@4 on M Anywhere +0.000000" + proteins);
    EXPECT_EQ(Rest("Modification", "4,a[M]"), proteins);
    EXPECT_EQ(Rest("Modification", ""), proteins);
    EXPECT_EQ(Rest("Modification", "4,a[M];5,b[K];"),
              "|a@4 on M Anywhere +0.000000|b@5 on K Anywhere +0.000000" + proteins);
    EXPECT_EQ(Rest("Modification", ";"), "|@0 on  Anywhere +0.000000" + proteins);
}

TEST(PFind3Reading, B63_ARowWithoutAProteinIsPassedOver)
{
    for (const char* const cell : {"", "P1", "P1;P2"}) {
        EXPECT_EQ(Match("Proteins", cell), "no match") << cell;
    }
    EXPECT_EQ(Rest("Proteins", "/"), "|Mark@4 on M Anywhere +0.000000|K..A@8");
}

TEST(PFind3Reading, Positions)
{
    const std::string mods = "|Mark@4 on M Anywhere +0.000000";
    EXPECT_EQ(Rest("Positions", ""), mods + "|X.P1.X@-1|X.P2.X@-1");
    EXPECT_EQ(Rest("Positions", "7,K,A/"), mods + "|K.P1.A@8|X.P2.X@-1");
    EXPECT_EQ(Rest("Positions", "7/8,R"), mods + "|X.P1.X@8|R.P2.X@9");
    EXPECT_EQ(Rest("Positions", "x,KL,AB/-1,,/"), mods + "|K.P1.A@1|X.P2.X@0");
    EXPECT_EQ(Rest("Positions", "2147483647,K,A/99999999999,K,A/"),
              mods + "|K.P1.A@2147483647|K.P2.A@2147483647");
    EXPECT_EQ(Rest("Positions", "7,K,A/0,-,A/9,R,G/"), mods + "|K.P1.A@8|-.P2.A@1");
}

TEST(PFind3Reading, AShortRowGivesNothing)
{
    const std::string row = Table::Line(kPFind3Table.rows[0]);
    EXPECT_TRUE(Read(kPFind3Table.Header() + row.substr(0, row.rfind('\t'))).matches.empty());
}

class PFind3Masses : public ParameterTest {};

TEST_F(PFind3Masses, AreLookedUpByName)
{
    const Table table = kPFind3Table.With(
        "Modification", "0,Cap[ProteinN-term];1,Oxidation[M];2,Phospho[T];3,Ring[K](Tail[K]);");
    EXPECT_THAT(FullDump(ReadEngineText<Pfind3PepIdentIO>({table.Text()}).matches.at(0).vMods),
                ElementsAre("Cap@0 on ProteinN-term Protein N-term +1.000000",
                            "Oxidation@1 on M Anywhere +15.994915",
                            "Phospho@2 on T Anywhere +79.966331",
                            "Ring(Tail)@3 on K Anywhere +0.000000"));
}

} // namespace
} // namespace Vorlan::test
