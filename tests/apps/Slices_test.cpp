// Pieces of result files: read one by one, they give the records of the whole.
#include "isolation/Slices.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>
#include <tuple>

#include "HostProgram.h"
#include "RandomResults.h"
#include "ResultTexts.h"
#include "common/Failure.h"
#include "common/Terminal.h"
#include "isolation/LibraryReading.h"
#include "isolation/RecordBytes.h"

namespace pelgrin::test {
namespace {

using Vorlan::PepIdentType;
using Vorlan::test::Random;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;
using Format = PepIdentType::EPepIdentType;
using Places = std::vector<RecordPlace>;

/// Every record as bytes: all fields, whatever they hold.
using Records = std::vector<std::string>;

/// Nothing when the library refuses the file.
std::optional<Records> RecordsOf(Format format, const ResultFiles& files)
{
    std::vector<Vorlan::PeptideIdentification> records;
    const Captured progress(std::cout);
    try {
        LoadRecords(format, files, records);
    } catch (const ReadingFault&) {
        return std::nullopt;
    }
    Records all;
    for (std::size_t i = 0; i < records.size(); ++i) {
        all.push_back(BytesOf(records, i, i + 1));
    }
    return all;
}

Places PlacesOf(Format format, const ResultFiles& files)
{
    Places places;
    AuditResult(format, files, [&places](const RecordPlace& place) { places.push_back(place); });
    return places;
}

/// The records of pieces that are cut at random, one behind the other.
Records RecordsOfPieces(Format format, const ResultFiles& files, const Places& places,
                        std::size_t mostInPiece, Random& random)
{
    const TempFolder folder;
    const Slices slices(format, files, folder.Path());
    Records all;
    for (std::size_t begin = 0; begin < places.size();) {
        const std::size_t end = std::min(places.size(), begin + 1 + random.Below(mostInPiece));
        const std::optional<Records> some = RecordsOf(format, slices.Write(places, begin, end));
        EXPECT_TRUE(some && some->size() == end - begin)
            << "records " << begin << " to " << end - 1 << ": " << (some ? some->size() : 0);
        if (some) {
            all.insert(all.end(), some->begin(), some->end());
        }
        begin = end;
    }
    return all;
}

/// The number of records; nothing when the library does not read the file.
std::optional<std::size_t> ExpectPiecesAreTheWhole(Format format, const ResultFiles& files,
                                                   std::size_t mostInPiece, Random& random)
{
    const std::optional<Records> whole = RecordsOf(format, files);
    if (!whole) {
        return std::nullopt;
    }
    const Places places = PlacesOf(format, files);
    EXPECT_EQ(places.size(), whole->size());
    EXPECT_TRUE(RecordsOfPieces(format, files, places, mostInPiece, random) == *whole);
    return whole->size();
}

std::string NameOf(Format format)
{
    return PepIdentType::typeToName(format);
}

TEST(Slices, OfEveryFormatGiveTheRecordsOfTheWhole)
{
    TellUsualModifications();
    for (const ResultKind& kind : ResultKinds()) {
        SCOPED_TRACE(NameOf(kind.format));
        Random random(static_cast<std::uint64_t>(kind.format));
        std::size_t records = 0;
        for (int round = 0; round < 40 && !testing::Test::HasFailure(); ++round) {
            const TempFolder folder;
            const ResultFiles files = RandomResult(random, kind, false, folder);
            const auto read = ExpectPiecesAreTheWhole(kind.format, files, 4, random);
            ASSERT_TRUE(read) << Vorlan::test::ReadFile(files.path);
            records += *read;
        }
        EXPECT_GT(records, 40U);
    }
}

TEST(Slices, OfDamagedFilesGiveTheRecordsOfTheWholeWhereTheLibraryReadsIt)
{
    TellUsualModifications();
    for (const ResultKind& kind : ResultKinds()) {
        SCOPED_TRACE(NameOf(kind.format));
        Random random(100 + static_cast<std::uint64_t>(kind.format));
        std::size_t records = 0;
        for (int round = 0; round < 90 && !testing::Test::HasFailure(); ++round) {
            const TempFolder folder;
            const ResultFiles files = RandomResult(random, kind, true, folder);
            SCOPED_TRACE(round);
            try {
                records += ExpectPiecesAreTheWhole(kind.format, files, 3, random).value_or(0);
            } catch (const Failure&) { // the audit refuses it
            }
            if (testing::Test::HasFailure()) {
                std::string text = Vorlan::test::ReadFile(files.path);
                text.resize(std::min<std::size_t>(text.size(), 4000));
                FAIL() << text;
            }
        }
        EXPECT_GT(records, 20U);
    }
}

// ---- Line ends and the like ---------------------------------------------------

struct Case {
    const char* reason;
    Format format;
    std::string text;
    std::size_t records;
};

std::string WithCrLf(const std::string& text)
{
    std::string other;
    for (const char c : text) {
        other += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return other;
}

std::string WithoutLastByte(std::string text)
{
    text.pop_back();
    return text;
}

std::string WithoutLineFeeds(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '\n'), text.end());
    return text;
}

const std::string kBom = "\xEF\xBB\xBF";

TEST(Slices, TakeFilesAsTheyStand)
{
    TellUsualModifications();
    const std::string native = TableOf({Row(), Row(), Row()});
    const std::string msgf =
        kMsgfHeader + MsgfRow() + "\n" + MsgfRow("AAK") + "short\n" + MsgfRow();
    const std::string sections = PFind28Section() + kPFind28NoCandidate + PFind28Section();
    const std::string queries = Query(Hit()) + Query("") + Query(Hit()) + Query(Hit("", "AAK"));
    for (const Case& c : std::vector<Case>{
             {"the last line of a table has no end", PepIdentType::CalvexTxt,
              WithoutLastByte(native), 3},
             {"lines end in CR LF", PepIdentType::CalvexTxt, WithCrLf(native), 3},
             {"the same, and the last one has no end", PepIdentType::CalvexTxt,
              WithoutLastByte(WithoutLastByte(WithCrLf(native))), 3},
             {"the last byte is a CR", PepIdentType::CalvexTxt, WithoutLastByte(WithCrLf(native)),
              3},
             {"a byte order mark", PepIdentType::CalvexTxt, kBom + native, 3},
             {"a byte order mark and CR LF", PepIdentType::MsgfTsv, kBom + WithCrLf(msgf), 3},
             {"rows that give no record between others", PepIdentType::MsgfTsv, msgf, 3},
             {"quotes and CR LF", PepIdentType::SequestTxt,
              WithCrLf(kSequestHeader + SequestRow() + "\"1\"" + SequestRow().substr(1)
                       + SequestRow("2")),
              2},
             {"sections of which one has no candidate", PepIdentType::Pfind28Txt,
              kPFind28Head + sections, 2},
             {"a section before the search", PepIdentType::Pfind28Txt,
              PFind28Section() + kPFind28Head + sections, 2},
             {"sections in CR LF without a last end", PepIdentType::Pfind28Txt,
              WithoutLastByte(WithCrLf(kPFind28Head + sections)), 2},
             {"queries in one line", PepIdentType::CometPepXml, WithoutLineFeeds(PepXml(queries)),
              3},
             {"queries in CR LF behind a byte order mark", PepIdentType::CometPepXml,
              kBom + WithCrLf(PepXml(queries)), 3},
             {"a query in a comment of the head", PepIdentType::CometPepXml,
              PepXml("<!-- <spectrum_query> -->\n" + queries), 3}}) {
        SCOPED_TRACE(c.reason);
        const TempFolder folder;
        Random random(5);
        const ResultFiles files = WriteResult(c.format, c.text, folder, random);
        for (const std::size_t most : std::initializer_list<std::size_t>{1, 2, 9}) {
            EXPECT_EQ(ExpectPiecesAreTheWhole(c.format, files, most, random), c.records);
        }
    }
}

TEST(Slices, OfAPairOfMaxQuantNameTheirRowsAnew)
{
    TellUsualModifications();
    const TempFolder folder;
    std::string msms = kMsmsHeader;
    for (int i = 0; i < 8; ++i) {
        msms += i % 3 == 0 ? MsmsRow("_GAM(Oxidation (M))K_", "Oxidation (M)") : MsmsRow();
    }
    std::string peptides = kPeptidesHeader + PeptidesRow("0;1;2;3") + PeptidesRow("")
                           + PeptidesRow("4;5") + PeptidesRow("6;7");
    peptides.replace(peptides.rfind("P1;P2"), 5, "P7;P9");
    const ResultFiles files = {folder.Write("msms.txt", msms),
                               folder.Write("peptides.txt", peptides)};
    Random random(6);
    for (const std::size_t most : std::initializer_list<std::size_t>{1, 2, 3, 5, 9}) {
        EXPECT_EQ(ExpectPiecesAreTheWhole(PepIdentType::MaxQuant, files, most, random), 8U);
    }
}

TEST(Slices, OfRealFilesGiveTheRecordsOfTheWhole)
{
    PELGRIN_NEEDS_REAL_DATA();
    TellUsualModifications();
    struct Real {
        Format format;
        const char* path;
        const char* second;
    };
    const std::string folder = RealDataFolder() + "/";
    for (const Real& real : std::vector<Real>{
             {PepIdentType::CometPepXml, "comet/F13_set/closed/F13.pep.xml", ""},
             {PepIdentType::CometPepXml, "comet/x00530_phospho_head.pepXML", ""},
             {PepIdentType::CometPepXml, "comet/LakeTrout_2016.pep.xml", ""},
             {PepIdentType::MsFraggerPepXml, "msfragger/open/q02261_open.part1.pep.xml", ""},
             {PepIdentType::MsFraggerPepXml, "msfragger/closed/HLA_MSFragger3.7.pepXML", ""},
             {PepIdentType::MsFraggerPepXml, "msfragger/closed/spectra_MSFragger3.0.pepXML", ""},
             {PepIdentType::MsgfTsv, "msgfplus/QC_Mam_19_01_msgfplus_excerpt.tsv", ""},
             {PepIdentType::MsgfTsv, "msgfplus/test_prepost.tsv", ""},
             {PepIdentType::MsgfTsv, "msgfplus/test_unrolled.tsv", ""},
             {PepIdentType::MsgfTsv, "msgfplus/TMT_set/few_spectra.tsv",
              "msgfplus/TMT_set/mods.txt"},
             {PepIdentType::MaxQuant, "maxquant/BSA_2.0.3.0/msms.txt",
              "maxquant/BSA_2.0.3.0/peptides.txt"},
             {PepIdentType::Pfind3Spectra, "pfind3/pFind-Filtered.spectra", ""},
             {PepIdentType::SequestTxt, "sequest/TMT_PSMs_derived_header.txt", ""}}) {
        SCOPED_TRACE(real.path);
        Random random(7);
        const std::string second = real.second[0] == '\0' ? "" : folder + real.second;
        const ResultFiles files = {folder + real.path, second};
        const auto read = ExpectPiecesAreTheWhole(real.format, files, 400, random);
        ASSERT_TRUE(read);
        EXPECT_GT(*read, 1U);
    }
}

// ---- What is told of a record -------------------------------------------------

TEST(Slices, TellTheSpectrumOfARecord)
{
    const std::string quoted = "\"1\"\t\"run.raw\"\t\"17\"" + SequestRow().substr(11);
    const Row row;
    for (const auto& [format, text, spectrum] :
         std::vector<std::tuple<Format, std::string, std::string>>{
             {PepIdentType::CalvexTxt, TableOf({row}), row.spectrum},
             {PepIdentType::CalvexTxt, WithoutLastByte(WithCrLf(TableOf({row}))), row.spectrum},
             {PepIdentType::CalvexTxt, kTableHeader + std::string("run.mgf\n"), ""},
             {PepIdentType::MsgfTsv, kMsgfHeader + MsgfRow(), "1"},
             {PepIdentType::Pfind3Spectra, kPFind3Header + PFind3Row(), "run.1.1.2.0.dta"},
             {PepIdentType::SequestTxt, kSequestHeader + quoted, "17"},
             {PepIdentType::MaxQuant, kMsmsHeader + MsmsRow(), "1"},
             {PepIdentType::Pfind28Txt, WithCrLf(kPFind28Head + PFind28Section()), "run.1.1.2"},
             {PepIdentType::CometPepXml, PepXml(Query(Hit())), "run.00001.00001.2"},
             {PepIdentType::CometPepXml, PepXml("<spectrum_query>" + Hit() + "</spectrum_query>"),
              ""}}) {
        SCOPED_TRACE(text);
        const TempFolder folder;
        Random random(8);
        const ResultFiles files = WriteResult(format, text, folder, random);
        const Places places = PlacesOf(format, files);
        if (places.size() == 1) {
            EXPECT_EQ(Slices(format, files, folder.Path()).SpectrumAt(places[0]), spectrum);
        } else {
            EXPECT_EQ(spectrum, "");
        }
    }
}

// ---- Failures -----------------------------------------------------------------

TEST(Slices, ThatCannotBeWrittenAreAFailureWithPathAndReason)
{
    const TempFolder folder;
    const ResultFiles files = {folder.Write("psms.txt", TableOf({Row()})), ""};
    const Slices slices(PepIdentType::CalvexTxt, files, folder.PathOf("none"));
    try {
        slices.Write(PlacesOf(PepIdentType::CalvexTxt, files), 0, 1);
        FAIL() << "written";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.what(), folder.PathOf("none/psms.txt")
                                      + ": cannot be written: No such file or directory");
    }
    std::filesystem::create_directory(folder.PathOf("full"));
    std::filesystem::create_symlink("/dev/full", folder.PathOf("full/psms.txt"));
    const Slices full(PepIdentType::CalvexTxt, files, folder.PathOf("full"));
    try {
        full.Write(PlacesOf(PepIdentType::CalvexTxt, files), 0, 1);
        FAIL() << "written";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.what(),
                  folder.PathOf("full/psms.txt") + ": cannot be written: No space left on device");
    }
}

TEST(Slices, OfAFileThatBecameShorterAreAFailure)
{
    const TempFolder folder;
    const ResultFiles files = {folder.Write("psms.txt", TableOf({Row(), Row()})), ""};
    const Places places = PlacesOf(PepIdentType::CalvexTxt, files);
    std::filesystem::create_directory(folder.PathOf("pieces"));
    const Slices slices(PepIdentType::CalvexTxt, files, folder.PathOf("pieces"));
    folder.Write("psms.txt", TableOf({Row()}));
    EXPECT_NO_THROW(slices.Write(places, 0, 1));
    EXPECT_THROW(slices.Write(places, 0, 2), Failure);
    EXPECT_THROW(slices.SpectrumAt(places[1]), Failure);
}

} // namespace
} // namespace pelgrin::test
