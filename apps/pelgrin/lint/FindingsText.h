// Findings, and the rules, as text and as JSON.
#ifndef PELGRIN_FINDINGSTEXT_H
#define PELGRIN_FINDINGSTEXT_H

#include <string>

#include "lint/Findings.h"

namespace pelgrin {

/// A line for each example, "path:line: rule: what (spectrum ...)", one for those
/// beyond, and a count for each rule.
std::string TextOf(const Findings& findings);

/// One document: the files with their findings by rule, and the counts.
std::string JsonOf(const Findings& findings);

/// A table of all rules.
std::string TextOfRules();
std::string JsonOfRules();

} // namespace pelgrin

#endif // PELGRIN_FINDINGSTEXT_H
