// Broken, cut, odd and large documents, and random ones against a plain twin.
#include <sys/stat.h>

#include "PepXmlText.h"
#include "support/Random.h"

namespace Vorlan::test {
namespace {

using Texts = std::vector<std::string>;

class PepXmlDocuments : public PepXmlTest {
protected:
    /// Nothing but this line is the outcome.
    static void ExpectOnlyTold(const Reading& reading, const std::string& message)
    {
        EXPECT_EQ(reading.output, message + "\n");
        EXPECT_EQ(reading.thrown, Thrown{});
        EXPECT_TRUE(reading.matches.empty());
    }
};

// ---- Broken ones ----------------------------------------------------------------

TEST_F(PepXmlDocuments, B68_AFileThatCannotBeOpenedIsOnlyTold)
{
    ExpectOnlyTold(ReadPepXmlFile(results_.Path(), "missing.pepXML"), "Can not open file!");
    ExpectOnlyTold(ReadPepXmlFile<CometPepXMLPepIdentIO>(results_.Path(), "missing.pepXML"),
                   "Can not open file!");
    ExpectOnlyTold(ReadPepXmlFile(results_.Path(), "."), "Can not open file!");
    const std::string pipe = results_.PathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ExpectOnlyTold(ReadPepXmlFile(results_.Path(), "pipe"), "Can not open file!");
}

struct Broken {
    const char* reason;
    std::string from;
    std::string to;
    std::string message;
};

const Broken kBroken[] = {
    {"no end of an element", "</search_result>", "", "<search_result>Can not find </element>"},
    {"no end of the root", "</msms_pipeline_analysis>", "",
     "<msms_pipeline_analysis date=\"2026-11-20T10:00:00\">Can not find </element>"},
    {"ends that cross", "</search_result>\n</spectrum_query>", "</spectrum_query></search_result>",
     "<search_result>Can not find </element>"},
    {"data without an end", "</msms_run_summary>\n", "<![CDATA[ > </msms_run_summary>\n",
     "Can not find \"]]>\""},
    {"a tag without an end behind it all", "</msms_pipeline_analysis>\n",
     "</msms_pipeline_analysis>\n<x", "<x\nCan not find '>'"},
};

TEST_F(PepXmlDocuments, B68_ABrokenDocumentIsOnlyTold)
{
    for (const Broken& row : kBroken) {
        SCOPED_TRACE(row.reason);
        const std::string text = Changed(kPepXml, row.from, row.to);
        ExpectOnlyTold(ReadText(text), row.message);
        ExpectOnlyTold(ReadText<CometPepXMLPepIdentIO>(text), row.message);
    }
}

// The last one is read the careful way.
TEST_F(PepXmlDocuments, B68_ADocumentWithoutElementsIsOnlyTold)
{
    for (const std::string text : {"", "\n", "no XML", "<?xml version=\"1.0\"?>\n<!-- <a/> -->\n",
                                   "<!-- </of_nothing> -->"}) {
        SCOPED_TRACE(text);
        ExpectOnlyTold(ReadText(text), "Can not find root element!");
        ExpectOnlyTold(ReadText<CometPepXMLPepIdentIO>(text), "Can not find root element!");
    }
}

TEST_F(PepXmlDocuments, B68_ABrokenDocumentLeavesTheMatchesThatAreThere)
{
    std::vector<PeptideIdentification> former(2);
    former[0].strSequence = "FORMER";
    const Reading reading = ReadText(Changed(kPepXml, "</msms_pipeline_analysis>", ""), former);
    EXPECT_EQ(FullTexts(reading.matches), FullTexts(former));
    EXPECT_NE(reading.output, "");
}

TEST_F(PepXmlDocuments, MatchesAreAppended)
{
    std::vector<PeptideIdentification> former(2);
    former[0].strSequence = "FORMER";
    const Reading reading = ReadText(kPepXml, former);
    Texts expected = FullTexts(former);
    expected.push_back(FullText(PepXmlMatch()));
    EXPECT_EQ(FullTexts(reading.matches), expected);
}

// The matches stand in front of the cut all the same; none of them is given.
TEST_F(PepXmlDocuments, B68_CutAtAnyByteADocumentGivesAllOrNothing)
{
    const Texts whole = TextsOf(kPepXml);
    const std::size_t needed = kPepXml.size() - 1; // the last line feed is not
    const std::size_t prologue = kPepXml.find('\n') + 1;
    for (const std::string& text : {kPepXml, WithCarriageReturns(kPepXml)}) {
        int told = 0;
        int silent = 0;
        for (std::size_t size = 0; size < text.size(); ++size) {
            const Reading reading = ReadText(text.substr(0, size));
            ASSERT_EQ(reading.thrown, Thrown{}) << size;
            if (reading.output.empty()) {
                const Texts seen = FullTexts(reading.matches);
                ASSERT_TRUE(seen.empty() || seen == whole) << size;
                silent += seen.empty() ? 0 : 1;
            } else {
                ASSERT_TRUE(reading.matches.empty()) << size;
                ++told;
            }
        }
        EXPECT_GE(silent, 1);
        EXPECT_GE(told, static_cast<int>(needed - prologue - 10));
    }
}

// ---- The same document in other forms ---------------------------------------------

std::string Everything()
{
    const std::string query = Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n");
    const std::string other =
        Changed(Changed(query, "run01.00007.00007.2 extra", "other"), "<modification_info ",
                "<modification_info mod_nterm_mass=\"2.0\" ");
    return Changed(kPepXml, query, query + other + query);
}

TEST_F(PepXmlDocuments, LineEndsDoNotMatter)
{
    const Texts expected = TextsOf(Everything());
    EXPECT_EQ(expected.size(), 3U);
    EXPECT_EQ(TextsOf(WithCarriageReturns(Everything())), expected);
    EXPECT_EQ(TextsOf("\xEF\xBB\xBF" + Everything()), expected);
    std::string oneLine;
    for (const char c : Everything()) {
        oneLine += c == '\n' ? ' ' : c;
    }
    EXPECT_EQ(TextsOf(oneLine), expected);
}

TEST_F(PepXmlDocuments, CommentsAndOtherMarkupDoNotMatter)
{
    const Texts expected = TextsOf(Everything());
    for (const std::string markup : {"<!-- a comment -->", "<?note?>", "<![CDATA[ <x> ]]>"}) {
        std::string text = Everything();
        for (std::size_t place = 0; (place = text.find(">\n", place)) != std::string::npos;) {
            text.insert(place + 1, markup);
            place += markup.size() + 2;
        }
        EXPECT_EQ(TextsOf(text), expected) << markup;
    }
}

// A closing tag in a comment, and one with more letters than its element: the
// quick way gives up, also behind all queries.
TEST_F(PepXmlDocuments, WhatOnlyTheCarefulWayReadsGivesTheSame)
{
    const Texts expected = TextsOf(Everything());
    const std::string comment = "<!-- </of_nothing> -->";
    for (const std::string before :
         {"<?xml", "<msms_run_summary", "</msms_run_summary>", "</search_summary>"}) {
        SCOPED_TRACE(before);
        EXPECT_EQ(TextsOf(Changed(Everything(), before, comment + before)), expected);
    }
    EXPECT_EQ(TextsOf(Everything() + comment), expected);
}

// "<msms>" ends where "</msms" stands first: in front of the end of the run.
TEST_F(PepXmlDocuments, B28_ANameThatBeginsAsAnotherOneEndsEarly)
{
    std::string text = Changed(kPepXml, "<msms_pipeline_analysis", "<msms");
    text = Changed(text, "</msms_pipeline_analysis", "</msms");
    const Reading reading = ReadText(text);
    EXPECT_EQ(reading.output,
              Piece(kPepXml, "<msms_run_summary", ">") + "Can not find </element>\n");
    EXPECT_TRUE(reading.matches.empty());
}

TEST_F(PepXmlDocuments, LargeOnesAreReadWholly)
{
    const std::string query = Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n");
    std::string all;
    constexpr std::size_t kCount = 6000; // some windows of 1 MiB
    for (std::size_t i = 0; i < kCount; ++i) {
        all += Changed(query, "run01.00007", "run01." + std::to_string(i));
    }
    ASSERT_GT(all.size(), 3U * 1024 * 1024);
    for (const std::string& text :
         {Changed(kPepXml, query, all), WithCarriageReturns(Changed(kPepXml, query, all))}) {
        const Reading reading = ReadText(text);
        EXPECT_EQ(reading.output, "");
        ASSERT_EQ(reading.matches.size(), kCount);
        for (std::size_t i = 0; i < kCount; ++i) {
            PeptideIdentification match = PepXmlMatch();
            match.strSpectrumName = "run01." + std::to_string(i) + ".00007.2";
            ASSERT_EQ(FullText(reading.matches[i]), FullText(match));
        }
    }
}

// ---- The object -------------------------------------------------------------------

TEST_F(PepXmlDocuments, AReaderReadsFileAfterFile)
{
    results_.Write("a.pepXML", kPepXml);
    results_.Write("b.pepXML", Changed(kPepXml, "PEPMIDEK", "PEPMIDER"));
    MSFraggerPepXMLPepIdentIO reader;
    std::vector<PeptideIdentification> matches;
    for (const char* const name : {"a.pepXML", "b.pepXML", "a.pepXML"}) {
        reader.InitLoad({results_.Path() + "\\\\", name, PepIdentType::MsFraggerPepXml});
        reader.Load(matches);
        reader.EndLoad();
    }
    reader.Load(matches); // the path stays
    ASSERT_EQ(matches.size(), 4U);
    EXPECT_EQ(matches[1].strSequence, "PEPMIDER");
    EXPECT_EQ(FullText(matches[2]), FullText(matches[0]));
    EXPECT_EQ(FullText(matches[3]), FullText(matches[0]));
}

TEST_F(PepXmlDocuments, SavingDoesNothing)
{
    CometPepXMLPepIdentIO reader;
    EXPECT_EQ(reader.eGetType(), PepIdentType::CometPepXml);
    EXPECT_EQ(MSFraggerPepXMLPepIdentIO().eGetType(), PepIdentType::MsFraggerPepXml);
    const CoutInMemory output;
    reader.InitSave(results_.PathOf("written"));
    reader.Save({PepXmlMatch()});
    reader.EndSave();
    reader.GetResultNumberOfFile();
    EXPECT_EQ(output.Text(), "");
    EXPECT_FALSE(std::filesystem::exists(results_.PathOf("written")));
}

// ---- Against the plain twin ---------------------------------------------------------

constexpr std::string_view kPieces[] = {" spectrum=\"a b\"",
                                        " assumed_charge=\"3\"",
                                        " precursor_neutral_mass=\"900.25\"",
                                        " start_scan=\"12x\"",
                                        " peptide=\"SKMKKKKM\"",
                                        " protein=\"p&gt;\"",
                                        " peptide_prev_aa=\"-\"",
                                        " peptide_next_aa=\"-\"",
                                        " massdiff=\"-1e-3\"",
                                        " position=\"1\"",
                                        " position=\"3\"",
                                        " position=\"8\"",
                                        " mass=\"147.0354\"",
                                        " mass=\"88.03\"",
                                        " mass=\"135.09\"",
                                        " name=\"expect\"",
                                        " value=\"0.125\"",
                                        " value=\"x\"",
                                        " base_name=\"b\"",
                                        " mod_nterm_mass=\"43.5\"",
                                        " retention_time_sec=\"3\"",
                                        "<search_score",
                                        "<search_hit>",
                                        "</search_hit>",
                                        "<spectrum_query>",
                                        "</spectrum_query>",
                                        "<msms_run_summary>",
                                        "/>",
                                        "<!--",
                                        "-->",
                                        "</x>",
                                        "<x>",
                                        "<mod_aminoacid_mass position=\"3\" mass=\"147.0354\"/>"};

/// Some queries with digits changed and pieces taken out, doubled and put in.
std::string RandomPepXml(Random& random)
{
    const std::string query = Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n");
    std::string text = Changed(kPepXml, query, Repeat(query, random.Below(4)));
    for (std::size_t times = random.Below(5); times > 0; --times) {
        const bool isDigit = random.OneIn(3);
        const char* const begins = isDigit ? "0123456789" : " <";
        std::vector<std::size_t> places;
        for (std::size_t place = 0;
             (place = text.find_first_of(begins, place)) != std::string::npos; ++place) {
            places.push_back(place);
        }
        const std::size_t place = places[random.Below(places.size())];
        if (isDigit) {
            text[place] = random.OneOf("0123456789.");
            continue;
        }
        const std::size_t end = text.find_first_of(" >", place + 1);
        const std::size_t length = (end == std::string::npos ? text.size() : end) - place;
        switch (random.Below(3)) {
        case 0: text.erase(place, length); break;
        case 1: text.insert(place, text.substr(place, length)); break;
        default: text.insert(place, kPieces[random.Below(std::size(kPieces))]); break;
        }
    }
    return text;
}

PepXmlOutcome OutcomeOf(const Reading& reading)
{
    PepXmlOutcome outcome;
    outcome.matches = FullTexts(reading.matches);
    outcome.printed = reading.output;
    if (!(reading.thrown == Thrown{})) {
        outcome.thrown = reading.thrown.name + ": " + reading.thrown.message;
    }
    return outcome;
}

/// Names of terminal modifications are not the twin's business.
std::vector<PeptideIdentification> WithoutNamesOfTermini(std::vector<PeptideIdentification> matches)
{
    for (PeptideIdentification& match : matches) {
        for (IdentModification& mod : match.vAltMods) {
            mod.strName.clear();
            mod.strPosition.clear();
        }
    }
    return matches;
}

struct Counts {
    int matches = 0;
    int printed = 0;
    int thrown = 0;
};

TEST_F(PepXmlDocuments, AgreeWithThePlainTwin)
{
    Random random(1);
    Counts counts;
    for (int i = 0; i < 4000 && !HasFailure(); ++i) {
        const std::string text = RandomPepXml(random);
        const bool comet = random.OneIn(2);
        Reading reading = comet ? ReadText<CometPepXMLPepIdentIO>(text) : ReadText(text);
        reading.matches = WithoutNamesOfTermini(std::move(reading.matches));
        const PepXmlOutcome seen = OutcomeOf(reading);
        const PepXmlOutcome twin = PepXmlTwin("mgf", comet).Read(results_.PathOf("r.pepXML"));
        ASSERT_EQ(seen.matches, twin.matches) << text;
        ASSERT_EQ(seen.printed, twin.printed) << text;
        ASSERT_EQ(seen.thrown, twin.thrown) << text;
        counts.matches += seen.matches.empty() ? 0 : 1;
        counts.printed += seen.printed.empty() ? 0 : 1;
        counts.thrown += seen.thrown.empty() ? 0 : 1;
    }
    EXPECT_GE(counts.matches, 1000);
    EXPECT_GE(counts.printed, 200);
    EXPECT_GE(counts.thrown, 100);
}

} // namespace
} // namespace Vorlan::test
