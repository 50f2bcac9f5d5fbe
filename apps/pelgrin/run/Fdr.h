// The target-decoy false discovery rate: scores only, no files.
//
// A decoy is a match that cannot be right. As many wrong matches are expected
// among the targets that score at least as well, so decoys / targets at a score
// estimates the false discovery rate (FDR) of everything from that score on.
// The q-value of a match is the lowest FDR at which it is still taken. The
// tests hold it against a plain twin that counts anew for every score.
#ifndef PELGRIN_FDR_H
#define PELGRIN_FDR_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "DataStructures.h"

namespace pelgrin {

struct ScoredMatch {
    double score = 0.0; ///< a number
    bool isTarget = true;
};

/// The q-value of every match, in their order. Matches of equal scores share
/// theirs. It is infinite where a score has no target at or above it.
std::vector<double> QValuesOf(const std::vector<ScoredMatch>& matches, bool highIsBetter,
                              Vorlan::TdFdrType::ETdFdrType formula);

/// What FDR control says of a record.
enum class Verdict : std::size_t {
    Stays,
    AboveThreshold,  ///< a target whose q-value is too high
    Decoy,           ///< whatever its q-value
    WithoutProteins, ///< nothing tells whether it is a decoy
    ScoreNotANumber,
};
constexpr std::size_t kVerdicts = 5;

struct FdrPlan {
    std::string decoyTag; ///< how the accession of a decoy begins
    double threshold = 0.0;
    Vorlan::FdrEstimateType::EFdrEstimateType method = Vorlan::FdrEstimateType::Global;
    Vorlan::TdFdrType::ETdFdrType formula = Vorlan::TdFdrType::DecoyByTarget;
};

/// The records begin to end - 1 are judged together.
struct RecordRange {
    std::size_t begin = 0;
    std::size_t end = 0;
};

struct FdrOutcome {
    std::vector<Verdict> verdicts; ///< of begin to end - 1
    std::array<std::uint64_t, kVerdicts> counts{};
    std::optional<double> worstScore; ///< of the targets that stay
    bool highIsBetter = false;

    std::uint64_t CountOf(Verdict verdict) const;
    std::uint64_t Targets() const; ///< that have a q-value
};

/// Judges the records of range, in which all say the same of a high score: see
/// FirstOtherDirection.
FdrOutcome ControlFdr(const std::vector<Vorlan::PeptideIdentification>& records, RecordRange range,
                      const FdrPlan& plan);

/// The first record of the range that says otherwise than the range's first
/// one whether a high score is better. Such ranges cannot be judged.
std::optional<std::size_t>
FirstOtherDirection(const std::vector<Vorlan::PeptideIdentification>& records, RecordRange range);

} // namespace pelgrin

#endif // PELGRIN_FDR_H
