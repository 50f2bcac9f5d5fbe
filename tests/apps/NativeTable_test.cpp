// What the native tables of every command tell of themselves.
#include <limits>

#include "HostProgram.h"
#include "PeptideIdentificationIO.h"
#include "ResultTexts.h"
#include "files/FileLines.h"
#include "files/NativeRow.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using Vorlan::PeptideIdentification;
using Vorlan::test::ReadFile;

/// The row as the library writes it.
std::string WrittenRowOf(const PeptideIdentification& record)
{
    const Vorlan::test::TempFolder folder;
    Vorlan::TulkTXTPepIdentIO writer;
    writer.InitSave(folder.PathOf("table.txt"));
    writer.Save({record});
    writer.EndSave();
    const std::string table = Vorlan::test::ReadFile(folder.PathOf("table.txt"));
    return table.substr(std::string(kTableHeader).size());
}

TEST(NativeRow, HasTheLengthThatTheLibraryWrites)
{
    PeptideIdentification record;
    EXPECT_EQ(RowLengthOf(record) + 1, WrittenRowOf(record).size());
    record.strDatasetName = "run.mgf";
    record.strSpectrumName = "run.00001.00001.2";
    record.strSequence = "GASK";
    record.nCharge = 12;
    record.dObsMH = 361.192724;
    record.dMassShift = -79.966331;
    for (const std::size_t size : {1U, 2U, 11U}) {
        record.vMods.assign(size, {});
        record.vEvidences.assign(size, {});
        for (std::size_t i = 0; i < size; ++i) {
            record.vMods[i].strName = "Oxidation (M)";
            record.vMods[i].nPos = static_cast<std::int32_t>(i);
            record.vEvidences[i].strProteinAccession = "P" + std::to_string(i);
            record.vEvidences[i].nStart = static_cast<std::int32_t>(99 * i);
        }
        for (const double score :
             {0.0, 1e-300, -12.5, 0.00001, 99.5, 1e300, std::numeric_limits<double>::infinity(),
              std::numeric_limits<double>::quiet_NaN()}) {
            record.dMainScore = score;
            EXPECT_EQ(RowLengthOf(record) + 1, WrittenRowOf(record).size()) << size << " " << score;
        }
    }
}

/// A row that is read whole and grows when the residues of its proteins are written.
std::string LongRow(std::size_t proteins)
{
    Row row;
    for (std::size_t i = 1; i < proteins; ++i) {
        row.protein += ";P1";
    }
    return LineOf(row);
}

struct Loss {
    const char* reason;
    const char* format;
    std::string text;
    const char* told;
};

std::vector<Loss> Losses()
{
    std::string twoInOne = MsgfRow();
    twoInOne.replace(twoInOne.find("P1"), 2, "P1;P2");
    Row negative;
    negative.charge = "-2";
    const std::string table = TableOf({Row()});
    return {{"two proteins in one name", "MSGF (.tsv)", kMsgfHeader + MsgfRow() + twoInOne,
             ":3: the first of 1 records with a name that holds a tab"},
            {"a mass without a name on a terminus", "Comet (.pep.xml)",
             PepXml(Query(Hit("<modification_info mod_nterm_mass=\"43.018390\"/>\n"))),
             ":2: the first of 1 records with a mass on a terminus"},
            {"a row that outgrows the line", "Calvex (.txt)",
             table + LongRow(10000) + LongRow(9500),
             ":3: the first of 2 records with a row of more than 81,919 characters"},
            {"a negative charge", "Calvex (.txt)", table + LineOf(negative),
             ":3: the first of 1 records with a negative"}};
}

TEST(NativeTable, EveryWriterTellsWhatDoesNotReadBack)
{
    const Workplace place;
    const std::string fasta = place.Write("proteins.fasta", ">P1\nKGASKA\n");
    for (const Loss& loss : Losses()) {
        SCOPED_TRACE(loss.reason);
        const std::string result = place.Write("result", loss.text);
        const std::string table = place.PathOf("table.txt");
        for (const Outcome& outcome :
             {RunPelgrin({"convert", "--format", loss.format, "--in", result, "--out", table}),
              RunPelgrin({"map-proteins", "--fasta", fasta, "--format", loss.format, "--psms",
                          result, "--out", table})}) {
            EXPECT_EQ(outcome.status, 3);
            EXPECT_THAT(outcome.err, HasSubstr("pelgrin: warning: " + table + loss.told));
        }
        const Outcome outcome = RunPelgrin({"annotate", "--spectra", place.PathOf("run.mgf"),
                                            "--psms", result, "--format", loss.format,
                                            "--tolerance", "20ppm", "--out", place.PathOf("out")});
        EXPECT_EQ(outcome.status, 3);
        EXPECT_THAT(outcome.err, HasSubstr(place.PathOf("out") + "/results.txt" + loss.told));
    }
}

TEST(NativeTable, WhatDoesNotReadBackIsAClassThatMayBeAllowed)
{
    const Workplace place;
    const std::string result =
        place.Write("result", PepXml(Query(Hit("<modification_info mod_nterm_mass=\"43\"/>\n"))));
    const std::string table = place.PathOf("table.txt");
    const std::string ledger = place.PathOf("ledger.json");
    const std::vector<std::string> convert = {"convert", "--format", "Comet (.pep.xml)",
                                              "--in",    result,     "--out",
                                              table,     "--ledger", ledger};
    EXPECT_EQ(RunPelgrin(convert).status, 3);
    const auto json = nlohmann::json::parse(ReadFile(ledger));
    EXPECT_EQ(json["has_losses"], true);
    const nlohmann::json page = json["pages"]["table"];
    EXPECT_EQ(page["held"], 1);
    EXPECT_EQ(page["kept"], 1);
    const nlohmann::json loss = page["classes"]["table_terminus_mass"];
    EXPECT_EQ(loss["count"], 1);
    EXPECT_EQ(loss["in_sum"], false);
    EXPECT_EQ(loss["examples"], nlohmann::json({table + ":2"}));
    std::vector<std::string> allowed = convert;
    allowed.insert(allowed.end(), {"--allow", "table_terminus_mass"});
    const Outcome outcome = RunPelgrin(allowed);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("  allowed        1  table_terminus_mass: "));
    // The same of a run, which finds its spectrum.
    const Outcome run =
        RunPelgrin({"annotate", "--spectra", place.PathOf("run.mgf"), "--psms",
                    place.Write("good", TableOf({Row()}) + LongRow(10000)), "--format",
                    "Calvex (.txt)", "--tolerance", "20ppm", "--out", place.PathOf("out")});
    EXPECT_EQ(run.status, 3);
    EXPECT_THAT(run.out, HasSubstr("  lost           1  table_long_row: "));
}

TEST(NativeTable, NothingIsToldOfWhatReadsBack)
{
    const Workplace place;
    const Outcome outcome = place.AnnotateTable(TableOf({Row()}) + LongRow(2000));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, Not(HasSubstr("warning")));
}

} // namespace
} // namespace pelgrin::test
