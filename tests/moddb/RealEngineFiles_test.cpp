// Modification files that search engines brought, against what was counted in
// them by other means.
#include <map>
#include <set>
#include <string>

#include "moddb/MSFraggerModifications.h"
#include "moddb/ModificationText.h"
#include "moddb/PFind3Modifications.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

std::string PFind3Path()
{
    return RealDataFolder() + "/pfind3/modification.ini";
}

Records PFind3Records()
{
    return RecordsBy([](Records& records) { ReadPFind3Modifications(PFind3Path(), records); });
}

std::string MSFraggerPath()
{
    return RealDataFolder() + "/msfragger/params/closed_fragger.params";
}

TEST(RealEngineFiles, RecordsOfPFind3)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Records records = PFind3Records();
    ASSERT_EQ(records.size(), 1616u);
    std::set<std::string> ids;
    std::map<int, int> specificities;
    std::map<std::string, int> termini;
    for (const CResidueModification& record : records) {
        ids.insert(record.getId());
        ++specificities[record.getTermSpecificity()];
        if (record.getOrigin().size() > 1) {
            ++termini[record.getOrigin()];
        }
        EXPECT_EQ(record.getSourceClassification(), CResidueModification::UNKNOWN);
        EXPECT_EQ(record.getFullId().substr(0, record.getId().size() + 1), record.getId() + "[");
    }
    EXPECT_EQ(ids.size(), 971u);
    const std::map<int, int> counted = {{0, 1395}, {1, 31}, {2, 114}, {3, 14}, {4, 62}};
    EXPECT_EQ(specificities, counted);
    const std::map<std::string, int> ends = {{"C-term", 35}, {"N-term", 154}};
    EXPECT_EQ(termini, ends) << "every other record has one letter";
}

TEST(RealEngineFiles, SomeRecordsOfPFind3)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Records records = PFind3Records();
    ASSERT_EQ(records.size(), 1616u);
    EXPECT_EQ(Dump(records.front(), "%.9g"),
              "2-dimethylsuccinyl|2-dimethylsuccinyl[C]|||0|C|15|0|144.042259|0|0");
    EXPECT_EQ(Dump(records[7], "%.9g"), "3sulfo|3sulfo[AnyN-term]|||2|N-term|15|0|183.983029|0|0");
    EXPECT_EQ(Dump(records.back(), "%.9g"),
              "TMTPro|TMTPro[ProteinN-term]|||4|N-term|15|0|304.207146|0|0");
}

TEST(RealEngineFiles, B47_TheDatabaseOfPFind3KnowsIdsOnly)
{
    PELGRIN_NEEDS_REAL_DATA();
    const CModificationsDBEnginePFind3 database(PFind3Path());
    EXPECT_EQ(database.getNumberOfModifications(), 1616u);
    EXPECT_EQ(Named(database, "Phospho").size(), 8u);
    const CResidueModification& phospho = database.getModification("Phospho", "S", kAnySpecificity);
    EXPECT_EQ(Dump(phospho, "%.9g"), "Phospho|Phospho[S]|||0|S|15|0|79.966331|0|0");
    EXPECT_EQ(ThrownBy([&] { Named(database, "Phospho[S]"); }).name, "ElementNotFound");
}

TEST(RealEngineFiles, RecordsOfMSFragger)
{
    PELGRIN_NEEDS_REAL_DATA();
    // All other residues and termini of the file have masses of zero.
    EXPECT_THAT(Dump(ReadMSFraggerModifications(MSFraggerPath()), "%.9g"),
                ElementsAre("15.9949|15.9949 (M)|||0|M|15|0|15.9949|0|0",
                            "42.0106|42.0106 (Protein N-term)|||4|N-term|15|0|42.0106|0|0",
                            "57.02146|57.02146 (C)|||0|C|15|0|57.02146|0|0"));
}

TEST(RealEngineFiles, TheDatabaseOfMSFragger)
{
    PELGRIN_NEEDS_REAL_DATA();
    const CModificationsDBEngineMSFragger database(MSFraggerPath());
    EXPECT_EQ(database.getNumberOfModifications(), 3u);
    EXPECT_THAT(FullIds(Named(database, "57.02146", "C")), ElementsAre("57.02146 (C)"));
}

} // namespace
} // namespace Vorlan::test
