// Query against a plain linear search that follows the same walk, and against the
// truth.
#include <string>

#include "proteindb/FastaProbe.h"
#include "proteindb/RandomFasta.h"

namespace Vorlan::test {
namespace {

constexpr std::uint64_t kWidth = 2000;

/// The walk of Query, told plainly: from the first protein that begins in the bin
/// or behind it (the last one where there is none), forward as long as the next
/// one begins before the end of the match, or back as long as it begins behind it.
class PlainWalk {
public:
    explicit PlainWalk(const std::vector<CProtein>& proteins)
    {
        for (const CProtein& protein : proteins) {
            starts_.push_back(length_);
            length_ += protein.strSequence.size() + 1;
        }
    }

    std::uint64_t Length() const { return length_; }
    std::uint64_t StartOf(std::size_t protein) const { return starts_[protein]; }
    /// The first position that has no bin.
    std::uint64_t End() const { return (length_ / kWidth + 1) * kWidth; }

    std::size_t ProteinOf(std::uint64_t endPos) const
    {
        std::size_t protein = 0;
        while (protein + 1 < starts_.size() && starts_[protein] < endPos / kWidth * kWidth) {
            ++protein;
        }
        while (starts_[protein] < endPos && protein + 1 < starts_.size()
               && starts_[protein + 1] < endPos) {
            ++protein;
        }
        while (starts_[protein] > endPos) {
            --protein;
        }
        return protein;
    }

private:
    std::vector<std::uint64_t> starts_;
    std::uint64_t length_ = 0;
};

struct Answer {
    std::string accession;
    std::uint64_t start = 0;

    bool operator==(const Answer& other) const
    {
        return accession == other.accession && start == other.start;
    }
};

void PrintTo(const Answer& answer, std::ostream* out)
{
    *out << answer.accession << " at " << answer.start;
}

/// The answer for a match of so many residues; "none" for false.
Answer Ask(const CFastaProteinDB& database, std::size_t length, std::uint64_t endPos)
{
    CProtein protein("none", "", "");
    std::uint64_t start = 0;
    const bool isFound = database.Query(std::string(length, 'x'), endPos, protein, start);
    EXPECT_EQ(isFound, protein.strAccession != "none") << "false, and nothing is changed";
    return {protein.strAccession, start};
}

class FastaQuery : public testing::Test {
protected:
    void Load(const std::string& text)
    {
        const std::string path = folder_.Write("a.fasta", text);
        ASSERT_TRUE(database_.Load(path));
    }

    Answer Ask(std::size_t length, std::uint64_t endPos) const
    {
        return test::Ask(database_, length, endPos);
    }

    const TempFolder folder_;
    DatabaseProbe database_;
};

TEST_F(FastaQuery, TheExampleOfThePage)
{
    Load(">P1\nAAA\n>P2\nCC\n");
    EXPECT_EQ(database_.cProteinString().find("CC"), 4u);
    EXPECT_EQ(Ask(2, 5), (Answer{"P2", 0}));
    EXPECT_EQ(Ask(3, 2), (Answer{"P1", 0}));
    EXPECT_EQ(Ask(2, 2), (Answer{"P1", 1}));
    EXPECT_EQ(Ask(2, 1), (Answer{"P1", 0}));
}

TEST_F(FastaQuery, TheAnswerIsACopyOfTheWholeProtein)
{
    Load(">P1 x\nAAA\n>P2 a second one\nCC\n");
    CProtein protein;
    std::uint64_t start = 77;
    ASSERT_TRUE(database_.Query("CC", 5, protein, start));
    EXPECT_EQ(Dump(protein), "P2|a second one|CC");
    protein.strSequence = "changed";
    EXPECT_EQ(Dump(database_.cProteins()[1]), "P2|a second one|CC");
}

TEST_F(FastaQuery, OnlyTheLengthOfThePeptideIsUsed)
{
    Load(">P1\nAAA\n>P2\nCC\n");
    for (const std::string peptide : {"CC", "xx", ";;", "a\n"}) {
        CProtein protein;
        std::uint64_t start = 77;
        ASSERT_TRUE(database_.Query(peptide, 5, protein, start)) << peptide;
        EXPECT_EQ(protein.strAccession, "P2") << peptide;
        EXPECT_EQ(start, 0u) << peptide;
    }
}

TEST_F(FastaQuery, B79_AMatchOfOneResidueAtAStartLiesInTheProteinBefore)
{
    Load(">P1\nAAA\n>P2\nCC\n>P3\n>P4\nK\n");
    ASSERT_EQ(database_.cProteinString(), "AAA;CC;;K;");
    EXPECT_EQ(Ask(1, 4), (Answer{"P1", 4}));
    EXPECT_EQ(Ask(1, 8), (Answer{"P3", 1}));
    EXPECT_EQ(Ask(1, 0), (Answer{"P1", 0})) << "the first of its bin is found";
    EXPECT_EQ(Ask(1, 5), (Answer{"P2", 1})) << "and so are later residues";
}

TEST_F(FastaQuery, B79_TheFirstProteinOfItsBinIsFound)
{
    Load(">P1\n" + std::string(1999, 'A') + "\n>P2\nCC\n>P3\nK\n");
    ASSERT_EQ(database_.Starts()[1], kWidth);
    EXPECT_EQ(Ask(1, 2000), (Answer{"P2", 0}));
    EXPECT_EQ(Ask(1, 2003), (Answer{"P2", 3})) << "the second of it is not";
    EXPECT_EQ(Ask(1, 1999), (Answer{"P1", 1999})) << "a separator belongs to the one before";
}

TEST_F(FastaQuery, AnEmptyPeptideIsNotFound)
{
    Load(">P1\nAAA\n");
    EXPECT_EQ(Ask(0, 1), (Answer{"none", 0}));
}

TEST_F(FastaQuery, PositionsWithoutABinAreNotFound)
{
    Load(">P1\nAAA\n>P2\nCC\n");
    EXPECT_EQ(Ask(2, 1999), (Answer{"P2", 1994})) << "elsewhere nothing is checked";
    for (const std::uint64_t endPos :
         {kWidth, kWidth + 1, std::uint64_t{1} << 32, std::uint64_t{1} << 63, ~std::uint64_t{0}}) {
        EXPECT_EQ(Ask(2, endPos), (Answer{"none", 0})) << endPos;
    }
}

TEST_F(FastaQuery, ALengthOfWholeBinsHasOneBinMore)
{
    Load(">P1\n" + std::string(3999, 'A') + "\n");
    ASSERT_EQ(database_.cProteinString().size(), 2 * kWidth);
    EXPECT_EQ(Ask(2, 5999), (Answer{"P1", 5998}));
    EXPECT_EQ(Ask(2, 6000), (Answer{"none", 0}));
}

TEST_F(FastaQuery, APeptideThatIsTooLongBeginsBelowZero)
{
    Load(">P1\nAAA\n>P2\nCC\n");
    EXPECT_EQ(Ask(4, 5), (Answer{"P2", ~std::uint64_t{0} - 1})) << "-2, modulo 2^64";
    EXPECT_EQ(Ask(2, 0), (Answer{"P1", ~std::uint64_t{0}}));
}

TEST_F(FastaQuery, EmptyDatabasesFindNothing)
{
    EXPECT_EQ(Ask(1, 0), (Answer{"none", 0})) << "never loaded";
    Load("");
    EXPECT_EQ(Ask(1, 0), (Answer{"none", 0})) << "an empty file";
    Load(">P1\nAAA\n");
    EXPECT_EQ(Ask(2, 1), (Answer{"P1", 0}));
    OutputOf([&] { EXPECT_FALSE(database_.Load(folder_.Write("b.fasta", "x\n>P2\nAAA\n"))); });
    EXPECT_EQ(Ask(2, 1), (Answer{"P1", 0})) << "a false start keeps what was there";
    Load("");
    EXPECT_EQ(Ask(2, 1), (Answer{"none", 0})) << "an empty file does not";
}

TEST_F(FastaQuery, ADatabaseOfOneProteinWithoutResidues)
{
    Load(">P1\n");
    EXPECT_EQ(Ask(1, 0), (Answer{"P1", 0}));
    EXPECT_EQ(Ask(1, 5), (Answer{"P1", 5}));
}

// ---- Random databases ------------------------------------------------------

/// Lengths by the kind of database: many short ones in a bin, or few over bins,
/// and some that end at its edge.
std::string RandomDatabase(Random& random)
{
    const std::size_t most = random.OneIn(3) ? 5 : random.OneIn(2) ? 300 : 7000;
    std::string text;
    std::uint64_t length = 0;
    for (int i = 0; length < 9000; ++i) {
        std::size_t residues = random.OneIn(6) ? 0 : random.Below(most);
        if (random.OneIn(12)) {
            residues = kWidth - 1 - length % kWidth; // the next one begins a bin
        }
        text += ">P" + std::to_string(i) + "\n" + RandomResidues(random, residues) + "\n";
        length += residues + 1;
    }
    return text;
}

TEST_F(FastaQuery, EveryPositionIsThatOfThePlainWalk)
{
    Random random(91);
    for (int round = 0; round < 12; ++round) {
        Load(RandomDatabase(random));
        const PlainWalk plain(database_.cProteins());
        ASSERT_EQ(plain.Length(), database_.cProteinString().size());
        for (std::uint64_t endPos = 0; endPos < plain.End() + 10; ++endPos) {
            const std::size_t length = 1 + random.Below(20);
            Answer expected = {"none", 0};
            if (endPos < plain.End()) {
                const std::size_t protein = plain.ProteinOf(endPos);
                expected = {"P" + std::to_string(protein),
                            endPos - plain.StartOf(protein) - length + 1};
            }
            ASSERT_EQ(Ask(length, endPos), expected) << "round " << round << ", end " << endPos;
        }
    }
}

TEST_F(FastaQuery, MatchesOfTwoAndMoreResiduesAreFoundWhereTheyAre)
{
    Random random(92);
    for (int round = 0; round < 12; ++round) {
        Load(RandomDatabase(random));
        std::uint64_t begin = 0;
        for (const CProtein& protein : database_.cProteins()) {
            for (std::size_t end = 1; end < protein.strSequence.size(); ++end) {
                const std::size_t start = random.Below(end); // at least one before the end
                ASSERT_EQ(Ask(end - start + 1, begin + end), (Answer{protein.strAccession, start}))
                    << "round " << round << ", end " << begin + end;
            }
            begin += protein.strSequence.size() + 1;
        }
    }
}

/// What docs/behaviour.md tells hosts to do, B-79.
TEST_F(FastaQuery, B79_OnePositionFurtherWithOneResidueMoreIsExactForEveryLength)
{
    Random random(93);
    for (int round = 0; round < 12; ++round) {
        Load(RandomDatabase(random));
        std::uint64_t begin = 0;
        for (const CProtein& protein : database_.cProteins()) {
            for (std::size_t end = 0; end < protein.strSequence.size(); ++end) {
                const std::size_t length = 1 + random.Below(end + 1);
                ASSERT_EQ(Ask(length + 1, begin + end + 1),
                          (Answer{protein.strAccession, end + 1 - length}))
                    << "round " << round << ", end " << begin + end;
            }
            begin += protein.strSequence.size() + 1;
        }
    }
}

} // namespace
} // namespace Vorlan::test
