#include "run/Fragments.h"

#include <cmath>

#include <OpenMS/CHEMISTRY/Residue.h>
#include <OpenMS/CHEMISTRY/ResidueDB.h>
#include <OpenMS/CONCEPT/Constants.h>

namespace pelgrin {

using Vorlan::Peak;

namespace {

bool IsNTerminal(Peak::EIonType ion)
{
    return ion == Peak::A_ION || ion == Peak::B_ION || ion == Peak::C_ION;
}

/// What a series adds to the residues inside the chain, before protons. Source
/// of the formulas: www.matrixscience.com/help/fragmentation_help.html, as
/// OpenMS::Residue has them: a -CO, b nothing, c +NH3, x +CO2, y +H2O,
/// z +H2O -NH3.
double EndsOf(Peak::EIonType ion)
{
    using OpenMS::Residue;
    static const double ends[] = {
        Residue::getInternalToAIon().getMonoWeight(), Residue::getInternalToBIon().getMonoWeight(),
        Residue::getInternalToCIon().getMonoWeight(), Residue::getInternalToXIon().getMonoWeight(),
        Residue::getInternalToYIon().getMonoWeight(), Residue::getInternalToZIon().getMonoWeight()};
    return ends[static_cast<int>(ion) - 1];
}

void AddFragment(std::vector<Fragment>& fragments, const Peak::MatchRes& ion, double mz)
{
    if (mz > 0.0 && std::isfinite(mz)) {
        fragments.push_back({ion, mz});
    }
}

} // namespace

std::optional<double> ResidueMass(char letter)
{
    const OpenMS::Residue* const residue =
        OpenMS::ResidueDB::getInstance()->getResidue(static_cast<unsigned char>(letter));
    if (residue == nullptr) {
        return std::nullopt;
    }
    // B, X and Z are in the database without atoms: minus one water.
    const double mass = residue->getMonoWeight(OpenMS::Residue::Internal);
    return mass > 0.0 ? std::optional<double>(mass) : std::nullopt;
}

std::int32_t MaxIonCharge(std::uint64_t precursorCharge)
{
    return precursorCharge <= 2 ? 1 : static_cast<std::int32_t>(precursorCharge - 1);
}

double FragmentMz(Peak::EIonType ion, double residueSum, std::int32_t charge)
{
    const double protons = charge * OpenMS::Constants::PROTON_MASS_U;
    return (residueSum + EndsOf(ion) + protons) / charge;
}

std::vector<Fragment> FragmentsOf(const PeptideMasses& peptide, const FragmentPlan& plan)
{
    std::vector<Fragment> fragments;
    const std::size_t length = peptide.residues.size();
    for (const Peak::EIonType type : plan.ions) {
        const bool fromNTerm = IsNTerminal(type);
        double sum = fromNTerm ? peptide.nTerm : peptide.cTerm;
        for (std::size_t index = 1; index < length; ++index) {
            sum += peptide.residues[fromNTerm ? index - 1 : length - index];
            for (std::int32_t charge = 1; charge <= plan.maxCharge; ++charge) {
                const double mz = FragmentMz(type, sum, charge);
                AddFragment(fragments, {type, index, charge, Peak::UNSHIFT}, mz);
                if (plan.massShift) {
                    AddFragment(fragments, {type, index, charge, Peak::SHIFT},
                                mz + *plan.massShift / charge);
                }
            }
        }
    }
    return fragments;
}

} // namespace pelgrin
