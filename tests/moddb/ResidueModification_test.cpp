// The record: fields, equality, names of specificities and classifications.
#include <clocale>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "moddb/ModificationText.h"

namespace Vorlan::test {
namespace {

using Modification = CResidueModification;
using Classification = CResidueModification::SourceClassification;

const std::vector<std::string> kTermNames = {"Anywhere", "Any C-term", "Any N-term",
                                             "Protein C-term", "Protein N-term"};

struct ClassificationRow {
    Classification value;
    std::string display;
    std::string dump;
};

const std::vector<ClassificationRow> kClassifications = {
    {Modification::ARTIFACT, "Artefact", "artifact"},
    {Modification::HYPOTHETICAL, "Hypothetical", "hypothetical"},
    {Modification::NATURAL, "Natural", "natural"},
    {Modification::POSTTRANSLATIONAL, "Post-translational", "post-translational"},
    {Modification::MULTIPLE, "Multiple", "multiple"},
    {Modification::CHEMICAL_DERIVATIVE, "Chemical derivative", "chemical derivative"},
    {Modification::ISOTOPIC_LABEL, "Isotopic label", "isotopic label"},
    {Modification::PRETRANSLATIONAL, "Pre-translational", "pre-translational"},
    {Modification::OTHER_GLYCOSYLATION, "Other glycosylation", "other glycosylation"},
    {Modification::NLINKED_GLYCOSYLATION, "N-linked glycosylation", "n-linked glycosylation"},
    {Modification::AA_SUBSTITUTION, "AA substitution", "aa substitution"},
    {Modification::OTHER, "Other", "other"},
    {Modification::NONSTANDARD_RESIDUE, "Non-standard residue", "non-standard residue"},
    {Modification::COTRANSLATIONAL, "Co-translational", "co-translational"},
    {Modification::OLINKED_GLYCOSYLATION, "O-linked glycosylation", "o-linked glycosylation"},
    {Modification::UNKNOWN, "", "-"},
};

Classification ClassificationOf(const std::string& text)
{
    Modification record;
    record.setSourceClassification(Modification::MULTIPLE);
    record.setSourceClassification(OpenMS::String(text));
    return record.getSourceClassification();
}

std::string BadTermName(Specificity value, Specificity own = Modification::ANYWHERE)
{
    Modification record;
    record.setTermSpecificity(own);
    return ErrorOf([&] { record.getTermSpecificityName(value); });
}

const std::string kNoTermName =
    Error("InvalidValue", 177, "CResidueModification::getTermSpecificityName",
          InvalidValueText("", "Invalid term specificity"));

/// One change of a field for each of the eleven.
const std::vector<std::function<void(Modification&)>> kChanges = {
    [](Modification& m) { m.setId("other"); },
    [](Modification& m) { m.setFullId("other"); },
    [](Modification& m) { m.setUniModAccession("other"); },
    [](Modification& m) { m.setFullName("other"); },
    [](Modification& m) { m.setTermSpecificity(Modification::N_TERM); },
    [](Modification& m) { m.setOrigin("other"); },
    [](Modification& m) { m.setSourceClassification(Modification::OTHER); },
    [](Modification& m) { m.setDiffAverageMass(1.5); },
    [](Modification& m) { m.setDiffMonoMass(2.5); },
    [](Modification& m) { m.setNeutralLossMonoMass(3.5); },
    [](Modification& m) { m.setNeutralLossAverageMass(4.5); },
};

TEST(ResidueModification, EnumeratorsHaveTheirNumbers)
{
    EXPECT_EQ(Modification::ANYWHERE, 0);
    EXPECT_EQ(Modification::C_TERM, 1);
    EXPECT_EQ(Modification::N_TERM, 2);
    EXPECT_EQ(Modification::PROTEIN_C_TERM, 3);
    EXPECT_EQ(Modification::PROTEIN_N_TERM, 4);
    EXPECT_EQ(Modification::NUMBER_OF_TERM_SPECIFICITY, 5);
    for (std::size_t i = 0; i < kClassifications.size(); ++i) {
        EXPECT_EQ(kClassifications[i].value, static_cast<int>(i));
    }
    EXPECT_EQ(Modification::NUMBER_OF_SOURCE_CLASSIFICATIONS, 16);
}

TEST(ResidueModification, ANewOneIsEmpty)
{
    EXPECT_EQ(Dump(Modification()), "||||0||0|0|0|0|0");
    EXPECT_TRUE(std::has_virtual_destructor_v<Modification>);
}

TEST(ResidueModification, EveryFieldIsSetAndTold)
{
    Modification record;
    for (const auto& change : kChanges) {
        change(record);
    }
    EXPECT_EQ(Dump(record), "other|other|other|other|2|other|11|1.5|2.5|3.5|4.5");
}

TEST(ResidueModification, EachSetterChangesItsFieldOnly)
{
    const std::vector<std::string> texts = {
        "other||||0||0|0|0|0|0", "|other|||0||0|0|0|0|0", "||other||0||0|0|0|0|0",
        "|||other|0||0|0|0|0|0", "||||2||0|0|0|0|0",      "||||0|other|0|0|0|0|0",
        "||||0||11|0|0|0|0",     "||||0||0|1.5|0|0|0",    "||||0||0|0|2.5|0|0",
        "||||0||0|0|0|3.5|0",    "||||0||0|0|0|0|4.5",
    };
    ASSERT_EQ(texts.size(), kChanges.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        Modification record;
        kChanges[i](record);
        EXPECT_EQ(Dump(record), texts[i]);
    }
}

TEST(ResidueModification, CopiesCopyEveryField)
{
    Modification record;
    for (const auto& change : kChanges) {
        change(record);
    }
    const Modification copy(record);
    Modification assigned;
    assigned = record;
    EXPECT_EQ(Dump(copy), Dump(record));
    EXPECT_EQ(Dump(assigned), Dump(record));
    EXPECT_TRUE(copy == record);
    EXPECT_FALSE(copy != record);
}

TEST(ResidueModification, EqualityLooksAtAllElevenFields)
{
    for (std::size_t i = 0; i < kChanges.size(); ++i) {
        Modification record;
        kChanges[i](record);
        EXPECT_FALSE(record == Modification()) << i;
        EXPECT_TRUE(record != Modification()) << i;
    }
}

TEST(ResidueModification, EqualityOfMassesIsExact)
{
    Modification a;
    Modification b;
    a.setDiffMonoMass(0.1 + 0.2);
    b.setDiffMonoMass(0.3);
    EXPECT_TRUE(a != b) << "they differ in the last bit";
    a.setDiffMonoMass(0.0);
    b.setDiffMonoMass(-0.0);
    EXPECT_TRUE(a == b);
    a.setDiffMonoMass(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(a != a) << "as doubles compare";
    EXPECT_FALSE(a == a);
}

TEST(ResidueModification, TextsKeepEveryByte)
{
    const std::string bytes("a\0\t\xFF\n", 5);
    Modification record;
    record.setOrigin(bytes);
    EXPECT_EQ(record.getOrigin(), bytes);
    Modification shorter;
    shorter.setOrigin("a");
    EXPECT_TRUE(record != shorter);
}

TEST(ResidueModification, TermSpecificityByName)
{
    for (std::size_t i = 0; i < kTermNames.size(); ++i) {
        Modification record;
        record.setTermSpecificity(Modification::NUMBER_OF_TERM_SPECIFICITY);
        record.setTermSpecificity(kTermNames[i]);
        EXPECT_EQ(record.getTermSpecificity(), static_cast<int>(i));
    }
}

TEST(ResidueModification, OtherTermNamesAreInvalidAndChangeNothing)
{
    for (const std::string name :
         {"any c-term", "ANYWHERE", "anywhere", "", " Anywhere", "Anywhere ", "Anywher",
          "Any C-Term", "C-term", "N-term", "Protein  N-term", "Any"}) {
        Modification record;
        record.setTermSpecificity(Modification::PROTEIN_C_TERM);
        EXPECT_EQ(ErrorOf([&] { record.setTermSpecificity(name); }), InvalidPosition(name));
        EXPECT_EQ(record.getTermSpecificity(), Modification::PROTEIN_C_TERM) << name;
    }
}

TEST(ResidueModification, ATermNameWithANulIsInvalid)
{
    Modification record;
    const std::string name("Anywhere\0", 9);
    EXPECT_EQ(ThrownBy([&] { record.setTermSpecificity(name); }).name, "InvalidValue");
}

TEST(ResidueModification, NamesOfTermSpecificities)
{
    Modification record;
    record.setTermSpecificity(Modification::N_TERM);
    for (std::size_t i = 0; i < kTermNames.size(); ++i) {
        EXPECT_EQ(record.getTermSpecificityName(static_cast<Specificity>(i)), kTermNames[i]);
    }
}

TEST(ResidueModification, TheSpecificityAnyAsksForTheNameOfTheRecordsOwn)
{
    for (std::size_t i = 0; i < kTermNames.size(); ++i) {
        Modification record;
        record.setTermSpecificity(static_cast<Specificity>(i));
        EXPECT_EQ(record.getTermSpecificityName(kAnySpecificity), kTermNames[i]);
    }
}

TEST(ResidueModification, SpecificitiesWithoutNameAreInvalid)
{
    for (const int value :
         {6, 7, 255, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(BadTermName(static_cast<Specificity>(value)), kNoTermName) << value;
        EXPECT_EQ(BadTermName(kAnySpecificity, static_cast<Specificity>(value)), kNoTermName)
            << "the record's own: " << value;
    }
}

TEST(ResidueModification, ARecordOfSpecificityAnyHasNoName)
{
    EXPECT_EQ(BadTermName(kAnySpecificity, kAnySpecificity), kNoTermName);
}

TEST(ResidueModification, B38_ClassificationsHaveADisplayNameAndATextOfTheDump)
{
    for (const ClassificationRow& row : kClassifications) {
        EXPECT_EQ(Modification().getSourceClassificationName(row.value), row.display);
        EXPECT_EQ(ClassificationOf(row.dump), row.value) << row.dump;
        OwnDatabase database;
        Modification record = MakeRecord("a", "M");
        record.setSourceClassification(row.value);
        database.Add({record});
        EXPECT_THAT(DumpFileOf(database), testing::HasSubstr("\tM\t" + row.dump + "\t0.000000\t"));
    }
}

TEST(ResidueModification, B38_BothSpellingsOfArtifactAreTaken)
{
    for (const char* const text :
         {"Artefact", "ARTIFACT", "artefact", "artifact", "ARTEFACT", "aRtIfAcT"}) {
        EXPECT_EQ(ClassificationOf(text), Modification::ARTIFACT) << text;
    }
}

TEST(ResidueModification, B38_TheUnknownClassificationIsNothingOnDisplay)
{
    EXPECT_EQ(ClassificationOf("glycosylation"), Modification::UNKNOWN);
    EXPECT_EQ(Modification().getSourceClassificationName(Modification::UNKNOWN), "");
}

TEST(ResidueModification, DisplayNamesAreTakenInAnyLetterCase)
{
    for (const ClassificationRow& row : kClassifications) {
        EXPECT_EQ(ClassificationOf(row.display), row.value) << row.display;
        OpenMS::String upper = row.display;
        EXPECT_EQ(ClassificationOf(upper.toUpper()), row.value) << upper;
    }
}

TEST(ResidueModification, EveryOtherTextIsTheUnknownClassification)
{
    for (const char* const text :
         {"", "-", " natural", "natural ", "Chemical\nderivative", "posttranslational", "16",
          "Unknown", "NUMBER_OF_SOURCE_CLASSIFICATIONS", "Synth. pep. protect. gp.", "\xFF"}) {
        EXPECT_EQ(ClassificationOf(text), Modification::UNKNOWN) << text;
    }
}

TEST(ResidueModification, SixteenAsksForTheNameOfTheRecordsOwnClassification)
{
    for (const ClassificationRow& row : kClassifications) {
        Modification record;
        record.setSourceClassification(row.value);
        EXPECT_EQ(
            record.getSourceClassificationName(Modification::NUMBER_OF_SOURCE_CLASSIFICATIONS),
            row.display);
    }
}

TEST(ResidueModification, B38_ClassificationsWithoutNameAreUnknown)
{
    for (const int value : {16, 17, 255, -1, std::numeric_limits<int>::max()}) {
        Modification record;
        record.setSourceClassification(static_cast<Classification>(value));
        EXPECT_EQ(
            record.getSourceClassificationName(Modification::NUMBER_OF_SOURCE_CLASSIFICATIONS),
            "Unknown")
            << value;
    }
    EXPECT_EQ(Modification().getSourceClassificationName(static_cast<Classification>(17)),
              "Unknown");
}

TEST(ResidueModification, ALocaleWithOtherLettersChangesNothing)
{
    const char* const set = std::setlocale(LC_CTYPE, "tr_TR.UTF-8");
    const Classification label = ClassificationOf("ISOTOPIC LABEL");
    const Classification artifact = ClassificationOf("ARTIFACT");
    std::setlocale(LC_CTYPE, "C");
    if (set == nullptr) {
        GTEST_SKIP() << "the locale tr_TR.UTF-8 is not installed";
    }
    EXPECT_EQ(label, Modification::ISOTOPIC_LABEL);
    EXPECT_EQ(artifact, Modification::ARTIFACT);
}

} // namespace
} // namespace Vorlan::test
