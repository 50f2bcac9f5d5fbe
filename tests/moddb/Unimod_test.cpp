// Unimod XML from small texts, every byte on the console, the one instance.
#include <filesystem>
#include <string>
#include <type_traits>
#include <vector>

#include "moddb/UnimodText.h"
#include "util/XmlText.h"

namespace Vorlan::test {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// There is one instance.
static_assert(!std::is_default_constructible_v<CModificationsDBUnimod>);
static_assert(!std::is_constructible_v<CModificationsDBUnimod, std::string>);
static_assert(!std::is_copy_constructible_v<CModificationsDBUnimod>);

struct Loaded {
    Records records;
    Printed printed;
};

Loaded Load(const std::string& text)
{
    const TempFolder folder;
    const std::string path = folder.Write("unimod.xml", text);
    Loaded loaded;
    loaded.printed = PrintedBy([&] { loaded.records = AllRecords(UnimodProbe(path)); });
    return loaded;
}

Records RecordsOf(const std::string& mods)
{
    return Load(UnimodText(mods)).records;
}

const std::string kTwoSites = Mod("Oxidation", Site("M") + Site("W") + kOxidationDelta);

TEST(Unimod, EverySpecificityIsARecord)
{
    EXPECT_THAT(Dump(RecordsOf(kTwoSites), "%.9g"),
                ElementsAre("Oxidation|Oxidation (M)|UniMod:35|full|0|M|0|15.9994|15.994915|0|0",
                            "Oxidation|Oxidation (W)|UniMod:35|full|0|W|0|15.9994|15.994915|0|0"));
}

TEST(Unimod, RecordsAreThereUnderFourNames)
{
    const TempFolder folder;
    const UnimodProbe database(folder.Write("u.xml", UnimodText(kTwoSites)));
    for (const char* const name : {"Oxidation", "full", "UniMod:35"}) {
        EXPECT_THAT(FullIds(Named(database, name)), ElementsAre("Oxidation (M)", "Oxidation (W)"));
    }
    EXPECT_THAT(FullIds(Named(database, "Oxidation (W)")), ElementsAre("Oxidation (W)"));
    EXPECT_EQ(ThrownBy([&] { Named(database, "35"); }).name, "ElementNotFound");
}

TEST(Unimod, ModByModAndSpecificityBySpecificity)
{
    const Records records =
        RecordsOf(Mod("b", Site("Z") + kOxidationDelta + Site("A")) + "<!-- x -->"
                  + Mod("a", kOxidationDelta + Site("M")) + Mod("b", Site("C") + kOxidationDelta));
    EXPECT_THAT(FullIds(records), ElementsAre("b (Z)", "b (A)", "a (M)", "b (C)"));
}

TEST(Unimod, FullIds)
{
    const std::vector<std::vector<std::string>> rows = {
        {"M", "Anywhere", "t (M)"},
        {"N-term", "Anywhere", "t (N-term)"},
        {"", "Anywhere", "t ()"},
        {"K", "Any N-term", "t (Any N-term K)"},
        {"N-term", "Any N-term", "t (Any N-term)"},
        {"C-term", "Any C-term", "t (Any C-term)"},
        {"G", "Protein C-term", "t (Protein C-term G)"},
        {"N-term", "Protein N-term", "t (Protein N-term)"},
        {"", "Protein N-term", "t (Protein N-term)"},
        {"MK", "Protein N-term", "t (Protein N-term)"},
    };
    for (const auto& row : rows) {
        EXPECT_THAT(FullIds(RecordsOf(Mod("t", Site(row[0], row[1]) + kOxidationDelta))),
                    ElementsAre(row[2]));
    }
}

TEST(Unimod, ModsWithoutSpecificityOrDeltaMakeNoRecord)
{
    EXPECT_THAT(RecordsOf(Mod("a", kOxidationDelta) + Mod("b", Site("M")) + Mod("c", "")),
                IsEmpty());
    EXPECT_THAT(FullIds(RecordsOf(Mod("a", Site("M")) + kTwoSites)),
                ElementsAre("Oxidation (M)", "Oxidation (W)"));
}

TEST(Unimod, TheFirstDeltaCounts)
{
    const Records records = RecordsOf(
        Mod("a", Site("M") + kOxidationDelta + "<umod:delta mono_mass=\"1\" avge_mass=\"2\"/>"));
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].getDiffMonoMass(), 15.994915);
    EXPECT_EQ(records[0].getDiffAverageMass(), 15.9994);
}

TEST(Unimod, OnlyChildrenOfModificationsAreMods)
{
    const std::string text = "<umod:unimod>" + kTwoSites + "<umod:modifications>"
                             + Tag("other", "a=\"b\"", kTwoSites) + "</umod:modifications>"
                             + "<umod:modifications>" + kTwoSites
                             + "</umod:modifications></umod:unimod>";
    EXPECT_THAT(Load(text).records, IsEmpty()) << "the first list counts";
}

TEST(Unimod, AbsentAttributesAreEmptyAndZero)
{
    const Records records = RecordsOf("<umod:mod><umod:specificity position=\"Anywhere\"/>"
                                      "<umod:delta/></umod:mod>");
    EXPECT_THAT(Dump(records), ElementsAre("| ()|UniMod:||0||15|0|0|0|0"));
}

TEST(Unimod, MassesAreReadAsTheCLibraryDoes)
{
    const Records records =
        RecordsOf(Mod("a", Site("M") + "<umod:delta mono_mass=\" 1.5x\" avge_mass=\"y\"/>"));
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].getDiffMonoMass(), 1.5);
    EXPECT_EQ(records[0].getDiffAverageMass(), 0.0);
}

TEST(Unimod, ClassificationsOthersAreUnknown)
{
    const std::vector<std::pair<std::string, int>> rows = {{"Artefact", 0},
                                                           {"Post-translational", 3},
                                                           {"Chemical derivative", 5},
                                                           {"", 15},
                                                           {"Chemical\nderivative", 15},
                                                           {"O-linked glycosylation", 14},
                                                           {"Synth. pep. protect. gp.", 15}};
    for (const auto& [text, value] : rows) {
        const Records records =
            RecordsOf(Mod("a", Tag("specificity", "site=\"M\" position=\"Anywhere\" "
                                                  "classification=\""
                                                      + text + "\"")
                                   + kOxidationDelta));
        ASSERT_EQ(records.size(), 1u);
        EXPECT_EQ(records[0].getSourceClassification(), value) << text;
    }
}

TEST(Unimod, TheNeutralLossIsTheFirstPositiveOne)
{
    struct Row {
        const char* reason;
        std::string losses;
        double mono;
        double average;
    };
    const std::vector<Row> rows = {
        {"none", "", 0.0, 0.0},
        {"zero before it", Loss("0", "0") + Loss("97.976896", "97.9952"), 97.976896, 97.9952},
        {"zero behind it", Loss("97.976896", "97.9952") + Loss("0", "0"), 97.976896, 97.9952},
        {"two positive ones", Loss("1.5", "2.5") + Loss("3.5", "4.5"), 1.5, 2.5},
        {"zeros only", Loss("0", "3") + Loss("0.0", "4"), 0.0, 0.0},
        {"a negative one", Loss("-18", "-18.1") + Loss("1.5", "0"), 1.5, 0.0},
        {"no number", Loss("x", "1"), 0.0, 0.0},
        {"not a number", Loss("nan", "1"), 0.0, 0.0},
        {"without average", "<umod:NeutralLoss mono_mass=\"2\"/>", 2.0, 0.0},
        {"among other children", "<umod:misc_notes>x</umod:misc_notes>" + Loss("1.5", "2.5"), 1.5,
         2.5},
        {"another spelling", "<umod:neutralloss mono_mass=\"2\"/>", 0.0, 0.0},
    };
    for (const Row& row : rows) {
        const Records records =
            RecordsOf(Mod("a", Site("S", "Anywhere", row.losses) + Site("T") + kOxidationDelta));
        ASSERT_EQ(records.size(), 2u) << row.reason;
        EXPECT_EQ(records[0].getNeutralLossMonoMass(), row.mono) << row.reason;
        EXPECT_EQ(records[0].getNeutralLossAverageMass(), row.average) << row.reason;
        EXPECT_EQ(records[1].getNeutralLossMonoMass(), 0.0) << "of the next one: " << row.reason;
    }
}

TEST(Unimod, B41_OnlyTheFirstArrowOfAName)
{
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"Gln-&gt;pyro-Glu", "Gln->pyro-Glu"},
        {"a-&gt;b-&gt;c", "a->b-&gt;c"},
        {"&gt;a", "&gt;a"},
        {"--&gt;", "-->"},
        {"a&amp;b", "a&amp;b"},
        {"a-&lt;b", "a-&lt;b"},
    };
    for (const auto& [text, name] : rows) {
        const Records records = RecordsOf(Mod(text, Site("Q") + kOxidationDelta, text));
        ASSERT_EQ(records.size(), 1u) << text;
        EXPECT_EQ(records[0].getId(), name);
        EXPECT_EQ(records[0].getFullName(), name);
        EXPECT_EQ(records[0].getFullId(), name + " (Q)");
    }
}

TEST(Unimod, B42_OriginsOfTerminalRecordsArePrinted)
{
    const Loaded loaded = Load(UnimodText(
        Mod("a", Site("K") + Site("N-term", "Any N-term") + Site("Q", "Any N-term")
                     + Site("N-term", "Anywhere") + kOxidationDelta)
        + Mod("b", Site("C-term", "Protein C-term") + Site("", "Any C-term") + kOxidationDelta)));
    EXPECT_EQ(loaded.printed.out, "N-termQC-term");
    EXPECT_EQ(loaded.printed.err, "");
    EXPECT_EQ(loaded.records.size(), 6u);
}

TEST(Unimod, B42_NothingIsPrintedWithoutThem)
{
    const Loaded loaded = Load(UnimodText(kTwoSites));
    EXPECT_EQ(loaded.printed.out, "");
    EXPECT_EQ(loaded.printed.err, "");
}

TEST(Unimod, B42_EveryLoadPrintsTheOriginsOfAllRecords)
{
    const TempFolder folder;
    UnimodProbe database(folder.Write("0.xml", UnimodText(kTwoSites)));
    const auto load = [&](const std::string& text) {
        const std::string path = folder.Write("u.xml", text);
        const Printed printed = PrintedBy([&] { database.readFromUnimodXMLFile(path); });
        EXPECT_EQ(printed.err, "");
        return printed.out;
    };
    const auto site = [](const std::string& origin, const std::string& position) {
        return UnimodText(Mod("a", Site(origin, position) + kOxidationDelta));
    };
    EXPECT_EQ(load(site("N-term", "Any N-term")), "N-term");
    EXPECT_EQ(load(site("C-term", "Any C-term")), "N-termC-term");
    EXPECT_EQ(load(site("K", "Anywhere")), "N-termC-term");
    EXPECT_EQ(load(UnimodText("")), "N-termC-term") << "a file without records";
}

TEST(Unimod, B43_AFailureOfTheXmlIsToldOnStandardErrorOnly)
{
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"", "Can not find root element!"},
        {"<!-- only a comment -->", "Can not find root element!"},
        {"text only", "Can not find root element!"},
    };
    for (const auto& [text, message] : rows) {
        const Loaded loaded = Load(text);
        EXPECT_EQ(loaded.printed.err, message + "\n") << text;
        EXPECT_EQ(loaded.printed.out, "") << text;
        EXPECT_THAT(loaded.records, IsEmpty());
    }
}

TEST(Unimod, B43_WhatIsToldIsTheWholeMessageAndALineEnd)
{
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"<umod:unimod>\n" + kTwoSites, "<umod:unimod>Can not find </element>"},
        {"<umod:unimod/><umod:modifications a=\"b\"", "<umod:modifications a=\"b\"\n"
                                                      "Can not find '>'"},
        {"<![CDATA[x>", "Can not find \"]]>\""},
        {"<!DOCTYPE x>", "DOCTYPE can not find \"]>\""},
        {"<a\0b>"s, "<a"},
    };
    const TempFolder folder;
    for (const auto& [text, message] : rows) {
        const std::string path = folder.Write("u.xml", text);
        EXPECT_EQ(MessageOf([&] { CXmlDocument().ParseFile(path); }), message);
        EXPECT_EQ(PrintedBy([&] { UnimodProbe{path}; }).err, message + "\n");
    }
}

TEST(Unimod, B43_AFileThatIsCutAddsNothing)
{
    const std::string whole = UnimodText(Mod("a", Site("Q", "Any N-term") + kOxidationDelta));
    const Loaded loaded = Load(whole.substr(0, whole.find("</umod:modifications>")));
    EXPECT_THAT(loaded.records, IsEmpty());
    EXPECT_EQ(loaded.printed.out, "") << "no origin either";
    EXPECT_EQ(loaded.printed.err.back(), '\n');
    EXPECT_GT(loaded.printed.err.size(), 2u);
}

TEST(Unimod, B43_AFileThatCannotBeOpenedLeavesAnEmptyDatabase)
{
    const TempFolder folder;
    for (const std::string& path : {folder.PathOf("missing.xml"), folder.Path(), std::string()}) {
        std::size_t count = 1;
        const Printed printed =
            PrintedBy([&] { count = UnimodProbe(path).getNumberOfModifications(); });
        EXPECT_EQ(printed.err, "Can not open file!\n") << path;
        EXPECT_EQ(printed.out, "");
        EXPECT_EQ(count, 0u);
    }
}

TEST(Unimod, ADocumentWithoutModificationsIsEmptyWithoutAWord)
{
    for (const std::string& text :
         {std::string("<umod:unimod/>"), std::string("<a><b/></a>"), UnimodText(""),
          std::string("<umod:modifications>") + kTwoSites + "</umod:modifications>"}) {
        const Loaded loaded = Load(text);
        EXPECT_EQ(loaded.printed.out + loaded.printed.err, "") << text;
        EXPECT_THAT(loaded.records, IsEmpty()) << text;
    }
}

TEST(Unimod, AnotherPositionIsAnException)
{
    const TempFolder folder;
    for (const std::string position : {"anywhere", "", "N-term", "Any N-Term"}) {
        const std::string path = folder.Write(
            "u.xml",
            UnimodText(Mod("a", Site("Q", "Any N-term") + Site("M", position) + kOxidationDelta)));
        std::string error;
        const Printed printed = PrintedBy([&] { error = ErrorOf([&] { UnimodProbe{path}; }); });
        EXPECT_EQ(error, InvalidPosition(position));
        EXPECT_EQ(printed.out + printed.err, "") << "the names were not set yet";
    }
}

TEST(Unimod, RecordsBeforeAnotherPositionStayWithoutNames)
{
    const TempFolder folder;
    UnimodProbe database(folder.Write("1.xml", UnimodText(kTwoSites)));
    const std::string path = folder.Write(
        "2.xml",
        UnimodText(Mod("a", Site("Q", "Any N-term") + kOxidationDelta)
                   + Mod("b", Site("K") + Site("M", "nowhere") + Site("C") + kOxidationDelta)));
    std::string error;
    const Printed printed =
        PrintedBy([&] { error = ErrorOf([&] { database.readFromUnimodXMLFile(path); }); });
    EXPECT_EQ(error, InvalidPosition("nowhere"));
    EXPECT_EQ(printed.out + printed.err, "");
    EXPECT_EQ(database.getNumberOfModifications(), 4u);
    EXPECT_THAT(WithMass(database, 15.994915, 0.0),
                ElementsAre("Oxidation (M)", "Oxidation (W)", "", ""));
    EXPECT_THAT(WithMass(database, 15.994915, 0.0, "Q", CResidueModification::N_TERM),
                ElementsAre(""));
    EXPECT_THAT(WithMass(database, 15.994915, 0.0, "K"), ElementsAre(""));
    for (const char* const name : {"a", "b", "", "a (Any N-term Q)", "b (K)"}) {
        EXPECT_EQ(ThrownBy([&] { Named(database, name); }).name, "ElementNotFound") << name;
    }
    EXPECT_EQ(Named(database, "full").size(), 2u) << "those of the load before";
}

TEST(Unimod, ALaterLoadNamesTheRecordsOfOneThatFailed)
{
    const TempFolder folder;
    const std::string spoiled = folder.Write(
        "1.xml",
        UnimodText(Mod("a", Site("Q", "Any N-term") + Site("M", "nowhere") + kOxidationDelta)));
    UnimodProbe database(folder.Write("2.xml", UnimodText("")));
    EXPECT_EQ(ErrorOf([&] { database.readFromUnimodXMLFile(spoiled); }),
              InvalidPosition("nowhere"));
    EXPECT_EQ(ErrorOf([&] { database.readFromUnimodXMLFile(spoiled); }),
              InvalidPosition("nowhere"));
    const std::string good =
        folder.Write("3.xml", UnimodText(Mod("b", Site("K") + kOxidationDelta)));
    EXPECT_EQ(PrintedBy([&] { database.readFromUnimodXMLFile(good); }).out, "QQ");
    EXPECT_THAT(WithMass(database, 15.994915, 0.0),
                ElementsAre("a (Any N-term Q)", "a (Any N-term Q)", "b (K)"));
    for (const char* const name : {"a", "a (Any N-term Q)"}) {
        EXPECT_EQ(Named(database, name).size(), 2u) << name;
    }
    EXPECT_EQ(Named(database, "b").size(), 1u);
}

TEST(Unimod, AFileThatCannotBeReadNamesNothing)
{
    const TempFolder folder;
    const std::string spoiled = folder.Write(
        "1.xml", UnimodText(Mod("a", Site("M") + Site("M", "nowhere") + kOxidationDelta)));
    const std::string cut = folder.Write("2.xml", "<umod:unimod><umod:modifications>");
    UnimodProbe database(folder.Write("3.xml", UnimodText("")));
    EXPECT_EQ(ErrorOf([&] { database.readFromUnimodXMLFile(spoiled); }),
              InvalidPosition("nowhere"));
    PrintedBy([&] {
        database.readFromUnimodXMLFile(cut);
        database.readFromUnimodXMLFile(folder.PathOf("missing"));
    });
    EXPECT_THAT(WithMass(database, 15.994915, 0.0), ElementsAre(""));
    EXPECT_EQ(ThrownBy([&] { Named(database, "a"); }).name, "ElementNotFound");
}

TEST(Unimod, ADocumentWithoutModificationsPrintsTheOriginsThatAreThere)
{
    const TempFolder folder;
    UnimodProbe database(folder.Write(
        "1.xml", UnimodText(Mod("a", Site("N-term", "Any N-term") + kOxidationDelta))));
    const std::string empty = folder.Write("2.xml", "<umod:unimod/>");
    const Printed printed = PrintedBy([&] { database.readFromUnimodXMLFile(empty); });
    EXPECT_EQ(printed.out, "N-term");
    EXPECT_EQ(printed.err, "");
    EXPECT_EQ(database.getNumberOfModifications(), 1u);
}

// Where the blocks of several loads lie is up to the system.
TEST(Unimod, TheFirstRecordOfANameIsThatOfTheFirstLoad)
{
    const TempFolder folder;
    const auto write = [&folder](const std::string& name, const std::string& mass, int sites) {
        std::string all = Tag("delta", "mono_mass=\"" + mass + "\" avge_mass=\"0\"");
        for (int i = 0; i < sites; ++i) {
            all = Site("M") + all;
        }
        return folder.Write(name, UnimodText(Mod("a", all)));
    };
    for (const int sites : {1, 2000}) {
        UnimodProbe database(write("0.xml", "1.5", sites));
        for (int load = 1; load < 9; ++load) {
            database.readFromUnimodXMLFile(write("1.xml", "2.5", sites));
        }
        EXPECT_EQ(database.getModification("a", "", kAnySpecificity).getDiffMonoMass(), 1.5);
        EXPECT_EQ(database.getModification("a", "M", kAnySpecificity).getDiffMonoMass(), 1.5);
    }
}

TEST(Unimod, APositionIsNotLookedAtWithoutDelta)
{
    EXPECT_THAT(RecordsOf(Mod("a", Site("M", "nowhere"))), IsEmpty());
}

TEST(Unimod, TheLoaderAppends)
{
    const TempFolder folder;
    const std::string first = folder.Write("1.xml", UnimodText(kTwoSites));
    const std::string second =
        folder.Write("2.xml", UnimodText(Mod("b", Site("K") + kOxidationDelta)));
    UnimodProbe database(first);
    const CResidueModification& before = database.getModification("full", "W", kAnySpecificity);
    const Printed printed = PrintedBy([&] {
        database.readFromUnimodXMLFile(second);
        database.readFromUnimodXMLFile(folder.PathOf("missing"));
    });
    EXPECT_EQ(printed.err, "Can not open file!\n");
    EXPECT_THAT(FullIds(Named(database, "full")),
                UnorderedElementsAre("Oxidation (M)", "Oxidation (W)", "b (K)"));
    EXPECT_THAT(WithMass(database, 15.994915, 0.0),
                ElementsAre("Oxidation (M)", "Oxidation (W)", "b (K)"));
    EXPECT_EQ(before.getFullId(), "Oxidation (W)");
    EXPECT_EQ(&database.getModification("full", "W", kAnySpecificity), &before);
    EXPECT_EQ(database.getNumberOfModifications(), 3u);
}

/// Has a loader of its own under the name of the base's.
class HidingUnimod : public UnimodProbe {
public:
    using UnimodProbe::UnimodProbe;
    void readFromUnimodXMLFile(const std::string&) {}
};

TEST(Unimod, TheLoaderIsNotVirtual)
{
    const TempFolder folder;
    const std::string path = folder.Write("u.xml", UnimodText(kTwoSites));
    HidingUnimod database(path);
    CModificationsDBUnimod& base = database;
    base.readFromUnimodXMLFile(path);
    EXPECT_EQ(database.getNumberOfModifications(), 4u);
}

// ---- The instance ---------------------------------------------------------

std::string Numbered(const CModificationsDB* database)
{
    return std::to_string(database->getNumberOfModifications());
}

/// A working folder with two records in CHEMISTRY/unimod.xml and one in
/// other.xml.
class WorkingFolder {
public:
    WorkingFolder()
    {
        std::filesystem::create_directory(folder_.PathOf("CHEMISTRY"));
        folder_.Write("CHEMISTRY/unimod.xml", UnimodText(kTwoSites));
        folder_.Write("other.xml", UnimodText(Mod("a", Site("K") + kOxidationDelta)));
        folder_.Write("bad.xml", UnimodText(Mod("a", Site("K", "x") + kOxidationDelta)));
    }
    const TempFolder& Folder() const { return folder_; }

private:
    TempFolder folder_;
};

TEST(Unimod, TheInstanceIsTheFileBelowTheWorkingFolder)
{
    const WorkingFolder work;
    const auto say = [&] {
        GoTo(work.Folder());
        return Numbered(CModificationsDBUnimod::getInstance());
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "2");
}

TEST(Unimod, AFileWhoseNameHoldsABackslashIsTheFileToo)
{
    const TempFolder folder;
    folder.Write("CHEMISTRY\\unimod.xml", UnimodText(kTwoSites));
    const auto say = [&] {
        GoTo(folder);
        return Numbered(CModificationsDBUnimod::getInstance());
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "2");
}

TEST(Unimod, B45_PathsAreIgnoredOnceThereIsAnInstance)
{
    const WorkingFolder work;
    const auto say = [&] {
        GoTo(work.Folder());
        const auto* const first = CModificationsDBUnimod::getInstance();
        const auto* const second = CModificationsDBUnimod::getInstance("other.xml");
        const auto* const third = CModificationsDBUnimod::getInstance("bad.xml");
        return Numbered(third) + (first == second && second == third ? " same" : " another");
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "2 same");
}

TEST(Unimod, ThreadsThatAskAtOnceGetOneInstance)
{
    const TempFolder folder;
    const std::string path = folder.Write("u.xml", UnimodText(Repeat(kTwoSites, 5000)));
    const auto say = [&] {
        return InstancesOfThreads([&] { return CModificationsDBUnimod::getInstance(path); });
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "1");
}

TEST(Unimod, B45_TheInstanceOfANamedPathStaysToo)
{
    const WorkingFolder work;
    const auto say = [&] {
        GoTo(work.Folder());
        const auto* const first = CModificationsDBUnimod::getInstance("other.xml");
        const auto* const second = CModificationsDBUnimod::getInstance();
        return Numbered(second) + (first == second ? " same" : " another");
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "1 same");
}

TEST(Unimod, B43_AFailureOfTheXmlKeepsTheEmptyInstance)
{
    const WorkingFolder work;
    const auto say = [&] {
        GoTo(work.Folder());
        const auto* const first = CModificationsDBUnimod::getInstance("missing.xml");
        const auto* const second = CModificationsDBUnimod::getInstance();
        return Numbered(second) + (first == second ? " same" : " another");
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, "Can not open file!\n0 same");
}

TEST(Unimod, AnInvalidPositionKeepsNoInstance)
{
    const WorkingFolder work;
    const auto say = [&] {
        GoTo(work.Folder());
        const std::string error =
            ErrorOf([] { CModificationsDBUnimod::getInstance("bad.xml"); }) + "\n";
        return error + Numbered(CModificationsDBUnimod::getInstance("other.xml"));
    };
    PELGRIN_EXPECT_IN_OWN_PROCESS(say, InvalidPosition("x") + "\n1");
}

} // namespace
} // namespace Vorlan::test
