#include "run/Fragments.h"

#include <algorithm>

#include <OpenMS/CHEMISTRY/AASequence.h>
#include <OpenMS/CHEMISTRY/Residue.h>
#include <OpenMS/CONCEPT/Constants.h>

#include "support/Support.h"

namespace pelgrin {
namespace {

using Vorlan::Peak;

PeptideMasses MassesOfLetters(const std::string& sequence)
{
    PeptideMasses peptide;
    for (const char letter : sequence) {
        peptide.residues.push_back(ResidueMass(letter).value());
    }
    return peptide;
}

std::vector<double> SortedMz(const std::vector<Fragment>& fragments)
{
    std::vector<double> values;
    for (const Fragment& fragment : fragments) {
        values.push_back(fragment.mz);
    }
    std::sort(values.begin(), values.end());
    return values;
}

/// The ions of one series by OpenMS: prefixes or suffixes of its sequences.
/// (Its spectrum generator gives the same, but its header needs Qt.)
std::vector<double> OpenMSMz(const std::string& text, Peak::EIonType ion, int maxCharge)
{
    using OpenMS::Residue;
    static const Residue::ResidueType types[] = {Residue::AIon, Residue::BIon, Residue::CIon,
                                                 Residue::XIon, Residue::YIon, Residue::ZIon};
    const OpenMS::AASequence sequence = OpenMS::AASequence::fromString(text);
    std::vector<double> values;
    for (OpenMS::Size index = 1; index < sequence.size(); ++index) {
        const OpenMS::AASequence part =
            ion <= Peak::C_ION ? sequence.getPrefix(index) : sequence.getSuffix(index);
        for (int charge = 1; charge <= maxCharge; ++charge) {
            values.push_back(part.getMonoWeight(types[ion - 1], charge) / charge);
        }
    }
    std::sort(values.begin(), values.end());
    return values;
}

FragmentPlan PlanWith(std::vector<Peak::EIonType> ions, int maxCharge)
{
    FragmentPlan plan;
    plan.ions = std::move(ions);
    plan.maxCharge = maxCharge;
    return plan;
}

TEST(FragmentsOf, AgreesWithOpenMSForEverySeries)
{
    for (const std::string sequence : {"PEPTIDEK", "GASPVTCLINDQKEMHFRYW", "UO"}) {
        for (const Peak::EIonType ion :
             {Peak::A_ION, Peak::B_ION, Peak::C_ION, Peak::X_ION, Peak::Y_ION, Peak::Z_ION}) {
            const auto ours = SortedMz(FragmentsOf(MassesOfLetters(sequence), PlanWith({ion}, 3)));
            EXPECT_THAT(ours,
                        testing::Pointwise(testing::DoubleNear(1e-7), OpenMSMz(sequence, ion, 3)));
        }
    }
}

TEST(FragmentsOf, AgreesWithOpenMSForModifiedResidues)
{
    PeptideMasses peptide = MassesOfLetters("AMKCR");
    peptide.residues[1] += 15.994915;
    peptide.residues[3] += 57.021464;
    for (const Peak::EIonType ion : {Peak::B_ION, Peak::Y_ION}) {
        EXPECT_THAT(SortedMz(FragmentsOf(peptide, PlanWith({ion}, 2))),
                    testing::Pointwise(testing::DoubleNear(1e-5),
                                       OpenMSMz("AM(Oxidation)KC(Carbamidomethyl)R", ion, 2)));
    }
}

TEST(FragmentMz, OtherSeriesLieAtTheirKnownDistances)
{
    const double b = FragmentMz(Peak::B_ION, 500.0, 1);
    EXPECT_DOUBLE_EQ(b, 500.0 + OpenMS::Constants::PROTON_MASS_U);
    EXPECT_NEAR(FragmentMz(Peak::A_ION, 500.0, 1) - b, -27.994915, 2e-6); // CO
    EXPECT_NEAR(FragmentMz(Peak::C_ION, 500.0, 1) - b, 17.026549, 2e-6);  // NH3
    EXPECT_NEAR(FragmentMz(Peak::X_ION, 500.0, 1) - b, 43.989829, 2e-6);  // CO2
    EXPECT_NEAR(FragmentMz(Peak::Y_ION, 500.0, 1) - b, 18.010565, 2e-6);  // H2O
    EXPECT_NEAR(FragmentMz(Peak::Z_ION, 500.0, 1) - b, 0.984016, 2e-6);   // H2O - NH3
    EXPECT_NEAR(FragmentMz(Peak::B_ION, 500.0, 2), (500.0 + 2 * 1.00727646688) / 2, 1e-6);
}

TEST(FragmentsOf, TerminalModificationsBelongToTheirOwnSeries)
{
    PeptideMasses peptide = MassesOfLetters("GAS");
    const auto plain = FragmentsOf(peptide, PlanWith({Peak::B_ION, Peak::Y_ION}, 1));
    peptide.nTerm = 42.0;
    peptide.cTerm = -1.0;
    const auto modified = FragmentsOf(peptide, PlanWith({Peak::B_ION, Peak::Y_ION}, 1));
    ASSERT_EQ(plain.size(), 4U);
    ASSERT_EQ(modified.size(), 4U);
    for (std::size_t i = 0; i < plain.size(); ++i) {
        EXPECT_NEAR(modified[i].mz - plain[i].mz,
                    plain[i].ion.eIonType == Peak::B_ION ? 42.0 : -1.0, 1e-9);
    }
}

TEST(FragmentsOf, AShiftedIonFollowsItsUnshiftedOne)
{
    FragmentPlan plan = PlanWith({Peak::Y_ION}, 2);
    plan.massShift = 80.0;
    const auto fragments = FragmentsOf(MassesOfLetters("GAS"), plan);
    ASSERT_EQ(fragments.size(), 8U);
    for (std::size_t i = 0; i < fragments.size(); i += 2) {
        EXPECT_EQ(fragments[i].ion.eHitStatus, Peak::UNSHIFT);
        EXPECT_EQ(fragments[i + 1].ion.eHitStatus, Peak::SHIFT);
        EXPECT_EQ(fragments[i + 1].ion.nCharge, fragments[i].ion.nCharge);
        EXPECT_NEAR(fragments[i + 1].mz - fragments[i].mz, 80.0 / fragments[i].ion.nCharge, 1e-9);
    }
}

TEST(FragmentsOf, IonsWithoutPositiveMzDoNotExist)
{
    PeptideMasses peptide = MassesOfLetters("GG");
    peptide.nTerm = -1000.0;
    EXPECT_TRUE(FragmentsOf(peptide, PlanWith({Peak::B_ION}, 1)).empty());
}

TEST(FragmentsOf, APeptideOfOneResidueOrNoneHasNoBond)
{
    EXPECT_TRUE(FragmentsOf(MassesOfLetters("K"), PlanWith({Peak::B_ION}, 1)).empty());
    EXPECT_TRUE(FragmentsOf({}, PlanWith({Peak::B_ION}, 1)).empty());
}

TEST(ResidueMass, OnlyResiduesWithOneMassHaveOne)
{
    for (const char letter : std::string("ACDEFGHIJKLMNOPQRSTUVWY")) {
        EXPECT_TRUE(ResidueMass(letter).has_value()) << letter;
    }
    for (const char letter : std::string("BXZabck -*1\0\xff", 13)) {
        EXPECT_FALSE(ResidueMass(letter).has_value()) << static_cast<int>(letter);
    }
    EXPECT_NEAR(ResidueMass('G').value(), 57.021464, 1e-6);
}

TEST(MaxIonCharge, IsOneLessThanThePrecursorButAtLeastOne)
{
    EXPECT_EQ(MaxIonCharge(1), 1);
    EXPECT_EQ(MaxIonCharge(2), 1);
    EXPECT_EQ(MaxIonCharge(3), 2);
    EXPECT_EQ(MaxIonCharge(5), 4);
}

} // namespace
} // namespace pelgrin
