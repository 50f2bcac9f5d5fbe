// The text result of pFind 2.8, read from files.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "param/ParameterText.h"
#include "pepident/EngineTableText.h"
#include "pepident/PFind28Section.h"
#include "util/LineReader.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Lines = std::vector<std::string>;

const Lines kHead = {"[Meta]", "Enzyme_List=x", "[Search]", "InputPath=C:\\data\\run01.mgf",
                     "Database=1,test"};

/// A section with one candidate, its lines at the places that count.
const Lines kSection = {"[Spectrum1]",
                        "Input=run01.1405.1405.2.dta",
                        "Charge=2",
                        "Intensity=0.0",
                        "MH=603.28",
                        "MZ=302.14",
                        "Candidate_Total=20",
                        "ValidCandidate=2",
                        "NO1_Score=5.5",
                        "NO1_EValue=1.5e-005",
                        "NO1_MH=603.27",
                        "NO1_Matched_Peaks=7",
                        "NO1_Matched_Intensity=0.5",
                        "NO1_SQ=PEPMK",
                        "NO1_Unknown=1",
                        "NO1_Proteins=2,P1,P2",
                        "NO1_ProteinIDs=2,1,2",
                        "NO1_PrevNextAA=2,KA,-R",
                        "NO1_ProStartPos=2,7,0",
                        "NO1_Modify_Pos=2,1,4",
                        "NO1_Modify_Name=2,Acetyl (N-term),Mark (M)"};

const Lines kEmptySection = {
    "[Spectrum2]", "Input=run01.1406.1406.3.dta", "Charge=3",        "Intensity=0", "MH=700.5",
    "MZ=234.2",    "Candidate_Total=0",           "ValidCandidate=0"};

Lines operator+(Lines lines, const Lines& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

/// The section with the line that begins with key changed.
Lines With(const std::string& key, const std::string& line)
{
    Lines lines = kSection;
    *std::find_if(lines.begin(), lines.end(),
                  [&key](const std::string& text) { return text.rfind(key, 0) == 0; }) = line;
    return lines;
}

/// The section without the lines that begin with keys.
Lines Without(const Lines& keys)
{
    Lines lines = kSection;
    for (const std::string& key : keys) {
        lines.erase(std::find_if(lines.begin(), lines.end(), [&key](const std::string& text) {
            return text.rfind(key, 0) == 0;
        }));
    }
    return lines;
}

std::string TextOf(const Lines& lines, const std::string& lineEnd = "\n")
{
    std::string text;
    for (const std::string& line : lines) {
        text += line + lineEnd;
    }
    return text;
}

std::vector<PeptideIdentification> MatchesOf(const std::string& text)
{
    const Reading reading = ReadEngineText<PfindTXTPepIdentIO>({text});
    EXPECT_EQ(reading.thrown, Thrown());
    EXPECT_EQ(reading.output, "") << "this reader tells nothing";
    return reading.matches;
}

std::string MatchOf(const Lines& section)
{
    const auto matches = MatchesOf(TextOf(kHead + section));
    return matches.size() == 1 ? FullDump(matches[0]) : std::to_string(matches.size()) + " matches";
}

/// Its modifications.
const std::string kMods = "|Acetyl (Any N-term)@1 on Any N-term Any N-term +0.000000|"
                          "Mark (M)@4 on M Anywhere +0.000000";

const std::string kMatch = "run01.mgf|run01.1405.1405.2.dta|PEPMK|2+|603.280000|shift 0.01|"
                           "score 1.5e-05 low|mz 302.143638|scan 0"
                           + kMods + "|K.P1.A@7|-.P2.R@0";

TEST(PFind28Reading, AWholeSection)
{
    EXPECT_EQ(MatchOf(kSection), kMatch);
}

TEST(PFind28Reading, EverySectionWithACandidateGivesAMatch)
{
    const auto matches =
        MatchesOf(TextOf(kHead + kSection + kEmptySection + kSection + Lines{"[Total]", "Spectra=3"}
                         + kEmptySection + kEmptySection + kSection));
    ASSERT_EQ(matches.size(), 3u);
    for (const PeptideIdentification& match : matches) {
        EXPECT_EQ(FullDump(match), kMatch);
    }
}

TEST(PFind28Reading, NineCharactersBeginASection)
{
    const auto countOf = [](const std::string& line) {
        return MatchesOf(TextOf(kHead + With("[Spectrum", line))).size();
    };
    for (const char* const line : {"[Spectrum", "[Spectrumx and more", "[Spectrum1]=5"}) {
        EXPECT_EQ(countOf(line), 1u) << line;
    }
    for (const char* const line : {" [Spectrum1]", "[Spectru]", "[spectrum1]", "Spectrum1"}) {
        EXPECT_EQ(countOf(line), 0u) << line;
    }
}

TEST(PFind28Reading, NoCandidatesNoMatch)
{
    EXPECT_EQ(MatchOf(kEmptySection), "0 matches");
    EXPECT_EQ(MatchOf(With("ValidCandidate=", "ValidCandidate=-1")), "0 matches");
    EXPECT_EQ(MatchOf(With("ValidCandidate=", "ValidCandidate=x")), "0 matches");
}

TEST(PFind28Reading, OtherCandidatesAreNotRead)
{
    EXPECT_EQ(MatchOf(kSection + Lines{"NO2_Score=1", "NO2_SQ=OTHER", "NO1_SQ=MORE"}), kMatch);
}

TEST(PFind28Reading, NamesOfTermini)
{
    const std::vector<std::pair<std::string, std::string>> names = {
        {"Acetyl (N-term)", "Acetyl (Any N-term)@"},
        {"Amidated (C-term)", "Amidated (Any C-term)@"},
        {"Acetyl (Any N-term)", "Acetyl (Any N-term)@"},
        {"Acetyl (Protein N-term)", "Acetyl (Protein N-term)@"},
    };
    for (const auto& [name, read] : names) {
        EXPECT_THAT(MatchOf(With("NO1_Modify_Name=", "NO1_Modify_Name=1," + name)),
                    HasSubstr("|" + read));
    }
}

TEST(PFind28Reading, CountsOfZeroHaveNoLists)
{
    EXPECT_THAT(MatchOf(With("NO1_Modify_Pos=", "NO1_Modify_Pos=0")),
                testing::EndsWith("|scan 0|K.P1.A@7|-.P2.R@0"));
    Lines noProtein = Without({"NO1_ProteinIDs=", "NO1_PrevNextAA=", "NO1_ProStartPos="});
    std::replace(noProtein.begin(), noProtein.end(), std::string("NO1_Proteins=2,P1,P2"),
                 std::string("NO1_Proteins=0"));
    EXPECT_THAT(MatchOf(noProtein), testing::EndsWith("|Mark (M)@4 on M Anywhere +0.000000"));
}

TEST(PFind28Reading, ListsOfOtherLengthsThanTheirCounts)
{
    const std::string mods = "|scan 0" + kMods + "|";
    EXPECT_THAT(MatchOf(With("NO1_Proteins=", "NO1_Proteins=9,P1,P2,P3")),
                testing::EndsWith(mods + "K.P1.A@7|-.P2.R@0|X.P3.X@-1"));
    EXPECT_THAT(MatchOf(With("NO1_Proteins=", "NO1_Proteins=1")), testing::EndsWith("+0.000000"));
    EXPECT_THAT(MatchOf(With("NO1_PrevNextAA=", "NO1_PrevNextAA=2,K")),
                testing::EndsWith(mods + "K.P1.K@7|X.P2.X@0"));
    EXPECT_THAT(MatchOf(With("NO1_ProStartPos=", "NO1_ProStartPos=2,x")),
                testing::EndsWith(mods + "K.P1.A@0|-.P2.R@-1"));
    EXPECT_THAT(MatchOf(With("NO1_Modify_Pos=", "NO1_Modify_Pos=1,3")),
                HasSubstr("|Acetyl (Any N-term)@3 on Any N-term Any N-term +0.000000|"
                          "Mark (M)@0 on M"));
}

// ---- Numbers and what stands behind them ----------------------------------

struct ListCase {
    std::string reason;
    std::string key;
    std::string value;
    std::string rest; ///< modifications and proteins of the match
};

TEST(PFind28Reading, AListStandsBehindTheCommaOfItsNumber)
{
    const std::string proteins = "|K.P1.A@7|-.P2.R@0";
    const std::vector<ListCase> cases = {
        {"a sign", "NO1_Proteins=", "+2,P1,P2", kMods + proteins},
        {"a number of many digits", "NO1_Proteins=", "0012,P1,P2", kMods + proteins},
        {"a blank behind the number", "NO1_Proteins=", "1 ,P1", kMods},
        {"a letter", "NO1_Proteins=", "1x,P1", kMods},
        {"a fraction", "NO1_Proteins=", "1.0,P1", kMods},
        {"residues without a number", "NO1_PrevNextAA=", ",KA,-R", kMods + "|X.P1.X@7|X.P2.X@0"},
        {"a sign alone", "NO1_PrevNextAA=", "-,KA,-R", kMods + "|X.P1.X@7|X.P2.X@0"},
        {"a blank, for residues", "NO1_PrevNextAA=", "2 ,KA,-R", kMods + "|X.P1.X@7|X.P2.X@0"},
        {"a letter, for starts", "NO1_ProStartPos=", "2x,7,0", kMods + "|K.P1.A@-1|-.P2.R@-1"},
        {"a blank, for names", "NO1_Modify_Name=", "2 ,Acetyl (N-term),Mark (M)", proteins},
    };
    for (const ListCase& row : cases) {
        EXPECT_THAT(MatchOf(With(row.key, row.key + row.value)),
                    testing::EndsWith("|scan 0" + row.rest))
            << row.reason;
    }
}

TEST(PFind28Reading, BlanksInFrontOfAListArePassedOver)
{
    for (const char* const blanks : {" ", "\t", "\v", "\f", "\r", " \t "}) {
        for (const auto& [key, list] : std::vector<std::pair<std::string, std::string>>{
                 {"NO1_Proteins=", "P1,P2"},
                 {"NO1_PrevNextAA=", "KA,-R"},
                 {"NO1_ProStartPos=", "7,0"},
                 {"NO1_Modify_Pos=", "1,4"},
                 {"NO1_Modify_Name=", "Acetyl (N-term),Mark (M)"}}) {
            EXPECT_EQ(MatchOf(With(key, key + "2," + blanks + list)), kMatch) << key;
        }
    }
}

TEST(PFind28Reading, PositionsStandBehindTheFirstComma)
{
    for (const char* const number : {"2 ", "2x", "2.5", "2 of 3"}) {
        EXPECT_EQ(
            MatchOf(With("NO1_Modify_Pos=", std::string("NO1_Modify_Pos=") + number + ",1,4")),
            kMatch)
            << number;
    }
    EXPECT_THAT(MatchOf(With("NO1_Modify_Pos=", "NO1_Modify_Pos=2")),
                HasSubstr("|scan 0|Acetyl (Any N-term)@0 on Any N-term Any N-term +0.000000|"
                          "Mark (M)@0 on M"))
        << "no positions";
    EXPECT_THAT(MatchOf(With("NO1_Modify_Pos=", "NO1_Modify_Pos=,1,4")),
                testing::EndsWith("|scan 0|K.P1.A@7|-.P2.R@0"))
        << "no number, no modifications";
}

TEST(PFind28Reading, B64_ANumberThatBreaksOffHasNoValue)
{
    for (const char* const number : {"inf", "INF", "infinity"}) {
        EXPECT_THAT(MatchOf(With("MH=", std::string("MH=") + number)),
                    HasSubstr("|2+|inf|shift inf|"))
            << number;
    }
    for (const char* const number : {"infi", "infinit", "in", "-"}) {
        EXPECT_THAT(MatchOf(With("MH=", std::string("MH=") + number)),
                    HasSubstr("|2+|0.000000|shift -603.27|"))
            << number;
    }
    EXPECT_THAT(MatchOf(With("NO1_MH=", "NO1_MH=infi")), HasSubstr("|shift 603.28|"));
    EXPECT_THAT(MatchOf(With("NO1_EValue=", "NO1_EValue=infi")), HasSubstr("|score 0 low|"));
}

// ---- Places of lines ------------------------------------------------------

TEST(PFind28Reading, B64_LinesInBetweenAreNotLookedAt)
{
    for (const std::size_t place : {3u, 5u, 6u, 8u, 11u, 12u, 14u, 16u}) {
        for (const char* const line : {"", "x", "[Search]", "NO1_SQ=OTHER"}) {
            Lines section = kSection;
            section[place] = line;
            EXPECT_EQ(MatchOf(section), kMatch) << place << " " << line;
        }
    }
}

TEST(PFind28Reading, B64_ALineAtTheWrongPlaceHasNoValue)
{
    EXPECT_THAT(MatchOf(With("Input=", "input=x")), HasSubstr("run01.mgf||PEPMK|"));
    EXPECT_THAT(MatchOf(With("Charge=", " Charge=2")), HasSubstr("|0+|603.280000|"));
    EXPECT_THAT(MatchOf(With("MH=", "Mass=603.28")), HasSubstr("|2+|0.000000|shift -603.27|"));
    EXPECT_THAT(MatchOf(With("NO1_EValue=", "NO1_Value=1")), HasSubstr("|score 0 low|"));
    EXPECT_THAT(MatchOf(With("NO1_MH=", "NO1_Mass=603.27")), HasSubstr("|shift 603.28|"));
    EXPECT_EQ(MatchOf(With("ValidCandidate=", "Valid=1")), "0 matches");
    EXPECT_EQ(MatchOf(With("NO1_SQ=", "NO1_Seq=PEPMK")), "0 matches");
    EXPECT_THAT(MatchOf(With("NO1_Proteins=", "NO1_Protein=2,P1,P2")),
                testing::EndsWith("|PEPMK|2+|603.280000|shift 0.01|score 1.5e-05 low|"
                                  "mz 302.143638|scan 0"));
}

TEST(PFind28Reading, B64_AnotherOrderOfLinesGivesNoMatch)
{
    Lines section = kSection;
    std::reverse(section.begin() + 1, section.end());
    EXPECT_EQ(MatchOf(section), "0 matches");
    for (const char* const key : {"Intensity=", "MZ=", "NO1_Score=", "NO1_Matched_Peaks="}) {
        EXPECT_EQ(MatchOf(Without({key})), "0 matches") << key;
    }
}

TEST(PFind28Reading, B64_TheLineBehindSearchIsTheInputPath)
{
    const auto dataset = [](const Lines& head) {
        const auto matches = MatchesOf(TextOf(head + kSection));
        return matches.empty() ? "no match" : matches[0].strDatasetName;
    };
    EXPECT_EQ(dataset({"[Search]", "InputPath=run01.mgf"}), "run01.mgf");
    EXPECT_EQ(dataset({"[Search] and more", "InputPath=a\\b\\c"}), "c");
    EXPECT_EQ(dataset({"[Search]", "Database=x", "InputPath=a\\b"}), "");
    EXPECT_EQ(dataset({"[Search]"}), "no match") << "the section is taken for the path";
    EXPECT_EQ(dataset({" [Search]", "InputPath=a\\b"}), "no match");
    EXPECT_EQ(dataset({}), "no match");
    EXPECT_EQ(dataset({"[Search]", "InputPath=a", "[Search]", "InputPath=b"}), "a");
}

TEST(PFind28Reading, SpectrumFilesOfInputPaths)
{
    const std::vector<std::pair<std::string, std::string>> paths = {
        {"C:\\data\\run01.mgf", "run01.mgf"},
        {"C:\\data\\", "data"},
        {"C:\\data\\\\\\", "data"},
        {"run01.mgf", "run01.mgf"},
        {"/data/run01", "/data/run01"},
        {"\\", ""},
        {"", ""},
    };
    for (const auto& [path, file] : paths) {
        EXPECT_EQ(pfind::SpectrumFileOf(path), file) << path;
    }
}

TEST(PFind28Reading, ValuesOfLines)
{
    EXPECT_EQ(pfind::ValueOf("Charge=2", "Charge="), "2");
    EXPECT_EQ(pfind::ValueOf("Charge=", "Charge="), "");
    EXPECT_EQ(pfind::ValueOf("Charge", "Charge="), "");
    EXPECT_EQ(pfind::ValueOf("charge=2", "Charge="), "");
    EXPECT_EQ(pfind::ValueOf("", ""), "");
}

TEST(PFind28Reading, ASpectrumNameEndsAtItsFirstBlank)
{
    EXPECT_THAT(MatchOf(With("Input=", "Input=run01.1.1.2.dta of run 7")),
                HasSubstr("run01.mgf|run01.1.1.2.dta|PEPMK|"));
}

TEST(PFind28Reading, B90_ValuesEndAtTheirFirstBlank)
{
    for (const char* const blank : {" ", "\t", "\v", "\f", "\r"}) {
        const std::string more = std::string(blank) + "of run 7";
        EXPECT_EQ(MatchOf(With("Input=", "Input=" + (blank + kSection[1].substr(6)) + more)),
                  kMatch);
        EXPECT_EQ(MatchOf(With("NO1_SQ=", "NO1_SQ=PEPMK" + more)), kMatch);
        EXPECT_EQ(MatchOf(With("NO1_Proteins=", "NO1_Proteins=2,P1,P2" + more + ",P3")), kMatch);
        EXPECT_EQ(MatchOf(With("NO1_PrevNextAA=", "NO1_PrevNextAA=2,KA,-R" + more)), kMatch);
        EXPECT_EQ(MatchOf(With("NO1_ProStartPos=", "NO1_ProStartPos=2,7,0" + more)), kMatch);
        EXPECT_EQ(MatchOf(With("NO1_Modify_Pos=", "NO1_Modify_Pos=2,1,4" + more)), kMatch);
    }
    EXPECT_THAT(MatchOf(With("NO1_Proteins=", "NO1_Proteins=2, P1, P2")),
                testing::EndsWith("|K.P1.A@7|-..R@0"));
    EXPECT_EQ(pfind::WordOf("InputPath=C:\\my data\\run01.mgf", "InputPath="), "C:\\my");
    EXPECT_EQ(pfind::WordOf("Input=", "Input="), "");
    EXPECT_EQ(pfind::WordOf("Input= \t ", "Input="), "");
}

TEST(PFind28Reading, B90_TheInputPathEndsAtItsFirstBlank)
{
    const auto matches =
        MatchesOf(TextOf(Lines{"[Search]", "InputPath=C:\\my data\\run01.mgf"} + kSection));
    ASSERT_EQ(matches.size(), 1u);
    EXPECT_EQ(matches[0].strDatasetName, "my");
}

// ---- Texts that end too early, line ends ----------------------------------

TEST(PFind28Reading, ATextThatIsCutGivesTheSectionsBefore)
{
    const std::string text = TextOf(kHead + kSection + kSection);
    const std::size_t first = TextOf(kHead + kSection).size();
    for (std::size_t size = 0; size < text.size(); ++size) {
        const auto matches = MatchesOf(text.substr(0, size));
        ASSERT_LE(matches.size(), size <= first ? 1u : 2u) << size;
        if (size >= first) {
            ASSERT_GE(matches.size(), 1u) << size;
            EXPECT_EQ(FullDump(matches[0]), kMatch) << size;
        }
    }
}

TEST(PFind28Reading, CarriageReturnsDoNotMatter)
{
    const auto matches = MatchesOf(TextOf(kHead + kSection + kEmptySection + kSection, "\r\n"));
    ASSERT_EQ(matches.size(), 2u);
    EXPECT_EQ(FullDump(matches[0]), kMatch);
    EXPECT_EQ(FullDump(matches[1]), kMatch);
}

TEST(PFind28Reading, TextsWithoutSectionsGiveNothing)
{
    for (const std::string& text :
         {std::string(), std::string("\n"), TextOf(kHead), TextOf(kSection),
          TextOf(kHead) + "[Spectrum1]", std::string("[Search]\n[Spectrum1]\n[Spectrum2]\n"),
          Repeat("[Search]\n", 100), TextOf(kHead) + Repeat("[Spectrum1]\n", 100)}) {
        EXPECT_TRUE(MatchesOf(text).empty()) << text.substr(0, 40);
    }
}

TEST(PFind28Reading, ALineThatIsTooLongIsCutAndEndsTheReading)
{
    Lines section = kSection;
    section[15] = "NO1_Proteins=1," + Repeat("P", LineReader::kMaxLineLength - 15);
    EXPECT_EQ(MatchesOf(TextOf(kHead + section + kSection)).size(), 2u);
    section[15] += "P";
    const auto matches = MatchesOf(TextOf(kHead + section + kSection));
    ASSERT_EQ(matches.size(), 1u);
    ASSERT_EQ(matches[0].vEvidences.size(), 1u);
    EXPECT_EQ(matches[0].vEvidences[0].strProteinAccession.size(), LineReader::kMaxLineLength - 15);
    EXPECT_EQ(matches[0].vEvidences[0].nStart, -1) << "no line behind it is read";
    EXPECT_TRUE(matches[0].vMods.empty());
}

class PFind28Masses : public ParameterTest {};

TEST_F(PFind28Masses, AreLookedUpByName)
{
    const std::string text =
        TextOf(kHead + With("NO1_Modify_Name=", "NO1_Modify_Name=2,Cap (C-term),Oxidation (M)"));
    EXPECT_THAT(FullDump(ReadEngineText<PfindTXTPepIdentIO>({text}).matches.at(0).vMods),
                ElementsAre("Cap (Any C-term)@1 on Any C-term Any C-term +3.000000",
                            "Oxidation (M)@4 on M Anywhere +15.994915"));
}

} // namespace
} // namespace Vorlan::test
