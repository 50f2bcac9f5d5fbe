#include "run/Counts.h"

#include <numeric>
#include <stdexcept>

#include <fmt/format.h>

namespace pelgrin {

namespace {

struct ReasonTexts {
    const char* key;
    const char* text;
};

constexpr ReasonTexts kTexts[kReasons] = {
    {"dataset_not_given", "no spectra file of that name was given"},
    {"spectrum_name_unknown", "no spectrum of that name in the file"},
    {"spectrum_name_ambiguous", "several spectra of the file have that name"},
    {"charge_unusable", "charge is not 1 to 100"},
    {"empty_sequence", "the sequence is empty"},
    {"residue_without_mass", "a residue has no mass"},
    {"modification_without_mass", "a modification has no mass"},
    {"modification_position_outside_sequence", "a modification lies outside the sequence"},
    {"mass_shift_not_finite", "the mass shift is not a finite number"},
    {"spectrum_without_peaks", "the spectrum has no peaks"},
    {"spectrum_with_foreign_title", "the title stands in another spectrum"},
    {"spectrum_not_readable", "the file of the spectrum cannot be opened"},
    {"spectrum_without_precursor", "the spectrum has no mass and charge of a precursor"},
    {"spectrum_reader_ended", "the reader of the spectrum crashed twice"},
};

std::size_t IndexOf(Reason reason)
{
    return static_cast<std::size_t>(reason);
}

} // namespace

const char* KeyOf(Reason reason)
{
    return kTexts[IndexOf(reason)].key;
}

const char* TextOf(Reason reason)
{
    return kTexts[IndexOf(reason)].text;
}

bool IsNotJoined(Reason reason)
{
    return reason == Reason::DatasetNotGiven || reason == Reason::SpectrumUnknown
           || reason == Reason::SpectrumNameAmbiguous;
}

double Share::Value() const
{
    return asked == 0 ? 0.0 : static_cast<double>(matched) / static_cast<double>(asked);
}

void Counts::Add(const Problem& problem)
{
    ++notUsed[IndexOf(problem.reason)];
    if (!problem.detail.empty()) {
        ++details[IndexOf(problem.reason)][problem.detail];
    }
}

std::uint64_t Counts::NotJoined() const
{
    return notUsed[IndexOf(Reason::DatasetNotGiven)] + notUsed[IndexOf(Reason::SpectrumUnknown)]
           + notUsed[IndexOf(Reason::SpectrumNameAmbiguous)];
}

std::uint64_t Counts::Skipped() const
{
    return std::accumulate(notUsed.begin(), notUsed.end(), std::uint64_t{0}) - NotJoined();
}

Share Counts::AllIons() const
{
    Share all;
    for (const auto& series : ions) {
        for (const Share& share : series) {
            all.asked += share.asked;
            all.matched += share.matched;
        }
    }
    return all;
}

void Counts::Add(const ResultAudit& audit)
{
    for (std::size_t i = 0; i < kUnread; ++i) {
        unread[i] += audit.unread[i].units;
    }
    rowsCut += audit.cutsRow ? 1 : 0;
}

std::uint64_t Counts::Joined() const
{
    return std::accumulate(joined.begin(), joined.end(), std::uint64_t{0});
}

std::uint64_t Counts::LeftByFdr() const
{
    return aboveThreshold + decoys + withoutProteins + scoreNotANumber;
}

std::uint64_t Counts::NotUsed() const
{
    return read - annotated - aboveThreshold - decoys;
}

std::uint64_t Counts::LostRows() const
{
    std::uint64_t lost = rowsCut + rejected + refused;
    for (std::size_t i = 0; i < kUnread; ++i) {
        lost += IsLoss(static_cast<Unread>(i)) ? unread[i] : 0;
    }
    return lost;
}

void Counts::Check() const
{
    if (read != LeftByFdr() + Joined() + NotJoined() || Joined() != annotated + Skipped()) {
        throw std::logic_error(fmt::format(
            "counts do not add up: {} records read, {} left by FDR control, {} joined, {} not "
            "joined, {} annotated, {} skipped",
            read, LeftByFdr(), Joined(), NotJoined(), annotated, Skipped()));
    }
}

} // namespace pelgrin
