// What is read from the elements and attributes of pepXML, one at a time.
#include <functional>

#include "PepXmlText.h"
#include "SpectraIO.h"

namespace Vorlan::test {
namespace {

using Texts = std::vector<std::string>;
using Match = PeptideIdentification;

const double kProton = OpenMS::Constants::PROTON_MASS_U;

class PepXmlReading : public PepXmlTest {};

TEST_F(PepXmlReading, EveryFieldOfAMatch)
{
    EXPECT_EQ(TextsOf(kPepXml), Texts{FullText(PepXmlMatch())});
}

TEST_F(PepXmlReading, B57_CometTakesTheScoreNamedExpect)
{
    Match match = PepXmlMatch();
    match.dMainScore = 0.0015;
    EXPECT_EQ(TextsOf<CometPepXMLPepIdentIO>(kPepXml), Texts{FullText(match)});
}

struct Change {
    const char* reason;
    std::string from;
    std::string to;
    std::function<void(Match&)> change;
};

void NoMods(Match& match)
{
    match.vMods.clear();
}

void Nothing(Match&) {}

const Change kChanges[] = {
    // Attributes that are missing
    {"no base_name", " base_name=\"data/run01\" raw_data_type", " raw_data_type",
     [](Match& m) { m.strDatasetName = ".mgf"; }},
    {"no spectrum", " spectrum=\"run01.00007.00007.2 extra\"", "",
     [](Match& m) { m.strSpectrumName.clear(); }},
    {"no start_scan", " start_scan=\"7\"", "", [](Match& m) { m.nValue5 = 0; }},
    {"no precursor mass", " precursor_neutral_mass=\"1000.5\"", "",
     [](Match& m) {
         m.dObsMH = kProton;
         m.dValue1 = kProton;
     }},
    {"no charge", " assumed_charge=\"2\"", "",
     [](Match& m) {
         m.nCharge = 0;
         m.dValue1 = 0;
     }},
    {"no retention time", " retention_time_sec=\"61.5\"", "", [](Match& m) { m.dValue2 = 0; }},
    {"no peptide: the modification is outside of it", " peptide=\"PEPMIDEK\"", "",
     [](Match& m) {
         m.strSequence.clear();
         m.vMods.clear();
     }},
    {"no residue before", " peptide_prev_aa=\"K\"", "",
     [](Match& m) { m.vEvidences[0].cBefore = 'X'; }},
    {"no residue behind", " peptide_next_aa=\"R\"", "",
     [](Match& m) { m.vEvidences[0].cAfter = 'X'; }},
    {"no protein", " protein=\"sp|P1|A\"", "",
     [](Match& m) { m.vEvidences[0].strProteinAccession.clear(); }},
    {"no mass difference", " massdiff=\"0.25\"", "", [](Match& m) { m.dMassShift = 0; }},
    {"no position", " position=\"4\"", "", NoMods},
    {"no value of the score", " value=\"12.5\"", "", [](Match& m) { m.dMainScore = 0; }},
    {"the name of the third score", " name=\"spscore\"", "", Nothing},
    {"the name of the run's file type", " raw_data=\".mzML\"", "", Nothing},
    {"the rank", " hit_rank=\"1\"", " hit_rank=\"9\"", Nothing},

    // Elements that are missing
    {"no summary of the search", Piece(kPepXml, "<search_summary", "</search_summary>\n"), "",
     Nothing},
    {"no information on modifications",
     Piece(kPepXml, "<modification_info", "</modification_info>\n"), "", NoMods},
    {"no modified residue", Piece(kPepXml, "<mod_aminoacid_mass", "/>\n"), "", NoMods},
    {"two scores", Piece(kPepXml, "<search_score name=\"spscore\"", "</search_hit>"),
     "</search_hit>", [](Match& m) { m.dMainScore = 0; }},
    {"another third score", Piece(kPepXml, "<search_score name=\"spscore\"", "/>\n"), "",
     [](Match& m) { m.dMainScore = 0.0015; }},

    // Numbers
    {"numbers with something behind them", "precursor_neutral_mass=\"1000.5\"",
     "precursor_neutral_mass=\" 1000.5 Da\"", Nothing},
    {"no number", "precursor_neutral_mass=\"1000.5\"", "precursor_neutral_mass=\"heavy\"",
     [](Match& m) {
         m.dObsMH = kProton;
         m.dValue1 = kProton;
     }},
    {"a negative charge", "assumed_charge=\"2\"", "assumed_charge=\"-2\"",
     [](Match& m) {
         m.nCharge = static_cast<std::uint64_t>(-2);
         m.dValue1 = 0;
     }},
    {"a charge beyond all numbers", "assumed_charge=\"2\"", "assumed_charge=\"99999999999999\"",
     [](Match& m) {
         m.nCharge = 2147483647;
         m.dValue1 = (m.dObsMH + 2147483646.0 * kProton) / 2147483647.0;
     }},
    {"a mass difference with its sign", "massdiff=\"0.25\"", "massdiff=\"-17.5\"",
     [](Match& m) { m.dMassShift = -17.5; }},

    // Texts
    {"a spectrum is cut at its first blank", "run01.00007.00007.2 extra", "run01 7 2",
     [](Match& m) { m.strSpectrumName = "run01"; }},
    {"a blank in front leaves nothing", "run01.00007.00007.2 extra", " run01",
     [](Match& m) { m.strSpectrumName.clear(); }},
    {"a tab is no blank", "run01.00007.00007.2 extra", "run01\t7",
     [](Match& m) { m.strSpectrumName = "run01\t7"; }},
    {"residues around are first characters", "peptide_prev_aa=\"K\"", "peptide_prev_aa=\"-KR\"",
     [](Match& m) { m.vEvidences[0].cBefore = '-'; }},
    {"empty ones are unknown", "peptide_next_aa=\"R\"", "peptide_next_aa=\"\"",
     [](Match& m) { m.vEvidences[0].cAfter = 'X'; }},
    {"two entities of a protein are resolved", "protein=\"sp|P1|A\"",
     "protein=\"a&apos;b&gt;c&apos;&gt;\"",
     [](Match& m) { m.vEvidences[0].strProteinAccession = "a'b>c'>"; }},
    {"the others stay", "protein=\"sp|P1|A\"", "protein=\"a&lt;b&amp;c&quot;&amp;gt;\"",
     [](Match& m) { m.vEvidences[0].strProteinAccession = "a&lt;b&amp;c&quot;&amp;gt;"; }},
    {"blanks of a protein stay", "protein=\"sp|P1|A\"", "protein=\" sp|P1|A  x \"",
     [](Match& m) { m.vEvidences[0].strProteinAccession = " sp|P1|A  x "; }},
    {"entities of a dataset stay", "\"data/run01\" raw_data_type",
     "\"data\\R&amp;D &gt;\" raw_data_type",
     [](Match& m) { m.strDatasetName = "data\\R&amp;D &gt;.mgf"; }},
    {"of two attributes with one name the last counts", "assumed_charge=\"2\"",
     "assumed_charge=\"5\" assumed_charge=\"2\"", Nothing},

    // Positions
    {"a position in front of the peptide", "position=\"4\"", "position=\"0\"", NoMods},
    {"a negative one", "position=\"4\"", "position=\"-4\"", NoMods},
    {"one behind the peptide", "position=\"4\"", "position=\"9\"", NoMods},
    {"one beyond all numbers", "position=\"4\"", "position=\"4294967300\"", NoMods},
    {"one that is none", "position=\"4\"", "position=\"M\"", NoMods},

    // Order
    {"attributes in another order", "position=\"4\" mass=\"147.0354\"",
     "mass=\"147.0354\"\n  position = \"4\" ", Nothing},
    {"two modifications of one residue", "<mod_aminoacid_mass position=\"4\" mass=\"147.0354\"/>",
     "<mod_aminoacid_mass position=\"4\" mass=\"163.0303\"/>",
     [](Match& m) { m.vMods.push_back(m.vMods[0]); }},
    {"modifications keep the order of the file",
     "<mod_aminoacid_mass position=\"4\" mass=\"147.0354\"/>",
     "<mod_aminoacid_mass position=\"8\" mass=\"135.095\"></mod_aminoacid_mass>\n"
     "<mod_aminoacid_mass position=\"4\" mass=\"147.0354\"/>",
     [](Match& m) {
         m.vMods.insert(m.vMods.begin(), {"Ring", 7.0, "K", "Anywhere", 8});
     }},
    {"modifications behind the scores are read",
     Piece(kPepXml, "</modification_info>", "name=\"xcorr\" value=\"2.5\"/>\n"),
     "</modification_info><search_score name=\"xcorr\" value=\"2.5\"/>", Nothing},
};

TEST_F(PepXmlReading, OneChangeChangesWhatItShould)
{
    for (const Change& row : kChanges) {
        SCOPED_TRACE(row.reason);
        Match expected = PepXmlMatch();
        row.change(expected);
        EXPECT_EQ(TextsOf(Changed(kPepXml, row.from, row.to)), Texts{FullText(expected)});
    }
}

struct Without {
    const char* reason;
    std::string from;
    std::string to;
};

const Without kWithout[] = {
    {"a query without a hit", Piece(kPepXml, "<search_hit", "</search_hit>\n"), ""},
    {"a query without a result", Piece(kPepXml, "<search_result>", "</search_result>\n"), ""},
    {"a run without a query", Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n"), ""},
    {"no run", Piece(kPepXml, "<msms_run_summary", "</msms_run_summary>\n"), ""},
    {"a hit beside the result", "<search_result>", "<search_result/>"},
    {"other names", "<msms_run_summary ", "<msms_run "},
};

TEST_F(PepXmlReading, WithoutOneOfItsElementsThereIsNoMatch)
{
    for (const Without& row : kWithout) {
        SCOPED_TRACE(row.reason);
        std::string text = Changed(kPepXml, row.from, row.to);
        if (row.to == "<search_result/>") {
            text = Changed(text, "</search_result>\n", "");
        }
        if (row.to == "<msms_run ") {
            text = Changed(text, "</msms_run_summary>", "</msms_run>");
        }
        EXPECT_EQ(TextsOf(text), Texts());
    }
}

TEST_F(PepXmlReading, TheRootMayHaveAnyName)
{
    std::string text = Changed(kPepXml, "<msms_pipeline_analysis", "<pep:all");
    text = Changed(text, "</msms_pipeline_analysis", "</pep:all");
    EXPECT_EQ(TextsOf(text), TextsOf(kPepXml));
}

TEST_F(PepXmlReading, OfTwoRootsTheFirstIsRead)
{
    EXPECT_EQ(TextsOf("<empty/>" + kPepXml), Texts());
    EXPECT_EQ(TextsOf(kPepXml + kPepXml), TextsOf(kPepXml));
}

// Elements of the same names elsewhere.
TEST_F(PepXmlReading, OnlyTheWayFromTheRootIsRead)
{
    const std::string query = Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n");
    EXPECT_EQ(TextsOf("<root>" + query + "</root>"), Texts());
    EXPECT_EQ(TextsOf("<root><other>" + kPepXml + "</other></root>"), Texts());
    const std::string score = "<other><search_score name=\"x\" value=\"9\"/></other>";
    EXPECT_EQ(TextsOf(Changed(kPepXml, "</modification_info>", "</modification_info>" + score)),
              TextsOf(kPepXml));
    const std::string mod = "<mod_aminoacid_mass position=\"1\" mass=\"1\"/>";
    EXPECT_EQ(TextsOf(Changed(kPepXml, "</modification_info>", "</modification_info>" + mod)),
              TextsOf(kPepXml));
    EXPECT_EQ(TextsOf(Changed(kPepXml, "</search_summary>", mod + score + "</search_summary>")),
              TextsOf(kPepXml));
}

// ---- First ones -------------------------------------------------------------

std::string Renamed(std::string text, const std::string& name)
{
    return Changed(std::move(text), "run01.00007.00007.2", name);
}

TEST_F(PepXmlReading, EachQueryMakesAMatchInItsOrder)
{
    const std::string query = Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n");
    std::string all;
    Texts expected;
    for (int i = 0; i < 40; ++i) {
        all += Renamed(query, "scan" + std::to_string(i));
        Match match = PepXmlMatch();
        match.strSpectrumName = "scan" + std::to_string(i);
        expected.push_back(FullText(match));
    }
    EXPECT_EQ(TextsOf(Changed(kPepXml, query, all)), expected);
}

TEST_F(PepXmlReading, QueriesWithoutAHitAreLeftOut)
{
    const std::string query = Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n");
    const std::string empty = Changed(query, Piece(query, "<search_hit", "</search_hit>\n"), "");
    EXPECT_EQ(TextsOf(Changed(kPepXml, query, empty + query + empty)), TextsOf(kPepXml));
}

// Nothing of one query is seen in the next.
TEST_F(PepXmlReading, EachMatchIsAFreshOne)
{
    const std::string query = Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n");
    const std::string bare = "<spectrum_query><search_result><search_hit/>"
                             "</search_result></spectrum_query>";
    Match match;
    match.strDatasetName = "data/run01.mgf";
    match.dObsMH = kProton;
    match.vEvidences.emplace_back();
    EXPECT_EQ(TextsOf(Changed(kPepXml, query, query + bare)),
              (Texts{FullText(PepXmlMatch()), FullText(match)}));
}

TEST_F(PepXmlReading, B52_OnlyTheFirstRunIsRead)
{
    const std::string run = Piece(kPepXml, "<msms_run_summary", "</msms_run_summary>\n");
    EXPECT_EQ(TextsOf(Changed(kPepXml, run, run + Renamed(run, "second"))), TextsOf(kPepXml));
    EXPECT_EQ(TextsOf(Changed(kPepXml, run, "<msms_run_summary/>" + run)), Texts());
}

TEST_F(PepXmlReading, B52_OnlyTheFirstResultAndTheFirstHitAreRead)
{
    const std::string result = Piece(kPepXml, "<search_result>", "</search_result>\n");
    const std::string hit = Piece(kPepXml, "<search_hit", "</search_hit>\n");
    const std::string other = Changed(Changed(hit, "PEPMIDEK", "OTHERMK"), "12.5", "99");
    EXPECT_EQ(TextsOf(Changed(kPepXml, hit, hit + other)), TextsOf(kPepXml));
    EXPECT_EQ(TextsOf(Changed(kPepXml, result, result + Changed(result, hit, other))),
              TextsOf(kPepXml));
    EXPECT_EQ(TextsOf(Changed(kPepXml, result, "<search_result/>" + result)), Texts());
}

TEST_F(PepXmlReading, B52_OnlyTheFirstProteinIsRead)
{
    const std::string more = "<alternative_protein protein=\"sp|P2|B\" peptide_prev_aa=\"A\"/>";
    EXPECT_EQ(TextsOf(Changed(kPepXml, "<modification_info", more + "<modification_info")),
              TextsOf(kPepXml));
}

TEST_F(PepXmlReading, OnlyTheFirstInformationOnModificationsIsRead)
{
    const std::string info = Piece(kPepXml, "<modification_info", "</modification_info>\n");
    EXPECT_EQ(TextsOf(Changed(kPepXml, info, info + info)), TextsOf(kPepXml));
    Match match = PepXmlMatch();
    match.vMods.clear();
    EXPECT_EQ(TextsOf(Changed(kPepXml, info, "<modification_info/>" + info)),
              Texts{FullText(match)});
}

// ---- Scores -------------------------------------------------------------------

TEST_F(PepXmlReading, B57_TheThirdScoreWhateverItsName)
{
    std::string scores;
    for (const char* const name : {"a", "expect", "b", "third", "expect"}) {
        scores += "<search_score name=\"" + std::string(name) + "\" value=\""
                  + std::to_string(scores.size()) + "\"/>";
    }
    const std::string all = Piece(kPepXml, "<search_score name=\"xcorr\"", "</search_hit>");
    const std::string text = Changed(kPepXml, all, scores + "</search_hit>");
    const Reading msFragger = ReadText(text);
    ASSERT_EQ(msFragger.matches.size(), 1U);
    const std::size_t first = std::string("<search_score name=\"a\" value=\"0\"/>").size();
    const std::size_t second = std::string("<search_score name=\"expect\" value=\"34\"/>").size();
    EXPECT_EQ(msFragger.matches[0].dMainScore, static_cast<double>(first + second));
    EXPECT_FALSE(msFragger.matches[0].bHighScoreBetter);
}

TEST_F(PepXmlReading, CometWithoutExpectHasNoScore)
{
    Match match = PepXmlMatch();
    match.dMainScore = 0;
    EXPECT_EQ(TextsOf<CometPepXMLPepIdentIO>(Changed(kPepXml, "\"expect\"", "\"EXPECT\"")),
              Texts{FullText(match)});
    const std::string all = Piece(kPepXml, "<search_score name=\"xcorr\"", "</search_hit>");
    const std::string none = Changed(kPepXml, all, "</search_hit>");
    EXPECT_EQ(TextsOf<CometPepXMLPepIdentIO>(none), Texts{FullText(match)});
    EXPECT_EQ(TextsOf(none), Texts{FullText(match)});
}

TEST_F(PepXmlReading, OfSeveralScoresNamedExpectTheFirstCounts)
{
    const std::string expect = Piece(kPepXml, "<search_score name=\"expect\"", "/>\n");
    const std::string more = "<search_score name=\"expect\" value=\"9\"/>\n";
    Match match = PepXmlMatch();
    match.dMainScore = 0.0015;
    EXPECT_EQ(TextsOf<CometPepXMLPepIdentIO>(Changed(kPepXml, expect, expect + more + more)),
              Texts{FullText(match)});
    const std::string zero = Changed(expect, "1.5e-3", "0");
    match.dMainScore = 0;
    EXPECT_EQ(TextsOf<CometPepXMLPepIdentIO>(Changed(kPepXml, expect, zero + more)),
              Texts{FullText(match)});
}

TEST_F(PepXmlReading, EachHitHasItsOwnExpect)
{
    const std::string query = Piece(kPepXml, "<spectrum_query", "</spectrum_query>\n");
    const std::string text = Changed(kPepXml, query, query + Changed(query, "1.5e-3", "2.5"));
    const Reading reading = ReadText<CometPepXMLPepIdentIO>(text);
    ASSERT_EQ(reading.matches.size(), 2U);
    EXPECT_EQ(reading.matches[0].dMainScore, 0.0015);
    EXPECT_EQ(reading.matches[1].dMainScore, 2.5);
}

// ---- Datasets -------------------------------------------------------------------

TEST_F(PepXmlReading, DatasetsEndAsTheParametersSay)
{
    for (const char* const format : {"mgf", "mzML", "mzXML", "dta"}) {
        ASSERT_EQ(Read(FullParameters().Set("Search", "dataset_format", format)), Thrown{});
        const Reading reading = ReadText(kPepXml);
        ASSERT_EQ(reading.matches.size(), 1U);
        EXPECT_EQ(reading.matches[0].strDatasetName, std::string("data/run01.") + format);
    }
}

TEST_F(PepXmlReading, OneReaderAsksTheParametersAtEachLoad)
{
    results_.Write("r.pepXML", kPepXml);
    MSFraggerPepXMLPepIdentIO reader;
    std::vector<Match> matches;
    reader.InitLoad({results_.Path(), "r.pepXML", PepIdentType::Unknown});
    reader.Load(matches);
    ASSERT_EQ(Read(FullParameters().Set("Search", "dataset_format", "mzML")), Thrown{});
    reader.Load(matches);
    ASSERT_EQ(matches.size(), 2U);
    EXPECT_EQ(matches[0].strDatasetName, "data/run01.mgf");
    EXPECT_EQ(matches[1].strDatasetName, "data/run01.mzML");
    ASSERT_EQ(Read(FullParameters().SetMods("var_mod", {"Ring (K)"})), Thrown{});
    EXPECT_EQ(ThrownBy([&] { reader.Load(matches); }).name, "ElementNotFound")
        << "the oxidation is no longer specified";
}

TEST_F(PepXmlReading, WithoutParametersDatasetsEndUnknown)
{
    ThrownBy([] { CTulkParam::readFromFile("missing.ini"); });
    ASSERT_EQ(CTulkParam::getInstance()->getSearchParam(), nullptr);
    Match match = PepXmlMatch();
    match.strDatasetName = "data/run01.unknown";
    match.vMods.clear();
    const std::string info = Piece(kPepXml, "<modification_info", "</modification_info>\n");
    EXPECT_EQ(TextsOf(Changed(kPepXml, info, "")), Texts{FullText(match)});
}

// ---- Spectra ----------------------------------------------------------------------

struct Meeting {
    const char* reason;
    const char* spectrum; ///< of the pepXML file
    const char* title;    ///< of the MGF file
    bool meets;
};

const Meeting kMeetings[] = {
    {"zeros in the file", "r.01405.01405.2", "r.1405.1405.2 File:\"r.raw\"", true},
    {"zeros in both", "r.01405.01405.2", "r.01405.01405.2", true},
    {"zeros in none", "r.1405.1405.2", "r.1405.1405.2 File:\"r.raw\"", true},
    {"zeros in the title", "r.1405.1405.2", "r.01405.01405.2 File:\"r.raw\"", false},
    {"another charge", "r.01405.01405.3", "r.1405.1405.2 File:\"r.raw\"", false},
    {"another case", "R.01405.01405.2", "r.1405.1405.2 File:\"r.raw\"", false},
    {"the form of pParse", "r.01405.01405.2", "r.1405.1405.2.0.dta", false},
    {"a native id", "r.01405.01405.2", "controllerType=0 controllerNumber=1 scan=1405", false},
    {"a compound", "r.01405.01405.2", "Cmpd 1405, +MSn(500.2), 31.0 min", false},
};

TEST_F(PepXmlReading, MatchesMeetTheTitlesOfAnMgfOrNot)
{
    for (const Meeting& row : kMeetings) {
        const Reading reading =
            ReadText(Changed(kPepXml, "run01.00007.00007.2 extra", row.spectrum));
        ASSERT_EQ(reading.matches.size(), 1U);
        MgfIO spectra;
        spectra.InitLoad(results_.Write("r.mgf", "BEGIN IONS\nTITLE=" + std::string(row.title)
                                                     + "\nPEPMASS=500.2\n100 1\nEND IONS\n"));
        std::vector<Spectrum> found;
        const CoutInMemory output;
        EXPECT_EQ(spectra.bLoadOneSpectrum(reading.matches[0].strSpectrumName, found), row.meets)
            << row.reason;
    }
}

} // namespace
} // namespace Vorlan::test
