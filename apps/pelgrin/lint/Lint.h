// What stands in a file that the library would read otherwise than its user expects.
//
// The look is lexical, takes the file once or twice from its start to its end, and
// follows the library's readers, not the formats' own rules.
#ifndef PELGRIN_LINT_H
#define PELGRIN_LINT_H

#include <optional>
#include <string>

#include "DataStructures.h"
#include "files/FileKind.h"
#include "lint/Findings.h"

namespace pelgrin {

using ResultFormat = std::optional<Vorlan::PepIdentType::EPepIdentType>;

/// Adds the findings of an unpacked file or folder of this kind, which
/// Findings::Begin was told of. Throws Failure for a file that cannot be read, and
/// for a kind without rules; findings up to there stay.
void Lint(const std::string& path, FileKind kind, Findings& findings);

/// The same for a file as its user has it: packed ones are unpacked first, the kind
/// is what the file shows, or what format says. Begins the file itself; findings
/// name this path. Throws as Lint.
void LintFile(const std::string& path, const ResultFormat& format, Findings& findings);

} // namespace pelgrin

#endif // PELGRIN_LINT_H
