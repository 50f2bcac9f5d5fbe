#include "common/Failure.h"
#include "files/FileLines.h"
#include "files/MgfAudit.h"
#include "files/TableAudit.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using Vorlan::test::Repeat;
using Vorlan::test::TempFolder;

std::vector<std::string> LinesOf(const std::string& bytes, FileLines::Mode mode)
{
    const TempFolder folder;
    FileLines lines(folder.Write("file", bytes), mode);
    std::vector<std::string> all;
    FileLines::Line line;
    while (lines.Next(line)) {
        EXPECT_EQ(line.number, all.size() + 1);
        all.push_back(line.begin);
    }
    return all;
}

TEST(FileLines, GivesLinesAsTheLibrarySeesThem)
{
    using Mode = FileLines::Mode;
    using Lines = std::vector<std::string>;
    EXPECT_EQ(LinesOf("", Mode::Text), Lines());
    EXPECT_EQ(LinesOf("a\nb", Mode::Text), (Lines{"a", "b"}));
    EXPECT_EQ(LinesOf("a\n\nb\n", Mode::Text), (Lines{"a", "", "b"}));
    EXPECT_EQ(LinesOf("a\r\n\r\nb\r", Mode::Text), (Lines{"a", "", "b\r"}));
    EXPECT_EQ(LinesOf("a\r\n", Mode::Binary), (Lines{"a\r"}));
    EXPECT_EQ(LinesOf("\xEF\xBB\xBFx\n", Mode::Text), (Lines{"x"}));
    EXPECT_EQ(LinesOf("\xEF\xBB\xBFx\n", Mode::Binary), (Lines{"\xEF\xBB\xBFx"}));
    EXPECT_EQ(LinesOf(std::string("a\0b\n\0c\nd\n", 9), Mode::Text), (Lines{"a", "", "d"}));
}

TEST(FileLines, ALineOverBlockBordersHasItsFullLength)
{
    const TempFolder folder;
    const std::string path = folder.Write("file", Repeat("x", 600000) + "\r\nend\n");
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    ASSERT_TRUE(lines.Next(line));
    EXPECT_EQ(line.length, 600000U);
    EXPECT_EQ(line.begin.size(), kLongestLine);
    ASSERT_TRUE(lines.Next(line));
    EXPECT_EQ(line.begin, "end");
    EXPECT_FALSE(lines.Next(line));
}

TableAudit AuditOfTable(const std::string& bytes)
{
    const TempFolder folder;
    return AuditTable(folder.Write("table", bytes));
}

TEST(TableAudit, CountsRowsUpToTheFirstEmptyLine)
{
    TableAudit audit = AuditOfTable("header\na\nb\n");
    EXPECT_EQ(audit.rows, 2U);
    EXPECT_EQ(audit.rowsBehindEmptyLine, 0U);
    audit = AuditOfTable("header\na\n\nb\n\nc");
    EXPECT_EQ(audit.rows, 1U);
    EXPECT_EQ(audit.emptyLine, 3U);
    EXPECT_EQ(audit.rowsBehindEmptyLine, 2U);
    audit = AuditOfTable("header\r\na\r\n\r\n");
    EXPECT_EQ(audit.rows, 1U);
    EXPECT_EQ(audit.rowsBehindEmptyLine, 0U);
}

TEST(TableAudit, ALineMayHold81919Characters)
{
    const std::string longest = Repeat("x", 81919);
    TableAudit audit = AuditOfTable("header\n" + longest + "\r\nb\n");
    EXPECT_EQ(audit.rows, 2U);
    EXPECT_EQ(audit.longLine, 0U);
    audit = AuditOfTable("header\na\n" + longest + "x\nb\n\nc\n");
    EXPECT_EQ(audit.rows, 2U);
    EXPECT_EQ(audit.longLine, 3U);
    EXPECT_TRUE(audit.cutsRow);
    EXPECT_EQ(audit.rowsBehindLongLine, 2U);
    EXPECT_EQ(audit.rowsBehindEmptyLine, 0U);
}

TEST(TableAudit, TheHeaderMayBeOfAnyLength)
{
    const TableAudit audit = AuditOfTable(Repeat("x", 90000) + "\na\nb\n");
    EXPECT_EQ(audit.rows, 2U);
    EXPECT_EQ(audit.longLine, 0U);
}

MgfAudit AuditOfMgf(const std::string& bytes)
{
    const TempFolder folder;
    return AuditMgf(folder.Write("file.mgf", bytes));
}

TEST(MgfAudit, FindsSpectraWithoutPeaks)
{
    const MgfAudit audit = AuditOfMgf("BEGIN IONS\nTITLE=a\nEND IONS\n"
                                      "BEGIN IONS\nTITLE=b\n1 1\nEND IONS\n"
                                      "BEGIN IONS\nTITLE=c\nEND IONS\n");
    EXPECT_EQ(audit.spectra, 3U);
    EXPECT_EQ(audit.firstWithoutPeaks, 1U);
    EXPECT_THAT(audit.titlesWithoutPeaks, testing::ElementsAre("TITLE=a", "TITLE=c"))
        << "the last one has nobody's peaks, and none of its own";
    EXPECT_TRUE(audit.foreignTitles.empty());
}

TEST(MgfAudit, FindsTitlesThatNameASpectrumBefore)
{
    const MgfAudit audit = AuditOfMgf("TOL=1\nBEGIN IONS\n1 1\nEND IONS\n"
                                      "BEGIN IONS\nTITLE=b\n2 2\nEND IONS\n"
                                      "BEGIN IONS\nTITLE=c\n3 3\nEND IONS\n");
    EXPECT_EQ(audit.spectra, 3U);
    EXPECT_EQ(audit.firstWithoutTitle, 2U);
    EXPECT_THAT(audit.foreignTitles, testing::ElementsAre("TITLE=b"));
    EXPECT_TRUE(audit.titlesWithoutPeaks.empty());
}

TEST(MgfAudit, CountsSpectraBehindALineThatIsTooLong)
{
    const MgfAudit audit = AuditOfMgf("BEGIN IONS\nTITLE=a\n1 1\nEND IONS\n" + Repeat("#", 81920)
                                      + "\nBEGIN IONS\nTITLE=b\n1 1\nEND IONS\n");
    EXPECT_EQ(audit.spectra, 2U);
    EXPECT_EQ(audit.longLine, 5U);
    EXPECT_EQ(audit.spectraBehindLongLine, 1U);
}

TEST(CheckReadable, RefusesWhatTheLibraryCannotRead)
{
    const TempFolder folder;
    EXPECT_NO_THROW(CheckReadable(folder.Write("file", "")));
    EXPECT_THROW(CheckReadable(folder.PathOf("missing")), Failure);
    EXPECT_THROW(CheckReadable(folder.Path()), Failure);
    EXPECT_THROW(CheckReadable(folder.Write("back\\slash", "")), Failure);
}

} // namespace
} // namespace pelgrin
