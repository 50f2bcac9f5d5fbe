// Reading parameter files, questions and changes. Saving stands in a file of
// its own.
#include "InitFile.h"

#include "support/Exceptions.h"
#include "support/Fields.h"
#include "support/IniTwin.h"
#include "support/Random.h"
#include "support/Support.h"
#include "util/IniText.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::Loaded;
using test::Repeat;
using test::TempFolder;
using test::TextOf;
using test::Thrown;
using test::ThrownBy;

const char* const kEnd = " Invalid parameter format";

struct LoadCase {
    const char* reason;
    std::string text;
    std::string saved;        ///< the sections, as Save writes them
    std::string message = {}; ///< of the failure, behind which nothing was read
};

void Expect(const LoadCase& c, const std::string& symbols = "#")
{
    const Loaded loaded(c.text, symbols);
    const Thrown thrown = c.message.empty()
                              ? Thrown()
                              : Thrown{"InvalidParameter", "InitFile", "InitFile::Load", c.message};
    EXPECT_EQ(loaded.thrown, thrown) << c.reason;
    EXPECT_EQ(loaded.printed, "") << c.reason;
    EXPECT_EQ(TextOf(loaded.file), c.saved) << c.reason;
}

template <std::size_t size>
void Expect(const LoadCase (&cases)[size], const std::string& symbols = "#")
{
    for (const LoadCase& c : cases) {
        Expect(c, symbols);
    }
}

// ---- Loading ---------------------------------------------------------------

TEST(InitFile, CommentsAreCutOff)
{
    Expect({
        {"an empty file", "", ""},
        {"a line of comment", "# a = 1\n[S]\n", "[S]\n"},
        {"behind a pair", "[S]\na = 1 # note\n", "[S]\na=1\n"},
        {"behind a header", "[S] # note\n", "[S]\n"},
        {"inside of a value", "[S]\na=1#2#3\n", "[S]\na=1\n"},
        {"inside of a header", "[S]\n[T#]\n", "[S]\n", "2 \"[T#]\""s + kEnd},
        {"the equals sign in a comment", "[S]\na # =1\n", "[S]\n", "2 \"a # =1\""s + kEnd},
        {"nothing but a symbol", "#\n  #\n", ""},
        {"other symbols do not count", "[S]\na=1;2 // 3\n", "[S]\na=1;2 // 3\n"},
    });
}

TEST(InitFile, B25_OnlyTheFirstSymbolThatOccursCutsTheLine)
{
    Expect(
        {
            {"both, the second one first", "[S]\na=1;2#3\n", "[S]\na=1;2\n"},
            {"both, the first one first", "[S]\na=1#2;3\n", "[S]\na=1\n"},
            {"only the second one", "[S]\na=1;2;3\n", "[S]\na=1\n"},
            {"each line for itself", "[S] ; x\na=1 # y\n; z\n", "[S]\na=1\n"},
        },
        "#;");
    Expect({"in the order of the set", "[S]\na=1;2#3\nb=1#2;3\n", "[S]\na=1\nb=1#2\n"}, ";#");
}

TEST(InitFile, EveryCharacterOfTheSetIsASymbol)
{
    Expect({"no symbols, no comments", "[S#]\n#a=1#\n", "[S#]\n#a=1#\n"}, "");
    Expect({"two equal characters are one symbol", "[S]\na=1/2//3\n", "[S]\na=1\n"}, "//");
    Expect({"a bracket", "[S]\n", ""}, "[");
    Expect({"an equals sign", "[S]\na=1\n", "[S]\n", "2 \"a=1\""s + kEnd}, "=");
}

TEST(InitFile, HeadersOpenSections)
{
    Expect({
        {"one", "[S]\na=1\n", "[S]\na=1\n"},
        {"without pairs", "[S]\n[T]\n", "[S]\n[T]\n"},
        {"in the order first met", "[T]\n[S]\n[T]\n", "[T]\n[S]\n"},
        {"one that is repeated is continued", "[S]\na=1\n[T]\na=2\n[S]\na=3\nb=4\n",
         "[S]\na=3\nb=4\n[T]\na=2\n"},
        {"blanks around it and inside", " \t[ a b\t] \na=1\n[a b]\nb=2\n", "[a b]\na=1\nb=2\n"},
        {"an empty name", "[]\na=1\n[ ]\nb=2\n", "[]\na=1\nb=2\n"},
        {"an equals sign", "[a=b]\n", "[a=b]\n"},
        {"two equals signs", "[a] = [b=c]\n", "[a] = [b=c]\n"},
        {"brackets", "[[a]]\n[]]\n[[]\n", "[[a]]\n[]]\n[[]\n"},
        {"case matters", "[s]\n[S]\n", "[s]\n[S]\n"},
    });
}

TEST(InitFile, LineThatIsNoWholeHeaderIsAPairOrAFailure)
{
    Expect({
        {"an open bracket alone", "[S]\n[\n", "[S]\n", "2 \"[\""s + kEnd},
        {"a closing one alone", "[S]\n]\n", "[S]\n", "2 \"]\""s + kEnd},
        {"not closed", "[S]\n[T\n", "[S]\n", "2 \"[T\""s + kEnd},
        {"not opened", "T]\n", "", "1 \"T]\""s + kEnd},
        {"something behind it", "[S]\n[T]x\n", "[S]\n", "2 \"[T]x\""s + kEnd},
        {"a pair with brackets", "[S]\n[a]=1\nb=[2]\n", "[S]\n[a]=1\nb=[2]\n"},
    });
}

TEST(InitFile, PairsGoIntoTheirSection)
{
    Expect({
        {"blanks around key and value", "[S]\n \ta b \t=\t c d \r\n", "[S]\na b=c d\n"},
        {"an empty value", "[S]\na=\nb = # none\n", "[S]\na=\nb=\n"},
        {"an empty key", "[S]\n=1\n", "[S]\n=1\n"},
        {"both empty", "[S]\n = \n", "[S]\n=\n"},
        {"the last value of a key wins", "[S]\na=1\na = 2\na=3\n", "[S]\na=3\n"},
        {"an empty value wins, too", "[S]\na=1\na=\n", "[S]\na=\n"},
        {"keys in the order of their bytes", "[S]\nb=1\nB=2\na=3\n\xE4=4\n",
         "[S]\nB=2\na=3\nb=1\n\xE4=4\n"},
        {"quotes are ordinary", "[S]\na=\" 1 \"\n", "[S]\na=\" 1 \"\n"},
        {"the last line without an end", "[S]\na=1", "[S]\na=1\n"},
        {"other blanks stay", "[S]\n\va=1\f\n", "[S]\n\va=1\f\n"},
    });
}

TEST(InitFile, LineThatIsNoPairEndsTheReading)
{
    Expect({
        {"no equals sign", "[S]\na=1\nword\nb=2\n", "[S]\na=1\n", "3 \"word\""s + kEnd},
        {"two equals signs", "[S]\nx=1=2\n", "[S]\n", "2 \"x=1=2\""s + kEnd},
        {"two in a row", "[S]\nx==\n", "[S]\n", "2 \"x==\""s + kEnd},
        {"the second one in a comment", "[S]\nx=1 # =\n", "[S]\nx=1\n"},
        {"the line as it stands", "[S]\n\n  x \t# note \n", "[S]\n", "3 \"  x \t# note \""s + kEnd},
        {"lines of comment count", "#\n\n#\nx\n", "", "4 \"x\""s + kEnd},
        {"a pair before any header", "# note\na=1\n[S]\n", "", "2 \"a=1\""s + kEnd},
    });
}

TEST(InitFile, FilesAreReadInTextMode)
{
    Expect({
        {"a carriage return before a line feed", "[S]\r\na=1\r\n", "[S]\na=1\n"},
        {"it is no part of the message", "x\r\n", "", "1 \"x\""s + kEnd},
        {"one inside of a value stays", "[S]\na=1\r2\n", "[S]\na=1\r2\n"},
        {"a byte order mark", "\xEF\xBB\xBF[S]\na=1\n", "[S]\na=1\n"},
        {"one elsewhere stays",
         "[S]\n\xEF\xBB\xBF"
         "a=1\n",
         "[S]\n\xEF\xBB\xBF"
         "a=1\n"},
        {"a line ends at its NUL", "[S]\na=1\0=2\nb\0"s + "=1\n", "[S]\na=1\n", "3 \"b\""s + kEnd},
    });
}

TEST(InitFile, LineThatIsTooLongIsReadToTheLimitAndEndsTheReading)
{
    constexpr std::size_t kLimit = 81919;
    const std::string longest = "a=" + Repeat("x", kLimit - 2);
    Expect({
        {"the longest line", "[S]\n" + longest + "\nb=1\n", "[S]\n" + longest + "\nb=1\n"},
        {"with a carriage return", "[S]\n" + longest + "\r\nb=1\n", "[S]\n" + longest + "\nb=1\n"},
        {"one character more", "[S]\n" + longest + "y\nb=1\n", "[S]\n" + longest + "\n"},
        {"a comment that is too long", "[S]\na=1 #" + Repeat("x", kLimit) + "\nb=1\n",
         "[S]\na=1\n"},
        {"blanks that are too many", "[S]\n" + Repeat(" ", kLimit) + "a=1\nb=1\n", "[S]\n"},
        {"no pair as far as it was read", "[S]\n" + Repeat("x", kLimit) + "=1\n", "[S]\n",
         "2 \"" + Repeat("x", kLimit) + "\"" + kEnd},
    });
}

TEST(InitFile, FileThatCannotBeOpenedIsToldAndThrown)
{
    const TempFolder folder;
    for (const std::string& path :
         {folder.PathOf("missing.ini"), folder.Path(), folder.Path() + "\\missing.ini", ""s}) {
        InitFile file;
        Thrown thrown;
        const std::string printed =
            test::OutputOf([&] { thrown = ThrownBy([&] { file.Load(path); }); });
        EXPECT_EQ(thrown, (Thrown{"FileNotFound", "InitFile", "InitFile::Load",
                                  "the file '" + path + "' could not be found"}));
        EXPECT_EQ(printed, "Error when reading \"" + path + "\".\n");
    }
}

TEST(InitFile, EveryLoadForgetsTheSectionsBefore)
{
    const TempFolder folder;
    InitFile file;
    file.Load(folder.Write("first.ini", "[S]\na=1\n[T]\n"));
    file.Load(folder.Write("second.ini", "[T]\nb=2\n"));
    EXPECT_EQ(TextOf(file), "[T]\nb=2\n");
    EXPECT_EQ(ThrownBy([&] { file.Load(folder.Write("third.ini", "a=1\n")); }).message,
              "1 \"a=1\""s + kEnd)
        << "no section is open any more";
    file.Load(folder.PathOf("second.ini"));
    test::OutputOf([&] { ThrownBy([&] { file.Load(folder.PathOf("missing.ini")); }); });
    EXPECT_EQ(TextOf(file), "");
}

TEST(InitFile, ComposedPathsAreResolved)
{
    const TempFolder folder;
    folder.Write("run.ini", "[S]\n");
    InitFile file;
    file.Load(folder.Path() + "\\run.ini");
    EXPECT_EQ(TextOf(file), "[S]\n");
}

TEST(InitFile, SectionsAgreeWithThePlainReader)
{
    const TempFolder folder;
    test::Random random(1);
    int failed = 0;
    for (int i = 0; i < 4000; ++i) {
        const std::string symbols = random.Text("#;/=[", random.Below(3));
        const std::string text = test::RandomIni(random);
        test::IniTwin twin(symbols);
        twin.Load(text);
        const Loaded loaded(folder, text, symbols);
        ASSERT_EQ(loaded.thrown.message, twin.Message()) << text;
        ASSERT_EQ(TextOf(loaded.file), test::TwinText(twin.Sections())) << text;
        failed += twin.Message().empty() ? 0 : 1;
    }
    EXPECT_GE(failed, 500);
    EXPECT_LE(failed, 3500);
}

// ---- Questions and changes -------------------------------------------------

TEST(InitFile, GetGivesTheValueOrNothing)
{
    const Loaded loaded("[S]\na = 1 # note\nb=\n[T]\n");
    EXPECT_EQ(loaded.file.Get("S", "a"), "1");
    EXPECT_EQ(loaded.file.Get("S", "b"), "");
    EXPECT_EQ(loaded.file.Get("S", "c"), "");
    EXPECT_EQ(loaded.file.Get("T", "a"), "");
    EXPECT_EQ(loaded.file.Get("none", "a"), "");
    EXPECT_EQ(loaded.file.Get("s", "a"), "");
    EXPECT_EQ(loaded.file.Get(" S", "a"), "");
    EXPECT_EQ(loaded.file.Get("", ""), "");
    EXPECT_EQ(InitFile().Get("S", "a"), "");
}

TEST(InitFile, QuestionsEnterNothing)
{
    Loaded loaded("[S]\na=1\n");
    loaded.file.Get("S", "b");
    loaded.file.Get("T", "b");
    EXPECT_EQ(loaded.file.pGetSection("T"), nullptr);
    EXPECT_EQ(TextOf(loaded.file), "[S]\na=1\n");
}

TEST(InitFile, SetChangesAndAddsPairs)
{
    Loaded loaded("[S]\na=1\n[T]\n");
    loaded.file.Set("S", "a", "2");
    loaded.file.Set("S", "b", "");
    loaded.file.Set("T", "", " x ");
    EXPECT_EQ(loaded.file.Get("T", ""), " x ");
    EXPECT_EQ(TextOf(loaded.file), "[S]\na=2\nb=\n[T]\n= x \n");
}

TEST(InitFile, B26_SetIntoAnUnknownSectionDoesNothingSilently)
{
    Loaded loaded("[S]\na=1\n");
    const std::string printed = test::OutputOf([&] {
        loaded.file.Set("T", "a", "2");
        loaded.file.Set("s", "a", "2");
        InitFile().Set("", "a", "2");
    });
    EXPECT_EQ(printed, "");
    EXPECT_EQ(TextOf(loaded.file), "[S]\na=1\n");
}

TEST(InitFile, SectionCanBeChanged)
{
    Loaded loaded("[S]\na=1\n[T]\n");
    Section* const section = loaded.file.pGetSection("S");
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(section->strName, "S");
    EXPECT_EQ(section->mapValues.size(), 1U);
    section->mapValues["b"] = "2";
    EXPECT_EQ(loaded.file.Get("S", "b"), "2");
    const InitFile& file = loaded.file;
    EXPECT_EQ(file.pGetSection("S"), section);
    EXPECT_EQ(file.pGetSection("none"), nullptr);
}

TEST(InitFile, ClearRemovesAllSections)
{
    Loaded loaded("[S]\na=1\n");
    loaded.file.Clear();
    EXPECT_EQ(loaded.file.pGetSection("S"), nullptr);
    loaded.file.Set("S", "a", "1");
    EXPECT_EQ(TextOf(loaded.file), "");
    loaded.file.Clear();
}

TEST(InitFile, CopiesAreIndependent)
{
    Loaded loaded("[S]\na=1\n");
    InitFile copy(loaded.file);
    InitFile assigned;
    assigned = loaded.file;
    loaded.file.Set("S", "a", "2");
    copy.pGetSection("S")->mapValues["b"] = "3";
    assigned.Clear();
    EXPECT_EQ(TextOf(loaded.file), "[S]\na=2\n");
    EXPECT_EQ(TextOf(copy), "[S]\na=1\nb=3\n");
    EXPECT_EQ(TextOf(assigned), "");
}

TEST(InitFile, CopiesKeepTheSymbols)
{
    const TempFolder folder;
    InitFile file;
    file.SetSymbol(";");
    InitFile copy(file);
    copy.Load(folder.Write("run.ini", "[S]\na=#1;2\n"));
    EXPECT_EQ(copy.Get("S", "a"), "#1");
}

TEST(InitFile, SetFilenameReadsNothing)
{
    Loaded loaded("[S]\na=1\n");
    loaded.file.SetFilename("missing.ini");
    EXPECT_EQ(loaded.file.strFilename, "missing.ini");
    EXPECT_EQ(TextOf(loaded.file), "[S]\na=1\n");
}

// ---- Fields ----------------------------------------------------------------

TEST(InitFile, FieldsStandInTheirOrder)
{
    const InitFile file;
    EXPECT_TRUE(
        (test::Fields<OpenMS::String, OpenMS::String, std::vector<Section>,
                      std::map<OpenMS::String, std::size_t>>::StandInOrder(file.strFilename,
                                                                           file.strSymbol,
                                                                           file.vSections,
                                                                           file.mapSectionIndex)));
    EXPECT_EQ(file.strFilename, "");
    EXPECT_EQ(file.strSymbol, "#");
    const Section section;
    EXPECT_TRUE(
        (test::Fields<OpenMS::String, std::map<OpenMS::String, OpenMS::String>>::StandInOrder(
            section.strName, section.mapValues)));
}

TEST(InitFile, FieldsHoldWhatWasReadAndSet)
{
    const TempFolder folder;
    const std::string path = folder.Write("run.ini", "[T]\nb=1\n[S]\n[T]\na=1\n");
    InitFile file;
    file.SetSymbol(";#");
    file.Load(path);
    EXPECT_EQ(file.strFilename, path);
    EXPECT_EQ(file.strSymbol, ";#");
    ASSERT_EQ(file.vSections.size(), 2U);
    EXPECT_GE(file.vSections.capacity(), 8U);
    EXPECT_EQ(file.vSections[0].strName, "T");
    EXPECT_THAT(file.mapSectionIndex,
                testing::ElementsAre(testing::Pair("S", 1U), testing::Pair("T", 0U)));
    const std::string missing = folder.PathOf("missing.ini");
    test::OutputOf([&] { ThrownBy([&] { file.Load(missing); }); });
    EXPECT_EQ(file.strFilename, missing) << "remembered before it is opened";
    EXPECT_EQ(file.strSymbol, ";#");
    EXPECT_TRUE(file.mapSectionIndex.empty());
}

TEST(InitFile, PathMayBeAValueOfTheSectionsThatGo)
{
    // Long enough for memory of its own, which goes with its section.
    const TempFolder folder;
    const std::string next =
        folder.Write("the parameters of the run that comes next.ini", "[T]\nb=2\n");
    Loaded loaded(folder, "[S]\nnext=" + next + "\nmissing=" + next + ".gone\n", "#");
    InitFile copy = loaded.file;

    loaded.file.Load(loaded.file.pGetSection("S")->mapValues["next"]);
    EXPECT_EQ(TextOf(loaded.file), "[T]\nb=2\n");
    EXPECT_EQ(loaded.file.strFilename, next);

    Thrown thrown;
    EXPECT_EQ(test::OutputOf([&] {
                  thrown = test::ThrownBy(
                      [&] { copy.Load(copy.pGetSection("S")->mapValues["missing"]); });
              }),
              "Error when reading \"" + next + ".gone\".\n");
    EXPECT_NE(thrown.message.find(next + ".gone"), std::string::npos) << thrown.message;
}

TEST(InitFile, SectionThatTheHostTookAwayIsNotFound)
{
    Loaded loaded("[S]\na=1\n[T]\nb=2\n");
    loaded.file.vSections.pop_back();
    EXPECT_EQ(loaded.file.pGetSection("T"), nullptr);
    EXPECT_EQ(loaded.file.Get("T", "b"), "");
    loaded.file.Set("T", "b", "3");
    EXPECT_EQ(TextOf(loaded.file), "[S]\na=1\n");
}

TEST(Section, ConstructionAndCopies)
{
    EXPECT_EQ(Section().strName, "");
    Section section("S");
    EXPECT_EQ(section.strName, "S");
    EXPECT_TRUE(section.mapValues.empty());
    section.mapValues["a"] = "1";
    const Section copy(section);
    section.mapValues["a"] = "2";
    EXPECT_EQ(copy.strName, "S");
    EXPECT_EQ(copy.mapValues.at("a"), "1");
}

} // namespace
} // namespace Vorlan
