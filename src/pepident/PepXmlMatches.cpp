#include "pepident/PepXmlMatches.h"

#include <array>
#include <iterator>
#include <utility>

#include <OpenMS/CONCEPT/Constants.h>
#include <OpenMS/CONCEPT/Exception.h>

#include "CStringProcess.h"
#include "datastructures/FieldNames.h"
#include "pepident/ReaderSteps.h"
#include "pepident/ResidueMasses.h"
#include "util/Numbers.h"
#include "util/XmlAttributeText.h"

namespace Vorlan {

namespace {

/// Masses of what ends a peptide, Da: pepXML counts them to a modified terminus.
constexpr double kHydrogen = 1.007825;
constexpr double kHydroxyl = 17.002740;

/// Attributes that are read.
constexpr std::array<std::string_view, 1> kOfRun = {"base_name"};
constexpr std::array<std::string_view, 5> kOfQuery = {
    "spectrum", "assumed_charge", "precursor_neutral_mass", "start_scan", "retention_time_sec"};
constexpr std::array<std::string_view, 5> kOfHit = {"peptide", "massdiff", "protein",
                                                    "peptide_prev_aa", "peptide_next_aa"};
constexpr std::array<std::string_view, 2> kOfScore = {"name", "value"};
constexpr std::array<std::string_view, 2> kOfTermini = {"mod_nterm_mass", "mod_cterm_mass"};
constexpr std::array<std::string_view, 2> kOfModification = {"mass", "position"};

/// The values of the named attributes, of each its last one; empty for those
/// that are not there. Names that the compiler knows are compared without a call.
template <const auto& names>
auto Values(std::string_view attributes)
{
    std::array<std::string_view, names.size()> values;
    XmlAttributeText text(attributes);
    while (text.Next()) {
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i] == text.Name()) {
                values[i] = text.Value();
            }
        }
    }
    return values;
}

std::string Accession(std::string_view protein)
{
    std::string accession(protein);
    CStringProcess::replace_all(accession, "&apos;", "'");
    CStringProcess::replace_all(accession, "&gt;", ">");
    return accession;
}

} // namespace

PepXmlMatches::PepXmlMatches(PepXmlScore score, std::string ending,
                             std::vector<IdentModification> specified)
    : score_(score), ending_(std::move(ending)), explainer_(std::move(specified))
{
}

void PepXmlMatches::Begin(std::string_view name, std::string_view attributes)
{
    if (depth_ == level_ && failure_ == nullptr && Enters(name, attributes)) {
        ++level_;
        seen_[level_ + 1] = false;
    }
    ++depth_;
}

void PepXmlMatches::End()
{
    --depth_;
    if (level_ <= depth_) {
        return;
    }
    if (level_ == Hit) {
        hasHit_ = failure_ == nullptr;
    } else if (level_ == Query && !hasHit_) {
        matches_.pop_back();
    }
    --level_;
}

void PepXmlMatches::Restart()
{
    depth_ = 0;
    level_ = Nothing;
    seen_[Root] = false;
    matches_.clear();
    failure_ = nullptr;
}

void PepXmlMatches::MoveTo(std::vector<PeptideIdentification>& all)
{
    if (all.empty()) {
        all.swap(matches_);
    } else {
        all.insert(all.end(), std::make_move_iterator(matches_.begin()),
                   std::make_move_iterator(matches_.end()));
    }
    if (failure_ != nullptr) {
        std::rethrow_exception(failure_);
    }
}

/// The element is the next one on the way. Reads it, and those that end the way.
bool PepXmlMatches::Enters(std::string_view name, std::string_view attributes)
{
    switch (level_) {
    case Nothing: return IsFirst(true);
    case Root:
        if (IsFirst(name == "msms_run_summary")) { // Deliberate: B-52
            BeginRun(attributes);
            return true;
        }
        return false;
    case Run:
        if (name == "spectrum_query") {
            BeginQuery(attributes);
            return true;
        }
        return false;
    case Query: return IsFirst(name == "search_result");
    case Result:
        if (IsFirst(name == "search_hit")) { // Deliberate: B-52
            BeginHit(attributes);
            return true;
        }
        return false;
    case Hit:
        if (name == "search_score") {
            TakeScore(attributes);
        } else if (IsFirst(name == "modification_info")) {
            BeginModifications(attributes);
            return true;
        }
        return false;
    case Modifications:
        if (name == "mod_aminoacid_mass") {
            TakeModification(attributes);
        }
        return false;
    default: return false;
    }
}

/// The first wanted element of its parent.
bool PepXmlMatches::IsFirst(bool isWanted)
{
    return isWanted && !std::exchange(seen_[level_ + 1], true);
}

void PepXmlMatches::BeginRun(std::string_view attributes)
{
    const auto [base] = Values<kOfRun>(attributes);
    dataset_.assign(base).append(".").append(ending_);
}

void PepXmlMatches::BeginQuery(std::string_view attributes)
{
    const auto [spectrum, charge, mass, scan, time] = Values<kOfQuery>(attributes);
    hasHit_ = false;
    PeptideIdentification& match = matches_.emplace_back();
    match.strDatasetName = dataset_;
    match.strSpectrumName = spectrum.substr(0, spectrum.find(' '));
    const std::int32_t charges = numbers::ToInt(charge);
    match.nCharge = static_cast<std::uint64_t>(charges);
    match.dObsMH = numbers::ToDouble(mass) + OpenMS::Constants::PROTON_MASS_U;
    PrecursorMzOf(match) = MzOf(match.dObsMH, charges);
    ScanOf(match) = numbers::ToInt(scan);
    RetentionTimeOf(match) = numbers::ToDouble(time);
}

void PepXmlMatches::BeginHit(std::string_view attributes)
{
    const auto [peptide, shift, protein, before, after] = Values<kOfHit>(attributes);
    PeptideIdentification& match = Match();
    match.strSequence = peptide;
    match.dMassShift = numbers::ToDouble(shift);
    PeptideEvidence& evidence = match.vEvidences.emplace_back();
    evidence.strProteinAccession = Accession(protein);
    evidence.cBefore = FirstOr(before, evidence.cBefore);
    evidence.cAfter = FirstOr(after, evidence.cAfter);
    scores_ = 0;
    hasExpect_ = false;
}

void PepXmlMatches::TakeScore(std::string_view attributes)
{
    const auto [name, value] = Values<kOfScore>(attributes);
    ++scores_;
    // Deliberate: B-57. The third one, whatever its name.
    const bool isThird = score_ == PepXmlScore::Third && scores_ == 3;
    const bool isExpect = score_ == PepXmlScore::Expect && !hasExpect_ && name == "expect";
    hasExpect_ = hasExpect_ || isExpect;
    if (isThird || isExpect) {
        Match().dMainScore = numbers::ToDouble(value);
    }
}

/// The termini are no residues: what sits on them is kept beside.
void PepXmlMatches::BeginModifications(std::string_view attributes)
{
    const auto [nTerm, cTerm] = Values<kOfTermini>(attributes);
    const std::size_t length = Match().strSequence.size();
    if (!nTerm.empty()) {
        TakeTerminus("N-term", numbers::ToDouble(nTerm) - kHydrogen, 0);
    }
    if (!cTerm.empty()) {
        TakeTerminus("C-term", numbers::ToDouble(cTerm) - kHydroxyl, length + 1);
    }
}

void PepXmlMatches::TakeTerminus(const char* terminus, double mass, std::size_t position)
{
    const std::size_t length = Match().strSequence.size();
    const ResiduePlace end = PlaceAt(position == 0 ? 1 : length);
    const IdentModification* const known = explainer_.OfTerminus(mass, terminus, end);
    Match().vAltMods.emplace_back(known == nullptr ? "" : known->strName, mass, terminus,
                                  known == nullptr ? "" : known->strPosition,
                                  static_cast<std::int32_t>(position));
}

void PepXmlMatches::TakeModification(std::string_view attributes)
{
    const auto [mass, position] = Values<kOfModification>(attributes);
    const std::int32_t place = numbers::ToInt(position);
    if (place < 1 || static_cast<std::size_t>(place) > Match().strSequence.size()) {
        return;
    }
    try {
        Explain(numbers::ToDouble(mass), static_cast<std::size_t>(place));
    } catch (const OpenMS::Exception::BaseException&) {
        // Told when the whole document was seen to be well-formed.
        failure_ = std::current_exception();
    }
}

/// mass is that of the modified residue, Da.
void PepXmlMatches::Explain(double mass, std::size_t position)
{
    const ResiduePlace place = PlaceAt(position);
    const char first = Match().strSequence.front();
    for (const IdentModification& mod :
         explainer_.Explain(mass - ResidueMass(place.residue), place)) {
        Match().vMods.push_back(mod);
        Match().vMods.back().nPos = RecordedPosition(mod, place, first);
    }
}

/// position counts from 1; behind the sequence the residue is unknown.
ResiduePlace PepXmlMatches::PlaceAt(std::size_t position) const
{
    const PeptideEvidence& evidence = Match().vEvidences.front();
    const std::string& sequence = Match().strSequence;
    return {static_cast<std::int32_t>(position),
            position >= 1 && position <= sequence.size() ? sequence[position - 1] : 'X',
            evidence.cBefore, evidence.cAfter};
}

} // namespace Vorlan
