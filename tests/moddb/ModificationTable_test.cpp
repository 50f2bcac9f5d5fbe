// The table of modifications: columns, rows, what ends the process.
#include "moddb/ModificationTable.h"

#include <algorithm>
#include <clocale>
#include <string>
#include <vector>

#include "moddb/TableText.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char kLabel[] = "Some::reader";

Records ReadTableFrom(const std::string& path)
{
    return RecordsBy([&](Records& records) { ReadModificationTable(path, kLabel, records); });
}

Records ReadTable(const std::string& text)
{
    const TempFolder folder;
    return ReadTableFrom(folder.Write("t.txt", text));
}

std::vector<std::string> DumpsOf(const std::string& text)
{
    return Dump(ReadTable(text), "%.9g");
}

void ExpectEnd(const std::string& text, const std::string& message, const std::string& reason)
{
    const TempFolder folder;
    const std::string path = folder.Write("t.txt", text);
    EXPECT_EXIT(ReadTableFrom(path), testing::ExitedWithCode(1), testing::Eq(message)) << reason;
}

TEST(ModificationTable, HeaderOfTheDump)
{
    EXPECT_EQ(ModificationTableHeader() + "\n", kTableHeader);
}

TEST(ModificationTable, EveryColumnOfARow)
{
    EXPECT_THAT(DumpsOf(kTableHeader + TableRow()), ElementsAre(kPhosphoDump));
}

TEST(ModificationTable, RowsInTheirOrderEqualOnesToo)
{
    const std::string text =
        kTableHeader + TableRow({{0, "b"}}) + TableRow({{0, "a"}}) + TableRow({{0, "b"}});
    const Records records = ReadTable(text);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0].getId(), "b");
    EXPECT_EQ(records[1].getId(), "a");
    EXPECT_TRUE(records[2] == records[0]);
}

TEST(ModificationTable, HeaderOnly)
{
    EXPECT_THAT(ReadTable(kTableHeader), IsEmpty());
    EXPECT_THAT(ReadTable(kTableHeader.substr(0, kTableHeader.size() - 1)), IsEmpty());
    EXPECT_THAT(ReadTable(kTableHeader + "\n\r\n\n"), IsEmpty());
}

TEST(ModificationTable, ColumnsAreFoundByTheirNames)
{
    std::vector<std::string> columns = kTableColumns;
    std::vector<std::string> cells = kPhosphoCells;
    for (int turn = 0; turn < 11; ++turn) {
        std::rotate(columns.begin(), columns.begin() + 1, columns.end());
        std::rotate(cells.begin(), cells.begin() + 1, cells.end());
        EXPECT_THAT(DumpsOf(TableLine(columns) + TableLine(cells)), ElementsAre(kPhosphoDump));
    }
}

TEST(ModificationTable, EmptyLinesArePassedOver)
{
    const std::string row = TableRow();
    EXPECT_EQ(ReadTable(kTableHeader + "\n" + row + "\n\r\n" + row + "\n").size(), 2u);
}

TEST(ModificationTable, CarriageReturnsByteOrderMarkAndNoLineFeedAtTheEnd)
{
    std::string text = "\xEF\xBB\xBF" + kTableHeader + TableRow() + TableRow();
    for (std::size_t feed = text.find('\n'); feed != std::string::npos;
         feed = text.find('\n', feed + 2)) {
        text.insert(feed, "\r");
    }
    text.resize(text.size() - 2);
    EXPECT_THAT(DumpsOf(text), ElementsAre(kPhosphoDump, kPhosphoDump));
}

TEST(ModificationTable, EmptyCellsAreCells)
{
    const std::string row = TableLine({"", "", "", "", "Anywhere", "", "", "", "", "", ""});
    EXPECT_THAT(DumpsOf(kTableHeader + row), ElementsAre("||||0||15|0|0|0|0"));
}

TEST(ModificationTable, CellsAreNotTrimmed)
{
    const Records records = ReadTable(kTableHeader + TableRow({{0, " a "}, {5, " S"}}));
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].getId(), " a ");
    EXPECT_EQ(records[0].getOrigin(), " S");
}

TEST(ModificationTable, ClassificationsInAnyLetterCaseOthersAreUnknown)
{
    const std::vector<std::pair<std::string, int>> rows = {
        {"artifact", 0}, {"Artefact", 0},       {"-", 15},
        {"", 15},        {"glycosylation", 15}, {"AA SUBSTITUTION", 10}};
    for (const auto& [text, value] : rows) {
        const Records records = ReadTable(kTableHeader + TableRow({{6, text}}));
        ASSERT_EQ(records.size(), 1u);
        EXPECT_EQ(records[0].getSourceClassification(), value) << text;
    }
}

TEST(ModificationTable, MassesAreReadAsTheCLibraryDoes)
{
    const std::vector<std::pair<std::string, double>> rows = {
        {"1.5", 1.5}, {" 1.5x", 1.5}, {"1e3", 1000.0}, {"0x10", 16.0}, {"-.5", -0.5},
        {"abc", 0.0}, {"", 0.0},      {"1,5", 1.0},    {"+2", 2.0},    {"--2", 0.0},
    };
    for (const auto& [text, value] : rows) {
        for (std::size_t column = 7; column < 11; ++column) {
            const Records records = ReadTable(kTableHeader + TableRow({{column, text}}));
            ASSERT_EQ(records.size(), 1u);
            const double masses[] = {records[0].getDiffMonoMass(), records[0].getDiffAverageMass(),
                                     records[0].getNeutralLossMonoMass(),
                                     records[0].getNeutralLossAverageMass()};
            EXPECT_EQ(masses[column - 7], value) << text;
        }
    }
}

TEST(ModificationTable, TheLocaleOfTheHostChangesNothing)
{
    const char* const set = std::setlocale(LC_ALL, "de_DE.UTF-8");
    const Records records = ReadTable(kTableHeader + TableRow());
    std::setlocale(LC_ALL, "C");
    EXPECT_THAT(Dump(records, "%.9g"), ElementsAre(kPhosphoDump));
    if (set == nullptr) {
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed";
    }
}

TEST(ModificationTable, RecordsAreAppended)
{
    const TempFolder folder;
    Records records = {MakeRecord("a", "M")};
    ReadModificationTable(folder.Write("t.txt", kTableHeader + TableRow()), kLabel, records);
    EXPECT_THAT(FullIds(records), ElementsAre("a (M)", "Phospho (S)"));
}

TEST(ModificationTable, AnotherSpecificityIsAnExceptionBehindTheRowsBeforeIt)
{
    const TempFolder folder;
    for (const char* const name : {"", "anywhere", "Any N-Term", "N-term", "Anywhere "}) {
        const std::string path =
            folder.Write("t.txt", kTableHeader + TableRow() + TableRow({{4, name}}) + TableRow());
        Records records;
        EXPECT_EQ(ErrorOf([&] { ReadModificationTable(path, kLabel, records); }),
                  InvalidPosition(name));
        EXPECT_THAT(Dump(records, "%.9g"), ElementsAre(kPhosphoDump)) << name;
    }
}

TEST(ModificationTable, WhatCannotBeReadNamesTheCallerAndThePath)
{
    const TempFolder folder;
    for (const std::string& path : {folder.PathOf("missing"), folder.Path(), std::string()}) {
        EXPECT_EQ(ErrorWithoutLine([&] { ReadTableFrom(path); }),
                  "FileNotReadable|ModificationDB|Some::reader|" + NotReadableText(path));
    }
}

TEST(ModificationTable, B44_EachMissingColumnEndsTheProcess)
{
    for (std::size_t i = 0; i < kTableColumns.size(); ++i) {
        std::vector<std::string> columns = kTableColumns;
        columns[i] += "x";
        ExpectEnd(TableLine(columns) + TableRow(), MissingColumn(kTableColumns[i]), columns[i]);
    }
}

TEST(ModificationTable, B44_TheFirstMissingColumnIsNamed)
{
    struct Row {
        const char* reason;
        std::string text;
        const char* column;
    };
    std::vector<std::string> columns(kTableColumns.begin(), kTableColumns.begin() + 4);
    const std::vector<Row> rows = {
        {"an empty file", "", "id"},
        {"an empty first line", "\n" + kTableHeader, "id"},
        {"columns from the fifth on", TableLine(columns), "term_spec"},
        {"upper case", "ID" + kTableHeader.substr(2), "id"},
        {"a blank in front", " " + kTableHeader, "id"},
        {"no header", TableRow(), "id"},
        {"other separator", "id,full_id", "id"},
    };
    for (const Row& row : rows) {
        ExpectEnd(row.text, MissingColumn(row.column), row.reason);
    }
}

TEST(ModificationTable, B44_NotExactlyElevenFieldsEndTheProcess)
{
    std::string cut = TableRow();
    cut.erase(cut.rfind('\t'));
    std::string longer = TableRow();
    longer.insert(longer.size() - 1, "\t");
    ExpectEnd(kTableHeader + cut, UnexpectedTerms(2), "ten fields");
    ExpectEnd(kTableHeader + longer, UnexpectedTerms(2), "twelve fields, the last one empty");
    ExpectEnd(kTableHeader + TableRow() + " \n", UnexpectedTerms(3), "one field, a blank");
    ExpectEnd(kTableHeader + "\n\n" + TableRow() + "\nx\n", UnexpectedTerms(6),
              "empty lines count, the header is line 1");
}

TEST(ModificationTable, B44_ElevenFieldsCountWhateverTheHeaderHas)
{
    const std::string wide = "extra\t" + kTableHeader;
    ExpectEnd(wide + "x\t" + TableRow(), UnexpectedTerms(2), "a row as wide as its header");
    ExpectEnd(wide + TableRow(), UnexpectedTerms(2), "the last column lies behind the eleventh");
    const std::string surplus = kTableHeader.substr(0, kTableHeader.size() - 1) + "\textra\n";
    EXPECT_THAT(DumpsOf(surplus + TableRow()), ElementsAre(kPhosphoDump))
        << "a surplus column at the end";
}

TEST(ModificationTable, B44_TheFirstMalformedLineCountsAlsoBehindABadSpecificity)
{
    const TempFolder folder;
    const std::string bad = TableRow({{4, "nowhere"}});
    const std::string path = folder.Write("t.txt", kTableHeader + bad + "x\n");
    EXPECT_EQ(ErrorOf([&] { ReadTableFrom(path); }), InvalidPosition("nowhere"));
    ExpectEnd(kTableHeader + "x\n" + bad, UnexpectedTerms(2), "the other way round");
}

TEST(ModificationTable, OfEqualColumnsTheFirstCounts)
{
    std::vector<std::string> columns = kTableColumns;
    columns.emplace_back("id");
    EXPECT_THAT(DumpsOf(TableLine(columns) + TableRow()), ElementsAre(kPhosphoDump));
}

TEST(ModificationTable, AnOverlongLineIsTheLastAndIsCut)
{
    const std::string name(90000, 'n');
    ExpectEnd(kTableHeader + TableRow({{3, name}}), UnexpectedTerms(2), "cells are cut off");
    const std::string text = kTableHeader + TableRow({{10, "1.5" + name}}) + "x\n";
    const Records records = ReadTable(text);
    ASSERT_EQ(records.size(), 1u) << "nothing is read behind it";
    EXPECT_EQ(records[0].getNeutralLossAverageMass(), 1.5);
}

TEST(ModificationTable, ADumpReadsBack)
{
    Records records;
    for (int i = 0; i < 80; ++i) {
        CResidueModification record = MakeRecord("m" + std::to_string(i), "M", 0.125 * i - 3.0,
                                                 static_cast<Specificity>(i % 5));
        record.setSourceClassification(
            static_cast<CResidueModification::SourceClassification>(i % 16));
        record.setDiffAverageMass(0.5 * i);
        record.setNeutralLossMonoMass(0.25 * i);
        record.setNeutralLossAverageMass(-0.75 * i);
        records.push_back(record);
    }
    EXPECT_EQ(Dump(ReadTable(DumpFileOf(OwnDatabase(records)))), Dump(records));
}

TEST(ModificationTable, B38_AClassificationWithoutTextReadsBackAsUnknown)
{
    CResidueModification record = MakeRecord("a", "M");
    record.setSourceClassification(CResidueModification::NUMBER_OF_SOURCE_CLASSIFICATIONS);
    const Records records = ReadTable(DumpFileOf(OwnDatabase({record})));
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].getSourceClassification(), CResidueModification::UNKNOWN);
}

} // namespace
} // namespace Vorlan::test
