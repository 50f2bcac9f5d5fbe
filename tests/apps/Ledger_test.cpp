// The ledger: what is held is kept or stands under a class, and nothing else.
#include "run/Ledger.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "RandomResults.h"
#include "ResultTexts.h"
#include "common/Failure.h"

namespace pelgrin::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Vorlan::PepIdentType;
using Vorlan::test::Random;
using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

/// A result of ten matches: six are read, one row is short, one hit is a further
/// one, and two records are rejected. An empty row holds nothing.
struct Example {
    ResultsRead results;
    Counts counts;

    Example()
    {
        ResultFile file;
        file.files = {"psms.txt", ""};
        file.end = 6;
        file.held = 10;
        file.rejected = {3, 4};
        file.audit.records = 8;
        file.audit.Add(Unread::ShortRow, 4);
        file.audit.Add(Unread::FurtherHit, 5);
        file.audit.Add(Unread::BlankRow, 9);
        results.files.push_back(file);
        results.rejects.parts = {{"psms.txt", 12, "s3", "bad\tcell", false, 1},
                                 {"psms.txt", 13, "", "bad cell", false, 1}};
        counts.held = 10;
        counts.read = 6;
    }

    Ledger Of(std::set<std::string> allowed = {}) const
    {
        Ledger ledger(std::move(allowed));
        ledger.AddMatches(results, counts);
        return ledger;
    }
};

std::vector<std::string> KeysOf(const LedgerPage& page)
{
    std::vector<std::string> keys;
    for (const LedgerClass& one : page.classes) {
        keys.push_back(one.key + " " + std::to_string(one.count));
    }
    return keys;
}

TEST(Ledger, NamesWhatIsNotKept)
{
    const Ledger ledger = Example().Of();
    ASSERT_EQ(ledger.Pages().size(), 1U);
    const LedgerPage& page = ledger.Pages()[0];
    EXPECT_EQ(page.held, 10U);
    EXPECT_EQ(page.kept, 6U);
    EXPECT_THAT(KeysOf(page),
                ElementsAre("short_row 1", "further_hit 1", "blank_row 1", "record_rejected 2"));
    EXPECT_TRUE(ledger.HasLosses());
}

TEST(Ledger, DoesNotAddUpWhenAMatchHasNoName)
{
    for (const int held : {9, 11}) {
        Example example;
        example.counts.held = static_cast<std::uint64_t>(held);
        try {
            example.Of();
            FAIL() << "it adds up";
        } catch (const std::logic_error& error) {
            EXPECT_EQ(error.what(), "the ledger does not add up: matches in the result files: "
                                        + std::to_string(held) + " held, 10 named");
        }
    }
    Example lost;
    lost.counts.read = 5;
    EXPECT_THROW(lost.Of(), std::logic_error);
    Example unnamed;
    unnamed.results.rejects.parts.pop_back();
    EXPECT_THROW(unnamed.Of(), std::logic_error);
}

TEST(Ledger, WhatIsAllowedIsNoReasonForAStatus)
{
    const Example example;
    EXPECT_TRUE(example.Of({"short_row", "further_hit"}).HasLosses());
    EXPECT_TRUE(example.Of({"record_rejected", "further_hit"}).HasLosses());
    EXPECT_FALSE(example.Of({"short_row", "further_hit", "record_rejected"}).HasLosses());
}

TEST(Ledger, TextHasALineForEveryClass)
{
    EXPECT_EQ(Example().Of({"further_hit"}).Text(),
              "\nLedger                     held      kept\n"
              "  matches                    10         6   matches in the result files\n"
              "    lost           1  short_row: rows with too few cells (psms.txt:4)\n"
              "    allowed        1  further_hit: hits behind the first one of a query "
              "(psms.txt:5)\n"
              "    no loss        1  blank_row: empty rows (psms.txt:9)\n"
              "    lost           2  record_rejected: records that their reader did not give "
              "(psms.txt:12: spectrum \"s3\": bad?cell)\n");
}

TEST(Ledger, JsonSaysTheSame)
{
    const nlohmann::json json = nlohmann::json::parse(Example().Of({"further_hit"}).Json());
    EXPECT_EQ(json["allowed"], nlohmann::json({"further_hit"}));
    EXPECT_EQ(json["has_losses"], true);
    const nlohmann::json& page = json["pages"]["matches"];
    EXPECT_EQ(page["held"], 10);
    EXPECT_EQ(page["kept"], 6);
    EXPECT_EQ(page["classes"]["further_hit"],
              nlohmann::json({{"count", 1},
                              {"text", "hits behind the first one of a query"},
                              {"in_sum", true},
                              {"loss", true},
                              {"allowed", true},
                              {"examples", {"psms.txt:5"}}}));
    EXPECT_EQ(page["classes"]["blank_row"]["in_sum"], false);
    EXPECT_EQ(page["classes"]["record_rejected"]["allowed"], false);
    EXPECT_EQ(page["files"], nlohmann::json::array({{{"path", "psms.txt"},
                                                     {"held", 10},
                                                     {"kept", 6},
                                                     {"classes",
                                                      {{"short_row", 1},
                                                       {"further_hit", 1},
                                                       {"blank_row", 1},
                                                       {"record_rejected", 2}}}}}));
}

TEST(Ledger, BytesThatAreNoTextDoNotBreakTheJson)
{
    Example example;
    example.results.files[0].files.path = "a\xFFz";
    for (RejectedPart& part : example.results.rejects.parts) {
        part.file = "a\xFFz";
    }
    EXPECT_TRUE(nlohmann::json::accept(example.Of().Json()));
}

TEST(Ledger, EmptyPagesHaveNoLosses)
{
    Ledger ledger({});
    ledger.AddMatches({}, {});
    ledger.AddSpectra({});
    ledger.AddRecords({});
    EXPECT_FALSE(ledger.HasLosses());
    EXPECT_EQ(ledger.Pages().size(), 3U);
}

TEST(Ledger, FilesThatCannotBeReadAreLossesWhateverTheyHold)
{
    Example example;
    ResultFile file;
    file.files = {"rows.txt", ""};
    file.begin = file.end = 6;
    file.held = 5;
    example.results.files.push_back(file);
    file.files.path = "empty.txt";
    file.held = 0;
    example.results.files.push_back(file);
    example.results.rejects.parts = {{"psms.txt", 12, "s3", "bad cell", false, 1},
                                     {"psms.txt", 13, "", "bad cell", false, 1},
                                     {"rows.txt", 1, "", "no header", true, 5},
                                     {"empty.txt", 0, "", "no header", true, 0}};
    example.counts.held = 15;
    const Ledger ledger = example.Of();
    EXPECT_THAT(KeysOf(ledger.Pages()[0]),
                ElementsAre("short_row 1", "further_hit 1", "blank_row 1", "record_rejected 2",
                            "file_refused 5", "file_unknown 1"));
    EXPECT_FALSE(
        example.Of({"short_row", "further_hit", "record_rejected", "file_refused", "file_unknown"})
            .HasLosses());
    EXPECT_TRUE(
        example.Of({"short_row", "further_hit", "record_rejected", "file_refused"}).HasLosses());
}

TEST(Ledger, RecordsAboveTheThresholdAreNoLoss)
{
    Counts counts;
    counts.read = 10;
    counts.annotated = 4;
    counts.aboveThreshold = 3;
    counts.decoys = 2;
    counts.Add(Problem{Reason::SpectrumUnknown, {}});
    Ledger ledger({});
    ledger.AddRecords(counts);
    EXPECT_EQ(ledger.Pages()[0].kept, 9U);
    EXPECT_THAT(KeysOf(ledger.Pages()[0]),
                ElementsAre(std::string(KeyOf(Reason::SpectrumUnknown)) + " 1"));
    EXPECT_TRUE(ledger.HasLosses());
    counts.read = 11;
    EXPECT_THROW(ledger.AddRecords(counts), std::logic_error);
}

// ---- --allow ------------------------------------------------------------------

TEST(ParseAllowed, TakesListsOfClasses)
{
    EXPECT_THAT(ParseAllowed({}), IsEmpty());
    EXPECT_THAT(ParseAllowed({"further_hit"}), ElementsAre("further_hit"));
    EXPECT_THAT(ParseAllowed({"short_row,further_hit", "further_hit,lower_rank"}),
                ElementsAre("further_hit", "lower_rank", "short_row"));
}

TEST(ParseAllowed, RefusesWhatIsNoClass)
{
    for (const auto& [text, key] : std::vector<std::pair<std::string, std::string>>{
             {"all", "all"},
             {"further_hit,", ""},
             {"", ""},
             {"further_hit, lower_rank", " lower_rank"},
             {"blank_row", "blank_row"}}) { // no loss
        try {
            ParseAllowed({text});
            FAIL() << text;
        } catch (const UsageError& error) {
            EXPECT_THAT(error.what(),
                        HasSubstr("--allow: \"" + key + "\" is no class of losses; there is: "));
            for (const std::string& one : LossClasses()) {
                EXPECT_THAT(error.what(), HasSubstr(one));
            }
        }
    }
}

TEST(LossClasses, HaveDifferentKeysInOrder)
{
    const std::vector<std::string> classes = LossClasses();
    EXPECT_TRUE(std::is_sorted(classes.begin(), classes.end()));
    EXPECT_EQ(std::adjacent_find(classes.begin(), classes.end()), classes.end());
    EXPECT_THAT(classes, Not(testing::Contains("blank_row")));
    EXPECT_THAT(classes, testing::IsSupersetOf({"record_rejected", "file_refused", "row_cut"}));
}

TEST(LossClasses, StandInTheManual)
{
    const std::string manual = ReadFile(std::string(PELGRIN_DOCS) + "/pelgrin.md");
    for (const std::string& one : LossClasses()) {
        EXPECT_THAT(manual, HasSubstr("`" + one + "`"));
    }
}

// ---- What a file holds --------------------------------------------------------

TEST(HeldIn, CountsALineOfReturnsAsItsReaderDoes)
{
    const TempFolder folder;
    const std::string path =
        folder.Write("psms.txt", kSequestHeader + "\r\n\"\"\r\n\r\r\n\"\r\"\r\n" + SequestRow());
    const ResultAudit audit = AuditResult(PepIdentType::SequestTxt, {path, ""});
    EXPECT_EQ(audit.records, 3U);
    EXPECT_EQ(audit.Of(Unread::BlankRow).units, 2U);
    EXPECT_EQ(HeldIn(PepIdentType::SequestTxt, path), 3U);
}

TEST(HeldIn, IsTheSumOfRecordsAndReasons)
{
    for (const ResultKind& kind : ResultKinds()) {
        SCOPED_TRACE(kind.head.substr(0, 60));
        Random random(300 + static_cast<std::uint64_t>(kind.format));
        const TempFolder folder;
        std::uint64_t compared = 0;
        std::uint64_t all = 0;
        for (int round = 0; round < 400; ++round) {
            const ResultFiles files = RandomResult(random, kind, !random.OneIn(4), folder);
            ResultAudit audit;
            try {
                audit = AuditResult(kind.format, files);
            } catch (const Failure&) {
                continue;
            }
            std::uint64_t named = audit.records;
            for (std::size_t i = 0; i < kUnread; ++i) {
                named += IsHeld(static_cast<Unread>(i)) ? audit.unread[i].units : 0;
            }
            ASSERT_EQ(HeldIn(kind.format, files.path), named) << ReadFile(files.path);
            ++compared;
            all += named;
        }
        EXPECT_GT(compared, 100U);
        EXPECT_GT(all, compared);
    }
}

} // namespace
} // namespace pelgrin::test
