// Hazards of every format: a tiny file, what lint finds in it, and what the
// library reads from it.
#ifndef PELGRIN_TESTS_LINTROWS_H
#define PELGRIN_TESTS_LINTROWS_H

#include <string>
#include <vector>

#include "files/FileKind.h"

namespace pelgrin::test {

struct LintRow {
    std::string reason;
    FileKind kind;
    std::string text;
    std::string findings; ///< "rule@line rule@line", in the order of the rules
    std::string reading;  ///< what the library makes of it, as ReadByLibrary tells
};

/// Files without findings come first.
std::vector<LintRow> MgfRows();
std::vector<LintRow> OtherSpectraRows();
std::vector<LintRow> FastaRows();
std::vector<LintRow> TableRowsOfEngines();
std::vector<LintRow> PepXmlRows();
std::vector<LintRow> AllLintRows();

/// Writes the file into a folder of its own, as the library wants it: its path, or
/// that of the folder. MaxQuant has "peptides.txt" behind a line "----" of its own.
std::string WriteRow(const LintRow& row, const std::string& folder);

/// Records as text; "throws ..." behind those before an exception, "ends the
/// process" where it does. Reads in a child process.
std::string ReadByLibrary(FileKind kind, const std::string& path);

} // namespace pelgrin::test

#endif // PELGRIN_TESTS_LINTROWS_H
