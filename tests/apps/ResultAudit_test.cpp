// The host's look at result files: what it counts, what it refuses, and that
// the library's readers give as many records as it says.
#include "files/ResultAudit.h"

#include <optional>
#include <set>

#include <OpenMS/CONCEPT/Exception.h>

#include "HostProgram.h"
#include "PeptideIdentificationIO.h"
#include "ResultTexts.h"
#include "common/Failure.h"
#include "files/PepXmlAudit.h"
#include "support/Random.h"
#include "support/Support.h"

namespace pelgrin::test {
namespace {

using Vorlan::PepIdentType;
using Vorlan::test::OutputOf;
using Vorlan::test::Random;
using Vorlan::test::Repeat;
using Vorlan::test::TempFolder;
using Format = PepIdentType::EPepIdentType;

/// "2 records, 1 short_row at 3": all counts of a file that are not zero.
std::string TextOfAudit(const ResultAudit& audit)
{
    std::string text = std::to_string(audit.records) + " records";
    for (std::size_t i = 0; i < kUnread; ++i) {
        if (audit.unread[i].units > 0) {
            text += ", " + std::to_string(audit.unread[i].units) + " "
                    + KeyOf(static_cast<Unread>(i)) + " at "
                    + std::to_string(audit.unread[i].firstLine);
        }
    }
    return text + (audit.cutsRow ? ", cut" : "");
}

/// The same, or the text of the refusal, for a file and its second file.
std::string AuditText(Format format, const std::string& text, const std::string& second = "")
{
    const TempFolder folder;
    const ResultFiles files = {folder.Write("file", text), folder.Write("second", second)};
    try {
        return TextOfAudit(AuditResult(format, files));
    } catch (const Failure& failure) {
        return std::string(failure.what()).substr(folder.Path().size() + 1);
    }
}

struct Case {
    const char* reason;
    std::string text;
    const char* expected;
};

void ExpectAudits(Format format, const std::vector<Case>& cases)
{
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        EXPECT_EQ(AuditText(format, c.text), c.expected);
    }
}

TEST(Unread, EveryReasonHasItsOwnKeyAndText)
{
    std::set<std::string> keys;
    std::set<std::string> texts;
    for (std::size_t i = 0; i < kUnread; ++i) {
        keys.insert(KeyOf(static_cast<Unread>(i)));
        texts.insert(TextOf(static_cast<Unread>(i)));
    }
    EXPECT_EQ(keys.size(), kUnread);
    EXPECT_EQ(texts.size(), kUnread);
}

// ---- What is counted ----------------------------------------------------------

std::string LongRow(std::string row)
{
    row.insert(row.size() - 1, "\t" + Repeat("x", 81919));
    return row;
}

TEST(ResultAudit, CountsRowsOfMsgf)
{
    const std::string row = MsgfRow();
    ExpectAudits(
        PepIdentType::MsgfTsv,
        {{"rows", kMsgfHeader + row + row, "2 records"},
         {"no rows", kMsgfHeader, "0 records"},
         {"the last line has no end", kMsgfHeader + row.substr(0, row.size() - 1), "1 records"},
         {"an empty row", kMsgfHeader + row + "\n" + row, "2 records, 1 blank_row at 3"},
         {"a short row", kMsgfHeader + "run.mzML\t1\n" + row, "1 records, 1 short_row at 2"},
         {"a long header", LongRow(kMsgfHeader) + row + row, "2 records"},
         {"a long line", kMsgfHeader + row + LongRow(row) + row + row,
          "2 records, 2 behind_long_line at 3, cut"}});
}

TEST(ResultAudit, CountsRowsOfSequest)
{
    const std::string row = SequestRow();
    ExpectAudits(
        PepIdentType::SequestTxt,
        {{"ranks", kSequestHeader + row + SequestRow("2") + SequestRow("0") + SequestRow("7"),
          "2 records, 2 lower_rank at 3"},
         {"quotes around cells",
          "\"Rank\"" + kSequestHeader.substr(4) + "\"2\"" + row.substr(1) + row,
          "1 records, 1 lower_rank at 2"},
         {"an empty row, and one of quotes", kSequestHeader + "\n\"\"\n" + row,
          "1 records, 2 blank_row at 2"},
         {"a rank that the library refuses", kSequestHeader + SequestRow("x"), "1 records"},
         {"a long line", kSequestHeader + LongRow(SequestRow("2")) + row,
          "0 records, 1 behind_long_line at 2, 1 lower_rank at 2, cut"}});
}

TEST(ResultAudit, CountsRowsOfPFind3)
{
    const std::string row = PFind3Row();
    std::string withoutProtein = row;
    withoutProtein.replace(withoutProtein.find("P1/P2/"), 6, "P1");
    ExpectAudits(PepIdentType::Pfind3Spectra,
                 {{"rows", kPFind3Header + row + row, "2 records"},
                  {"no separator behind the protein", kPFind3Header + row + withoutProtein,
                   "1 records, 1 row_without_protein at 3"},
                  {"a short row", kPFind3Header + row + "run.1.1.2.0.dta\t1\n",
                   "1 records, 1 short_row at 3"},
                  {"an empty row", kPFind3Header + "\n" + row, "1 records, 1 blank_row at 2"}});
}

TEST(ResultAudit, CountsSectionsOfPFind28)
{
    const std::string section = PFind28Section();
    std::string other = section;
    other.erase(other.find("NO1_Matched"), std::string("NO1_Matched=1\n").size());
    const std::string cut = section.substr(0, section.find("NO1_Length"));
    ExpectAudits(
        PepIdentType::Pfind28Txt,
        {{"sections", kPFind28Head + section + section, "2 records"},
         {"no candidate", kPFind28Head + kPFind28NoCandidate + section,
          "1 records, 1 without_candidate at 5"},
         {"a line less", kPFind28Head + other + section, "1 records, 1 other_layout at 5"},
         {"another line for the candidates", kPFind28Head + "[Spectrum1]\n\n\n\n\n\n\n\n" + section,
          "1 records, 1 other_layout at 5"},
         {"a section that ends early takes lines of the next one", kPFind28Head + cut + section,
          "1 records, 1 other_layout at 19"},
         {"a section before the search", section + kPFind28Head + section,
          "1 records, 1 other_layout at 1"},
         {"no search at all", section, "file: expected a line \"[Search]\""}});
}

TEST(ResultAudit, CountsQueriesAndHitsOfPepXml)
{
    const std::string query = Query(Hit());
    const std::string protein = "<alternative_protein protein=\"P2\"/>\n";
    ExpectAudits(
        PepIdentType::CometPepXml,
        {{"queries", PepXml(query + query), "2 records"},
         {"no hit", PepXml(Query("") + query), "1 records, 1 query_without_hit at 4"},
         {"further hits", PepXml(Query(Hit() + Hit() + Hit())), "1 records, 2 further_hit at 11"},
         {"further proteins of the first hit only",
          PepXml(Query(Hit(protein + protein) + Hit(protein))),
          "1 records, 1 further_hit at 13, 2 further_protein at 10"},
         {"a second search_result",
          PepXml(Query(Hit() + "</search_result><search_result>" + Hit())),
          "1 records, 1 further_hit at 11"},
         {"hits of a second run",
          PepXml(query + "</msms_run_summary><msms_run_summary>" + query + query),
          "1 records, 2 further_run at 15"},
         {"a hit outside of a query", PepXml(query + Hit()), "1 records, 1 stray_hit at 13"},
         {"no run", "<msms_pipeline_analysis/>",
          "file: expected pepXML with an element msms_run_summary"},
         {"no XML", kMsgfHeader, "file: expected pepXML with an element msms_run_summary"}});
    EXPECT_EQ(AuditText(PepIdentType::MsFraggerPepXml, PepXml(query)), "1 records");
}

TEST(ResultAudit, CountsRowsOfMaxQuant)
{
    const std::string two = kMsmsHeader + MsmsRow() + MsmsRow();
    const auto audit = [](const std::string& msms, const std::string& peptides) {
        return AuditText(PepIdentType::MaxQuant, msms, kPeptidesHeader + peptides);
    };
    EXPECT_EQ(audit(two, PeptidesRow("0") + PeptidesRow("1")), "2 records");
    EXPECT_EQ(audit(two, PeptidesRow("0;1")), "2 records");
    EXPECT_EQ(audit(two, PeptidesRow("") + PeptidesRow("0;1")), "2 records");
    EXPECT_EQ(audit(two, PeptidesRow("0")), "1 records, 1 row_not_named at 3");
    EXPECT_EQ(audit(two, PeptidesRow("0;1;2") + PeptidesRow("3")), "2 records, 2 row_missing at 2");
    EXPECT_EQ(audit(two + "\n" + MsmsRow(), PeptidesRow("0;1;2")), "3 records, 1 blank_row at 4");
    EXPECT_EQ(audit(kMsmsHeader + "run\tGASK\n" + MsmsRow(), PeptidesRow("0;1")),
              "1 records, 1 short_row at 2");
}

TEST(ResultAudit, TheLineThatEndsMaxQuantIsKnownHoweverOftenRowsAreAskedFor)
{
    const TempFolder folder;
    const ResultFiles files = {
        folder.Write("msms.txt",
                     kMsmsHeader + MsmsRow() + LongRow(MsmsRow()) + MsmsRow() + MsmsRow()),
        folder.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0;1;2;3"))};
    const ResultAudit audit = AuditResult(PepIdentType::MaxQuant, files);
    EXPECT_EQ(audit.longLine, 3U);
    EXPECT_TRUE(audit.cutsRow);
    EXPECT_EQ(audit.records, 2U);
    EXPECT_EQ(audit.Of(Unread::BehindLongLine).units, 2U);
    EXPECT_EQ(audit.Of(Unread::RowMissing).units, 0U) << "the rows are there";
    folder.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0;1;2;3;4"));
    const ResultAudit more = AuditResult(PepIdentType::MaxQuant, files);
    EXPECT_EQ(more.Of(Unread::RowMissing).units, 1U);
    EXPECT_EQ(FileOf(files, Unread::RowMissing), files.second);
    EXPECT_EQ(FileOf(files, Unread::BehindLongLine), files.path);
}

TEST(ResultAudit, CountsRowsOfTheNativeTable)
{
    EXPECT_EQ(AuditText(PepIdentType::CalvexTxt, kTableHeader + std::string("a\nb\n\nc\n")),
              "2 records, 1 behind_empty_line at 4");
}

// ---- What the library would end the process for -------------------------------

TEST(ResultAudit, AMissingColumnIsRefused)
{
    const auto without = [](std::string header, const std::string& column) {
        return header.replace(header.find(column), column.size(), "other");
    };
    struct Column {
        Format format;
        std::string header;
        const char* name;
        const char* told;
    };
    std::vector<Column> columns;
    for (const char* const name :
         {"#SpecFile", "ScanNum", "Peptide", "Charge", "SpecEValue", "Protein"}) {
        columns.push_back({PepIdentType::MsgfTsv, kMsgfHeader, name, name});
    }
    columns.push_back({PepIdentType::MsgfTsv, kMsgfHeader, "PrecursorError(ppm)",
                       "PrecursorError(ppm)\" or \"PrecursorError(Da)"});
    for (const char* const name :
         {"File_Name", "Sequence", "Scan_No", "Charge", "Target/Decoy", "Final_Score",
          "Mass_Shift(Exp.-Calc.)", "Exp.MH+", "Proteins", "Modification", "Positions"}) {
        columns.push_back({PepIdentType::Pfind3Spectra, kPFind3Header, name, name});
    }
    for (const char* const name :
         {"Rank", "Spectrum File", "First Scan", "Sequence", "XCorr", "Deltam/z [Da]", "MH+ [Da]",
          "Theo. MH+ [Da]", "Charge", "Protein Accessions", "Modifications", "DeltaCn"}) {
        columns.push_back({PepIdentType::SequestTxt, kSequestHeader, name, name});
    }
    for (const char* const name :
         {"Raw file", "Sequence", "Scan number", "Charge", "Reverse", "Score", "m/z", "Proteins",
          "Retention time", "Modifications", "Modified sequence"}) {
        columns.push_back({PepIdentType::MaxQuant, kMsmsHeader, name, name});
    }
    for (const char* const name :
         {"Dataset Name", "Spectrum Name", "Sequence", "Charge", "ObsMH", "Mass Shift",
          "Main Score", "High Score Better", "Identified Mod Name", "Identified Mod Position",
          "Protein Access", "Before AA", "After AA"}) {
        columns.push_back({PepIdentType::CalvexTxt, kTableHeader, name, name});
    }
    columns.push_back({PepIdentType::MaxQuant, kMsmsHeader, "Mass error [ppm]",
                       "Mass Error [ppm]\" or \"Mass error [ppm]"});
    for (const Column& column : columns) {
        EXPECT_EQ(AuditText(column.format, without(column.header, column.name), kPeptidesHeader),
                  "file:1: expected a column named \"" + std::string(column.told)
                      + "\" in the header line");
    }
    for (const char* const name :
         {"Amino acid before", "Amino acid after", "Proteins", "MS/MS IDs"}) {
        EXPECT_EQ(AuditText(PepIdentType::MaxQuant, kMsmsHeader, without(kPeptidesHeader, name)),
                  "second:1: expected a column named \"" + std::string(name)
                      + "\" in the header line");
    }
}

TEST(ResultAudit, PeptidesThatDoNotNameTheRowsInTheirOrderAreRefused)
{
    const std::string three = kMsmsHeader + MsmsRow() + MsmsRow() + MsmsRow();
    for (const auto& [rows, place] : std::vector<std::pair<std::string, std::string>>{
             {PeptidesRow("1"), "second:2: \"MS/MS IDs\": expected 0, found \"1\": "},
             {PeptidesRow("0;2"), "second:2: \"MS/MS IDs\": expected 1, found \"2\": "},
             {PeptidesRow("0") + PeptidesRow("0"),
              "second:3: \"MS/MS IDs\": expected 1, found \"0\": "},
             {PeptidesRow("0;x"), "second:2: \"MS/MS IDs\": expected 1, found \"x\": "}}) {
        const std::string told = AuditText(PepIdentType::MaxQuant, three, kPeptidesHeader + rows);
        EXPECT_EQ(told.substr(0, place.size()), place);
        EXPECT_THAT(told, testing::HasSubstr("must name the rows of "));
    }
}

TEST(ResultAudit, PeptidesInALineThatIsTooLongAreRefused)
{
    std::string row = PeptidesRow("0;1");
    row.insert(row.size() - 2, Repeat("0", 81919));
    EXPECT_EQ(AuditText(PepIdentType::MaxQuant, kMsmsHeader + MsmsRow() + MsmsRow(),
                        kPeptidesHeader + row),
              "second:2: a line of more than 81919 characters is cut: its \"MS/MS IDs\" cannot be "
              "read");
}

// ---- Places -------------------------------------------------------------------

TEST(PlaceOfRecord, IsTheLineOfARecordWhateverStandsBetween)
{
    const TempFolder folder;
    const auto placeOf = [&](Format format, const std::string& text, std::uint64_t record) {
        const std::string path = folder.Write("file", text);
        return PlaceOfRecord(format, {path, folder.PathOf("second")}, record)
            .substr(folder.Path().size() + 1);
    };
    folder.Write("second", kPeptidesHeader + PeptidesRow("0;1"));
    EXPECT_EQ(placeOf(PepIdentType::MsgfTsv, kMsgfHeader + MsgfRow() + "\nshort\n" + MsgfRow(), 1),
              "file:5");
    EXPECT_EQ(
        placeOf(PepIdentType::SequestTxt, kSequestHeader + SequestRow("2") + SequestRow("1"), 0),
        "file:3");
    EXPECT_EQ(placeOf(PepIdentType::MaxQuant, kMsmsHeader + MsmsRow() + "\n" + MsmsRow(), 1),
              "file:4");
    EXPECT_EQ(
        placeOf(PepIdentType::Pfind28Txt, kPFind28Head + kPFind28NoCandidate + PFind28Section(), 0),
        "file:13");
    EXPECT_EQ(placeOf(PepIdentType::CometPepXml, PepXml(Query("") + Query(Hit())), 0), "file:8");
    EXPECT_EQ(placeOf(PepIdentType::CalvexTxt, kTableHeader + std::string("a\nb\n"), 1), "file:3");
    EXPECT_EQ(placeOf(PepIdentType::CalvexTxt, kTableHeader + std::string("a\nb\n"), 2), "file");
}

TEST(HitText, NamesPeptideAndModifiedResidues)
{
    const TempFolder folder;
    const std::string path = folder.Write(
        "file", PepXml(Query(Hit()) + Query(Hit(Modified("3", "167.0") + Modified("9", "1.5")))));
    EXPECT_EQ(HitText(path, 1), "peptide \"GASK\", modified residues S3 (167.0), 9 (1.5)");
}

// ---- The library gives as many ------------------------------------------------

/// The number of records that the library reads; nothing when it throws.
std::optional<std::size_t> RecordsOfLibrary(Format format, const TempFolder& folder)
{
    std::vector<Vorlan::PeptideIdentification> records;
    bool throws = false;
    Vorlan::PeptideIdentificationIO* reader = Vorlan::PepIdentIOFactory::pGetPepIdentIO(format);
    OutputOf([&] {
        try {
            reader->InitLoad({folder.Path(), "file", folder.Path(), "second", format});
            reader->Load(records);
            reader->EndLoad();
        } catch (const OpenMS::Exception::BaseException&) {
            throws = true;
        }
    });
    Vorlan::PepIdentIOFactory::DesctroyPepIdentIO(reader);
    return throws ? std::nullopt : std::optional(records.size());
}

/// Parts of a file in any order, here and there with a change.
std::string RandomText(Random& random, const std::string& head,
                       const std::vector<std::string>& parts)
{
    std::string body;
    for (std::size_t i = random.Below(6); i > 0; --i) {
        std::string part = parts[random.Below(parts.size())];
        if (random.OneIn(3) && !part.empty()) {
            part.erase(random.Below(part.size()), random.Below(12));
        }
        body += part;
    }
    return head + body;
}

void ExpectAsManyAsTheLibrary(Format format, const std::string& head,
                              const std::vector<std::string>& parts)
{
    const TempFolder folder;
    folder.Write("second", "15.994915,M,opt,any,Oxidation\n");
    Random random(static_cast<unsigned>(format));
    std::size_t records = 0;
    std::size_t compared = 0;
    for (int round = 0; round < 1500; ++round) {
        const std::string text = RandomText(random, head, parts);
        const std::string path = folder.Write("file", text);
        const ResultAudit audit = AuditResult(format, {path, folder.PathOf("second")});
        if (const auto read = RecordsOfLibrary(format, folder)) { // else a cell was bad
            ASSERT_EQ(audit.records, *read) << text;
            records += *read;
            ++compared;
        }
    }
    EXPECT_GT(compared, 700U);
    EXPECT_GT(records, compared / 2);
}

TEST(ResultAudit, CountsAsManyRowsAsTheLibraryReads)
{
    const std::vector<std::string> rubbish = {"\n", "short\trow\n", "\t\t\t\n", "\r\n"};
    const auto with = [&](std::vector<std::string> parts) {
        parts.insert(parts.end(), rubbish.begin(), rubbish.end());
        return parts;
    };
    ExpectAsManyAsTheLibrary(PepIdentType::MsgfTsv, kMsgfHeader,
                             with({MsgfRow(), MsgfRow("GAM+15.995K"), MsgfRow()}));
    ExpectAsManyAsTheLibrary(PepIdentType::Pfind3Spectra, kPFind3Header,
                             with({PFind3Row(), PFind3Row("3,Oxidation[M];"), PFind3Row()}));
    ExpectAsManyAsTheLibrary(PepIdentType::SequestTxt, kSequestHeader,
                             {SequestRow(), SequestRow("2"), SequestRow(), "\n", "\r\n", "\"\"\n",
                              SequestRow("1", "M3(Oxidation)")});
}

TEST(ResultAudit, CountsAsManySectionsAsTheLibraryReads)
{
    ExpectAsManyAsTheLibrary(
        PepIdentType::Pfind28Txt, kPFind28Head,
        {PFind28Section(), PFind28Section(), kPFind28NoCandidate, "\n", "NO1_SQ=GASK\n",
         PFind28Section("NO1_Modify_Pos=1,3\nNO1_Modify_Name=1,Oxidation (M)\n")});
}

TEST(ResultAudit, CountsAsManyQueriesAsTheLibraryReads)
{
    // Changes would break the XML: the library gives nothing then.
    const TempFolder folder;
    Random random(7);
    const std::string alternative = "<alternative_protein protein=\"P2->P3\"/>\n";
    const std::vector<std::string> parts = {
        Query(Hit()),
        Query(""),
        Query(Hit() + Hit(alternative)),
        Query(Hit(alternative)),
        "</msms_run_summary>\n<msms_run_summary base_name=\"b\">\n",
        "<!-- a comment -->\n<other a=\"x\"><search_hit/></other>\n",
        Query("</search_result>\n<search_result>\n" + Hit()),
        "<spectrum_query/>\n"};
    std::size_t records = 0;
    for (int round = 0; round < 1500; ++round) {
        std::string queries;
        for (std::size_t i = random.Below(6); i > 0; --i) {
            queries += parts[random.Below(parts.size())];
        }
        const std::string path = folder.Write("file", PepXml(queries));
        const std::uint64_t counted = AuditResult(PepIdentType::CometPepXml, {path, ""}).records;
        ASSERT_EQ(counted, RecordsOfLibrary(PepIdentType::CometPepXml, folder)) << queries;
        records += counted;
    }
    EXPECT_GT(records, 1000U);
}

} // namespace
} // namespace pelgrin::test
