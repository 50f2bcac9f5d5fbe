#include "prepare/MgfWalk.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "files/PeakLine.h"

namespace pelgrin {

namespace {

constexpr std::string_view kBlanks = " \t\r";

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string Upper(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return upper;
}

/// "BEGIN IONS", in any case and with any blanks.
bool IsMarker(std::string_view text, std::string_view word)
{
    if (text.empty() || (text.front() | 0x20) != (word.front() | 0x20)) {
        return false; // nearly every line
    }
    const std::string upper = Upper(text.substr(0, 40));
    const std::size_t ions = upper.find_first_not_of(kBlanks, word.size());
    return upper.compare(0, word.size(), word) == 0 && ions != std::string::npos
           && ions > word.size() && upper.compare(ions, 4, "IONS") == 0;
}

} // namespace

bool MgfWalk::Next()
{
    if (!isPending_) {
        if (isAtEnd_) {
            return false;
        }
        isAtEnd_ = !lines_.Next(line_);
        if (isAtEnd_) {
            part_ = MgfPart::EndMissing;
            return std::exchange(isInRecord_, false);
        }
        text_ = line_.begin;
        text_.remove_prefix(std::min(text_.find_first_not_of(" \t"), text_.size()));
        text_ = WithoutReturns(text_);
    }
    part_ = PartOfLine();
    return true;
}

MgfPart MgfWalk::PartOfLine()
{
    isPending_ = false;
    if (IsMarker(text_, "BEGIN")) {
        isPending_ = isInRecord_;
        isInRecord_ = !isInRecord_;
        hasRecords_ = true;
        hasPeaks_ = false;
        return isPending_ ? MgfPart::EndMissing : MgfPart::Begin;
    }
    if (isInRecord_) {
        return PartInRecord();
    }
    return !hasRecords_ && TakeHeader() ? MgfPart::FileHeader : MgfPart::Outside;
}

MgfPart MgfWalk::PartInRecord()
{
    if (line_.length > kLongestLine) {
        return MgfPart::LongLine;
    }
    if (IsMarker(text_, "END")) {
        isInRecord_ = false;
        return MgfPart::End;
    }
    if (line_.isPadding) {
        return MgfPart::Blank;
    }
    if (text_.find_first_of("#;!/") == 0) {
        return MgfPart::Comment;
    }
    const bool isOfNumbers = !text_.empty() && IsDigit(text_.front());
    if (IsCut() && (hasPeaks_ || isOfNumbers || !TakeHeader())) {
        return MgfPart::Nul;
    }
    if (isOfNumbers) {
        return PartOfNumbers();
    }
    if (hasPeaks_) { // the reader takes "+2 1" and "-5 3" for peaks, but for the first one
        return PeakLineOf(text_) == PeakLine::Peak ? MgfPart::Peak : MgfPart::NoPeak;
    }
    return TakeHeader() ? MgfPart::Header : MgfPart::NoHeader;
}

MgfPart MgfWalk::PartOfNumbers()
{
    const PeakLine kind = PeakLineOf(text_);
    if (kind == PeakLine::Comma) {
        return MgfPart::Comma;
    }
    if (kind != PeakLine::Peak) {
        return MgfPart::NoPeak;
    }
    hasPeaks_ = true;
    return MgfPart::Peak;
}

bool MgfWalk::TakeHeader()
{
    const std::size_t equals = text_.find('=');
    if (equals == std::string_view::npos || equals == 0) {
        return false;
    }
    key_ = Upper(Trimmed(text_.substr(0, equals)));
    value_ = Trimmed(text_.substr(equals + 1));
    return !key_.empty();
}

} // namespace pelgrin
