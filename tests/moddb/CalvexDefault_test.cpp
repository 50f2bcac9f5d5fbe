// The default table: its loader and its one instance.
#include <string>
#include <type_traits>

#include "moddb/TableText.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

// There is one instance.
static_assert(!std::is_default_constructible_v<CModificationsDBCalvexDefault>);
static_assert(!std::is_constructible_v<CModificationsDBCalvexDefault, std::string>);
static_assert(!std::is_copy_constructible_v<CModificationsDBCalvexDefault>);

/// A database of its own; the constructors of the class are for its instance.
class DefaultProbe : public CModificationsDBCalvexDefault {
public:
    explicit DefaultProbe(const std::string& path) : CModificationsDBCalvexDefault(path) {}
};

std::string NotReadable(const std::string& path)
{
    return "FileNotReadable|ModificationDB|CModificationsDBCalvexDefault::readFromUnimodTXTFile|"
           + NotReadableText(path);
}

std::string Numbered(const CModificationsDB& database)
{
    return std::to_string(database.getNumberOfModifications());
}

TEST(CalvexDefault, RecordsAreThereUnderFourNames)
{
    const TempFolder folder;
    const DefaultProbe database(
        folder.Write("t.txt", kTableHeader + TableRow() + TableRow({{1, "Phospho (T)"}})));
    EXPECT_EQ(database.getNumberOfModifications(), 2u);
    for (const char* const name : {"Phospho", "Phosphorylation", "UniMod:21"}) {
        EXPECT_THAT(FullIds(Named(database, name)), ElementsAre("Phospho (S)", "Phospho (T)"))
            << name;
    }
    for (const char* const name : {"Phospho (S)", "Phospho (T)"}) {
        EXPECT_THAT(FullIds(Named(database, name)), ElementsAre(name));
    }
    EXPECT_EQ(Dump(Named(database, "Phospho (S)").at(0), "%.9g"), kPhosphoDump);
}

TEST(CalvexDefault, NothingIsPrinted)
{
    const TempFolder folder;
    const std::string path = folder.Write("t.txt", kTableHeader + TableRow());
    const Printed printed = PrintedBy([&] { const DefaultProbe database(path); });
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "");
}

TEST(CalvexDefault, TheLoaderAppends)
{
    const TempFolder folder;
    const std::string first =
        folder.Write("1.txt", kTableHeader + TableRow() + TableRow({{1, "Phospho (T)"}}));
    const std::string second = folder.Write("2.txt", kTableHeader + TableRow({{1, "Phospho (Y)"}})
                                                         + TableRow({{7, "1.5"}}));
    DefaultProbe database(first);
    RecordSet before;
    database.searchModifications(before, "Phospho", "", kAnySpecificity);
    database.readFromUnimodTXTFile(second);
    const std::vector<std::string> all = {"Phospho (S)", "Phospho (T)", "Phospho (Y)",
                                          "Phospho (S)"};
    EXPECT_EQ(WithMass(database, 0.0, 100.0), all);
    EXPECT_THAT(FullIds(Named(database, "UniMod:21")), UnorderedElementsAreArray(all));
    EXPECT_THAT(WithMass(database, 79.966331, 0.0),
                ElementsAre("Phospho (S)", "Phospho (T)", "Phospho (Y)"));
    EXPECT_THAT(WithMass(database, 1.5, 0.0), ElementsAre("Phospho (S)"));
    ASSERT_EQ(before.size(), 2u);
    EXPECT_EQ(Dump(**before.begin(), "%.9g"), kPhosphoDump) << "an address from before";
    EXPECT_EQ((*before.rbegin())->getFullId(), "Phospho (T)");
    RecordSet after;
    database.searchModifications(after, "Phospho", "", kAnySpecificity);
    EXPECT_THAT(after, testing::IsSupersetOf(before)) << "a record stays where it is";
}

TEST(CalvexDefault, TheSameFileTwice)
{
    const TempFolder folder;
    const std::string path = folder.Write("t.txt", kTableHeader + TableRow());
    DefaultProbe database(path);
    const CResidueModification& before = database.getModification("Phospho", "S", kAnySpecificity);
    database.readFromUnimodTXTFile(path);
    EXPECT_EQ(database.getNumberOfModifications(), 2u);
    EXPECT_EQ(Named(database, "Phospho").size(), 2u);
    EXPECT_EQ(WithMass(database, 79.966331, 0.0).size(), 2u);
    EXPECT_TRUE(before == database.getModification("Phospho", "S", kAnySpecificity));
}

TEST(CalvexDefault, AFailedLoadKeepsTheRecordsBeforeItsDefect)
{
    const TempFolder folder;
    DefaultProbe database(folder.Write("t.txt", kTableHeader + TableRow()));
    const std::string bad = folder.Write(
        "bad.txt", kTableHeader + TableRow({{0, "new"}, {1, "new (S)"}})
                       + TableRow({{0, "defect"}, {4, "x"}}) + TableRow({{0, "behind"}}));
    EXPECT_EQ(ErrorOf([&] { database.readFromUnimodTXTFile(bad); }), InvalidPosition("x"));
    EXPECT_EQ(database.getNumberOfModifications(), 2u);
    EXPECT_THAT(WithMass(database, 79.966331, 0.0), ElementsAre("Phospho (S)", "new (S)"));
    for (const char* const name : {"new", "new (S)"}) {
        EXPECT_THAT(FullIds(Named(database, name)), ElementsAre("new (S)")) << name;
    }
    for (const char* const name : {"Phosphorylation", "UniMod:21"}) {
        EXPECT_EQ(Named(database, name).size(), 2u) << name;
    }
    for (const char* const name : {"defect", "behind"}) {
        EXPECT_EQ(ThrownBy([&] { Named(database, name); }).name, "ElementNotFound") << name;
    }
}

TEST(CalvexDefault, AFileThatCannotBeReadAddsNothing)
{
    const TempFolder folder;
    DefaultProbe database(folder.Write("t.txt", kTableHeader + TableRow()));
    EXPECT_EQ(ErrorWithoutLine([&] { database.readFromUnimodTXTFile(folder.PathOf("none")); }),
              NotReadable(folder.PathOf("none")));
    EXPECT_EQ(database.getNumberOfModifications(), 1u);
    EXPECT_EQ(Named(database, "Phospho").size(), 1u);
}

/// Has a loader of its own under the name of the base's.
class HidingDefault : public DefaultProbe {
public:
    using DefaultProbe::DefaultProbe;
    void readFromUnimodTXTFile(const std::string&) {}
};

TEST(CalvexDefault, TheLoaderIsNotVirtual)
{
    const TempFolder folder;
    const std::string path = folder.Write("t.txt", kTableHeader + TableRow());
    HidingDefault database(path);
    CModificationsDBCalvexDefault& base = database;
    base.readFromUnimodTXTFile(path);
    EXPECT_EQ(database.getNumberOfModifications(), 2u);
}

TEST(CalvexDefault, B44_TheMessagesNameTheEngine)
{
    const TempFolder folder;
    const std::string column = folder.Write("1.txt", TableRow());
    const std::string terms = folder.Write("2.txt", kTableHeader + "x\n");
    EXPECT_EXIT(DefaultProbe{column}, testing::ExitedWithCode(1), testing::Eq(MissingColumn("id")));
    EXPECT_EXIT(DefaultProbe{terms}, testing::ExitedWithCode(1), testing::Eq(UnexpectedTerms(2)));
}

// ---- The instance ---------------------------------------------------------

TEST(CalvexDefault, TheInstanceIsTheTableInTheWorkingFolder)
{
    const TempFolder folder;
    folder.Write("unimod.txt", kTableHeader + TableRow());
    const auto say = [&] {
        GoTo(folder);
        return Dump(Named(*CModificationsDBCalvexDefault::getInstance(), "Phospho").at(0), "%.9g");
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, kPhosphoDump);
}

TEST(CalvexDefault, B45_TheInstanceStaysThatOfTheFirstCall)
{
    const TempFolder folder;
    const TempFolder other;
    folder.Write("unimod.txt", kTableHeader + TableRow());
    const auto say = [&] {
        GoTo(folder);
        const auto* const first = CModificationsDBCalvexDefault::getInstance();
        folder.Write("unimod.txt", kTableHeader);
        GoTo(other);
        const auto* const second = CModificationsDBCalvexDefault::getInstance();
        return Numbered(*second) + (first == second ? " same" : " another");
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "1 same");
}

TEST(CalvexDefault, ThreadsThatAskAtOnceGetOneInstance)
{
    const TempFolder folder;
    folder.Write("unimod.txt", kTableHeader + Repeat(TableRow(), 5000));
    const auto say = [&] {
        GoTo(folder);
        return InstancesOfThreads([] { return CModificationsDBCalvexDefault::getInstance(); });
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "1");
}

TEST(CalvexDefault, AFailedFirstCallKeepsNoInstance)
{
    const TempFolder folder;
    const auto say = [&] {
        GoTo(folder);
        std::string text =
            ErrorWithoutLine([] { CModificationsDBCalvexDefault::getInstance(); }) + "\n";
        folder.Write("unimod.txt", kTableHeader + TableRow({{4, "x"}}));
        text += ErrorOf([] { CModificationsDBCalvexDefault::getInstance(); }) + "\n";
        folder.Write("unimod.txt", kTableHeader + TableRow());
        return text + Numbered(*CModificationsDBCalvexDefault::getInstance());
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say,
                                  NotReadable("unimod.txt") + "\n" + InvalidPosition("x") + "\n1");
}

TEST(CalvexDefault, B44_AMalformedTableEndsTheProcessOfGetInstance)
{
    const TempFolder folder;
    folder.Write("unimod.txt", kTableHeader + "x\n");
    const auto get = [&] {
        GoTo(folder);
        CModificationsDBCalvexDefault::getInstance();
    };
    EXPECT_EXIT(get(), testing::ExitedWithCode(1), testing::Eq(UnexpectedTerms(2)));
}

} // namespace
} // namespace Vorlan::test
