// The choice among the engines, their one instance, and the table engine.
#include <string>
#include <type_traits>
#include <vector>

#include "moddb/TableText.h"
#include "support/Slots.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using Type = SearchEngineType;

const std::string kPFind3Text = "name1=Phospho[S] 0\n"
                                "Phospho[S]=S NORMAL 79.966331 79.9799 0 H(1)O(3)P(1)\n";
const std::string kMSFraggerText = "variable_mod_01 = 15.9949 M 3\n";

/// A file of each engine, by the number of its type.
class EngineFiles {
public:
    EngineFiles()
    {
        folder_.Write("2", kPFind3Text);
        folder_.Write("3", kMSFraggerText);
        folder_.Write("8", kTableHeader + TableRow());
    }
    std::string PathOf(int type) const { return folder_.PathOf(std::to_string(type)); }
    const TempFolder& Folder() const { return folder_; }

private:
    TempFolder folder_;
};

CModificationsDBEngine* Instance(const std::string& path, int type)
{
    return CModificationsDBEngine::getInstance(path, static_cast<Type::ESearchEngineType>(type));
}

std::string KindOf(const CModificationsDBEngine* engine)
{
    if (dynamic_cast<const CModificationsDBEnginePFind3*>(engine) != nullptr) {
        return "pFind 3";
    }
    if (dynamic_cast<const CModificationsDBEngineMSFragger*>(engine) != nullptr) {
        return "MSFragger";
    }
    return dynamic_cast<const CModificationsDBEngineCalvex*>(engine) != nullptr ? "Calvex" : "none";
}

std::string NotSupported(const std::string& name)
{
    return Error("InvalidParameter", 913, "CModificationsDBEngine::getInstance",
                 "Modification database loading from " + name + " is not supported for now.");
}

TEST(Engine, ThreadsThatAskAtOnceGetOneInstance)
{
    const TempFolder folder;
    const std::string path = folder.Write("t.txt", kTableHeader + Repeat(TableRow(), 5000));
    const auto say = [&] { return InstancesOfThreads([&] { return Instance(path, 8); }); };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "1");
}

TEST(Engine, EachTypeHasItsEngine)
{
    const EngineFiles files;
    const std::vector<std::pair<int, std::string>> rows = {
        {2, "pFind 3"}, {3, "MSFragger"}, {8, "Calvex"}};
    for (const auto& [type, kind] : rows) {
        const auto say = [&, type = type] {
            const CModificationsDBEngine* const engine = Instance(files.PathOf(type), type);
            return KindOf(engine) + " " + std::to_string(engine->getNumberOfModifications());
        };
        PELGRIN_EXPECT_IN_OWN_PROCESS(say, kind + " 1");
    }
}

TEST(Engine, EveryOtherTypeIsRefusedByItsDisplayName)
{
    const EngineFiles files;
    const std::vector<std::pair<int, std::string>> rows = {
        {0, "unknown"},  {1, "pFind 2.8 (.txt)"}, {4, "Mascot"},      {5, "Sequest (.txt)"},
        {6, "Maxquant"}, {7, "X!Tandem"},         {9, "MSGF (.tsv)"}, {10, "Comet (.pep.xml)"},
    };
    for (const auto& [type, name] : rows) {
        EXPECT_EQ(ErrorOf([&, type = type] { Instance(files.PathOf(2), type); }),
                  NotSupported(name));
    }
}

TEST(Engine, ATypeThatIsNoneIsRefused)
{
    const EngineFiles files;
    for (const int type : {11, -1, 1000}) {
        EXPECT_EQ(ErrorOf([&] { Instance(files.PathOf(2), type); }),
                  NotSupported(Type::typeToName(static_cast<Type::ESearchEngineType>(type))));
    }
}

TEST(Engine, B45_LaterPathsAndTypesAreIgnored)
{
    const EngineFiles files;
    for (const int first : {2, 3, 8}) {
        const auto say = [&] {
            const CModificationsDBEngine* const engine = Instance(files.PathOf(first), first);
            std::string text = KindOf(engine);
            for (const int later : {2, 3, 8, 0, 10}) {
                text += Instance("missing", later) == engine ? " same" : " another";
            }
            return text;
        };
        const std::string kind = first == 2 ? "pFind 3" : first == 3 ? "MSFragger" : "Calvex";
        PELGRIN_EXPECT_IN_OWN_PROCESS(say, kind + " same same same same same");
    }
}

TEST(Engine, AFailedFirstCallKeepsNoInstance)
{
    const EngineFiles files;
    files.Folder().Write("bad", "name\nPhospho[S]\n");
    const auto say = [&] {
        std::string text = ThrownBy([] { Instance("missing", 2); }).name;
        text += " " + ThrownBy([&] { Instance(files.Folder().PathOf("bad"), 2); }).name;
        text += " " + ThrownBy([] { Instance("missing", 3); }).name;
        text += " " + ThrownBy([] { Instance("missing", 8); }).name;
        text += " " + ThrownBy([&] { Instance(files.PathOf(2), 4); }).name;
        return text + " " + KindOf(Instance(files.PathOf(3), 3));
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "FileNotReadable InvalidParameter FileNotReadable "
                                       "FileNotReadable InvalidParameter MSFragger");
}

TEST(Engine, ASecondReadOfTheInstanceAppends)
{
    const EngineFiles files;
    const std::vector<std::pair<int, std::string>> rows = {
        {2, "Phospho"}, {3, "15.9949"}, {8, "Phospho"}};
    for (const auto& [type, name] : rows) {
        const auto say = [&, type = type, name = name] {
            CModificationsDBEngine* const engine = Instance(files.PathOf(type), type);
            const CResidueModification* const first =
                &engine->getModification(name, "", kAnySpecificity);
            engine->readFromSearchEngineFile(files.PathOf(type));
            RecordSet found;
            engine->searchModifications(found, name, "", kAnySpecificity);
            return std::to_string(engine->getNumberOfModifications()) + " "
                   + std::to_string(found.size()) + (found.count(first) == 1 ? " stays" : " moves");
        };
        PELGRIN_EXPECT_IN_OWN_PROCESS(say, "2 2 stays");
    }
}

TEST(Engine, TheBaseIsAbstract)
{
    EXPECT_TRUE(std::is_abstract_v<CModificationsDBEngine>);
    EXPECT_TRUE((std::is_base_of_v<CModificationsDB, CModificationsDBEngine>));
    EXPECT_TRUE(std::has_virtual_destructor_v<CModificationsDBEngine>);
    EXPECT_EQ(SlotOf(&CModificationsDBEngine::readFromSearchEngineFile), 2u)
        << "behind the destructor";
}

// ---- The library's own table ----------------------------------------------

TEST(Engine, TheTableEngineReadsAndRegistersAsTheDefaultTable)
{
    const TempFolder folder;
    const CModificationsDBEngineCalvex engine(
        folder.Write("t.txt", kTableHeader + TableRow() + TableRow({{1, "Phospho (T)"}})));
    for (const char* const name : {"Phospho", "Phosphorylation", "UniMod:21"}) {
        EXPECT_THAT(FullIds(Named(engine, name)), ElementsAre("Phospho (S)", "Phospho (T)"));
    }
    EXPECT_EQ(Dump(Named(engine, "Phospho (S)").at(0), "%.9g"), kPhosphoDump);
}

TEST(Engine, ExceptionsOfTheTableEngine)
{
    const TempFolder folder;
    EXPECT_EQ(ErrorWithoutLine([&] { CModificationsDBEngineCalvex(folder.PathOf("none")); }),
              "FileNotReadable|ModificationDB|"
              "CModificationsDBEngineCalvex::readFromSearchEngineFile|"
                  + NotReadableText(folder.PathOf("none")));
    const std::string path = folder.Write("t.txt", kTableHeader + TableRow({{4, "x"}}));
    EXPECT_EQ(ErrorOf([&] { CModificationsDBEngineCalvex{path}; }), InvalidPosition("x"));
}

TEST(Engine, TheTableEngineKeepsTheRecordsBeforeADefect)
{
    const TempFolder folder;
    CModificationsDBEngineCalvex engine(folder.Write("t.txt", kTableHeader + TableRow()));
    const std::string bad =
        folder.Write("bad.txt", kTableHeader + TableRow({{0, "new"}, {1, "new (S)"}})
                                    + TableRow({{4, "x"}}) + TableRow({{0, "behind"}}));
    EXPECT_EQ(ErrorOf([&] { engine.readFromSearchEngineFile(bad); }), InvalidPosition("x"));
    EXPECT_EQ(engine.getNumberOfModifications(), 2u);
    EXPECT_THAT(FullIds(Named(engine, "new")), ElementsAre("new (S)"));
    EXPECT_THAT(FullIds(Named(engine, "new (S)")), ElementsAre("new (S)"));
    EXPECT_EQ(Named(engine, "UniMod:21").size(), 2u);
    EXPECT_EQ(ThrownBy([&] { Named(engine, "behind"); }).name, "ElementNotFound");
}

TEST(Engine, B44_MalformedTablesEndTheProcess)
{
    const TempFolder folder;
    const std::string column = folder.Write("1.txt", "id\n");
    const std::string terms = folder.Write("2.txt", kTableHeader + TableRow() + "x\ty\n");
    EXPECT_EXIT(CModificationsDBEngineCalvex{column}, testing::ExitedWithCode(1),
                testing::Eq(MissingColumn("full_id")));
    EXPECT_EXIT(CModificationsDBEngineCalvex{terms}, testing::ExitedWithCode(1),
                testing::Eq(UnexpectedTerms(3)));
    EXPECT_EXIT(Instance(terms, 8), testing::ExitedWithCode(1), testing::Eq(UnexpectedTerms(3)));
}

} // namespace
} // namespace Vorlan::test
