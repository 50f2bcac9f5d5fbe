#include "lint/MgfLint.h"

#include <array>
#include <optional>
#include <utility>

#include <fmt/format.h>

#include "files/FileLines.h"
#include "files/MgfNames.h"
#include "lint/LineFlaws.h"
#include "lint/MgfHeaderLines.h"
#include "lint/MgfNameLint.h"
#include "lint/PeakLines.h"

namespace pelgrin {

namespace {

constexpr Rule kMissing[kMgfNumbers] = {Rule::NoPepmass, Rule::NoCharge, Rule::NoTime,
                                        Rule::NoScan};

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

char FirstOf(std::string_view text)
{
    return text.empty() ? '\0' : text.front();
}

/// Follows the reading of one record after the other, as their lines are meant.
class RecordWalk {
public:
    explicit RecordWalk(Findings& findings) : findings_(findings) {}

    void Take(const FileLines::Line& line)
    {
        if (line.number == 1 && BeginsWithMark(line.begin)) {
            TakeMarkedLine(line);
            return;
        }
        const bool isPeak = IsDigit(FirstOf(line.begin)); // most lines: no key to look for
        const std::optional<MgfKey> meant = isPeak ? std::nullopt : MeantKey(line.begin);
        if (meant == MgfKey::Begin) {
            TakeBegin(line);
            return;
        }
        switch (place_) {
        case Place::Front: TakeInFront(line, meant); break;
        case Place::Header: TakeInHeader(line, meant); break;
        case Place::Peaks: TakeAmongPeaks(line, meant); break;
        case Place::Unread: LeaveUnread(meant); break;
        case Place::Between: break;
        }
    }

    void Finish()
    {
        const bool isOpen = place_ == Place::Peaks;
        if (isOpen) {
            findings_.Add(Rule::NoEnd, begin_, "the file ends inside the record; expected END IONS",
                          subject_);
        }
        EndRecord();
        for (std::size_t i = 0; i < kMgfNumbers; ++i) {
            if (anyHas_[i]) { // else there is no value to carry over
                findings_.Add(kMissing[i], std::move(missing_[i]));
            }
        }
    }

private:
    enum class Place {
        Front,   ///< before the first record
        Header,  ///< of a record
        Peaks,   ///< of a record
        Unread,  ///< of a record whose reading ended, or that is hidden
        Between, ///< records
    };

    void TakeMarkedLine(const FileLines::Line& line)
    {
        const auto meant = MeantKey(std::string_view(line.begin).substr(3));
        if (meant == MgfKey::Begin) {
            findings_.Add(Rule::ByteOrderMark, 1,
                          "the mark hides BEGIN IONS, and with it the record; expected no mark");
            place_ = Place::Unread;
        }
    }

    void TakeBegin(const FileLines::Line& line)
    {
        const bool isSeen = LintKey(line, MgfKey::Begin, "", findings_);
        if (place_ == Place::Peaks) {
            findings_.Add(
                Rule::NoEnd, begin_,
                fmt::format("the record at line {} belongs to its peaks; expected END IONS",
                            line.number),
                subject_);
        }
        EndRecord();
        begin_ = line.number;
        subject_.clear();
        has_ = {};
        place_ = isSeen ? Place::Header : Place::Unread;
        isRecord_ = isSeen;
    }

    void TakeInFront(const FileLines::Line& line, std::optional<MgfKey> meant)
    {
        const bool isComment =
            std::string_view("#;!/").find(FirstOf(line.begin)) != std::string::npos;
        const bool isBlank = line.begin.find_first_not_of(" \t\r") == std::string::npos;
        const bool isBegin = FirstOf(line.begin) == 'B'; // for the index
        if (!isComment && !isBlank && !isBegin && meant != MgfKey::End) {
            findings_.Add(Rule::LineInFront, line.number,
                          fmt::format("{} is not read; expected header lines in every record",
                                      Shown(line.begin)));
        }
    }

    void TakeInHeader(const FileLines::Line& line, std::optional<MgfKey> meant)
    {
        if (IsDigit(FirstOf(line.begin))) {
            place_ = Place::Peaks;
            LintPeak(line, Numbers::OfScan, subject_, findings_);
        } else if (!meant) {
            TakeOtherHeaderLine(line);
        } else if (!LintKey(line, *meant, subject_, findings_)) {
            if (static_cast<std::size_t>(*meant) < kMgfNumbers) {
                has_[static_cast<std::size_t>(*meant)] = true; // told already
            }
        } else if (meant == MgfKey::End) {
            EndRecord();
            place_ = Place::Between;
        } else if (meant == MgfKey::Title) {
            subject_ = "spectrum " + Shown(NamesOf(line.begin).Of(NameKind::Title));
        } else {
            has_[static_cast<std::size_t>(*meant)] = true;
            anyHas_[static_cast<std::size_t>(*meant)] = true;
            LintValue(line, *meant, subject_, findings_);
        }
    }

    /// " 100.5 12" or "+100.5 12": the first peak must begin with a digit.
    void TakeOtherHeaderLine(const FileLines::Line& line)
    {
        const std::size_t first = line.begin.find_first_not_of(" \t+-.");
        if (first != std::string::npos && first > 0 && IsDigit(line.begin[first])) {
            findings_.Add(Rule::IndentedPeak, line.number,
                          fmt::format("{} is not read; expected a first peak that begins with a "
                                      "digit",
                                      Shown(line.begin)),
                          subject_);
        }
    }

    void TakeAmongPeaks(const FileLines::Line& line, std::optional<MgfKey> meant)
    {
        if (FirstOf(line.begin) != 'E') {
            if (meant == MgfKey::End) {
                LintKey(line, MgfKey::End, subject_, findings_);
            } else {
                LintPeak(line, Numbers::OfScan, subject_, findings_);
            }
            return;
        }
        if (meant != MgfKey::End) {
            findings_.Add(Rule::OtherELine, line.number,
                          fmt::format("{} ends the peaks; expected END IONS", Shown(line.begin)),
                          subject_);
        }
        TellMissing();
        place_ = meant == MgfKey::End ? Place::Between : Place::Unread;
        isRecord_ = false;
    }

    void LeaveUnread(std::optional<MgfKey> meant)
    {
        if (meant == MgfKey::End) {
            place_ = Place::Between;
        }
    }

    /// Of a record that has been read, or has no peaks.
    void EndRecord()
    {
        if (isRecord_ && place_ == Place::Header) {
            findings_.Add(Rule::NoPeaks, begin_,
                          "those of the next record are read, if there is one; expected a line "
                          "of m/z and intensity",
                          subject_);
        } else if (isRecord_ && place_ == Place::Peaks) {
            TellMissing();
        }
        isRecord_ = false;
    }

    void TellMissing()
    {
        for (std::size_t i = 0; i < kMgfNumbers; ++i) {
            if (!has_[i]) {
                findings_.Defer(missing_[i], begin_,
                                fmt::format("no line {}", TextOf(static_cast<MgfKey>(i))),
                                subject_);
            }
        }
    }

    Findings& findings_;
    Place place_ = Place::Front;
    bool isRecord_ = false;
    std::uint64_t begin_ = 0; ///< line at which the record begins
    std::string subject_;
    std::array<bool, kMgfNumbers> has_{};
    std::array<bool, kMgfNumbers> anyHas_{};
    std::array<RuleFindings, kMgfNumbers> missing_;
};

} // namespace

void LintMgf(const std::string& path, Findings& findings)
{
    FileLines lines(path, FileLines::Mode::Binary);
    FileLines::Line line;
    RecordWalk walk(findings);
    while (lines.Next(line) && LintLine(line, findings)) {
        walk.Take(line);
    }
    walk.Finish();
    LintMgfNames(path, findings);
}

} // namespace pelgrin
