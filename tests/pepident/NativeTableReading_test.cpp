// Rows of the native table, in tables of cells and outcome.
#include <string>
#include <vector>

#include "pepident/MatchText.h"
#include "pepident/PlainNativeTable.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

struct RowCase {
    std::string reason;
    std::string row;
    std::string dump;
};

/// Each row alone in a table with all 14 columns, also held against the twin.
void Check(const std::vector<RowCase>& cases)
{
    for (const RowCase& row : cases) {
        const std::string text = kNativeHeader + row.row + "\n";
        const Reading reading = ReadNativeText(text);
        EXPECT_EQ(reading.thrown, Thrown()) << row.reason;
        EXPECT_THAT(Dump(reading.matches), ElementsAre(row.dump)) << row.reason;
        EXPECT_THAT(Dump(PlainNativeMatches(text)), ElementsAre(row.dump))
            << "plain twin: " << row.reason;
    }
}

/// The first eight cells of a row, with the tab behind them, and their dump.
const std::string kCells = "d\ts\tSEQ\t2\t1000.5\t0.25\t7.5\t1\t";
const std::string kDump = "d|s|SEQ|2+|1000.5|0.25|7.5 high|";

TEST(NativeTableReading, WholeRows)
{
    Check({
        {"everything", kCells + "Oxidation (M);Phospho (STY)\t1;3\tP1;P2\tK;R\tA;-\t10;20",
         kDump + "Oxidation (M)@1;Phospho (STY)@3|K.P1.A@10;R.P2.-@20"},
        {"neither modifications nor proteins", kCells + "\t\t\t\t\t", kDump + "|"},
        {"texts as they stand", "a b\t c \t\t1\t0\t0\t0\t0\t\t\t\t\t\t", "a b| c ||1+|0|0|0 low||"},
        {"bytes above 127", "d\xC3\xA9\ts\xFF\tSEQ\t1\t0\t0\t0\t0\t\t\t\t\t\t",
         "d\xC3\xA9|s\xFF|SEQ|1+|0|0|0 low||"},
    });
}

TEST(NativeTableReading, MissingCellsAreEmpty)
{
    Check({
        {"eight cells", "d\ts\tSEQ\t2\t1000.5\t0.25\t7.5\t1", kDump + "|"},
        {"seven cells", "d\ts\tSEQ\t2\t1000.5\t0.25\t7.5", "d|s|SEQ|2+|1000.5|0.25|7.5 low||"},
        {"no proteins", kCells + "Oxidation (M)\t4", kDump + "Oxidation (M)@4|"},
        {"no start position", kCells + "\t\tP1\tK\tA", kDump + "|K.P1.A@-1"},
        {"more cells than columns", kCells + "\t\tP1\tK\tA\t3\tmore\tand more",
         kDump + "|K.P1.A@3"},
    });
}

TEST(NativeTableReading, HighScoreBetterIsExactlyOne)
{
    for (const char* const cell :
         {"0", "true", "True", "TRUE", "", " 1", "1 ", "01", "1.0", "2", "+1"}) {
        const Reading reading =
            ReadNativeText(kNativeHeader + "d\ts\tSEQ\t2\t1\t0\t7\t" + cell + "\t\t\t\t\t\t\n");
        EXPECT_THAT(Dump(reading.matches), ElementsAre("d|s|SEQ|2+|1|0|7 low||")) << cell;
    }
}

TEST(NativeTableReading, Numbers)
{
    Check({
        {"a negative charge is taken modulo 2^64", "d\ts\tSEQ\t-1\t0\t0\t0\t0\t\t\t\t\t\t",
         "d|s|SEQ|18446744073709551615+|0|0|0 low||"},
        {"scientific", "d\ts\tSEQ\t2\t1e3\t-2.5E-1\t1.5e-07\t0\t\t\t\t\t\t",
         "d|s|SEQ|2+|1000|-0.25|1.4999999999999999e-07 low||"},
        {"blanks around them", "d\ts\tSEQ\t 2 \t 1.5 \t0\t0\t0\t\t\t\t\t\t",
         "d|s|SEQ|2+|1.5|0|0 low||"},
    });
}

TEST(NativeTableReading, TerminiAreSpelledWithAny)
{
    const std::vector<std::pair<std::string, std::string>> names = {
        {"Oxidation (M)", "Oxidation (M)"},
        {"Carbamyl (N-term)", "Carbamyl (Any N-term)"},
        {"Amidated (C-term)", "Amidated (Any C-term)"},
        {"Gln->pyro-Glu (N-term Q)", "Gln->pyro-Glu (Any N-term Q)"},
        {"Acetyl (Any N-term)", "Acetyl (Any N-term)"},
        {"Acetyl (Protein N-term)", "Acetyl (Protein N-term)"},
        {"Acetyl(N-term)", "Acetyl(N-term)"},
        {"Acetyl (n-term)", "Acetyl (n-term)"},
        {"x (N-term (N-term", "x (Any N-term (N-term"},
        {"x (C-term (N-term (C-term", "x (Any C-term (Any N-term (C-term"},
        {" (N-term", " (Any N-term"},
    };
    for (const auto& [cell, name] : names) {
        Check({{cell, kCells + cell + "\t1\t\t\t\t", kDump + name + "@1|"}});
    }
}

TEST(NativeTableReading, ModificationsAreSortedByPosition)
{
    Check({
        {"descending", kCells + "c;b;a\t3;2;1\t\t\t\t", kDump + "a@1;b@2;c@3|"},
        {"equal positions keep their order", kCells + "c;b;a\t1;0;1\t\t\t\t",
         kDump + "b@0;c@1;a@1|"},
        {"a negative position", kCells + "a;b\t0;-1\t\t\t\t", kDump + "b@-1;a@0|"},
    });
}

TEST(NativeTableReading, ListsOfDifferentLength)
{
    Check({
        {"fewer positions: the default", kCells + "a;b;c\t5\t\t\t\t", kDump + "b@0;c@0;a@5|"},
        {"no positions", kCells + "a\t\t\t\t\t", kDump + "a@0|"},
        {"more positions are passed over", kCells + "a\t5;x;7\t\t\t\t", kDump + "a@5|"},
        {"positions without names", kCells + "\t5;6\t\t\t\t", kDump + "|"},
        {"empty names count", kCells + ";\t5;6\t\t\t\t", kDump + "@5;@6|"},
        {"fewer residues and starts: the defaults", kCells + "\t\tP1;P2\tK\t\t10",
         kDump + "|K.P1.X@10;X.P2.X@-1"},
        {"an empty residue is missing", kCells + "\t\tP1;P2\t;K\tA;\t1;2",
         kDump + "|X.P1.A@1;K.P2.X@2"},
        {"more residues and starts are passed over", kCells + "\t\tP1\tK;R\tA;C\t10;x",
         kDump + "|K.P1.A@10"},
        {"residues without accession", kCells + "\t\t\tK\tA\t10", kDump + "|"},
        {"empty accessions count", kCells + "\t\t;P2\tK;R\tA;C\t1;2", kDump + "|K..A@1;R.P2.C@2"},
        {"a trailing separator is one more", kCells + "\t\tP1;\tK\tA\t10",
         kDump + "|K.P1.A@10;X..X@-1"},
    });
}

TEST(NativeTableReading, OneCharacterOfAResidueCounts)
{
    Check({{"the first", kCells + "\t\tP1\tKR\t-X\t1", kDump + "|K.P1.-@1"}});
}

TEST(NativeTableReading, StartPositionsFollowAtoi)
{
    const std::vector<std::pair<std::string, std::string>> starts = {
        {"17", "17"},  {"x", "0"},
        {"17x", "17"}, {"-3", "-3"},
        {" 4", "4"},   {"99999999999", "2147483647"},
        {"3.9", "3"},  {"-99999999999", "-2147483648"},
    };
    for (const auto& [cell, start] : starts) {
        Check({{cell, kCells + "\t\tP1\tK\tA\t" + cell, kDump + "|K.P1.A@" + start}});
    }
    Check({{"an empty one of two", kCells + "\t\tP1;P2\tK;K\tA;A\t;5",
            kDump + "|K.P1.A@0;K.P2.A@5"}});
}

struct BadCase {
    std::string reason;
    std::string row;
};

TEST(NativeTableReading, ACellThatIsNoNumberThrowsAndLeavesTheRowsBefore)
{
    const std::vector<BadCase> cases = {
        {"charge", "d\ts\tSEQ\ttwo\t1\t0\t7\t1\t\t\t\t\t\t"},
        {"charge with a sign behind", "d\ts\tSEQ\t2+\t1\t0\t7\t1\t\t\t\t\t\t"},
        {"charge with a fraction", "d\ts\tSEQ\t2.0\t1\t0\t7\t1\t\t\t\t\t\t"},
        {"empty charge", "d\ts\tSEQ\t\t1\t0\t7\t1\t\t\t\t\t\t"},
        {"charge beyond 32 bits", "d\ts\tSEQ\t99999999999\t1\t0\t7\t1\t\t\t\t\t\t"},
        {"mass", "d\ts\tSEQ\t2\tx\t0\t7\t1\t\t\t\t\t\t"},
        {"mass with a decimal comma", "d\ts\tSEQ\t2\t1,5\t0\t7\t1\t\t\t\t\t\t"},
        {"mass shift", "d\ts\tSEQ\t2\t1\tx\t7\t1\t\t\t\t\t\t"},
        {"score", "d\ts\tSEQ\t2\t1\t0\t\t1\t\t\t\t\t\t"},
        {"position", kCells + "a\tx\t\t\t\t"},
        {"an empty position of two", kCells + "a;b\t1;\t\t\t\t"},
        {"a row of three cells", "d\ts\tSEQ"},
        {"a row of blanks", "   "},
    };
    for (const BadCase& bad : cases) {
        const Reading reading = ReadNativeText(kNativeHeader + kCells + "\t\t\t\t\t\n" + bad.row
                                               + "\n" + kCells + "\t\t\t\t\t\n");
        EXPECT_EQ(reading.thrown.name, "ConversionError") << bad.reason;
        EXPECT_THAT(Dump(reading.matches), ElementsAre(kDump + "|")) << bad.reason;
    }
}

TEST(NativeTableReading, TextBehindANulIsNotRead)
{
    const std::string nul(1, '\0');
    const Reading inside = ReadNativeText(kNativeHeader + kCells + "a" + nul + "b\t1\t\t\t\t\n");
    EXPECT_THAT(Dump(inside.matches), ElementsAre(kDump + "a@0|"));
    const Reading atStart =
        ReadNativeText(kNativeHeader + kCells + "\n" + nul + kCells + "\n" + kCells + "\n");
    EXPECT_THAT(Dump(atStart.matches), ElementsAre(kDump + "|")) << "counts as an empty line";
}

} // namespace
} // namespace Vorlan::test
