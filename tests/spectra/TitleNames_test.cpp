#include "spectra/TitleNames.h"

#include <random>
#include <string>
#include <vector>

#include "spectra/PlainMgf.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

using Names = std::vector<std::string>;

/// The names in the order in which they are entered.
Names NamesOf(const std::string& line)
{
    TitleNames names;
    FindTitleNames(line, names);
    Names all = {std::string(names.title)};
    if (names.scan) {
        all.emplace_back(*names.scan);
    }
    if (names.word) {
        all.emplace_back(*names.word);
    }
    if (!names.dotted.empty()) {
        all.push_back(names.dotted);
    }
    return all;
}

struct TitleCase {
    std::string reason;
    std::string line;
    Names names;
};

void Check(const std::vector<TitleCase>& cases)
{
    for (const TitleCase& row : cases) {
        EXPECT_EQ(NamesOf(row.line), row.names) << row.reason;
        EXPECT_EQ(PlainTitleNames(row.line), row.names) << "plain twin: " << row.reason;
    }
}

TEST(TitleNames, ExamplesOfTheCommonTitles)
{
    Check({
        {"a title of four pieces",
         "TITLE=run01.1234.1234.2.dta",
         {"run01.1234.1234.2.dta", "run01.1234.00002.00002.dta"}},
        {"a first word and a native identifier in quotes",
         "TITLE=run01.1405.1405.2 NativeID:\"controllerType=0 controllerNumber=1 scan=1405\"",
         {"run01.1405.1405.2 NativeID:\"controllerType=0 controllerNumber=1 scan=1405\"", "1405",
          "run01.1405.1405.2", "run01.01405.01405.2"}},
        {"a title without blank, dot and scan", "TITLE=spectrum", {"spectrum"}},
    });
}

TEST(TitleNames, B24_DottedNameByTheNumberOfPieces)
{
    Check({
        {"one piece has none", "TITLE=run", {"run"}},
        {"two: the first is the number, too", "TITLE=7.dta", {"7.dta", "7.00007.00007.dta"}},
        {"three: the middle one is the number", "TITLE=a.5.c", {"a.5.c", "a.00005.00005.c"}},
        {"four: the one before the number goes", "TITLE=a.x.5.c", {"a.x.5.c", "a.00005.00005.c"}},
        {"five: one in between stays", "TITLE=a.b.x.5.c", {"a.b.x.5.c", "a.b.00005.00005.c"}},
        {"six: two in between stay", "TITLE=a.b.c.x.5.d", {"a.b.c.x.5.d", "a.b.c.00005.00005.d"}},
        {"seven: three in between stay",
         "TITLE=a.b.c.d.x.5.e",
         {"a.b.c.d.x.5.e", "a.b.c.d.00005.00005.e"}},
        {"a padded title is its own dotted name",
         "TITLE=a.00005.00005.2",
         {"a.00005.00005.2", "a.00005.00005.2"}},
    });
}

TEST(TitleNames, DotsWithoutAnythingBetweenMakeEmptyPieces)
{
    Check({
        {"a lone dot", "TITLE=.", {".", ".00000.00000."}},
        {"a leading dot", "TITLE=.b", {".b", ".00000.00000.b"}},
        {"a trailing dot", "TITLE=9.", {"9.", "9.00009.00009."}},
        {"two dots in a row", "TITLE=a..b", {"a..b", "a.00000.00000.b"}},
        {"leading dots before a number", "TITLE=..3.2", {"..3.2", ".00003.00003.2"}},
        {"nothing but dots, five pieces", "TITLE=....", {"....", "..00000.00000."}},
        {"trailing dots behind four pieces", "TITLE=a.1.2.", {"a.1.2.", "a.00002.00002."}},
    });
}

TEST(TitleNames, TheNumberFollowsAtoi)
{
    Check({
        {"text is zero", "TITLE=a.x.b", {"a.x.b", "a.00000.00000.b"}},
        {"text behind digits is passed over", "TITLE=a.12x.b", {"a.12x.b", "a.00012.00012.b"}},
        {"more than five digits stay", "TITLE=a.123456.b", {"a.123456.b", "a.123456.123456.b"}},
        {"leading zeros fall to five digits",
         "TITLE=a.0000000012.b",
         {"a.0000000012.b", "a.00012.00012.b"}},
        {"a minus counts as one of the five", "TITLE=a.-5.b", {"a.-5.b", "a.-0005.-0005.b"}},
        {"a plus goes", "TITLE=a.+5.b", {"a.+5.b", "a.00005.00005.b"}},
        {"two signs are text", "TITLE=a.--5.b", {"a.--5.b", "a.00000.00000.b"}},
        {"a tab before the number is passed over", "TITLE=a.\t5.b", {"a.\t5.b", "a.00005.00005.b"}},
        {"hexadecimal is not read", "TITLE=a.0x1F.b", {"a.0x1F.b", "a.00000.00000.b"}},
        {"the largest number",
         "TITLE=a.2147483647.b",
         {"a.2147483647.b", "a.2147483647.2147483647.b"}},
        {"one above it stays there",
         "TITLE=a.2147483648.b",
         {"a.2147483648.b", "a.2147483647.2147483647.b"}},
        {"a huge one as well",
         "TITLE=a.99999999999999999999999.b",
         {"a.99999999999999999999999.b", "a.2147483647.2147483647.b"}},
        {"the smallest number",
         "TITLE=a.-2147483648.b",
         {"a.-2147483648.b", "a.-2147483648.-2147483648.b"}},
        {"a huge negative one stays there",
         "TITLE=a.-99999999999999999999999.b",
         {"a.-99999999999999999999999.b", "a.-2147483648.-2147483648.b"}},
    });
}

TEST(TitleNames, B13_TheScanNameLosesTheLastCharacterOfTheTitle)
{
    Check({
        {"a quote goes", "TITLE=x scan=17\"", {"x scan=17\"", "17", "x"}},
        {"a digit goes as well", "TITLE=x scan=17", {"x scan=17", "1", "x"}},
        {"one character leaves the empty name", "TITLE=scan=1", {"scan=1", ""}},
        {"nothing behind it makes no name", "TITLE=scan=", {"scan="}},
        {"the first of two counts",
         "TITLE=scan=1 scan=22",
         {"scan=1 scan=22", "1 scan=2", "scan=1"}},
        {"the first stands at the end of another word", "TITLE=myscan=8;", {"myscan=8;", "8"}},
        {"case matters", "TITLE=Scan=17\"", {"Scan=17\""}},
        {"text behind the number belongs to it",
         "TITLE=scan=5 file=a\"",
         {"scan=5 file=a\"", "5 file=a", "scan=5"}},
        {"not looked for in the six characters before the title", "Tscan=5\"", {"5\""}},
    });
}

TEST(TitleNames, WordIsTheTextUpToTheFirstBlank)
{
    Check({
        {"a leading blank makes an empty word without dotted name", "TITLE= a.5.b", {" a.5.b", ""}},
        {"a tab is no blank", "TITLE=a\tb", {"a\tb"}},
        {"two blanks: the first counts",
         "TITLE=a.5.b  c",
         {"a.5.b  c", "a.5.b", "a.00005.00005.b"}},
        {"dots behind the blank do not count", "TITLE=a b.5.c", {"a b.5.c", "a"}},
    });
}

TEST(TitleNames, TitleIsTheTrimmedLineWithoutSixCharacters)
{
    Check({
        {"carriage return", "TITLE=abc\r", {"abc"}},
        {"blanks and tabs at the end", "TITLE=abc \t \r", {"abc"}},
        {"vertical tab and form feed stay", "TITLE=abc\v\f", {"abc\v\f"}},
        {"the key itself is not looked at", "Tables of text", {" of text", ""}},
        {"nothing behind the key", "TITLE=", {""}},
        {"blanks only behind the key", "TITLE=   ", {""}},
        {"five characters", "TITLE", {""}},
        {"one character", "T", {""}},
        {"seven characters", "TITLE=x", {"x"}},
        {"bytes above 127",
         "TITLE=\xC3\xA9.3.\xFF",
         {"\xC3\xA9.3.\xFF", "\xC3\xA9.00003.00003.\xFF"}},
    });
}

TEST(TitleNames, FilledAnewEveryTime)
{
    TitleNames names;
    FindTitleNames("TITLE=a.5.b scan=1x", names);
    FindTitleNames("TITLE=plain", names);
    EXPECT_EQ(names.title, "plain");
    EXPECT_FALSE(names.scan.has_value());
    EXPECT_FALSE(names.word.has_value());
    EXPECT_EQ(names.dotted, "");
}

TEST(TitleNames, LongestTitle)
{
    const std::string title = Repeat("ab.", 27304);
    const Names names = NamesOf("TITLE=" + title);
    EXPECT_EQ(names, PlainTitleNames("TITLE=" + title));
    ASSERT_EQ(names.size(), 2u);
    EXPECT_EQ(names[1], Repeat("ab.", 27302) + "00000.00000.");
}

std::string RandomTitleLine(std::mt19937& random)
{
    static const std::vector<std::string> parts = {
        ".",  ".",     ".",  " ",   "scan=", "12",   "0007",        "-3", "+",    "run",
        "a",  "\"",    "\t", "sca", "\r",    "=",    "99999999999", "x",  "\xE4", "5",
        "\v", "File:", ".2", "..",  "T",     ".dta", "4.",          "-",  "1e3",  "2147483648"};
    std::string line = random() % 16 == 0 ? "T" : "TITLE=";
    for (std::size_t count = random() % 12; count > 0; --count) {
        line += parts[random() % parts.size()];
    }
    return line;
}

TEST(TitleNames, AgreeWithThePlainTwinOnRandomTitles)
{
    std::mt19937 random(20261120);
    for (int i = 0; i < 100000; ++i) {
        const std::string line = RandomTitleLine(random);
        ASSERT_EQ(NamesOf(line), PlainTitleNames(line)) << "line: " << line;
    }
}

} // namespace
} // namespace Vorlan::test
