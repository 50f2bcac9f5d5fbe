// "pelgrin run" with a protein database, as a child process.
#include <filesystem>

#include "ParameterFiles.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using Vorlan::test::ReadFile;

const std::vector<std::string> kRunWithFasta = {"run", "--fasta", "db.fasta"};

Row Of(const std::string& sequence, const std::string& protein)
{
    Row row;
    row.sequence = sequence;
    row.protein = protein;
    return row;
}

class ProteinWorkplace : public ParameterWorkplace {
public:
    ProteinWorkplace() { Write("db.fasta", ">P1 one\nAAAAAKGASKAC\n>P2 two\nAGASK\n"); }

    /// A file that asks for the proteins of path.
    static Ini Annotated(const std::string& path)
    {
        return Ini()
            .WithLocalization()
            .With("Annotation", "is_annotated", "1")
            .With("Annotation", "protein_database", path);
    }
};

TEST(PelgrinRunProteins, OfARunBeforeAreTold)
{
    const ProteinWorkplace workplace;
    EXPECT_EQ(workplace.Pelgrin(kRunWithFasta, Ini()).status, 0);
    const std::string table = workplace.PathOf("out/proteins.tsv");
    EXPECT_TRUE(std::filesystem::exists(table));
    const Outcome outcome = workplace.Run(Ini());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err,
                HasSubstr("out/proteins.tsv: was there before, and is none of these results"));
    EXPECT_TRUE(std::filesystem::exists(table));
}

TEST(PelgrinRunProteins, AreLookedUpInTheFastaOfTheCommandLine)
{
    const ProteinWorkplace workplace;
    const Outcome outcome = workplace.Pelgrin(kRunWithFasta, Ini());
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(workplace.Output("results.txt"), HasSubstr("\tP1;P2\tK;A\tA;-\t7;2\n"));
    EXPECT_THAT(workplace.Output("proteins.tsv"),
                HasSubstr("Modifications\nP1\tone\t12\t33.33\t1\t1\tGASK@7-10\t\nP2\t"));
    EXPECT_THAT(outcome.out,
                HasSubstr("Proteins             2   in db.fasta, 2 with a peptide\n"
                          "Peptides             1   found in a protein\n"
                          "Evidences            1   added, for proteins that hold the peptide, "
                          "too\n\nIons "));
    EXPECT_THAT(outcome.out,
                HasSubstr("  proteins.tsv      the proteins that hold the peptides\n"));
    const nlohmann::json proteins = workplace.Summary()["proteins"];
    EXPECT_EQ(proteins["database"]["proteins"], 2);
    EXPECT_EQ(proteins["database"]["residues"], 17);
    EXPECT_EQ(proteins["equate_il"], false);
    EXPECT_EQ(proteins["decoy_tag"], nullptr);
    EXPECT_EQ(proteins["with_peptide"], 2);
    EXPECT_EQ(proteins["peptides"]["found"], 1);
    EXPECT_EQ(proteins["evidences"]["peptide_in_protein"], 1);
    EXPECT_EQ(proteins["filled"]["start_from_1"], 1);
    EXPECT_EQ(proteins["without_evidence"]["added"], 1);
    ExpectCountsAddUp(workplace.Summary());
}

TEST(PelgrinRunProteins, WithoutADatabaseThereAreNone)
{
    const ProteinWorkplace workplace;
    EXPECT_EQ(workplace.Run(Ini()).status, 0);
    EXPECT_EQ(workplace.Summary()["proteins"], nullptr);
    EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("out/proteins.tsv")));
}

TEST(PelgrinRunProteins, OfTheFileNeedLocalizationWhichIsNotOffered)
{
    const ProteinWorkplace workplace;
    const Ini ini = workplace.Annotated("db.fasta");
    const Outcome outcome = workplace.Run(ini);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err, "pelgrin: warning: run.ini:" + std::to_string(ini.LineOf("is_localized"))
                               + ": is_localized = 1: localization is not offered yet; the run "
                                 "goes on without it\n");
    EXPECT_EQ(workplace.Summary()["not_offered"], nlohmann::json({"localization"}));
    EXPECT_THAT(workplace.Output("results.txt"), HasSubstr("\tP1;P2\t"));
    EXPECT_EQ(workplace.Summary()["proteins"]["with_peptide"], 2);
    const Outcome check = workplace.Check(ini);
    EXPECT_EQ(check.status, 0);
    EXPECT_THAT(check.out, HasSubstr("Localization  asked for, but not offered yet\n"
                                     "Annotation    proteins that hold the peptides\n"
                                     "  db.fasta   35 bytes\n"));
}

TEST(PelgrinRunProteins, TheCommandLineCountsInsteadOfTheFile)
{
    const ProteinWorkplace workplace;
    const Outcome outcome = workplace.Pelgrin(kRunWithFasta, workplace.Annotated("none.fasta"));
    EXPECT_EQ(outcome.status, 3) << outcome.err;
    EXPECT_EQ(workplace.Summary()["proteins"]["database"]["path"], "db.fasta");
}

TEST(PelgrinRunProteins, ADatabaseThatIsMissingOrBrokenIsFoundBeforeAnythingIsWritten)
{
    const ProteinWorkplace workplace;
    const Ini ini = workplace.Annotated("bad.fasta");
    const std::string place =
        "run.ini:" + std::to_string(ini.LineOf("protein_database")) + ": protein_database: ";
    const std::string fasta = "--fasta: ";
    const std::vector<std::string> run = {"run", "--fasta", "bad.fasta"};
    EXPECT_THAT(workplace.Run(ini).err, HasSubstr(place + "bad.fasta: cannot be opened"));
    EXPECT_THAT(workplace.Check(ini).err, HasSubstr(place + "bad.fasta: cannot be opened"));
    ExpectRefusal(workplace.Pelgrin(run, Ini()), 1, fasta + "bad.fasta: cannot be opened");
    for (const char* const text : {"", "GASK\n", "GASK\n>P1\nGASK\n"}) {
        workplace.Write("bad.fasta", text);
        EXPECT_THAT(workplace.Check(ini).err,
                    HasSubstr(place + "bad.fasta:1: expected a FASTA file"));
        ExpectRefusal(workplace.Pelgrin(run, Ini()), 1,
                      fasta + "bad.fasta:1: expected a FASTA file");
    }
    EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("out")));
}

TEST(PelgrinRunProteins, DecoysDoNotJoinTheTargetsThatFdrControlLeaves)
{
    const ProteinWorkplace workplace;
    workplace.Write("db.fasta", ">P1 one\nKGASKA\n>D_P1 decoy\nGASK\n");
    Row decoy = Of("GASK", "D_P1");
    decoy.score = "1";
    workplace.Write("psms.txt", TableOf({Row(), decoy}));
    const Outcome outcome = workplace.Pelgrin(kRunWithFasta, Ini().WithFdr("0.01"));
    EXPECT_EQ(outcome.status, 3) << outcome.err; // the row says start 7
    const std::string results = workplace.Output("results.txt");
    EXPECT_THAT(results, HasSubstr("\tP1\tK\tA\t7\n"));
    EXPECT_THAT(results, Not(HasSubstr("D_P1")));
    const nlohmann::json proteins = workplace.Summary()["proteins"];
    EXPECT_EQ(proteins["decoy_tag"], "D_");
    EXPECT_EQ(proteins["without_evidence"]["decoy_left_out"], 1);
    EXPECT_EQ(proteins["filled"]["start_disagrees"], 1);
    EXPECT_EQ(proteins["examples"]["start_disagrees"], nlohmann::json({"GASK in P1"}));
}

TEST(PelgrinRunProteins, WhatIsNotFoundEndsWithStatusThree)
{
    const ProteinWorkplace workplace;
    workplace.Write("psms.txt", TableOf({Of("GASK", "Q9")}));
    const Outcome outcome = workplace.Pelgrin(kRunWithFasta, Ini());
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.out, HasSubstr("   name a protein that the database lacks (Q9)\n"));
    EXPECT_EQ(workplace.Summary()["proteins"]["examples"]["accession_unknown"],
              nlohmann::json({"Q9"}));
}

TEST(PelgrinRunProteins, TheEndOfAProteinGivesAModificationItsName)
{
    // "Acetyl" at the N-terminus is of the protein when the peptide begins it.
    const ProteinWorkplace workplace;
    workplace.Write("db.fasta", ">P1\nGASK\n");
    Row row = Of("GASK", "P1");
    row.modNames = "Acetyl";
    row.modPositions = "0";
    std::string table = TableOf({row});
    table.replace(table.find("\tK\tA\t7\n"), 7, "\t\t\t-1");
    workplace.Write("psms.txt", table);
    const Ini ini = Ini().With("Search", "var_mod_1", "Acetyl (Protein N-term)");
    const Outcome outcome = workplace.Pelgrin(kRunWithFasta, ini);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(workplace.Output("results.txt"), HasSubstr("\tP1\t-\t-\t1\n"));
    EXPECT_THAT(outcome.out, HasSubstr("Modified sites       1   match   P1 N-term1 Acetyl\n"));
}

TEST(PelgrinRunProteins, TheReportShowsTheSitesOfMostMatches)
{
    const ProteinWorkplace workplace;
    std::vector<Row> rows;
    for (int i = 0; i < 8; ++i) {
        Row row = Of("GASK", "P1");
        row.modNames = i < 5 ? "Phospho (S)" : "Far (K)";
        row.modPositions = i < 5 ? "3" : "4";
        rows.push_back(row);
    }
    workplace.Write("psms.txt", TableOf(rows));
    const std::string out = workplace.Pelgrin(kRunWithFasta, Ini()).out;
    EXPECT_THAT(out, HasSubstr("Modified sites       5   matches P1 S9 Phospho (S)\n"
                               "                     5   matches P2 S4 Phospho (S)\n"
                               "                     3   matches P1 K10 Far (K)\n"
                               "                     3   matches P2 K5 Far (K)\n"));
    EXPECT_EQ(workplace.Summary()["proteins"]["modified_sites"], 4);
    EXPECT_EQ(workplace.Summary()["proteins"]["most_modified"][0]["site"], "P1 S9 Phospho (S)");
}

TEST(PelgrinRunProteins, NeverOverwriteTheirDatabase)
{
    const ProteinWorkplace workplace;
    std::filesystem::create_directory(workplace.PathOf("out"));
    const std::string fasta = ">P1\nGASK\n";
    for (const char* const name : {"out/proteins.tsv", "out/results.txt"}) {
        workplace.Write(name, fasta);
        ExpectRefusal(workplace.Pelgrin({"run", "--fasta", name}, Ini()), 1,
                      "is an input and would be overwritten");
        EXPECT_EQ(workplace.Output(std::string(name).substr(4)), fasta);
        std::filesystem::remove(workplace.PathOf(name));
    }
}

TEST(PelgrinRunProteins, WrongUsage)
{
    const ProteinWorkplace workplace;
    ExpectRefusal(workplace.Pelgrin({"run", "--fasta", ""}, Ini()), 2,
                  "--fasta: the value is empty");
    ExpectRefusal(workplace.Pelgrin({"run", "--equate-il"}, Ini()), 2,
                  "--equate-il: the run has no proteins; give --fasta, too");
    workplace.Write("psms.txt", TableOf({Of("GLSK", "P1")}));
    workplace.Write("db.fasta", ">P1\nAAAAAKGISKA\n");
    EXPECT_EQ(workplace.Pelgrin(kRunWithFasta, Ini()).status, 3);
    EXPECT_EQ(workplace.Pelgrin({"run", "--equate-il", "--fasta", "db.fasta"}, Ini()).status, 0);
    EXPECT_EQ(workplace.Summary()["proteins"]["equate_il"], true);
}

} // namespace
} // namespace pelgrin::test
