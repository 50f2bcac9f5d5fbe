#include "CStringProcess.h"

#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using Columns = std::map<std::string, int>;
using Fields = std::vector<std::string>;

// ---- Blanks ----------------------------------------------------------------

TEST(CStringProcess, OnlyFourBytesAreOfNoUse)
{
    std::string found;
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(static_cast<unsigned char>(byte));
        if (CStringProcess::bIsNoUse(c)) {
            found.push_back(c);
        }
    }
    EXPECT_EQ(found, "\t\n\r ");
}

struct TrimCase {
    const char* reason;
    std::string text;
    std::string trimmed; ///< the text in place
    std::string range;   ///< what the range [pBegin, pEnd) narrows to
};

const TrimCase kTrimCases[] = {
    {"an empty text stays empty", "", "", ""},
    {"nothing to take off", "ab", "ab", "ab"},
    {"a single character", "a", "a", "a"},
    {"both ends", " ab \r", "ab", "ab"},
    {"all four kinds at both ends", "\t\n\r ab\t\n\r ", "ab", "ab"},
    {"blanks inside stay", "  a \t b  ", "a \t b", "a \t b"},
    {"only the front", "   x", "x", "x"},
    {"only the end", "x   ", "x", "x"},
    {"vertical tab and form feed are text", "\v a \f", "\v a \f", "\v a \f"},
    {"a NUL is text", " \0 a \0 "s, "\0 a \0"s, "\0 a \0"s},
    {"a byte above 127 is text", " \xA0 ", "\xA0", "\xA0"},
};

std::string Trimmed(std::string text)
{
    CStringProcess::Trim(text);
    return text;
}

std::string TrimmedRange(const std::string& text)
{
    const char* begin = text.data();
    const char* end = begin + text.size();
    CStringProcess::Trim(begin, end);
    return {begin, end};
}

TEST(CStringProcess, TrimTakesBlanksOffBothEnds)
{
    for (const TrimCase& c : kTrimCases) {
        SCOPED_TRACE(c.reason);
        EXPECT_EQ(Trimmed(c.text), c.trimmed);
        EXPECT_EQ(TrimmedRange(c.text), c.range);
    }
}

TEST(CStringProcess, B01_TrimOfBlanksOnlyKeepsTheLastOne)
{
    EXPECT_EQ(Trimmed("   "), " ");
    EXPECT_EQ(Trimmed("\r\n"), "\n");
    EXPECT_EQ(Trimmed("\n\r"), "\r");
    EXPECT_EQ(Trimmed("\t"), "\t");
    EXPECT_EQ(Trimmed(""), "");
}

TEST(CStringProcess, TrimOfARangeOfBlanksOnlyMeetsAtItsEnd)
{
    const std::string text = " \t\r\n";
    const char* begin = text.data();
    const char* end = begin + text.size();
    CStringProcess::Trim(begin, end);
    EXPECT_EQ(begin, end);
    EXPECT_EQ(begin, text.data() + text.size());
}

TEST(CStringProcess, TrimOfAnEmptyRangeTouchesNothing)
{
    const char* begin = nullptr;
    const char* end = nullptr;
    CStringProcess::Trim(begin, end);
    EXPECT_EQ(begin, nullptr);
    EXPECT_EQ(end, nullptr);
}

TEST(CStringProcess, TrimOfARangeStaysInsideIt)
{
    const std::string text = "  a  ";
    const char* begin = text.data() + 1;
    const char* end = text.data() + 4;
    CStringProcess::Trim(begin, end);
    EXPECT_EQ(begin, text.data() + 2);
    EXPECT_EQ(end, text.data() + 3);
}

// ---- Fields ----------------------------------------------------------------

struct SplitCase {
    const char* reason;
    std::string text;
    std::string separator;
    Fields fields;
};

const SplitCase kSplitCases[] = {
    {"an empty text has no field", "", "\t", {}},
    {"an empty text has no field without a separator", "", "", {}},
    {"a lone line feed is one empty field", "\n", "\t", {""}},
    {"a lone line feed has no characters", "\n", "", {}},
    {"one line feed is dropped", "x\n", "\t", {"x"}},
    {"only one line feed is dropped", "x\n\n", "\t", {"x\n"}},
    {"a carriage return before it stays", "x\r\n", "\t", {"x\r"}},
    {"a line feed inside stays", "x\ny", "\t", {"x\ny"}},
    {"empty fields count", "a\t\tb", "\t", {"a", "", "b"}},
    {"the last empty field counts", "a,b,", ",", {"a", "b", ""}},
    {"the first empty field counts", ",a", ",", {"", "a"}},
    {"the text is the separator", ",", ",", {"", ""}},
    {"a single colon twice", "a::b", ":", {"a", "", "b"}},
    {"a separator of two characters", "a::b", "::", {"a", "b"}},
    {"half a separator is text", "a:b", "::", {"a:b"}},
    {"separators do not overlap", "a:::b", "::", {"a", ":b"}},
    {"the separator is no set", "a;,b,c", ",;", {"a;,b,c"}},
    {"a separator longer than the text", "ab", "abc", {"ab"}},
    {"an empty separator gives characters", "abc", "", {"a", "b", "c"}},
    {"an empty separator drops the line feed", "ab\n", "", {"a", "b"}},
    {"a line feed as separator: the last was dropped first", "a\nb\n", "\n", {"a", "b"}},
    {"a separator that ends in the dropped line feed", "a\r\nb\r\n", "\r\n", {"a", "b\r"}},
    {"the dropped line feed completes no separator", "ab,\n", ",\n", {"ab,"}},
    {"a NUL is text", "a\0,b"s, ",", {"a\0"s, "b"}},
    {"a NUL separates", "a\0b"s, "\0"s, {"a", "b"}},
    {"nothing is trimmed", " a , b ", ",", {" a ", " b "}},
};

TEST(CStringProcess, SplitCutsAtEverySeparator)
{
    for (const SplitCase& c : kSplitCases) {
        EXPECT_EQ(CStringProcess::split(c.text, c.separator), c.fields) << c.reason;
    }
}

/// Character by character, with no search.
Fields SlowSplit(std::string text, const std::string& separator)
{
    Fields fields;
    if (text.empty()) {
        return fields;
    }
    if (text.back() == '\n') {
        text.pop_back();
    }
    std::string field;
    for (std::size_t i = 0; i < text.size();) {
        if (text.substr(i, separator.size()) == separator) {
            fields.push_back(field);
            field.clear();
            i += separator.size();
        } else {
            field.push_back(text[i++]);
        }
    }
    fields.push_back(field);
    return fields;
}

TEST(CStringProcess, SplitAgreesWithSlowTwin)
{
    test::Random random(1);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = random.Text("ab:\n", random.Below(12));
        const std::string separator = random.Text("ab:\n", 1 + random.Below(3));
        ASSERT_EQ(CStringProcess::split(text, separator), SlowSplit(text, separator))
            << testing::PrintToString(text) << " by " << testing::PrintToString(separator);
    }
}

struct HeaderCase {
    const char* reason;
    std::string row;
    Columns columns;
};

const HeaderCase kHeaderCases[] = {
    {"an empty row has no columns", "", {}},
    {"columns count from 0", "a\tb\tc", {{"a", 0}, {"b", 1}, {"c", 2}}},
    {"nothing is trimmed", "a\t a", {{"a", 0}, {" a", 1}}},
    {"the line feed is dropped", "a\tb\n", {{"a", 0}, {"b", 1}}},
    {"the carriage return stays", "a\tb\r\n", {{"a", 0}, {"b\r", 1}}},
    {"the first of two equal texts wins", "a\tb\ta\tb", {{"a", 0}, {"b", 1}}},
    {"the first empty text wins", "a\t\t", {{"a", 0}, {"", 1}}},
    {"case matters", "a\tA", {{"a", 0}, {"A", 1}}},
};

TEST(CStringProcess, HeaderRowBecomesColumnNumbers)
{
    for (const HeaderCase& c : kHeaderCases) {
        Columns columns;
        CStringProcess::GetAttributesFromFirstRow(c.row, columns, "\t");
        EXPECT_EQ(columns, c.columns) << c.reason;
    }
}

TEST(CStringProcess, HeaderRowKeepsOtherEntriesAndRenewsItsOwn)
{
    Columns columns = {{"a", 7}, {"z", 9}};
    CStringProcess::GetAttributesFromFirstRow("b;a", columns, ";");
    EXPECT_EQ(columns, (Columns{{"a", 1}, {"b", 0}, {"z", 9}}));
}

// ---- Replacement -----------------------------------------------------------

struct ReplaceCase {
    const char* reason;
    std::string text;
    std::string from;
    std::string to;
    std::string result;
};

const ReplaceCase kReplaceCases[] = {
    {"an empty text stays empty", "", "a", "b", ""},
    {"no occurrence", "xyz", "a", "b", "xyz"},
    {"inserted text is not searched again", "aaa", "a", "aa", "aaaaaa"},
    {"an empty from changes nothing", "abc", "", "x", "abc"},
    {"an empty from changes no empty text", "", "", "x", ""},
    {"an empty to takes out", "a-b-c", "-", "", "abc"},
    {"everything taken out", "aaa", "a", "", ""},
    {"left to right without overlap", "aaaaa", "aa", "b", "bba"},
    {"taking out makes no new occurrence", "aabb", "ab", "", "ab"},
    {"inserting makes no new occurrence", "aab", "ab", "b", "ab"},
    {"at both ends", "&x&", "&", "&amp;", "&amp;x&amp;"},
    {"from longer than the text", "a", "aa", "b", "a"},
    {"equal texts", "abab", "ab", "ab", "abab"},
    {"a NUL is text", "a\0b"s, "\0"s, "0", "a0b"},
};

TEST(CStringProcess, ReplaceAllReplacesEveryOccurrence)
{
    for (const ReplaceCase& c : kReplaceCases) {
        std::string text = c.text;
        CStringProcess::replace_all(text, c.from, c.to);
        EXPECT_EQ(text, c.result) << c.reason;
    }
}

TEST(CStringProcess, ReplaceAllMayBeGivenItsOwnText)
{
    std::string text = "ab";
    CStringProcess::replace_all(text, text, "c");
    EXPECT_EQ(text, "c");
    text = "ab";
    CStringProcess::replace_all(text, "a", text);
    EXPECT_EQ(text, "abb");
}

TEST(CStringProcess, ReplaceAllOfTwoMegabytesComesToAnEnd)
{
    constexpr std::size_t kSize = 2 * 1024 * 1024;
    std::string text(kSize, 'a');
    CStringProcess::replace_all(text, "a", "aa");
    EXPECT_EQ(text.size(), 2 * kSize);
    EXPECT_EQ(text.find_first_not_of('a'), std::string::npos);
}

/// One replacement after the other, in place.
std::string SlowReplace(std::string text, const std::string& from, const std::string& to)
{
    for (std::size_t i = 0; i + from.size() <= text.size();) {
        if (text.substr(i, from.size()) == from) {
            text = text.substr(0, i) + to + text.substr(i + from.size());
            i += to.size();
        } else {
            ++i;
        }
    }
    return text;
}

TEST(CStringProcess, ReplaceAllAgreesWithSlowTwin)
{
    test::Random random(2);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = random.Text("ab", random.Below(14));
        const std::string from = random.Text("ab", 1 + random.Below(3));
        const std::string to = random.Text("ab", random.Below(4));
        std::string replaced = text;
        CStringProcess::replace_all(replaced, from, to);
        ASSERT_EQ(replaced, SlowReplace(text, from, to)) << text << ": " << from << " by " << to;
    }
}

} // namespace
} // namespace Vorlan
