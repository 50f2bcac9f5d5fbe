// Copies of copies, of files that were odd to begin with: most were found by
// fuzz/prepare_fuzz.cpp or while it was written.
#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "ResultTexts.h"
#include "common/Failure.h"
#include "prepare/Preparation.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using namespace pelgrin::test;
using testing::HasSubstr;
using Vorlan::test::ReadFile;
using Vorlan::test::Repeat;
using Vorlan::test::TempFolder;

struct Copied {
    std::string text; ///< of all files
    std::uint64_t written = 0;
};

Copied CopyOf(const std::string& path, FileKind kind, const std::string& out)
{
    Preparation preparation(out);
    preparation.Add(path, kind);
    preparation.Run();
    const Copy& copy = preparation.Copies().front();
    Copied copied{"", copy.written};
    for (const std::string& output : preparation.PathsOf(copy)) {
        copied.text += ReadFile(output);
    }
    return copied;
}

struct OddFile {
    const char* reason;
    FileKind kind;
    const char* name;
    std::string text;
    std::uint64_t records; ///< of the copy
};

std::string Mgf(const std::string& title, const std::string& headers = "")
{
    return "BEGIN IONS\nTITLE=" + title + "\n" + headers + "PEPMASS=500\n100 1\nEND IONS\n";
}

/// Two matches of one peptide with different proteins, and no peptides.txt.
std::string MsmsOfTwoProteins()
{
    std::string other = MsmsRow();
    const std::string protein = "P1";
    EXPECT_NE(other.find(protein), std::string::npos);
    return kMsmsHeader + MsmsRow() + other.replace(other.find(protein), protein.size(), "P2");
}

std::vector<OddFile> OddFiles()
{
    const std::string mark = "\xEF\xBB\xBF";
    std::string headers;
    for (int i = 0; i < 1000; ++i) {
        headers += "USER=x\n";
    }
    return {
        {"two carriage returns behind a peak", FileKind::Mgf, "run.mgf",
         "BEGIN IONS\nTITLE=a\n100 1\r\r\r\nEND IONS\n", 1},
        {"a title of one word, nearly as long as a line", FileKind::Mgf, "run.mgf",
         Mgf(Repeat("t", 81900)), 1},
        {"as many other headers as there may be, and values to be filled in", FileKind::Mgf,
         "run.mgf", Mgf("a", "CHARGE=2+\nRTINSECONDS=1\n") + Mgf("b", headers), 2},
        {"two carriage returns in a table", FileKind::Msgf, "run.tsv",
         kMsgfHeader + MsgfRow().substr(0, MsgfRow().size() - 1) + "\r\r\r\n", 1},
        {"quotes around quotes", FileKind::Msgf, "run.tsv",
         kMsgfHeader + "\"\"\"a\"\"\"" + MsgfRow().substr(MsgfRow().find('\t')), 1},
        {"quotes around nothing but nothing", FileKind::Msgf, "run.tsv",
         kMsgfHeader + "\"\"" + Repeat("\t", 20) + "\n" + MsgfRow(), 1},
        {"one peptide of two proteins without peptides.txt", FileKind::MaxQuantMatches, "msms.txt",
         MsmsOfTwoProteins(), 2},
        {"an escape behind one that looks like the beginning of another", FileKind::PepXml,
         "run.pep.xml", PepXml(Query("<search_hit protein=\"P1&amp;a&apos;\"/>")), 1},
        {"an escape that the resolved one within it makes", FileKind::PepXml, "run.pep.xml",
         PepXml(Query("<search_hit protein=\"P1&am&#112;;&amp;&amp;&quot;\"/>")), 1},
        {"two marks", FileKind::OtherTable, "table.txt", mark + mark + "a\tb\n", 0},
        {"two carriage returns in another table", FileKind::OtherTable, "table.txt",
         "a\tb\r\r\r\n1\t2\n", 0},
    };
}

TEST(PrepareAgain, CopiesOfOddFilesAreTheirOwnCopies)
{
    for (const OddFile& file : OddFiles()) {
        SCOPED_TRACE(file.reason);
        const TempFolder folder;
        const Copied first =
            CopyOf(folder.Write(file.name, file.text), file.kind, folder.PathOf("out"));
        EXPECT_EQ(first.written, file.records);
        const Copied second =
            CopyOf(folder.PathOf("out/" + std::string(file.name)), file.kind, folder.PathOf("2"));
        EXPECT_EQ(second.written, file.records);
        EXPECT_TRUE(first.text == second.text) << first.text.substr(0, 400) << "\nbecomes\n"
                                               << second.text.substr(0, 400);
    }
}

TEST(PrepareAgain, BothProteinsOfAPeptideStay)
{
    const TempFolder folder;
    const std::string text = CopyOf(folder.Write("msms.txt", MsmsOfTwoProteins()),
                                    FileKind::MaxQuantMatches, folder.PathOf("out"))
                                 .text;
    EXPECT_THAT(text, HasSubstr("\tP1\t0\n"));
    EXPECT_THAT(text, HasSubstr("\tP2\t1\n"));
}

/// Of a value without a second quote the search for the next one has begun again at the
/// front of the tag, for ever.
TEST(PrepareAgain, QuotesOfPepXmlThatDoNotFitAreRefused)
{
    struct Case {
        const char* reason;
        const char* tag;
        const char* message;
    };
    for (const Case& one : std::vector<Case>{
             {"a quote within quotes that are no value", "<a \"x=' y\"/>",
              "without a second quote"},
             {"a quote in an element's name", "<a'b c='>' d='e'/>", "a name with a quote"},
             {"a quote in an attribute's name", "<a b\"=\"c\" d=\"/>", "a name with a quote"},
         }) {
        const TempFolder folder;
        const std::string path = folder.Write(
            "run.pep.xml", std::string("<msms_pipeline_analysis><msms_run_summary>") + one.tag
                               + "</msms_run_summary></msms_pipeline_analysis>");
        try {
            CopyOf(path, FileKind::PepXml, folder.PathOf("out"));
            ADD_FAILURE() << one.reason << ": is copied";
        } catch (const Failure& failure) {
            EXPECT_THAT(failure.what(), HasSubstr(one.message)) << one.reason;
        }
    }
}

} // namespace
} // namespace pelgrin
