// The header lines of an MGF record: which key stands there, and is its value read?
#ifndef PELGRIN_MGFHEADERLINES_H
#define PELGRIN_MGFHEADERLINES_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "files/FileLines.h"
#include "lint/Findings.h"

namespace pelgrin {

/// What the library takes from a record, apart from its peaks.
enum class MgfKey : std::size_t { Pepmass, Charge, Time, Scan, Title, Begin, End };
/// Those with a number: the ones before Title.
constexpr std::size_t kMgfNumbers = 4;

/// "PEPMASS=", "BEGIN IONS".
std::string_view TextOf(MgfKey key);

/// The key that a line is meant to have, in whatever letter case, behind blanks, and
/// with blanks around its "=".
std::optional<MgfKey> MeantKey(std::string_view line);

/// The line begins with the key as the library wants it.
bool HasKey(std::string_view line, MgfKey key);

/// Adds a key that the library does not see. False then.
bool LintKey(const FileLines::Line& line, MgfKey key, const std::string& subject,
             Findings& findings);

/// Adds a value that is no number, or of which only a part is read.
void LintValue(const FileLines::Line& line, MgfKey key, const std::string& subject,
               Findings& findings);

} // namespace pelgrin

#endif // PELGRIN_MGFHEADERLINES_H
