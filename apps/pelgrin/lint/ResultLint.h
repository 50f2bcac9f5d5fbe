// What of a result file the library reads otherwise than it is meant.
#ifndef PELGRIN_RESULTLINT_H
#define PELGRIN_RESULTLINT_H

#include <string>

#include "DataStructures.h"
#include "lint/Findings.h"

namespace pelgrin {

// Each throws Failure when a file cannot be read.

void LintNative(const std::string& path, Findings& findings);
void LintMsgf(const std::string& path, Findings& findings);
/// The second file of a pair: its text, and what findings call it. Both may be empty.
struct SecondFile {
    std::string plain;
    std::string given;
};
/// msms.txt with peptides.txt.
void LintMaxQuant(const std::string& path, const SecondFile& peptides, Findings& findings);
/// peptides.txt alone.
void LintMaxQuantPeptides(const std::string& path, Findings& findings);
void LintPFind3(const std::string& path, Findings& findings);
void LintPFind28(const std::string& path, Findings& findings);
void LintSequest(const std::string& path, Findings& findings);
/// The format tells which score counts: MSFragger's or Comet's.
void LintPepXml(const std::string& path, Vorlan::PepIdentType::EPepIdentType format,
                Findings& findings);

} // namespace pelgrin

#endif // PELGRIN_RESULTLINT_H
