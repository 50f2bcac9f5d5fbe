// Random FASTA files in both ways, the database and entry by entry, against the
// plain twin.
#include "proteindb/FastaProbe.h"
#include "proteindb/PlainFasta.h"
#include "proteindb/RandomFasta.h"

namespace Vorlan::test {
namespace {

void ExpectAgreement(const TempFolder& folder, const std::string& text)
{
    const FastaOutcome expected = ReadPlainly(text);
    std::filesystem::remove(folder.PathOf("a.fasta")); // new files are quicker
    const std::string path = folder.Write("a.fasta", text);
    ASSERT_EQ(ReadByParser(path), expected);
    ASSERT_EQ(ReadByDatabase(path), expected);
}

TEST(FastaTwin, BothWaysAgreeOnRandomFiles)
{
    Random random(81);
    const TempFolder folder;
    int failed = 0;
    for (int round = 0; round < 4000; ++round) {
        const std::string text = RandomFasta(random);
        ExpectAgreement(folder, text);
        ASSERT_FALSE(HasFatalFailure()) << testing::PrintToString(text);
        failed += ReadPlainly(text).isLoaded ? 0 : 1;
    }
    EXPECT_GT(failed, 50) << "hardly any false starts among them";
}

/// The database reads blocks of 256 KiB.
TEST(FastaTwin, BothWaysAgreeAroundTheBlocks)
{
    const TempFolder folder;
    const std::string around = "\r\n>P2 second <one>\r\nMKAC DE\r\nFG\r\n\r\n>P3\r\n";
    for (std::size_t place = 0; place <= around.size(); ++place) {
        const std::string begin = ">P1 first\n";
        const std::size_t filler = 256 * 1024 - begin.size() - place;
        const std::string text = begin + std::string(filler, 'K') + around + "MM\n";
        ExpectAgreement(folder, text);
        ASSERT_FALSE(HasFatalFailure()) << "the block ends at " << place;
    }
}

TEST(FastaTwin, BothWaysAgreeOnARandomFileOfManyBlocks)
{
    Random random(82);
    const TempFolder folder;
    std::string text = ">first\n";
    while (text.size() < (std::size_t{2} << 20)) {
        text += RandomFasta(random) + "\n";
    }
    ExpectAgreement(folder, text);
}

} // namespace
} // namespace Vorlan::test
