// Peptides and proteins: places, evidences, counts, and the rows of proteins.tsv.
#include "proteins/ProteinMap.h"

#include <algorithm>
#include <random>
#include <set>

#include "proteins/ProteinTable.h"
#include "support/Support.h"

namespace pelgrin::test {
namespace {

using Vorlan::IdentModification;
using Vorlan::PeptideEvidence;
using Vorlan::PeptideIdentification;
using Vorlan::test::TempFolder;
using Records = std::vector<PeptideIdentification>;
using Count = ProteinCount;

PeptideEvidence Evidence(const std::string& accession, std::int32_t start = -1, char before = 'X',
                         char after = 'X')
{
    return {accession, start, 0, before, after};
}

PeptideIdentification Record(const std::string& sequence,
                             const std::vector<PeptideEvidence>& evidences = {})
{
    PeptideIdentification record;
    record.strSequence = sequence;
    record.vEvidences = evidences;
    return record;
}

std::string TextOf(const PeptideEvidence& evidence)
{
    return evidence.strProteinAccession + " " + std::to_string(evidence.nStart) + " "
           + evidence.cBefore + evidence.cAfter;
}

std::vector<std::string> TextsOf(const PeptideIdentification& record)
{
    std::vector<std::string> texts;
    for (const PeptideEvidence& evidence : record.vEvidences) {
        texts.push_back(TextOf(evidence));
    }
    return texts;
}

using Texts = std::vector<std::string>;

/// A database of a text, and what is done with records.
class Proteins {
public:
    explicit Proteins(const std::string& fasta) : database_(folder_.Write("a.fasta", fasta)) {}

    ProteinCounts Fill(Records& records, const std::optional<std::string>& tag = std::nullopt,
                       bool equateIl = false) const
    {
        return FillEvidences(ProteinMap(database_, records, equateIl), tag, records);
    }
    /// The evidences of one record, filled.
    Texts Filled(PeptideIdentification record,
                 const std::optional<std::string>& tag = std::nullopt) const
    {
        Records records = {std::move(record)};
        Fill(records, tag);
        return TextsOf(records.front());
    }
    /// The lines of proteins.tsv.
    Texts Lines(const Records& records, bool equateIl = false) const
    {
        const ProteinMap map(database_, records, equateIl);
        Texts lines;
        ProteinRows(map, records).ForEach([&](const ProteinRow& row) {
            lines.push_back(LineOf(row, map));
        });
        return lines;
    }
    const ProteinDatabase& Database() const { return database_; }

private:
    TempFolder folder_;
    ProteinDatabase database_;
};

const char* const kThree = ">P1 one\nGASKGASKA\n>P2 two\nAGASK\n>D_P3 decoy\nRGASKR\n";

// ---- Evidences ----------------------------------------------------------------

TEST(ProteinMap, FillsInWhatAnEvidenceLacks)
{
    const Proteins proteins(">P1 one\nGASKGASKA\n");
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("P1")})), (Texts{"P1 1 -G"}));
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("P1", -1, 'K')})), (Texts{"P1 5 KA"}));
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("P1", -1, 'X', 'A')})), (Texts{"P1 5 KA"}));
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("P1", 5)})), (Texts{"P1 5 KA"}));
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("P1", 4)})), (Texts{"P1 4 KA"}));
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("P1", 0)})), (Texts{"P1 0 -G"}));
    EXPECT_EQ(proteins.Filled(Record("SKA", {Evidence("P1")})), (Texts{"P1 7 A-"}));
    EXPECT_EQ(proteins.Filled(Record("A", {Evidence("P1", -1, 'K')})), (Texts{"P1 9 K-"}));
}

TEST(ProteinMap, NeverChangesWhatTheEngineGave)
{
    const Proteins proteins(">P1 one\nGASKGASKA\n");
    Records records = {Record("GASK", {Evidence("P1", 7, 'W')}),
                       Record("GASK", {Evidence("P1", 3)}),
                       Record("GASK", {Evidence("P1", 5, '-', 'G')})};
    const ProteinCounts counts = proteins.Fill(records);
    EXPECT_EQ(TextsOf(records[0]), (Texts{"P1 7 WG"}));
    EXPECT_EQ(TextsOf(records[1]), (Texts{"P1 3 -G"}));
    EXPECT_EQ(TextsOf(records[2]), (Texts{"P1 5 -G"}));
    EXPECT_EQ(counts.Of(Count::StartDisagrees), 2U);
    EXPECT_EQ(counts.Of(Count::ResidueDisagrees), 2U);
    EXPECT_EQ(counts.Of(Count::StartFromOne), 1U);
    EXPECT_EQ(counts.examples[static_cast<std::size_t>(Count::StartDisagrees)],
              (Texts{"GASK in P1"}));
    EXPECT_EQ(counts.Losses(), 4U);
}

TEST(ProteinMap, AResidueThatIsReallyXStaysX)
{
    Records records = {Record("GASK", {Evidence("P1")})};
    const ProteinCounts counts = Proteins(">P1\nXGASKX\n").Fill(records);
    EXPECT_EQ(TextsOf(records[0]), (Texts{"P1 2 XX"}));
    EXPECT_EQ(counts.Of(Count::ResidueFilled), 0U);
    EXPECT_EQ(counts.Of(Count::StartFilled), 1U);
}

TEST(ProteinMap, AddsTheProteinsThatHaveNoEvidence)
{
    const Proteins proteins(kThree);
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("P2")})),
              (Texts{"P2 2 A-", "P1 1 -G", "D_P3 2 RR"}));
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("P2")}), "D_"),
              (Texts{"P2 2 A-", "P1 1 -G"}));
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("D_P3")}), "D_"),
              (Texts{"D_P3 2 RR", "P1 1 -G", "P2 2 A-"}));
    EXPECT_EQ(proteins.Filled(Record("GASK"), "D_"), (Texts{"P1 1 -G", "P2 2 A-"}));
    EXPECT_EQ(proteins.Filled(Record("RGASK"), "D_"), (Texts{"D_P3 1 -R"}));
    PeptideIdentification decoy = Record("GASK", {Evidence("P2")});
    decoy.bDecoy = true;
    EXPECT_EQ(proteins.Filled(decoy, "D_").size(), 3U);
}

TEST(ProteinMap, ATargetStaysATarget)
{
    Records records = {Record("GASK", {Evidence("P1")}), Record("RGASK", {Evidence("P1")})};
    const ProteinCounts counts = Proteins(kThree).Fill(records, "D_");
    EXPECT_TRUE(records[0].isTarget("D_"));
    EXPECT_TRUE(records[1].isTarget("D_"));
    EXPECT_EQ(counts.Of(Count::DecoyLeftOut), 2U);
    EXPECT_EQ(counts.Of(Count::EvidenceAdded), 1U);
    EXPECT_EQ(counts.Losses(), 1U); // RGASK is not in P1
}

TEST(ProteinMap, AnAccessionIsTriedWholeThenUpToTheFirstBlank)
{
    const Proteins proteins(">P1 one\nGASK\n>P2\tby tab\nGASKR\n");
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("  P1 "), Evidence("P2 Albumin")})),
              (Texts{"  P1  1 --", "P2 Albumin 1 -R"}));
    EXPECT_EQ(proteins.Filled(Record("GASK", {Evidence("P1")})), (Texts{"P1 1 --", "P2 1 -R"}));
}

TEST(ProteinMap, CountsEveryEvidenceOnce)
{
    Records records = {Record("GASK", {Evidence("P1"), Evidence("P2", 1), Evidence("P2", 2),
                                       Evidence("P9"), Evidence("D_P9"), Evidence("D_P3")}),
                       Record("KGASK", {Evidence("P2")}),
                       Record("WWW", {Evidence("P1")}),
                       Record("WWR", {Evidence("D_P1")}),
                       Record("gask", {Evidence("P1")}),
                       Record("GA;K", {Evidence("P1")}),
                       Record("", {Evidence("P1")})};
    const ProteinCounts counts = Proteins(kThree).Fill(records, "D_");
    using Group = ProteinCountGroup;
    EXPECT_EQ(counts.Total(Group::Peptides), 7U);
    EXPECT_EQ(counts.Of(Count::PeptideFound), 2U);
    EXPECT_EQ(counts.Of(Count::PeptideNotFound), 1U);
    EXPECT_EQ(counts.Of(Count::PeptideNotFoundDecoy), 1U);
    EXPECT_EQ(counts.Of(Count::PeptideNotLetters), 3U);
    EXPECT_EQ(counts.Total(Group::Evidences), 12U);
    EXPECT_EQ(counts.Of(Count::EvidenceConfirmed), 4U);
    EXPECT_EQ(counts.Of(Count::AccessionUnknown), 1U);
    EXPECT_EQ(counts.Of(Count::AccessionUnknownDecoy), 2U);
    EXPECT_EQ(counts.Of(Count::PeptideNotInProtein), 5U);
    EXPECT_EQ(counts.Of(Count::StartFilled), 2U);
    EXPECT_EQ(counts.Of(Count::StartFromZero), 1U);
    EXPECT_EQ(counts.Of(Count::StartFromOne), 1U);
    EXPECT_EQ(counts.Of(Count::ResidueFilled), 4U);
    EXPECT_EQ(counts.Of(Count::EvidenceAdded), 1U); // P1 of KGASK
    EXPECT_EQ(counts.Losses(), 1U + 3U + 1U + 5U);
}

TEST(ProteinMap, ExamplesAreFewAndDifferent)
{
    Records records;
    for (int i = 0; i < 20; ++i) {
        records.push_back(Record("GASK", {Evidence("Q" + std::to_string(i / 2))}));
    }
    const ProteinCounts counts = Proteins(kThree).Fill(records);
    EXPECT_EQ(counts.Of(Count::AccessionUnknown), 20U);
    EXPECT_EQ(counts.examples[static_cast<std::size_t>(Count::AccessionUnknown)],
              (Texts{"Q0", "Q1", "Q2", "Q3", "Q4"}));
}

TEST(ProteinMap, AccessionsThatNoTableCanHoldAreNotAdded)
{
    Records records = {Record("GASK", {Evidence("P1")})};
    const ProteinCounts counts =
        Proteins(">P1\nGASK\n>a;b\nGASK\n> blank first\nGASK\n>P2\nGASK\n").Fill(records);
    EXPECT_EQ(TextsOf(records[0]), (Texts{"P1 1 --", "P2 1 --"}));
    EXPECT_EQ(counts.Of(Count::NotWritable), 2U);
}

TEST(ProteinMap, ARowStaysShortEnoughToBeRead)
{
    std::string fasta;
    for (int i = 0; i < 5000; ++i) {
        fasta += ">protein_number_" + std::to_string(i) + "\nAGASKR\n";
    }
    Records records = {Record("GASK", {Evidence("protein_number_4999")})};
    const ProteinCounts counts = Proteins(fasta).Fill(records);
    std::size_t characters = 0;
    for (const PeptideEvidence& evidence : records[0].vEvidences) {
        characters += evidence.strProteinAccession.size() + 1 + 2 + 2 + 2;
    }
    EXPECT_LT(characters, 81919U);
    EXPECT_GT(records[0].vEvidences.size(), 1000U);
    EXPECT_GT(counts.Of(Count::NoRoom), 100U);
    EXPECT_EQ(records[0].vEvidences.size() - 1, counts.Of(Count::EvidenceAdded));
    EXPECT_EQ(counts.Of(Count::EvidenceAdded) + counts.Of(Count::NoRoom), 4999U);
}

// ---- Databases ----------------------------------------------------------------

TEST(ProteinDatabase, TheFirstOfEqualAccessionsCounts)
{
    const Proteins proteins(">P1 a\nGASK\n>P1 b\nRGASKR\n>P2\n\n>P2 again\nAAA\n>P2\nAAA\n");
    EXPECT_EQ(proteins.Database().Repeats(), 3U);
    EXPECT_EQ(proteins.Database().RepeatedNames(), (Texts{"P1", "P2"}));
    EXPECT_EQ(proteins.Database().WithoutResidues(), 1U);
    EXPECT_EQ(proteins.Database().Residues(), 16U);
    EXPECT_EQ(proteins.Filled(Record("GASK")), (Texts{"P1 1 --"}));
    EXPECT_EQ(proteins.Filled(Record("RGASK")), Texts());
    EXPECT_EQ(proteins.Lines({Record("GASK"), Record("AAA")}).size(), 1U);
}

TEST(ProteinDatabase, ADatabaseWithoutResiduesHoldsNothing)
{
    Records records = {Record("A", {Evidence("P1")})};
    const ProteinCounts counts = Proteins(">P1\n>P2\n>P3").Fill(records);
    EXPECT_EQ(counts.Of(Count::PeptideNotFound), 1U);
    EXPECT_EQ(counts.Of(Count::PeptideNotInProtein), 1U);
}

// ---- The plain twin -----------------------------------------------------------

std::string Folded(std::string text, bool equateIl)
{
    std::replace(text.begin(), text.end(), equateIl ? 'I' : 'L', 'L');
    return text;
}

/// "P3 5 AK": protein, start from 1, neighbours, of every place.
std::set<std::string> PlainPlaces(const ProteinDatabase& database, const std::string& peptide,
                                  bool equateIl)
{
    std::set<std::string> places;
    for (const Vorlan::CProtein& protein : database.Proteins()) {
        const std::string& sequence = protein.strSequence;
        const std::string text = Folded(sequence, equateIl);
        const std::string wanted = Folded(peptide, equateIl);
        for (std::size_t at = text.find(wanted); at != std::string::npos;
             at = text.find(wanted, at + 1)) {
            const std::size_t end = at + peptide.size();
            places.insert(protein.strAccession + " " + std::to_string(at + 1) + " "
                          + (at == 0 ? '-' : sequence[at - 1])
                          + (end == sequence.size() ? '-' : sequence[end]));
        }
    }
    return places;
}

/// Short proteins with few letters, some without any; many begin or end with a
/// peptide of one residue.
std::string RandomFasta(std::mt19937& random)
{
    std::string fasta;
    const auto count = 1 + random() % 40;
    for (unsigned i = 0; i < count; ++i) {
        fasta += ">P" + std::to_string(i) + "\n";
        const auto length = i % 7 == 0 ? random() % 3000 : random() % 12;
        for (unsigned j = 0; j < length; ++j) {
            fasta += "AIL"[random() % 3];
        }
        fasta += "\n";
    }
    return fasta;
}

TEST(ProteinMap, AgreesWithAPlainSearchOfEveryProtein)
{
    std::mt19937 random(7);
    for (int round = 0; round < 30; ++round) {
        const Proteins proteins(RandomFasta(random));
        const bool equateIl = round % 2 == 1;
        Records records;
        for (int i = 0; i < 30; ++i) {
            std::string peptide;
            for (auto length = 1 + random() % 6; length > 0; --length) {
                peptide += "AIL"[random() % 3];
            }
            records.push_back(Record(peptide));
        }
        const ProteinMap map(proteins.Database(), records, equateIl);
        for (std::size_t i = 0; i < records.size(); ++i) {
            const std::string& peptide = records[i].strSequence;
            const std::set<std::string> plain = PlainPlaces(proteins.Database(), peptide, equateIl);
            std::set<std::string> found;
            for (const Place& place : map.Places().Of(map.PeptideOf()[i])) {
                const Vorlan::CProtein& protein = proteins.Database().Proteins()[place.protein];
                const auto end = static_cast<std::size_t>(place.start) + peptide.size();
                found.insert(
                    protein.strAccession + " " + std::to_string(place.start + 1) + " "
                    + (place.start == 0 ? '-' : protein.strSequence[place.start - 1])
                    + (end == protein.strSequence.size() ? '-' : protein.strSequence[end]));
            }
            ASSERT_EQ(found, plain) << peptide;
        }
        proteins.Fill(records, std::nullopt, equateIl);
        for (const PeptideIdentification& record : records) {
            const std::set<std::string> plain =
                PlainPlaces(proteins.Database(), record.strSequence, equateIl);
            std::set<std::string> accessions;
            for (const std::string& place : plain) {
                accessions.insert(place.substr(0, place.find(' ')));
            }
            EXPECT_EQ(record.vEvidences.size(), accessions.size());
            for (const PeptideEvidence& evidence : record.vEvidences) {
                EXPECT_EQ(plain.count(TextOf(evidence)), 1U) << TextOf(evidence);
            }
        }
    }
}

// ---- The rows of proteins.tsv ---------------------------------------------------

IdentModification Mod(const std::string& name, std::int32_t position)
{
    return {name, 0.0, "", "Anywhere", position};
}

PeptideIdentification WithMods(const std::string& sequence,
                               const std::vector<IdentModification>& mods)
{
    PeptideIdentification record = Record(sequence);
    record.vMods = mods;
    return record;
}

TEST(ProteinTable, ListsEveryProteinThatHoldsAPeptide)
{
    EXPECT_EQ(Proteins(kThree).Lines({Record("GASK"), Record("GASK"), Record("SKG"), Record("W")}),
              (Texts{"P1\tone\t9\t88.89\t3\t2\tGASK@1-4;SKG@3-5;GASK@5-8\t\n",
                     "P2\ttwo\t5\t80.00\t2\t1\tGASK@2-5\t\n",
                     "D_P3\tdecoy\t6\t66.67\t2\t1\tGASK@2-5\t\n"}));
    EXPECT_EQ(Proteins(kThree).Lines({Record("W"), Record("")}), Texts());
}

TEST(ProteinTable, PlacesStandByStartThenEnd)
{
    EXPECT_EQ(Proteins(">P1\nAILK\n").Lines({Record("AIL"), Record("ALL"), Record("AI")}, true),
              (Texts{"P1\t\t4\t75.00\t3\t3\tAI@1-2;AIL@1-3;ALL@1-3\t\n"}));
}

TEST(ProteinTable, SitesAreThoseOfTheProtein)
{
    const Texts lines = Proteins(">P1 one\nAAGAMKC\n>P2\nGAMK\n")
                            .Lines({WithMods("GAMK", {Mod("Oxidation (M)", 3)}),
                                    WithMods("GAMK", {Mod("Oxidation (M)", 3), Mod("Acetyl", 0)}),
                                    WithMods("MK", {Mod("Oxidation (M)", 1), Mod("Amide", 3)}),
                                    WithMods("GAMK", {Mod("Far", 6), Mod("Below", -1)})});
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "P1\tone\t7\t57.14\t4\t2\tGAMK@3-6;MK@5-6\tAcetyl@N-term3;"
                        "Oxidation (M)@M5 x3;Amide@C-term6\n");
    EXPECT_THAT(lines[1],
                testing::EndsWith("\tAcetyl@N-term1;Oxidation (M)@M3 x3;Amide@C-term4\n"));
}

TEST(ProteinTable, ARecordCountsOnceAtASite)
{
    // AA at 1-2 and 2-3: the modified A of both is residue 2.
    const Texts lines = Proteins(">P1\nAAA\n").Lines({WithMods("AA", {Mod("m", 1), Mod("m", 2)})});
    EXPECT_EQ(lines, (Texts{"P1\t\t3\t100.00\t1\t1\tAA@1-2;AA@2-3\tm@A1;m@A2;m@A3\n"}));
}

TEST(ProteinTable, TextsDoNotBreakIt)
{
    const Texts lines =
        Proteins(">P1\tx y\tz\nGASK\n").Lines({WithMods("GASK", {Mod("a\tb;c\n", 3)})});
    EXPECT_EQ(lines, (Texts{"P1\ty?z\t4\t100.00\t1\t1\tGASK@1-4\ta?b,c?@S3\n"}));
}

TEST(ProteinTable, TopSitesAreTheMostFrequentOnes)
{
    const Proteins proteins(">P1\nABCDEFGHK\n>P2\nABCDEFGHK\n");
    Records records;
    for (std::int32_t position = 1; position <= 9; ++position) {
        for (std::int32_t i = 0; i < position % 5; ++i) {
            records.push_back(WithMods("ABCDEFGHK", {Mod("m", position)}));
        }
    }
    const ProteinMap map(proteins.Database(), records, false);
    TopSites sites;
    ProteinRows(map, records).ForEach([&](const ProteinRow& row) { sites.Offer(row, map); });
    Texts texts;
    for (const TopSites::Entry& entry : sites.Entries()) {
        texts.push_back(entry.text + " " + std::to_string(entry.records));
    }
    EXPECT_EQ(texts, (Texts{"P1 D4 m 4", "P1 K9 m 4", "P2 D4 m 4", "P2 K9 m 4", "P1 C3 m 3"}));
    EXPECT_EQ(sites.Offered(), 16U);
}

} // namespace
} // namespace pelgrin::test
