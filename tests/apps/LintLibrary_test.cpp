// Every rule bites: what lint finds in the rows, and what the library reads there.
#include <algorithm>
#include <filesystem>
#include <limits>
#include <set>

#include <fmt/format.h>

#include "LintRows.h"
#include "lint/Lint.h"
#include "support/Support.h"

namespace pelgrin::test {
namespace {

using Vorlan::test::TempFolder;

std::string PathOf(const LintRow& row, const TempFolder& folder)
{
    return WriteRow(row, folder.Path());
}

std::string FindingsOf(const LintRow& row)
{
    const TempFolder folder;
    const std::string path = PathOf(row, folder);
    Findings findings(std::numeric_limits<std::size_t>::max());
    findings.Begin(path, row.kind);
    Lint(path, row.kind, findings);
    std::string text;
    for (const auto& [rule, list] : findings.Files().front().rules) {
        EXPECT_EQ(list.count, list.examples.size());
        for (const Finding& finding : list.examples) {
            EXPECT_FALSE(finding.what.empty());
            text += fmt::format("{}{}@{}", text.empty() ? "" : " ", TextsOf(rule).id, finding.line);
        }
    }
    return text;
}

/// The words of a text, sorted: rows list them as they are told.
std::multiset<std::string> Words(const std::string& text)
{
    std::multiset<std::string> words;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(' ', begin), text.size());
        words.insert(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

TEST(LintRows, HaveTheirFindings)
{
    for (const LintRow& row : AllLintRows()) {
        EXPECT_EQ(Words(FindingsOf(row)), Words(row.findings))
            << KeyOf(row.kind) << ": " << row.reason << ": " << FindingsOf(row);
    }
}

TEST(LintRows, AreReadByTheLibraryOtherwiseThanMeant)
{
    for (const LintRow& row : AllLintRows()) {
        const TempFolder folder;
        EXPECT_EQ(ReadByLibrary(row.kind, PathOf(row, folder)), row.reading)
            << KeyOf(row.kind) << ": " << row.reason;
    }
}

TEST(LintRows, ShowEveryRuleAndAPlainFileOfEveryKind)
{
    std::set<std::string> rules;
    std::set<FileKind> plain;
    for (const LintRow& row : AllLintRows()) {
        for (const std::string& word : Words(row.findings)) {
            rules.insert(word.substr(0, word.find('@')));
        }
        if (row.findings.empty()) {
            plain.insert(row.kind);
        }
    }
    for (std::size_t i = 0; i < kRules; ++i) {
        EXPECT_EQ(rules.count(TextsOf(static_cast<Rule>(i)).id), 1U)
            << TextsOf(static_cast<Rule>(i)).id;
    }
    EXPECT_EQ(plain.size(), 11U);
}

} // namespace
} // namespace pelgrin::test
