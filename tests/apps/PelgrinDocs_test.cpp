// docs/pelgrin.md against the program: options, formats, reasons, messages.
#include <set>

#include "HostProgram.h"
#include "files/ResultAudit.h"
#include "proteins/ProteinCounts.h"
#include "run/Counts.h"
#include "run/DatasetResolver.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using Vorlan::test::ReadFile;

/// The part of the page below a heading, up to the next one.
std::string Chapter(const std::string& heading)
{
    const std::string page = ReadFile(PELGRIN_DOCS "/pelgrin.md");
    const std::size_t begin = page.find("\n## " + heading + "\n");
    if (begin == std::string::npos) {
        ADD_FAILURE() << "no chapter " << heading;
        return {};
    }
    return page.substr(begin, page.find("\n## ", begin + 1) - begin);
}

/// What stands behind each front, up to a character of ends.
std::vector<std::string> TextsBehind(const std::string& text, const std::string& front,
                                     const char* ends)
{
    std::vector<std::string> found;
    for (std::size_t hit = text.find(front); hit != std::string::npos;
         hit = text.find(front, hit + 1)) {
        const std::size_t begin = hit + front.size();
        found.push_back(text.substr(begin, text.find_first_of(ends, begin) - begin));
    }
    return found;
}

/// The long options in a text that stand behind front.
std::set<std::string> OptionsIn(const std::string& text, const std::string& front)
{
    std::set<std::string> options;
    for (const std::string& name : TextsBehind(text, front + "--", " ,`=\n")) {
        options.insert("--" + name);
    }
    return options;
}

/// The first column of the tables of options in a chapter.
std::string FirstColumn(const std::string& chapter)
{
    std::string column;
    for (const std::string& cell : TextsBehind(chapter, "\n| `--", "|")) {
        column += "`--" + cell;
    }
    return column;
}

TEST(PelgrinDocs, ListEveryOptionOfTheHelp)
{
    for (const auto& [command, heading] : std::map<std::string, std::string>{
             {"annotate", "Which ions of my peptides are in the spectra?"},
             {"convert", "How do I turn a result into the native table?"},
             {"map-proteins", "In which proteins do my peptides lie?"}}) {
        SCOPED_TRACE(command);
        std::set<std::string> helped = OptionsIn(RunPelgrin({command, "--help"}).out, "\n  ");
        helped.erase("--help");
        EXPECT_GE(helped.size(), 6U);
        EXPECT_EQ(OptionsIn(FirstColumn(Chapter(heading)), "`"), helped);
    }
    const std::string help = RunPelgrin({"run", "--help"}).out;
    for (const char* const option : {"--dataset NAME=FILE", "--fasta", "--equate-il"}) {
        EXPECT_THAT(help, HasSubstr(std::string("\n  ") + option));
        EXPECT_THAT(Chapter("How do I do a whole run?"), HasSubstr(option));
    }
}

TEST(PelgrinDocs, ListEveryFormatThatCanBeRead)
{
    const std::string chapter = Chapter("What does the result of my search engine need?");
    const std::string help = RunPelgrin({"convert", "--help"}).out;
    const std::size_t line = help.find("its format: ");
    const std::string choices = help.substr(line, help.find('\n', line) - line);
    int formats = 0;
    for (const std::string& text : TextsBehind(choices, "\"", "\"")) {
        if (!text.empty() && text.front() != ',') { // else between two formats, or behind
            EXPECT_THAT(chapter, HasSubstr("`" + text + "`"));
            ++formats;
        }
    }
    EXPECT_EQ(formats, 8);
}

TEST(PelgrinDocs, ListEveryReasonUnderItsKind)
{
    const std::string chapter = Chapter("What of a result gives no record?");
    const std::size_t second = chapter.find("in `passed_over`");
    for (std::size_t i = 0; i < kUnread; ++i) {
        const auto reason = static_cast<Unread>(i);
        const std::size_t place = chapter.find("\n| `" + std::string(KeyOf(reason)) + "` |");
        ASSERT_NE(place, std::string::npos) << KeyOf(reason);
        EXPECT_EQ(place < second, IsLoss(reason)) << KeyOf(reason);
    }
}

TEST(PelgrinDocs, ListEveryCountOfProteinsAndItsStatus)
{
    const std::string chapter = Chapter("In which proteins do my peptides lie?");
    for (std::size_t i = 0; i < kProteinCounts; ++i) {
        const auto count = static_cast<ProteinCount>(i);
        const std::string key = std::string("`") + KeyOf(count) + "`";
        std::size_t place = chapter.find("\n| " + key);
        if (place == std::string::npos) {
            place = chapter.find(", " + key + " |"); // the second one of a row
        }
        ASSERT_NE(place, std::string::npos) << key;
        const std::size_t end = chapter.find('\n', place + 1);
        EXPECT_EQ(chapter.substr(end - 5, 5) == "yes |", IsLoss(count)) << key;
    }
}

TEST(PelgrinDocs, ListTheRulesForDatasetNamesInTheirOrder)
{
    const std::string chapter = Chapter("How do a record and a spectrum meet?");
    std::size_t place = 0;
    for (std::size_t i = 0; i < kNameRules; ++i) {
        const std::string key = std::string("| `") + KeyOf(static_cast<NameRule>(i)) + "` |";
        const std::size_t next = chapter.find(key);
        ASSERT_NE(next, std::string::npos) << key;
        EXPECT_GT(next, place) << key;
        place = next;
    }
}

TEST(PelgrinDocs, ShowWhatConvertPrints)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Vorlan::test::TempFolder folder;
    const Outcome outcome =
        RunPelgrin({"convert", "--format", "Comet (.pep.xml)", "--in",
                    Vorlan::test::RealDataFolder() + "/comet/F13_set/closed/F13.pep.xml", "--mod",
                    "Oxidation (M)=15.9949", "--mod", "Carbamidomethyl (C)=57.021464", "--mod",
                    "Acetyl (Protein N-term)=42.010565", "--out", folder.PathOf("run01.txt")});
    std::string expected;
    for (std::size_t begin = 0, end = 0; begin < outcome.out.size(); begin = end + 1) {
        end = outcome.out.find('\n', begin);
        const std::string line = outcome.out.substr(begin, end - begin);
        expected += line.empty() ? "\n" : "    " + line + "\n";
    }
    const std::string input = Vorlan::test::RealDataFolder() + "/comet/F13_set/closed/F13.pep.xml";
    for (std::size_t hit = 0; (hit = expected.find(input)) != std::string::npos;) {
        expected.replace(hit, input.size(), "run01.pep.xml");
    }
    expected.replace(expected.find(folder.Path() + "/"), folder.Path().size() + 1, "");
    EXPECT_THAT(Chapter("How do I turn a result into the native table?"), HasSubstr(expected));
}

} // namespace
} // namespace pelgrin::test
