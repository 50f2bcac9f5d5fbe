// Which names of an MGF file lead where.
#include <string>
#include <utility>
#include <vector>

#include "spectra/MgfProbe.h"

namespace Vorlan::test {
namespace {

using Entries = std::vector<std::pair<std::string, std::uint64_t>>;

struct IndexCase {
    std::string reason;
    std::string text;
    Entries entries; ///< positions of the lines behind "BEGIN IONS"
};

void Check(const std::vector<IndexCase>& cases)
{
    for (const IndexCase& row : cases) {
        const MgfText mgf(row.text);
        EXPECT_EQ(mgf.reader.Entries(), row.entries) << row.reason;
        const PlainMgf twin(mgf.Path());
        EXPECT_EQ(Entries(twin.Names().begin(), twin.Names().end()), row.entries)
            << "plain twin: " << row.reason;
    }
}

TEST(MgfIndex, NothingIsFoundWithoutTitleBehindABeginLine)
{
    Check({
        {"empty file", "", {}},
        {"a lone line feed", "\n", {}},
        {"no record", "COM=x\n1 2\nEND IONS\n", {}},
        {"a title without record", "TITLE=t\n", {}},
        {"a record without title", "BEGIN IONS\n1 2\nEND IONS\n", {}},
        {"the file ends with BEGIN IONS", "BEGIN IONS\n", {}},
        {"the same without line feed", "BEGIN IONS", {}},
        {"a blank before BEGIN", " BEGIN IONS\nTITLE=t\n", {}},
        {"small letters", "begin ions\nTITLE=t\n", {}},
        {"a blank before TITLE", "BEGIN IONS\n TITLE=t\n", {}},
        {"a small title", "BEGIN IONS\ntitle=t\n", {}},
        {"carriage returns alone make one line", "BEGIN IONS\rTITLE=t\r1 2\rEND IONS\r", {}},
    });
}

TEST(MgfIndex, B23_ARecordBeginsBehindAnyLineThatBeginsWithB)
{
    Check({
        {"one record", "BEGIN IONS\nTITLE=t\n1 2\nEND IONS\n", {{"t", 11}}},
        {"its title is the end of the file", "BEGIN IONS\nTITLE=t", {{"t", 11}}},
        {"carriage returns", "BEGIN IONS\r\nTITLE=t\r\n1 2\r\nEND IONS\r\n", {{"t", 12}}},
        {"lines before it", "COM=x\n\n# y\nBEGIN IONS\nTITLE=t\n", {{"t", 22}}},
        {"lines between it and the title", "BEGIN IONS\nSCANS=1\n1 2\n\nTITLE=t\n", {{"t", 11}}},
        {"any word with B", "BOGUS\nTITLE=t\n", {{"t", 6}}},
        {"B alone", "B\nTITLE=t\n", {{"t", 2}}},
        {"two records",
         "BEGIN IONS\nTITLE=b\nEND IONS\nBEGIN IONS\nTITLE=a\nEND IONS\n",
         {{"a", 39}, {"b", 11}}},
        {"a header line with B before the record is another one",
         "BATCH=1\nBEGIN IONS\nTITLE=t\n",
         {{"t", 8}}},
    });
}

TEST(MgfIndex, TheFirstLineThatBeginsWithTIsTheTitle)
{
    Check({
        {"a line with T before the record", "TOL=3\nBEGIN IONS\nTITLE=t\n", {{"t", 17}}},
        {"a line with T inside the record", "BEGIN IONS\nTOL=3.25\nTITLE=t\n", {{"25", 11}}},
        {"a short line with T", "BEGIN IONS\nTOL=3\nTITLE=t\n", {{"", 11}}},
        {"a second title", "BEGIN IONS\nTITLE=a\nTITLE=b\n", {{"a", 11}}},
        {"no equals sign is looked for", "BEGIN IONS\nTITLE:t\n", {{"t", 11}}},
    });
}

TEST(MgfIndex, SeveralNamesLeadToOneRecord)
{
    Check({
        {"all four",
         "BEGIN IONS\nTITLE=a.b.5.2 scan=9\"\n",
         {{"9", 11}, {"a.00005.00005.2", 11}, {"a.b.5.2", 11}, {"a.b.5.2 scan=9\"", 11}}},
        {"a leading blank gives the empty name",
         "BEGIN IONS\nTITLE= Cmpd 1\n",
         {{"", 11}, {" Cmpd 1", 11}}},
        {"scan number and title may be equal for two records",
         "BEGIN IONS\nTITLE=x scan=7\"\nBEGIN IONS\nTITLE=7\n",
         {{"7", 38}, {"x", 11}, {"x scan=7\"", 11}}},
    });
}

TEST(MgfIndex, B85_TheLaterOfEqualTitlesWins)
{
    Check({
        {"two",
         "BEGIN IONS\nTITLE=t\n1 2\nEND IONS\nBEGIN IONS\nTITLE=t\n3 4\nEND IONS\n",
         {{"t", 43}}},
    });
    MgfText mgf("BEGIN IONS\nTITLE=t\n1 2\nEND IONS\nBEGIN IONS\nTITLE=t\n3 4\nEND IONS\n");
    EXPECT_THAT(mgf.Rest(), testing::ElementsAre("t|0|0+|scan 0|rt 0|3:4"));
}

TEST(MgfIndex, B18_ARecordWithoutTitleIsEnteredUnderTheNextTitle)
{
    const std::string text = "BEGIN IONS\nSCANS=1\n1 2\nEND IONS\n"
                             "BEGIN IONS\nTITLE=t\nSCANS=2\n3 4\nEND IONS\n";
    Check({{"two records, one title", text, {{"t", 11}}}});
    MgfText mgf(text);
    EXPECT_THAT(mgf.Rest(), testing::ElementsAre("t|0|0+|scan 1|rt 0|1:2"));
}

TEST(MgfIndex, AByteOrderMarkHidesTheFirstBegin)
{
    Check({
        {"one record",
         "\xEF\xBB\xBF"
         "BEGIN IONS\nTITLE=t\n",
         {}},
        {"the second one is found",
         "\xEF\xBB\xBF"
         "BEGIN IONS\nTITLE=t\nBEGIN IONS\nTITLE=u\n",
         {{"u", 33}}},
    });
}

TEST(MgfIndex, TextBehindANulIsNotSeen)
{
    Check({
        {"inside a title", WithNuls("BEGIN IONS\nTITLE=ab@cd\n"), {{"ab", 11}}},
        {"inside the key", WithNuls("BEGIN IONS\nTIT@LE=ab\n"), {{"", 11}}},
        {"before BEGIN", WithNuls("@BEGIN IONS\nTITLE=t\n"), {}},
        {"before TITLE", WithNuls("BEGIN IONS\n@TITLE=t\nTITLE=u\n"), {{"u", 11}}},
        {"behind B", WithNuls("B@\nTITLE=t\n"), {{"t", 3}}},
        {"blanks before it are the end of the title",
         WithNuls("BEGIN IONS\nTITLE=ab  @\n"),
         {{"ab", 11}}},
    });
}

TEST(MgfIndex, ManyRecordsBeyondOneBlockOfTheFile)
{
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        text += "BEGIN IONS\nTITLE=run." + std::to_string(i * 7 % 20000)
                + ".2 scan=" + std::to_string(i) + "\"\n100.25 2\nEND IONS\n";
    }
    const MgfText mgf(text);
    const PlainMgf twin(mgf.Path());
    EXPECT_EQ(mgf.reader.Entries(), Entries(twin.Names().begin(), twin.Names().end()));
}

} // namespace
} // namespace Vorlan::test
