// What became of an input: its copies, and every change by a named class.
#ifndef PELGRIN_COPY_H
#define PELGRIN_COPY_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "files/FileKind.h"

namespace pelgrin {

/// How often, and where first.
struct ClassCount {
    std::uint64_t count = 0;
    std::uint64_t firstLine = 0; ///< from 1; 0: no line of its own
    std::string firstFile;       ///< of a folder: the name of the file
};

/// By the key of a class, such as "blank_line".
using ClassCounts = std::map<std::string, ClassCount>;

struct Copy {
    std::string input; ///< path as given
    FileKind kind = FileKind::Unknown;
    std::string file;                 ///< of a folder: the file that is counted just now
    std::vector<std::string> outputs; ///< paths below the folder of the copies
    ClassCounts changes;
    // Records: held = written + what is left out.
    std::uint64_t held = 0;
    std::uint64_t written = 0;
    ClassCounts leftOut;

    void Change(const char* key, std::uint64_t line, std::uint64_t count = 1);
    void LeaveOut(const char* key, std::uint64_t line);
};

/// Throws Failure: the input at path is not what it was.
[[noreturn]] void FailAsChanged(const std::string& path);

/// The words of a class of change, or of a reason to leave a record out.
const char* TextOfClass(const std::string& key);
/// The keys of all classes.
std::vector<std::string> ClassKeys();

} // namespace pelgrin

#endif // PELGRIN_COPY_H
