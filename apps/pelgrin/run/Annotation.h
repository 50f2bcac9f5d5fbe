// Step 4 of a run: records meet spectra, ions meet peaks.
#ifndef PELGRIN_ANNOTATION_H
#define PELGRIN_ANNOTATION_H

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "run/Counts.h"
#include "run/Fragments.h"
#include "run/Parameters.h"

namespace pelgrin {

/// A theoretical ion and the peak that was found for it.
struct IonMatch {
    Fragment fragment;
    double peakMz = 0.0;
    double intensity = 0.0;

    /// (peak - theoretical) / theoretical, in millionths.
    double ErrorPpm() const;
};

/// What was found for one record.
struct Annotation {
    std::vector<IonMatch> matches; ///< in the order of FragmentsOf
    Share bonds;                   ///< see Counts::fragments
};

/// The names under which the mass of a modification of a record is looked up,
/// in this order: as it is called, then with its site where the name has none:
/// "Oxidation" at an M is "Oxidation (M)", at the N-terminus "Oxidation (Any
/// N-term)" and, when the peptide begins its protein, "Oxidation (Protein
/// N-term)". All as WithAnyTerm spells them.
std::vector<std::string> NamesOf(const Vorlan::IdentModification& mod,
                                 const Vorlan::PeptideIdentification& record);

/// The masses of a record's peptide, or why there are none. A modification
/// sits at 0 (N-terminus), 1 to length, or length + 1 (C-terminus). Its mass is
/// that of modifications, else the one that the reader gave.
std::variant<PeptideMasses, Problem> MassesOf(const Vorlan::PeptideIdentification& record,
                                              const ModificationMasses& modifications);

/// Series, charges and mass shift that are asked of a record.
FragmentPlan PlanOf(const Vorlan::PeptideIdentification& record, const Parameters& parameters);

/// Why a record cannot be annotated whatever its spectrum holds; its masses
/// otherwise.
std::variant<PeptideMasses, Problem> Examine(const Vorlan::PeptideIdentification& record,
                                             const ModificationMasses& modifications);

/// Looks for every ion in the spectrum and adds to the counts. The spectrum's
/// peaks are sorted and carry the ions that they matched afterwards.
Annotation Annotate(Vorlan::Spectrum& spectrum, const PeptideMasses& peptide,
                    const FragmentPlan& plan, const Tolerance& tolerance, Counts& counts);

} // namespace pelgrin

#endif // PELGRIN_ANNOTATION_H
