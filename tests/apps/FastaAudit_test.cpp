// The host's own look at FASTA files.
#include "files/FastaAudit.h"

#include "FastaProteinDB.h"
#include "common/Failure.h"
#include "support/Support.h"

namespace pelgrin::test {
namespace {

using Vorlan::test::TempFolder;

FastaAudit Audited(const std::string& text)
{
    const TempFolder folder;
    return AuditFasta(folder.Write("a.fasta", text));
}

std::string Refusal(const std::string& text)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.fasta", text);
    try {
        AuditFasta(path);
    } catch (const Failure& failure) {
        return std::string(failure.what()).substr(folder.Path().size() + 1);
    }
    return "none";
}

TEST(FastaAudit, CountsHeadersAsTheLibraryDoes)
{
    const TempFolder folder;
    const std::string longLine(100000, 'A');
    for (const std::string& text :
         {std::string(">P1 one\nGASK\n>P2\nAK"), std::string("\xEF\xBB\xBF>P1\r\nGASK\r\n"),
          ">P1\n" + longLine + "\n>P2 " + longLine + "\n" + longLine, std::string(">"),
          std::string(">P1\n\n>P2\r\r\nA>A\n\n")}) {
        const std::string path = folder.Write("a.fasta", text);
        Vorlan::CFastaProteinDB library;
        library.SetDBPath(path);
        ASSERT_TRUE(library.ReadFromFile());
        EXPECT_EQ(AuditFasta(path).headers, library.GetEntryNum()) << text.substr(0, 40);
    }
}

TEST(FastaAudit, CountsWhatTheLibraryDrops)
{
    const FastaAudit audit =
        Audited(">P1 lower case\nGASK\nGAsk K*\n>P2\n" + std::string(300000, 'a') + "\n12-\t\n");
    EXPECT_EQ(audit.headers, 2U);
    EXPECT_EQ(audit.lowerCase, 300002U);
    EXPECT_EQ(audit.firstLowerCase, 3U);
    EXPECT_EQ(audit.others, 4U);
    EXPECT_EQ(Audited(">P1\nGASK\n").firstLowerCase, 0U);
}

TEST(FastaAudit, RefusesWhatTheLibraryTakesInSilence)
{
    constexpr const char kNoHeader[] = "a.fasta:1: expected a FASTA file, whose first line is a "
                                       "header that begins with \">\"; ";
    EXPECT_EQ(Refusal(""), std::string(kNoHeader) + "the file is empty");
    EXPECT_EQ(Refusal("\xEF\xBB\xBF"), std::string(kNoHeader) + "the file is empty");
    EXPECT_EQ(Refusal("GASK\n"), std::string(kNoHeader) + "it begins with something else");
    EXPECT_EQ(Refusal("; comment\n>P1\nGASK\n"),
              std::string(kNoHeader) + "it begins with something else");
    EXPECT_EQ(Refusal("\n>P1\nGASK\n"), std::string(kNoHeader) + "it is empty");
    constexpr const char kReturn[] =
        ": a carriage return stands inside a line; expected lines that end in a line feed";
    EXPECT_EQ(Refusal(">P1\rGASK\r>P2\rGASK\r"), std::string("a.fasta:1") + kReturn);
    EXPECT_EQ(Refusal(">P1\r\nGASK\r\nGA\rSK\r\n"), std::string("a.fasta:3") + kReturn);
    EXPECT_EQ(Refusal(">P1\r\r\nGASK\r"), "none");
}

TEST(FastaAudit, RefusesWhatIsNoFile)
{
    const TempFolder folder;
    EXPECT_THROW(AuditFasta(folder.PathOf("none.fasta")), Failure);
    EXPECT_THROW(AuditFasta(folder.Path()), Failure);
}

} // namespace
} // namespace pelgrin::test
