// What the remedies of the rules promise: the tiny file of every hazard is prepared,
// and looked through once more.
#include <algorithm>
#include <filesystem>
#include <set>

#include <gmock/gmock.h>

#include "LintRows.h"
#include "common/Failure.h"
#include "lint/Lint.h"
#include "lint/Rules.h"
#include "prepare/Preparation.h"
#include "support/Support.h"

namespace pelgrin::test {
namespace {

using Vorlan::test::TempFolder;

/// The rules that bite in a file.
std::set<Rule> RulesIn(const std::string& path, FileKind kind)
{
    Findings findings(1);
    findings.Begin(path, kind);
    Lint(path, kind, findings);
    std::set<Rule> rules;
    for (const auto& [rule, list] : findings.Files().front().rules) {
        rules.insert(rule);
    }
    return rules;
}

/// The rules that bite in the copies; "refused" when there are none to be had.
std::optional<std::set<Rule>> RulesInCopies(const std::string& path, FileKind kind,
                                            const std::string& folder)
{
    Preparation preparation(folder);
    try {
        preparation.Add(path, kind);
        preparation.Run();
    } catch (const Failure&) {
        return std::nullopt;
    }
    std::set<Rule> rules;
    const Copy& copy = preparation.Copies().front();
    if (kind == FileKind::DtaFolder) {
        return RulesIn(std::filesystem::path(preparation.PathsOf(copy).front()).parent_path(),
                       kind);
    }
    for (const std::string& output : preparation.PathsOf(copy)) {
        if (kind == FileKind::MaxQuantMatches
            && std::filesystem::path(output).filename() == "peptides.txt") {
            continue; // looked through with msms.txt
        }
        rules.merge(RulesIn(output, kind));
    }
    return rules;
}

/// Reasons of rows for which there is no form that the library reads as meant, or
/// where nothing but the value's first part is lost.
const std::set<std::string> kNotMended = {
    "a carriage return between two peaks",
    "a carriage return behind the blank between them",
    "a carriage return in front of a peak",
    "lists and ranges",
    "a short row",
    "a list of proteins where the peptide has neighbours",
};

TEST(LintRows, AreReadAsMeantWhenTheyArePrepared)
{
    for (const LintRow& row : AllLintRows()) {
        if (row.kind == FileKind::MzMl || row.kind == FileKind::MzXml || row.findings.empty()
            || kNotMended.count(row.reason) > 0) {
            continue;
        }
        const TempFolder folder;
        std::filesystem::create_directory(folder.PathOf("in"));
        const std::string path = WriteRow(row, folder.PathOf("in"));
        const auto after = RulesInCopies(path, row.kind, folder.PathOf("out"));
        bool isRefused = false;
        for (const Rule rule : RulesIn(path, row.kind)) {
            const std::string remedy = TextsOf(rule).remedy;
            isRefused = isRefused || remedy.rfind("refuses it", 0) == 0;
            if (after && remedy != "nothing") {
                EXPECT_EQ(after->count(rule), 0U) << KeyOf(row.kind) << ": " << row.reason << ": "
                                                  << TextsOf(rule).id << ": " << remedy;
            }
        }
        EXPECT_TRUE(after || isRefused) << KeyOf(row.kind) << ": " << row.reason << ": refused";
    }
}

} // namespace
} // namespace pelgrin::test
