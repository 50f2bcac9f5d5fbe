#include "proteins/ProteinMap.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

#include <fmt/format.h>

#include "files/FileLines.h"
#include "files/NativeRow.h"

namespace pelgrin {

using Vorlan::PeptideEvidence;
using Vorlan::PeptideIdentification;

namespace {

constexpr char kUnknownResidue = 'X';
constexpr std::int32_t kUnknownStart = -1;

/// At least as many characters as an evidence takes in a row of the native
/// table: accession, residues, start, and what separates them.
std::size_t RoomOf(std::string_view accession)
{
    return accession.size() + 20;
}

/// Start and neighbours of a place, as an evidence tells them.
class Surroundings {
public:
    Surroundings(const Place& place, const std::string& protein, std::size_t length)
        : start_(place.start),
          before_(place.start == 0 ? '-' : protein[static_cast<std::size_t>(place.start) - 1])
    {
        const auto end = static_cast<std::size_t>(place.start) + length;
        after_ = end == protein.size() ? '-' : protein[end];
    }

    bool AgreesWith(const PeptideEvidence& evidence) const
    {
        return (evidence.cBefore == kUnknownResidue || evidence.cBefore == before_)
               && (evidence.cAfter == kUnknownResidue || evidence.cAfter == after_);
    }

    /// True when there was none.
    bool FillStart(PeptideEvidence& evidence) const
    {
        constexpr std::uint64_t kHighest = std::numeric_limits<std::int32_t>::max();
        if (evidence.nStart != kUnknownStart || start_ >= kHighest) {
            return false;
        }
        evidence.nStart = static_cast<std::int32_t>(start_ + 1);
        return true;
    }

    /// True when one was unknown.
    bool FillResidues(PeptideEvidence& evidence) const
    {
        bool any = false;
        for (const auto& [residue, known] :
             {std::pair(&evidence.cBefore, before_), std::pair(&evidence.cAfter, after_)}) {
            any = any || (*residue == kUnknownResidue && known != kUnknownResidue);
            *residue = *residue == kUnknownResidue ? known : *residue;
        }
        return any;
    }

private:
    std::uint64_t start_;
    char before_;
    char after_ = '-';
};

/// The place that starts there, or null.
const Place* PlaceAt(std::int64_t start, PlaceRange places)
{
    if (start < 0) {
        return nullptr;
    }
    const auto wanted = static_cast<std::uint64_t>(start);
    const Place* const hit = std::lower_bound(
        places.begin(), places.end(), wanted,
        [](const Place& place, std::uint64_t value) { return place.start < value; });
    return hit != places.end() && hit->start == wanted ? hit : nullptr;
}

/// Fills the evidences of the records one by one.
class Filler {
public:
    Filler(const ProteinMap& map, const std::optional<std::string>& decoyTag)
        : map_(map), decoyTag_(decoyTag), isTarget_(map.Peptides().size())
    {
    }

    void Take(std::uint32_t peptide, PeptideIdentification& record)
    {
        const PlaceRange places = map_.Places().Of(peptide);
        const bool isDecoy = IsDecoy(record, places);
        isTarget_[peptide] = isTarget_[peptide] || !isDecoy;
        std::vector<std::size_t> named;
        for (PeptideEvidence& evidence : record.vEvidences) {
            Check(record, places, evidence, named);
        }
        std::sort(named.begin(), named.end());
        Append(places, isDecoy, named, record);
    }

    ProteinCounts Finish()
    {
        for (std::uint32_t i = 0; i < map_.Peptides().size(); ++i) {
            const std::string& sequence = map_.Peptides()[i];
            if (map_.Places().Search().PatternOf(i) == PeptideSearch::kNoPattern) {
                counts_.Add(ProteinCount::PeptideNotLetters, sequence);
            } else if (!map_.Places().Of(i).IsEmpty()) {
                counts_.Add(ProteinCount::PeptideFound);
            } else if (isTarget_[i]) {
                counts_.Add(ProteinCount::PeptideNotFound, sequence);
            } else {
                counts_.Add(ProteinCount::PeptideNotFoundDecoy, sequence);
            }
        }
        return std::move(counts_);
    }

private:
    bool IsDecoyName(std::string_view accession) const
    {
        return decoyTag_ && accession.substr(0, decoyTag_->size()) == *decoyTag_;
    }

    bool IsDecoy(const PeptideIdentification& record, PlaceRange places) const
    {
        if (record.bDecoy || !decoyTag_) {
            return record.bDecoy;
        }
        if (!record.vEvidences.empty()) {
            return !record.isTarget(*decoyTag_);
        }
        return !places.IsEmpty()
               && std::all_of(places.begin(), places.end(), [this](const Place& place) {
                      return IsDecoyName(map_.Database().NameOf(place.protein));
                  });
    }

    /// Fills one evidence of the engine. Its protein joins named.
    void Check(const PeptideIdentification& record, PlaceRange places, PeptideEvidence& evidence,
               std::vector<std::size_t>& named)
    {
        const std::string& accession = evidence.strProteinAccession;
        const auto protein = map_.Database().Find(accession);
        if (!protein) {
            const bool isDecoy = record.bDecoy || IsDecoyName(accession);
            counts_.Add(isDecoy ? ProteinCount::AccessionUnknownDecoy
                                : ProteinCount::AccessionUnknown,
                        accession);
            return;
        }
        named.push_back(*protein);
        const PlaceRange there = places.In(*protein);
        if (there.IsEmpty()) {
            counts_.Add(ProteinCount::PeptideNotInProtein,
                        fmt::format("{} in {}", record.strSequence, accession));
            return;
        }
        counts_.Add(ProteinCount::EvidenceConfirmed);
        Fill(record.strSequence, there, evidence);
    }

    void Fill(const std::string& sequence, PlaceRange places, PeptideEvidence& evidence)
    {
        const Place* const fromOne = PlaceAt(std::int64_t{evidence.nStart} - 1, places);
        const Place* const fromZero = PlaceAt(evidence.nStart, places);
        const Place* place = nullptr;
        for (const Place* const candidate : {fromOne, fromZero}) {
            if (place == nullptr && candidate != nullptr
                && SurroundingsOf(*candidate, sequence).AgreesWith(evidence)) {
                place = candidate;
            }
        }
        const bool startAgrees = fromOne != nullptr || fromZero != nullptr;
        if (place == nullptr && startAgrees) {
            place = fromOne != nullptr ? fromOne : fromZero;
        } else if (place == nullptr) {
            place = std::find_if(places.begin(), places.end(), [&](const Place& candidate) {
                return SurroundingsOf(candidate, sequence).AgreesWith(evidence);
            });
            place = place == places.end() ? places.begin() : place;
        }
        Compare(sequence, *place, evidence);
    }

    /// Counts what place says of the evidence, and fills in what it lacks.
    void Compare(const std::string& sequence, const Place& place, PeptideEvidence& evidence)
    {
        const std::string text = fmt::format("{} in {}", sequence, evidence.strProteinAccession);
        const Surroundings around = SurroundingsOf(place, sequence);
        if (!around.AgreesWith(evidence)) {
            counts_.Add(ProteinCount::ResidueDisagrees, text);
        }
        const auto start = static_cast<std::int64_t>(place.start);
        if (around.FillStart(evidence)) {
            counts_.Add(ProteinCount::StartFilled);
        } else if (evidence.nStart == start + 1) {
            counts_.Add(ProteinCount::StartFromOne);
        } else if (evidence.nStart == start) {
            counts_.Add(ProteinCount::StartFromZero);
        } else if (evidence.nStart != kUnknownStart) {
            counts_.Add(ProteinCount::StartDisagrees, text);
        }
        if (around.FillResidues(evidence)) {
            counts_.Add(ProteinCount::ResidueFilled);
        }
    }

    /// Adds an evidence for every protein that is not named.
    void Append(PlaceRange places, bool isDecoy, const std::vector<std::size_t>& named,
                PeptideIdentification& record)
    {
        std::size_t room = RowLengthOf(record);
        std::size_t former = SIZE_MAX;
        for (const Place& place : places) {
            const bool isNew = place.protein != former;
            former = place.protein;
            if (!isNew || std::binary_search(named.begin(), named.end(), former)) {
                continue;
            }
            const std::string name(map_.Database().NameOf(place.protein));
            if (!isDecoy && IsDecoyName(name)) {
                counts_.Add(ProteinCount::DecoyLeftOut);
            } else if (name.empty() || !FitsIntoList(name)) {
                counts_.Add(ProteinCount::NotWritable, name);
            } else if (room + RoomOf(name) > kLongestLine) {
                counts_.Add(ProteinCount::NoRoom, record.strSequence);
            } else {
                room += RoomOf(name);
                PeptideEvidence& evidence = record.vEvidences.emplace_back();
                evidence.strProteinAccession = name;
                const Surroundings around = SurroundingsOf(place, record.strSequence);
                around.FillStart(evidence);
                around.FillResidues(evidence);
                counts_.Add(ProteinCount::EvidenceAdded);
            }
        }
    }

    Surroundings SurroundingsOf(const Place& place, const std::string& sequence) const
    {
        return {place, map_.Database().Proteins()[place.protein].strSequence, sequence.size()};
    }

    const ProteinMap& map_;
    const std::optional<std::string>& decoyTag_;
    std::vector<bool> isTarget_; ///< of each peptide: a record of it is a target
    ProteinCounts counts_;
};

} // namespace

ProteinMap::PeptideList::PeptideList(const std::vector<Record>& records)
{
    std::unordered_map<std::string_view, std::uint32_t> known;
    for (const Record& record : records) {
        const auto next = static_cast<std::uint32_t>(sequences.size());
        const auto [peptide, isNew] = known.emplace(record.strSequence, next);
        if (isNew) {
            sequences.push_back(record.strSequence);
        }
        ofRecord.push_back(peptide->second);
    }
}

ProteinMap::ProteinMap(const ProteinDatabase& database, const std::vector<Record>& records,
                       bool equateIl)
    : database_(database), peptides_(records),
      places_(database, peptides_.sequences,
              equateIl ? PeptideSearch::LeucineIsoleucine::Equal
                       : PeptideSearch::LeucineIsoleucine::Different)
{
}

ProteinCounts FillEvidences(const ProteinMap& map, const std::optional<std::string>& decoyTag,
                            std::vector<PeptideIdentification>& records)
{
    Filler filler(map, decoyTag);
    for (std::size_t i = 0; i < records.size(); ++i) {
        filler.Take(map.PeptideOf()[i], records[i]);
    }
    return filler.Finish();
}

} // namespace pelgrin
