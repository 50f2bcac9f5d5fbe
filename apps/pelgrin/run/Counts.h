// What became of every record: nothing disappears without a reason.
#ifndef PELGRIN_COUNTS_H
#define PELGRIN_COUNTS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "DataStructures.h"
#include "files/ResultAudit.h"
#include "run/DatasetResolver.h"

namespace pelgrin {

/// Why a record was not annotated.
enum class Reason : std::size_t {
    DatasetNotGiven,
    SpectrumUnknown,
    SpectrumNameAmbiguous,
    ChargeUnusable,
    EmptySequence,
    ResidueWithoutMass,
    ModificationWithoutMass,
    PositionOutsideSequence,
    MassShiftNotFinite,
    SpectrumWithoutPeaks,
    SpectrumWithForeignTitle,
    SpectrumNotReadable,
    SpectrumWithoutPrecursor,
    SpectrumReaderEnded,
};
constexpr std::size_t kReasons = 14;

/// The key in summary.json, such as "dataset_not_given".
const char* KeyOf(Reason reason);
/// The words of the report, such as "no such spectrum file was given".
const char* TextOf(Reason reason);
/// The spectrum of the record was not found.
bool IsNotJoined(Reason reason);

/// One reason, with the letter or name that was missing.
struct Problem {
    Reason reason = Reason::DatasetNotGiven;
    std::string detail;
};

struct Share {
    std::uint64_t asked = 0;
    std::uint64_t matched = 0;

    double Value() const;
};

struct Counts {
    /// Units of the result files that gave no record, or a part of one that
    /// was not read.
    std::array<std::uint64_t, kUnread> unread{};
    std::uint64_t rowsCut = 0; ///< records of a line that is too long

    std::uint64_t held = 0;         ///< matches of all result files, see HeldIn
    std::uint64_t rejected = 0;     ///< that their readers did not give, one by one
    std::uint64_t filesRefused = 0; ///< of which nothing could be read
    std::uint64_t refused = 0;      ///< matches that these hold

    std::uint64_t read = 0;
    // Records that left by FDR control.
    std::uint64_t aboveThreshold = 0; ///< targets
    std::uint64_t decoys = 0;
    std::uint64_t withoutProteins = 0;
    std::uint64_t scoreNotANumber = 0;

    std::array<std::uint64_t, kNameRules> joined{}; ///< how the dataset met its file
    std::uint64_t joinedByScan = 0; ///< of these, found by the scan number in a title or file name
    std::uint64_t annotated = 0;
    std::array<std::uint64_t, kReasons> notUsed{};
    std::array<std::map<std::string, std::uint64_t>, kReasons> details; ///< detail -> records

    std::uint64_t spectraWritten = 0; ///< joined spectra, each name once
    Share peaks;     ///< peaks of annotated records; matched: with at least one ion
    Share fragments; ///< bonds: series and number; matched: at any charge, shifted or not
    std::array<std::array<Share, 3>, 7> ions; ///< see Ions

    /// The ions of one series, shifted or not.
    Share& Ions(Vorlan::Peak::EIonType ion, Vorlan::Peak::EPeakHitStatus status)
    {
        return ions.at(static_cast<std::size_t>(ion)).at(static_cast<std::size_t>(status));
    }
    const Share& Ions(Vorlan::Peak::EIonType ion, Vorlan::Peak::EPeakHitStatus status) const
    {
        return ions.at(static_cast<std::size_t>(ion)).at(static_cast<std::size_t>(status));
    }

    void Add(const Problem& problem);
    void Add(const ResultAudit& audit);
    std::uint64_t LeftByFdr() const;
    std::uint64_t Joined() const;
    std::uint64_t NotJoined() const;
    std::uint64_t Skipped() const;
    Share AllIons() const;
    /// Records that could not be used. Decoys and targets above the threshold
    /// were used, to estimate the false discovery rate.
    std::uint64_t NotUsed() const;
    /// Units of the result files that were lost, and rows that were cut.
    std::uint64_t LostRows() const;
    bool HasLosses() const { return NotUsed() + LostRows() > 0; }
    /// Throws std::logic_error unless records read = left by FDR control +
    /// joined + not joined and joined = annotated + skipped.
    void Check() const;
};

} // namespace pelgrin

#endif // PELGRIN_COUNTS_H
