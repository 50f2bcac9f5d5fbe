// Questions to a database that the test fills itself.
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "moddb/ModificationAccess.h"
#include "moddb/ModificationText.h"
#include "support/Random.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using Modification = CResidueModification;

static_assert(!std::is_default_constructible_v<CModificationsDB>, "for derived classes only");

// So is the comparison of residues.
constexpr auto kMatch = [](const auto& database) -> decltype(database.residuesMatch_("", "")) {
    return {};
};
static_assert(std::is_invocable_v<decltype(kMatch), const OwnDatabase&>);
static_assert(!std::is_invocable_v<decltype(kMatch), const CModificationsDB&>);

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const char kSearch[] = "CModificationsDB::searchModifications";

std::string NoSuch(const std::string& name)
{
    return Error("ElementNotFound", 407, kSearch, "the element '" + name + "' could not be found");
}

std::string NotAvailable(const std::string& name)
{
    return Error("InvalidValue", 395, "CModificationsDB::getModification",
                 InvalidValueText(name, "Retrieving the modification failed. It is not available "
                                        "for the residue and term specificity."));
}

/// Phospho on S, T and any N-terminus, Oxidation on M.
Records SmallList()
{
    return {MakeRecord("Phospho", "S", 79.966331), MakeRecord("Phospho", "T", 79.966331),
            MakeRecord("Oxidation", "M", 15.994915),
            MakeRecord("Phospho", "N-term", 79.5, Modification::N_TERM)};
}

TEST(ModificationsDB, AnEmptyOneHasNoRecords)
{
    const OwnDatabase database;
    EXPECT_EQ(database.getNumberOfModifications(), 0u);
    EXPECT_THAT(WithMass(database, 0.0, kInfinity), IsEmpty());
    EXPECT_EQ(ErrorOf([&] { Named(database, ""); }), NoSuch(""));
    EXPECT_TRUE(std::has_virtual_destructor_v<CModificationsDB>);
    EXPECT_FALSE(std::is_copy_constructible_v<OwnDatabase>);
    EXPECT_FALSE(std::is_copy_assignable_v<OwnDatabase>);
}

TEST(ModificationsDB, CountsEveryRecordEqualOnesToo)
{
    const OwnDatabase database(Records(3, MakeRecord("Phospho", "S")));
    EXPECT_EQ(database.getNumberOfModifications(), 3u);
    EXPECT_EQ(Named(database, "Phospho").size(), 3u);
}

TEST(ModificationsDB, ResiduesMatchWhenNoneIsWantedOrBytesAreEqual)
{
    const OwnDatabase database;
    EXPECT_TRUE(database.residuesMatch_("", ""));
    EXPECT_TRUE(database.residuesMatch_("", "S"));
    EXPECT_TRUE(database.residuesMatch_("S", "S"));
    EXPECT_TRUE(database.residuesMatch_("STY", "STY"));
    EXPECT_FALSE(database.residuesMatch_("S", ""));
    EXPECT_FALSE(database.residuesMatch_("S", "s"));
    EXPECT_FALSE(database.residuesMatch_("S", "ST"));
    EXPECT_FALSE(database.residuesMatch_("ST", "S"));
}

TEST(ModificationsDB, SearchGivesAllRecordsOfANameInTheOrderOfTheDatabase)
{
    const OwnDatabase database(SmallList());
    EXPECT_THAT(FullIds(Named(database, "Phospho")),
                ElementsAre("Phospho (S)", "Phospho (T)", "Phospho (N-term)"));
    EXPECT_THAT(FullIds(Named(database, "Oxidation (M)")), ElementsAre("Oxidation (M)"));
}

struct Question {
    const char* reason;
    std::string name;
    std::string residue;
    Specificity specificity;
    std::vector<std::string> fullIds;
};

const std::vector<Question> kQuestions = {
    {"a residue", "Phospho", "T", kAnySpecificity, {"Phospho (T)"}},
    {"a specificity", "Phospho", "", Modification::N_TERM, {"Phospho (N-term)"}},
    {"both", "Phospho", "S", Modification::ANYWHERE, {"Phospho (S)"}},
    {"both fit different records", "Phospho", "S", Modification::N_TERM, {}},
    {"anywhere is not any", "Phospho", "", Modification::ANYWHERE, {"Phospho (S)", "Phospho (T)"}},
    {"a residue that none has", "Phospho", "Y", kAnySpecificity, {}},
    {"the residue is case-sensitive", "Phospho", "s", kAnySpecificity, {}},
    {"a terminus as residue", "Phospho", "N-term", kAnySpecificity, {"Phospho (N-term)"}},
    {"a specificity beyond the last", "Phospho", "", static_cast<Specificity>(6), {}},
};

TEST(ModificationsDB, SearchByResidueAndSpecificity)
{
    const OwnDatabase database(SmallList());
    for (const Question& row : kQuestions) {
        EXPECT_EQ(FullIds(Named(database, row.name, row.residue, row.specificity)), row.fullIds)
            << row.reason;
    }
}

TEST(ModificationsDB, GetGivesTheFirstOfTheSearch)
{
    const OwnDatabase database(SmallList());
    for (const Question& row : kQuestions) {
        const auto get = [&] {
            return database.getModification(row.name, row.residue, row.specificity).getFullId();
        };
        if (row.fullIds.empty()) {
            EXPECT_EQ(ErrorOf(get), NotAvailable(row.name)) << row.reason;
        } else {
            EXPECT_EQ(get(), row.fullIds.front()) << row.reason;
        }
    }
}

TEST(ModificationsDB, SearchReplacesTheResult)
{
    const OwnDatabase database(SmallList());
    const CResidueModification other;
    RecordSet found = {&other};
    database.searchModifications(found, "Oxidation", "", kAnySpecificity);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ((*found.begin())->getFullId(), "Oxidation (M)");
}

TEST(ModificationsDB, AnUnknownNameIsNotFoundAndLeavesNothing)
{
    const OwnDatabase database(SmallList());
    for (const std::string name :
         {"phospho", "Phosph", "Phospho ", "", "Phospho (Y)", "UniMod:7", "the Phospho"}) {
        const CResidueModification other;
        RecordSet found = {&other};
        EXPECT_EQ(ErrorOf([&] { database.searchModifications(found, name, "S", kAnySpecificity); }),
                  NoSuch(name));
        EXPECT_TRUE(found.empty()) << name;
        EXPECT_EQ(ErrorOf([&] { database.getModification(name, "S", kAnySpecificity); }),
                  NoSuch(name));
    }
}

TEST(ModificationsDB, ReferencesAreThoseOfTheSearch)
{
    const OwnDatabase database(SmallList());
    RecordSet found;
    database.searchModifications(found, "Phospho", "", kAnySpecificity);
    EXPECT_EQ(&database.getModification("Phospho", "", kAnySpecificity), *found.begin());
    EXPECT_EQ(&database.getModification("Phospho (T)", "", kAnySpecificity),
              *std::next(found.begin()));
}

TEST(ModificationsDB, TheFirstRecordIsThatOfTheDatabaseHoweverManyThereAre)
{
    Records records;
    for (int i = 0; i < 5000; ++i) {
        records.push_back(MakeRecord("m" + std::to_string(i % 7), std::to_string(i)));
    }
    const OwnDatabase database(records);
    for (int name = 0; name < 7; ++name) {
        const Records found = Named(database, "m" + std::to_string(name));
        for (std::size_t i = 0; i < found.size(); ++i) {
            ASSERT_EQ(found[i].getOrigin(), std::to_string(name + 7 * static_cast<int>(i)));
        }
    }
}

TEST(ModificationsDB, B37_OxidationAtTheProteinNTermWithoutItsParenthesisIsNeverGiven)
{
    Records records = {MakeRecord("Oxidation", "M"), MakeRecord("Oxidation", "M", 1.0),
                       MakeRecord("Oxidation", "M", 2.0), MakeRecord("Oxidation", "M", 3.0)};
    records[0].setFullId("Oxidation (Protein N-term");
    records[1].setFullId("Oxidation (Protein N-term)");
    records[2].setFullId("Oxidation (Protein N-term M");
    records[3].setFullId("oxidation (Protein N-term");
    const OwnDatabase database(records);
    EXPECT_THAT(FullIds(Named(database, "Oxidation")),
                ElementsAre("Oxidation (Protein N-term)", "Oxidation (Protein N-term M",
                            "oxidation (Protein N-term"));
    EXPECT_EQ(database.getModification("Oxidation", "", kAnySpecificity).getFullId(),
              "Oxidation (Protein N-term)");
}

TEST(ModificationsDB, B37_AskedForByItsFullIdItIsKnownButNotAvailable)
{
    CResidueModification record = MakeRecord("Oxidation", "M", 15.5);
    record.setFullId("Oxidation (Protein N-term");
    const OwnDatabase database({record});
    EXPECT_THAT(Named(database, "Oxidation (Protein N-term"), IsEmpty());
    EXPECT_EQ(ErrorOf([&] {
                  database.getModification("Oxidation (Protein N-term", "", kAnySpecificity);
              }),
              NotAvailable("Oxidation (Protein N-term"));
    EXPECT_EQ(database.getNumberOfModifications(), 1u);
    EXPECT_THAT(WithMass(database, 15.5, 0.0), ElementsAre("Oxidation (Protein N-term"))
        << "a question by mass gives it";
    EXPECT_THAT(DumpFileOf(database), testing::HasSubstr("\tOxidation (Protein N-term\t"));
}

TEST(ModificationsDB, AskedWithoutExceptionsItGivesTheSameInItsOrder)
{
    Records records = {MakeRecord("b", "M"), MakeRecord("a", "M"), MakeRecord("b", "K")};
    records[2].setFullId("Oxidation (Protein N-term");
    OwnDatabase database(records);
    database.Add({MakeRecord("b", "K", 2.0)});
    const auto named = ModificationAccess::Named(database, "b");
    ASSERT_EQ(named.size(), 2u) << "B-37";
    EXPECT_EQ(named[0]->getOrigin(), "M");
    EXPECT_EQ(named[1]->getDiffMonoMass(), 2.0);
    EXPECT_THAT(ModificationAccess::Named(database, "c"), IsEmpty());
}

// ---- By mass --------------------------------------------------------------

TEST(ModificationsDB, MassesInTheOrderOfTheDatabaseAndReplacingTheResult)
{
    const OwnDatabase database(
        {MakeRecord("b", "S", 2.0), MakeRecord("a", "S", 1.0), MakeRecord("c", "S", 1.5)});
    EXPECT_THAT(WithMass(database, 1.5, 0.5), ElementsAre("b (S)", "a (S)", "c (S)"));
    EXPECT_THAT(WithMass(database, 1.5, 0.25), ElementsAre("c (S)"));
    EXPECT_THAT(WithMass(database, 7.0, 0.25), IsEmpty());
}

TEST(ModificationsDB, EqualFullIdsOccurAsOftenAsTheirRecords)
{
    const OwnDatabase database(
        {MakeRecord("a", "S", 1.0), MakeRecord("b", "S", 1.0), MakeRecord("a", "S", 1.0)});
    EXPECT_THAT(WithMass(database, 1.0, 0.0), ElementsAre("a (S)", "b (S)", "a (S)"));
}

TEST(ModificationsDB, MassesByResidueAndSpecificity)
{
    const OwnDatabase database(SmallList());
    EXPECT_THAT(WithMass(database, 79.9, 1.0),
                ElementsAre("Phospho (S)", "Phospho (T)", "Phospho (N-term)"));
    EXPECT_THAT(WithMass(database, 79.9, 1.0, "T"), ElementsAre("Phospho (T)"));
    EXPECT_THAT(WithMass(database, 79.9, 1.0, "", Modification::N_TERM),
                ElementsAre("Phospho (N-term)"));
    EXPECT_THAT(WithMass(database, 79.9, 1.0, "S", Modification::N_TERM), IsEmpty());
}

TEST(ModificationsDB, TheResidueMayBeATextOfTheResultThatGoes)
{
    // Long enough for memory of its own, which goes with the former result.
    const std::string residue = "a list of sites that is too long to stand inside of a string";
    const OwnDatabase database(
        {MakeRecord("a", "S", 1.0), MakeRecord("b", residue, 1.0), MakeRecord("c", residue, 1.0)});
    std::vector<std::string> fullIds = {residue, "S"};
    database.searchModificationsByDiffMonoMass(fullIds, 1.0, 0.0, fullIds[0], kAnySpecificity);
    EXPECT_THAT(fullIds, ElementsAre("b (" + residue + ")", "c (" + residue + ")"));
    fullIds = {residue, "S"};
    database.searchModificationsByDiffMonoMass(fullIds, 1.0, 0.0, fullIds[1], kAnySpecificity);
    EXPECT_THAT(fullIds, ElementsAre("a (S)"));
}

TEST(ModificationsDB, AnErrorOfZeroTakesEqualMassesOnly)
{
    const OwnDatabase database(
        {MakeRecord("a", "S", 0.3), MakeRecord("b", "S", 0.1 + 0.2), MakeRecord("c", "S", -0.3)});
    EXPECT_THAT(WithMass(database, 0.3, 0.0), ElementsAre("a (S)"));
    EXPECT_THAT(WithMass(database, 0.3, -0.0), ElementsAre("a (S)"));
    EXPECT_THAT(WithMass(database, 0.1 + 0.2, 0.0), ElementsAre("b (S)"));
}

TEST(ModificationsDB, WhatIsNotANumberFindsNothing)
{
    const OwnDatabase database({MakeRecord("a", "S", 1.0), MakeRecord("nan", "S", kNaN),
                                MakeRecord("inf", "S", kInfinity)});
    EXPECT_THAT(WithMass(database, kNaN, 1.0), IsEmpty());
    EXPECT_THAT(WithMass(database, kNaN, kInfinity), IsEmpty());
    EXPECT_THAT(WithMass(database, 1.0, kNaN), IsEmpty());
    EXPECT_THAT(WithMass(database, 1.0, -1.0), IsEmpty());
    EXPECT_THAT(WithMass(database, 1.0, kInfinity), ElementsAre("a (S)", "inf (S)"));
    EXPECT_THAT(WithMass(database, kInfinity, kInfinity), ElementsAre("a (S)"))
        << "infinity less infinity is not a number";
}

TEST(ModificationsDB, MassQuestionsAgreeWithAWalkOverTheRecords)
{
    Random random(41);
    const std::vector<double> grid = {0.0, 0.5, 1.0, 1.5, 15.994915, 79.966331, -17.026549};
    Records records;
    for (int i = 0; i < 400; ++i) {
        CResidueModification record =
            MakeRecord("m" + std::to_string(i % 50), std::string(1, random.OneOf("STYM")),
                       grid[random.Below(grid.size())] + 0.25 * random.Between(-1.0, 1.0),
                       static_cast<Specificity>(random.Below(5)));
        records.push_back(record);
    }
    const OwnDatabase database(records);
    for (int round = 0; round < 5000; ++round) {
        const double mass = grid[random.Below(grid.size())];
        const double error = random.OneIn(3) ? 0.25 : random.Between(-0.1, 2.0);
        const std::string residue = random.OneIn(2) ? "" : std::string(1, random.OneOf("STYMK"));
        const auto specificity = static_cast<Specificity>(random.Below(7));
        std::vector<std::string> expected;
        for (const CResidueModification& record : records) {
            if (std::abs(record.getDiffMonoMass() - mass) <= error
                && (residue.empty() || residue == record.getOrigin())
                && (specificity == kAnySpecificity || specificity == record.getTermSpecificity())) {
                expected.push_back(record.getFullId());
            }
        }
        ASSERT_EQ(WithMass(database, mass, error, residue, specificity), expected);
    }
}

// ---- A second load --------------------------------------------------------

TEST(ModificationsDB, ASecondLoadStandsBehindTheFirst)
{
    OwnDatabase database(SmallList());
    database.Add({MakeRecord("Phospho", "Y", 79.966331), MakeRecord("Acetyl", "K", 42.0)});
    EXPECT_EQ(database.getNumberOfModifications(), 6u);
    EXPECT_THAT(WithMass(database, 0.0, kInfinity),
                ElementsAre("Phospho (S)", "Phospho (T)", "Oxidation (M)", "Phospho (N-term)",
                            "Phospho (Y)", "Acetyl (K)"));
    EXPECT_THAT(
        FullIds(Named(database, "Phospho")),
        UnorderedElementsAre("Phospho (S)", "Phospho (T)", "Phospho (N-term)", "Phospho (Y)"));
    EXPECT_THAT(WithMass(database, 79.966331, 0.0),
                ElementsAre("Phospho (S)", "Phospho (T)", "Phospho (Y)"));
    EXPECT_EQ(Named(database, "Acetyl").size(), 1u);
}

TEST(ModificationsDB, ReferencesFromBeforeASecondLoadStayGood)
{
    OwnDatabase database(SmallList());
    const CResidueModification& before = database.getModification("Oxidation", "", kAnySpecificity);
    const std::string text = Dump(before);
    for (int i = 0; i < 20; ++i) {
        database.Add(SmallList());
    }
    EXPECT_EQ(Dump(before), text);
    EXPECT_EQ(Dump(database.getModification("Oxidation", "", kAnySpecificity)), text);
    EXPECT_EQ(Named(database, "Oxidation").size(), 21u);
}

TEST(ModificationsDB, ARecordStaysWhereItIs)
{
    OwnDatabase database(SmallList());
    const auto get = [&](const std::string& fullId) {
        return &database.getModification(fullId, "", kAnySpecificity);
    };
    const std::vector<std::string> fullIds = FullIds(SmallList());
    RecordSet before;
    for (const std::string& fullId : fullIds) {
        before.insert(get(fullId));
    }
    for (int i = 0; i < 20; ++i) {
        database.Add({MakeRecord("Phospho", std::to_string(i), 1.0), MakeRecord("Acetyl", "K")});
        for (const std::string& fullId : fullIds) {
            EXPECT_EQ(before.count(get(fullId)), 1u) << fullId;
        }
    }
    RecordSet found;
    database.searchModifications(found, "Phospho", "", kAnySpecificity);
    EXPECT_EQ(found.size(), 23u);
    found.insert(get("Oxidation (M)"));
    EXPECT_THAT(found, testing::IsSupersetOf(before));
}

TEST(ModificationsDB, TheNamesOfALoadAreForItsRecordsOnly)
{
    OwnDatabase database(SmallList());
    database.Add({MakeRecord("Acetyl", "K")}, OwnDatabase::BY_FULL_NAME);
    EXPECT_THAT(FullIds(Named(database, "the Acetyl")), ElementsAre("Acetyl (K)"));
    EXPECT_EQ(ErrorOf([&] { Named(database, "Acetyl"); }), NoSuch("Acetyl"));
    EXPECT_EQ(ErrorOf([&] { Named(database, "the Phospho"); }), NoSuch("the Phospho"));
    EXPECT_EQ(Named(database, "Phospho").size(), 3u);
}

TEST(ModificationsDB, ALoadOfNothingChangesNothing)
{
    OwnDatabase database(SmallList());
    const std::string dump = DumpFileOf(database);
    database.Add({});
    EXPECT_EQ(DumpFileOf(database), dump);
    EXPECT_EQ(Named(database, "Phospho").size(), 3u);
    EXPECT_EQ(WithMass(database, 15.994915, 0.0).size(), 1u);
}

TEST(ModificationsDB, ARecordIsThereOnceUnderEqualNames)
{
    CResidueModification record = MakeRecord("a", "S");
    record.setFullId("a");
    record.setFullName("a");
    record.setUniModAccession("");
    OwnDatabase database;
    database.Add({record}, OwnDatabase::BY_ID | OwnDatabase::BY_FULL_ID | OwnDatabase::BY_FULL_NAME
                               | OwnDatabase::BY_ACCESSION);
    EXPECT_EQ(Named(database, "a").size(), 1u);
    EXPECT_EQ(Named(database, "").size(), 1u) << "an empty name is one";
    EXPECT_EQ(ErrorOf([&] { Named(database, "a (S)"); }), NoSuch("a (S)"));
}

TEST(ModificationsDB, EachFieldIsANameOnlyWhenItIsAskedFor)
{
    const std::vector<std::string> names = {"Phospho", "Phospho (S)", "the Phospho", "UniMod:7"};
    for (unsigned fields = 0; fields < 16; ++fields) {
        OwnDatabase database;
        database.Add({MakeRecord("Phospho", "S")}, fields);
        for (unsigned field = 0; field < 4; ++field) {
            const std::string expected = (fields >> field & 1U) != 0 ? "" : NoSuch(names[field]);
            EXPECT_EQ(ErrorOf([&] { Named(database, names[field]); }), expected) << fields;
        }
    }
}

} // namespace
} // namespace Vorlan::test
