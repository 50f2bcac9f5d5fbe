// How the library reads a line of peaks, in MGF and DTA files.
#ifndef PELGRIN_PEAKLINES_H
#define PELGRIN_PEAKLINES_H

#include <optional>
#include <string>
#include <string_view>

#include "files/FileLines.h"
#include "files/PeakLine.h"
#include "lint/Findings.h"

namespace pelgrin {

/// Adds what is wrong with a line that stands among peaks: m/z, blanks, intensity.
/// Gives true when both numbers are read from it.
bool LintPeak(const FileLines::Line& line, Numbers numbers, const std::string& subject,
              Findings& findings);

/// A digit stands behind the comma that text begins with.
bool HasDecimals(std::string_view text);

} // namespace pelgrin

#endif // PELGRIN_PEAKLINES_H
