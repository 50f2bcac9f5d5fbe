// "pelgrin map-proteins" as a child process.
#include <algorithm>
#include <filesystem>

#include "ParameterFiles.h"
#include "ResultTexts.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using Vorlan::test::ReadFile;

constexpr const char kFasta[] = ">P1 one\nMGASKGAMK\n>P2 two\nAGASK\n>D_P3 decoy\nRGASKR\n";

/// A row whose protein cells are given as they stand in the table.
std::string RowWith(const std::string& sequence, const std::string& proteinCells,
                    const std::string& modCells = "\t")
{
    return "run.mgf\trun.1.1.2\t" + sequence + "\t2\t500.500000\t0.000000\t1.500000\t1\t" + modCells
           + "\t" + proteinCells + "\n";
}

class MapPlace : public Workplace {
public:
    Outcome Map(const std::string& rows, const std::vector<std::string>& more = {},
                const std::string& fasta = kFasta) const
    {
        return MapTable(kTableHeader + rows, more, fasta);
    }
    Outcome MapTable(const std::string& table, const std::vector<std::string>& more,
                     const std::string& fasta) const
    {
        std::vector<std::string> arguments = {
            "map-proteins",           "--fasta", Write("db.fasta", fasta), "--psms",
            Write("psms.txt", table), "--out",   PathOf("table.txt")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunPelgrin(arguments);
    }
    std::string Table() const { return ReadFile(PathOf("table.txt")); }
};

TEST(PelgrinMapProteins, FillsInTheProteinsOfATable)
{
    const MapPlace place;
    const Outcome outcome = place.Map(
        RowWith("GASK", "P1\t\t\t-1") + RowWith("GAMK", "P1\tK\t-\t6", "Oxidation (M)\t3"),
        {"--decoy-tag", "D_", "--proteins", place.PathOf("proteins.tsv")});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, "Matches read         2\n"
                           "Proteins             3   in db.fasta, 3 with a peptide\n"
                           "Peptides             2   found in a protein\n"
                           "Evidences            2   name a protein that holds the peptide\n"
                           "                     1   starts filled in\n"
                           "                     1   residues beside the peptide filled in\n"
                           "                     1   starts count from 1\n"
                           "                     1   added, for proteins that hold the peptide, "
                           "too\n"
                           "                     1   left out: decoys, for matches that are "
                           "targets\n"
                           "Written              2   records to "
                               + place.PathOf("table.txt")
                               + "\n"
                                 "                     3   proteins to "
                               + place.PathOf("proteins.tsv")
                               + "\n\n"
                                 "Ledger                     held      kept\n"
                                 "  matches                     2         2   matches in the "
                                 "result files\n");
    EXPECT_EQ(place.Table(), kTableHeader + RowWith("GASK", "P1;P2\tM;A\tG;-\t2;2")
                                 + RowWith("GAMK", "P1\tK\t-\t6", "Oxidation (M)\t3"));
    EXPECT_EQ(ReadFile(place.PathOf("proteins.tsv")),
              "Accession\tDescription\tLength\tCoverage (%)\tMatches\tPeptides\tPeptide "
              "Places\tModifications\n"
              "P1\tone\t9\t88.89\t2\t2\tGASK@2-5;GAMK@6-9\tOxidation (M)@M8\n"
              "P2\ttwo\t5\t80.00\t1\t1\tGASK@2-5\t\n"
              "D_P3\tdecoy\t6\t66.67\t1\t1\tGASK@2-5\t\n");
}

TEST(PelgrinMapProteins, TheTableReadsBackWithTheSameProteins)
{
    const MapPlace place;
    EXPECT_EQ(place.Map(RowWith("GASK", "P1\t\t\t-1")).status, 0);
    const std::string once = place.Table();
    EXPECT_EQ(once, kTableHeader + RowWith("GASK", "P1;P2;D_P3\tM;A;R\tG;-;R\t2;2;2"));
    EXPECT_EQ(place.MapTable(once, {}, kFasta).status, 0);
    EXPECT_EQ(place.Table(), once);
}

TEST(PelgrinMapProteins, TakesEveryFormatOfConvert)
{
    const MapPlace place;
    const Outcome outcome = place.MapTable(PepXml(Query(Hit())), {"--format", "Comet (.pep.xml)"},
                                           ">P1\nKGASKA\n>P2\nGASK\n");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Not in table"));
    EXPECT_THAT(place.Table(), HasSubstr("\tP1;P2\tK;-\tA;-\t2;1\n"));
}

TEST(PelgrinMapProteins, LeucineAndIsoleucineAreOneOnlyWhenAsked)
{
    const MapPlace place;
    const std::string row = RowWith("GLK", "P1\t\t\t-1");
    EXPECT_EQ(place.Map(row, {}, ">P1\nAGIK\n").status, 3);
    const Outcome outcome = place.Map(row, {"--equate-il"}, ">P1\nAGIK\n");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(place.Table(), kTableHeader + RowWith("GLK", "P1\tA\t-\t2"));
}

TEST(PelgrinMapProteins, WhatDoesNotFitEndsWithStatusThree)
{
    struct Case {
        const char* reason;
        std::string rows;
        std::string fasta;
        const char* told;
        int status;
    };
    const MapPlace place;
    for (const Case& c :
         {Case{"unknown accession", RowWith("GASK", "Q1\t\t\t-1"), ">P1\nGASK\n",
               "1   name a protein that the database lacks (Q1)\n", 3},
          Case{"unknown decoy", RowWith("GASK", "D_Q1\t\t\t-1"), ">P1\nGASK\n",
               "1   name a decoy that the database lacks (D_Q1)\n", 0},
          Case{"another protein", RowWith("GASK", "P2\t\t\t-1"), ">P1\nGASK\n>P2\nA\n",
               "1   name a protein without the peptide (GASK in P2)\n", 3},
          Case{"found nowhere", RowWith("WWW", "P1\t\t\t-1"), ">P1\nGASK\n",
               "1   found in no protein (WWW)\n", 3},
          Case{"a decoy found nowhere", RowWith("WWW", "D_1\t\t\t-1"), ">P1\nGASK\n",
               "1   of decoys only, found in no protein (WWW)\n", 0},
          Case{"no letters", RowWith("GA;K", "P1\t\t\t-1"), ">P1\nGASK\n",
               "1   not all of letters A to Z (GA;K)\n", 3},
          Case{"lower case", RowWith("gask", "P1\t\t\t-1"), ">P1\nGASK\n",
               "1   not all of letters A to Z (gask)\n", 3},
          Case{"empty", RowWith("", "P1\t\t\t-1"), ">P1\nGASK\n",
               "1   not all of letters A to Z ()\n", 3},
          Case{"other start", RowWith("GASK", "P1\t\t\t9"), ">P1\nGASK\n",
               "1   starts are none of the peptide (GASK in P1)\n", 3},
          Case{"other residue", RowWith("GASK", "P1\tK\t\t-1"), ">P1\nGASK\n",
               "1   residues beside the peptide are others (GASK in P1)\n", 3},
          Case{"from 0", RowWith("GASK", "P1\t\t\t0"), ">P1\nGASK\n", "1   starts count from 0\n",
               0},
          Case{"accession for no table", RowWith("GASK", "P1\t\t\t1"), ">P1\nGASK\n>a;b\nGASK\n",
               "1   left out: no table can hold such an accession (a;b)\n", 3},
          Case{"one residue at a start", RowWith("G", "P2\t\t\t-1"), ">P1\nAAA\n>P2\nGAA\n",
               "1   starts filled in\n", 0}}) {
        SCOPED_TRACE(c.reason);
        const Outcome outcome = place.Map(c.rows, {"--decoy-tag", "D_"}, c.fasta);
        EXPECT_EQ(outcome.status, c.status) << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr(c.told));
    }
    EXPECT_EQ(place.Table(), kTableHeader + RowWith("G", "P2\t-\tA\t1"));
}

TEST(PelgrinMapProteins, WarnsOfWhatADatabaseLoses)
{
    const MapPlace place;
    const std::string path = place.PathOf("db.fasta");
    const Outcome outcome =
        place.Map(RowWith("GASK", "P1\t\t\t-1"), {}, ">P1\nGASKaa\n>P1\nGASK\n>P2\n*\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err,
              "pelgrin: warning: " + path
                  + ":2: the first of 2 lower-case letters in sequences; they are not read\n"
                    "pelgrin: warning: "
                  + path
                  + ": 1 headers repeat an accession (P1); the first one of each counts\n"
                    "pelgrin: warning: "
                  + path + ": 1 proteins have no residues\n");
}

// ---- Failures -------------------------------------------------------------------

TEST(PelgrinMapProteins, ABrokenDatabaseIsRefusedBeforeAnythingIsWritten)
{
    const MapPlace place;
    place.Write("table.txt", "former");
    const std::string path = place.PathOf("db.fasta");
    ExpectRefusal(place.Map(RowWith("GASK", "P1\t\t\t-1"), {}, ""), 1,
                  path
                      + ":1: expected a FASTA file, whose first line is a header that begins "
                        "with \">\"; the file is empty\n");
    ExpectRefusal(place.Map(RowWith("GASK", "P1\t\t\t-1"), {}, "GASK\n>P1\nGASK\n"), 1,
                  path + ":1: expected a FASTA file");
    ExpectRefusal(place.Map(RowWith("GASK", "P1\t\t\t-1"), {}, ">P1\rGASK\r"), 1,
                  path + ":1: a carriage return stands inside a line");
    EXPECT_EQ(place.Table(), "former");
}

TEST(PelgrinMapProteins, AFailureLeavesTheFormerTablesAndNothingElse)
{
    const MapPlace place;
    place.Write("table.txt", "former");
    place.Write("proteins.tsv", "former");
    const std::vector<std::string> more = {"--proteins", place.PathOf("proteins.tsv")};
    EXPECT_EQ(place.Map("run.mgf\tx\tGASK\ttwo\n", more).status, 1);
    EXPECT_EQ(place.Map("", {"--proteins", place.PathOf("no/proteins.tsv")}).status, 1);
    EXPECT_EQ(place.Map("", {"--ledger", place.PathOf("no/ledger.json")}).status, 1);
    EXPECT_EQ(place.Table(), "former");
    EXPECT_EQ(ReadFile(place.PathOf("proteins.tsv")), "former");
    const std::filesystem::directory_iterator entries(place.PathOf(""));
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 5);
}

TEST(PelgrinMapProteins, ALedgerThatCannotBeWrittenLeavesTheFormerTables)
{
    const MapPlace place;
    place.Write("table.txt", "former");
    const std::string proteins = place.Write("proteins.tsv", "former");
    const std::string rejects = place.Write("rejects.tsv", "former");
    // The file that is written before it takes this name has a longer one.
    const std::string ledger = place.PathOf(std::string(250, 'l'));
    ExpectRefusal(place.Map(RowWith("GASK", "P1\t\t\t-1"),
                            {"--ledger", ledger, "--proteins", proteins, "--rejects", rejects}),
                  1, "cannot be written: File name too long");
    EXPECT_EQ(place.Table(), "former");
    EXPECT_EQ(ReadFile(proteins), "former");
    EXPECT_EQ(ReadFile(rejects), "former");
}

TEST(PelgrinMapProteins, NeverOverwritesItsInputs)
{
    const MapPlace place;
    const std::string fasta = place.Write("db.fasta", kFasta);
    const std::string psms = place.Write("psms.txt", TableOf({Row()}));
    const auto map = [&](const std::string& out, const std::string& proteins) {
        return RunPelgrin({"map-proteins", "--fasta", fasta, "--psms", psms, "--out", out,
                           "--proteins", proteins});
    };
    const std::string free = place.PathOf("free");
    ExpectRefusal(map(fasta, free), 1, "choose another table for --out");
    ExpectRefusal(map(psms, free), 1, "choose another table for --out");
    ExpectRefusal(map(free, fasta), 1, "choose another table for --proteins");
    ExpectRefusal(map(free, psms), 1, "choose another table for --proteins");
    ExpectRefusal(map(free, place.PathOf("./free")), 1, "--out and --proteins are one file");
    EXPECT_EQ(ReadFile(fasta), kFasta);
    EXPECT_EQ(ReadFile(psms), TableOf({Row()}));
    EXPECT_FALSE(std::filesystem::exists(free));
}

TEST(PelgrinMapProteins, WrongUsage)
{
    const std::vector<std::string> base = {"map-proteins", "--fasta", "a", "--psms", "b"};
    const auto with = [&](const std::vector<std::string>& more) {
        std::vector<std::string> arguments = base;
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunPelgrin(arguments);
    };
    ExpectRefusal(with({}), 2, "--out is required");
    ExpectRefusal(with({"--out", ""}), 2, "--out: the value is empty");
    ExpectRefusal(with({"--out", "c", "--decoy-tag", ""}), 2, "--decoy-tag: the value is empty");
    ExpectRefusal(with({"--out", "c", "--mod", "A=1", "--parameters", "d"}), 2,
                  "give modifications in one way only");
    ExpectRefusal(with({"--out", "c"}), 1, "b: cannot be opened");
    EXPECT_THAT(RunPelgrin({"map-proteins", "--help"}).out,
                StartsWith("Look up in which proteins the peptides of a result lie\n"));
}

} // namespace
} // namespace pelgrin::test
