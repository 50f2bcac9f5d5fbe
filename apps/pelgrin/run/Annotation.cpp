#include "run/Annotation.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace pelgrin {

using Vorlan::Peak;

namespace {

/// Above every precursor charge that instruments report; bounds the work that
/// one number in a table can ask for.
constexpr std::uint64_t kHighestCharge = 100;

} // namespace

double IonMatch::ErrorPpm() const
{
    return (peakMz - fragment.mz) / fragment.mz * 1000000.0;
}

std::variant<PeptideMasses, Problem> MassesOf(const Vorlan::PeptideIdentification& record,
                                              const ModificationMasses& modifications)
{
    PeptideMasses peptide;
    peptide.residues.reserve(record.strSequence.size());
    for (const char letter : record.strSequence) {
        const std::optional<double> mass = ResidueMass(letter);
        if (!mass) {
            return Problem{Reason::ResidueWithoutMass, std::string(1, letter)};
        }
        peptide.residues.push_back(*mass);
    }
    const auto length = static_cast<std::int64_t>(peptide.residues.size());
    for (const Vorlan::IdentModification& mod : record.vMods) {
        const auto hit = modifications.find(WithAnyTerm(mod.strName));
        if (hit == modifications.end()) {
            return Problem{Reason::ModificationWithoutMass, mod.strName};
        }
        if (mod.nPos < 0 || mod.nPos > length + 1) {
            return Problem{Reason::PositionOutsideSequence, {}};
        }
        if (mod.nPos == 0) {
            peptide.nTerm += hit->second;
        } else if (mod.nPos > length) {
            peptide.cTerm += hit->second;
        } else {
            peptide.residues[static_cast<std::size_t>(mod.nPos) - 1] += hit->second;
        }
    }
    return peptide;
}

std::variant<PeptideMasses, Problem> Examine(const Vorlan::PeptideIdentification& record,
                                             const ModificationMasses& modifications)
{
    if (record.nCharge == 0 || record.nCharge > kHighestCharge) {
        return Problem{Reason::ChargeUnusable, {}};
    }
    if (record.strSequence.empty()) {
        return Problem{Reason::EmptySequence, {}};
    }
    if (!std::isfinite(record.dMassShift)) {
        return Problem{Reason::MassShiftNotFinite, {}};
    }
    return MassesOf(record, modifications);
}

FragmentPlan PlanOf(const Vorlan::PeptideIdentification& record, const Parameters& parameters)
{
    FragmentPlan plan;
    plan.ions = parameters.ions;
    plan.maxCharge = MaxIonCharge(record.nCharge);
    if (parameters.shiftedIons && std::fabs(record.dMassShift) >= parameters.minShift
        && record.dMassShift != 0.0) {
        plan.massShift = record.dMassShift;
    }
    return plan;
}

Annotation Annotate(Vorlan::Spectrum& spectrum, const PeptideMasses& peptide,
                    const FragmentPlan& plan, const Tolerance& tolerance, Counts& counts)
{
    Annotation annotation;
    annotation.bonds.asked = plan.ions.size() * (peptide.residues.size() - 1);
    spectrum.CreateHashTable();
    Peak theo;
    theo.vMatchRes.resize(1);
    for (const Fragment& fragment : FragmentsOf(peptide, plan)) {
        Share& share = counts.ions.at(fragment.ion.eIonType).at(fragment.ion.eHitStatus);
        ++share.asked;
        theo.setMz(fragment.mz);
        theo.vMatchRes[0] = fragment.ion;
        const std::int32_t hit = spectrum.GetHitPeak(theo, tolerance.value, tolerance.unit, true);
        if (hit < 0) {
            continue;
        }
        ++share.matched;
        // The ions of one bond stand next to each other.
        if (annotation.matches.empty()
            || annotation.matches.back().fragment.ion.eIonType != fragment.ion.eIonType
            || annotation.matches.back().fragment.ion.nIonIndex != fragment.ion.nIonIndex) {
            ++annotation.bonds.matched;
        }
        const Peak& peak = spectrum.vPeaks[static_cast<std::size_t>(hit)];
        annotation.matches.push_back({fragment, peak.dMz, peak.dIntensity});
    }
    spectrum.ReleaseHashTable();

    counts.fragments.asked += annotation.bonds.asked;
    counts.fragments.matched += annotation.bonds.matched;
    counts.peaks.asked += spectrum.vPeaks.size();
    counts.peaks.matched += static_cast<std::uint64_t>(
        std::count_if(spectrum.vPeaks.begin(), spectrum.vPeaks.end(),
                      [](const Peak& peak) { return !peak.vMatchRes.empty(); }));
    ++counts.annotated;
    return annotation;
}

} // namespace pelgrin
