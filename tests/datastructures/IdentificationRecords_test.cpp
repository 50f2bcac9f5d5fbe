// The small records: modifications, evidences, sources, proteins, annotation.
#include <cmath>

#include "DataStructures.h"
#include "datastructures/FieldNames.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using Texts = std::vector<OpenMS::String>;

// ---- IdentModification -----------------------------------------------------

void ExpectDefaults(const IdentModification& mod)
{
    EXPECT_EQ(mod.strName, "");
    EXPECT_EQ(mod.dMass, 0.0);
    EXPECT_EQ(mod.strSite, "");
    EXPECT_EQ(mod.strPosition, "Anywhere");
    EXPECT_EQ(mod.nPos, 0);
}

TEST(IdentModification, FreshOneIsAnywhere)
{
    ExpectDefaults(IdentModification());
}

TEST(IdentModification, ConstructorTakesTheFieldsInOrder)
{
    const IdentModification mod("Oxidation", 15.5, "M", "no term at all", -3);
    EXPECT_EQ(mod.strName, "Oxidation");
    EXPECT_EQ(mod.dMass, 15.5);
    EXPECT_EQ(mod.strSite, "M");
    EXPECT_EQ(mod.strPosition, "no term at all");
    EXPECT_EQ(mod.nPos, -3);
}

TEST(IdentModification, ClearSetsEveryFieldBack)
{
    IdentModification mod("Oxidation", 15.5, "M", "N-term", 3);
    mod.Clear();
    ExpectDefaults(mod);
    EXPECT_EQ(mod, IdentModification());
}

struct EqualCase {
    const char* reason;
    IdentModification other;
    bool isEqual;
};

const IdentModification kMod("Oxidation", 0.3, "M", "Anywhere", 3);

const EqualCase kEqualCases[] = {
    {"all fields equal", {"Oxidation", 0.3, "M", "Anywhere", 3}, true},
    {"another name", {"oxidation", 0.3, "M", "Anywhere", 3}, false},
    {"a longer name", {std::string("Oxidation\0", 10), 0.3, "M", "Anywhere", 3}, false},
    {"another mass in its last bit", {"Oxidation", 0.1 + 0.2, "M", "Anywhere", 3}, false},
    {"another site", {"Oxidation", 0.3, "W", "Anywhere", 3}, false},
    {"another term", {"Oxidation", 0.3, "M", "N-term", 3}, false},
    {"another place", {"Oxidation", 0.3, "M", "Anywhere", 4}, false},
    {"not a number", {"Oxidation", std::nan(""), "M", "Anywhere", 3}, false},
};

TEST(IdentModification, EqualityLooksAtAllFiveFields)
{
    for (const EqualCase& c : kEqualCases) {
        EXPECT_EQ(kMod == c.other, c.isEqual) << c.reason;
        EXPECT_EQ(c.other == kMod, c.isEqual) << c.reason;
        EXPECT_EQ(kMod != c.other, !c.isEqual) << c.reason;
    }
}

TEST(IdentModification, MassThatIsNoNumberEqualsNotEvenItself)
{
    const IdentModification mod("a", std::nan(""), "M", "Anywhere", 3);
    const IdentModification copy = mod;
    EXPECT_FALSE(mod == copy);
    EXPECT_TRUE(mod != copy);
}

TEST(IdentModification, CopyAndMoveCarryEveryField)
{
    IdentModification mod = kMod;
    EXPECT_EQ(mod, kMod);
    const IdentModification moved = std::move(mod);
    EXPECT_EQ(moved, kMod);
    IdentModification assigned;
    assigned = moved;
    EXPECT_EQ(assigned, kMod);
}

// ---- PeptideEvidence -------------------------------------------------------

TEST(PeptideEvidence, FreshOneKnowsNothing)
{
    const PeptideEvidence evidence;
    EXPECT_EQ(evidence.strProteinAccession, "");
    EXPECT_EQ(evidence.nStart, -1);
    EXPECT_EQ(evidence.cBefore, 'X');
    EXPECT_EQ(evidence.cAfter, 'X');
}

TEST(PeptideEvidence, B03_EndPositionIsDropped)
{
    const PeptideEvidence evidence("P12345", 10, 25, 'K', 'A');
    EXPECT_EQ(evidence.strProteinAccession, "P12345");
    EXPECT_EQ(evidence.nStart, 10);
    EXPECT_EQ(evidence.cBefore, 'K');
    EXPECT_EQ(evidence.cAfter, 'A');
    // No field differs when only the end does.
    const PeptideEvidence other("P12345", 10, 99, 'K', 'A');
    EXPECT_EQ(other.nStart, evidence.nStart);
    EXPECT_EQ(other.cBefore, evidence.cBefore);
    EXPECT_EQ(other.cAfter, evidence.cAfter);
}

// ---- Sources ---------------------------------------------------------------

TEST(PepIdentSource, FreshOneIsEmpty)
{
    const PepIdentSource source;
    EXPECT_EQ(source.strFirst, "");
    EXPECT_EQ(source.strSecond, "");
    EXPECT_EQ(source.strThird, "");
    EXPECT_EQ(source.strFourth, "");
    EXPECT_TRUE(source.vFirstList.empty());
    EXPECT_TRUE(source.vSecondList.empty());
    EXPECT_EQ(source.eType, PepIdentType::Unknown);
}

TEST(PepIdentSource, FourTextsGoToTheFieldsTheyAreNamedFor)
{
    const PepIdentSource source("1", "2", "3", "4", PepIdentType::MaxQuant);
    EXPECT_EQ(source.strFirst, "1");
    EXPECT_EQ(source.strSecond, "2");
    EXPECT_EQ(source.strThird, "3");
    EXPECT_EQ(source.strFourth, "4");
    EXPECT_TRUE(source.vFirstList.empty());
    EXPECT_TRUE(source.vSecondList.empty());
    EXPECT_EQ(source.eType, PepIdentType::MaxQuant);
}

TEST(PepIdentSource, TwoTextsAreFolderAndFile)
{
    const PepIdentSource source("data\\", "result.txt", PepIdentType::CalvexTxt);
    EXPECT_EQ(FolderOf(source), "data\\");
    EXPECT_EQ(FileNameOf(source), "result.txt");
    EXPECT_EQ(source.strThird, "");
    EXPECT_EQ(source.strFourth, "");
    EXPECT_TRUE(source.vFirstList.empty());
    EXPECT_TRUE(source.vSecondList.empty());
    EXPECT_EQ(source.eType, PepIdentType::CalvexTxt);
}

TEST(PepIdentSource, ListsAreTakenWhole)
{
    const PepIdentSource source("1", "2", Texts{"a", "b"}, Texts{"c"}, PepIdentType::MsgfTsv);
    EXPECT_EQ(source.strFirst, "1");
    EXPECT_EQ(source.strSecond, "2");
    EXPECT_EQ(source.strThird, "");
    EXPECT_EQ(source.strFourth, "");
    EXPECT_EQ(source.vFirstList, (Texts{"a", "b"}));
    EXPECT_EQ(source.vSecondList, Texts{"c"});
    EXPECT_EQ(source.eType, PepIdentType::MsgfTsv);
    const PepIdentSource copy = source;
    EXPECT_EQ(copy.vFirstList, source.vFirstList);
    EXPECT_EQ(copy.eType, source.eType);
}

TEST(DatasetSource, FreshOneIsEmpty)
{
    const DatasetSource source;
    EXPECT_EQ(source.strFirst, "");
    EXPECT_EQ(source.strSecond, "");
    EXPECT_EQ(source.eType, DatasetType::Unknown);
}

TEST(DatasetSource, HasFolderNameAndType)
{
    DatasetSource source("data\\", "run01.mgf", DatasetType::Mgf);
    const DatasetSource copy = source;
    EXPECT_EQ(FolderOf(copy), "data\\");
    EXPECT_EQ(DatasetNameOf(copy), "run01.mgf");
    EXPECT_EQ(copy.eType, DatasetType::Mgf);
    FolderOf(source) = "other\\";
    EXPECT_EQ(source.strFirst, "other\\");
}

// ---- DeltaMass, AnnoResult -------------------------------------------------

TEST(DeltaMass, FreshOneIsEmpty)
{
    const DeltaMass delta;
    EXPECT_TRUE(delta.vValues.empty());
    EXPECT_EQ(delta.dDeltaMass, 0.0);
    EXPECT_EQ(delta.dValue1, 0.0);
    EXPECT_EQ(delta.dValue2, 0.0);
    EXPECT_EQ(delta.dValue3, 0.0);
    EXPECT_EQ(delta.dValue4, 0.0);
    EXPECT_EQ(delta.strName, "");
    EXPECT_TRUE(delta.mapValues.empty());
}

TEST(DeltaMass, SetterSetsTheMassOnly)
{
    DeltaMass delta;
    delta.setDeltaMass(79.966331);
    EXPECT_EQ(delta.dDeltaMass, 79.966331);
    EXPECT_EQ(delta.dValue1, 0.0);
    EXPECT_EQ(delta.dValue4, 0.0);
    EXPECT_TRUE(delta.vValues.empty());
}

TEST(DeltaMass, CopiesOwnTheirLists)
{
    DeltaMass delta;
    delta.vValues = {1.0, 2.0};
    delta.strName = "Phospho";
    delta.mapValues["S"] = 0.5;
    DeltaMass copy = delta;
    copy.mapValues["S"] = 0.75;
    copy.vValues.push_back(3.0);
    EXPECT_EQ(copy.strName, "Phospho");
    EXPECT_EQ(delta.mapValues["S"], 0.5);
    EXPECT_EQ(delta.vValues.size(), 2U);
}

TEST(AnnoResult, FreshOneIsEmptyAndCopiesAreEqual)
{
    AnnoResult result;
    EXPECT_EQ(result.dValue1, 0.0);
    EXPECT_TRUE(result.vFirst.empty());
    EXPECT_TRUE(result.vSecond.empty());
    EXPECT_TRUE(result.vThird.empty());
    EXPECT_EQ(result.dValue2, 0.0);
    result.dValue1 = 1.0;
    result.vFirst = {2.0};
    result.vSecond = {3.0};
    result.vThird = {4.0};
    result.dValue2 = 5.0;
    const AnnoResult copy = result;
    EXPECT_EQ(copy.dValue1, 1.0);
    EXPECT_EQ(copy.vFirst, std::vector<double>{2.0});
    EXPECT_EQ(copy.vSecond, std::vector<double>{3.0});
    EXPECT_EQ(copy.vThird, std::vector<double>{4.0});
    EXPECT_EQ(copy.dValue2, 5.0);
}

// ---- Proteins --------------------------------------------------------------

TEST(CProtein, HoldsAccessionDescriptionAndSequence)
{
    const CProtein fresh;
    EXPECT_EQ(fresh.strAccession, "");
    EXPECT_EQ(fresh.strDescription, "");
    EXPECT_EQ(fresh.strSequence, "");
    const CProtein protein("P12345", "a protein", "MKV");
    CProtein copy;
    copy = protein;
    EXPECT_EQ(copy.strAccession, "P12345");
    EXPECT_EQ(copy.strDescription, "a protein");
    EXPECT_EQ(copy.strSequence, "MKV");
}

TEST(InferProtein, IsAProteinWithAValue)
{
    InferProtein protein("P12345", "a protein", "MKV");
    EXPECT_EQ(protein.dValue, 0.0);
    EXPECT_EQ(InferProtein().dValue, 0.0);
    protein.dValue = 0.5;
    const InferProtein copy = protein;
    EXPECT_EQ(copy.dValue, 0.5);
    EXPECT_EQ(copy.strSequence, "MKV");
    const CProtein& base = copy;
    EXPECT_EQ(base.strDescription, "a protein");
}

} // namespace
} // namespace Vorlan
