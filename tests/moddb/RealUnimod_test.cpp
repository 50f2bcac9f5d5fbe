// The Unimod file that Debian's openms-common brings, against what was counted
// in it by other means.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "moddb/UnimodText.h"
#include "support/Random.h"

namespace Vorlan::test {
namespace {

using Modification = CResidueModification;

/// Empty when there is none.
std::string UnimodPath()
{
    return OpenMSFile("CHEMISTRY/unimod.xml");
}

/// The counts below are those of this very file.
bool IsCounted(const std::string& path)
{
    return !path.empty() && std::filesystem::file_size(path) == 2430277;
}

#define PELGRIN_NEEDS_UNIMOD()                                                                     \
    PELGRIN_NEEDS_REAL_DATA();                                                                     \
    if (!IsCounted(UnimodPath()))                                                                  \
    GTEST_SKIP() << "no real files: the Unimod file of openms-common 2.6.0 is not there"

class RealUnimod : public testing::Test {
protected:
    void SetUp() override
    {
        PELGRIN_NEEDS_UNIMOD();
        printed_ = PrintedBy([this] { database_ = std::make_unique<UnimodProbe>(UnimodPath()); });
        records_ = AllRecords(*database_);
    }

    template <typename Key>
    std::map<int, std::size_t> CountBy(Key key) const
    {
        std::map<int, std::size_t> counts;
        for (const Modification& record : records_) {
            ++counts[key(record)];
        }
        return counts;
    }

    const Modification& Get(const std::string& name, const std::string& residue = "",
                            Specificity specificity = kAnySpecificity) const
    {
        return database_->getModification(name, residue, specificity);
    }

    std::unique_ptr<UnimodProbe> database_;
    Records records_;
    Printed printed_;
};

TEST_F(RealUnimod, NumberOfRecords)
{
    EXPECT_EQ(database_->getNumberOfModifications(), 2928u);
    EXPECT_EQ(records_.size(), 2928u);
}

TEST_F(RealUnimod, TermSpecificities)
{
    const std::map<int, std::size_t> counts = {{Modification::ANYWHERE, 2600},
                                               {Modification::C_TERM, 55},
                                               {Modification::N_TERM, 155},
                                               {Modification::PROTEIN_C_TERM, 15},
                                               {Modification::PROTEIN_N_TERM, 103}};
    EXPECT_EQ(CountBy([](const Modification& m) { return m.getTermSpecificity(); }), counts);
}

// Two classifications hold a line feed, one is "Synth. pep. protect. gp.".
TEST_F(RealUnimod, Classifications)
{
    const std::map<int, std::size_t> counts = {{Modification::ARTIFACT, 163},
                                               {Modification::POSTTRANSLATIONAL, 281},
                                               {Modification::MULTIPLE, 23},
                                               {Modification::CHEMICAL_DERIVATIVE, 854},
                                               {Modification::ISOTOPIC_LABEL, 310},
                                               {Modification::PRETRANSLATIONAL, 7},
                                               {Modification::OTHER_GLYCOSYLATION, 23},
                                               {Modification::NLINKED_GLYCOSYLATION, 205},
                                               {Modification::AA_SUBSTITUTION, 360},
                                               {Modification::OTHER, 69},
                                               {Modification::NONSTANDARD_RESIDUE, 14},
                                               {Modification::COTRANSLATIONAL, 5},
                                               {Modification::OLINKED_GLYCOSYLATION, 611},
                                               {Modification::UNKNOWN, 3}};
    EXPECT_EQ(CountBy([](const Modification& m) { return m.getSourceClassification(); }), counts);
}

TEST_F(RealUnimod, NeutralLosses)
{
    const auto positive = [](const Modification& m) { return m.getNeutralLossMonoMass() > 0.0; };
    EXPECT_EQ(std::count_if(records_.begin(), records_.end(), positive), 855);
    for (const Modification& record : records_) {
        EXPECT_EQ(positive(record), record.getNeutralLossAverageMass() > 0.0) << Dump(record);
    }
}

TEST_F(RealUnimod, B41_EveryArrowIsOne)
{
    std::map<std::string, std::string> titles;
    std::map<std::string, std::string> fullNames;
    for (const Modification& record : records_) {
        titles[record.getUniModAccession()] = record.getId();
        fullNames[record.getUniModAccession()] = record.getFullName();
    }
    EXPECT_EQ(titles.size(), 1505u);
    std::size_t arrows = 0;
    std::size_t ampersands = 0;
    for (const auto& names : {titles, fullNames}) {
        for (const auto& [accession, name] : names) {
            arrows += name.find("->") != std::string::npos ? 1 : 0;
            ampersands += name.find("&amp;") != std::string::npos ? 1 : 0;
            EXPECT_EQ(name.find("-&gt;"), std::string::npos) << name;
        }
    }
    EXPECT_EQ(arrows, 724u + 2u) << "two titles hold it unescaped";
    EXPECT_EQ(ampersands, 14u) << "they stay as they are";
}

TEST_F(RealUnimod, B42_OriginsOfTheTerminalRecords)
{
    std::string origins;
    for (const Modification& record : records_) {
        if (record.getTermSpecificity() != Modification::ANYWHERE) {
            origins += record.getOrigin();
        }
    }
    EXPECT_EQ(printed_.out, origins);
    EXPECT_EQ(printed_.out.size(), (227u + 60u) * 6u + 41u) << "N-term, C-term, single residues";
    EXPECT_EQ(printed_.err, "");
}

TEST_F(RealUnimod, WellKnownRecords)
{
    EXPECT_EQ(Dump(Get("Phospho", "S"), "%.9g"),
              "Phospho|Phospho (S)|UniMod:21|Phosphorylation|0|S|3|79.9799|79.966331|97.976896|"
              "97.9952");
    EXPECT_EQ(Dump(Get("UniMod:35", "M"), "%.9g"),
              "Oxidation|Oxidation (M)|UniMod:35|Oxidation or Hydroxylation|0|M|0|15.9994|"
              "15.994915|63.998285|64.1069");
    EXPECT_EQ(Get("Carbamidomethyl (C)").getDiffMonoMass(), 57.021464);
    EXPECT_EQ(Get("Acetyl (Protein N-term)").getDiffMonoMass(), 42.010565);
    EXPECT_EQ(Get("Gln->pyro-Glu", "Q").getFullId(), "Gln->pyro-Glu (Any N-term Q)");
    EXPECT_EQ(Get("Acetyl", "N-term", Modification::PROTEIN_N_TERM).getFullId(),
              "Acetyl (Protein N-term)");
    EXPECT_EQ(Get("GG", "K").getUniModAccession(), "UniMod:121");
}

TEST_F(RealUnimod, EveryRecordIsFoundUnderItsFourNames)
{
    for (const Modification& record : records_) {
        for (const std::string& name : {record.getFullId(), record.getId(), record.getFullName(),
                                        record.getUniModAccession()}) {
            const Records found =
                Named(*database_, name, record.getOrigin(), record.getTermSpecificity());
            ASSERT_NE(std::find(found.begin(), found.end(), record), found.end()) << name;
        }
    }
}

/// Rounded as the dump writes it.
double SixDecimals(double mass)
{
    const CLocale plain;
    return std::strtod(MassText(mass, "%.6f").c_str(), nullptr);
}

TEST_F(RealUnimod, TheDumpReadsBackThroughTheDefaultTable)
{
    class DefaultProbe : public CModificationsDBCalvexDefault {
    public:
        explicit DefaultProbe(const std::string& path) : CModificationsDBCalvexDefault(path) {}
    };
    const TempFolder folder;
    database_->writeToFile(folder.PathOf("unimod.txt"));
    const Records back = AllRecords(DefaultProbe(folder.PathOf("unimod.txt")));
    ASSERT_EQ(back.size(), records_.size());
    for (std::size_t i = 0; i < back.size(); ++i) {
        Modification expected = records_[i];
        expected.setDiffMonoMass(SixDecimals(expected.getDiffMonoMass()));
        expected.setDiffAverageMass(SixDecimals(expected.getDiffAverageMass()));
        expected.setNeutralLossMonoMass(SixDecimals(expected.getNeutralLossMonoMass()));
        expected.setNeutralLossAverageMass(SixDecimals(expected.getNeutralLossAverageMass()));
        ASSERT_TRUE(back[i] == expected) << Dump(back[i]) << " for " << Dump(expected);
    }
}

TEST_F(RealUnimod, QuestionsByMassAgreeWithAWalk)
{
    Random random(47);
    const std::vector<std::string> residues = {"", "", "S", "K", "M", "N-term", "C-term", "B"};
    std::size_t found = 0;
    for (int round = 0; round < 4000; ++round) {
        const double mass = random.OneIn(2)
                                ? records_[random.Below(records_.size())].getDiffMonoMass()
                                : random.Between(-200.0, 600.0);
        const double error = random.OneIn(4) ? 0.0 : std::pow(10.0, random.Between(-6.0, 2.0));
        const std::string& residue = residues[random.Below(residues.size())];
        const auto specificity = static_cast<Specificity>(random.Below(6));
        std::vector<std::string> expected;
        for (const Modification& record : records_) {
            if (std::abs(record.getDiffMonoMass() - mass) <= error
                && (residue.empty() || residue == record.getOrigin())
                && (specificity == kAnySpecificity || specificity == record.getTermSpecificity())) {
                expected.push_back(record.getFullId());
            }
        }
        ASSERT_EQ(WithMass(*database_, mass, error, residue, specificity), expected);
        found += expected.size();
    }
    EXPECT_GT(found, 10000u);
}

} // namespace
} // namespace Vorlan::test
