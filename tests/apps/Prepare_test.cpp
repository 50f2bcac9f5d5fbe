// Copies of results and of other files, and what the library reads of them.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "HostProgram.h"
#include "PeptideIdentificationIO.h"
#include "ResultTexts.h"
#include "SpectraIO.h"
#include "common/Failure.h"
#include "prepare/Preparation.h"
#include "prepare/TitleScan.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using namespace pelgrin::test;
using testing::ElementsAre;
using testing::HasSubstr;
using Vorlan::PepIdentType;
using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

using Files = std::vector<std::pair<std::string, std::string>>;

/// Files, and the copies of all of them in "out".
class Place {
public:
    explicit Place(const Files& files) : preparation_(folder_.PathOf("out"))
    {
        for (const auto& [name, text] : files) {
            std::filesystem::create_directories(
                std::filesystem::path(folder_.PathOf(name)).parent_path());
            preparation_.Add(folder_.Write(name, text));
        }
        preparation_.Run();
    }

    std::string Text(const std::string& name) const { return ReadFile(Path(name)); }
    std::string Path(const std::string& name) const { return folder_.PathOf("out/" + name); }
    std::string Source(const std::string& name) const { return folder_.PathOf(name); }
    const Copy& Counts(std::size_t i = 0) const { return preparation_.Copies()[i]; }
    std::uint64_t Changed(const std::string& key) const { return CountIn(Counts().changes, key); }
    std::uint64_t LeftOut(const std::string& key) const { return CountIn(Counts().leftOut, key); }

private:
    static std::uint64_t CountIn(const ClassCounts& tallies, const std::string& key)
    {
        const auto tally = tallies.find(key);
        return tally == tallies.end() ? 0 : tally->second.count;
    }

    TempFolder folder_;
    Preparation preparation_;
};

/// "GASK P1(K,A) P2(R,G)" of every match that the library reads of a file.
std::vector<std::string> MatchesOf(PepIdentType::EPepIdentType format, const std::string& path)
{
    const std::filesystem::path whole(path);
    Vorlan::PeptideIdentificationIO* reader = Vorlan::PepIdentIOFactory::pGetPepIdentIO(format);
    Vorlan::PepIdentSource source;
    source.strFirst = whole.parent_path().string() + "/";
    source.strSecond = whole.filename().string();
    std::vector<Vorlan::PeptideIdentification> matches;
    testing::internal::CaptureStdout();
    try {
        reader->InitLoad(source);
        reader->Load(matches);
    } catch (const OpenMS::Exception::BaseException&) {
        matches.clear();
    }
    reader->EndLoad();
    Vorlan::PepIdentIOFactory::DesctroyPepIdentIO(reader);
    testing::internal::GetCapturedStdout();
    std::vector<std::string> texts;
    for (const Vorlan::PeptideIdentification& match : matches) {
        std::string text = match.strSequence;
        for (const Vorlan::PeptideEvidence& evidence : match.vEvidences) {
            text += fmt::format(" {}({},{})", evidence.strProteinAccession, evidence.cBefore,
                                evidence.cAfter);
        }
        texts.push_back(text);
    }
    return texts;
}

void Make(const Files& files)
{
    const Place place(files);
}

TEST(TitleScan, IsReadInTheWaysOfManyPrograms)
{
    struct Case {
        const char* reason;
        const char* title;
        int scan;
        int count;
    };
    for (const Case& one : std::vector<Case>{
             {"msconvert", "run.3.3. File:\"r\", NativeID:\"controllerType=0 scan=3\"", 3, -1},
             {"FileConverter", "617.3_5000.0_controllerType=0 controllerNumber=1 scan=11461_run",
              11461, -1},
             {"dotted with charge", "run.00277.00277.3", 277, -1},
             {"pParse", "run.6190.6190.4.0.dta", 6190, -1},
             {"dotted without charge", "run.7.7", 7, -1},
             {"Mascot Distiller", "1: Scan 73 (rt=10.7878)", 73, -1},
             {"a number sign", "Spectrum Scan#:12", 12, -1},
             {"a word that ends so is another word", "rescan 12", -1, -1},
             {"Bruker", "Cmpd 636, +MSn(730.4)", -1, 636},
             {"an index", "index=0", -1, 0},
             {"none", "File: Test, Cycle(s): 47", -1, -1},
             {"a number that does not fit", "scan=99999999999", -1, -1},
             {"a negative number", "scan=-5", -1, -1},
             {"nothing", "", -1, -1},
         }) {
        SCOPED_TRACE(one.reason);
        EXPECT_EQ(static_cast<int>(ScanOfTitle(one.title).value_or(-1)), one.scan);
        EXPECT_EQ(static_cast<int>(CountOfTitle(one.title).value_or(-1)), one.count);
    }
}

TEST(Prepare, OtherCharsetsBecomeUtf8)
{
    const std::string text = "BEGIN IONS\nTITLE=t\n1 1\nEND IONS\n";
    std::string utf16 = "\xFF\xFE";
    for (const char c : text) {
        utf16 += c;
        utf16 += '\0';
    }
    const std::string copied =
        "BEGIN IONS\nTITLE=t File:\"run\", NativeID:\"scan=1\"\n1 1\nEND IONS\n";
    EXPECT_EQ(Place(Files{{"run.mgf", utf16}}).Text("run.mgf"), copied);
    EXPECT_EQ(Place(Files{{"run.mgf", "\xEF\xBB\xBF" + text}}).Text("run.mgf"), copied);
    std::string returns = text;
    std::replace(returns.begin(), returns.end(), '\n', '\r');
    EXPECT_EQ(Place(Files{{"run.mgf", returns}}).Text("run.mgf"), copied);
    const Place latin(Files{{"run.mgf", "BEGIN IONS\nTITLE=\xE9t\xE9\n1 1\nEND IONS\n"}});
    EXPECT_THAT(latin.Text("run.mgf"), HasSubstr("TITLE=\xC3\xA9t\xC3\xA9 File:"));
    EXPECT_EQ(latin.Changed("latin1"), 1U);
    EXPECT_THROW(Make(Files{{"run.mgf", utf16 + "x"}}), Failure);
}

TEST(Prepare, ProteinsOfMsgfAreReadWhole)
{
    struct Case {
        const char* reason;
        const char* peptide;
        const char* protein;
        const char* before;
        const char* after;
    };
    for (const Case& one : std::vector<Case>{
             {"plain stays", "K.GASK.A", "P12345", "GASK P12345(K,A)", "GASK P12345(K,A)"},
             {"a dot at the third place", "K.GASK.A", "sp.P12345", "GASK p.P1234(K,A)",
              "GASK sp.P12345(K,A)"},
             {"a dot at the second place", "K.GASK.A", "P.12345", "GASK P.12345(K,A)",
              "GASK P.12345(K,A)"},
             {"a peptide alone", "GASK", "P12345", "GASK 1234(X,X)", "GASK P12345(X,X)"},
             {"a long accession", "GASK", "\"sp|P12345|NAME_HUMAN\"", "GASK sp|P12(M,N)",
              "GASK sp|P12345|NAME_HUMAN(X,X)"},
             {"a list", "GASK", "P1(pre=K,post=R);P2(pre=-,post=A)", "GASK P1(K,R) P2(-,A)",
              "GASK P1(K,R) P2(-,A)"},
             {"a list with a dot", "GASK", "sp.1(pre=K,post=R)", "S p.1(pre=K,post=R(G,K)",
              "GASK sp.1(K,R)"},
             {"quoted cells", "\"K.GASK.A\"", "\"P12345\"", "\"K.GASK.A\" P12345(X,X)",
              "GASK P12345(K,A)"},
         }) {
        SCOPED_TRACE(one.reason);
        const std::string row =
            TabLine({"run.mzML", "1", one.peptide, "2", "195.6", "1.5", "1e-9", one.protein});
        const Place place(Files{{"run.tsv", kMsgfHeader + row}});
        EXPECT_THAT(MatchesOf(PepIdentType::MsgfTsv, place.Path("run.tsv")),
                    ElementsAre(one.after));
        const auto before = MatchesOf(PepIdentType::MsgfTsv, place.Source("run.tsv"));
        EXPECT_EQ(before == std::vector<std::string>{one.after},
                  std::string(one.before) == one.after)
            << testing::PrintToString(before);
        EXPECT_EQ(Place(Files{{"run.tsv", place.Text("run.tsv")}}).Text("run.tsv"),
                  place.Text("run.tsv"));
    }
}

TEST(Prepare, RowsOfTablesAreMendedOrCounted)
{
    const Place msgf(Files{{"run.tsv", kMsgfHeader + "\n" + MsgfRow() + "run\t1\n" + MsgfRow()
                                           + std::string(90'000, 'x') + "\n" + MsgfRow()}});
    EXPECT_EQ(MatchesOf(PepIdentType::MsgfTsv, msgf.Path("run.tsv")).size(), 3U);
    EXPECT_EQ(MatchesOf(PepIdentType::MsgfTsv, msgf.Source("run.tsv")).size(), 2U);
    EXPECT_EQ(msgf.Changed("blank_row"), 1U);
    EXPECT_EQ(msgf.LeftOut("short_row"), 1U);
    EXPECT_EQ(msgf.LeftOut("long_line"), 1U);
    EXPECT_EQ(msgf.Counts().held, 5U);

    const Place sequest(
        Files{{"psms.txt", kSequestHeader + SequestRow("1", "C-Term(Amidated)") + SequestRow("x")
                               + SequestRow("1", "M1(Oxidation);")}});
    EXPECT_EQ(MatchesOf(PepIdentType::SequestTxt, sequest.Source("psms.txt")).size(), 0U);
    EXPECT_EQ(MatchesOf(PepIdentType::SequestTxt, sequest.Path("psms.txt")).size(), 2U);
    EXPECT_EQ(sequest.LeftOut("cell_no_number"), 1U);
    EXPECT_THAT(sequest.Text("psms.txt"), HasSubstr("\tC5(Amidated)\t"));

    const auto changed = [](std::string row, const std::string& from, const std::string& to) {
        return row.replace(row.find(from), from.size(), to);
    };
    const std::string nul(1, '\0');
    const Place nuls(
        Files{{"run.tsv", kMsgfHeader + nul + MsgfRow() + changed(MsgfRow(), "P1", "P1" + nul)
                              + changed(MsgfRow(), "GASK", "GA" + nul) + MsgfRow()}});
    EXPECT_EQ(nuls.LeftOut("nul_byte"), 3U);
    EXPECT_EQ(nuls.Text("run.tsv"), kMsgfHeader + MsgfRow());
    const Place padded(
        Files{{"run.tsv", kMsgfHeader + MsgfRow() + nul + " \r\n" + std::string(100'000, '\0')}});
    EXPECT_EQ(padded.Text("run.tsv"), kMsgfHeader + MsgfRow());
    EXPECT_TRUE(padded.Counts().leftOut.empty());
    EXPECT_EQ(padded.Changed("blank_row"), 2U);

    const Place tabs(
        Files{{"psms.txt", kSequestHeader + changed(SequestRow(), "P1", "\"P1;\tP2\"")
                               + changed(SequestRow(), "P1", "\"P1\"") + SequestRow("+1")}});
    EXPECT_EQ(tabs.LeftOut("quoted_tab"), 1U);
    EXPECT_EQ(tabs.Text("psms.txt"), kSequestHeader + SequestRow() + SequestRow("+1"));
    std::string stray = changed(SequestRow(), "P1", "P1 5\" x");
    stray.insert(stray.size() - 1, "\t");
    EXPECT_EQ(Place(Files{{"psms.txt", kSequestHeader + stray}}).Counts().written, 1U);

    std::string pFind = PFind3Row();
    pFind.replace(pFind.find("P1/P2/"), 6, "P1/P2");
    const Place spectra(Files{{"a.spectra", kPFind3Header + pFind}});
    EXPECT_THAT(MatchesOf(PepIdentType::Pfind3Spectra, spectra.Source("a.spectra")),
                ElementsAre("GASK P1(K,A)"));
    EXPECT_THAT(MatchesOf(PepIdentType::Pfind3Spectra, spectra.Path("a.spectra")),
                ElementsAre("GASK P1(K,A) P2(R,G)"));
}

TEST(Prepare, HeadersOfOtherReleasesAreSpelledAsTheLibraryWants)
{
    std::string header = kSequestHeader;
    const std::map<std::string, std::string> names = {{"Deltam/z [Da]", "Delta mz in Da"},
                                                      {"Theo. MH+ [Da]", "Theo MHplus in Da"},
                                                      {"DeltaCn", "\"Delta Cn\""},
                                                      {"Rank", "RANK"}};
    for (const auto& [wanted, other] : names) {
        header.replace(header.find(wanted), wanted.size(), other);
    }
    const Place place(Files{{"psms.txt", header + SequestRow()}});
    EXPECT_EQ(place.Text("psms.txt"), kSequestHeader + SequestRow());
    EXPECT_EQ(place.Changed("column_spelling"), 4U);
    EXPECT_THROW(Make(Files{{"psms.txt", "Rank\tSpectrum File\tFirst Scan\tXCorr\tDeltaCn\n"}}),
                 Failure);
}

TEST(Prepare, HeadersAreCopiedWholeAsTheirReadersTakeThem)
{
    const std::string more = "\tMore\t" + Vorlan::test::Repeat("x", 90000);
    const auto with = [&more](std::string header) {
        return header.insert(header.size() - 1, more);
    };
    const Place place(Files{{"run.tsv", with(kMsgfHeader) + MsgfRow()}});
    EXPECT_EQ(place.Text("run.tsv"), with(kMsgfHeader) + MsgfRow());
    EXPECT_EQ(MatchesOf(PepIdentType::MsgfTsv, place.Path("run.tsv")).size(), 1U);
    EXPECT_THROW(Make(Files{{"psms.txt", with(kSequestHeader) + SequestRow()}}), Failure);
}

TEST(Prepare, PeptidesNameTheRowsOfMaxQuantInTheirOrder)
{
    const auto matches = [](const Place& place, const std::string& name) {
        return MatchesOf(PepIdentType::MaxQuant, place.Path(name));
    };
    const std::string other = TabLine(
        {"run", "AAAK", "2", "2", "", "90", "", "195.6", "P9", "1.5", "Unmodified", "_AAAK_"});
    const std::string msms = kMsmsHeader + MsmsRow() + other + "short\n" + MsmsRow();
    EXPECT_THAT(matches(Place(Files{{"msms.txt", msms}}), "msms.txt"),
                ElementsAre("GASK P1(X,X)", "AAAK P9(X,X)", "GASK P1(X,X)"));
    // Out of order, which ends the process of whoever reads the files as they are.
    const Place both(
        Files{{"peptides.txt", kPeptidesHeader + PeptidesRow("3;0")}, {"msms.txt", msms}});
    EXPECT_THAT(matches(both, "msms.txt"),
                ElementsAre("GASK P1(K,A) P2(K,A)", "AAAK P9(X,X)", "GASK P1(K,A) P2(K,A)"));
    const Place two(Files{{"a/msms.txt", msms}, {"b/msms.txt", msms}});
    EXPECT_EQ(matches(two, "a/msms.txt").size(), 3U);
    EXPECT_EQ(matches(two, "b/msms.txt").size(), 3U);
    const std::string peptides = kPeptidesHeader + PeptidesRow("0");
    const Place namesakes(Files{{"a/txt/msms.txt", msms},
                                {"a/txt/peptides.txt", peptides},
                                {"b/txt/msms.txt", msms},
                                {"c/msms.txt", msms}});
    EXPECT_EQ(matches(namesakes, "a/txt/msms.txt").size(), 3U);
    EXPECT_EQ(matches(namesakes, "b/txt/msms.txt").size(), 3U);
    EXPECT_EQ(matches(namesakes, "c/msms.txt").size(), 3U);
    EXPECT_THAT(
        [&] {
            Make(Files{{"peptides.txt", peptides}});
        },
        testing::ThrowsMessage<Failure>(
            HasSubstr("/peptides.txt: expected msms.txt of the same folder")));
}

TEST(Prepare, EachRunOfPepXmlHasAFileOfItsOwn)
{
    const std::string one = PepXml(Query(Hit()));
    const std::string end = "</msms_pipeline_analysis>\n";
    const std::string run =
        one.substr(one.find("<msms_run_summary"), one.find(end) - one.find("<msms_run_summary"));
    std::string other = run;
    other.replace(other.find("\"P1\""), 4, "'A&amp;B > \"C\"'");
    other.insert(other.find("<search_result>"), "<!-- a > b --><?x y?>");
    const Place place(Files{{"two.pep.xml", one.substr(0, one.find(end)) + other + end}});
    EXPECT_EQ(MatchesOf(PepIdentType::CometPepXml, place.Source("two.pep.xml")).size(), 1U);
    EXPECT_THAT(MatchesOf(PepIdentType::CometPepXml, place.Path("two.1.pep.xml")),
                ElementsAre("GASK P1(K,A)"));
    EXPECT_THAT(MatchesOf(PepIdentType::CometPepXml, place.Path("two.2.pep.xml")),
                ElementsAre("GASK A&B > &quot;C&quot;(K,A)"));
    EXPECT_EQ(place.Changed("markup_dropped"), 2U);
    EXPECT_EQ(place.Counts().held, 2U);
}

TEST(Prepare, ARunWithoutAnythingHidesNone)
{
    std::string text = PepXml(Query(Hit()));
    text.insert(text.find("<msms_run_summary"), "<msms_run_summary base_name=\"x\"/>\n");
    const Place place(Files{{"a.pep.xml", text}});
    EXPECT_EQ(MatchesOf(PepIdentType::CometPepXml, place.Source("a.pep.xml")).size(), 0U);
    EXPECT_EQ(MatchesOf(PepIdentType::CometPepXml, place.Path("a.pep.xml")).size(), 1U);
    EXPECT_EQ(place.Changed("empty_run"), 1U);
}

/// The plain text of a file is a file that nobody else knows.
TEST(Prepare, MessagesNameTheFilesOfTheUser)
{
    const auto message = [](const Files& files) -> std::string {
        try {
            Make(files);
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "";
    };
    const std::string twoMarks = "\xEF\xBB\xBF\xEF\xBB\xBF"; // need a plain text
    const std::string mods = twoMarks
                             + "name1=Oxidation[M] 0\nOxidation[M]=M NORMAL 15.994915 "
                               "15.9994 0 O(1)\n"
                             + std::string(90'000, 'x') + "\n";
    EXPECT_THAT(message(Files{{"modification.ini", mods}}),
                testing::EndsWith("/modification.ini:3: expected lines of at most 81919 characters "
                                  "without NUL"));
    EXPECT_THAT(message(Files{{"msms.txt", kMsmsHeader + MsmsRow()},
                              {"peptides.txt", twoMarks
                                                   + "Sequence\tMS/MS IDs\tProteins\t"
                                                     "Amino acid after\n"}}),
                testing::AllOf(HasSubstr("/peptides.txt:1: expected a column"),
                               testing::Not(HasSubstr("plain-"))));
}

TEST(Prepare, PepXmlThatIsCutOffKeepsItsWholeQueries)
{
    const std::string whole = PepXml(Query(Hit()) + Query(Hit()));
    const std::size_t second = whole.rfind("<spectrum_query");
    std::size_t leftOut = 0;
    for (std::size_t length = second; length < whole.rfind("</spectrum_query>"); length += 7) {
        const Place place(Files{{"a.pep.xml", whole.substr(0, length)}});
        EXPECT_EQ(MatchesOf(PepIdentType::CometPepXml, place.Source("a.pep.xml")).size(), 0U);
        EXPECT_EQ(MatchesOf(PepIdentType::CometPepXml, place.Path("a.pep.xml")).size(), 1U);
        EXPECT_EQ(place.Changed("end_added"), 1U);
        EXPECT_EQ(place.Counts().held, place.Counts().written + place.LeftOut("cut_off"));
        leftOut += place.LeftOut("cut_off");
    }
    EXPECT_GT(leftOut, 10U);
    EXPECT_THROW(Make(Files{{"a.pep.xml", PepXml("<a></b>")}}), Failure);
    EXPECT_THROW(Make(Files{{"a.pep.xml", PepXml("<a b=c/>")}}), Failure);
}

TEST(Prepare, ResultsNameTheSpectraByTheirNewNames)
{
    const std::string mgf = "BEGIN IONS\nTITLE=Cmpd 5, x\nCHARGE=2+\n1 1\nEND IONS\n";
    std::string query = Query(Hit());
    query.replace(query.find("run.00001.00001.2"), 17, "Cmpd 5, x");
    const Place place(Files{{"run.mgf", mgf}, {"run.pep.xml", PepXml(query)}});
    EXPECT_THAT(place.Text("run.pep.xml"), HasSubstr("<spectrum_query spectrum=\"run.5.5.2\" "));
    std::string references = Query(Hit());
    references.replace(references.find("run.00001.00001.2"), 17, "a&#+65;b&#65;c");
    EXPECT_THAT(Place(Files{{"run.pep.xml", PepXml(references)}}).Text("run.pep.xml"),
                HasSubstr("spectrum=\"a&#+65;bAc\""));
    const Place elsewhere(Files{{"other.mgf", mgf}, {"run.pep.xml", PepXml(query)}});
    EXPECT_THAT(elsewhere.Text("run.pep.xml"), HasSubstr("spectrum=\"Cmpd 5, x\""));
}

std::string NativeTable(const std::vector<std::string>& spectra)
{
    std::string table =
        TabLine({"Dataset Name", "Spectrum Name", "Sequence", "Charge", "ObsMH", "Mass Shift",
                 "Main Score", "High Score Better", "Identified Mod Name",
                 "Identified Mod Position", "Protein Access", "Before AA", "After AA"});
    for (const std::string& spectrum : spectra) {
        table += TabLine(
            {"run.mgf", spectrum, "GASK", "2", "390.1", "0", "1", "true", "", "", "P1", "K", "A"});
    }
    return table;
}

TEST(Prepare, ANameNeverMeetsAnotherSpectrumOfTheCopy)
{
    const auto record = [](const std::string& head, const std::string& peak = "1 1\n") {
        return "BEGIN IONS\n" + head + peak + "END IONS\n";
    };
    struct Case {
        const char* reason;
        std::string mgf;
        std::string name;  ///< in the result
        std::string after; ///< in its copy; empty: left out
    };
    const std::string hundred = record("TITLE=100\nSCANS=1\n");
    for (const Case& one : std::vector<Case>{
             {"the title of one is the scan number of another",
              hundred + record("TITLE=x\nSCANS=100\n"), "100", "run.1.1."},
             {"and the number of its title, too: nobody can tell",
              hundred + record("TITLE=x scan=100 \"y\nSCANS=100\n") + record("TITLE=z scan=1005\n"),
              "100", ""},
             {"the one with the title is left out",
              record("TITLE=100\nSCANS=1\n", "1,5 1\n") + record("TITLE=x\nSCANS=100\n"), "100",
              ""},
             {"the charge tells which of two",
              record("TITLE=run.7.7.2\nCHARGE=2+\n") + record("TITLE=run.7.7.2\nCHARGE=3+\n"),
              "run.00007.00007.2", "run.00007.00007.2"},
             {"a title as it was does not",
              record("TITLE=run.7.7.2\nCHARGE=2+\n") + record("TITLE=run.7.7.2\nCHARGE=3+\n"),
              "run.7.7.2", ""},
             {"one of two charges is unknown, and another spectrum has the name",
              record("TITLE=run.7.7.2\nCHARGE=2+\n") + record("TITLE=run.7.7.2\n"),
              "run.00007.00007.2", ""},
             {"its own", hundred + record("TITLE=x\nSCANS=100\n"), "x", "x"},
             {"nobody's", hundred + record("TITLE=x\nSCANS=100\n"), "7", "7"},
         }) {
        SCOPED_TRACE(one.reason);
        std::string query = Query(Hit());
        query.replace(query.find("run.00001.00001.2"), 17, one.name);
        const Place place(Files{{"run.mgf", one.mgf},
                                {"run.pep.xml", PepXml(query)},
                                {"psms.txt", NativeTable({one.name})}});
        const bool isLeftOut = one.after.empty();
        EXPECT_EQ(place.Text("psms.txt"), isLeftOut ? NativeTable({}) : NativeTable({one.after}));
        EXPECT_EQ(place.Text("run.pep.xml").find("spectrum=\"" + one.after + "\"")
                      == std::string::npos,
                  isLeftOut);
        for (const std::size_t result : {1U, 2U}) {
            const Copy& copy = place.Counts(result);
            EXPECT_EQ(copy.leftOut.count("name_of_several"), isLeftOut ? 1U : 0U);
            const bool isRenamed = !isLeftOut && one.after != one.name;
            EXPECT_EQ(copy.changes.count("spectrum_renamed"), isRenamed ? 1U : 0U);
        }
    }
}

TEST(Prepare, CellsAreTheNumbersThatTheLibraryTakesThemFor)
{
    const auto with = [](const std::string& score) {
        std::string table = NativeTable({"run.1.1.2"});
        return table.replace(table.find("\t0\t1\ttrue"), 4, "\t0\t" + score);
    };
    for (const char* const score :
         {"1e-400", "Infinity", "-inf", "NAN", "+2", "0x10", "1e", "1,5", "", "1 2", "1e400"}) {
        SCOPED_TRACE(score);
        const Place place(Files{{"psms.txt", with(score)}});
        const auto before = MatchesOf(PepIdentType::CalvexTxt, place.Source("psms.txt"));
        EXPECT_EQ(MatchesOf(PepIdentType::CalvexTxt, place.Path("psms.txt")), before);
        EXPECT_EQ(place.LeftOut("cell_no_number"), before.empty() ? 1U : 0U);
    }
}

TEST(Prepare, ProteinsHaveCapitalLettersAndAccessionsThatEnd)
{
    const Place place(Files{{"a.fasta", "\xEF\xBB\xBF>P1\tOne protein\r\n\r\nGAsk\r\n> P2 x\nMK"}});
    EXPECT_EQ(place.Text("a.fasta"), ">P1 One protein\nGASK\n>P2 x\nMK\n");
    EXPECT_EQ(place.Counts().held, 2U);
    EXPECT_EQ(place.Changed("lower_case"), 1U);
    EXPECT_EQ(place.Changed("header_tab"), 1U);
    EXPECT_EQ(place.Changed("blank_line"), 1U);
    const std::string residues(300'000, 'G');
    EXPECT_EQ(Place(Files{{"a.fasta", ">P1\n" + residues + "\n"}}).Text("a.fasta"),
              ">P1\n" + residues + "\n");
}

TEST(Prepare, DtaFilesAreReadToTheirEnds)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.PathOf("run"));
    folder.Write("run/a.1.1.2.dta", "500.5 2\r\n\r\n100 1\r\nx\r\n200 2\r\n");
    folder.Write("run/b.dta", "500.5 0\n100 1\n");
    folder.Write("run/c.dta", "500.5 2\n\n");
    folder.Write("run/d.dta", "500.5 2\n300 1\n\n600.5 2\n100 1\n");
    folder.Write("run/e.dta", "500.5 2\n100,5 1\n");
    folder.Write("run/f.dta", "500.5 2\n100 1" + std::string(1, '\0') + "\n200 2\n");
    folder.Write("run/g.dta", "500.5 +2\n100 1e-400\n200 inf\n");
    Preparation preparation(folder.PathOf("out"));
    preparation.Add(folder.PathOf("run"));
    preparation.Run();
    EXPECT_EQ(ReadFile(folder.PathOf("out/run/a.1.1.2.dta")), "500.5 2\n100 1\n200 2\n");
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("out/run/d.dta")));
    const Copy& copy = preparation.Copies().front();
    EXPECT_EQ(ReadFile(folder.PathOf("out/run/g.dta")), "500.5 +2\n100 1e-400\n");
    EXPECT_EQ(copy.held, 7U);
    EXPECT_EQ(copy.written, 2U);
    EXPECT_EQ(copy.leftOut.at("nul_byte").firstFile, "f.dta");
    EXPECT_EQ(copy.leftOut.at("without_precursor").firstFile, "b.dta");
    EXPECT_EQ(copy.leftOut.at("without_peaks").firstFile, "c.dta");
    EXPECT_EQ(copy.leftOut.at("several_spectra").firstFile, "d.dta");
    EXPECT_EQ(copy.leftOut.at("several_spectra").firstLine, 5U);
    EXPECT_EQ(copy.leftOut.at("decimal_comma").firstFile, "e.dta");
}

TEST(Prepare, OfAnInputThatChangesNoCopyIsLeft)
{
    const std::string record = "BEGIN IONS\nTITLE=a\nPEPMASS=500\n100 1\nEND IONS\n";
    const TempFolder folder;
    const std::string path = folder.Write("a.mgf", record);
    Preparation preparation(folder.PathOf("out"));
    preparation.Add(path);
    folder.Write("a.mgf", record + record);
    EXPECT_THAT(
        [&] { preparation.Run(); },
        testing::ThrowsMessage<Failure>(
            path + ": has changed while it was copied; expected inputs to stay as they are"));
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("out/a.mgf")));
}

TEST(Prepare, CopiesMayGoIntoTheirFolder)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.PathOf("run"));
    folder.Write("run/a.1.1.2.dta", "500.5 2\n100 1\n");
    Preparation preparation(folder.PathOf("run/copies"));
    preparation.Add(folder.PathOf("run"));
    preparation.Run();
    EXPECT_EQ(ReadFile(folder.PathOf("run/copies/run/a.1.1.2.dta")), "500.5 2\n100 1\n");
}

TEST(Prepare, AFolderThatCannotBeReadIsNotMade)
{
    const TempFolder folder;
    Preparation preparation(folder.PathOf("a\\b"));
    preparation.Add(folder.Write("run.mgf", "BEGIN IONS\nTITLE=a\n100 1\nEND IONS\n"));
    EXPECT_THROW(preparation.Run(), Failure);
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("a\\b")));
}

TEST(Prepare, NoOtherDtaFileLiesAmongTheCopies)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.PathOf("run"));
    folder.Write("run/a.dta", "500.5 2\n100 1\n");
    folder.Write("run/b.dta", "600.5 2\n100 1\n");
    const auto prepare = [&] {
        Preparation preparation(folder.PathOf("out"));
        preparation.Add(folder.PathOf("run"));
        preparation.Run();
    };
    prepare();
    folder.Write("run/a.dta", "500,5 2\n100 1\n");
    prepare();
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("out/run/a.dta"))) << "it is left out now";
    std::filesystem::remove(folder.PathOf("run/b.dta"));
    EXPECT_THAT(prepare, testing::ThrowsMessage<Failure>(HasSubstr(
                             folder.PathOf("out/run/b.dta") + ": is no copy of a file of ")));
    EXPECT_TRUE(std::filesystem::exists(folder.PathOf("out/run/b.dta")));
}

TEST(Prepare, APipeAmongDtaFilesIsRefused)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.PathOf("run"));
    ASSERT_EQ(::mkfifo(folder.PathOf("run/a.dta").c_str(), 0600), 0);
    Preparation preparation(folder.PathOf("out"));
    preparation.Add(folder.PathOf("run"));
    EXPECT_THAT([&] { preparation.Run(); },
                testing::ThrowsMessage<Failure>(HasSubstr("pipe or device")));
}

TEST(Prepare, PeptidesBelongToTheMatchesOfTheirFolderHoweverItIsNamed)
{
    const std::string msms = kMsmsHeader + MsmsRow();
    const std::string peptides = kPeptidesHeader + PeptidesRow("0");
    const TempFolder folder;
    for (const char* const name : {"b/txt", "c/txt"}) {
        std::filesystem::create_directories(folder.PathOf(name));
        folder.Write(std::string(name) + "/msms.txt", msms);
    }
    folder.Write("b/txt/peptides.txt", peptides);
    folder.Write("b/txt/peptides.txt.more", peptides);
    std::filesystem::create_directory_symlink(folder.PathOf("b/txt"), folder.PathOf("lnk"));
    struct Case {
        const char* reason;
        std::vector<std::string> inputs;
        std::string copy;
        std::string passedOver;
    };
    int round = 0;
    for (const Case& one : std::vector<Case>{
             {"a second file of the folder",
              {"b/txt/msms.txt", "b/txt/peptides.txt", "b/txt/peptides.txt.more"},
              "peptides.txt",
              "b/txt/peptides.txt.more"},
             {"a file named twice",
              {"b/txt/msms.txt", "b/txt/peptides.txt", "b/./txt/peptides.txt"},
              "peptides.txt",
              "b/./txt/peptides.txt"},
             {"a link to the folder",
              {"lnk/msms.txt", "c/txt/msms.txt", "b/txt/peptides.txt"},
              "lnk/peptides.txt",
              ""},
         }) {
        SCOPED_TRACE(one.reason);
        const std::string out = "out" + std::to_string(++round);
        std::vector<std::string> arguments = {"prepare", "--out", out};
        arguments.insert(arguments.end(), one.inputs.begin(), one.inputs.end());
        Setting setting;
        setting.folder = folder.Path();
        const Outcome outcome = RunPelgrin(arguments, setting);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, one.passedOver.empty()
                                   ? ""
                                   : "pelgrin: warning: " + one.passedOver
                                         + ": is passed over; b/txt/peptides.txt was named first "
                                           "and is read\n");
        EXPECT_EQ(ReadFile(folder.PathOf(out + "/" + one.copy)), peptides);
    }
}

TEST(Prepare, ACopyNeverTakesThePlaceOfThePeptidesBesideTheirMatches)
{
    const std::string peptides = kPeptidesHeader + PeptidesRow("0");
    const TempFolder folder;
    folder.Write("peptides.txt", peptides);
    const std::string path = folder.Write("matches.txt", kMsmsHeader + MsmsRow());
    Preparation preparation(folder.Path());
    preparation.Add(path, FileKind::MaxQuantMatches);
    EXPECT_THAT([&] { preparation.Run(); },
                testing::ThrowsMessage<Failure>(HasSubstr("choose another folder")));
    EXPECT_EQ(ReadFile(folder.PathOf("peptides.txt")), peptides);
}

TEST(Prepare, FilesThatLinksOfAFolderLeadToStay)
{
    const TempFolder folder;
    std::filesystem::create_directories(folder.PathOf("in/run"));
    std::filesystem::create_directories(folder.PathOf("out/run"));
    const std::string text = "500.5 2\n100 1\n";
    folder.Write("out/run/a.1.1.2.dta", text);
    std::filesystem::create_symlink("../../out/run/a.1.1.2.dta",
                                    folder.PathOf("in/run/a.1.1.2.dta"));
    Preparation preparation(folder.PathOf("out"));
    preparation.Add(folder.PathOf("in/run"));
    EXPECT_THAT([&] { preparation.Run(); },
                testing::ThrowsMessage<Failure>(
                    HasSubstr("in/run/a.1.1.2.dta: is an input, and a copy would")));
    EXPECT_EQ(ReadFile(folder.PathOf("out/run/a.1.1.2.dta")), text);
}

TEST(Prepare, PeptidesOfSeveralMatchesAreToldWithAllTheirCopies)
{
    const TempFolder folder;
    Preparation preparation(folder.PathOf("out"));
    preparation.Add(folder.Write("msms.txt", kMsmsHeader + MsmsRow()));
    preparation.Add(folder.Write("msms2.txt", kMsmsHeader + MsmsRow()));
    preparation.Add(folder.Write("peptides.txt", kPeptidesHeader + PeptidesRow("0")));
    preparation.Run();
    EXPECT_EQ(preparation.PathsOf(preparation.Copies().back()).size(), 2U);
    for (const std::string& path : preparation.PathsOf(preparation.Copies().back())) {
        EXPECT_TRUE(std::filesystem::exists(path)) << path;
    }
}

TEST(Prepare, OfAFolderThatChangesNoCopyIsLeft)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.PathOf("run"));
    folder.Write("run/a.1.1.2.dta", "500.5 2\n100 1\n");
    Preparation preparation(folder.PathOf("out"));
    preparation.Add(folder.PathOf("run"));
    folder.Write("run/b.2.2.2.dta", "600.5 2\n100 1\n");
    EXPECT_THROW(preparation.Run(), Failure);
    EXPECT_FALSE(std::filesystem::exists(folder.PathOf("out/run")));
}

} // namespace
} // namespace pelgrin
