// Lines of m/z and intensity.
#ifndef PELGRIN_PEAKLINE_H
#define PELGRIN_PEAKLINE_H

#include <string_view>

namespace pelgrin {

enum class PeakLine {
    Peak,     ///< begins with two finite numbers
    Infinite, ///< begins with two numbers, of which one is infinite or no number: "nan 5"
    Comma,    ///< one of the first two numbers has a comma in it
    NoPeak,   ///< any other line
};

/// What the readers of the library take for a number: that of MGF files as sscanf does,
/// with "inf" and "0x1p3", and that of DTA files as a stream does, without.
enum class Numbers { OfScan, OfStream };

/// What stands within a line and is passed over in front of a number.
inline constexpr std::string_view kWhiteSpace = " \t\r\v\f";

/// A stream takes no number that is not finite.
PeakLine PeakLineOf(std::string_view text, Numbers numbers = Numbers::OfScan);

/// Without blanks, tabs and carriage returns at the ends.
std::string_view Trimmed(std::string_view text);

/// text without the carriage returns at its end. FileLines drops one of them, so that
/// a line with two would be another one in every copy.
std::string_view WithoutReturns(std::string_view text);

} // namespace pelgrin

#endif // PELGRIN_PEAKLINE_H
