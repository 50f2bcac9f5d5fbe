// What may be wrong with a line of any text file.
#ifndef PELGRIN_LINEFLAWS_H
#define PELGRIN_LINEFLAWS_H

#include <string>
#include <string_view>

#include "files/FileLines.h"
#include "lint/Findings.h"

namespace pelgrin {

/// Adds NUL bytes, carriage returns inside, and too great a length. False when
/// the library reads nothing behind the line.
bool LintLine(const FileLines::Line& line, Findings& findings);

/// The same for a header line that the library reads whole: NUL bytes are no flaw,
/// and only a length that the host does not look at is. False then.
bool LintHeader(const FileLines::Line& line, Findings& findings);

/// The first bytes of a file are a byte order mark.
bool BeginsWithMark(std::string_view bytes);

/// text as a message shows it: one line, in double quotes, cut when it is long.
std::string Shown(std::string_view text);

} // namespace pelgrin

#endif // PELGRIN_LINEFLAWS_H
