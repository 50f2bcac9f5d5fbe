// What became of the peptides and proteins of a run, in numbers.
#ifndef PELGRIN_PROTEINCOUNTS_H
#define PELGRIN_PROTEINCOUNTS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace pelgrin {

enum class ProteinCount : std::size_t {
    // Every peptide is one of these.
    PeptideFound,
    PeptideNotFound,
    PeptideNotFoundDecoy,
    PeptideNotLetters,
    // Every evidence of the engine is one of these.
    EvidenceConfirmed,
    AccessionUnknown,
    AccessionUnknownDecoy,
    PeptideNotInProtein,
    // Of the confirmed ones.
    StartFilled,
    ResidueFilled,
    StartFromZero,
    StartFromOne,
    StartDisagrees,
    ResidueDisagrees,
    // Proteins without an evidence.
    EvidenceAdded,
    DecoyLeftOut,
    NoRoom,
    NotWritable,
};
constexpr std::size_t kProteinCounts = 18;

/// The parts of "proteins" in summary.json.
enum class ProteinCountGroup { Peptides, Evidences, Confirmed, Added };

/// The key in summary.json, such as "peptide_not_in_protein".
const char* KeyOf(ProteinCount count);
/// The words of the report.
const char* TextOf(ProteinCount count);
ProteinCountGroup GroupOf(ProteinCount count);
/// Something was not found, does not agree or is missing in the result.
bool IsLoss(ProteinCount count);

struct ProteinCounts {
    std::array<std::uint64_t, kProteinCounts> counts{};
    std::array<std::vector<std::string>, kProteinCounts> examples; ///< a few each

    void Add(ProteinCount count) { ++counts[static_cast<std::size_t>(count)]; }
    void Add(ProteinCount count, const std::string& example);
    std::uint64_t Of(ProteinCount count) const { return counts[static_cast<std::size_t>(count)]; }
    std::uint64_t Total(ProteinCountGroup group) const;
    std::uint64_t Losses() const;
};

} // namespace pelgrin

#endif // PELGRIN_PROTEINCOUNTS_H
