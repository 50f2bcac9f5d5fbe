// Walks docs/messages.md: it has an entry for every message of docs/errors.md and
// no other, in the order of their letters, and pelgrin says what it is said to say.
#include <cctype>
#include <filesystem>
#include <set>

#include "docs/Page.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Row;

const char* const kPage = "messages.md";
const char* const kOfTheLibrary = "What the library says";
const char* const kOfTheHost = "What pelgrin says";

/// One column of the rows under a heading of errors.md, the first being number 1.
void Collect(const std::string& heading, std::size_t column, std::set<std::string>& texts)
{
    for (const Row& row : test::RowsUnder("errors.md", heading)) {
        if (row.size() > column) {
            texts.insert(test::WithoutTicks(row[column]));
        }
    }
}

/// The first cells of the table under a heading.
std::vector<std::string> Messages(const std::string& heading)
{
    std::vector<std::string> texts;
    for (const Row& row : test::RowsUnder(kPage, heading)) {
        if (row.size() == 4) {
            texts.push_back(test::WithoutTicks(row[1]));
        }
    }
    return texts;
}

/// What differs, such as "<path>", ends here; a closing tag is none of these.
std::size_t PlaceholderEnd(const std::string& text, std::size_t begin)
{
    const bool isOne = text[begin] == '<' && begin + 1 < text.size() && text[begin + 1] != '/';
    return isOne ? text.find('>', begin) : std::string::npos;
}

/// The parts of a message that do not differ.
std::vector<std::string> FixedParts(const std::string& text)
{
    std::vector<std::string> parts(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t end = PlaceholderEnd(text, i);
        if (end == std::string::npos) {
            parts.back() += text[i];
        } else {
            parts.emplace_back();
            i = end;
        }
    }
    return parts;
}

/// The letters and digits that do not differ, in lower case.
std::string Letters(const std::string& text)
{
    std::string letters;
    for (const std::string& part : FixedParts(text)) {
        for (const char c : part) {
            if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
                letters += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            }
        }
    }
    return letters;
}

TEST(MessagesPage, HasAnEntryForEveryMessageOfTheLibraryAndNoOther)
{
    std::set<std::string> listed;
    Collect("Exceptions", 4, listed);
    Collect("Exceptions of the XML model", 3, listed);
    Collect("Messages", 4, listed);
    Collect("Ends of the process", 3, listed);
    Collect("Ends of the process", 4, listed);
    ASSERT_GT(listed.size(), 50U);
    const std::vector<std::string> entries = Messages(kOfTheLibrary);
    EXPECT_EQ(std::set<std::string>(entries.begin(), entries.end()), listed);
    EXPECT_EQ(entries.size(), listed.size()) << "a message stands twice";
}

TEST(MessagesPage, IsSortedByTheLettersThatDoNotDiffer)
{
    for (const char* const heading : {kOfTheLibrary, kOfTheHost}) {
        std::vector<std::string> keys;
        for (const std::string& text : Messages(heading)) {
            keys.push_back(Letters(text));
        }
        EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end())) << testing::PrintToString(keys);
    }
}

TEST(MessagesPage, TellsCauseAndRemedyOfEveryEntry)
{
    for (const char* const heading : {kOfTheLibrary, kOfTheHost}) {
        for (const Row& row : test::RowsUnder(kPage, heading)) {
            if (row.size() == 4) {
                EXPECT_FALSE(row[2].empty()) << row[1];
                EXPECT_FALSE(row[3].empty()) << row[1];
            }
        }
    }
}

/// All sources of the host program, with literals that go on in the next line joined.
std::string HostSources()
{
    std::string all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(PELGRIN_HOST_SOURCES)) {
        if (entry.path().extension() == ".cpp") {
            all += test::ReadFile(entry.path().string());
        }
    }
    for (std::size_t end = 0; (end = all.find("\"\n", end)) != std::string::npos;) {
        const std::size_t next = all.find_first_not_of(" \n", end + 1);
        if (next != std::string::npos && all[next] == '"') {
            all.erase(end, next + 1 - end);
        } else {
            ++end;
        }
    }
    return all;
}

TEST(MessagesPage, QuotesOnlyWhatPelgrinSays)
{
    const std::string sources = HostSources();
    const std::vector<std::string> entries = Messages(kOfTheHost);
    EXPECT_GT(entries.size(), 20U);
    for (const std::string& text : entries) {
        for (const std::string& part : FixedParts(text)) {
            EXPECT_NE(sources.find(part), std::string::npos) << text;
        }
    }
}

} // namespace
} // namespace Vorlan
