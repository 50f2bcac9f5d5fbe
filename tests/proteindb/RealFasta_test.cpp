// Real FASTA files: what was counted in them by other means, read both ways.
#include <string>

#include "proteindb/FastaProbe.h"
#include "proteindb/PlainFasta.h"

namespace Vorlan::test {
namespace {

struct RealFile {
    const char* file;
    std::size_t entries;
    std::size_t residues;
    std::size_t headersWithoutBlank;
};

const RealFile kFiles[] = {
    {"comet/F13_set/Homo-sapiens_td.fasta", 1250, 900906, 110},
    {"comet/PRG2012_set/cow.protein.PRG2012-subset.fasta", 72, 55903, 0},
    {"fasta/Ecoli_K12_target_decoy.fasta", 8272, 2633402, 0},
    {"fasta/Shewanella_oneidensis_crlf.fasta", 4316, 1410448, 0},
    {"fasta/small-yeast_SGD.fasta", 56, 28254, 0},
    {"fasta/yeast_first99_uniprot.fasta", 99, 47908, 0},
};

std::string PathOf(const RealFile& file)
{
    return RealDataFolder() + "/" + file.file;
}

TEST(RealFasta, EntriesAndResidues)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const RealFile& file : kFiles) {
        DatabaseProbe database;
        EXPECT_EQ(OutputOf([&] { EXPECT_TRUE(database.Load(PathOf(file))); }), "") << file.file;
        EXPECT_EQ(database.GetEntryNum(), file.entries) << file.file;
        EXPECT_EQ(database.cProteinString().size(), file.residues + file.entries) << file.file;
        std::size_t residues = 0;
        std::size_t withoutBlank = 0;
        for (const CProtein& protein : database.cProteins()) {
            residues += protein.strSequence.size();
            withoutBlank += protein.strDescription.empty() ? 1 : 0;
            EXPECT_EQ(protein.strAccession.find_first_of(" \r\n"), std::string::npos) << file.file;
            EXPECT_EQ(protein.strDescription.find('\r'), std::string::npos) << file.file;
        }
        EXPECT_EQ(residues, file.residues) << file.file;
        EXPECT_EQ(withoutBlank, file.headersWithoutBlank) << file.file;
    }
}

TEST(RealFasta, BothWaysAndThePlainTwinAgree)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const RealFile& file : kFiles) {
        const FastaOutcome outcome = ReadByDatabase(PathOf(file));
        EXPECT_EQ(outcome.entries.size(), file.entries) << file.file;
        EXPECT_TRUE(ReadByParser(PathOf(file)) == outcome) << file.file;
        EXPECT_TRUE(ReadPlainly(ReadFile(PathOf(file))) == outcome) << file.file;
    }
}

TEST(RealFasta, PeptidesOfEveryProteinAreFoundInIt)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const RealFile& file : kFiles) {
        DatabaseProbe database;
        ASSERT_TRUE(database.Load(PathOf(file)));
        std::uint64_t begin = 0;
        for (const CProtein& protein : database.cProteins()) {
            const std::size_t size = protein.strSequence.size();
            for (std::size_t end = 1; end < size; end += 1 + size / 7) {
                CProtein found;
                std::uint64_t start = 0;
                ASSERT_TRUE(database.Query("KK", begin + end, found, start)) << file.file;
                ASSERT_EQ(found.strAccession, protein.strAccession) << file.file;
                ASSERT_EQ(start, end - 1) << file.file;
            }
            begin += size + 1;
        }
    }
}

TEST(RealFasta, TheFirstHeaderIsTakenWhole)
{
    PELGRIN_NEEDS_REAL_DATA();
    const RealFile& withCarriageReturns = kFiles[3];
    DatabaseProbe database;
    ASSERT_TRUE(database.Load(PathOf(withCarriageReturns)));
    const CProtein& first = database.cProteins().at(0);
    const std::string header = ">" + first.strAccession + " " + first.strDescription + "\r\n";
    EXPECT_EQ(ReadFile(PathOf(withCarriageReturns)).substr(0, header.size()), header);
}

} // namespace
} // namespace Vorlan::test
