// Real results and the database that was searched: every reported protein holds
// its peptide where the mapping says.
#include <algorithm>
#include <set>
#include <sstream>

#include "FastaProteinDB.h"
#include "HostProgram.h"
#include "PeptideIdentificationIO.h"
#include "support/CLocale.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using Vorlan::PeptideEvidence;
using Vorlan::PeptideIdentification;
using Vorlan::test::ReadFile;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;
using Records = std::vector<PeptideIdentification>;

std::string PathOf(const std::string& name)
{
    return RealDataFolder() + "/comet/F13_set/" + name;
}

/// The records of a native table, as the library reads them.
Records TableRecords(const std::string& folder, const std::string& name)
{
    Vorlan::TulkTXTPepIdentIO reader;
    Records records;
    reader.InitLoad({folder, name, Vorlan::PepIdentType::CalvexTxt});
    reader.Load(records);
    reader.EndLoad();
    return records;
}

/// "pelgrin" with --mod of the search and an output "table.txt" in folder.
Outcome Made(const std::string& command, const char* in, const std::string& search,
             const TempFolder& folder, const std::vector<std::string>& more)
{
    std::vector<std::string> arguments = {command,
                                          in,
                                          PathOf(search + "/F13.pep.xml"),
                                          "--format",
                                          "Comet (.pep.xml)",
                                          "--mod",
                                          "Oxidation (M)=15.9949",
                                          "--mod",
                                          "Carbamidomethyl (C)=57.021464",
                                          "--mod",
                                          "Acetyl (Protein N-term)=42.010565",
                                          "--out",
                                          folder.PathOf(command + ".txt"),
                                          "--allow",
                                          "further_hit,further_protein"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunPelgrin(arguments);
}

/// The sequence of the first protein with each accession.
std::map<std::string, std::string> Sequences()
{
    Vorlan::CFastaProteinDB database;
    database.SetDBPath(PathOf("Homo-sapiens_td.fasta"));
    EXPECT_TRUE(database.ReadFromFile());
    std::map<std::string, std::string> sequences;
    for (const Vorlan::CProtein& protein : database.cProteins()) {
        sequences.emplace(protein.strAccession, protein.strSequence);
    }
    return sequences;
}

/// What an evidence must say of each place of peptide: start from 1, neighbours.
std::set<std::string> PlacesIn(const std::string& protein, const std::string& peptide)
{
    std::set<std::string> places;
    for (std::size_t at = protein.find(peptide); at != std::string::npos;
         at = protein.find(peptide, at + 1)) {
        const std::size_t end = at + peptide.size();
        places.insert(std::to_string(at + 1) + (at == 0 ? '-' : protein[at - 1])
                      + (end == protein.size() ? '-' : protein[end]));
    }
    return places;
}

void ExpectPlaces(const Records& before, const Records& after)
{
    const auto sequences = Sequences();
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        const std::string& peptide = after[i].strSequence;
        const PeptideEvidence& reported = before[i].vEvidences.at(0);
        const PeptideEvidence& filled = after[i].vEvidences.at(0);
        EXPECT_EQ(filled.strProteinAccession, reported.strProteinAccession);
        EXPECT_EQ(filled.cBefore, reported.cBefore);
        EXPECT_EQ(filled.cAfter, reported.cAfter);
        const bool isTarget = before[i].isTarget("DECOY_");
        EXPECT_EQ(after[i].isTarget("DECOY_"), isTarget);
        std::set<std::string> holders;
        for (const PeptideEvidence& evidence : after[i].vEvidences) {
            const auto places = PlacesIn(sequences.at(evidence.strProteinAccession), peptide);
            EXPECT_EQ(
                places.count(std::to_string(evidence.nStart) + evidence.cBefore + evidence.cAfter),
                1U)
                << peptide << " in " << evidence.strProteinAccession;
            EXPECT_TRUE(holders.insert(evidence.strProteinAccession).second);
        }
        for (const auto& [accession, sequence] : sequences) {
            const bool isDecoy = accession.compare(0, 6, "DECOY_") == 0;
            if (sequence.find(peptide) != std::string::npos && !(isTarget && isDecoy)) {
                EXPECT_EQ(holders.erase(accession), 1U) << peptide << " in " << accession;
            }
        }
        EXPECT_THAT(holders, testing::IsEmpty());
    }
}

TEST(RealProteins, OfCometHoldTheirPeptides)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const auto& [search, told] : std::map<std::string, std::string>{
             {"closed", "Evidences          589   name a protein that holds the peptide\n"
                        "                   589   starts filled in\n"
                        "                    36   added,"},
             {"open", "Evidences         1384   name a protein that holds the peptide\n"
                      "                  1384   starts filled in\n"
                      "                   146   added,"}}) {
        SCOPED_TRACE(search);
        const TempFolder folder;
        ASSERT_EQ(Made("convert", "--in", search, folder, {}).status, 0);
        const Outcome outcome = Made("map-proteins", "--psms", search, folder,
                                     {"--fasta", PathOf("Homo-sapiens_td.fasta"), "--decoy-tag",
                                      "DECOY_", "--proteins", folder.PathOf("proteins.tsv")});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr(told));
        ExpectPlaces(TableRecords(folder.Path(), "convert.txt"),
                     TableRecords(folder.Path(), "map-proteins.txt"));
    }
}

/// Every cell "SEQ@start-end" of proteins.tsv, and its shares, by a plain search.
TEST(RealProteins, OfTheTableHoldWhatItSays)
{
    PELGRIN_NEEDS_REAL_DATA();
    const TempFolder folder;
    ASSERT_EQ(Made("map-proteins", "--psms", "open", folder,
                   {"--fasta", PathOf("Homo-sapiens_td.fasta"), "--proteins",
                    folder.PathOf("proteins.tsv")})
                  .status,
              0);
    std::set<std::string> peptides;
    for (const auto& record : TableRecords(folder.Path(), "map-proteins.txt")) {
        peptides.insert(record.strSequence);
    }
    const auto sequences = Sequences();
    std::istringstream lines(ReadFile(folder.PathOf("proteins.tsv")));
    std::string line;
    std::getline(lines, line);
    std::size_t rows = 0;
    while (std::getline(lines, line)) {
        ++rows;
        std::istringstream row(line);
        std::vector<std::string> cells(8);
        for (std::string& cell : cells) {
            std::getline(row, cell, '\t');
        }
        const std::string& sequence = sequences.at(cells[0]);
        std::set<std::string> expected;
        std::vector<bool> covered(sequence.size());
        for (const std::string& peptide : peptides) {
            for (std::size_t at = sequence.find(peptide); at != std::string::npos;
                 at = sequence.find(peptide, at + 1)) {
                const std::size_t end = at + peptide.size();
                expected.insert(peptide + "@" + std::to_string(at + 1) + "-" + std::to_string(end));
                std::fill(covered.begin() + static_cast<std::ptrdiff_t>(at),
                          covered.begin() + static_cast<std::ptrdiff_t>(end), true);
            }
        }
        std::set<std::string> listed;
        std::istringstream places(cells[6]);
        for (std::string place; std::getline(places, place, ';');) {
            listed.insert(place);
        }
        EXPECT_EQ(listed, expected) << cells[0];
        const auto count = std::count(covered.begin(), covered.end(), true);
        const Vorlan::test::CLocale plain;
        EXPECT_NEAR(std::stod(cells[3]),
                    100.0 * static_cast<double>(count) / static_cast<double>(sequence.size()),
                    0.0051);
        EXPECT_EQ(cells[2], std::to_string(sequence.size()));
    }
    EXPECT_EQ(rows, 509U);
}

} // namespace
} // namespace pelgrin::test
