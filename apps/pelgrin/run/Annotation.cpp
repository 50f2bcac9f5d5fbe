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

namespace {

/// "Any N-term", "Protein N-term" or "M": where a modification of a record sits.
std::vector<std::string> SitesOf(const Vorlan::IdentModification& mod,
                                 const Vorlan::PeptideIdentification& record)
{
    const auto length = static_cast<std::int64_t>(record.strSequence.size());
    if (mod.nPos >= 1 && mod.nPos <= length) {
        return {record.strSequence.substr(static_cast<std::size_t>(mod.nPos) - 1, 1)};
    }
    const std::string terminus = mod.nPos <= 0 ? "N-term" : "C-term";
    std::vector<std::string> sites = {"Any " + terminus};
    for (const Vorlan::PeptideEvidence& protein : record.vEvidences) {
        if ((mod.nPos <= 0 ? protein.cBefore : protein.cAfter) == '-') {
            sites.push_back("Protein " + terminus);
            break;
        }
    }
    return sites;
}

std::optional<double> MassOf(const Vorlan::IdentModification& mod,
                             const Vorlan::PeptideIdentification& record,
                             const ModificationMasses& modifications)
{
    for (const std::string& name : NamesOf(mod, record)) {
        const auto hit = modifications.find(name);
        if (hit != modifications.end()) {
            return hit->second;
        }
    }
    return mod.dMass != 0.0 && std::isfinite(mod.dMass) ? std::optional(mod.dMass) : std::nullopt;
}

/// Adds the mass of one modification, or says why not.
std::optional<Problem> AddMass(const Vorlan::IdentModification& mod, std::optional<double> mass,
                               PeptideMasses& peptide)
{
    const auto length = static_cast<std::int64_t>(peptide.residues.size());
    if (!mass) {
        return Problem{Reason::ModificationWithoutMass, mod.strName};
    }
    if (mod.nPos < 0 || mod.nPos > length + 1) {
        return Problem{Reason::PositionOutsideSequence, {}};
    }
    if (mod.nPos == 0) {
        peptide.nTerm += *mass;
    } else if (mod.nPos > length) {
        peptide.cTerm += *mass;
    } else {
        peptide.residues[static_cast<std::size_t>(mod.nPos) - 1] += *mass;
    }
    return std::nullopt;
}

} // namespace

std::vector<std::string> NamesOf(const Vorlan::IdentModification& mod,
                                 const Vorlan::PeptideIdentification& record)
{
    std::vector<std::string> names = {WithAnyTerm(mod.strName)};
    if (!mod.strName.empty() && mod.strName.back() != ')') {
        for (const std::string& site : SitesOf(mod, record)) {
            names.push_back(mod.strName + " (" + site + ")");
        }
    }
    return names;
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
    for (const Vorlan::IdentModification& mod : record.vMods) {
        if (const auto problem = AddMass(mod, MassOf(mod, record, modifications), peptide)) {
            return *problem;
        }
    }
    for (const Vorlan::IdentModification& mod : record.vAltMods) { // termini without a name
        if (const auto problem = AddMass(mod, mod.dMass, peptide)) {
            return *problem;
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
        Share& share = counts.Ions(fragment.ion.eIonType, fragment.ion.eHitStatus);
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
